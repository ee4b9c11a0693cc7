// Fuzz target: rendering catalog messages with arguments (and argument
// options) taken from the input.
//
// Input: byte 0 is the number of items (1-8) of a message built from the
// input; each item is a type byte (0-12) and a length-prefixed data text
// (text, or an argument's name, 0x01 and its options). The rest is the
// argument list: a name choice byte ("a", "b", "n", "size", "who", or the
// name of item k), a value type byte (long, double, text, bool, nil,
// unsigned long) and the value's bytes. The same arguments also render every
// message of a small fixed catalog, loaded once with message_catalogs::load.
//
// Properties: rendering never throws; as_string, as_utf8 and as_ustring give
// the same bytes and as_utf16/as_utf32 their transforms; a message renders as
// its items rendered in order; a message whose arguments are not all present
// shows "?invalid?".
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "fuzz_support.hpp"
#include "scratch_dir.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/i18n/message.hpp"
#include "vexa/i18n/message_catalogs.hpp"
#include "vexa/strings/unicode.hpp"

namespace {

namespace i18n = vexa::i18n;
namespace generic = vexa::generic;
using vexa::strings::ustring8;
using vexa::types::variant;

char const catalog_text[] =
    "<?xml version=\"1.0\"?>\n"
    "<xmc version=\"1.0\">\n"
    " <catalog name=\"app\" lang=\"en\">\n"
    "  <msg name=\"saved\">Saved <arg name=\"size\" type=\"memory\" precision=\"2\"/> for <arg name=\"who\"/>.</msg>\n"
    "  <msg name=\"count\"><arg name=\"n\" type=\"int\" base=\"16\" fieldsize=\"08\"/> items<br/>in <arg name=\"a\" type=\"duration\" dy=\"no\"/></msg>\n"
    "  <msg name=\"units\"><arg name=\"a\" type=\"metric\" base_unit=\"meter\"/> and <arg name=\"b\" type=\"mem_unit\" base_unit=\"K\" target_unit=\"M\"/></msg>\n"
    "  <msg name=\"real\"><arg name=\"n\" type=\"double\" prec=\"3\" spaced_dec=\"yes\"/> <arg name=\"b\" type=\"date\"/></msg>\n"
    " </catalog>\n"
    "</xmc>\n";

i18n::message_catalogs const& fixed_catalogs() {
  static i18n::message_catalogs const catalogs = [] {
    vexa_fuzz::scratch_dir dir;
    i18n::message_catalogs loaded;
    i18n::message_catalogs::result_type const r =
        loaded.load(ustring8(dir.write("app.xmc", catalog_text)), ustring8("en"));
    VEXA_FUZZ_CHECK(r.type() == i18n::message_catalogs::no_error, r.message());
    return loaded;
  }();
  return catalogs;
}

variant make_value(vexa_fuzz::input& in) {
  unsigned const kind = in.pick(6);
  if (kind == 2) return variant(in.chunk());
  if (kind == 3) return variant((in.byte() & 1) != 0);
  if (kind == 4) return variant();
  std::uint64_t const bits = static_cast<std::uint64_t>(in.word32()) | (static_cast<std::uint64_t>(in.word32()) << 32);
  if (kind == 0) return variant(static_cast<long>(bits));
  if (kind == 5) return variant(static_cast<unsigned long>(bits));
  double d;
  std::memcpy(&d, &bits, sizeof d);
  return variant(d);
}

void check_message(i18n::message_t const& m, generic::varg_list const& args) {
  ustring8 const text = m.as_string(args);
  VEXA_FUZZ_CHECK(m.as_utf8(args) == text && m.as_ustring(args) == text, "as_utf8/as_ustring differ");
  VEXA_FUZZ_CHECK(m.as_utf16(args) == vexa::strings::utf8_to_utf16(text), "as_utf16 is no transform");
  VEXA_FUZZ_CHECK(m.as_utf32(args) == vexa::strings::utf8_to_utf32(text), "as_utf32 is no transform");
  std::string items;
  for (i18n::message_item const& item : m.items()) items += item.as_string(args);
  VEXA_FUZZ_CHECK(items == text, "the message '" + text + "' differs from its items '" + items + "'");
  if (!m.has_valid_args(args))
    VEXA_FUZZ_CHECK(text.find("?invalid?") != std::string::npos,
                    "a missing argument left no mark: '" + text + "'");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  unsigned const count = 1 + in.pick(8);
  i18n::message_t::item_list items;
  for (unsigned k = 0; k < count; ++k) {
    auto const type = static_cast<i18n::message_item::type_t>(in.pick(13));
    items.emplace_back(ustring8(in.chunk()), type);
  }
  i18n::message_t const built(ustring8("built"), items, ustring8());

  static char const* const names[] = {"a", "b", "n", "size", "who"};
  generic::varg_list args;
  while (!in.empty()) {
    unsigned const choice = in.pick(5 + count);
    ustring8 const name = choice < 5 ? ustring8(names[choice]) : items[choice - 5].name();
    args.push_back(name, make_value(in));  // a repeated name keeps its first value
  }

  check_message(built, args);
  i18n::message_catalogs const& catalogs = fixed_catalogs();
  for (auto it = catalogs.begin(ustring8("app")); it != catalogs.end(ustring8("app")); ++it)
    check_message(it->second, args);
  return 0;
}
