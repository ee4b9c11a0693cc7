// vexa fuzzing — the Unicode rules written plainly, one unit at a time.
//
// The library moves text through block kernels (SSE2, SSSE3, AVX2, AVX-512) and word
// tricks; these functions walk the same rules unit by unit with nothing
// clever, so a target can compare every result with them. They read no unit
// outside the text (past the end reads as 0, as the library's character_index
// does) and follow the library's decisions where the rules leave a choice:
// utf8_to_utf32 answers a malformed sequence after the first byte with '?' and
// resumes one byte later.
#ifndef VEXA_FUZZ_UNICODE_REFERENCE_HPP
#define VEXA_FUZZ_UNICODE_REFERENCE_HPP

#include <cstddef>
#include <cstdint>
#include <string>

namespace vexa_fuzz {
namespace reference {

using text8 = std::string;
using text16 = std::basic_string<unsigned short>;
using text32 = std::basic_string<wchar_t>;

constexpr unsigned long not_found = ~0ul;

inline bool continuation(unsigned b) { return (b & 0xC0u) == 0x80u; }
inline bool high_surrogate(std::uint32_t u) { return u >= 0xD800 && u <= 0xDBFF; }
inline bool low_surrogate(std::uint32_t u) { return u >= 0xDC00 && u <= 0xDFFF; }
inline bool surrogate(std::uint32_t u) { return u >= 0xD800 && u <= 0xDFFF; }

template <typename String>
String minus_one() {
  String s;
  s.push_back('-');
  s.push_back('1');
  return s;
}

// The unit at i, or 0 past the end.
template <typename String>
std::uint32_t at(String const& s, std::size_t i) {
  if (i >= s.size()) return 0;
  if constexpr (sizeof(s[0]) == 1) return static_cast<unsigned char>(s[i]);
  return static_cast<std::uint32_t>(s[i]);
}

// ---- one character ------------------------------------------------------------

// The sequence length the lead byte announces (0: no lead byte).
inline unsigned lead_length(unsigned b) {
  if (b < 0x80) return 1;
  if ((b & 0xE0) == 0xC0) return 2;
  if ((b & 0xF0) == 0xE0) return 3;
  if ((b & 0xF8) == 0xF0) return 4;
  return 0;
}

inline unsigned int unichar8(char const* s, unsigned long n, unsigned long pos, unsigned long& used) {
  used = not_found;
  if (pos >= n) return 63;
  unsigned const b = static_cast<unsigned char>(s[pos]);
  unsigned const length = lead_length(b);
  if (length == 0 || n - pos < length) return 63;
  for (unsigned k = 1; k < length; ++k)
    if (!continuation(static_cast<unsigned char>(s[pos + k]))) return 63;
  static unsigned const lead_bits[5] = {0, 0x7F, 0x1F, 0x0F, 0x07};
  unsigned value = b & lead_bits[length];
  for (unsigned k = 1; k < length; ++k)
    value = (value << 6) | (static_cast<unsigned char>(s[pos + k]) & 0x3Fu);
  used = length;
  return value;
}

inline unsigned int unichar16(unsigned short const* s, unsigned long n, unsigned long pos,
                              unsigned long& used) {
  used = not_found;
  if (pos >= n) return 63;
  std::uint32_t const u = s[pos];
  if (!surrogate(u)) {
    used = 1;
    return u;
  }
  if (high_surrogate(u) && pos + 1 < n && low_surrogate(s[pos + 1])) {
    used = 2;
    return (u << 10) + s[pos + 1] - 0x35FDC00u;
  }
  return 63;
}

inline unsigned int unichar32(wchar_t const* s, unsigned long n, unsigned long pos,
                              unsigned long& used) {
  used = not_found;
  if (pos >= n) return 63;
  used = 1;
  return static_cast<unsigned int>(s[pos]);
}

inline unsigned long character_index(text8 const& s, unsigned long index) {
  if (index >= s.size()) return not_found;
  std::size_t p = 0;
  for (unsigned long k = 0; k < index; ++k) {
    unsigned const b = at(s, p);
    if (b < 0x80) {
      p += 1;
    } else if ((b & 0xE0) == 0xC0 && continuation(at(s, p + 1))) {
      p += 2;
    } else if ((b & 0xF0) == 0xE0 && continuation(at(s, p + 1)) && continuation(at(s, p + 2))) {
      p += 3;
    } else if ((b & 0xF8) == 0xF0 && continuation(at(s, p + 1)) && continuation(at(s, p + 2)) &&
               continuation(at(s, p + 3))) {
      p += 4;
    } else {
      return not_found;
    }
  }
  return p;
}

inline unsigned long character_index(text16 const& s, unsigned long index) {
  if (index >= s.size()) return not_found;
  std::size_t p = 0;
  for (unsigned long k = 0; k < index; ++k) {
    std::uint32_t const u = at(s, p);
    if (high_surrogate(u)) {
      if (!low_surrogate(at(s, p + 1))) return not_found;
      p += 2;
    } else {
      if (low_surrogate(at(s, 0))) return not_found;  // the first unit, on purpose
      p += 1;
    }
  }
  return p;
}

inline unsigned long get_utf8_length(unsigned char const* s, unsigned long n) {
  if (n == 0 || s == nullptr) return 0;
  return lead_length(s[0]);
}

inline bool validate_utf8(unsigned char const* s, unsigned long n) {
  unsigned long const length = get_utf8_length(s, n);
  if (length == 0 || n < length) return false;
  for (unsigned long k = 1; k < length; ++k)
    if (!continuation(s[k])) return false;
  return true;
}

// ---- transforms -----------------------------------------------------------------

// One code point as UTF-8, by the signed comparisons of utf32_to_utf8;
// false for a surrogate (the whole result becomes "-1").
inline bool append_utf8(text8& out, std::int32_t c) {
  std::uint32_t const u = static_cast<std::uint32_t>(c);
  if (surrogate(u)) return false;
  if (c < 0x80) {
    out.push_back(static_cast<char>(u & 0xFF));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (u >> 6)));
    out.push_back(static_cast<char>(0x80 | (u & 0x3F)));
  } else if (c <= 0xFFFF) {
    out.push_back(static_cast<char>(0xE0 | (u >> 12)));
    out.push_back(static_cast<char>(0x80 | ((u >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (u & 0x3F)));
  } else if (c <= 0x10FFFF) {
    out.push_back(static_cast<char>(0xF0 | (u >> 18)));
    out.push_back(static_cast<char>(0x80 | ((u >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((u >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (u & 0x3F)));
  }  // above 0x10FFFF: skipped
  return true;
}

inline text8 utf32_to_utf8(text32 const& s) {
  text8 out;
  for (wchar_t c : s)
    if (!append_utf8(out, static_cast<std::int32_t>(c))) return minus_one<text8>();
  return out;
}

// Pairs surrogates the way utf16_to_utf8 and utf16_to_utf32 do; false for a
// lone one.
template <typename Sink>
bool walk_utf16(text16 const& s, Sink sink) {
  for (std::size_t i = 0; i < s.size();) {
    std::uint32_t const u = s[i];
    if (high_surrogate(u)) {
      std::uint32_t const next = at(s, i + 1);
      if (!low_surrogate(next)) return false;
      sink((u << 10) + next - 0x35FDC00u);
      i += 2;
    } else if (low_surrogate(u)) {
      return false;
    } else {
      sink(u);
      i += 1;
    }
  }
  return true;
}

inline text8 utf16_to_utf8(text16 const& s) {
  text8 out;
  bool const ok = walk_utf16(s, [&](std::uint32_t c) { append_utf8(out, static_cast<std::int32_t>(c)); });
  return ok ? out : minus_one<text8>();
}

inline text32 utf16_to_utf32(text16 const& s) {
  text32 out;
  bool const ok = walk_utf16(s, [&](std::uint32_t c) { out.push_back(static_cast<wchar_t>(c)); });
  return ok ? out : minus_one<text32>();
}

inline text32 utf8_to_utf32(text8 const& s) {
  text32 out;
  for (unsigned long p = 0; p < s.size();) {
    unsigned long used;
    unsigned int const c = unichar8(s.data(), s.size(), p, used);
    out.push_back(static_cast<wchar_t>(c));
    if (used != not_found) {
      p += used;
    } else if (p == 0) {
      break;  // a malformed first character ends the text
    } else {
      p += 1;
    }
  }
  return out;
}

inline text16 utf8_to_utf16(text8 const& s) {
  text16 out;
  auto const byte = [&](std::size_t i) { return static_cast<unsigned>(at(s, i)); };
  for (std::size_t p = 0; p < s.size();) {
    unsigned const b = byte(p);
    unsigned const length = lead_length(b);
    if (length == 0 || s.size() - p < length) return minus_one<text16>();
    for (unsigned k = 1; k < length; ++k)
      if (!continuation(byte(p + k))) return minus_one<text16>();
    if (length == 1) {
      out.push_back(static_cast<unsigned short>(b));
    } else if (length == 2) {
      out.push_back(static_cast<unsigned short>(((b & 0x1F) << 6) | (byte(p + 1) & 0x3F)));
    } else if (length == 3) {
      out.push_back(static_cast<unsigned short>(((b & 0x0F) << 12) | ((byte(p + 1) & 0x3F) << 6) |
                                                (byte(p + 2) & 0x3F)));
    } else {
      // The pair straight from the bits; the plane (minus one) may wrap in
      // 16 bits for overlong forms.
      unsigned const b1 = byte(p + 1), b2 = byte(p + 2), b3 = byte(p + 3);
      unsigned const plane = ((b & 7) << 2) + ((b1 >> 4) & 3);
      out.push_back(static_cast<unsigned short>(0xD800u + ((plane - 1u) << 6) + ((b1 & 0x0F) << 2) +
                                                ((b2 >> 4) & 3)));
      out.push_back(static_cast<unsigned short>(0xDC00u + ((b2 & 0x0F) << 6) + (b3 & 0x3F)));
    }
    p += length;
  }
  return out;
}

inline text16 utf32_to_utf16(text32 const& s) {
  text16 out;
  for (wchar_t w : s) {
    std::int32_t const c = static_cast<std::int32_t>(w);
    std::uint32_t const u = static_cast<std::uint32_t>(c);
    if (c < 0xFFFF) {
      if (surrogate(u)) return minus_one<text16>();
      out.push_back(static_cast<unsigned short>(u & 0xFFFF));
    } else if (c <= 0x10FFFF) {
      out.push_back(static_cast<unsigned short>((u >> 10) + 0xD800));
      out.push_back(static_cast<unsigned short>((u & 0x3FF) + 0xDC00));
    } else {
      return minus_one<text16>();
    }
  }
  return out;
}

}  // namespace reference
}  // namespace vexa_fuzz

#endif  // VEXA_FUZZ_UNICODE_REFERENCE_HPP
