// SSSE3 block kernels of the Unicode transforms (see unicode_kernels.hpp).
//
// Decoding looks at 16 bytes at once: it classifies every byte, checks that
// the continuation bytes sit exactly where the lead bytes say, computes a
// unit at every position as if a sequence started there and keeps only the
// units of the real starts, with one byte shuffle per 8 units.
//
// Encoding takes 8 units at once and picks the cheapest form for them: ASCII
// is packed; units below 0x800 (alphabetic scripts with their spaces) become
// one or two bytes each and one shuffle closes the gaps; units from 0x800 up
// (ideographs, syllables) become three bytes each through fixed shuffles;
// four surrogate pairs become four four-byte sequences; any other mix is
// done 4 units at a time in 32-bit lanes with one shuffle each. The variable
// shuffles come from tables built at compile time.
#include "strings/unicode_kernels.hpp"
#include "strings/unicode_tables.hpp"

#if defined(__x86_64__) || defined(__i386__)
#include <tmmintrin.h>
#endif

namespace VEXA_2_10 {
namespace strings {
namespace _private {

#if defined(__x86_64__) || defined(__i386__)

namespace {


struct shuffle_tables {
  // utf8[k] packs four 32-bit lanes that hold 1 + bit i + bit (i + 4) of k
  // UTF-8 bytes each (lane i); utf8_length[k] is the total.
  u8 utf8[256][16];
  u8 utf8_length[256];
  // utf8_short[m] packs eight 16-bit lanes holding one UTF-8 byte, or two
  // where bit i of m is set; the total is 8 + count[m].
  u8 utf8_short[256][16];

