// AVX-512 kernels of the Unicode transforms (F, BW, VL and VBMI2), written
// once for two builds: unicode_avx512.cpp compiles them for the processor,
// and the tests compile them over a software model of the same instructions,
// so that they are checked on machines without AVX-512 too. The including
// file provides the intrinsics and defines VEXA_AVX512 (the function target)
// and, for a build other than the library's, VEXA_AVX512_KERNELS (the
// namespace, so that the two builds never share a name in one program).
//
// Every kernel works on 64-byte registers and writes through compress: a
// unit (or UTF-8 byte) is computed at every position, the wanted ones are
// packed to the front by a mask, and the pointer advances by the mask's
// population count.
// - Decoding: 64 bytes are classified at once; a window that holds only
//   one- to three-byte sequences, whole, is decoded at all 32 positions of
//   each half and the units of the real starts are kept. ASCII and runs of
//   sixteen four-byte sequences have their own short paths.
// - Encoding: 16 units become up to four bytes each in 32-bit lanes (a pair
//   becomes one four-byte lane and its low unit none); a byte mask keeps the
//   bytes each lane needs.
// - Widening and narrowing form or split the pairs in lanes and compress.
// - The length passes count with compare masks and population counts.
#ifndef VEXA_SRC_STRINGS_UNICODE_AVX512_HPP
#define VEXA_SRC_STRINGS_UNICODE_AVX512_HPP

#include <cstddef>
#include <cstdint>

#include "strings/unicode_kernels.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {
#ifndef VEXA_AVX512_KERNELS
#define VEXA_AVX512_KERNELS avx512
#endif
namespace VEXA_AVX512_KERNELS {

using u8 = unsigned char;
using u16 = unsigned short;
using u64 = std::uint64_t;
using mask16 = std::uint16_t;  // the instructions' 16- and 32-lane masks
using mask32 = std::uint32_t;

VEXA_AVX512 inline __m512i load(void const* p) { return _mm512_loadu_si512(p); }
VEXA_AVX512 inline __m256i load256(void const* p) { return _mm256_loadu_si256(static_cast<__m256i const*>(p)); }
VEXA_AVX512 inline void store(void* p, __m512i v) { _mm512_storeu_si512(p, v); }
VEXA_AVX512 inline void store256(void* p, __m256i v) { _mm256_storeu_si256(static_cast<__m256i*>(p), v); }
inline unsigned count(u64 m) { return static_cast<unsigned>(__builtin_popcountll(m)); }
inline unsigned first(u64 m) { return static_cast<unsigned>(__builtin_ctzll(m)); }

// ---- lengths -----------------------------------------------------------------

template <bool Pairs>
VEXA_AVX512 std::size_t utf8_units(u8 const* p, std::size_t n) {
  std::size_t units = 0, i = 0;
  for (; n - i >= 64; i += 64) {
    __m512i const v = load(p + i);
    units += count(_mm512_cmpgt_epi8_mask(v, _mm512_set1_epi8(-65)));  // not 80..BF
    if (Pairs) units += count(_mm512_cmpge_epu8_mask(v, _mm512_set1_epi8(static_cast<char>(0xF0))));
  }
  for (; i < n; ++i) units += ((p[i] & 0xC0u) != 0x80u) + (Pairs && p[i] >= 0xF0u);
  return units;
}

VEXA_AVX512 inline std::size_t utf8_length_of_utf16(u16 const* p, std::size_t n) {
  std::size_t bytes = 0, i = 0;
  for (; n - i >= 32; i += 32) {
    __m512i const v = load(p + i);
    __m512i const top = _mm512_and_si512(v, _mm512_set1_epi16(static_cast<short>(0xF800)));
    bytes += 32 + count(_mm512_cmpge_epu16_mask(v, _mm512_set1_epi16(0x80))) +
             count(_mm512_cmpge_epu16_mask(v, _mm512_set1_epi16(0x800)));
    bytes -= count(_mm512_cmpeq_epi16_mask(top, _mm512_set1_epi16(static_cast<short>(0xD800))));
  }
  for (; i < n; ++i) {
    unsigned const u = p[i];
    bytes += 1 + static_cast<std::size_t>(u >= 0x80u) + (u >= 0x800u);
    bytes -= (u & 0xF800u) == 0xD800u;
  }
  return bytes;
}

VEXA_AVX512 inline std::size_t utf8_length_of_utf32(wchar_t const* p, std::size_t n) {
  std::size_t bytes = 0, i = 0;
  for (; n - i >= 16; i += 16) {
    __m512i const c = load(p + i);
    // Signed: negative units are one byte; units above 0x10FFFF none.
    bytes += 16 + count(_mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0x7F))) +
             count(_mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0x7FF))) +
             count(_mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0xFFFF)));
    bytes -= 4 * count(_mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0x10FFFF)));
  }
  for (; i < n; ++i) {
    std::int32_t const c = p[i];
    bytes += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : c <= 0x10FFFF ? 4 : 0;
  }
  return bytes;
}

