// Byte classes and block scanners of the XML parser. The scanners find the
// next byte that the parser must look at, sixteen bytes at a time, so that
// plain text, values and comments are skipped without a test per byte. They
// never read at or past `end`.
#ifndef VEXA_SRC_PARSER_XML_SCAN_HPP
#define VEXA_SRC_PARSER_XML_SCAN_HPP

#include <emmintrin.h>

#include <cstring>

namespace VEXA_2_10 {
namespace parser {
namespace _private {

enum byte_class : unsigned char {
  space_class = 1,       // space, tab, CR, LF
  name_start_class = 2,  // A-Z a-z (the C locale's isalpha)
  name_class = 4,        // A-Z a-z 0-9 _
  digit_class = 8,       // 0-9
  xdigit_class = 16      // 0-9 A-F a-f
};

struct byte_classes {
  unsigned char of[256];
  constexpr byte_classes() : of() {
    of[static_cast<unsigned char>(' ')] = space_class;
    of[static_cast<unsigned char>('\t')] = space_class;
    of[static_cast<unsigned char>('\r')] = space_class;
    of[static_cast<unsigned char>('\n')] = space_class;
    for (int c = 'a'; c <= 'z'; ++c) of[c] = name_start_class | name_class;
    for (int c = 'A'; c <= 'Z'; ++c) of[c] = name_start_class | name_class;
    for (int c = '0'; c <= '9'; ++c) of[c] = name_class | digit_class | xdigit_class;
    for (int c = 'a'; c <= 'f'; ++c) of[c] |= xdigit_class;
    for (int c = 'A'; c <= 'F'; ++c) of[c] |= xdigit_class;
    of[static_cast<unsigned char>('_')] = name_class;
  }
};

inline constexpr byte_classes classes{};

inline bool has_class(char c, byte_class k) {
  return (classes.of[static_cast<unsigned char>(c)] & k) != 0;
}
inline bool is_space(char c) { return has_class(c, space_class); }

// A mask of the white-space bytes of a block.
inline __m128i space_mask(__m128i block) {
  __m128i const sp = _mm_cmpeq_epi8(block, _mm_set1_epi8(' '));
  __m128i const tab = _mm_cmpeq_epi8(block, _mm_set1_epi8('\t'));
  __m128i const cr = _mm_cmpeq_epi8(block, _mm_set1_epi8('\r'));
  __m128i const lf = _mm_cmpeq_epi8(block, _mm_set1_epi8('\n'));
  return _mm_or_si128(_mm_or_si128(sp, tab), _mm_or_si128(cr, lf));
}

inline unsigned first_bit(unsigned mask) { return static_cast<unsigned>(__builtin_ctz(mask)); }

// The number of set bits; masks of line feeds hold few.
inline unsigned bit_count(unsigned mask) {
  unsigned n = 0;
  for (; mask != 0; mask &= mask - 1) ++n;
  return n;
}

// find_text_stop
// The first position from p where character text stops or needs care: '<',
// '&', or a white-space byte followed by another one. `end` if none.
inline char const* find_text_stop(char const* p, char const* end) {
  // The pair test looks one byte ahead, so a block needs 17 bytes.
  while (end - p >= 17) {
    __m128i const here = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
    __m128i const next = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p + 1));
    __m128i const markup = _mm_or_si128(_mm_cmpeq_epi8(here, _mm_set1_epi8('<')),
                                        _mm_cmpeq_epi8(here, _mm_set1_epi8('&')));
    __m128i const pair = _mm_and_si128(space_mask(here), space_mask(next));
    unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(markup, pair)));
    if (mask != 0) return p + first_bit(mask);
    p += 16;
  }
  for (; p < end; ++p) {
    char const c = *p;
    if (c == '<' || c == '&') return p;
    if (is_space(c) && p + 1 < end && is_space(p[1])) return p;
  }
  return end;
}

// find_value_stop
// The first position from p holding `quote`, '&' or '<'; `end` if none.
inline char const* find_value_stop(char const* p, char const* end, char quote) {
  __m128i const q = _mm_set1_epi8(quote);
  __m128i const amp = _mm_set1_epi8('&');
  __m128i const lt = _mm_set1_epi8('<');
  while (end - p >= 16) {
    __m128i const here = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
    __m128i const hit = _mm_or_si128(_mm_cmpeq_epi8(here, q),
                                     _mm_or_si128(_mm_cmpeq_epi8(here, amp), _mm_cmpeq_epi8(here, lt)));
    unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(hit));
    if (mask != 0) return p + first_bit(mask);
    p += 16;
  }
  for (; p < end; ++p) {
    if (*p == quote || *p == '&' || *p == '<') return p;
  }
  return end;
}

// find_comment_end
// The position of the first "-->" at or after p; `end` if none.
inline char const* find_comment_end(char const* p, char const* end) {
  while (end - p >= 3) {
    void const* dash = std::memchr(p, '-', static_cast<std::size_t>(end - p - 2));
    if (dash == nullptr) return end;
    p = static_cast<char const*>(dash);
    if (p[1] == '-' && p[2] == '>') return p;
    ++p;
  }
  return end;
}

// skip_space
// The end of the white-space run at p; `lines` grows by its line feeds.
inline char const* skip_space(char const* p, char const* end, unsigned int& lines) {
  if (p == end || !is_space(*p)) return p;
  while (end - p >= 16) {
    __m128i const here = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
    unsigned const spaces = static_cast<unsigned>(_mm_movemask_epi8(space_mask(here)));
    unsigned const feeds = static_cast<unsigned>(_mm_movemask_epi8(_mm_cmpeq_epi8(here, _mm_set1_epi8('\n'))));
    if (spaces != 0xFFFFu) {
      unsigned const n = first_bit(~spaces);
      lines += bit_count(feeds & ((1u << n) - 1u));
      return p + n;
    }
    lines += bit_count(feeds);
    p += 16;
  }
  for (; p < end && is_space(*p); ++p) lines += *p == '\n';
  return p;
}

// skip_name
// The end of the name that starts at p (which must hold a letter): letters,
// digits and '_' follow, sixteen bytes tested at a time.
inline char const* skip_name(char const* p, char const* end) {
  ++p;
  while (end - p >= 16) {
    __m128i const here = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
    // Bytes from 0x80 are negative and fall outside every range.
    __m128i const lower = _mm_or_si128(here, _mm_set1_epi8(0x20));
    __m128i const letter = _mm_and_si128(_mm_cmpgt_epi8(lower, _mm_set1_epi8('a' - 1)),
                                         _mm_cmplt_epi8(lower, _mm_set1_epi8('z' + 1)));
    __m128i const digit = _mm_and_si128(_mm_cmpgt_epi8(here, _mm_set1_epi8('0' - 1)),
                                        _mm_cmplt_epi8(here, _mm_set1_epi8('9' + 1)));
    __m128i const underscore = _mm_cmpeq_epi8(here, _mm_set1_epi8('_'));
    unsigned const inside =
        static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(_mm_or_si128(letter, digit), underscore)));
    if (inside != 0xFFFFu) return p + first_bit(~inside);
    p += 16;
  }
  while (p < end && has_class(*p, name_class)) ++p;
  return p;
}

// same_bytes
// Whether the n bytes at a and b are equal; names are short, so a plain loop
// beats a call.
inline bool same_bytes(char const* a, char const* b, std::size_t n) {
  if (n > 16) return std::memcmp(a, b, n) == 0;
  for (std::size_t i = 0; i < n; ++i) {
    if (a[i] != b[i]) return false;
  }
  return true;
}

}  // namespace _private
}  // namespace parser
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_PARSER_XML_SCAN_HPP
