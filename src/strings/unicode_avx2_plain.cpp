// AVX2 kernels between UTF-16 and UTF-32, and the length passes of every
// transform (see unicode_kernels.hpp).
//
// Widening and narrowing take 16 units at once when none needs pairing and
// otherwise 8, forming or splitting the surrogate pairs in 32-bit lanes and
// closing the gaps with one table shuffle. The length passes count with
// vector compares: each lane adds the compare's -1 to a small counter, which
// is summed into the total before it could overflow.
#include <cstdint>

#include "strings/unicode_kernels.hpp"
#include "strings/unicode_tables.hpp"

#if defined(__x86_64__) || defined(__i386__)
#include "strings/unicode_avx2.hpp"
#endif

namespace VEXA_2_10 {
namespace strings {
namespace _private {

#if defined(__x86_64__) || defined(__i386__)

namespace {

using namespace avx2;

constexpr keep_tables const& tables = unicode_tables;


// The sum of the eight 32-bit lanes, taken as signed.
VEXA_AVX2 inline std::int64_t sum32(__m256i v) {
  __m256i const wide = _mm256_add_epi64(_mm256_cvtepi32_epi64(_mm256_castsi256_si128(v)),
                                        _mm256_cvtepi32_epi64(_mm256_extracti128_si256(v, 1)));
  __m128i const half = _mm_add_epi64(_mm256_castsi256_si128(wide), _mm256_extracti128_si256(wide, 1));
  return _mm_cvtsi128_si64(half) + _mm_extract_epi64(half, 1);
}

// The sum of the sixteen 16-bit lanes, taken as signed.
VEXA_AVX2 inline std::int64_t sum16(__m256i v) { return sum32(_mm256_madd_epi16(v, _mm256_set1_epi16(1))); }

// The sum of the 32 bytes, taken as unsigned.
VEXA_AVX2 inline std::int64_t sum8(__m256i v) {
  __m256i const s = _mm256_sad_epu8(v, _mm256_setzero_si256());
  __m128i const half = _mm_add_epi64(_mm256_castsi256_si128(s), _mm256_extracti128_si256(s, 1));
  return _mm_cvtsi128_si64(half) + _mm_extract_epi64(half, 1);
}

// Counts of UTF-8 bytes: every byte not a continuation, and (for UTF-16)
// every lead of a four-byte sequence once more.
template <bool Pairs>
VEXA_AVX2 std::size_t utf8_units(u8 const* p, std::size_t n) {
  std::size_t units = 0;
  std::size_t i = 0;
  __m256i const last_continuation = _mm256_set1_epi8(-65);  // 0xBF
  __m256i const four = _mm256_set1_epi8(static_cast<char>(0xF0));
  while (n - i >= 32) {
    // Each byte lane counts down by at most 2 per block: 127 blocks fit.
    std::size_t const blocks = (n - i) / 32 < 127 ? (n - i) / 32 : 127;
    __m256i count = _mm256_setzero_si256();
    for (std::size_t b = 0; b < blocks; ++b, i += 32) {
      __m256i const v = load(p + i);
      count = _mm256_sub_epi8(count, _mm256_cmpgt_epi8(v, last_continuation));
      if (Pairs) count = _mm256_sub_epi8(count, _mm256_cmpeq_epi8(_mm256_max_epu8(v, four), v));
    }
    units += static_cast<std::size_t>(sum8(count));
  }
  for (; i < n; ++i) units += ((p[i] & 0xC0u) != 0x80u) + (Pairs && p[i] >= 0xF0u);
  return units;
}

}  // namespace

// ---- lengths -------------------------------------------------------------------

VEXA_AVX2 std::size_t avx2_utf16_length_of_utf8(u8 const* p, std::size_t n) { return utf8_units<true>(p, n); }
VEXA_AVX2 std::size_t avx2_utf32_length_of_utf8(u8 const* p, std::size_t n) { return utf8_units<false>(p, n); }

// Three bytes a unit, one less below 0x800, one less again below 0x80, and
// one less for each unit of a pair.
VEXA_AVX2 std::size_t avx2_utf8_length_of_utf16(u16 const* p, std::size_t n) {
  std::size_t i = 0;
  std::int64_t less = 0;  // counted down: the compares give -1
  __m256i const z = _mm256_setzero_si256();
  while (n - i >= 16) {
    std::size_t const blocks = (n - i) / 16 < 8192 ? (n - i) / 16 : 8192;  // 3 x 8192 < 32768
    __m256i count = z;
    for (std::size_t b = 0; b < blocks; ++b, i += 16) {
      __m256i const v = load(p + i);
      __m256i const top = _mm256_and_si256(v, _mm256_set1_epi16(static_cast<short>(0xF800)));
      count = _mm256_add_epi16(count, _mm256_cmpeq_epi16(top, z));
      count = _mm256_add_epi16(count, _mm256_cmpeq_epi16(top, _mm256_set1_epi16(static_cast<short>(0xD800))));
      count = _mm256_add_epi16(
          count, _mm256_cmpeq_epi16(_mm256_and_si256(v, _mm256_set1_epi16(static_cast<short>(0xFF80))), z));
    }
    less += sum16(count);
  }
  std::size_t bytes = 3 * i + static_cast<std::size_t>(less);  // less <= 0: wraps back down
  return bytes + portable_utf8_length_of_utf16(p + i, n - i);
}

VEXA_AVX2 std::size_t avx2_utf8_length_of_utf32(wchar_t const* p, std::size_t n) {
  std::size_t i = 0;
  std::int64_t more = 0;
  while (n - i >= 8) {
    std::size_t const blocks = (n - i) / 8 < (1u << 20) ? (n - i) / 8 : (1u << 20);
    __m256i count = _mm256_setzero_si256();
    for (std::size_t b = 0; b < blocks; ++b, i += 8) {
      __m256i const c = load(p + i);
      __m256i const m1 = _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0x7F));
      __m256i const m2 = _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0x7FF));
      __m256i const m3 = _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0xFFFF));
      __m256i const m4 = _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0x10FFFF));
      // Units above 0x10FFFF are skipped: they give no byte at all.
      count = _mm256_sub_epi32(count, _mm256_add_epi32(_mm256_add_epi32(m1, m2), m3));
      count = _mm256_add_epi32(count, _mm256_slli_epi32(m4, 2));
    }
    more += sum32(count);
  }
  return i + static_cast<std::size_t>(more) + portable_utf8_length_of_utf32(p + i, n - i);
}

