// The six transforms between UTF-8, UTF-16 and UTF-32.
//
// Every transform sizes its output once for the worst case, writes through a
// pointer and makes the result string with the exact length at the end.
// Runs of plain text are moved a block at a time: ASCII (or, between UTF-16
// and UTF-32, units that need no pairing) with SSE2, which every x86-64
// processor has, and mixed text of one- to three-byte sequences with the
// SSSE3 kernels of unicode_simd.cpp where the processor has them. The
// character helpers below alone decide what happens to anything else, so the
// results are exactly those of the unit-by-unit rules in unicode.hpp.
#include <cstdint>
#include <cstring>
#include <memory>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "vexa/strings/unicode.hpp"
#include "strings/unicode_simd.hpp"

namespace VEXA_2_10 {
namespace strings {

namespace {

using u8 = unsigned char;
using u16 = unsigned short;
using std::size_t;

// Room past the worst case so that multi-byte sequences can be stored with
// one four-byte write.
constexpr size_t slack = 4;

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

// Output space for the worst case, left uninitialised: small texts use the
// stack, larger ones one heap block. The result string is then made with its
// exact length, so it carries no unused tail and no fill pass is paid for
// space that is never written.
template <typename Unit>
class scratch {
 public:
  explicit scratch(size_t units) : _heap(units > inline_units ? new Unit[units] : nullptr) {}
  Unit* data() { return _heap ? _heap.get() : _inline; }

  template <typename String>
  String result(Unit const* end) {
    Unit const* const first = data();
    return String(reinterpret_cast<typename String::value_type const*>(first),
                  static_cast<size_t>(end - first));
  }

