// Block helpers shared by the unit-by-unit code and the portable kernel set:
// SSE2, which every x86-64 processor has, or words of eight bytes elsewhere.
//
// Each helper looks at the next block of input (the caller guarantees a whole
// block is there and that the output has room for a whole block), stores the
// converted block and returns how many leading units of it are plain; only
// those count, the rest of the stored block is overwritten later.
#ifndef VEXA_SRC_STRINGS_UNICODE_SSE2_HPP
#define VEXA_SRC_STRINGS_UNICODE_SSE2_HPP

#include <cstdint>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace VEXA_2_10 {
namespace strings {
namespace _private {
namespace sse2 {

using u8 = unsigned char;
using u16 = unsigned short;
#if defined(__SSE2__)

// 16 bytes of UTF-8 widened to 16-bit units; returns the ASCII prefix length.
inline unsigned ascii_block(u8 const* p, u16* o) {
  __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
  __m128i const z = _mm_setzero_si128();
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_unpacklo_epi8(v, z));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o + 8), _mm_unpackhi_epi8(v, z));
  unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(v));
  return mask == 0 ? 16u : static_cast<unsigned>(__builtin_ctz(mask));
}

// 16 bytes of UTF-8 widened to 32-bit units.
inline unsigned ascii_block(u8 const* p, wchar_t* o) {
  __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
  __m128i const z = _mm_setzero_si128();
  __m128i const lo = _mm_unpacklo_epi8(v, z);
  __m128i const hi = _mm_unpackhi_epi8(v, z);
  auto* out = reinterpret_cast<__m128i*>(o);
  _mm_storeu_si128(out + 0, _mm_unpacklo_epi16(lo, z));
  _mm_storeu_si128(out + 1, _mm_unpackhi_epi16(lo, z));
  _mm_storeu_si128(out + 2, _mm_unpacklo_epi16(hi, z));
  _mm_storeu_si128(out + 3, _mm_unpackhi_epi16(hi, z));
  unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(v));
  return mask == 0 ? 16u : static_cast<unsigned>(__builtin_ctz(mask));
}

// 16 units of UTF-16 narrowed to bytes; returns the prefix of units below 0x80.
inline unsigned ascii_block(u16 const* p, u8* o) {
  __m128i const a = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
  __m128i const b = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p + 8));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_packus_epi16(a, b));
  __m128i const high = _mm_set1_epi16(static_cast<short>(0xFF80));
  __m128i const z = _mm_setzero_si128();
  __m128i const ascii = _mm_packs_epi16(_mm_cmpeq_epi16(_mm_and_si128(a, high), z),
                                        _mm_cmpeq_epi16(_mm_and_si128(b, high), z));
  unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(ascii)) ^ 0xFFFFu;
  return mask == 0 ? 16u : static_cast<unsigned>(__builtin_ctz(mask));
}

// 16 units of UTF-32 that are below 0x80 when compared signed (negative
// units included: they are written as their low byte) to bytes.
inline unsigned ascii_block(wchar_t const* p, u8* o) {
  auto const* in = reinterpret_cast<__m128i const*>(p);
  __m128i const v0 = _mm_loadu_si128(in + 0);
  __m128i const v1 = _mm_loadu_si128(in + 1);
  __m128i const v2 = _mm_loadu_si128(in + 2);
  __m128i const v3 = _mm_loadu_si128(in + 3);
  __m128i const ff = _mm_set1_epi32(0xFF);
  __m128i const w01 = _mm_packs_epi32(_mm_and_si128(v0, ff), _mm_and_si128(v1, ff));
  __m128i const w23 = _mm_packs_epi32(_mm_and_si128(v2, ff), _mm_and_si128(v3, ff));
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_packus_epi16(w01, w23));
  __m128i const limit = _mm_set1_epi32(0x80);
  __m128i const ok01 = _mm_packs_epi32(_mm_cmplt_epi32(v0, limit), _mm_cmplt_epi32(v1, limit));
  __m128i const ok23 = _mm_packs_epi32(_mm_cmplt_epi32(v2, limit), _mm_cmplt_epi32(v3, limit));
  unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(ok01, ok23))) ^ 0xFFFFu;
  return mask == 0 ? 16u : static_cast<unsigned>(__builtin_ctz(mask));
}

