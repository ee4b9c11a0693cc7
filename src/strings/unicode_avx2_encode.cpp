// AVX2 kernels from UTF-16 and UTF-32 to UTF-8 (see unicode_kernels.hpp).
//
// UTF-16 goes 16 units a step (32 while all are ASCII). A block without
// surrogates takes one of three forms:
// - all below 0x800 (alphabetic scripts with their ASCII spaces): every unit
//   as one or two bytes in its 16-bit lane, one table shuffle per 8 units;
// - all from 0x800 up (ideographs, syllables): 48 bytes by fixed shuffles;
// - any mix (Indic scripts, or ideographs, with ASCII among them): every unit
//   laid out as four candidate bytes in a 32-bit lane (three-byte lead,
//   middle, last, ASCII byte), one table shuffle per 4 units picks its 1, 2
//   or 3 bytes.
// Eight pairs become 32 bytes at once. Well-formed pairs among other text
// (emoji between words) go through the mix form too: a pair's four bytes
// are split over its two units, two each. Any other block with surrogates
// goes 8 units at a time through the general path: pairs are joined in
// 32-bit lanes, every lane is encoded in up to four bytes and the bytes kept
// are packed by a table of byte masks; it stops before the first lone
// surrogate, which the unit code answers.
//
// UTF-32 goes 32 units a step while ASCII, 16 while all are plain BMP units
// (through the UTF-16 forms above), 8 when all are above 0xFFFF, and
// otherwise 8 through the general path, which also takes negative units (one
// byte each, their low eight bits) and stops before a surrogate or a unit
// above 0x10FFFF.
//
// Every store ends at most 18 bytes past the output of the units taken, well
// inside `kernel_slack`.
#include <cstdint>

#include "strings/unicode_kernels.hpp"

#if defined(__x86_64__) || defined(__i386__)
#include "strings/unicode_avx2.hpp"
#endif

namespace VEXA_2_10 {
namespace strings {
namespace _private {

#if defined(__x86_64__) || defined(__i386__)

namespace {

using namespace avx2;

struct encode_tables {
  // three_byte[k] packs four 32-bit lanes laid out as (three-byte lead,
  // middle, last, ASCII byte): lane i gives the ASCII byte, the middle and
  // last bytes where bit i of k is set (at least 0x80), and all three where
  // bit i + 4 is set too (at least 0x800). The total is 4 + popcount(k).
  u8 three_byte[256][16];
  // two_byte[m] packs eight 16-bit lanes holding one UTF-8 byte, or two
  // where bit i of m is set; the total is 8 + popcount(m).
  u8 two_byte[256][16];
  // keep[m] moves the bytes (of eight) whose bit is set in m to the front.
  std::uint64_t keep[256];