VEXA_AVX512 inline std::size_t utf32_length_of_utf16(u16 const* p, std::size_t n) {
  std::size_t units = n, i = 0;
  for (; n - i >= 32; i += 32) {
    __m512i const kind = _mm512_and_si512(load(p + i), _mm512_set1_epi16(static_cast<short>(0xFC00)));
    units -= count(_mm512_cmpeq_epi16_mask(kind, _mm512_set1_epi16(static_cast<short>(0xDC00))));
  }
  for (; i < n; ++i) units -= (p[i] & 0xFC00u) == 0xDC00u;
  return units;
}

VEXA_AVX512 inline std::size_t utf16_length_of_utf32(wchar_t const* p, std::size_t n) {
  std::size_t units = n, i = 0;
  for (; n - i >= 16; i += 16) {
    __m512i const c = load(p + i);
    units += count(_mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0xFFFE)) &
                   ~_mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0x10FFFF)));
  }
  for (; i < n; ++i) {
    std::int32_t const c = p[i];
    units += c >= 0xFFFF && c <= 0x10FFFF;
  }
  return units;
}

// ---- UTF-8 to UTF-16 and UTF-32 ------------------------------------------------

// Up to 32 units held in 16-bit lanes, the first `n` of them wanted.
VEXA_AVX512 inline void store_units(u16* o, __m512i units, unsigned) { store(o, units); }
VEXA_AVX512 inline void store_units(wchar_t* o, __m512i units, unsigned n) {
  store(o, _mm512_cvtepu16_epi32(_mm512_castsi512_si256(units)));
  if (n > 16) store(o + 16, _mm512_cvtepu16_epi32(_mm512_extracti64x4_epi64(units, 1)));
}

// The units of the 32 positions from q, taking the byte at each position and
// the two after it as a sequence of the length its lead byte says.
VEXA_AVX512 inline __m512i units_at(u8 const* q) {
  __m512i const b0 = _mm512_cvtepu8_epi16(load256(q));
  __m512i const b1 = _mm512_cvtepu8_epi16(load256(q + 1));
  __m512i const b2 = _mm512_cvtepu8_epi16(load256(q + 2));
  __m512i const six = _mm512_set1_epi16(0x3F);
  __m512i const tail = _mm512_and_si512(b1, six);
  __m512i const two = _mm512_or_si512(_mm512_slli_epi16(_mm512_and_si512(b0, _mm512_set1_epi16(0x1F)), 6), tail);
  // b0 < 0x100, so shifting by 12 in a 16-bit lane keeps exactly its low four bits.
  __m512i const three = _mm512_or_si512(_mm512_or_si512(_mm512_slli_epi16(b0, 12), _mm512_slli_epi16(tail, 6)),
                                        _mm512_and_si512(b2, six));
  mask32 const is2 =
      _mm512_cmpeq_epi16_mask(_mm512_and_si512(b0, _mm512_set1_epi16(0xE0)), _mm512_set1_epi16(0xC0));
  mask32 const is3 =
      _mm512_cmpeq_epi16_mask(_mm512_and_si512(b0, _mm512_set1_epi16(0xF0)), _mm512_set1_epi16(0xE0));
  return _mm512_mask_blend_epi16(is3, _mm512_mask_blend_epi16(is2, b0, two), three);
}

