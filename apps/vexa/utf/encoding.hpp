// The Unicode encoding forms that `vexa utf` reads and writes, and their
// byte-order marks.
//
//   parse_form("utf16le")   // form::utf16le
//   mark_of(form::utf8)     // "\xEF\xBB\xBF"
#ifndef VEXA_APPS_UTF_ENCODING_HPP
#define VEXA_APPS_UTF_ENCODING_HPP

#include <cstddef>
#include <optional>
#include <string>

namespace vexa_cli {
namespace utf {

enum class form { utf8, utf16le, utf16be, utf32le, utf32be };

// "UTF-8", "UTF-16LE", ...
char const* name(form f);
// The size of one code unit in bytes: 1, 2 or 4.
unsigned unit_size(form f);
bool big_endian(form f);

// parse_form
// The form named by `text`, ignoring case, '-' and '_' ("utf-16le",
// "UTF16LE", "utf_16_le"); nothing for any other text.
//   parse_form("Utf-32be")   // form::utf32be
//   parse_form("latin1")     // nullopt
std::optional<form> parse_form(std::string const& text);

// The byte-order mark of the form (U+FEFF encoded in it).
std::string mark_of(form f);

// detect_mark
// The form whose byte-order mark opens `data[0..size)`. UTF-32LE's mark
// begins with UTF-16LE's, so it is tried first: FF FE 00 00 is read as
// UTF-32LE.
//   detect_mark("\xFF\xFE" "a\0", 4)   // form::utf16le
//   detect_mark("abc", 3)              // nullopt
std::optional<form> detect_mark(char const* data, std::size_t size);

// The length of `f`'s mark when `data` opens with it, else 0.
std::size_t mark_length(char const* data, std::size_t size, form f);

}  // namespace utf
}  // namespace vexa_cli

#endif  // VEXA_APPS_UTF_ENCODING_HPP
