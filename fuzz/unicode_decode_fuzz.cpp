// Fuzz target: decoding single characters. The input is read as UTF-8
// bytes, as little-endian UTF-16 units and as UTF-32 units; at every position
// (and just past the end) unichar, character_index, gh2::get_utf8_length and
// gh2::validate_utf8 must give what the plain rules give.
#include <string>

#include "fuzz_support.hpp"
#include "unicode_reference.hpp"
#include "vexa/strings/unicode.hpp"

namespace {

namespace ref = vexa_fuzz::reference;
namespace strings = vexa::strings;
using vexa_fuzz::hex;

// Positions worth asking about: all of the first ones, the last ones, and
// some past the end (and the all-ones value).
template <typename Visit>
void positions(unsigned long size, Visit visit) {
  unsigned long const head = size < 96 ? size : 96;
  for (unsigned long p = 0; p < head; ++p) visit(p);
  for (unsigned long p = size > 96 + 4 ? size - 4 : head; p < size; ++p) visit(p);
  visit(size);
  visit(size + 1);
  visit(size + 7);
  visit(~0ul);
}

template <typename Text>
std::string where(Text const& text, unsigned long pos) {
  return "text " + hex(text) + " at " + std::to_string(pos);
}

template <typename Unit, typename Library, typename Reference>
void check_unichar(std::basic_string<Unit> const& text, Library library, Reference reference) {
  positions(text.size(), [&](unsigned long pos) {
    unsigned long used = 12345, want_used = 0;
    unsigned int const got = library(text.data(), text.size(), pos, used);
    unsigned int const want = reference(text.data(), text.size(), pos, want_used);
    VEXA_FUZZ_CHECK(got == want && used == want_used,
                    "unichar of " + where(text, pos) + ": " + std::to_string(got) + "/" +
                        std::to_string(used) + ", expected " + std::to_string(want) + "/" +
                        std::to_string(want_used));
  });
}

template <typename Text>
void check_character_index(Text const& text) {
  positions(text.size(), [&](unsigned long index) {
    unsigned long const got = strings::character_index(text, index);
    unsigned long const want = ref::character_index(text, index);
    VEXA_FUZZ_CHECK(got == want, "character_index of " + where(text, index) + ": " +
                                     std::to_string(got) + ", expected " + std::to_string(want));
  });
}

void check_lead_bytes(std::string const& bytes) {
  auto const* u = reinterpret_cast<unsigned char const*>(bytes.data());
  for (unsigned long pos = 0; pos <= bytes.size(); ++pos) {
    unsigned long const n = bytes.size() - pos;
    unsigned long const want_length = ref::get_utf8_length(u + pos, n);
    bool const want_valid = ref::validate_utf8(u + pos, n);
    VEXA_FUZZ_CHECK(strings::gh2::get_utf8_length(u + pos, n) == want_length &&
                        strings::gh2::get_utf8_length(bytes.data() + pos, n) == want_length,
                    "get_utf8_length of " + where(bytes, pos));
    VEXA_FUZZ_CHECK(strings::gh2::validate_utf8(u + pos, n) == want_valid &&
                        strings::gh2::validate_utf8(bytes.data() + pos, n) == want_valid,
                    "validate_utf8 of " + where(bytes, pos));
  }
  VEXA_FUZZ_CHECK(strings::gh2::get_utf8_length(static_cast<char const*>(nullptr), 4) == 0 &&
                      !strings::gh2::validate_utf8(static_cast<char const*>(nullptr), 4),
                  "a null buffer has no sequence");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  std::string const bytes = in.rest();
  strings::ustring8 const text8(bytes);
  strings::ustring16 const text16(vexa_fuzz::units_of<unsigned short>(bytes));
  strings::ustring32 const text32(vexa_fuzz::units_of<wchar_t>(bytes));

  check_unichar(bytes,
                [](char const* s, unsigned long n, unsigned long p, unsigned long& u) {
                  return strings::unichar(s, n, p, u);
                },
                ref::unichar8);
  check_unichar(static_cast<std::basic_string<unsigned short> const&>(text16),
                [](unsigned short const* s, unsigned long n, unsigned long p, unsigned long& u) {
                  return strings::unichar(s, n, p, u);
                },
                ref::unichar16);
  check_unichar(static_cast<std::basic_string<wchar_t> const&>(text32),
                [](wchar_t const* s, unsigned long n, unsigned long p, unsigned long& u) {
                  return strings::unichar(s, n, p, u);
                },
                ref::unichar32);
  check_character_index(text8);
  check_character_index(text16);
  check_lead_bytes(bytes);
  return 0;
}
