// vexa — integers to digits in any radix from 2 to 36 (`generic::convert`).
//
// The writers put the digits of a value into a caller's buffer of `char`,
// `unsigned short` (UTF-16) or `wchar_t` units: a '-' for negative values,
// the digits with letters in lower case, and a terminating 0. Nothing is
// padded and no prefix is written.
//
//   char buf[66];
//   convert::lltoa(-255L, buf, 16);   // buf holds "-ff"
//
// The unbounded writers (ltoa, ultoa, lltoa, ulltoa, xtostr, uxtostr) need up
// to 66 units: the sign, 64 digits (radix 2, 64-bit value) and the 0. The
// `_n` writers take the buffer's size and write nothing that does not fit.
//
// The radix is the caller's to get right. Radices 0 and 1 have no digits;
// they write the empty text (just the terminating 0) instead of dividing by
// zero or looping forever. Radices above 36 go on past 'z' in unit values
// ('a' + remainder - 10), bounded like any other radix.
#ifndef VEXA_GENERIC_CONVERT_X_TO_STR_HPP
#define VEXA_GENERIC_CONVERT_X_TO_STR_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace convert {

// ---- digit writers -----------------------------------------------------------

// xtostr
// Writes `value` (int or long) in `radix` to `out`: '-' first when negative,
// then the digits of the magnitude taken in the unsigned type of the same
// width (so the smallest value of T is written correctly), then 0.
//   xtostr(-2147483647 - 1, buf, 10u)   // "-2147483648"
//   xtostr(0L, buf, 2u)                 // "0"
template <typename T, typename Ch>
void xtostr(T value, Ch* out, unsigned int radix);

// uxtostr
// Writes `value` (unsigned int or unsigned long) in `radix` to `out`, then 0.
//   uxtostr(255u, buf, 16u)    // "ff"
//   uxtostr(~0ul, buf, 36u)    // "3w5e11264sgsf"
template <typename T, typename Ch>
void uxtostr(T value, Ch* out, unsigned int radix);

// ---- entry points -------------------------------------------------------------
//   ltoa   int              xtostr<int, Ch>
//   ultoa  unsigned int     uxtostr<unsigned int, Ch>
//   lltoa  long             xtostr<long, Ch>
//   ulltoa unsigned long    uxtostr<unsigned long, Ch>
//
//   ltoa(-42, buf, 10)          // "-42"
//   ulltoa(1ul << 63, buf, 8)   // "1000000000000000000000"

VEXA_API void ltoa(int value, char* out, unsigned int radix);
VEXA_API void ltoa(int value, unsigned short* out, unsigned int radix);
VEXA_API void ltoa(int value, wchar_t* out, unsigned int radix);
VEXA_API void ultoa(unsigned int value, char* out, unsigned int radix);
VEXA_API void ultoa(unsigned int value, unsigned short* out, unsigned int radix);
VEXA_API void ultoa(unsigned int value, wchar_t* out, unsigned int radix);
VEXA_API void lltoa(long value, char* out, unsigned int radix);
VEXA_API void lltoa(long value, unsigned short* out, unsigned int radix);
VEXA_API void lltoa(long value, wchar_t* out, unsigned int radix);
VEXA_API void ulltoa(unsigned long value, char* out, unsigned int radix);
VEXA_API void ulltoa(unsigned long value, unsigned short* out, unsigned int radix);
VEXA_API void ulltoa(unsigned long value, wchar_t* out, unsigned int radix);

// ---- bounded writers -----------------------------------------------------------

// ltoa_n, ultoa_n, lltoa_n, ulltoa_n
// Write what the writer without `_n` writes when the text and its 0 fit in
// `size` units, and return the number of units before the 0. When it does not
// fit (or the radix is below 2) they write the empty text, if `size` is at
// least 1, and return 0.
//   ltoa_n(-42, buf, 4, 10)    // 3, "-42"
//   ltoa_n(-42, buf, 3, 10)    // 0, ""
VEXA_API unsigned long ltoa_n(int value, char* out, unsigned long size, unsigned int radix);
VEXA_API unsigned long ltoa_n(int value, unsigned short* out, unsigned long size,
                              unsigned int radix);
VEXA_API unsigned long ltoa_n(int value, wchar_t* out, unsigned long size, unsigned int radix);
VEXA_API unsigned long ultoa_n(unsigned int value, char* out, unsigned long size,
                               unsigned int radix);
VEXA_API unsigned long ultoa_n(unsigned int value, unsigned short* out, unsigned long size,
                               unsigned int radix);
VEXA_API unsigned long ultoa_n(unsigned int value, wchar_t* out, unsigned long size,
                               unsigned int radix);
VEXA_API unsigned long lltoa_n(long value, char* out, unsigned long size, unsigned int radix);
VEXA_API unsigned long lltoa_n(long value, unsigned short* out, unsigned long size,
                               unsigned int radix);
VEXA_API unsigned long lltoa_n(long value, wchar_t* out, unsigned long size, unsigned int radix);
VEXA_API unsigned long ulltoa_n(unsigned long value, char* out, unsigned long size,
                                unsigned int radix);
VEXA_API unsigned long ulltoa_n(unsigned long value, unsigned short* out, unsigned long size,
                                unsigned int radix);
VEXA_API unsigned long ulltoa_n(unsigned long value, wchar_t* out, unsigned long size,
                                unsigned int radix);

// ---- implementation details ----------------------------------------------------

#define VEXA_CONVERT_EXTERN_WRITERS(Ch)                                                  \
  extern template VEXA_API void xtostr<int, Ch>(int, Ch*, unsigned int);                 \
  extern template VEXA_API void xtostr<long, Ch>(long, Ch*, unsigned int);               \
  extern template VEXA_API void uxtostr<unsigned int, Ch>(unsigned int, Ch*, unsigned int); \
  extern template VEXA_API void uxtostr<unsigned long, Ch>(unsigned long, Ch*, unsigned int);

VEXA_CONVERT_EXTERN_WRITERS(char)
VEXA_CONVERT_EXTERN_WRITERS(unsigned short)
VEXA_CONVERT_EXTERN_WRITERS(wchar_t)

#undef VEXA_CONVERT_EXTERN_WRITERS

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_CONVERT_X_TO_STR_HPP