// 8 units of UTF-16 widened to UTF-32; returns the prefix without surrogates.
inline unsigned plain_block_16to32(u16 const* p, wchar_t* o) {
  __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
  __m128i const z = _mm_setzero_si128();
  auto* out = reinterpret_cast<__m128i*>(o);
  _mm_storeu_si128(out + 0, _mm_unpacklo_epi16(v, z));
  _mm_storeu_si128(out + 1, _mm_unpackhi_epi16(v, z));
  __m128i const surrogate = _mm_cmpeq_epi16(_mm_and_si128(v, _mm_set1_epi16(static_cast<short>(0xF800))),
                                            _mm_set1_epi16(static_cast<short>(0xD800)));
  unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(surrogate));
  return mask == 0 ? 8u : static_cast<unsigned>(__builtin_ctz(mask)) / 2;
}

// 8 units of UTF-32 narrowed to UTF-16; returns the prefix of units that
// give one unit each (signed below 0xFFFF and no surrogate).
inline unsigned plain_block_32to16(wchar_t const* p, u16* o) {
  auto const* in = reinterpret_cast<__m128i const*>(p);
  __m128i const a = _mm_loadu_si128(in + 0);
  __m128i const b = _mm_loadu_si128(in + 1);
  // Sign-extend the low 16 bits so that the saturating pack keeps them as is.
  __m128i const a16 = _mm_srai_epi32(_mm_slli_epi32(a, 16), 16);
  __m128i const b16 = _mm_srai_epi32(_mm_slli_epi32(b, 16), 16);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm_packs_epi32(a16, b16));
  __m128i const limit = _mm_set1_epi32(0xFFFF);
  __m128i const top = _mm_set1_epi32(static_cast<int>(0xFFFFF800u));
  __m128i const sur = _mm_set1_epi32(0xD800);
  __m128i const ok_a = _mm_andnot_si128(_mm_cmpeq_epi32(_mm_and_si128(a, top), sur), _mm_cmplt_epi32(a, limit));
  __m128i const ok_b = _mm_andnot_si128(_mm_cmpeq_epi32(_mm_and_si128(b, top), sur), _mm_cmplt_epi32(b, limit));
  unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi32(ok_a, ok_b))) ^ 0xFFFFu;
  return mask == 0 ? 8u : static_cast<unsigned>(__builtin_ctz(mask)) / 2;
}

#else  // word-at-a-time fallback

inline unsigned ascii_prefix8(u8 const* p) {
  std::uint64_t w0, w1;
  std::memcpy(&w0, p, 8);
  std::memcpy(&w1, p + 8, 8);
  std::uint64_t const m0 = w0 & 0x8080808080808080ull;
  if (m0 != 0) return static_cast<unsigned>(__builtin_ctzll(m0)) / 8;
  std::uint64_t const m1 = w1 & 0x8080808080808080ull;
  return m1 == 0 ? 16u : 8u + static_cast<unsigned>(__builtin_ctzll(m1)) / 8;
}

inline unsigned ascii_block(u8 const* p, u16* o) {
  for (unsigned i = 0; i < 16; ++i) o[i] = p[i];
  return ascii_prefix8(p);
}

inline unsigned ascii_block(u8 const* p, wchar_t* o) {
  for (unsigned i = 0; i < 16; ++i) o[i] = p[i];
  return ascii_prefix8(p);
}

inline unsigned ascii_block(u16 const* p, u8* o) {
  unsigned k = 0;
  while (k < 16 && p[k] < 0x80) { o[k] = static_cast<u8>(p[k]); ++k; }
  return k;
}

inline unsigned ascii_block(wchar_t const* p, u8* o) {
  unsigned k = 0;
  while (k < 16 && p[k] < 0x80) { o[k] = static_cast<u8>(p[k]); ++k; }
  return k;
}

inline unsigned plain_block_16to32(u16 const* p, wchar_t* o) {
  unsigned k = 0;
  while (k < 8 && (p[k] & 0xF800u) != 0xD800u) { o[k] = p[k]; ++k; }
  return k;
}

inline unsigned plain_block_32to16(wchar_t const* p, u16* o) {
  unsigned k = 0;
  while (k < 8 && p[k] < 0xFFFF && (p[k] < 0xD800 || p[k] > 0xDFFF)) {
    o[k] = static_cast<u16>(p[k]);
    ++k;
  }
  return k;
}

#endif

// Converts blocks of eight units while each block is taken whole; stops with
// `p` and `o` at the first unit a block did not take (or fewer than eight
// remain).
template <typename In, typename Out, typename Block>
inline void run_plain_blocks(In const*& p, In const* end, Out*& o, Block block) {
  unsigned k;
  do {
    k = block(p, o);
    p += k;
    o += k;
  } while (k == 8 && end - p >= 8);
}

}  // namespace sse2
}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_STRINGS_UNICODE_SSE2_HPP
