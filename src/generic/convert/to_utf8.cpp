#include "vexa/generic/convert/to_utf8.hpp"

#include <sstream>

#include "vexa/strings/unicode.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace convert {

template <>
strings::ustring8 to_str<char>(char const& c) {
  std::stringstream stream(std::ios::in | std::ios::out);
  stream << c;
  return stream.str();
}

strings::ustring8 to_utf8(char const* text) {
  if (text == nullptr) return strings::ustring8();
  return strings::ustring8(text);
}

strings::ustring8 to_utf8(strings::ustring8 const& text) { return text; }

strings::ustring8 to_utf8(strings::ustring16 const& text) { return strings::utf16_to_utf8(text); }

strings::ustring8 to_utf8(strings::ustring32 const& text) { return strings::utf32_to_utf8(text); }

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10