// Sixteen four-byte sequences (64 bytes) as code points in 32-bit lanes.
VEXA_AVX512 inline __m512i fours(__m512i x) {
  return _mm512_or_si512(
      _mm512_or_si512(_mm512_and_si512(_mm512_slli_epi32(x, 18), _mm512_set1_epi32(0x1C0000)),
                      _mm512_and_si512(_mm512_slli_epi32(x, 4), _mm512_set1_epi32(0x3F000))),
      _mm512_or_si512(_mm512_and_si512(_mm512_srli_epi32(x, 10), _mm512_set1_epi32(0xFC0)),
                      _mm512_and_si512(_mm512_srli_epi32(x, 24), _mm512_set1_epi32(0x3F))));
}

template <typename Out>
VEXA_AVX512 void decode(u8 const*& p_in, u8 const* end, Out*& o_in) {
  u8 const* p = p_in;
  Out* o = o_in;
  __m512i const c0 = _mm512_set1_epi8(static_cast<char>(0xC0));
  while (end - p >= 66) {
    __m512i const v = load(p);
    u64 const high = _mm512_movepi8_mask(v);
    if (high == 0) {
      if constexpr (sizeof(Out) == 2) {
        store(o, _mm512_cvtepu8_epi16(_mm512_castsi512_si256(v)));
        store(o + 32, _mm512_cvtepu8_epi16(_mm512_extracti64x4_epi64(v, 1)));
      } else {
        for (unsigned k = 0; k < 4; ++k) {
          store(o + 16 * k, _mm512_cvtepu8_epi32(_mm_loadu_si128(reinterpret_cast<__m128i const*>(p + 16 * k))));
        }
      }
      p += 64;
      o += 64;
      continue;
    }
    u64 const cont = _mm512_cmpeq_epi8_mask(_mm512_and_si512(v, c0), _mm512_set1_epi8(static_cast<char>(0x80)));
    if (cont == 0xEEEEEEEEEEEEEEEEull &&
        _mm512_cmpeq_epi8_mask(_mm512_and_si512(v, _mm512_set1_epi8(static_cast<char>(0xF8))),
                               _mm512_set1_epi8(static_cast<char>(0xF0))) == 0x1111111111111111ull) {
      __m512i const c = fours(v);
      if constexpr (sizeof(Out) == 2) {
        __m512i const hi = _mm512_add_epi32(_mm512_srli_epi32(c, 10), _mm512_set1_epi32(0xD7C0));
        __m512i const lo = _mm512_add_epi32(_mm512_and_si512(c, _mm512_set1_epi32(0x3FF)), _mm512_set1_epi32(0xDC00));
        store(o, _mm512_or_si512(hi, _mm512_slli_epi32(lo, 16)));
        o += 32;
      } else {
        store(o, c);
        o += 16;
      }
      p += 64;
      continue;
    }
    u64 const lead2 = _mm512_cmpeq_epi8_mask(_mm512_and_si512(v, _mm512_set1_epi8(static_cast<char>(0xE0))), c0);
    u64 const lead3 = _mm512_cmpeq_epi8_mask(_mm512_and_si512(v, _mm512_set1_epi8(static_cast<char>(0xF0))),
                                             _mm512_set1_epi8(static_cast<char>(0xE0)));
    // The window ends early at a sequence that runs past it and at any byte
    // that is neither ASCII, a continuation nor a two- or three-byte lead.
    u64 const last = u64{1} << 63;
    u64 const stop = (lead2 & last) | (lead3 & (last | (last >> 1))) | (high & ~(cont | lead2 | lead3));
    unsigned const size = stop != 0 ? first(stop) : 64u;
    if (size == 0) {
      if (decode_four(p, end, o)) continue;
      break;
    }
    u64 const window = size == 64 ? ~u64{0} : (u64{1} << size) - 1u;
    u64 const l2 = lead2 & window;
    u64 const l3 = lead3 & window;
    if (((l2 << 1) | (l3 << 1) | (l3 << 2)) != (cont & window)) break;
    u64 const starts = ~cont & window;
    for (unsigned at = 0; at < size; at += 32) {
      std::uint32_t const keep = static_cast<std::uint32_t>(starts >> at);
      unsigned const n = count(keep);
      store_units(o, _mm512_maskz_compress_epi16(keep, units_at(p + at)), n);
      o += n;
    }
    p += size;
  }
  p_in = p;
  o_in = o;
}