VEXA_AVX2 std::size_t avx2_utf32_length_of_utf16(u16 const* p, std::size_t n) {
  std::size_t i = 0;
  std::int64_t lows = 0;
  while (n - i >= 16) {
    std::size_t const blocks = (n - i) / 16 < 16384 ? (n - i) / 16 : 16384;
    __m256i count = _mm256_setzero_si256();
    for (std::size_t b = 0; b < blocks; ++b, i += 16) {
      __m256i const kind = _mm256_and_si256(load(p + i), _mm256_set1_epi16(static_cast<short>(0xFC00)));
      count = _mm256_sub_epi16(count, _mm256_cmpeq_epi16(kind, _mm256_set1_epi16(static_cast<short>(0xDC00))));
    }
    lows += sum16(count);
  }
  return i - static_cast<std::size_t>(lows) + portable_utf32_length_of_utf16(p + i, n - i);
}

VEXA_AVX2 std::size_t avx2_utf16_length_of_utf32(wchar_t const* p, std::size_t n) {
  std::size_t i = 0;
  std::int64_t pairs = 0;
  while (n - i >= 8) {
    std::size_t const blocks = (n - i) / 8 < (1u << 20) ? (n - i) / 8 : (1u << 20);
    __m256i count = _mm256_setzero_si256();
    for (std::size_t b = 0; b < blocks; ++b, i += 8) {
      __m256i const c = load(p + i);
      __m256i const pair = _mm256_andnot_si256(_mm256_cmpgt_epi32(c, _mm256_set1_epi32(0x10FFFF)),
                                               _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0xFFFE)));
      count = _mm256_sub_epi32(count, pair);
    }
    pairs += sum32(count);
  }
  return i + static_cast<std::size_t>(pairs) + portable_utf16_length_of_utf32(p + i, n - i);
}

