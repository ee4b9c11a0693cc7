// AVX2 kernels from UTF-8 to UTF-16 and UTF-32 (see unicode_kernels.hpp).
//
// Each step looks at 32 bytes. ASCII is widened as it is. A run of eight
// three-byte sequences (ideographs, syllables) is gathered into 32-bit lanes
// by one fixed shuffle per 128-bit half and assembled with three masks; a
// run of eight four-byte sequences (emoji) is assembled in place.
// Any other mix of one- to three-byte sequences is checked as a whole (every
// continuation byte sits exactly where a lead byte says), a unit is computed
// at every position as if a sequence started there, and the units of the real
// starts are kept with one table shuffle per eight positions. A well-formed
// four-byte sequence is done on its own; anything else ends the kernel.
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

VEXA_AVX2 inline __m256i bytes(char b) { return _mm256_set1_epi8(b); }

// Eight units held in 16-bit lanes, stored in the output's unit size.
VEXA_AVX2 inline void store_units(u16* o, __m128i units) { _mm_storeu_si128(reinterpret_cast<__m128i*>(o), units); }
VEXA_AVX2 inline void store_units(wchar_t* o, __m128i units) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o), _mm256_cvtepu16_epi32(units));
}

// Sixteen units held in 16-bit lanes.
VEXA_AVX2 inline void store_units(u16* o, __m256i units) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(o), units); }
VEXA_AVX2 inline void store_units(wchar_t* o, __m256i units) {
  store_units(o, _mm256_castsi256_si128(units));
  store_units(o + 8, _mm256_extracti128_si256(units, 1));
}

// Eight units held in 32-bit lanes (all below 0x10000).
VEXA_AVX2 inline void store_wide_units(u16* o, __m256i units) {
  __m256i const packed = _mm256_permute4x64_epi64(_mm256_packus_epi32(units, units), 0x08);
  _mm_storeu_si128(reinterpret_cast<__m128i*>(o), _mm256_castsi256_si128(packed));
}
VEXA_AVX2 inline void store_wide_units(wchar_t* o, __m256i units) {
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(o), units);
}

// The units of 16 positions, taking the byte at each position (b0) and the
// two after it (b1, b2) as a sequence of the length its lead byte says.
VEXA_AVX2 inline __m256i decode_lanes(__m256i b0, __m256i b1, __m256i b2) {
  __m256i const six = _mm256_set1_epi16(0x3F);
  __m256i const tail = _mm256_and_si256(b1, six);
  __m256i const two = _mm256_or_si256(_mm256_slli_epi16(_mm256_and_si256(b0, _mm256_set1_epi16(0x1F)), 6), tail);
  // b0 < 0x100, so shifting by 12 in a 16-bit lane keeps exactly its low four bits.
  __m256i const three = _mm256_or_si256(_mm256_or_si256(_mm256_slli_epi16(b0, 12), _mm256_slli_epi16(tail, 6)),
                                        _mm256_and_si256(b2, six));
  __m256i const is2 = _mm256_cmpeq_epi16(_mm256_and_si256(b0, _mm256_set1_epi16(0xE0)), _mm256_set1_epi16(0xC0));
  __m256i const is3 = _mm256_cmpeq_epi16(_mm256_and_si256(b0, _mm256_set1_epi16(0xF0)), _mm256_set1_epi16(0xE0));
  return _mm256_or_si256(_mm256_or_si256(_mm256_and_si256(is3, three), _mm256_and_si256(is2, two)),
                         _mm256_andnot_si256(_mm256_or_si256(is2, is3), b0));
}

// Eight three-byte sequences from 24 bytes to eight units.
template <typename Out>
VEXA_AVX2 inline void decode_threes(u8 const* p, Out* o) {
  __m256i const in = _mm256_inserti128_si256(_mm256_castsi128_si256(load128(p)), load128(p + 12), 1);
  // Each 32-bit lane gets (b2, b1, b0, 0) of one sequence.
  __m256i const order = _mm256_setr_epi8(2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1,
                                         2, 1, 0, -1, 5, 4, 3, -1, 8, 7, 6, -1, 11, 10, 9, -1);
  __m256i const x = _mm256_shuffle_epi8(in, order);
  __m256i const units = _mm256_or_si256(
      _mm256_or_si256(_mm256_and_si256(x, _mm256_set1_epi32(0x3F)),
                      _mm256_and_si256(_mm256_srli_epi32(x, 2), _mm256_set1_epi32(0xFC0))),
      _mm256_and_si256(_mm256_srli_epi32(x, 4), _mm256_set1_epi32(0xF000)));
  store_wide_units(o, units);
}

