// The walks of the six transforms over a kernel set: the kernels move what
// they can take in blocks, the character helpers here decide everything else
// one character at a time, so that the results are exactly those of the
// unit-by-unit rules in unicode.hpp whatever the set. Each walk first
// measures the exact length of its result, makes the result string once at
// that length (plus room for the last vector stores, cut off at the end, in
// place) and writes into it.
//
// unicode_transform.cpp runs them on the set in use; the tests also run them
// on kernels built over a software model of instructions the machine lacks.
#ifndef VEXA_SRC_STRINGS_UNICODE_WALK_HPP
#define VEXA_SRC_STRINGS_UNICODE_WALK_HPP

#include <cassert>
#include <cstdint>
#include <cstring>
#include <utility>

#include "strings/unicode_kernels.hpp"
#include "strings/unicode_sse2.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {
namespace walk {

using std::size_t;
using sse2::ascii_block;

template <typename String>
String minus_one() {
  String s;
  s.push_back('-');
  s.push_back('1');
  return s;
}

inline bool is_continuation(unsigned b) { return (b & 0xC0u) == 0x80u; }

inline void put16(void* out, std::uint16_t v) { std::memcpy(out, &v, 2); }
inline void put32(void* out, std::uint32_t v) { std::memcpy(out, &v, 4); }

// Little-endian byte images of the UTF-8 forms, for one store each.
inline std::uint16_t utf8_two(std::uint32_t c) {
  return static_cast<std::uint16_t>((0xC0u | (c >> 6)) | ((0x80u | (c & 0x3Fu)) << 8));
}
inline std::uint32_t utf8_three(std::uint32_t c) {
  return (0xE0u | (c >> 12)) | ((0x80u | ((c >> 6) & 0x3Fu)) << 8) | ((0x80u | (c & 0x3Fu)) << 16);
}
inline std::uint32_t utf8_four(std::uint32_t c) {
  return (0xF0u | (c >> 18)) | ((0x80u | ((c >> 12) & 0x3Fu)) << 8) |
         ((0x80u | ((c >> 6) & 0x3Fu)) << 16) | ((0x80u | (c & 0x3Fu)) << 24);
}

// ---- one character at a time ---------------------------------------------------

// Each helper converts the character at p (p < end), advancing p and o, and
// returns false for a malformed sequence without moving. Runs of ASCII at p
// are taken as a block when 16 units remain.

inline bool is_continuation2(u8 const* p) {
  std::uint16_t v;
  std::memcpy(&v, p + 1, 2);
  return (v & 0xC0C0u) == 0x8080u;
}

// UTF-8 to code point, as unichar decodes it.
template <typename Out>
inline bool decode_one(u8 const*& p, u8 const* end, Out*& o) {
  unsigned const b = *p;
  size_t const left = static_cast<size_t>(end - p);
  if (b < 0x80) {
    if (left >= 16) {
      unsigned const k = ascii_block(p, o);
      p += k;
      o += k;
    } else {
      *o++ = static_cast<Out>(b);
      ++p;
    }
    return true;
  }
  if ((b & 0xF0) == 0xE0) {
    if (left < 3 || !is_continuation2(p)) return false;
    *o++ = static_cast<Out>(((b & 0x0Fu) << 12) | ((p[1] & 0x3Fu) << 6) | (p[2] & 0x3Fu));
    p += 3;
    return true;
  }
  if ((b & 0xE0) == 0xC0) {
    if (left < 2 || !is_continuation(p[1])) return false;
    *o++ = static_cast<Out>(((b & 0x1Fu) << 6) | (p[1] & 0x3Fu));
    p += 2;
    return true;
  }
  return decode_four(p, end, o);
}

// A code point to UTF-8 with the signed rules of utf32_to_utf8: below 0x80
// (negative included) one byte of the low eight bits, above 0x10FFFF nothing.
inline void encode_point(std::int32_t c, u8*& o) {
  std::uint32_t const u = static_cast<std::uint32_t>(c);
  if (c < 0x80) {
    *o++ = static_cast<u8>(u & 0xFFu);
  } else if (u < 0x800) {
    put16(o, utf8_two(u));
    o += 2;
  } else if (u <= 0xFFFF) {
    put32(o, utf8_three(u));
    o += 3;
  } else if (u <= 0x10FFFF) {
    put32(o, utf8_four(u));
    o += 4;
  }
}

// UTF-16 to UTF-8; false for a lone surrogate.
inline bool encode_one(u16 const*& p, u16 const* end, u8*& o) {
  std::uint32_t const u = *p;
  if (u < 0x80 && end - p >= 16) {
    unsigned const k = ascii_block(p, o);
    p += k;
    o += k;
    return true;
  }
  if (u - 0xD800u >= 0x800u) {
    encode_point(static_cast<std::int32_t>(u), o);
    ++p;
    return true;
  }
  // A high surrogate must be followed by a low one, within the text.
  if (u > 0xDBFF || end - p < 2) return false;
  std::uint32_t const low = p[1];
  if (low - 0xDC00u >= 0x400u) return false;
  put32(o, utf8_four((u << 10) + low - 0x35FDC00u));
  o += 4;
  p += 2;
  return true;
}

// UTF-32 to UTF-8; false for a surrogate.
inline bool encode_one(wchar_t const*& p, wchar_t const* end, u8*& o) {
  std::int32_t const c = *p;
  if (c < 0x80 && end - p >= 16) {
    unsigned const k = ascii_block(p, o);
    p += k;
    o += k;
    return true;
  }
  if (c >= 0xD800 && c <= 0xDFFF) return false;
  encode_point(c, o);
  ++p;
  return true;
}

// The result string, made once at `units` plus the kernels' room; the
// writer works through a pointer and cuts the string to what it wrote.
template <typename String>
class output {
 public:
  using unit = typename String::value_type;
  explicit output(size_t units) : _measured(units) { _text.resize(units + kernel_slack); }
  unit* begin() { return &_text[0]; }
  // Room for at least `units` more after o, keeping what is written.
  unit* reserve(unit* o, size_t units) {
    _exact = false;
    size_t const used = static_cast<size_t>(o - begin());
    if (used + units + kernel_slack > _text.size()) _text.resize(used + units + kernel_slack);
    return begin() + used;
  }
  // A whole result of text the length pass measured has exactly that length:
  // the kernels' stores stay within their room only while the pass is right.
  String finish(unit const* o) {
    size_t const used = static_cast<size_t>(o - begin());
    assert(!_exact || used == _measured);
    _text.resize(used);
    return std::move(_text);
  }
  // A result cut short (the conversion ended early) has no such length.
  String finish_early(unit const* o) {
    _exact = false;
    return finish(o);
  }

