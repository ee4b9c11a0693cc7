// vexa — case mapping, replacing and splitting of text, code unit by code unit.
//
// These functions know nothing of Unicode: case mapping is the C library's
// toupper/tolower of the current C locale, applied byte by byte to 8-bit text
// and unit by unit to 16- and 32-bit text, and searching compares code units.
// Each is written once over the character type and offered for std::string,
// std::wstring and the three ustring types.
//
// The C library accepts only EOF and the values of unsigned char. So:
//  - an 8-bit unit is passed as its signed char value, and a negative one
//    (bytes 0x80..0xFF, the parts of every non-ASCII UTF-8 sequence) is kept
//    as it is, which is also what the C library's own tables do for them in
//    the "C" locale. UTF-8 text therefore comes through intact.
//  - a 16- or 32-bit unit above 255 (or a negative wchar_t) is kept as it is.
//
//   strings::to_upper(ustring8("caf\xC3\xA9"))    // "CAF\xC3\xA9"
//   strings::split_string(std::string("a//b/"), "/", 0)   // {"a", "", "b"}
#ifndef VEXA_STRINGS_STRING_ALGORITHMS_HPP
#define VEXA_STRINGS_STRING_ALGORITHMS_HPP

#include <cstdint>
#include <string>
#include <vector>

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace strings {

// to_upper
// A copy of the text with every unit c replaced by toupper(c) (see above for
// the units that are kept). Never fails.
//   to_upper(ustring8("Hello, World"))   // "HELLO, WORLD"
//   to_upper(ustring32(L"\x3B1x"))       // L"\x3B1X" (above 255: kept)
VEXA_API ustring8 to_upper(ustring8 const& text);
VEXA_API ustring16 to_upper(ustring16 const& text);
VEXA_API ustring32 to_upper(ustring32 const& text);

// to_lower
// The same with tolower.
//   to_lower(ustring8("Hello"))   // "hello"
//   to_lower(ustring8("\xC3\x89"))   // "\xC3\x89" (bytes above 0x7F kept)
VEXA_API ustring8 to_lower(ustring8 const& text);
VEXA_API ustring16 to_lower(ustring16 const& text);
VEXA_API ustring32 to_lower(ustring32 const& text);

// lower_case
// A copy of the text in which the units at positions [first, last) are
// lower-cased; `last` of npos (~0ul) means the text's length. When first is
// not below last the copy is unchanged. Callers pass positions within the
// text; a larger `last` is taken as the length.
//   lower_case(std::string("ABCD"), 1, 3)       // "AbcD"
//   lower_case(std::string("ABCD"), 0, ~0ul)    // "abcd"
VEXA_API std::string lower_case(std::string const& text, unsigned long first = 0,
                                unsigned long last = ~0ul);
VEXA_API ustring8 lower_case(ustring8 const& text, unsigned long first = 0, unsigned long last = ~0ul);
VEXA_API ustring16 lower_case(ustring16 const& text, unsigned long first = 0, unsigned long last = ~0ul);
VEXA_API ustring32 lower_case(ustring32 const& text, unsigned long first = 0, unsigned long last = ~0ul);

// replace_all
// Replaces, in place, every occurrence of `what` by `with`, searching on after
// each inserted text (which is never searched again). Returns the number of
// replacements, counted modulo 2^32; 0 when there is none or `what` is empty
// (the text is then unchanged).
//   std::string s = "aaa"; replace_all(s, "a", "aa");   // 3, s == "aaaaaa"
//   std::string t = "abc"; replace_all(t, "x", "y");    // 0, t == "abc"
VEXA_API std::uint32_t replace_all(std::string& text, std::string const& what, std::string const& with);
VEXA_API std::uint32_t replace_all(std::wstring& text, std::wstring const& what, std::wstring const& with);
VEXA_API std::uint32_t replace_all(ustring8& text, ustring8 const& what, ustring8 const& with);
VEXA_API std::uint32_t replace_all(ustring16& text, ustring16 const& what, ustring16 const& with);
VEXA_API std::uint32_t replace_all(ustring32& text, ustring32 const& what, ustring32 const& with);

// split_string
// The pieces of the text between occurrences of `delimiter`. A leading or
// doubled delimiter gives an empty piece, but a trailing one gives no empty
// last piece, on purpose. After `limit` pieces (limit > 0) the cutting stops
// and the rest is the last piece. An empty delimiter gives the whole text as
// the one piece; an empty text gives no pieces.
//   split_string(std::string("a/b/c/d"), "/", 2)   // {"a", "b", "c/d"}
//   split_string(std::string("/a"), "/", 0)        // {"", "a"}
VEXA_API std::vector<std::string> split_string(std::string const& text, std::string const& delimiter,
                                               int limit = 0);
VEXA_API std::vector<std::wstring> split_string(std::wstring const& text, std::wstring const& delimiter,
                                                int limit = 0);
VEXA_API std::vector<ustring8> split_string(ustring8 const& text, ustring8 const& delimiter, int limit = 0);
VEXA_API std::vector<ustring16> split_string(ustring16 const& text, ustring16 const& delimiter, int limit = 0);
VEXA_API std::vector<ustring32> split_string(ustring32 const& text, ustring32 const& delimiter, int limit = 0);

namespace gh2 {

// toupper, tolower
// to_upper / to_lower of the text taken as UTF-8, as a std::string.
//   gh2::toupper("abc")   // "ABC"
//   gh2::tolower("ABC")   // "abc"
VEXA_API std::string toupper(std::string const& text);
VEXA_API std::string tolower(std::string const& text);

// replace_all
// strings::replace_all for std::string.
//   std::string s = "a-b"; gh2::replace_all(s, "-", "+");   // 1, s == "a+b"
//   std::string t = "ab";  gh2::replace_all(t, "", "+");    // 0, t == "ab"
VEXA_API std::uint32_t replace_all(std::string& text, std::string const& what, std::string const& with);

}  // namespace gh2

}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_STRINGS_STRING_ALGORITHMS_HPP