// Eight four-byte sequences (32 bytes, emoji) to eight code points, or to
// eight pairs computed from the bits as decode_one in unicode_transform.cpp
// does: the high unit is 0xD7C0 + (c >> 10), which wraps below 0xD800 for
// the overlong F0 80..8F forms exactly as its "- 1" does.
template <typename Out>
VEXA_AVX2 inline void decode_fours(__m256i x, Out* o) {
  __m256i const c = _mm256_or_si256(
      _mm256_or_si256(_mm256_and_si256(_mm256_slli_epi32(x, 18), _mm256_set1_epi32(0x1C0000)),
                      _mm256_and_si256(_mm256_slli_epi32(x, 4), _mm256_set1_epi32(0x3F000))),
      _mm256_or_si256(_mm256_and_si256(_mm256_srli_epi32(x, 10), _mm256_set1_epi32(0xFC0)),
                      _mm256_and_si256(_mm256_srli_epi32(x, 24), _mm256_set1_epi32(0x3F))));
  if constexpr (sizeof(Out) == 2) {
    __m256i const high = _mm256_add_epi32(_mm256_srli_epi32(c, 10), _mm256_set1_epi32(0xD7C0));
    __m256i const low = _mm256_add_epi32(_mm256_and_si256(c, _mm256_set1_epi32(0x3FF)), _mm256_set1_epi32(0xDC00));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(o), _mm256_or_si256(high, _mm256_slli_epi32(low, 16)));
  } else {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(o), c);
  }
}

// Keeps the units of the positions set in `starts` (16 bits) of 16 units and
// stores them; returns the new output position.
template <typename Out>
VEXA_AVX2 inline Out* keep_starts(Out* o, __m256i units, unsigned starts) {
  unsigned const s0 = starts & 0xFFu;
  unsigned const s1 = starts >> 8;
  __m256i const control = _mm256_inserti128_si256(_mm256_castsi128_si256(load128(unicode_tables.keep16[s0])),
                                                  load128(unicode_tables.keep16[s1]), 1);
  __m256i const kept = _mm256_shuffle_epi8(units, control);
  store_units(o, _mm256_castsi256_si128(kept));
  o += unicode_tables.count[s0];
  store_units(o, _mm256_extracti128_si256(kept, 1));
  return o + unicode_tables.count[s1];
}

// What a window of text holds besides ASCII and continuation bytes, so that
// its units are computed with only the steps it needs.
enum class mix { twos, threes, twos_and_threes };

// The units of the 16 positions from q, taking the byte at each position and
// the two after it as a sequence of the length its lead byte says.
template <mix M>
VEXA_AVX2 inline __m256i units_at(u8 const* q) {
  __m256i const b0 = _mm256_cvtepu8_epi16(load128(q));
  __m256i const b1 = _mm256_cvtepu8_epi16(load128(q + 1));
  __m256i const six = _mm256_set1_epi16(0x3F);
  __m256i const tail = _mm256_and_si256(b1, six);
  // In a window that holds one kind of lead, every byte from 0xC0 up is one.
  __m256i const lead = _mm256_cmpgt_epi16(b0, _mm256_set1_epi16(0xBF));
  if constexpr (M == mix::twos) {
    __m256i const two = _mm256_or_si256(_mm256_slli_epi16(_mm256_and_si256(b0, _mm256_set1_epi16(0x1F)), 6), tail);
    return _mm256_blendv_epi8(b0, two, lead);
  } else {
    __m256i const b2 = _mm256_cvtepu8_epi16(load128(q + 2));
    // b0 < 0x100, so shifting by 12 in a 16-bit lane keeps exactly its low four bits.
    __m256i const three = _mm256_or_si256(_mm256_or_si256(_mm256_slli_epi16(b0, 12), _mm256_slli_epi16(tail, 6)),
                                          _mm256_and_si256(b2, six));
    if constexpr (M == mix::threes) {
      return _mm256_blendv_epi8(b0, three, lead);
    } else {
      return decode_lanes(b0, b1, b2);
    }
  }
}

// The units of the sequences that start in the first `size` bytes at p
// (`starts` marks them; none runs past `size`).
template <mix M, typename Out>
VEXA_AVX2 inline Out* decode_window(u8 const* p, Out* o, std::uint64_t starts, unsigned size) {
  for (unsigned at = 0; at < size; at += 16) {
    o = keep_starts(o, units_at<M>(p + at), static_cast<unsigned>(starts >> at) & 0xFFFFu);
  }
  return o;
}