 private:
  String _text;
  size_t _measured;
  bool _exact = true;
};

// utf8_to_utf16 and utf8_to_utf32 share their walk; they differ only in what
// a malformed sequence does.
template <typename String, typename Out = typename String::value_type>
String from_utf8(ustring8 const& text, bool lenient, unicode_kernels const& kernels) {
  size_t const n = text.size();
  if (n == 0) return String();
  auto const* const begin = reinterpret_cast<u8 const*>(text.data());
  u8 const* p = begin;
  u8 const* const end = p + n;
  void (*decode)(u8 const*&, u8 const*, Out*&) = nullptr;
  size_t length = 0;
  if constexpr (sizeof(Out) == 2) {
    decode = kernels.decode16;
    length = kernels.utf16_length_of_utf8(begin, n);
  } else {
    decode = kernels.decode32;
    length = kernels.utf32_length_of_utf8(begin, n);
  }
  output<String> out(length);
  Out* o = out.begin();
  bool grown = false;
  while (p < end) {
    decode(p, end, o);
    // The kernel stopped at text it does not take: the next characters go
    // one by one before it is asked again.
    for (int k = 0; k < 8 && p < end; ++k) {
      if (decode_one(p, end, o)) continue;
      if (!lenient) return minus_one<String>();
      // From here on a byte may give a '?' the length pass did not count,
      // but never more than one unit.
      if (!grown) {
        o = out.reserve(o, static_cast<size_t>(end - p));
        grown = true;
      }
      // '?' for the malformed sequence. At the very start the text is taken
      // as unreadable and the conversion ends; later it resumes at the next byte.
      *o++ = static_cast<Out>('?');
      if (p == begin) return out.finish_early(o);
      ++p;
    }
  }
  return out.finish(o);
}

// utf16_to_utf8 and utf32_to_utf8.
template <typename In, typename Text>
ustring8 to_utf8(Text const& text, unicode_kernels const& kernels) {
  size_t const n = text.size();
  if (n == 0) return ustring8();
  In const* p = reinterpret_cast<In const*>(text.data());
  In const* const end = p + n;
  void (*encode)(In const*&, In const*, u8*&) = nullptr;
  size_t length = 0;
  if constexpr (sizeof(In) == 2) {
    encode = kernels.encode16;
    length = kernels.utf8_length_of_utf16(p, n);
  } else {
    encode = kernels.encode32;
    length = kernels.utf8_length_of_utf32(p, n);
  }
  output<ustring8> out(length);
  u8* o = reinterpret_cast<u8*>(out.begin());
  while (p < end) {
    encode(p, end, o);
    if (p == end) break;
    // The kernel stopped at a block it does not take: the next 8 units go
    // one by one before it is asked again.
    In const* const stop = end - p > 8 ? p + 8 : end;
    while (p < stop) {
      if (!encode_one(p, end, o)) return minus_one<ustring8>();
    }
  }
  return out.finish(reinterpret_cast<char const*>(o));
}


// ---- between UTF-16 and UTF-32 ------------------------------------------------

inline ustring32 utf16_to_utf32(ustring16 const& text, unicode_kernels const& kernels) {
  size_t const n = text.size();
  if (n == 0) return ustring32();
  u16 const* p = text.data();
  u16 const* const end = p + n;
  output<ustring32> out(kernels.utf32_length_of_utf16(p, n));
  wchar_t* o = out.begin();
  while (p < end) {
    kernels.widen(p, end, o);
    // The next characters go one by one before the kernel is asked again.
    for (int k = 0; k < 8 && p < end; ++k) {
      std::uint32_t const u = *p;
      if (u - 0xD800u >= 0x800u) {
        *o++ = static_cast<wchar_t>(u);
        ++p;
        continue;
      }
      if (u > 0xDBFF || end - p < 2) return minus_one<ustring32>();
      std::uint32_t const low = p[1];
      if (low - 0xDC00u >= 0x400u) return minus_one<ustring32>();
      *o++ = static_cast<wchar_t>((u << 10) + low - 0x35FDC00u);
      p += 2;
    }
  }
  return out.finish(o);
}

inline ustring16 utf32_to_utf16(ustring32 const& text, unicode_kernels const& kernels) {
  size_t const n = text.size();
  if (n == 0) return ustring16();
  wchar_t const* p = text.data();
  wchar_t const* const end = p + n;
  output<ustring16> out(kernels.utf16_length_of_utf32(p, n));
  u16* o = out.begin();
  while (p < end) {
    kernels.narrow(p, end, o);
    // The next units go one by one before the kernel is asked again.
    for (int k = 0; k < 8 && p < end; ++k) {
      std::int32_t const c = *p;
      ++p;
      if (c < 0xFFFF) {  // signed: negative units give their low 16 bits
        if (c >= 0xD800 && c <= 0xDFFF) return minus_one<ustring16>();
        *o++ = static_cast<u16>(static_cast<std::uint32_t>(c) & 0xFFFFu);
        continue;
      }
      if (c > 0x10FFFF) return minus_one<ustring16>();
      // No 0x10000 is subtracted before the high unit is formed; stored data
      // depends on this form.
      std::uint32_t const u = static_cast<std::uint32_t>(c);
      o[0] = static_cast<u16>((u >> 10) + 0xD800u);
      o[1] = static_cast<u16>((u & 0x3FFu) + 0xDC00u);
      o += 2;
    }
  }
  return out.finish(o);
}

}  // namespace walk
}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_STRINGS_UNICODE_WALK_HPP