  constexpr shuffle_tables() : utf8{}, utf8_length{}, utf8_short{} {
    for (unsigned m = 0; m < 256; ++m) {
      unsigned length = 0;
      for (unsigned lane = 0; lane < 4; ++lane) {
        unsigned const bytes = 1 + ((m >> lane) & 1u) + ((m >> (lane + 4)) & 1u);
        for (unsigned b = 0; b < bytes; ++b) utf8[m][length++] = static_cast<u8>(4 * lane + b);
      }
      utf8_length[m] = static_cast<u8>(length);
      for (unsigned i = length; i < 16; ++i) utf8[m][i] = 0x80;

      length = 0;
      for (unsigned lane = 0; lane < 8; ++lane) {
        utf8_short[m][length++] = static_cast<u8>(2 * lane);
        if ((m >> lane) & 1u) utf8_short[m][length++] = static_cast<u8>(2 * lane + 1);
      }
      for (unsigned i = length; i < 16; ++i) utf8_short[m][i] = 0x80;
    }
  }
};

alignas(64) constexpr shuffle_tables tables{};

#define VEXA_SSSE3 __attribute__((target("ssse3")))

VEXA_SSSE3 inline __m128i load(void const* p) {
  return _mm_loadu_si128(static_cast<__m128i const*>(p));
}
VEXA_SSSE3 inline void store(void* p, __m128i v) { _mm_storeu_si128(static_cast<__m128i*>(p), v); }
VEXA_SSSE3 inline unsigned byte_mask(__m128i v) { return static_cast<unsigned>(_mm_movemask_epi8(v)); }

// Stores 8 units held in 16-bit lanes, widened to the output's unit size.
VEXA_SSSE3 inline void store_units(u16* o, __m128i units) { store(o, units); }
VEXA_SSSE3 inline void store_units(wchar_t* o, __m128i units) {
  __m128i const z = _mm_setzero_si128();
  store(o, _mm_unpacklo_epi16(units, z));
  store(o + 4, _mm_unpackhi_epi16(units, z));
}

// The units of 8 positions, taking the bytes at each position (b0) and the
// two after it (b1, b2) as a sequence of the length its lead byte says.
VEXA_SSSE3 inline __m128i decode_lanes(__m128i b0, __m128i b1, __m128i b2) {
  __m128i const six = _mm_set1_epi16(0x3F);
  __m128i const tail = _mm_and_si128(b1, six);
  __m128i const two = _mm_or_si128(_mm_slli_epi16(_mm_and_si128(b0, _mm_set1_epi16(0x1F)), 6), tail);
  // b0 < 0x100, so shifting by 12 in a 16-bit lane keeps exactly its low four bits.
  __m128i const three = _mm_or_si128(_mm_or_si128(_mm_slli_epi16(b0, 12), _mm_slli_epi16(tail, 6)),
                                     _mm_and_si128(b2, six));
  __m128i const is2 = _mm_cmpeq_epi16(_mm_and_si128(b0, _mm_set1_epi16(0xE0)), _mm_set1_epi16(0xC0));
  __m128i const is3 = _mm_cmpeq_epi16(_mm_and_si128(b0, _mm_set1_epi16(0xF0)), _mm_set1_epi16(0xE0));
  return _mm_or_si128(_mm_or_si128(_mm_and_si128(is3, three), _mm_and_si128(is2, two)),
                      _mm_andnot_si128(_mm_or_si128(is2, is3), b0));
}

template <typename Out>
VEXA_SSSE3 void decode(u8 const*& p_in, u8 const* end, Out*& o_in) {
  u8 const* p = p_in;
  Out* o = o_in;
  __m128i const z = _mm_setzero_si128();
  while (end - p >= 18) {
    __m128i const v0 = load(p);
    unsigned const high = byte_mask(v0);
    if (high == 0) {
      __m128i const lo = _mm_unpacklo_epi8(v0, z);
      __m128i const hi = _mm_unpackhi_epi8(v0, z);
      store_units(o, lo);
      store_units(o + 8, hi);
      p += 16;
      o += 16;
      continue;
    }
    unsigned const cont =
        byte_mask(_mm_cmpeq_epi8(_mm_and_si128(v0, _mm_set1_epi8(char(0xC0))), _mm_set1_epi8(char(0x80))));
    unsigned const lead2 =
        byte_mask(_mm_cmpeq_epi8(_mm_and_si128(v0, _mm_set1_epi8(char(0xE0))), _mm_set1_epi8(char(0xC0))));
    unsigned const lead3 =
        byte_mask(_mm_cmpeq_epi8(_mm_and_si128(v0, _mm_set1_epi8(char(0xF0))), _mm_set1_epi8(char(0xE0))));
    // The block ends early at a sequence that runs past it and at any byte
    // that is neither ASCII, a continuation nor a two- or three-byte lead.
    unsigned const stop = (lead2 & 0x8000u) | (lead3 & 0xC000u) | (high & ~(cont | lead2 | lead3));
    unsigned const size = stop != 0 ? static_cast<unsigned>(__builtin_ctz(stop)) : 16u;
    unsigned const window = (1u << size) - 1u;
    unsigned const l2 = lead2 & window;
    unsigned const l3 = lead3 & window;
    if (size == 0 || ((l2 << 1) | (l3 << 1) | (l3 << 2)) != (cont & window)) break;
    unsigned const starts = ~cont & window;

    __m128i const v1 = load(p + 1);
    __m128i const v2 = load(p + 2);
    __m128i const lo = decode_lanes(_mm_unpacklo_epi8(v0, z), _mm_unpacklo_epi8(v1, z), _mm_unpacklo_epi8(v2, z));
    __m128i const hi = decode_lanes(_mm_unpackhi_epi8(v0, z), _mm_unpackhi_epi8(v1, z), _mm_unpackhi_epi8(v2, z));
    store_units(o, _mm_shuffle_epi8(lo, load(unicode_tables.keep16[starts & 0xFFu])));
    o += unicode_tables.count[starts & 0xFFu];
    store_units(o, _mm_shuffle_epi8(hi, load(unicode_tables.keep16[starts >> 8])));
    o += unicode_tables.count[starts >> 8];
    p += size;
  }
  p_in = p;
  o_in = o;
}

// Writes the UTF-8 forms of four code points below 0x10000 (no surrogates),
// held in 32-bit lanes; 16 bytes are stored, the returned count is kept.
VEXA_SSSE3 inline unsigned encode_lanes(u8* o, __m128i c) {
  __m128i const m1 = _mm_cmpgt_epi32(c, _mm_set1_epi32(0x7F));
  __m128i const m2 = _mm_cmpgt_epi32(c, _mm_set1_epi32(0x7FF));
  unsigned const key = static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(m1))) |
                       (static_cast<unsigned>(_mm_movemask_ps(_mm_castsi128_ps(m2))) << 4);
  __m128i const six = _mm_set1_epi32(0x3F);
  __m128i const mark = _mm_set1_epi32(0x80);
  __m128i const last = _mm_or_si128(_mm_and_si128(c, six), mark);
  __m128i const middle = _mm_or_si128(_mm_and_si128(_mm_srli_epi32(c, 6), six), mark);
  __m128i const two = _mm_or_si128(_mm_or_si128(_mm_srli_epi32(c, 6), _mm_set1_epi32(0xC0)), _mm_slli_epi32(last, 8));
  __m128i const three = _mm_or_si128(_mm_or_si128(_mm_srli_epi32(c, 12), _mm_set1_epi32(0xE0)),
                                     _mm_or_si128(_mm_slli_epi32(middle, 8), _mm_slli_epi32(last, 16)));
  __m128i const bytes = _mm_or_si128(_mm_or_si128(_mm_and_si128(m2, three), _mm_andnot_si128(m2, _mm_and_si128(m1, two))),
                                     _mm_andnot_si128(m1, c));
  store(o, _mm_shuffle_epi8(bytes, load(tables.utf8[key])));
  return tables.utf8_length[key];
}

// Writes the UTF-8 forms of eight code points below 0x800 held in 16-bit
// lanes (alphabetic scripts with ASCII spaces and marks); returns the count.
VEXA_SSSE3 inline unsigned encode_short_lanes(u8* o, __m128i v) {
  __m128i const z = _mm_setzero_si128();
  __m128i const ascii = _mm_cmpeq_epi16(_mm_and_si128(v, _mm_set1_epi16(short(0xFF80))), z);
  unsigned const wide = byte_mask(_mm_packs_epi16(ascii, z)) ^ 0xFFu;
  __m128i const lead = _mm_or_si128(_mm_srli_epi16(v, 6), _mm_set1_epi16(0xC0));
  __m128i const last = _mm_or_si128(_mm_and_si128(v, _mm_set1_epi16(0x3F)), _mm_set1_epi16(0x80));
  __m128i const two = _mm_or_si128(lead, _mm_slli_epi16(last, 8));
  __m128i const bytes = _mm_or_si128(_mm_and_si128(ascii, v), _mm_andnot_si128(ascii, two));
  store(o, _mm_shuffle_epi8(bytes, load(tables.utf8_short[wide])));
  return 8u + unicode_tables.count[wide];
}

// Eight code points from 0x800 to 0xFFFF (no surrogates) in 16-bit lanes
// (ideographs, syllables) as the 24 bytes of their three-byte forms.
VEXA_SSSE3 inline void encode_wide_lanes(u8* o, __m128i v) {
  __m128i const six = _mm_set1_epi16(0x3F);
  __m128i const mark = _mm_set1_epi16(0x80);
  __m128i const b0 = _mm_or_si128(_mm_srli_epi16(v, 12), _mm_set1_epi16(0xE0));
  __m128i const b1 = _mm_or_si128(_mm_and_si128(_mm_srli_epi16(v, 6), six), mark);
  __m128i const b2 = _mm_or_si128(_mm_and_si128(v, six), mark);
  __m128i const leads = _mm_packus_epi16(b0, b1);  // all first bytes, then all second bytes
  __m128i const lasts = _mm_packus_epi16(b2, b2);
  __m128i const head = _mm_or_si128(
      _mm_shuffle_epi8(leads, _mm_setr_epi8(0, 8, -128, 1, 9, -128, 2, 10, -128, 3, 11, -128, 4, 12, -128, 5)),
      _mm_shuffle_epi8(lasts, _mm_setr_epi8(-128, -128, 0, -128, -128, 1, -128, -128, 2, -128, -128, 3, -128, -128, 4, -128)));
  __m128i const tail = _mm_or_si128(
      _mm_shuffle_epi8(leads, _mm_setr_epi8(13, -128, 6, 14, -128, 7, 15, -128, -128, -128, -128, -128, -128, -128, -128, -128)),
      _mm_shuffle_epi8(lasts, _mm_setr_epi8(-128, 5, -128, -128, 6, -128, -128, 7, -128, -128, -128, -128, -128, -128, -128, -128)));
  store(o, head);
  _mm_storel_epi64(reinterpret_cast<__m128i*>(o + 16), tail);
}

// Eight code points below 0x10000, no surrogates, in 16-bit lanes.
VEXA_SSSE3 inline unsigned encode_units(u8* o, __m128i v) {
  __m128i const z = _mm_setzero_si128();
  unsigned const small = byte_mask(_mm_cmpeq_epi16(_mm_and_si128(v, _mm_set1_epi16(short(0xF800))), z));
  if (small == 0xFFFFu) {
    if (byte_mask(_mm_cmpeq_epi16(_mm_and_si128(v, _mm_set1_epi16(short(0xFF80))), z)) == 0xFFFFu) {
      _mm_storel_epi64(reinterpret_cast<__m128i*>(o), _mm_packus_epi16(v, v));
      return 8;
    }
    return encode_short_lanes(o, v);
  }
  if (small == 0) {
    encode_wide_lanes(o, v);
    return 24;
  }
  unsigned const n = encode_lanes(o, _mm_unpacklo_epi16(v, z));
  return n + encode_lanes(o + n, _mm_unpackhi_epi16(v, z));
}

// Four surrogate pairs in order (high, low, ...) to four-byte sequences.
// Returns false, writing nothing, if the units are not such pairs.
VEXA_SSSE3 inline bool encode_pairs(u8* o, __m128i v) {
  __m128i const kind = _mm_and_si128(v, _mm_set1_epi16(short(0xFC00)));
  __m128i const expected = _mm_set1_epi32(static_cast<int>(0xDC00D800u));
  if (byte_mask(_mm_cmpeq_epi16(kind, expected)) != 0xFFFFu) return false;
  __m128i const ten = _mm_set1_epi32(0x3FF);
  __m128i const c = _mm_add_epi32(_mm_or_si128(_mm_slli_epi32(_mm_and_si128(v, ten), 10),
                                               _mm_and_si128(_mm_srli_epi32(v, 16), ten)),
                                  _mm_set1_epi32(0x10000));
  __m128i const six = _mm_set1_epi32(0x3F);
  __m128i const mark = _mm_set1_epi32(0x80);
  __m128i const b0 = _mm_or_si128(_mm_srli_epi32(c, 18), _mm_set1_epi32(0xF0));
  __m128i const b1 = _mm_or_si128(_mm_and_si128(_mm_srli_epi32(c, 12), six), mark);
  __m128i const b2 = _mm_or_si128(_mm_and_si128(_mm_srli_epi32(c, 6), six), mark);
  __m128i const b3 = _mm_or_si128(_mm_and_si128(c, six), mark);
  store(o, _mm_or_si128(_mm_or_si128(b0, _mm_slli_epi32(b1, 8)),
                        _mm_or_si128(_mm_slli_epi32(b2, 16), _mm_slli_epi32(b3, 24))));
  return true;
}

VEXA_SSSE3 void encode(u16 const*& p_in, u16 const* end, u8*& o_in) {
  u16 const* p = p_in;
  u8* o = o_in;
  __m128i const z = _mm_setzero_si128();
  while (end - p >= 8) {
    __m128i const v = load(p);
    if (end - p >= 16) {
      __m128i const w = load(p + 8);
      __m128i const both = _mm_and_si128(_mm_or_si128(v, w), _mm_set1_epi16(short(0xFF80)));
      if (byte_mask(_mm_cmpeq_epi16(both, z)) == 0xFFFFu) {
        store(o, _mm_packus_epi16(v, w));
        o += 16;
        p += 16;
        continue;
      }
    }
    unsigned const surrogates = byte_mask(
        _mm_cmpeq_epi16(_mm_and_si128(v, _mm_set1_epi16(short(0xF800))), _mm_set1_epi16(short(0xD800))));
    if (surrogates == 0) {
      o += encode_units(o, v);
    } else if (surrogates == 0xFFFFu && encode_pairs(o, v)) {
      o += 16;
    } else {
      break;
    }
    p += 8;
  }
  p_in = p;
  o_in = o;
}

VEXA_SSSE3 void encode(wchar_t const*& p_in, wchar_t const* end, u8*& o_in) {
  wchar_t const* p = p_in;
  u8* o = o_in;
  __m128i const top = _mm_set1_epi32(static_cast<int>(0xFFFFF800u));
  __m128i const surrogate = _mm_set1_epi32(0xD800);
  __m128i const limit = _mm_set1_epi32(0xFFFF);
  while (end - p >= 8) {
    __m128i const lo = load(p);
    __m128i const hi = load(p + 4);
    if (end - p >= 16) {
      __m128i const lo2 = load(p + 8);
      __m128i const hi2 = load(p + 12);
      __m128i const any = _mm_or_si128(_mm_or_si128(lo, hi), _mm_or_si128(lo2, hi2));
      if (byte_mask(_mm_cmpeq_epi32(_mm_and_si128(any, _mm_set1_epi32(~0x7F)), _mm_setzero_si128())) == 0xFFFFu) {
        store(o, _mm_packus_epi16(_mm_packs_epi32(lo, hi), _mm_packs_epi32(lo2, hi2)));
        o += 16;
        p += 16;
        continue;
      }
    }
    // Lanes must be 0..0xFFFF (compared signed, so negative ones fail too)
    // and no surrogate.
    __m128i const bad_lo = _mm_or_si128(_mm_or_si128(_mm_cmpgt_epi32(lo, limit), _mm_srai_epi32(lo, 31)),
                                        _mm_cmpeq_epi32(_mm_and_si128(lo, top), surrogate));
    __m128i const bad_hi = _mm_or_si128(_mm_or_si128(_mm_cmpgt_epi32(hi, limit), _mm_srai_epi32(hi, 31)),
                                        _mm_cmpeq_epi32(_mm_and_si128(hi, top), surrogate));
    if (byte_mask(_mm_or_si128(bad_lo, bad_hi)) != 0) break;
    // Narrow to 16-bit lanes: sign-extending the low halves keeps values up
    // to 0xFFFF intact through the saturating pack.
    __m128i const v = _mm_packs_epi32(_mm_srai_epi32(_mm_slli_epi32(lo, 16), 16),
                                      _mm_srai_epi32(_mm_slli_epi32(hi, 16), 16));
    o += encode_units(o, v);
    p += 8;
  }
  p_in = p;
  o_in = o;
}

}  // namespace

void ssse3_decode(u8 const*& p, u8 const* end, u16*& o) { decode(p, end, o); }
void ssse3_decode(u8 const*& p, u8 const* end, wchar_t*& o) { decode(p, end, o); }
void ssse3_encode(u16 const*& p, u16 const* end, u8*& o) { encode(p, end, o); }
void ssse3_encode(wchar_t const*& p, wchar_t const* end, u8*& o) { encode(p, end, o); }

#endif

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