// ---- UTF-16 and UTF-32 to UTF-8 --------------------------------------------------

// Sixteen code points (or skipped lanes, `none`) in 32-bit lanes to their
// UTF-8 bytes, packed; returns the number of bytes stored. `one` marks lanes
// of one byte (their low byte), `none` lanes of no byte.
VEXA_AVX512 inline unsigned encode_lanes(u8* o, __m512i c, mask16 one, mask16 none) {
  __m512i const six = _mm512_set1_epi32(0x3F);
  __m512i const mark = _mm512_set1_epi32(0x80);
  __m512i const last = _mm512_or_si512(_mm512_and_si512(c, six), mark);
  __m512i const third = _mm512_or_si512(_mm512_and_si512(_mm512_srli_epi32(c, 6), six), mark);
  __m512i const second = _mm512_or_si512(_mm512_and_si512(_mm512_srli_epi32(c, 12), six), mark);
  mask16 const some = static_cast<mask16>(~one & ~none);
  mask16 const two = some & _mm512_cmplt_epi32_mask(c, _mm512_set1_epi32(0x800));
  mask16 const three = some & ~two & _mm512_cmplt_epi32_mask(c, _mm512_set1_epi32(0x10000));
  mask16 const four = some & ~two & ~three;
  __m512i bytes = _mm512_and_si512(c, _mm512_set1_epi32(0xFF));
  bytes = _mm512_mask_mov_epi32(
      bytes, two, _mm512_or_si512(_mm512_or_si512(_mm512_srli_epi32(c, 6), _mm512_set1_epi32(0xC0)),
                                  _mm512_slli_epi32(last, 8)));
  bytes = _mm512_mask_mov_epi32(
      bytes, three,
      _mm512_or_si512(_mm512_or_si512(_mm512_srli_epi32(c, 12), _mm512_set1_epi32(0xE0)),
                      _mm512_or_si512(_mm512_slli_epi32(third, 8), _mm512_slli_epi32(last, 16))));
  bytes = _mm512_mask_mov_epi32(
      bytes, four,
      _mm512_or_si512(_mm512_or_si512(_mm512_srli_epi32(c, 18), _mm512_set1_epi32(0xF0)),
                      _mm512_or_si512(_mm512_slli_epi32(second, 8),
                                      _mm512_or_si512(_mm512_slli_epi32(third, 16), _mm512_slli_epi32(last, 24)))));
  // Each lane's byte count, in every byte of the lane, against 0..3.
  __m512i length = _mm512_set1_epi32(0);
  length = _mm512_mask_mov_epi32(length, one, _mm512_set1_epi32(0x01010101));
  length = _mm512_mask_mov_epi32(length, two, _mm512_set1_epi32(0x02020202));
  length = _mm512_mask_mov_epi32(length, three, _mm512_set1_epi32(0x03030303));
  length = _mm512_mask_mov_epi32(length, four, _mm512_set1_epi32(0x04040404));
  u64 const keep = _mm512_cmpgt_epu8_mask(length, _mm512_set1_epi32(0x03020100));
  store(o, _mm512_maskz_compress_epi8(keep, bytes));
  return count(keep);
}