// ---- UTF-16 to UTF-32 -----------------------------------------------------------

VEXA_AVX2 void avx2_widen(u16 const*& p_in, u16 const* end, wchar_t*& o_in) {
  u16 const* p = p_in;
  wchar_t* o = o_in;
  __m256i const top6 = _mm256_set1_epi32(0xFC00);
  while (end - p >= 16) {
    __m256i const v = load(p);
    __m256i const kind = _mm256_and_si256(v, _mm256_set1_epi16(static_cast<short>(0xF800)));
    if (mask8(_mm256_cmpeq_epi16(kind, _mm256_set1_epi16(static_cast<short>(0xD800)))) == 0) {
      store(o, _mm256_cvtepu16_epi32(_mm256_castsi256_si128(v)));
      store(o + 8, _mm256_cvtepu16_epi32(_mm256_extracti128_si256(v, 1)));
      p += 16;
      o += 16;
      continue;
    }
    // Eight pairs in a row (emoji) in 32-bit lanes, high unit first.
    __m256i const pair_kinds = _mm256_and_si256(v, _mm256_set1_epi32(static_cast<int>(0xFC00FC00u)));
    if (mask8(_mm256_cmpeq_epi32(pair_kinds, _mm256_set1_epi32(static_cast<int>(0xDC00D800u)))) == 0xFFFFFFFFu) {
      __m256i const ten = _mm256_set1_epi32(0x3FF);
      store(o, _mm256_add_epi32(_mm256_or_si256(_mm256_slli_epi32(_mm256_and_si256(v, ten), 10),
                                                _mm256_and_si256(_mm256_srli_epi32(v, 16), ten)),
                                _mm256_set1_epi32(0x10000)));
      p += 16;
      o += 8;
      continue;
    }
    // Eight units and the one after them, with their pairs formed.
    __m256i const a = _mm256_cvtepu16_epi32(load128(p));
    __m256i const b = _mm256_cvtepu16_epi32(load128(p + 1));
    unsigned const high = mask32(_mm256_cmpeq_epi32(_mm256_and_si256(a, top6), _mm256_set1_epi32(0xD800)));
    unsigned const low = mask32(_mm256_cmpeq_epi32(_mm256_and_si256(a, top6), _mm256_set1_epi32(0xDC00)));
    unsigned const next_low = mask32(_mm256_cmpeq_epi32(_mm256_and_si256(b, top6), _mm256_set1_epi32(0xDC00)));
    // A pair that starts at the last lane ends in the next block.
    unsigned const taken = (high & 0x80u) ? 7u : 8u;
    unsigned const window = (1u << taken) - 1u;
    unsigned const bad = (high & window & ~next_low) | (low & ~(high << 1) & window);
    // At a malformed pair only the units before it go, and the kernel stops.
    unsigned const upto = bad != 0 ? static_cast<unsigned>(__builtin_ctz(bad)) : taken;
    unsigned const keep = ((1u << upto) - 1u) & ~low;
    __m256i const units = _mm256_blendv_epi8(
        a, _mm256_sub_epi32(_mm256_add_epi32(_mm256_slli_epi32(a, 10), b), _mm256_set1_epi32(0x35FDC00)),
        _mm256_cmpeq_epi32(_mm256_and_si256(a, top6), _mm256_set1_epi32(0xD800)));
    store(o, _mm256_permutevar8x32_epi32(units, load(tables.keep32[keep])));
    o += __builtin_popcount(keep);
    p += upto;
    if (bad != 0) break;
  }
  p_in = p;
  o_in = o;
}

