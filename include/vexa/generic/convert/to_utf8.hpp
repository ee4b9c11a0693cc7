// vexa — one character to text, and any of the library's strings to UTF-8
// (`generic::convert`).
//
//   convert::to_utf8(strings::ustring32(L"\x20AC"))   // "\xE2\x82\xAC"
//   convert::to_str('x')                              // "x"
#ifndef VEXA_GENERIC_CONVERT_TO_UTF8_HPP
#define VEXA_GENERIC_CONVERT_TO_UTF8_HPP

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace convert {

// to_str
// The one-character text of `c`, written through a string stream opened for
// input and output. Only `char` is offered; other types do not compile.
//   to_str('a')      // "a"
//   to_str('\0')     // a text of one unit, 0
template <typename T>
strings::ustring8 to_str(T const& value) = delete;
template <>
VEXA_API strings::ustring8 to_str<char>(char const& c);

// to_utf8
// The text as UTF-8. A `char const*` is taken byte for byte up to its 0,
// without any check or conversion (a null pointer gives the empty text); a
// `ustring8` is copied; `ustring16` and `ustring32` go through
// strings::utf16_to_utf8 and strings::utf32_to_utf8, so malformed input gives
// what those give ("-1").
//   to_utf8(strings::ustring16(1, 0xE9))   // "\xC3\xA9"
//   to_utf8("\xFF")                        // "\xFF", unchecked
VEXA_API strings::ustring8 to_utf8(char const* text);
VEXA_API strings::ustring8 to_utf8(strings::ustring8 const& text);
VEXA_API strings::ustring8 to_utf8(strings::ustring16 const& text);
VEXA_API strings::ustring8 to_utf8(strings::ustring32 const& text);

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_CONVERT_TO_UTF8_HPP