// Sixteen UTF-16 units from p (17 readable) with their pairs formed: `c`
// holds each unit, or at a high surrogate the code point of its pair;
// `low` marks the low halves, which give nothing of their own. `upto` is
// how many units can go: all 16, 15 when a pair starts at the last lane,
// or those before the first malformed pair (`bad`), after which the kernel
// must stop.
struct paired_units {
  __m512i c;
  mask16 high, low;
  unsigned upto;
  bool bad;
};

VEXA_AVX512 inline paired_units pair_up(u16 const* p) {
  __m512i const a = _mm512_cvtepu16_epi32(load256(p));
  __m512i const b = _mm512_cvtepu16_epi32(load256(p + 1));
  __m512i const top6 = _mm512_set1_epi32(0xFC00);
  mask16 const high = _mm512_cmpeq_epi32_mask(_mm512_and_si512(a, top6), _mm512_set1_epi32(0xD800));
  mask16 const low = _mm512_cmpeq_epi32_mask(_mm512_and_si512(a, top6), _mm512_set1_epi32(0xDC00));
  mask16 const next_low = _mm512_cmpeq_epi32_mask(_mm512_and_si512(b, top6), _mm512_set1_epi32(0xDC00));
  unsigned const taken = (high & 0x8000u) ? 15u : 16u;
  unsigned const window = (1u << taken) - 1u;
  unsigned const bad = (high & window & ~next_low) | (low & ~(high << 1) & window);
  __m512i const c = _mm512_mask_mov_epi32(
      a, high, _mm512_sub_epi32(_mm512_add_epi32(_mm512_slli_epi32(a, 10), b), _mm512_set1_epi32(0x35FDC00)));
  return {c, high, low, bad != 0 ? first(bad) : taken, bad != 0};
}

VEXA_AVX512 void encode(u16 const*& p_in, u16 const* end, u8*& o_in) {
  u16 const* p = p_in;
  u8* o = o_in;
  while (end - p >= 33) {
    __m512i const v = load(p);
    if (_mm512_cmpge_epu16_mask(v, _mm512_set1_epi16(0x80)) == 0) {
      store256(o, _mm512_cvtepi16_epi8(v));
      p += 32;
      o += 32;
      continue;
    }
    paired_units const units = pair_up(p);
    if (units.upto == 0) break;
    mask16 const lanes = static_cast<mask16>((1u << units.upto) - 1u);
    // Below 0x80 is one byte; a pair's code point is never below it.
    mask16 const one = _mm512_cmplt_epu32_mask(units.c, _mm512_set1_epi32(0x80)) & lanes;
    o += encode_lanes(o, units.c, one, static_cast<mask16>(~lanes | units.low));
    p += units.upto;
    if (units.bad) break;
  }
  p_in = p;
  o_in = o;
}

VEXA_AVX512 void encode(wchar_t const*& p_in, wchar_t const* end, u8*& o_in) {
  wchar_t const* p = p_in;
  u8* o = o_in;
  while (end - p >= 16) {
    __m512i const c = load(p);
    // Signed: negative units are one byte, their low eight bits.
    mask16 const one = _mm512_cmplt_epi32_mask(c, _mm512_set1_epi32(0x80));
    if (one == 0xFFFFu) {
      _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm512_cvtepi32_epi8(c));
      p += 16;
      o += 16;
      continue;
    }
    mask16 const surrogate = _mm512_cmpeq_epi32_mask(
        _mm512_and_si512(c, _mm512_set1_epi32(static_cast<int>(0xFFFFF800u))), _mm512_set1_epi32(0xD800));
    // Units above 0x10FFFF are skipped: they give no byte at all.
    mask16 const none = _mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0x10FFFF));
    unsigned const upto = surrogate != 0 ? first(surrogate) : 16u;
    if (upto == 0) break;
    mask16 const lanes = static_cast<mask16>((1u << upto) - 1u);
    o += encode_lanes(o, c, one & lanes, static_cast<mask16>(none | ~lanes));
    p += upto;
    if (surrogate != 0) break;
  }
  p_in = p;
  o_in = o;
}