  constexpr encode_tables() : three_byte{}, two_byte{}, keep{} {
    for (unsigned m = 0; m < 256; ++m) {
      unsigned n = 0;
      for (unsigned lane = 0; lane < 8; ++lane) {
        two_byte[m][n++] = static_cast<u8>(2 * lane);
        if ((m >> lane) & 1u) two_byte[m][n++] = static_cast<u8>(2 * lane + 1);
      }
      for (; n < 16; ++n) two_byte[m][n] = 0x80;

      n = 0;
      for (unsigned lane = 0; lane < 4; ++lane) {
        unsigned const base = 4 * lane;
        if ((m >> (lane + 4)) & 1u) {
          three_byte[m][n++] = static_cast<u8>(base);
          three_byte[m][n++] = static_cast<u8>(base + 1);
          three_byte[m][n++] = static_cast<u8>(base + 2);
        } else if ((m >> lane) & 1u) {
          three_byte[m][n++] = static_cast<u8>(base + 1);
          three_byte[m][n++] = static_cast<u8>(base + 2);
        } else {
          three_byte[m][n++] = static_cast<u8>(base + 3);
        }
      }
      for (; n < 16; ++n) three_byte[m][n] = 0x80;

      std::uint64_t k = 0;
      n = 0;
      for (unsigned b = 0; b < 8; ++b) {
        if ((m >> b) & 1u) k |= static_cast<std::uint64_t>(b) << (8 * n++);
      }
      for (; n < 8; ++n) k |= std::uint64_t{0x80} << (8 * n);
      keep[m] = k;
    }
  }
};

alignas(64) constexpr encode_tables tables{};

VEXA_AVX2 inline void store64(void* p, __m128i v) { _mm_storel_epi64(static_cast<__m128i*>(p), v); }

// Vector constants, read from memory at their use: with this many in play
// the compiler would otherwise rebuild them in general registers (three
// instructions each) inside the loops. The empty asm hides the values.
template <typename T, T V>
struct splat {
  alignas(32) static constexpr T lanes[16] = {V, V, V, V, V, V, V, V, V, V, V, V, V, V, V, V};
};
template <typename T, T V>
VEXA_AVX2 inline __m256i constant() {
  T const* lanes = splat<T, V>::lanes;
  asm("" : "+r"(lanes));
  return _mm256_load_si256(reinterpret_cast<__m256i const*>(lanes));
}
template <std::uint16_t V>
VEXA_AVX2 inline __m256i c16() { return constant<std::uint16_t, V>(); }
template <std::uint32_t V>
VEXA_AVX2 inline __m256i c32() { return constant<std::uint32_t, V>(); }
// Two 16-byte table rows as the halves of one vector.
VEXA_AVX2 inline __m256i rows(u8 const* low, u8 const* high) {
  return _mm256_inserti128_si256(_mm256_castsi128_si256(load128(low)), load128(high), 1);
}
// The 32-bit lanes whose bit is set in m, as all ones.
VEXA_AVX2 inline __m256i lanes_of(unsigned m) {
  __m256i const bits = _mm256_setr_epi32(1, 2, 4, 8, 16, 32, 64, 128);
  return _mm256_cmpeq_epi32(_mm256_and_si256(_mm256_set1_epi32(static_cast<int>(m)), bits), bits);
}

// Sixteen units below 0x800 in 16-bit lanes, as one or two bytes each.
VEXA_AVX2 inline void encode_short(u8*& o, __m256i v) {
  __m256i const z = _mm256_setzero_si256();
  __m256i const ascii = _mm256_cmpeq_epi16(_mm256_and_si256(v, c16<0xFF80>()), z);
  // Bits 0-7: units 0-7 are ASCII; bits 16-23: units 8-15.
  unsigned const two = ~mask8(_mm256_packs_epi16(ascii, z));
  unsigned const first = two & 0xFFu;
  unsigned const second = (two >> 16) & 0xFFu;
  __m256i const lead = _mm256_or_si256(_mm256_srli_epi16(v, 6), c16<0xC0>());
  __m256i const last = _mm256_or_si256(_mm256_and_si256(v, c16<0x3F>()), c16<0x80>());
  __m256i const pairs = _mm256_or_si256(lead, _mm256_slli_epi16(last, 8));
  __m256i const bytes = _mm256_blendv_epi8(pairs, v, ascii);
  __m256i const out = _mm256_shuffle_epi8(bytes, rows(tables.two_byte[first], tables.two_byte[second]));
  store128(o, _mm256_castsi256_si128(out));
  o += 8 + __builtin_popcount(first);
  store128(o, _mm256_extracti128_si256(out, 1));
  o += 8 + __builtin_popcount(second);
}

// Bytes 0, 1 of each unit's four candidates: the three-byte lead, then the
// middle byte, which below 0x800 (where `small` is set) gets 0x40 more and is
// the two-byte lead.
VEXA_AVX2 inline __m256i head_bytes(__m256i v, __m256i small) {
  __m256i const head = _mm256_or_si256(_mm256_or_si256(_mm256_srli_epi16(v, 12), c16<0x80E0>()),
                                       _mm256_and_si256(_mm256_slli_epi16(v, 2), c16<0x3F00>()));
  return _mm256_or_si256(head, _mm256_and_si256(small, c16<0x4000>()));
}

// Bytes 2, 3: the last byte, then the unit itself for ASCII.
VEXA_AVX2 inline __m256i tail_bytes(__m256i v) {
  return _mm256_or_si256(_mm256_or_si256(_mm256_and_si256(v, c16<0x3F>()), c16<0x80>()), _mm256_slli_epi16(v, 8));
}

// Sixteen units, each as its four candidate bytes (head: bytes 0, 1; tail:
// bytes 2, 3), packed to one byte where `ascii` is set, bytes 1 and 2 where
// `small` is, and bytes 0 to 2 elsewhere.
VEXA_AVX2 inline void pack_units(u8*& o, __m256i head, __m256i tail, __m256i ascii, __m256i small) {
  __m256i const lo = _mm256_unpacklo_epi16(head, tail);  // units 0-3 and 8-11
  __m256i const hi = _mm256_unpackhi_epi16(head, tail);  // units 4-7 and 12-15
  // One key byte per four units: bit i at least 0x80, bit i + 4 at least
  // 0x800, in the order the four groups are stored.
  __m256i const flags = _mm256_shuffle_epi8(_mm256_packs_epi16(ascii, small),
                                            _mm256_setr_epi8(0, 1, 2, 3, 8, 9, 10, 11, 4, 5, 6, 7, 12, 13, 14, 15,  //
                                                             0, 1, 2, 3, 8, 9, 10, 11, 4, 5, 6, 7, 12, 13, 14, 15));
  unsigned const m = ~mask8(flags);
  unsigned const k0 = m & 0xFFu;
  unsigned const k1 = (m >> 8) & 0xFFu;
  unsigned const k2 = (m >> 16) & 0xFFu;
  unsigned const k3 = m >> 24;
  __m256i const a = _mm256_shuffle_epi8(lo, rows(tables.three_byte[k0], tables.three_byte[k2]));
  __m256i const b = _mm256_shuffle_epi8(hi, rows(tables.three_byte[k1], tables.three_byte[k3]));
  // 1, 2 or 3 bytes a unit: 4 plus a bit for each step up.
  unsigned const n0 = 4 + static_cast<unsigned>(__builtin_popcount(k0));
  unsigned const n01 = n0 + 4 + static_cast<unsigned>(__builtin_popcount(k1));
  unsigned const n2 = 4 + static_cast<unsigned>(__builtin_popcount(k2));
  store128(o, _mm256_castsi256_si128(a));
  store128(o + n0, _mm256_castsi256_si128(b));
  o += n01;
  store128(o, _mm256_extracti128_si256(a, 1));
  store128(o + n2, _mm256_extracti128_si256(b, 1));
  o += n2 + 4 + static_cast<unsigned>(__builtin_popcount(k3));
}

// Sixteen units from 0x800 up, no surrogate: 48 bytes by fixed shuffles.
VEXA_AVX2 inline void encode_three(u8*& o, __m256i v) {
  __m256i const head = head_bytes(v, _mm256_setzero_si256());
  __m256i const tail = tail_bytes(v);
  __m256i const order = _mm256_setr_epi8(0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -128, -128, -128, -128,  //
                                         0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, -128, -128, -128, -128);
  __m256i const a = _mm256_shuffle_epi8(_mm256_unpacklo_epi16(head, tail), order);
  __m256i const b = _mm256_shuffle_epi8(_mm256_unpackhi_epi16(head, tail), order);
  store128(o, _mm256_castsi256_si128(a));
  store128(o + 12, _mm256_castsi256_si128(b));
  store128(o + 24, _mm256_extracti128_si256(a, 1));
  store128(o + 36, _mm256_extracti128_si256(b, 1));
  o += 48;
}

VEXA_AVX2 inline __m256i ascii_lanes(__m256i v) {
  return _mm256_cmpeq_epi16(_mm256_and_si256(v, c16<0xFF80>()), _mm256_setzero_si256());
}

// Sixteen units with well-formed pairs among them (emoji between words). A
// pair's four bytes are split over its two units, two each, so every unit
// packs as at most three bytes: the high unit gives the lead and the next
// byte, which depend on it alone; the low unit gives the last two, the first
// of which takes the high unit's two lowest bits.
VEXA_AVX2 inline void encode_with_pairs(u8*& o, __m256i v, __m256i high, __m256i low) {
  __m256i const small = _mm256_cmpeq_epi16(_mm256_and_si256(v, c16<0xF800>()), _mm256_setzero_si256());
  // The unit before each (zero before the first: it is never a low unit here).
  __m256i const before = _mm256_alignr_epi8(v, _mm256_permute2x128_si256(v, v, 0x08), 14);
  // High unit: the plane-and-top bits (c >> 10) are its ten bits + 0x40.
  __m256i const top = _mm256_add_epi16(_mm256_and_si256(v, c16<0x3FF>()), c16<0x40>());
  __m256i const high_head = _mm256_or_si256(_mm256_and_si256(top, c16<0xFF00>()), c16<0xF000>());
  __m256i const high_tail = _mm256_or_si256(_mm256_and_si256(_mm256_srli_epi16(top, 2), c16<0x3F>()), c16<0x80>());
  __m256i const low_head = _mm256_or_si256(
      _mm256_or_si256(_mm256_slli_epi16(_mm256_and_si256(before, c16<0x3>()), 12),
                      _mm256_and_si256(_mm256_slli_epi16(v, 2), c16<0x0F00>())),
      c16<0x8000>());
  __m256i const pair = _mm256_or_si256(high, low);
  __m256i const head =
      _mm256_blendv_epi8(head_bytes(v, small), _mm256_blendv_epi8(low_head, high_head, high), pair);
  __m256i const tail = _mm256_blendv_epi8(tail_bytes(v), high_tail, high);
  // Both units of a pair pack as two bytes (bytes 1 and 2).
  pack_units(o, head, tail, ascii_lanes(v), _mm256_or_si256(small, pair));
}

// Sixteen units with no surrogate, at least one from 0x800 up.
VEXA_AVX2 inline void encode_wide(u8*& o, __m256i v) {
  __m256i const small = _mm256_cmpeq_epi16(_mm256_and_si256(v, c16<0xF800>()), _mm256_setzero_si256());
  if (_mm256_testz_si256(small, small)) {
    encode_three(o, v);
  } else {
    pack_units(o, head_bytes(v, small), tail_bytes(v), ascii_lanes(v), small);
  }
}

// Sixteen units with no surrogate, by the cheapest form that takes them all.
VEXA_AVX2 inline void encode_units(u8*& o, __m256i v) {
  if (_mm256_testz_si256(v, c16<0xF800>())) {
    encode_short(o, v);
  } else {
    encode_wide(o, v);
  }
}

// The four-byte forms of code points from 0x10000 up in 32-bit lanes, first
// byte lowest. Lanes below are shifted right by what they lack: see
// encode_points.
VEXA_AVX2 inline __m256i four_bytes(__m256i c) {
  __m256i const b0 = _mm256_srli_epi32(c, 18);
  __m256i const b1 = _mm256_and_si256(_mm256_srli_epi32(c, 4), c32<0x3F00>());
  __m256i const b2 = _mm256_and_si256(_mm256_slli_epi32(c, 10), c32<0x3F0000>());
  __m256i const b3 = _mm256_and_si256(_mm256_slli_epi32(c, 24), c32<0x3F000000>());
  return _mm256_or_si256(_mm256_or_si256(_mm256_or_si256(b0, b1), _mm256_or_si256(b2, b3)), c32<0x808080F0u>());
}

// Eight code points in 32-bit lanes (signed: below 0x80, negative ones
// included, one byte of the low eight bits; none above 0x10FFFF), the lanes
// set in `drop` giving nothing.
VEXA_AVX2 inline void encode_points(u8*& o, __m256i c, __m256i drop) {
  __m256i const m1 = _mm256_cmpgt_epi32(c, c32<0x7F>());
  __m256i const m2 = _mm256_cmpgt_epi32(c, c32<0x7FF>());
  __m256i const m3 = _mm256_cmpgt_epi32(c, c32<0xFFFF>());
  // 8 bits for each byte short of four: 24, 16, 8 or 0.
  __m256i const shift = _mm256_add_epi32(c32<24>(), _mm256_slli_epi32(_mm256_add_epi32(_mm256_add_epi32(m1, m2), m3), 3));
  // Shifted down, the first continuation becomes the lead: 0x40 more for two
  // bytes, 0x60 more for three.
  __m256i const lead = _mm256_andnot_si256(
      m3, _mm256_or_si256(_mm256_and_si256(m1, c32<0x40>()), _mm256_and_si256(m2, c32<0x20>())));
  __m256i const bytes =
      _mm256_blendv_epi8(c, _mm256_or_si256(_mm256_srlv_epi32(four_bytes(c), shift), lead), m1);
  unsigned const kept = mask8(_mm256_andnot_si256(drop, _mm256_srlv_epi32(c32<~0u>(), shift)));
  unsigned const k0 = kept & 0xFFu;
  unsigned const k1 = (kept >> 8) & 0xFFu;
  unsigned const k2 = (kept >> 16) & 0xFFu;
  unsigned const k3 = kept >> 24;
  // Each half of a 128-bit lane packed on its own; the upper halves index
  // bytes 8-15 (0x80 + 8 still clears).
  __m256i const order = _mm256_add_epi8(
      _mm256_set_epi64x(static_cast<long long>(tables.keep[k3]), static_cast<long long>(tables.keep[k2]),
                        static_cast<long long>(tables.keep[k1]), static_cast<long long>(tables.keep[k0])),
      _mm256_set_epi64x(0x0808080808080808LL, 0, 0x0808080808080808LL, 0));
  __m256i const out = _mm256_shuffle_epi8(bytes, order);
  __m128i const first = _mm256_castsi256_si128(out);
  __m128i const second = _mm256_extracti128_si256(out, 1);
  store64(o, first);
  o += __builtin_popcount(k0);
  store64(o, _mm_unpackhi_epi64(first, first));
  o += __builtin_popcount(k1);
  store64(o, second);
  o += __builtin_popcount(k2);
  store64(o, _mm_unpackhi_epi64(second, second));
  o += __builtin_popcount(k3);
}

// Eight code points from 0x10000 to 0x10FFFF as 32 bytes.
VEXA_AVX2 inline void encode_supplementary(u8*& o, __m256i c) {
  store(o, four_bytes(c));
  o += 32;
}

// Eight UTF-16 units from p (and the ninth, when the eighth begins a pair).
// Returns false when it stopped before a lone surrogate.
VEXA_AVX2 inline bool encode_general(u16 const*& p, u8*& o) {
  __m256i const a = _mm256_cvtepu16_epi32(load128(p));
  __m256i const b = _mm256_cvtepu16_epi32(load128(p + 1));
  __m256i const top6 = c32<0xFC00>();
  __m256i const is_high = _mm256_cmpeq_epi32(_mm256_and_si256(a, top6), c32<0xD800>());
  unsigned const high = mask32(is_high);
  unsigned const low = mask32(_mm256_cmpeq_epi32(_mm256_and_si256(a, top6), c32<0xDC00>()));
  unsigned const next_low = mask32(_mm256_cmpeq_epi32(_mm256_and_si256(b, top6), c32<0xDC00>()));
  unsigned const pair = high & next_low;
  unsigned const bad = (high & ~next_low) | (low & ~(pair << 1));
  unsigned const upto = bad != 0 ? static_cast<unsigned>(__builtin_ctz(bad)) : 8u;
  // The low half of each pair and everything from the lone surrogate on.
  unsigned const drop = ((pair << 1) | (0xFFu << upto)) & 0xFFu;
  __m256i const joined = _mm256_sub_epi32(_mm256_add_epi32(_mm256_slli_epi32(a, 10), b), c32<0x35FDC00>());
  encode_points(o, _mm256_blendv_epi8(a, joined, is_high), lanes_of(drop));
  p += upto + (upto == 8 ? (pair >> 7) : 0u);
  return bad == 0;
}

VEXA_AVX2 void encode16(u16 const*& p_in, u16 const* end, u8*& o_in) {
  u16 const* p = p_in;
  u8* o = o_in;
  __m256i const not_ascii = c16<0xFF80>();
  while (end - p >= 16) {
    __m256i const v = load(p);
    if (_mm256_testz_si256(v, not_ascii)) {
      if (end - p >= 32) {
        __m256i const w = load(p + 16);
        if (_mm256_testz_si256(w, not_ascii)) {
          store(o, _mm256_permute4x64_epi64(_mm256_packus_epi16(v, w), 0xD8));
          p += 32;
          o += 32;
          continue;
        }
      }
      store128(o, _mm_packus_epi16(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1)));
      p += 16;
      o += 16;
      continue;
    }
    __m256i const top = _mm256_and_si256(v, c16<0xF800>());
    if (_mm256_testz_si256(top, top)) {
      encode_short(o, v);
      p += 16;
      continue;
    }
    __m256i const surrogate = _mm256_cmpeq_epi16(top, c16<0xD800>());
    if (_mm256_testz_si256(surrogate, surrogate)) {
      encode_wide(o, v);
      p += 16;
      continue;
    }
    __m256i const kind = _mm256_and_si256(v, c16<0xFC00>());
    if (mask8(_mm256_cmpeq_epi16(kind, c32<0xDC00D800u>())) == ~0u) {
      // (high, low) in each 32-bit lane.
      __m256i const ten = c32<0x3FF>();
      __m256i const c = _mm256_add_epi32(
          _mm256_or_si256(_mm256_slli_epi32(_mm256_and_si256(v, ten), 10), _mm256_and_si256(_mm256_srli_epi32(v, 16), ten)),
          c32<0x10000>());
      encode_supplementary(o, c);
      p += 16;
      continue;
    }
    // Pairs among other text: each high unit right before a low one. A high
    // last unit is left for the next block: its two bytes are taken back.
    __m256i const high = _mm256_cmpeq_epi16(kind, c16<0xD800>());
    __m256i const low = _mm256_cmpeq_epi16(kind, c16<0xDC00>());
    unsigned const highs = mask8(high);
    if (mask8(low) == highs << 2) {
      encode_with_pairs(o, v, high, low);
      unsigned const split = highs >> 31;
      o -= 2 * split;
      p += 16 - split;
      continue;
    }
    if (!encode_general(p, o)) break;
  }
  p_in = p;
  o_in = o;
}

// The lanes of eight UTF-32 units the kernel must leave to the unit code:
// surrogates and units above 0x10FFFF.
VEXA_AVX2 inline unsigned bad_units(__m256i c) {
  __m256i const bad = _mm256_or_si256(
      _mm256_cmpgt_epi32(c, c32<0x10FFFF>()),
      _mm256_cmpeq_epi32(_mm256_and_si256(c, c32<0xFFFFF800u>()), c32<0xD800>()));
  return mask32(bad);
}

// The lanes that are no plain BMP unit (0 to 0xFFFF, no surrogate).
VEXA_AVX2 inline __m256i off_plane(__m256i c) {
  __m256i const outside = _mm256_or_si256(_mm256_cmpgt_epi32(c, c32<0xFFFF>()), _mm256_srai_epi32(c, 31));
  return _mm256_or_si256(outside, _mm256_cmpeq_epi32(_mm256_and_si256(c, c32<0xFFFFF800u>()), c32<0xD800>()));
}

VEXA_AVX2 void encode32(wchar_t const*& p_in, wchar_t const* end, u8*& o_in) {
  wchar_t const* p = p_in;
  u8* o = o_in;
  __m256i const not_ascii = c32<~0x7Fu>();  // negative units too
  while (end - p >= 8) {
    __m256i const c = load(p);
    if (end - p >= 16) {
      __m256i const d = load(p + 8);
      __m256i const cd = _mm256_or_si256(c, d);
      if (_mm256_testz_si256(cd, not_ascii)) {
        if (end - p >= 32) {
          __m256i const e = load(p + 16);
          __m256i const f = load(p + 24);
          if (_mm256_testz_si256(_mm256_or_si256(e, f), not_ascii)) {
            __m256i const bytes = _mm256_packus_epi16(_mm256_packs_epi32(c, d), _mm256_packs_epi32(e, f));
            store(o, _mm256_permutevar8x32_epi32(bytes, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)));
            p += 32;
            o += 32;
            continue;
          }
        }
        __m256i const units = _mm256_permute4x64_epi64(_mm256_packs_epi32(c, d), 0xD8);
        store128(o, _mm_packus_epi16(_mm256_castsi256_si128(units), _mm256_extracti128_si256(units, 1)));
        p += 16;
        o += 16;
        continue;
      }
      if (_mm256_testz_si256(_mm256_or_si256(off_plane(c), off_plane(d)), c32<~0u>())) {
        encode_units(o, _mm256_permute4x64_epi64(_mm256_packus_epi32(c, d), 0xD8));
        p += 16;
        continue;
      }
    }
    unsigned const bad = bad_units(c);
    if (bad == 0 && mask32(_mm256_cmpgt_epi32(c, c32<0xFFFF>())) == 0xFFu) {
      encode_supplementary(o, c);
      p += 8;
      continue;
    }
    unsigned const upto = bad != 0 ? static_cast<unsigned>(__builtin_ctz(bad)) : 8u;
    encode_points(o, c, lanes_of((0xFFu << upto) & 0xFFu));
    p += upto;
    if (bad != 0) break;
  }
  p_in = p;
  o_in = o;
}

#undef VEXA_AVX2

}  // namespace

void avx2_encode(u16 const*& p, u16 const* end, u8*& o) { encode16(p, end, o); }
void avx2_encode(wchar_t const*& p, wchar_t const* end, u8*& o) { encode32(p, end, o); }

#endif

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