 private:
  static constexpr size_t inline_units = 2048 / sizeof(Unit);
  Unit _inline[inline_units];
  std::unique_ptr<Unit[]> _heap;
};

// ---- block helpers ------------------------------------------------------------
//
// Each helper looks at the next block of input (the caller guarantees a whole
// block is there and that the output has room for a whole block), stores the
// converted block and returns how many leading units of it are plain; only
// those count, the rest of the stored block is overwritten later.

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
  if ((b & 0xF8) == 0xF0) {
    if (left < 4 || !is_continuation2(p) || !is_continuation(p[3])) return false;
    std::uint32_t const b1 = p[1], b2 = p[2], b3 = p[3];
    if constexpr (sizeof(Out) == 2) {
      // The pair is computed from the bits directly; unsigned arithmetic
      // wraps the "- 1" of plane 0 (F0 80..8F) exactly as 16-bit units do.
      std::uint32_t const plane = ((b & 7u) << 2) + ((b1 >> 4) & 3u) - 1u;
      o[0] = static_cast<Out>((0xD800u + (plane << 6) + ((b1 & 0x0Fu) << 2) + ((b2 >> 4) & 3u)) & 0xFFFFu);
      o[1] = static_cast<Out>(0xDC00u + ((b2 & 0x0Fu) << 6) + (b3 & 0x3Fu));
      o += 2;
    } else {
      *o++ = static_cast<Out>(((b & 0x07u) << 18) | ((b1 & 0x3Fu) << 12) | ((b2 & 0x3Fu) << 6) | (b3 & 0x3Fu));
    }
    p += 4;
    return true;
  }
  return false;
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

// utf8_to_utf16 and utf8_to_utf32 share their walk; they differ only in what
// a malformed sequence does.
template <typename String, typename Out>
String from_utf8(ustring8 const& text, bool lenient) {
  size_t const n = text.size();
  if (n == 0) return String();
  scratch<Out> buffer(n);  // one byte never yields more than one unit
  auto const* const begin = reinterpret_cast<u8 const*>(text.data());
  u8 const* p = begin;
  u8 const* const end = p + n;
  Out* o = buffer.data();
  bool const blocks = _private::have_block_kernels();
  while (p < end) {
    if (blocks && *p < 0xF0 && end - p >= 18) {
      _private::decode_blocks(p, end, o);
      if (p == end) break;
    }
    if (decode_one(p, end, o)) continue;
    if (!lenient) return minus_one<String>();
    // '?' for the malformed sequence. At the very start the text is taken
    // as unreadable and the conversion ends; later it resumes at the next byte.
    *o++ = static_cast<Out>('?');
    if (p == begin) break;
    ++p;
  }
  return buffer.template result<String>(o);
}

// utf16_to_utf8 and utf32_to_utf8.
template <typename In, typename Text>
ustring8 to_utf8(Text const& text, size_t bytes_per_unit) {
  size_t const n = text.size();
  if (n == 0) return ustring8();
  scratch<u8> buffer(bytes_per_unit * n + slack);
  In const* p = reinterpret_cast<In const*>(text.data());
  In const* const end = p + n;
  u8* o = buffer.data();
  bool const blocks = _private::have_block_kernels();
  while (p < end) {
    if (blocks && end - p >= 8) {
      _private::encode_blocks(p, end, o);
      if (p == end) break;
      // The kernel stopped at a block it does not take: the next 8 units go
      // one by one before it is asked again.
      In const* const stop = end - p > 8 ? p + 8 : end;
      while (p < stop) {
        if (!encode_one(p, end, o)) return minus_one<ustring8>();
      }
      continue;
    }
    if (!encode_one(p, end, o)) return minus_one<ustring8>();
  }
  return buffer.template result<ustring8>(o);
}

}  // namespace

// ---- the transforms -----------------------------------------------------------

ustring16 utf8_to_utf16(ustring8 const& text) { return from_utf8<ustring16, u16>(text, false); }

ustring32 utf8_to_utf32(ustring8 const& text) { return from_utf8<ustring32, wchar_t>(text, true); }

// A unit needs at most three bytes, a pair four.
ustring8 utf16_to_utf8(ustring16 const& text) { return to_utf8<u16>(text, 3); }

ustring8 utf32_to_utf8(ustring32 const& text) { return to_utf8<wchar_t>(text, 4); }

ustring32 utf16_to_utf32(ustring16 const& text) {
  size_t const n = text.size();
  if (n == 0) return ustring32();
  scratch<wchar_t> buffer(n);
  u16 const* p = text.data();
  u16 const* const end = p + n;
  wchar_t* o = buffer.data();
  while (p < end) {
    std::uint32_t const u = *p;
    if (u - 0xD800u >= 0x800u) {
      if (end - p >= 8) {
        run_plain_blocks(p, end, o, plain_block_16to32);
      } else {
        *o++ = static_cast<wchar_t>(u);
        ++p;
      }
      continue;
    }
    if (u > 0xDBFF || end - p < 2) return minus_one<ustring32>();
    std::uint32_t const low = p[1];
    if (low - 0xDC00u >= 0x400u) return minus_one<ustring32>();
    *o++ = static_cast<wchar_t>((u << 10) + low - 0x35FDC00u);
    p += 2;
  }
  return buffer.result<ustring32>(o);
}

ustring16 utf32_to_utf16(ustring32 const& text) {
  size_t const n = text.size();
  if (n == 0) return ustring16();
  scratch<u16> buffer(2 * n);
  wchar_t const* p = text.data();
  wchar_t const* const end = p + n;
  u16* o = buffer.data();
  while (p < end) {
    std::int32_t const c = *p;
    if (c < 0xFFFF) {  // signed: negative units give their low 16 bits
      if (c >= 0xD800 && c <= 0xDFFF) return minus_one<ustring16>();
      if (end - p >= 8) {
        run_plain_blocks(p, end, o, plain_block_32to16);
      } else {
        *o++ = static_cast<u16>(static_cast<std::uint32_t>(c) & 0xFFFFu);
        ++p;
      }
      continue;
    }
    if (c > 0x10FFFF) return minus_one<ustring16>();
    // No 0x10000 is subtracted before the high unit is formed; stored data
    // depends on this form.
    std::uint32_t const u = static_cast<std::uint32_t>(c);
    o[0] = static_cast<u16>((u >> 10) + 0xD800u);
    o[1] = static_cast<u16>((u & 0x3FFu) + 0xDC00u);
    o += 2;
    ++p;
  }
  return buffer.result<ustring16>(o);
}

}  // namespace strings
}  // namespace VEXA_2_10