// ---- UTF-16 to UTF-32 and back ---------------------------------------------------

VEXA_AVX512 void widen(u16 const*& p_in, u16 const* end, wchar_t*& o_in) {
  u16 const* p = p_in;
  wchar_t* o = o_in;
  while (end - p >= 33) {
    __m512i const v = load(p);
    __m512i const kind = _mm512_and_si512(v, _mm512_set1_epi16(static_cast<short>(0xF800)));
    if (_mm512_cmpeq_epi16_mask(kind, _mm512_set1_epi16(static_cast<short>(0xD800))) == 0) {
      store(o, _mm512_cvtepu16_epi32(_mm512_castsi512_si256(v)));
      store(o + 16, _mm512_cvtepu16_epi32(_mm512_extracti64x4_epi64(v, 1)));
      p += 32;
      o += 32;
      continue;
    }
    paired_units const units = pair_up(p);
    mask16 const keep = static_cast<mask16>(((1u << units.upto) - 1u) & ~units.low);
    store(o, _mm512_maskz_compress_epi32(keep, units.c));
    o += count(keep);
    p += units.upto;
    if (units.bad) break;
  }
  p_in = p;
  o_in = o;
}

VEXA_AVX512 void narrow(wchar_t const*& p_in, wchar_t const* end, u16*& o_in) {
  wchar_t const* p = p_in;
  u16* o = o_in;
  __m512i const surrogate = _mm512_set1_epi32(0xD800);
  while (end - p >= 16) {
    __m512i const c = load(p);
    mask16 const bad =
        _mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0x10FFFF)) |
        _mm512_cmpeq_epi32_mask(_mm512_and_si512(c, _mm512_set1_epi32(static_cast<int>(0xFFFFF800u))), surrogate);
    unsigned const upto = bad != 0 ? first(bad) : 16u;
    if (upto == 0) break;
    unsigned const lanes = (1u << upto) - 1u;
    // Signed: negative units are single units, their low 16 bits.
    unsigned const pairs = _mm512_cmpgt_epi32_mask(c, _mm512_set1_epi32(0xFFFE)) & lanes;
    if (pairs == 0 && upto == 16) {
      store256(o, _mm512_cvtepi32_epi16(c));
      p += 16;
      o += 16;
      continue;
    }
    // Each lane as (second unit << 16) | first unit; a single unit's second
    // slot is dropped. No 0x10000 is subtracted before the high unit.
    __m512i const hi = _mm512_add_epi32(_mm512_srli_epi32(c, 10), surrogate);
    __m512i const lo = _mm512_add_epi32(_mm512_and_si512(c, _mm512_set1_epi32(0x3FF)), _mm512_set1_epi32(0xDC00));
    __m512i const units = _mm512_mask_mov_epi32(_mm512_and_si512(c, _mm512_set1_epi32(0xFFFF)),
                                                static_cast<mask16>(pairs),
                                                _mm512_or_si512(hi, _mm512_slli_epi32(lo, 16)));
    std::uint32_t const keep = _pdep_u32(lanes, 0x55555555u) | _pdep_u32(pairs, 0xAAAAAAAAu);
    store(o, _mm512_maskz_compress_epi16(keep, units));
    o += count(keep);
    p += upto;
    if (bad != 0) break;
  }
  p_in = p;
  o_in = o;
}

}  // namespace VEXA_AVX512_KERNELS
}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_STRINGS_UNICODE_AVX512_HPP
