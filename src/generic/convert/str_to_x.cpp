#include "vexa/generic/convert/str_to_x.hpp"

#include <cctype>
#include <cstdint>
#include <cstring>
#include <limits>
#include <type_traits>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/exceptions/runtime_error.hpp"
#include "vexa/strings/unicode.hpp"

#define VEXA_INLINE inline __attribute__((always_inline))
#define VEXA_COLD __attribute__((cold, noinline))

namespace VEXA_2_10 {
namespace generic {
namespace convert {
namespace {

char const raise_file[] = "generic/convert/str_to_x";

// The raisers are kept out of line so that the digit loops stay small; each
// call site passes its own __LINE__, which is the line the exception records.
[[noreturn]] VEXA_COLD void raise_bad_radix(unsigned int line, char const* function) {
  throw exceptions::invalid_argument_value(
      "invalid radix value, values of 0, 2-36 are the only valid values", line, raise_file,
      function);
}

[[noreturn]] VEXA_COLD void raise_too_small(unsigned int line, char const* function) {
  throw exceptions::underflow_error("Number value is to small", line, raise_file, function);
}

[[noreturn]] VEXA_COLD void raise_too_large(unsigned int line, char const* function) {
  throw exceptions::overflow_error("Number value is to large", line, raise_file, function);
}

// Digit values by unit: '0'-'9' are 0-9, both letter cases 10-35, everything
// else 0xFF, which no radix accepts. For radices 2..36 "value < radix" is
// exactly isradixdigit() != not_radix_digit; bytes from 0x80 (negative
// `char`s) are never digits.
struct digit_table {
  unsigned char value[256];
  constexpr digit_table() : value() {
    for (unsigned int i = 0; i < 256; ++i) value[i] = 0xFF;
    for (unsigned int i = 0; i < 10; ++i) value['0' + i] = static_cast<unsigned char>(i);
    for (unsigned int i = 0; i < 26; ++i) {
      value['A' + i] = static_cast<unsigned char>(10 + i);
      value['a' + i] = static_cast<unsigned char>(10 + i);
    }
  }
};
constexpr digit_table digits{};

// The value of a digit unit, or something no radix accepts. Radices up to 10
// need only '0'..'9', which a subtraction decides without the table.
template <unsigned int Fixed, typename Ch>
VEXA_INLINE unsigned int digit_of(Ch c) {
  if constexpr (Fixed != 0 && Fixed <= 10) {
    return static_cast<unsigned int>(_private::unit_value(c) - '0');
  } else if constexpr (sizeof(Ch) == 1) {
    return digits.value[static_cast<unsigned char>(c)];
  } else {
    using U = std::make_unsigned_t<Ch>;
    U const u = static_cast<U>(c);
    return u < 256 ? digits.value[u] : 0xFFu;
  }
}

// isspace() is defined for EOF and the values of unsigned char only, so
// nothing else reaches it. Printable ASCII is answered without the call: no
// locale counts a digit, letter or punctuation mark as white space, and this
// test runs on the first unit of every parse.
VEXA_INLINE bool space_value(long v) {
  if (v > 0x20 && v < 0x7F) return false;
  if (v < 0 || v > 255) return false;
  return std::isspace(static_cast<int>(v)) != 0;
}

template <typename Ch>
VEXA_INLINE bool space_unit(Ch c) {
  return space_value(_private::unit_value(c));
}

// v * r + d in the width of U; the product is formed in at least
// `unsigned int` so that narrow types never promote to a signed int.
template <typename U>
VEXA_INLINE U step(U v, unsigned int r, unsigned int d) {
  using W = std::common_type_t<U, unsigned int>;
  return static_cast<U>(static_cast<W>(v) * r + d);
}

// How many digits can be taken without the overflow test: while fewer than k
// digits are in, the value is below r^k, and as long as r^k <= cutoff the
// test cannot fire (the value is also non-negative read as signed).
template <typename U>
constexpr unsigned int unchecked_digits(U cutoff, unsigned int r) {
  unsigned int k = 0;
  for (U power = 1; power <= cutoff; power = static_cast<U>(power * r)) {
    ++k;
    if (power > cutoff / r) break;
  }
  return k;
}

// Decimal digits of 8-bit text, up to eight at a time. A group holds the
// units in a 64-bit word, the first in the lowest byte (x86-64 is
// little-endian).

// Up to eight units of `text` from `pos` on, where `n` units may be read and
// pos < n. Units at or past `n` come out as 0, which is no digit; no byte
// outside text[0, n) is touched. With `Tail`, a text of eight units or more
// is read with one load ending at `n` when fewer than eight remain (fewer
// branches for long numbers, one more for short ones).
template <bool Tail>
VEXA_INLINE std::uint64_t load_group(char const* text, unsigned long pos, unsigned long n) {
  char const* const p = text + pos;
  unsigned long const m = n - pos;
  if (Tail && n >= 8) {
    unsigned long const back = m >= 8 ? 0 : 8 - m;
    std::uint64_t w;
    std::memcpy(&w, p - back, 8);
    return w >> (8 * back);
  }
  if (m >= 8) {
    std::uint64_t w;
    std::memcpy(&w, p, 8);
    return w;
  }
  if (m >= 4) {  // two overlapping halves
    std::uint32_t lo, hi;
    std::memcpy(&lo, p, 4);
    std::memcpy(&hi, p + m - 4, 4);
    return lo | (static_cast<std::uint64_t>(hi) >> (8 * (8 - m))) << 32;
  }
  if (m >= 2) {
    std::uint16_t lo, hi;
    std::memcpy(&lo, p, 2);
    std::memcpy(&hi, p + m - 2, 2);
    return lo | (static_cast<std::uint64_t>(hi) >> (8 * (4 - m))) << 16;
  }
  return static_cast<unsigned char>(p[0]);
}

// How many of the group's units, from the first, are '0'..'9'. A byte is a
// digit when its high nibble is 3 and adding 6 keeps it so. A carry out of a
// byte (0xFA and above) only disturbs bytes after that non-digit.
VEXA_INLINE unsigned int leading_digits(std::uint64_t w) {
  std::uint64_t const off = ((w & 0xF0F0F0F0F0F0F0F0u) |
                             (((w + 0x0606060606060606u) & 0xF0F0F0F0F0F0F0F0u) >> 4)) ^
                            0x3333333333333333u;
  return off == 0 ? 8u : static_cast<unsigned int>(__builtin_ctzll(off)) / 8;
}

// The value of the first k (1..8) digits of a group: they are moved to the
// top, zeros (digit value 0) fill in below, and the bytes are combined in
// pairs, fours and eights.
VEXA_INLINE std::uint32_t group_value(std::uint64_t w, unsigned int k) {
  w <<= 8 * (8 - k);
  w = ((w & 0x0F0F0F0F0F0F0F0Fu) * 2561) >> 8;
  w = ((w & 0x00FF00FF00FF00FFu) * 6553601) >> 16;
  return static_cast<std::uint32_t>(((w & 0x0000FFFF0000FFFFu) * 42949672960001u) >> 32);
}

constexpr std::uint32_t power_of_ten[9] = {1,      10,      100,      1000,     10000,
                                           100000, 1000000, 10000000, 100000000};

template <typename U>
struct digit_run {
  U value;
  bool overflow;
};

// The digits from `pos` on, up to the first unit that is no digit of the
// radix or the end. `Fixed` is a radix known at compile time (0: `radix`).
// The overflow test compares the running value as a signed T for signed
// results, on purpose: a magnitude of exactly 2^(bits-1) after a '-' reads
// as negative and lets one more digit through, which wraps.
template <typename T, unsigned int Fixed, typename Ch>
VEXA_INLINE digit_run<std::make_unsigned_t<T>> read_digits(Ch const* text, unsigned long pos,
                                                           unsigned long n, unsigned int radix,
                                                           bool negative) {
  using U = std::make_unsigned_t<T>;
  unsigned int const r = Fixed != 0 ? Fixed : radix;
  U v = 0;
  if constexpr (Fixed != 0) {
    constexpr unsigned int free_digits =
        unchecked_digits<U>(static_cast<U>(std::numeric_limits<T>::max() / Fixed), Fixed);
    unsigned long const free_end = n - pos > free_digits ? pos + free_digits : n;
    if constexpr (Fixed == 10 && sizeof(Ch) == 1 && free_digits >= 16) {
      // Groups of digits while they stay within the unchecked count; the
      // rest goes one by one below.
      for (unsigned long const start = pos;;) {
        std::uint64_t const w = load_group<true>(text, pos, n);
        unsigned int const k = leading_digits(w);
        if (pos - start + k > free_digits) break;
        if (k == 0) return {v, false};
        v = static_cast<U>(v * power_of_ten[k] + group_value(w, k));
        pos += k;
        if (k < 8 || pos >= n) return {v, false};
      }
    } else if constexpr (Fixed == 10 && sizeof(Ch) == 1 && free_digits >= 8) {
      // One group covers most 32-bit numbers; texts of eight units or more
      // need only the single load that ends at `n`.
      std::uint64_t const w = load_group<true>(text, pos, n);
      unsigned int const k = leading_digits(w);
      if (k == 0) return {v, false};
      v = static_cast<U>(group_value(w, k));
      pos += k;
      if (k < 8 || pos >= n) return {v, false};
      if constexpr (sizeof(U) == 4 && free_digits == 9) {
        // A ninth digit cannot overflow; with a tenth the value (below 10^10)
        // is formed in 64 bits and compared with the limit once. Before the
        // tenth the value is below 2^31, so this comparison says exactly what
        // the digit-by-digit test below would; an eleventh digit goes there.
        unsigned int d = digit_of<10>(text[pos]);
        if (d >= 10) return {v, false};
        v = step(v, 10, d);
        if (++pos >= n) return {v, false};
        d = digit_of<10>(text[pos]);
        if (d >= 10) return {v, false};
        std::uint64_t const x = std::uint64_t{v} * 10 + d;
        U const limit = std::is_signed_v<T> && negative
                            ? static_cast<U>(U(1) << (std::numeric_limits<U>::digits - 1))
                            : static_cast<U>(std::numeric_limits<T>::max());
        if (x > limit) return {v, true};
        v = static_cast<U>(x);
        if (++pos >= n) return {v, false};
      }
    }
    for (; pos < free_end; ++pos) {
      unsigned int const d = digit_of<Fixed>(text[pos]);
      if (d >= Fixed) return {v, false};
      v = step(v, Fixed, d);
    }
  }
  U const limit = std::is_signed_v<T> && negative
                      ? static_cast<U>(U(1) << (std::numeric_limits<U>::digits - 1))
                      : static_cast<U>(std::numeric_limits<T>::max());
  U const cutoff = static_cast<U>(limit / r);
  unsigned int const cutlim = static_cast<unsigned int>(limit % r);
  for (; pos < n; ++pos) {
    unsigned int const d = digit_of<Fixed>(text[pos]);
    if (d >= r) break;
    bool const at_cutoff = std::is_signed_v<T> ? static_cast<T>(v) >= static_cast<T>(cutoff)
                                               : v >= cutoff;
    if (at_cutoff && !(v == cutoff && d <= cutlim)) return {v, true};
    v = step(v, r, d);
  }
  return {v, false};
}

// What a text holds: the magnitude of its number, its sign, and whether the
// digits ran past the limit (the magnitude is then incomplete).
template <typename U>
struct reading {
  U magnitude;
  bool negative;
  bool overflow;
};

// The whole walk: white space, the sign, the radix check, the prefix, the
// digits. The end is tested after each step over a unit; `n` is at least 1.
template <typename T, typename Ch>
VEXA_INLINE reading<std::make_unsigned_t<T>> read_text(Ch const* text, unsigned long n,
                                                       unsigned int radix,
                                                       char const* function) {
  reading<std::make_unsigned_t<T>> none{0, false, false};
  unsigned long pos = 0;
  Ch c = text[0];
  while (space_unit(c)) {
    if (++pos >= n) return none;
    c = text[pos];
  }
  bool const negative = c == '-';
  if (c == '-' || c == '+') {
    if (++pos >= n) return none;
    c = text[pos];
  }
  if (radix != 0) {
    if (radix == 1 || radix > 36) raise_bad_radix(__LINE__, function);
  } else {
    radix = 10;
    if (c == '0' || c == '\\') {
      if (++pos >= n) return none;
      c = text[pos];
      if (c == 'b' || c == 'B') {
        radix = 2;
        if (++pos >= n) return none;
      } else if (c == 'x' || c == 'X') {
        radix = 16;
        if (++pos >= n) return none;
      } else {
        radix = 8;
      }
    }
  }
  digit_run<std::make_unsigned_t<T>> run;
  switch (radix) {
    case 10: run = read_digits<T, 10>(text, pos, n, 10, negative); break;
    case 16: run = read_digits<T, 16>(text, pos, n, 16, negative); break;
    case 8: run = read_digits<T, 8>(text, pos, n, 8, negative); break;
    default: run = read_digits<T, 0>(text, pos, n, radix, negative); break;
  }
  return {run.value, negative, run.overflow};
}

// What an out-of-range text gives.
template <typename T>
VEXA_COLD T signed_out_of_range(bool negative, bool throw_on_error) {
  if (!throw_on_error) {
    return negative ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
  }
  if (negative) raise_too_small(__LINE__, "strtointx");
  raise_too_large(__LINE__, "strtointx");
}

template <typename T>
VEXA_COLD T unsigned_out_of_range(bool negative, bool throw_on_error) {
  if (throw_on_error) {
    if (negative) raise_too_small(__LINE__, "strtouintx");
    raise_too_large(__LINE__, "strtouintx");
  }
  return negative ? T(0) : std::numeric_limits<T>::max();
}

// A '-' before a non-zero unsigned value.
template <typename T>
VEXA_COLD T unsigned_negative(bool throw_on_error) {
  if (throw_on_error) raise_too_small(__LINE__, "strtouintx");
  return 0;
}

// The whole walk for any text; `length` is at least 1.
template <typename T, typename Ch>
__attribute__((noinline)) T parse_signed_walk(Ch const* text, unsigned long length,
                                              unsigned int radix, bool throw_on_error) {
  using U = std::make_unsigned_t<T>;
  reading<U> const r = read_text<T>(text, length, radix, "strtointx");
  if (r.overflow) return signed_out_of_range<T>(r.negative, throw_on_error);
  return static_cast<T>(r.negative ? static_cast<U>(0u - r.magnitude) : r.magnitude);
}

template <typename T, typename Ch>
__attribute__((noinline)) T parse_unsigned_walk(Ch const* text, unsigned long length,
                                                unsigned int radix, bool throw_on_error) {
  reading<T> const r = read_text<T>(text, length, radix, "strtouintx");
  if (r.overflow) return unsigned_out_of_range<T>(r.negative, throw_on_error);
  if (r.negative && r.magnitude != 0) return unsigned_negative<T>(throw_on_error);
  return r.magnitude;
}

// Most texts are a number in radix 10 or 16 with at most a sign in front.
// They go straight to the digits; everything else takes the whole walk. For
// such texts both give the same result: there is no white space to skip, no
// prefix is read with an explicit radix, and radix 0 with a leading 1-9 reads
// decimal. Returns false when the text is not of this kind.
template <typename T, typename Ch>
VEXA_INLINE bool plain_number(Ch const* text, unsigned long length, unsigned int radix,
                              reading<std::make_unsigned_t<T>>& r) {
  long const c = _private::unit_value(text[0]);
  r.negative = c == '-';
  unsigned long const pos = (r.negative || c == '+') ? 1 : 0;
  if (pos >= length) return false;
  digit_run<std::make_unsigned_t<T>> run;
  if (radix == 16) {
    if (digit_of<16>(text[pos]) >= 16) return false;
    run = read_digits<T, 16>(text, pos, length, 16, r.negative);
  } else {
    unsigned long const d = static_cast<unsigned long>(_private::unit_value(text[pos])) - '0';
    if (d >= 10 || !(radix == 10 || (radix == 0 && d != 0))) return false;
    run = read_digits<T, 10>(text, pos, length, 10, r.negative);
  }
  r.magnitude = run.value;
  r.overflow = run.overflow;
  return true;
}

// The parsers proper. The exported templates and the entry points all call
// these directly, without going through the dynamic symbol table again.
template <typename T, typename Ch>
__attribute__((noinline)) T parse_signed(Ch const* text, unsigned long length,
                                         unsigned int radix, bool throw_on_error) {
  using U = std::make_unsigned_t<T>;
  if (text == nullptr) return 0;
  if (length == 0) {
    length = strings::string_length(text);
    // An empty text still has its first unit looked at: the terminator.
    if (length == 0) length = 1;
  }
  reading<U> r;
  if (!plain_number<T>(text, length, radix, r)) {
    return parse_signed_walk<T>(text, length, radix, throw_on_error);
  }
  if (r.overflow) return signed_out_of_range<T>(r.negative, throw_on_error);
  return static_cast<T>(r.negative ? static_cast<U>(0u - r.magnitude) : r.magnitude);
}

template <typename T, typename Ch>
__attribute__((noinline)) T parse_unsigned(Ch const* text, unsigned long length,
                                           unsigned int radix, bool throw_on_error) {
  if (text == nullptr) return 0;
  // A length of 0 is kept as it is: the first unit is looked at and the end
  // test after it stops the parse, exactly as with a length of 1.
  if (length == 0) length = 1;
  reading<T> r;
  if (!plain_number<T>(text, length, radix, r)) {
    return parse_unsigned_walk<T>(text, length, radix, throw_on_error);
  }
  if (r.overflow) return unsigned_out_of_range<T>(r.negative, throw_on_error);
  if (r.negative && r.magnitude != 0) return unsigned_negative<T>(throw_on_error);
  return r.magnitude;
}

}  // namespace

bool is_space(char c) { return space_unit(c); }
bool is_space(unsigned short c) { return space_unit(c); }
bool is_space(wchar_t c) { return space_unit(c); }

template <typename T, typename Ch>
T strtointx(Ch const* text, unsigned long length, unsigned int radix, bool throw_on_error) {
  return parse_signed<T, Ch>(text, length, radix, throw_on_error);
}

template <typename T, typename Ch>
T strtouintx(Ch const* text, unsigned long length, unsigned int radix, bool throw_on_error) {
  return parse_unsigned<T, Ch>(text, length, radix, throw_on_error);
}

#define VEXA_CONVERT_INSTANCES(Ch)                                                           \
  template VEXA_API long strtointx<long, Ch>(Ch const*, unsigned long, unsigned int, bool);  \
  template VEXA_API int strtointx<int, Ch>(Ch const*, unsigned long, unsigned int, bool);    \
  template VEXA_API short strtointx<short, Ch>(Ch const*, unsigned long, unsigned int, bool); \
  template VEXA_API signed char strtointx<signed char, Ch>(Ch const*, unsigned long,         \
                                                           unsigned int, bool);              \
  template VEXA_API unsigned long strtouintx<unsigned long, Ch>(Ch const*, unsigned long,    \
                                                                unsigned int, bool);         \
  template VEXA_API unsigned int strtouintx<unsigned int, Ch>(Ch const*, unsigned long,      \
                                                              unsigned int, bool);           \
  template VEXA_API unsigned short strtouintx<unsigned short, Ch>(Ch const*, unsigned long,  \
                                                                  unsigned int, bool);       \
  template VEXA_API unsigned char strtouintx<unsigned char, Ch>(Ch const*, unsigned long,    \
                                                                unsigned int, bool);

VEXA_CONVERT_INSTANCES(char)
VEXA_CONVERT_INSTANCES(unsigned short)
VEXA_CONVERT_INSTANCES(wchar_t)

#undef VEXA_CONVERT_INSTANCES

// The entry points: one line each, forwarding to the parser instance.
#define VEXA_CONVERT_ENTRY(Result, name, parser, Ch)                                      \
  Result name(Ch const* text, unsigned long length, types::radix_t::base radix,           \
              bool throw_on_error) {                                                      \
    return parser<Result, Ch>(text, length, static_cast<unsigned int>(radix), throw_on_error); \
  }

#define VEXA_CONVERT_ENTRIES(Ch)                                           \
  VEXA_CONVERT_ENTRY(unsigned long, str_to_uint64, parse_unsigned, Ch)         \
  VEXA_CONVERT_ENTRY(unsigned int, str_to_uint32, parse_unsigned, Ch)          \
  VEXA_CONVERT_ENTRY(unsigned int, str_to_unsigned, parse_unsigned, Ch)        \
  VEXA_CONVERT_ENTRY(unsigned short, str_to_uint16, parse_unsigned, Ch)        \
  VEXA_CONVERT_ENTRY(unsigned char, str_to_uint8, parse_unsigned, Ch)          \
  VEXA_CONVERT_ENTRY(long, str_to_int64, parse_signed, Ch)                    \
  VEXA_CONVERT_ENTRY(long, str_to_long, parse_signed, Ch)                     \
  VEXA_CONVERT_ENTRY(int, str_to_int32, parse_signed, Ch)                     \
  VEXA_CONVERT_ENTRY(int, str_to_signed, parse_signed, Ch)                    \
  VEXA_CONVERT_ENTRY(int, str_to_int, parse_signed, Ch)                       \
  VEXA_CONVERT_ENTRY(short, str_to_int16, parse_signed, Ch)                   \
  VEXA_CONVERT_ENTRY(short, str_to_short, parse_signed, Ch)                   \
  VEXA_CONVERT_ENTRY(signed char, str_to_int8, parse_signed, Ch)

VEXA_CONVERT_ENTRIES(char)
VEXA_CONVERT_ENTRIES(unsigned short)
VEXA_CONVERT_ENTRIES(wchar_t)

#undef VEXA_CONVERT_ENTRIES
#undef VEXA_CONVERT_ENTRY

bool str_to_bool(strings::ustring32 const& text) {
  strings::ustring32 lowered(text);
  for (wchar_t& c : lowered) {
    // tolower() takes the values of unsigned char only; wider units stay.
    if (c >= 0 && c <= 255) c = static_cast<wchar_t>(std::tolower(static_cast<int>(c)));
  }
  if (lowered == L"yes" || lowered == L"on" || lowered == L"true") return true;
  return str_to_long(text.c_str(), text.size(), types::radix_t::automatic, false) != 0;
}

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10
