// The block kernels behind the Unicode transforms, one table per processor
// level (portable: SSE2 or plain words; SSSE3; AVX2; AVX-512), and the length passes
// that size each result exactly before it is written.
//
// A kernel converts, from p, the longest run of text it can take whole and
// stops before anything it leaves to the unit-by-unit code of
// unicode_transform.cpp (malformed text, lone surrogates, the last units),
// which alone decides the results for such text. Kernels advance p and o
// past what they converted. They may store whole vectors past that output,
// but never more than `kernel_slack` units beyond it, so the transforms
// allocate that much past the exact length. They never read past `end`.
#ifndef VEXA_SRC_STRINGS_UNICODE_KERNELS_HPP
#define VEXA_SRC_STRINGS_UNICODE_KERNELS_HPP

#include <cstddef>
#include <cstdint>

#include "vexa/strings/unicode.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {

using u8 = unsigned char;
using u16 = unsigned short;

constexpr std::size_t kernel_slack = 64;

struct unicode_kernels {
  unicode_kernel level;

  // UTF-8 to UTF-16 (or UTF-32): well-formed sequences; the UTF-16 kernel
  // may leave four-byte sequences to the unit code.
  void (*decode16)(u8 const*& p, u8 const* end, u16*& o);
  void (*decode32)(u8 const*& p, u8 const* end, wchar_t*& o);
  // UTF-16 (or UTF-32) to UTF-8: units that are no surrogate (and, from
  // UTF-16, well-formed pairs; from UTF-32, no unit above 0x10FFFF and no
  // negative one need be taken).
  void (*encode16)(u16 const*& p, u16 const* end, u8*& o);
  void (*encode32)(wchar_t const*& p, wchar_t const* end, u8*& o);
  // UTF-16 to UTF-32: units that are no surrogate, and well-formed pairs.
  void (*widen)(u16 const*& p, u16 const* end, wchar_t*& o);
  // UTF-32 to UTF-16: units the rules turn into one unit (signed below
  // 0xFFFF, no surrogate), and units from 0xFFFF to 0x10FFFF into pairs.
  void (*narrow)(wchar_t const*& p, wchar_t const* end, u16*& o);

  // The exact output length of well-formed text; for any other text, at
  // least the output of its longest well-formed prefix.
  std::size_t (*utf16_length_of_utf8)(u8 const* p, std::size_t n);
  std::size_t (*utf32_length_of_utf8)(u8 const* p, std::size_t n);
  std::size_t (*utf8_length_of_utf16)(u16 const* p, std::size_t n);
  std::size_t (*utf8_length_of_utf32)(wchar_t const* p, std::size_t n);
  std::size_t (*utf32_length_of_utf16)(u16 const* p, std::size_t n);
  std::size_t (*utf16_length_of_utf32)(wchar_t const* p, std::size_t n);
};

// A well-formed four-byte sequence at p (p < end) as one code point, or as
// the pair computed from its bits: 0xD7C0 + (c >> 10) is 0xD800 + ((c -
// 0x10000) >> 10), and wraps below 0xD800 for the overlong F0 80..8F forms.
// False, moving nothing, for anything else. The unit code and the kernels
// share it.
template <typename Out>
inline bool decode_four(u8 const*& p, u8 const* end, Out*& o) {
  std::uint32_t const b = p[0];
  if ((b & 0xF8u) != 0xF0u || end - p < 4) return false;
  std::uint32_t const b1 = p[1], b2 = p[2], b3 = p[3];
  if (((b1 & 0xC0u) != 0x80u) | ((b2 & 0xC0u) != 0x80u) | ((b3 & 0xC0u) != 0x80u)) return false;
  std::uint32_t const c = ((b & 0x07u) << 18) | ((b1 & 0x3Fu) << 12) | ((b2 & 0x3Fu) << 6) | (b3 & 0x3Fu);
  if constexpr (sizeof(Out) == 2) {
    o[0] = static_cast<Out>(0xD7C0u + (c >> 10));
    o[1] = static_cast<Out>(0xDC00u + (c & 0x3FFu));
    o += 2;
  } else {
    *o++ = static_cast<Out>(c);
  }
  p += 4;
  return true;
}

