#include "vexa/generic/convert/str_to_x.hpp"

#include <cctype>
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

template <typename Ch>
VEXA_INLINE unsigned int digit_of(Ch c) {
  using U = std::make_unsigned_t<Ch>;
  U const u = static_cast<U>(c);
  if constexpr (sizeof(Ch) == 1) {
    return digits.value[u];
  } else {
    return u < 256 ? digits.value[u] : 0xFFu;
  }
}

// isspace() is defined for EOF and the values of unsigned char only, so
// nothing else reaches it. Printable ASCII is answered without the call: no
// locale counts a digit, letter or punctuation mark as white space, and this
// test runs once per parse on the first unit.
VEXA_INLINE bool space_value(long v) {
  if (v > 0x20 && v < 0x7F) return false;
  if (v < 0 || v > 255) return false;
  return std::isspace(static_cast<int>(v)) != 0;
}

template <typename Ch>
VEXA_INLINE bool space_unit(Ch c) {
  return space_value(_private::unit_value(c));
}

// Where the text stands once white space, sign and prefix are read.
struct lead_in {
  unsigned long pos;
  unsigned int radix;
  bool negative;
  bool done;  // the text ended before any digit position: the result is 0
};

// Steps 1-5 shared by both parsers: white space, the sign, the radix check
// and the prefix. The first unit is always looked at; the end is tested after
// each step over a unit.
template <typename Ch>
VEXA_INLINE lead_in read_lead_in(Ch const* text, unsigned long n, unsigned int radix,
                                 char const* function) {
  lead_in r{0, radix, false, true};
  Ch c = text[0];
  while (space_unit(c)) {
    if (++r.pos >= n) return r;
    c = text[r.pos];
  }
  r.negative = c == '-';
  if (c == '-' || c == '+') {
    if (++r.pos >= n) return r;
    c = text[r.pos];
  }
  if (radix != 0) {
    if (radix == 1 || radix > 36) raise_bad_radix(__LINE__, function);
  } else {
    r.radix = 10;
    if (c == '0' || c == '\\') {
      if (++r.pos >= n) return r;
      c = text[r.pos];
      if (c == 'b' || c == 'B') {
        r.radix = 2;
        if (++r.pos >= n) return r;
      } else if (c == 'x' || c == 'X') {
        r.radix = 16;
        if (++r.pos >= n) return r;
      } else {
        r.radix = 8;
      }
    }
  }
  r.done = false;
  return r;
}

// v * r + d in the width of U; the product is formed in at least
// `unsigned int` so that narrow types never promote to a signed int.
template <typename U>
VEXA_INLINE U step(U v, unsigned int r, unsigned int d) {
  using W = std::common_type_t<U, unsigned int>;
  return static_cast<U>(static_cast<W>(v) * r + d);
}

// The digit loop of the signed parser. `Fixed` is a radix known at compile
// time (0: use `radix`), so the common radices get constant limits.
template <typename T, unsigned int Fixed, typename Ch>
VEXA_INLINE T signed_digits(Ch const* text, unsigned long pos, unsigned long n, unsigned int radix,
                            bool negative, bool throw_on_error) {
  using U = std::make_unsigned_t<T>;
  unsigned int const r = Fixed != 0 ? Fixed : radix;
  U const limit = negative ? static_cast<U>(U(1) << (std::numeric_limits<U>::digits - 1))
                           : static_cast<U>(std::numeric_limits<T>::max());
  U const cutoff = static_cast<U>(limit / r);
  unsigned int const cutlim = static_cast<unsigned int>(limit % r);
  U v = 0;
  for (;;) {
    unsigned int const d = digit_of(text[pos]);
    if (d >= r) break;
    // Compared as a signed T on purpose: a magnitude of exactly 2^(bits-1)
    // reads as negative and lets one more digit through, which wraps.
    if (static_cast<T>(v) >= static_cast<T>(cutoff) && !(v == cutoff && d <= cutlim)) {
      if (!throw_on_error) {
        return negative ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
      }
      if (negative) raise_too_small(__LINE__, "strtointx");
      raise_too_large(__LINE__, "strtointx");
    }
    v = step(v, r, d);
    if (++pos >= n) break;
  }
  return static_cast<T>(negative ? static_cast<U>(0u - v) : v);
}