template <typename Out>
VEXA_AVX2 void decode(u8 const*& p_in, u8 const* end, Out*& o_in) {
  u8 const* p = p_in;
  Out* o = o_in;
  while (end - p >= 34) {
    __m256i const v = load(p);
    unsigned const high = mask8(v);
    if (high == 0) {
      store_units(o, _mm256_cvtepu8_epi16(_mm256_castsi256_si128(v)));
      store_units(o + 16, _mm256_cvtepu8_epi16(_mm256_extracti128_si256(v, 1)));
      p += 32;
      o += 32;
      continue;
    }
    unsigned const cont = mask8(_mm256_cmpeq_epi8(_mm256_and_si256(v, bytes(char(0xC0))), bytes(char(0x80))));
    if (cont == 0xEEEEEEEEu &&
        mask8(_mm256_cmpeq_epi8(_mm256_and_si256(v, bytes(char(0xF8))), bytes(char(0xF0)))) == 0x11111111u) {
      decode_fours(v, o);
      p += 32;
      o += 32 / sizeof(Out);
      continue;
    }
    unsigned const lead3 = mask8(_mm256_cmpeq_epi8(_mm256_and_si256(v, bytes(char(0xF0))), bytes(char(0xE0))));
    if ((lead3 & 0xFFFFFFu) == 0x249249u && (cont & 0xFFFFFFu) == 0xDB6DB6u) {
      decode_threes(p, o);
      p += 24;
      o += 8;
      continue;
    }
    unsigned const lead2 = mask8(_mm256_cmpeq_epi8(_mm256_and_si256(v, bytes(char(0xE0))), bytes(char(0xC0))));
    // Mixed text goes in windows of up to 64 bytes where that many remain,
    // which spends the checks below on twice the text.
    std::uint64_t all_high = high, all_cont = cont, all_lead2 = lead2, all_lead3 = lead3;
    std::uint64_t edge = std::uint64_t{1} << 32;  // the first byte not looked at
    if (end - p >= 66) {
      __m256i const w = load(p + 32);
      all_high |= std::uint64_t{mask8(w)} << 32;
      all_cont |= std::uint64_t{mask8(_mm256_cmpeq_epi8(_mm256_and_si256(w, bytes(char(0xC0))), bytes(char(0x80))))} << 32;
      all_lead2 |= std::uint64_t{mask8(_mm256_cmpeq_epi8(_mm256_and_si256(w, bytes(char(0xE0))), bytes(char(0xC0))))}
                   << 32;
      all_lead3 |= std::uint64_t{mask8(_mm256_cmpeq_epi8(_mm256_and_si256(w, bytes(char(0xF0))), bytes(char(0xE0))))}
                   << 32;
      edge = 0;
    }
    // The window ends early at a sequence that runs past it and at any byte
    // that is neither ASCII, a continuation nor a two- or three-byte lead.
    std::uint64_t const last = edge != 0 ? edge >> 1 : std::uint64_t{1} << 63;
    std::uint64_t const stop = edge | (all_lead2 & last) | (all_lead3 & (last | (last >> 1))) |
                               (all_high & ~(all_cont | all_lead2 | all_lead3));
    unsigned const size = stop != 0 ? static_cast<unsigned>(__builtin_ctzll(stop)) : 64u;
    if (size == 0) {
      if (decode_four(p, end, o)) continue;
      break;
    }
    std::uint64_t const window = size == 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << size) - 1u;
    std::uint64_t const l2 = all_lead2 & window;
    std::uint64_t const l3 = all_lead3 & window;
    if (((l2 << 1) | (l3 << 1) | (l3 << 2)) != (all_cont & window)) break;
    std::uint64_t const starts = ~all_cont & window;

    if (l3 == 0) {
      o = decode_window<mix::twos>(p, o, starts, size);
    } else if (l2 == 0) {
      o = decode_window<mix::threes>(p, o, starts, size);
    } else {
      o = decode_window<mix::twos_and_threes>(p, o, starts, size);
    }
    p += size;
  }
  p_in = p;
  o_in = o;
}

}  // namespace

void avx2_decode(u8 const*& p, u8 const* end, u16*& o) { decode(p, end, o); }
void avx2_decode(u8 const*& p, u8 const* end, wchar_t*& o) { decode(p, end, o); }

#endif

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