// The set in use: the best the processor has unless a test forced another.
unicode_kernels const& active_kernels();

// ---- the kernels each set is made of -----------------------------------------

// Portable (unicode_portable.cpp): plain-unit runs with SSE2 where present.
void portable_decode(u8 const*& p, u8 const* end, u16*& o);
void portable_decode(u8 const*& p, u8 const* end, wchar_t*& o);
void portable_encode(u16 const*& p, u16 const* end, u8*& o);
void portable_encode(wchar_t const*& p, wchar_t const* end, u8*& o);
void portable_widen(u16 const*& p, u16 const* end, wchar_t*& o);
void portable_narrow(wchar_t const*& p, wchar_t const* end, u16*& o);
std::size_t portable_utf16_length_of_utf8(u8 const* p, std::size_t n);
std::size_t portable_utf32_length_of_utf8(u8 const* p, std::size_t n);
std::size_t portable_utf8_length_of_utf16(u16 const* p, std::size_t n);
std::size_t portable_utf8_length_of_utf32(wchar_t const* p, std::size_t n);
std::size_t portable_utf32_length_of_utf16(u16 const* p, std::size_t n);
std::size_t portable_utf16_length_of_utf32(wchar_t const* p, std::size_t n);

// SSSE3 (unicode_ssse3.cpp): mixed one- to three-byte text.
void ssse3_decode(u8 const*& p, u8 const* end, u16*& o);
void ssse3_decode(u8 const*& p, u8 const* end, wchar_t*& o);
void ssse3_encode(u16 const*& p, u16 const* end, u8*& o);
void ssse3_encode(wchar_t const*& p, wchar_t const* end, u8*& o);

// AVX2 (unicode_avx2_*.cpp).
void avx2_decode(u8 const*& p, u8 const* end, u16*& o);
void avx2_decode(u8 const*& p, u8 const* end, wchar_t*& o);
void avx2_encode(u16 const*& p, u16 const* end, u8*& o);
void avx2_encode(wchar_t const*& p, wchar_t const* end, u8*& o);
void avx2_widen(u16 const*& p, u16 const* end, wchar_t*& o);
void avx2_narrow(wchar_t const*& p, wchar_t const* end, u16*& o);
std::size_t avx2_utf16_length_of_utf8(u8 const* p, std::size_t n);
std::size_t avx2_utf32_length_of_utf8(u8 const* p, std::size_t n);
std::size_t avx2_utf8_length_of_utf16(u16 const* p, std::size_t n);
std::size_t avx2_utf8_length_of_utf32(wchar_t const* p, std::size_t n);
std::size_t avx2_utf32_length_of_utf16(u16 const* p, std::size_t n);
std::size_t avx2_utf16_length_of_utf32(wchar_t const* p, std::size_t n);

// AVX-512 (unicode_avx512.cpp).
void avx512_decode(u8 const*& p, u8 const* end, u16*& o);
void avx512_decode(u8 const*& p, u8 const* end, wchar_t*& o);
void avx512_encode(u16 const*& p, u16 const* end, u8*& o);
void avx512_encode(wchar_t const*& p, wchar_t const* end, u8*& o);
void avx512_widen(u16 const*& p, u16 const* end, wchar_t*& o);
void avx512_narrow(wchar_t const*& p, wchar_t const* end, u16*& o);
std::size_t avx512_utf16_length_of_utf8(u8 const* p, std::size_t n);
std::size_t avx512_utf32_length_of_utf8(u8 const* p, std::size_t n);
std::size_t avx512_utf8_length_of_utf16(u16 const* p, std::size_t n);
std::size_t avx512_utf8_length_of_utf32(wchar_t const* p, std::size_t n);
std::size_t avx512_utf32_length_of_utf16(u16 const* p, std::size_t n);
std::size_t avx512_utf16_length_of_utf32(wchar_t const* p, std::size_t n);

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_STRINGS_UNICODE_KERNELS_HPP