template <typename T, unsigned int Fixed, typename Ch>
VEXA_INLINE T unsigned_digits(Ch const* text, unsigned long pos, unsigned long n,
                              unsigned int radix, bool negative, bool throw_on_error) {
  unsigned int const r = Fixed != 0 ? Fixed : radix;
  T const cutoff = static_cast<T>(std::numeric_limits<T>::max() / r);
  unsigned int const cutlim = static_cast<unsigned int>(std::numeric_limits<T>::max() % r);
  T v = 0;
  for (;;) {
    unsigned int const d = digit_of(text[pos]);
    if (d >= r) break;
    if (v >= cutoff && !(v == cutoff && d <= cutlim)) {
      if (throw_on_error) {
        if (negative) raise_too_small(__LINE__, "strtouintx");
        raise_too_large(__LINE__, "strtouintx");
      }
      v = std::numeric_limits<T>::max();
      break;
    }
    v = step(v, r, d);
    if (++pos >= n) break;
  }
  if (negative && v != 0) {
    if (throw_on_error) raise_too_small(__LINE__, "strtouintx");
    return 0;
  }
  return v;
}

}  // namespace

bool is_space(char c) { return space_unit(c); }
bool is_space(unsigned short c) { return space_unit(c); }
bool is_space(wchar_t c) { return space_unit(c); }

template <typename T, typename Ch>
T strtointx(Ch const* text, unsigned long length, unsigned int radix, bool throw_on_error) {
  if (text == nullptr) return 0;
  if (length == 0) length = strings::string_length(text);
  lead_in const at = read_lead_in(text, length, radix, "strtointx");
  if (at.done) return 0;
  switch (at.radix) {
    case 10:
      return signed_digits<T, 10>(text, at.pos, length, 10, at.negative, throw_on_error);
    case 16:
      return signed_digits<T, 16>(text, at.pos, length, 16, at.negative, throw_on_error);
    case 8:
      return signed_digits<T, 8>(text, at.pos, length, 8, at.negative, throw_on_error);
    default:
      return signed_digits<T, 0>(text, at.pos, length, at.radix, at.negative, throw_on_error);
  }
}

template <typename T, typename Ch>
T strtouintx(Ch const* text, unsigned long length, unsigned int radix, bool throw_on_error) {
  if (text == nullptr) return 0;
  // A length of 0 is kept: only the first unit is read (see the header).
  lead_in const at = read_lead_in(text, length, radix, "strtouintx");
  if (at.done) return 0;
  switch (at.radix) {
    case 10:
      return unsigned_digits<T, 10>(text, at.pos, length, 10, at.negative, throw_on_error);
    case 16:
      return unsigned_digits<T, 16>(text, at.pos, length, 16, at.negative, throw_on_error);
    case 8:
      return unsigned_digits<T, 8>(text, at.pos, length, 8, at.negative, throw_on_error);
    default:
      return unsigned_digits<T, 0>(text, at.pos, length, at.radix, at.negative, throw_on_error);
  }
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
  VEXA_CONVERT_ENTRY(unsigned long, str_to_uint64, strtouintx, Ch)         \
  VEXA_CONVERT_ENTRY(unsigned int, str_to_uint32, strtouintx, Ch)          \
  VEXA_CONVERT_ENTRY(unsigned int, str_to_unsigned, strtouintx, Ch)        \
  VEXA_CONVERT_ENTRY(unsigned short, str_to_uint16, strtouintx, Ch)        \
  VEXA_CONVERT_ENTRY(unsigned char, str_to_uint8, strtouintx, Ch)          \
  VEXA_CONVERT_ENTRY(long, str_to_int64, strtointx, Ch)                    \
  VEXA_CONVERT_ENTRY(long, str_to_long, strtointx, Ch)                     \
  VEXA_CONVERT_ENTRY(int, str_to_int32, strtointx, Ch)                     \
  VEXA_CONVERT_ENTRY(int, str_to_signed, strtointx, Ch)                    \
  VEXA_CONVERT_ENTRY(int, str_to_int, strtointx, Ch)                       \
  VEXA_CONVERT_ENTRY(short, str_to_int16, strtointx, Ch)                   \
  VEXA_CONVERT_ENTRY(short, str_to_short, strtointx, Ch)                   \
  VEXA_CONVERT_ENTRY(signed char, str_to_int8, strtointx, Ch)

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
