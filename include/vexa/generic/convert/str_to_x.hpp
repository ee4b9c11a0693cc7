// vexa — text to integers and truth values (`generic::convert`).
//
// Two parsers, `strtointx` for signed and `strtouintx` for unsigned results,
// are written once over the result type and the character type; the plainly
// named entry points (`str_to_int`, `str_to_uint16`, ...) forward to them.
// Characters are classified by their numeric value only, so 8-bit text,
// UTF-16 units and 32-bit characters parse alike and no locale is consulted
// beyond the C library's white-space test.
//
//   convert::str_to_int("  -42kg", 7, types::radix_t::automatic, false);   // -42
//   convert::str_to_uint16("0x1F", 4, types::radix_t::automatic, false);   // 31
//
// How a text is read:
//   1. Leading white space (`is_space`) is skipped; a text that ends there is 0.
//   2. One '-' or '+' may follow; a text that ends there is 0.
//   3. A radix other than 0, 2..36 raises `exceptions::invalid_argument_value`
//      "invalid radix value, values of 0, 2-36 are the only valid values".
//      It is checked only here, after the white space and the sign.
//   4. Radix 0 lets the text decide: "0x"/"0X" is hexadecimal, "0b"/"0B"
//      binary, any other leading '0' octal, everything else decimal. A
//      backslash works like the leading '0' (on purpose, for escapes such as
//      \x1F = 31 and \17 = 15). With an explicit radix no prefix is read:
//      "0x1F" in radix 16 is 0.
//   5. Digits ('0'-'9', then 'A'-'Z' or 'a'-'z' for 10 upwards) are read up
//      to the first character that is no digit of the radix; the rest of the
//      text is ignored without error. No digits at all gives 0.
//
// Out-of-range values (throw_on_error false / true):
//   signed, too large:        largest value of T / `exceptions::overflow_error`
//                             "Number value is to large"
//   signed, too small ('-'):  smallest value of T / `exceptions::underflow_error`
//                             "Number value is to small"
//   unsigned, too large:      largest value of T / overflow_error as above
//   unsigned with '-':        0 / underflow_error as above ("-0" is 0 either way)
// The exceptions record the raise site: file "generic/convert/str_to_x",
// function "strtointx" or "strtouintx" and the source line.
//
// The length is counted in units. The signed parsers take a length of 0 as
// "up to the terminating 0". The unsigned parsers do not: with length 0 they
// look at the first unit only (so "123" with length 0 is 1); callers pass the
// real length. A text given with length 0 must be 0-terminated, and the first
// unit is always examined, so an empty text with an invalid radix raises the
// radix error. A null text gives 0.
#ifndef VEXA_GENERIC_CONVERT_STR_TO_X_HPP
#define VEXA_GENERIC_CONVERT_STR_TO_X_HPP

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/radix.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace convert {

// ---- character classification ----------------------------------------------

// is_space
// True when the C library's isspace() holds for the unit's value: `char` is
// taken sign-extended, `unsigned short` zero-extended, `wchar_t` as it is.
// Values isspace() does not accept are never white space: bytes from 0x80
// (negative as `char`; the C locale has no white space there either) and
// units above 255.
//   is_space('\t')            // true
//   is_space(L'\x3000')       // false
VEXA_API bool is_space(char c);
VEXA_API bool is_space(unsigned short c);
VEXA_API bool is_space(wchar_t c);

// How one unit stands against a radix.
enum radix_digit_type : unsigned int {
  not_radix_digit = 0,    // no digit of the radix
  decimal_radix_digit = 1,  // '0'..'9', value c - 48
  upper_radix_digit = 2,  // 'A'.., value c - 55
  lower_radix_digit = 3   // 'a'.., value c - 87
};

// isradixdigit
// Classifies `c` (a `char` taken as signed) against `radix`: decimal when
// 47 < c < 48 + min(radix, 10), else upper case when 64 < c < radix + 55,
// else lower case when 'a' <= c < radix + 87, else not a digit.
//   isradixdigit('f', 16)     // lower_radix_digit (value 15)
//   isradixdigit('8', 8)      // not_radix_digit
template <typename Ch>
radix_digit_type isradixdigit(Ch c, unsigned int radix);

// ---- parsers ------------------------------------------------------------------

// strtointx
// The value of `text` as T (long, int, short, signed char), read as described
// at the top. Overflow gives the extreme value of T or raises (see above).
//   strtointx<int>("-0x10", 5, 0, false)        // -16
//   strtointx<signed char>("200", 3, 10, false)   // 127
//
// The overflow test compares the running value as a signed T, so a magnitude
// of exactly 2^(bits-1) after a '-' passes one more digit unchecked and wraps:
// "-21474836480" as int is 0. This is kept on purpose, for every width.
template <typename T, typename Ch>
T strtointx(Ch const* text, unsigned long length, unsigned int radix, bool throw_on_error);

// strtouintx
// The value of `text` as T (unsigned long, unsigned int, unsigned short,
// unsigned char). A '-' with a non-zero value gives 0 or raises underflow.
//   strtouintx<unsigned char>("0377", 4, 0, false)   // 255
//   strtouintx<unsigned int>("-5", 2, 10, false)      // 0
template <typename T, typename Ch>
T strtouintx(Ch const* text, unsigned long length, unsigned int radix, bool throw_on_error);

// ---- entry points -------------------------------------------------------------
// Each returns the result of its parser unchanged:
//   str_to_uint64                           strtouintx<unsigned long, Ch>
//   str_to_uint32, str_to_unsigned          strtouintx<unsigned int, Ch>
//   str_to_uint16                           strtouintx<unsigned short, Ch>
//   str_to_uint8                            strtouintx<unsigned char, Ch>
//   str_to_int64, str_to_long               strtointx<long, Ch>
//   str_to_int32, str_to_signed, str_to_int strtointx<int, Ch>
//   str_to_int16, str_to_short              strtointx<short, Ch>
//   str_to_int8                             strtointx<signed char, Ch>
//
//   str_to_int64("9223372036854775808", 19, radix_t::decimal, false)   // LONG_MAX
//   str_to_uint8("256", 3, radix_t::decimal, true)   // throws overflow_error

// 8-bit text
VEXA_API unsigned long str_to_uint64(char const* text, unsigned long length,
                                     types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned int str_to_uint32(char const* text, unsigned long length,
                                    types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned int str_to_unsigned(char const* text, unsigned long length,
                                      types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned short str_to_uint16(char const* text, unsigned long length,
                                      types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned char str_to_uint8(char const* text, unsigned long length,
                                    types::radix_t::base radix, bool throw_on_error);
VEXA_API long str_to_int64(char const* text, unsigned long length,
                           types::radix_t::base radix, bool throw_on_error);
VEXA_API long str_to_long(char const* text, unsigned long length,
                          types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_int32(char const* text, unsigned long length,
                          types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_signed(char const* text, unsigned long length,
                           types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_int(char const* text, unsigned long length,
                        types::radix_t::base radix, bool throw_on_error);
VEXA_API short str_to_int16(char const* text, unsigned long length,
                            types::radix_t::base radix, bool throw_on_error);
VEXA_API short str_to_short(char const* text, unsigned long length,
                            types::radix_t::base radix, bool throw_on_error);
VEXA_API signed char str_to_int8(char const* text, unsigned long length,
                                 types::radix_t::base radix, bool throw_on_error);

// UTF-16 code units
VEXA_API unsigned long str_to_uint64(unsigned short const* text, unsigned long length,
                                     types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned int str_to_uint32(unsigned short const* text, unsigned long length,
                                    types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned int str_to_unsigned(unsigned short const* text, unsigned long length,
                                      types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned short str_to_uint16(unsigned short const* text, unsigned long length,
                                      types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned char str_to_uint8(unsigned short const* text, unsigned long length,
                                    types::radix_t::base radix, bool throw_on_error);
VEXA_API long str_to_int64(unsigned short const* text, unsigned long length,
                           types::radix_t::base radix, bool throw_on_error);
VEXA_API long str_to_long(unsigned short const* text, unsigned long length,
                          types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_int32(unsigned short const* text, unsigned long length,
                          types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_signed(unsigned short const* text, unsigned long length,
                           types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_int(unsigned short const* text, unsigned long length,
                        types::radix_t::base radix, bool throw_on_error);
VEXA_API short str_to_int16(unsigned short const* text, unsigned long length,
                            types::radix_t::base radix, bool throw_on_error);
VEXA_API short str_to_short(unsigned short const* text, unsigned long length,
                            types::radix_t::base radix, bool throw_on_error);
VEXA_API signed char str_to_int8(unsigned short const* text, unsigned long length,
                                 types::radix_t::base radix, bool throw_on_error);

// 32-bit characters
VEXA_API unsigned long str_to_uint64(wchar_t const* text, unsigned long length,
                                     types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned int str_to_uint32(wchar_t const* text, unsigned long length,
                                    types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned int str_to_unsigned(wchar_t const* text, unsigned long length,
                                      types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned short str_to_uint16(wchar_t const* text, unsigned long length,
                                      types::radix_t::base radix, bool throw_on_error);
VEXA_API unsigned char str_to_uint8(wchar_t const* text, unsigned long length,
                                    types::radix_t::base radix, bool throw_on_error);
VEXA_API long str_to_int64(wchar_t const* text, unsigned long length,
                           types::radix_t::base radix, bool throw_on_error);
VEXA_API long str_to_long(wchar_t const* text, unsigned long length,
                          types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_int32(wchar_t const* text, unsigned long length,
                          types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_signed(wchar_t const* text, unsigned long length,
                           types::radix_t::base radix, bool throw_on_error);
VEXA_API int str_to_int(wchar_t const* text, unsigned long length,
                        types::radix_t::base radix, bool throw_on_error);
VEXA_API short str_to_int16(wchar_t const* text, unsigned long length,
                            types::radix_t::base radix, bool throw_on_error);
VEXA_API short str_to_short(wchar_t const* text, unsigned long length,
                            types::radix_t::base radix, bool throw_on_error);
VEXA_API signed char str_to_int8(wchar_t const* text, unsigned long length,
                                 types::radix_t::base radix, bool throw_on_error);

// ---- truth values -------------------------------------------------------------

// str_to_bool
// True for "yes", "on" and "true" in any case (units up to 255 are lowered
// with the C library's tolower()); otherwise whether str_to_long of the text
// as given, radix 0, without raising, is non-zero.
//   str_to_bool(L"On")     // true
//   str_to_bool(L"0x0")    // false
VEXA_API bool str_to_bool(strings::ustring32 const& text);

// ---- implementation details ----------------------------------------------------

namespace _private {

// The value the classification works on: `char` sign-extended, the wider
// units as they are.
inline long unit_value(char c) { return static_cast<signed char>(c); }
inline long unit_value(unsigned short c) { return c; }
inline long unit_value(wchar_t c) { return c; }

}  // namespace _private

template <typename Ch>
inline radix_digit_type isradixdigit(Ch c, unsigned int radix) {
  long const v = _private::unit_value(c);
  long const r = static_cast<long>(radix);
  if (v > 47 && v < 48 + (r < 10 ? r : 10)) return decimal_radix_digit;
  if (v > 64 && v < r + 55) return upper_radix_digit;
  if (v >= 'a' && v < r + 87) return lower_radix_digit;
  return not_radix_digit;
}

#define VEXA_CONVERT_EXTERN_PARSERS(Ch)                                                         \
  extern template VEXA_API long strtointx<long, Ch>(Ch const*, unsigned long, unsigned int,     \
                                                    bool);                                      \
  extern template VEXA_API int strtointx<int, Ch>(Ch const*, unsigned long, unsigned int, bool); \
  extern template VEXA_API short strtointx<short, Ch>(Ch const*, unsigned long, unsigned int,   \
                                                      bool);                                    \
  extern template VEXA_API signed char strtointx<signed char, Ch>(Ch const*, unsigned long,     \
                                                                  unsigned int, bool);          \
  extern template VEXA_API unsigned long strtouintx<unsigned long, Ch>(                         \
      Ch const*, unsigned long, unsigned int, bool);                                            \
  extern template VEXA_API unsigned int strtouintx<unsigned int, Ch>(                           \
      Ch const*, unsigned long, unsigned int, bool);                                            \
  extern template VEXA_API unsigned short strtouintx<unsigned short, Ch>(                       \
      Ch const*, unsigned long, unsigned int, bool);                                            \
  extern template VEXA_API unsigned char strtouintx<unsigned char, Ch>(                         \
      Ch const*, unsigned long, unsigned int, bool);

VEXA_CONVERT_EXTERN_PARSERS(char)
VEXA_CONVERT_EXTERN_PARSERS(unsigned short)
VEXA_CONVERT_EXTERN_PARSERS(wchar_t)

#undef VEXA_CONVERT_EXTERN_PARSERS

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_CONVERT_STR_TO_X_HPP
