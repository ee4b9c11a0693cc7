// Fuzz target: i18n::format_value with option texts taken from the input.
//
// Byte 0 picks the kind (0..12, 12 being a number outside the table); byte 1
// the value's type (long, unsigned long, double, text, bool, nil), whose
// bytes follow (8 bytes for numbers, a length byte and the bytes for text);
// the rest is the option text ("\x01name\x01value..."), so the dictionary's
// option names and words reach the option reader.
//
// Properties: nothing throws; the result is never empty; the appending form
// agrees (false and nothing appended exactly where the result is "-0" and no
// `default` option is given); the result stays within the field size cap
// plus what the value and option texts can account for.
#include <cstring>
#include <string>

#include "fuzz_support.hpp"
#include "vexa/i18n/format_value.hpp"
#include "vexa/types/variant.hpp"

namespace {

namespace i18n = vexa::i18n;
using vexa::types::variant;

variant make_value(vexa_fuzz::input& in, std::string& shown) {
  unsigned const kind = in.pick(6);
  std::uint64_t const bits = static_cast<std::uint64_t>(in.word32()) | (static_cast<std::uint64_t>(in.word32()) << 32);
  switch (kind) {
    case 0: shown = "long " + std::to_string(static_cast<long>(bits)); return variant(static_cast<long>(bits));
    case 1: shown = "unsigned long " + std::to_string(bits); return variant(static_cast<unsigned long>(bits));
    case 2: {
      double d;
      std::memcpy(&d, &bits, sizeof d);
      shown = "double " + std::to_string(d);
      return variant(d);
    }
    case 3: {
      std::string const text = in.chunk();
      shown = "text '" + text + "'";
      return variant(text);
    }
    case 4: shown = "bool"; return variant((bits & 1) != 0);
    default: shown = "nil"; return variant();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  auto const type = static_cast<i18n::message_item::type_t>(in.pick(13));
  std::string shown;
  variant const value = make_value(in, shown);
  vexa::strings::ustring8 const options(in.rest());

  std::string const result = i18n::format_value(type, value, options);
  std::string const what = "type " + std::to_string(type) + ", " + shown + ", options " +
                           vexa_fuzz::hex(options) + " gave '" + result + "'";
  VEXA_FUZZ_CHECK(!result.empty() || options.find("default") != std::string::npos, what);
  VEXA_FUZZ_CHECK(result.size() <= 2048 + 2 * options.size(), "a result too long: " + what);

  std::string appended = "prefix";
  bool const formatted = i18n::_private::append_formatted_value(appended, type, value, options.data(),
                                                                options.size());
  if (formatted) {
    VEXA_FUZZ_CHECK(appended == "prefix" + result, "the appending form differs: " + what);
  } else {
    VEXA_FUZZ_CHECK(appended == "prefix", "the appending form appended on failure: " + what);
    VEXA_FUZZ_CHECK(result == "-0" || options.find("default") != std::string::npos,
                    "failed without '-0': " + what);
  }
  return 0;
}