// ---- UTF-32 to UTF-16 -----------------------------------------------------------

VEXA_AVX2 void avx2_narrow(wchar_t const*& p_in, wchar_t const* end, u16*& o_in) {
  wchar_t const* p = p_in;
  u16* o = o_in;
  __m256i const low16 = _mm256_set1_epi32(0xFFFF);
  __m256i const top5 = _mm256_set1_epi32(static_cast<int>(0xFFFFF800u));
  __m256i const surrogate = _mm256_set1_epi32(0xD800);
  while (end - p >= 8) {
    __m256i const c = load(p);
    // Signed: negative units are single units (their low 16 bits).
    __m256i const pair = _mm256_cmpgt_epi32(c, _mm256_set1_epi32(0xFFFE));
    __m256i const bad = _mm256_or_si256(_mm256_cmpgt_epi32(c, _mm256_set1_epi32(0x10FFFF)),
                                        _mm256_cmpeq_epi32(_mm256_and_si256(c, top5), surrogate));
    if (mask8(bad) != 0) break;
    unsigned const pairs = mask32(pair);
    if (pairs == 0) {
      if (end - p >= 16) {
        __m256i const d = load(p + 8);
        __m256i const pair2 = _mm256_cmpgt_epi32(d, _mm256_set1_epi32(0xFFFE));
        __m256i const bad2 = _mm256_or_si256(_mm256_cmpgt_epi32(d, _mm256_set1_epi32(0x10FFFF)),
                                             _mm256_cmpeq_epi32(_mm256_and_si256(d, top5), surrogate));
        if (mask8(_mm256_or_si256(pair2, bad2)) == 0) {
          __m256i const packed = _mm256_packus_epi32(_mm256_and_si256(c, low16), _mm256_and_si256(d, low16));
          store(o, _mm256_permute4x64_epi64(packed, 0xD8));
          p += 16;
          o += 16;
          continue;
        }
      }
      __m256i const packed = _mm256_packus_epi32(_mm256_and_si256(c, low16), _mm256_setzero_si256());
      _mm_storeu_si128(reinterpret_cast<__m128i*>(o),
                       _mm256_castsi256_si128(_mm256_permute4x64_epi64(packed, 0xD8)));
      p += 8;
      o += 8;
      continue;
    }
    // Each lane as (second unit << 16) | first unit; single units keep their
    // low 16 bits and their second slot is dropped.
    __m256i const hi = _mm256_add_epi32(_mm256_srli_epi32(c, 10), surrogate);
    __m256i const lo = _mm256_add_epi32(_mm256_and_si256(c, _mm256_set1_epi32(0x3FF)), _mm256_set1_epi32(0xDC00));
    __m256i const both = _mm256_or_si256(hi, _mm256_slli_epi32(lo, 16));
    __m256i const units = _mm256_blendv_epi8(_mm256_and_si256(c, low16), both, pair);
    // Slot 2i is always kept, slot 2i + 1 for a pair.
    unsigned const lo_pairs = pairs & 0xFu;
    unsigned const hi_pairs = pairs >> 4;
    unsigned const keep_lo = 0x55u | _pdep_u32(lo_pairs, 0xAAu);
    unsigned const keep_hi = 0x55u | _pdep_u32(hi_pairs, 0xAAu);
    __m128i const first = _mm_shuffle_epi8(_mm256_castsi256_si128(units), load128(tables.keep16[keep_lo]));
    __m128i const second = _mm_shuffle_epi8(_mm256_extracti128_si256(units, 1), load128(tables.keep16[keep_hi]));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o), first);
    o += 4 + __builtin_popcount(lo_pairs);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(o), second);
    o += 4 + __builtin_popcount(hi_pairs);
    p += 8;
  }
  p_in = p;
  o_in = o;
}

#endif

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
