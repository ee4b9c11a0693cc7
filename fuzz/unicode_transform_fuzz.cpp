// Fuzz target: the six Unicode transforms on raw input. The first byte picks
// the source encoding (0 UTF-8, 1 UTF-16, 2 UTF-32, little-endian units);
// the rest is the text. Every result, and every result converted once more,
// must equal the plain unit-by-unit rules.
#include "unicode_checks.hpp"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  namespace strings = vexa::strings;
  vexa_fuzz::input in(data, size);
  unsigned const source = in.pick(3);
  std::string const bytes = in.rest();
  if (source == 0) vexa_fuzz::check_from(strings::ustring8(bytes), true);
  if (source == 1) vexa_fuzz::check_from(strings::ustring16(vexa_fuzz::units_of<unsigned short>(bytes)), true);
  if (source == 2) vexa_fuzz::check_from(strings::ustring32(vexa_fuzz::units_of<wchar_t>(bytes)), true);
  return 0;
}
