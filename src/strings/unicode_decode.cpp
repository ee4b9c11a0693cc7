// Decoding of single characters, character offsets, lengths and the small
// UTF-8 checks of gh2.
#include "vexa/strings/unicode.hpp"

namespace VEXA_2_10 {
namespace strings {

namespace {

constexpr unsigned long all_ones = ~0ul;
constexpr unsigned int replacement = 63;  // '?'

inline bool is_continuation(unsigned char b) { return (b & 0xC0) == 0x80; }

// Sequence length from the lead byte as unichar classifies it (top five bits):
// 1 for ASCII, 2 for C0..DF, 3 for E0..EF, 4 for F0..F7, 0 otherwise.
inline unsigned lead_length(unsigned char b) {
  if (b < 0x80) return 1;
  switch (b & 0xF8) {
    case 0xC0: case 0xC8: case 0xD0: case 0xD8: return 2;
    case 0xE0: case 0xE8: return 3;
    case 0xF0: return 4;
    default: return 0;
  }
}

// The unit at `i`, where the string's terminator sits at size() and
// everything after it reads as zero. The walk of character_index may run past
// the end; it never touches memory outside the string.
template <typename String>
inline typename String::value_type unit_at(String const& s, unsigned long i) {
  return i < s.size() ? s[i] : typename String::value_type(0);
}

}  // namespace

unsigned int unichar(char const* s, unsigned long n, unsigned long pos, unsigned long& used) {
  used = all_ones;
  if (s == nullptr || pos >= n) return replacement;
  auto const* p = reinterpret_cast<unsigned char const*>(s) + pos;
  unsigned char const b = p[0];
  unsigned const len = lead_length(b);
  if (len == 0 || n - pos < len) return replacement;
  for (unsigned i = 1; i < len; ++i) {
    if (!is_continuation(p[i])) return replacement;
  }
  unsigned int c;
  switch (len) {
    case 1: c = b & 0x7Fu; break;
    case 2: c = ((b & 0x1Fu) << 6) | (p[1] & 0x3Fu); break;
    case 3: c = ((b & 0x0Fu) << 12) | ((p[1] & 0x3Fu) << 6) | (p[2] & 0x3Fu); break;
    default:
      c = ((b & 0x07u) << 18) | ((p[1] & 0x3Fu) << 12) | ((p[2] & 0x3Fu) << 6) | (p[3] & 0x3Fu);
      break;
  }
  used = len;
  return c;
}

unsigned int unichar(unsigned short const* s, unsigned long n, unsigned long pos,
                     unsigned long& used) {
  used = all_ones;
  if (s == nullptr || pos >= n) return replacement;
  unsigned int const u = s[pos];
  if (u < 0xD800 || u > 0xDFFF) {
    used = 1;
    return u;
  }
  if (u > 0xDBFF || n - pos < 2) return replacement;
  unsigned int const low = s[pos + 1];
  if (low < 0xDC00 || low > 0xDFFF) return replacement;
  used = 2;
  return (u << 10) + low - 0x35FDC00u;
}

unsigned int unichar(wchar_t const* s, unsigned long n, unsigned long pos, unsigned long& used) {
  used = all_ones;
  if (s == nullptr || pos >= n) return replacement;
  used = 1;
  return static_cast<unsigned int>(s[pos]);
}

unsigned long character_index(ustring8 const& s, unsigned long index) {
  if (index >= s.size()) return all_ones;
  unsigned long offset = 0;
  for (unsigned long step = 0; step < index; ++step) {
    auto const b = static_cast<unsigned char>(unit_at(s, offset));
    unsigned len;
    if (b < 0x80) len = 1;
    else if ((b & 0xE0) == 0xC0) len = 2;
    else if ((b & 0xF0) == 0xE0) len = 3;
    else if ((b & 0xF8) == 0xF0) len = 4;
    else return all_ones;
    for (unsigned i = 1; i < len; ++i) {
      if (!is_continuation(static_cast<unsigned char>(unit_at(s, offset + i)))) return all_ones;
    }
    offset += len;
  }
  return offset;
}

unsigned long character_index(ustring16 const& s, unsigned long index) {
  if (index >= s.size()) return all_ones;
  // Single-unit steps test the string's first unit, not the current one; a
  // text that starts with a low surrogate is treated as unreadable.
  bool const starts_low = s[0] >= 0xDC00 && s[0] <= 0xDFFF;
  unsigned long offset = 0;
  for (unsigned long step = 0; step < index; ++step) {
    unsigned const u = unit_at(s, offset);
    if (u >= 0xD800 && u <= 0xDBFF) {
      unsigned const low = unit_at(s, offset + 1);
      if (low < 0xDC00 || low > 0xDFFF) return all_ones;
      offset += 2;
    } else {
      if (starts_low) return all_ones;
      offset += 1;
    }
  }
  return offset;
}

namespace {

template <typename Unit>
unsigned long zero_terminated_length(Unit const* text) {
  if (text == nullptr) return 0;
  unsigned long n = 0;
  while (text[n] != 0) ++n;
  return n;
}

}  // namespace

unsigned long string_length(char const* text) { return zero_terminated_length(text); }
unsigned long string_length(unsigned short const* text) { return zero_terminated_length(text); }
unsigned long string_length(wchar_t const* text) { return zero_terminated_length(text); }
unsigned long string_length(ustring8 const& text) { return text.size(); }
unsigned long string_length(ustring16 const& text) { return text.size(); }
unsigned long string_length(ustring32 const& text) { return text.size(); }

namespace gh2 {

unsigned long get_utf8_length(unsigned char const* s, unsigned long n) {
  if (s == nullptr || n == 0) return 0;
  unsigned char const b = s[0];
  if ((b & 0xF8) == 0xF0) return 4;
  if ((b & 0xF0) == 0xE0) return 3;
  if ((b & 0xE0) == 0xC0) return 2;
  if ((b & 0x80) == 0) return 1;
  return 0;
}

unsigned long get_utf8_length(char const* s, unsigned long n) {
  return get_utf8_length(reinterpret_cast<unsigned char const*>(s), n);
}

bool validate_utf8(unsigned char const* s, unsigned long n) {
  unsigned long const len = get_utf8_length(s, n);
  if (len == 0 || n < len) return false;
  for (unsigned long i = 1; i < len; ++i) {
    if (!is_continuation(s[i])) return false;
  }
  return true;
}

bool validate_utf8(char const* s, unsigned long n) {
  return validate_utf8(reinterpret_cast<unsigned char const*>(s), n);
}

}  // namespace gh2

}  // namespace strings
}  // namespace VEXA_2_10
