// vexa — the three text types: `ustring8` (UTF-8), `ustring16` (UTF-16 code
// units) and `ustring32` (UTF-32, one code point per unit).
//
// They are the standard strings of `char`, `unsigned short` and `wchar_t`
// with nothing added: no fields, no virtual functions. They exist so that
// overloads can tell the encodings apart. Lengths are counted in code units.
//
//   strings::ustring8 s("h\xC3\xA9");   // s.size() == 3 (bytes)
//   strings::ustring32 w(L"h\u00E9");    // w.size() == 2 (code points)
#ifndef VEXA_STRINGS_USTRING_HPP
#define VEXA_STRINGS_USTRING_HPP

#include <string>
#include <vector>

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace strings {

class VEXA_API ustring8 : public std::basic_string<char> {
 public:
  using base_type = std::basic_string<char>;
  using base_type::base_type;
  ustring8() = default;
  ustring8(char const* text) : base_type(text) {}
  ustring8(base_type const& text) : base_type(text) {}
  ustring8(base_type&& text) noexcept : base_type(std::move(text)) {}
};

class VEXA_API ustring16 : public std::basic_string<unsigned short> {
 public:
  using base_type = std::basic_string<unsigned short>;
  using base_type::base_type;
  ustring16() = default;
  ustring16(unsigned short const* text) : base_type(text) {}
  ustring16(base_type const& text) : base_type(text) {}
  ustring16(base_type&& text) noexcept : base_type(std::move(text)) {}
};

class VEXA_API ustring32 : public std::basic_string<wchar_t> {
 public:
  using base_type = std::basic_string<wchar_t>;
  using base_type::base_type;
  ustring32() = default;
  ustring32(wchar_t const* text) : base_type(text) {}
  ustring32(base_type const& text) : base_type(text) {}
  ustring32(base_type&& text) noexcept : base_type(std::move(text)) {}
};

// The library's default Unicode string type.
using ustring = ustring8;

using ustring8_vector = std::vector<ustring8>;
using ustring16_vector = std::vector<ustring16>;
using ustring32_vector = std::vector<ustring32>;

}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_STRINGS_USTRING_HPP
