#include "vexa/generic/convert/x_to_str.hpp"

#include <cstdint>
#include <cstring>
#include <type_traits>

#define VEXA_INLINE inline __attribute__((always_inline))

namespace VEXA_2_10 {
namespace generic {
namespace convert {
namespace {

// "00" "01" ... "99" and "00" "01" ... "ff": two digits per division.
struct pair_tables {
  char decimal[200];
  char hex[512];
  constexpr pair_tables() : decimal(), hex() {
    char const digit[] = "0123456789abcdef";
    for (unsigned int i = 0; i < 100; ++i) {
      decimal[2 * i] = digit[i / 10];
      decimal[2 * i + 1] = digit[i % 10];
    }
    for (unsigned int i = 0; i < 256; ++i) {
      hex[2 * i] = digit[i >> 4];
      hex[2 * i + 1] = digit[i & 15];
    }
  }
};
constexpr pair_tables pairs{};

// clang-format off
constexpr std::uint64_t power_of_ten[20] = {
    1ul, 10ul, 100ul, 1000ul, 10000ul, 100000ul, 1000000ul, 10000000ul, 100000000ul,
    1000000000ul, 10000000000ul, 100000000000ul, 1000000000000ul, 10000000000000ul,
    100000000000000ul, 1000000000000000ul, 10000000000000000ul, 100000000000000000ul,
    1000000000000000000ul, 10000000000000000000ul};
// clang-format on

// The number of digits of `v` in `radix` (2 and up); 0 has one digit. Known
// radices are counted from the bit width: 1233/4096 is just below log10(2),
// so `t` is the count or one less, and the table decides.
template <typename U>
VEXA_INLINE unsigned int digit_count(U value, unsigned int radix) {
  std::uint64_t const v = static_cast<std::uint64_t>(value) | 1;  // same count, and a bit set
  unsigned int const bits = 64 - static_cast<unsigned int>(__builtin_clzll(v));
  switch (radix) {
    case 10: {
      unsigned int const t = (bits * 1233) >> 12;
      return t + (v >= power_of_ten[t] ? 1 : 0);
    }
    case 16: return (bits + 3) / 4;
    case 8: return (bits + 2) / 3;
    case 2: return bits;
    default: {
      unsigned int count = 1;
      for (U rest = static_cast<U>(value / radix); rest != 0; rest = static_cast<U>(rest / radix)) {
        ++count;
      }
      return count;
    }
  }
}

template <typename Ch>
VEXA_INLINE Ch* put_pair(Ch* p, char const* pair) {
  p -= 2;
  if constexpr (sizeof(Ch) == 1) {
    std::memcpy(p, pair, 2);
  } else {
    p[0] = static_cast<Ch>(pair[0]);
    p[1] = static_cast<Ch>(pair[1]);
  }
  return p;
}

// Eight hexadecimal digits of a 32-bit value at once, as the bytes of a
// 64-bit word in text order (the processor is little-endian): the nibbles are
// spread to one per byte, turned into '0'-'9' or 'a'-'f', and byte-swapped.
VEXA_INLINE std::uint64_t hex_digits(std::uint32_t value) {
  std::uint64_t x = value;
  x = (x | x << 16) & 0x0000FFFF0000FFFFu;
  x = (x | x << 8) & 0x00FF00FF00FF00FFu;
  x = (x | x << 4) & 0x0F0F0F0F0F0F0F0Fu;
  std::uint64_t const letters = ((x + 0x0606060606060606u) >> 4) & 0x0101010101010101u;
  return __builtin_bswap64(x + 0x3030303030303030u + letters * ('a' - '0' - 10));
}

// The same word from the pair table: four independent loads instead of one
// long chain of shifts and masks, which is what a lone 32-bit value wants.
VEXA_INLINE std::uint64_t hex_pairs(std::uint32_t value) {
  std::uint16_t a, b, c, d;
  std::memcpy(&a, pairs.hex + 2 * (value >> 24), 2);
  std::memcpy(&b, pairs.hex + 2 * ((value >> 16) & 0xFF), 2);
  std::memcpy(&c, pairs.hex + 2 * ((value >> 8) & 0xFF), 2);
  std::memcpy(&d, pairs.hex + 2 * (value & 0xFF), 2);
  return a | static_cast<std::uint64_t>(b) << 16 | static_cast<std::uint64_t>(c) << 32 |
         static_cast<std::uint64_t>(d) << 48;
}

// Eight decimal digits of x < 10^8 at once, as the bytes of a 64-bit word in
// text order: x is split into two 4-digit halves (32-bit lanes), each into
// two 2-digit quarters (16-bit lanes), each into two digits (bytes); the
// divisions by 100 and 10 are multiplications that stay inside their lanes.
VEXA_INLINE std::uint64_t decimal_digits(std::uint32_t x) {
  std::uint64_t w = (x / 10000) | static_cast<std::uint64_t>(x % 10000) << 32;
  std::uint64_t q = ((w * 10486) >> 20) & 0x0000007F0000007Fu;
  w = q | (w - q * 100) << 16;
  q = ((w * 103) >> 10) & 0x000F000F000F000Fu;
  w = q | (w - q * 10) << 8;
  return w + 0x3030303030303030u;
}

// Stores the last `count` (1..8) bytes of a word of eight digits at `out`,
// with stores that stay inside out[0, count).
VEXA_INLINE void put_last(std::uint64_t digits, unsigned int count, char* out) {
  digits >>= 8 * (8 - count);
  if (count >= 4) {
    std::uint32_t const head = static_cast<std::uint32_t>(digits);
    std::uint32_t const tail = static_cast<std::uint32_t>(digits >> 8 * (count - 4));
    std::memcpy(out, &head, 4);
    std::memcpy(out + count - 4, &tail, 4);
  } else if (count >= 2) {
    std::uint16_t const head = static_cast<std::uint16_t>(digits);
    std::uint16_t const tail = static_cast<std::uint16_t>(digits >> 8 * (count - 2));
    std::memcpy(out, &head, 2);
    std::memcpy(out + count - 2, &tail, 2);
  } else {
    out[0] = static_cast<char>(digits);
  }
}

// Writes the `count` digits of `v` to out[0, count), the last one first:
// two per step from the pair tables for radices 10 and 16, by shifts for 8
// and 2, by division otherwise. For any radix from 2 the quotient of a
// magnitude of at most 2^(bits-1) is below 2^(bits-1), so "the quotient read
// as signed is at least 1" and "the quotient is not 0" agree, and one loop
// serves signed and unsigned values alike.
template <typename U, typename Ch>
VEXA_INLINE void put_digits(U v, unsigned int radix, Ch* out, unsigned int count) {
  Ch* p = out + count;
  switch (radix) {
    case 10:
      if constexpr (sizeof(Ch) == 1) {
        // Up to three groups of eight; the first keeps only its last digits.
        if (count <= 8) {
          put_last(decimal_digits(static_cast<std::uint32_t>(v)), count, out);
          return;
        }
        std::uint64_t const low = decimal_digits(static_cast<std::uint32_t>(v % 100000000u));
        U const high = static_cast<U>(v / 100000000u);
        if (count <= 16) {
          put_last(decimal_digits(static_cast<std::uint32_t>(high)), count - 8, out);
        } else {
          std::uint64_t const middle =
              decimal_digits(static_cast<std::uint32_t>(high % 100000000u));
          put_last(decimal_digits(static_cast<std::uint32_t>(high / 100000000u)), count - 16, out);
          std::memcpy(out + count - 16, &middle, 8);
        }
        std::memcpy(out + count - 8, &low, 8);
        return;
      }
      while (v >= 100) {
        U const q = static_cast<U>(v / 100);
        p = put_pair(p, pairs.decimal + 2 * static_cast<unsigned int>(v - q * 100));
        v = q;
      }
      if (v >= 10) {
        put_pair(p, pairs.decimal + 2 * static_cast<unsigned int>(v));
      } else {
        p[-1] = static_cast<Ch>('0' + static_cast<unsigned int>(v));
      }
      return;
    case 16:
      if constexpr (sizeof(Ch) == 1 && sizeof(U) == 4) {
        put_last(hex_pairs(static_cast<std::uint32_t>(v)), count, out);
        return;
      }
      if constexpr (sizeof(Ch) == 1 && sizeof(U) == 8) {  // a word at a time pays off for 64 bits
        if (count > 8) {
          put_last(hex_digits(static_cast<std::uint32_t>(static_cast<std::uint64_t>(v) >> 32)),
                   count - 8, out);
          put_last(hex_digits(static_cast<std::uint32_t>(v)), 8, out + count - 8);
        } else {
          put_last(hex_digits(static_cast<std::uint32_t>(v)), count, out);
        }
        return;
      }
      while (v >= 0x100) {
        p = put_pair(p, pairs.hex + 2 * static_cast<unsigned int>(v & 0xFF));
        v = static_cast<U>(v >> 8);
      }
      if (v >= 0x10) {
        put_pair(p, pairs.hex + 2 * static_cast<unsigned int>(v));
      } else {
        p[-1] = static_cast<Ch>(pairs.hex[2 * static_cast<unsigned int>(v) + 1]);
      }
      return;
    case 8:
      do {
        *--p = static_cast<Ch>('0' + static_cast<unsigned int>(v & 7));
        v = static_cast<U>(v >> 3);
      } while (v != 0);
      return;
    case 2:
      do {
        *--p = static_cast<Ch>('0' + static_cast<unsigned int>(v & 1));
        v = static_cast<U>(v >> 1);
      } while (v != 0);
      return;
    default:
      do {
        U const q = static_cast<U>(v / radix);
        U const r = static_cast<U>(v - q * radix);
        // Past 35 the letters run on beyond 'z', wrapping in the unit's width.
        *--p = static_cast<Ch>(r <= 9 ? '0' + r : 'a' + (r - 10));
        v = q;
      } while (v != 0);
      return;
  }
}

// The sign and the magnitude, taken in the unsigned type of the same width
// (exact for the smallest value too).
template <typename T>
VEXA_INLINE std::make_unsigned_t<T> magnitude_of(T value, bool& negative) {
  using U = std::make_unsigned_t<T>;
  if constexpr (std::is_signed_v<T>) {
    negative = value < 0;
    return negative ? static_cast<U>(0u - static_cast<U>(value)) : static_cast<U>(value);
  } else {
    negative = false;
    return value;
  }
}

template <typename T, typename Ch>
VEXA_INLINE void write_unbounded(T value, Ch* out, unsigned int radix) {
  if (radix < 2) {
    out[0] = 0;
    return;
  }
  bool negative;
  auto const m = magnitude_of(value, negative);
  if (negative) *out++ = static_cast<Ch>('-');
  unsigned int const count = digit_count(m, radix);
  put_digits(m, radix, out, count);
  out[count] = 0;
}

template <typename T, typename Ch>
VEXA_INLINE unsigned long write_bounded(T value, Ch* out, unsigned long size, unsigned int radix) {
  if (size == 0) return 0;
  out[0] = 0;
  if (radix < 2) return 0;
  bool negative;
  auto const m = magnitude_of(value, negative);
  unsigned int const count = digit_count(m, radix);
  unsigned long const length = count + (negative ? 1 : 0);
  if (length >= size) return 0;
  if (negative) out[0] = static_cast<Ch>('-');
  put_digits(m, radix, out + (negative ? 1 : 0), count);
  out[length] = 0;
  return length;
}

}  // namespace

template <typename T, typename Ch>
void xtostr(T value, Ch* out, unsigned int radix) {
  static_assert(std::is_signed_v<T>, "xtostr writes signed values");
  write_unbounded(value, out, radix);
}

template <typename T, typename Ch>
void uxtostr(T value, Ch* out, unsigned int radix) {
  static_assert(std::is_unsigned_v<T>, "uxtostr writes unsigned values");
  write_unbounded(value, out, radix);
}

#define VEXA_CONVERT_WRITERS(Ch)                                                              \
  template VEXA_API void xtostr<int, Ch>(int, Ch*, unsigned int);                             \
  template VEXA_API void xtostr<long, Ch>(long, Ch*, unsigned int);                           \
  template VEXA_API void uxtostr<unsigned int, Ch>(unsigned int, Ch*, unsigned int);          \
  template VEXA_API void uxtostr<unsigned long, Ch>(unsigned long, Ch*, unsigned int);        \
  void ltoa(int value, Ch* out, unsigned int radix) { write_unbounded(value, out, radix); }   \
  void ultoa(unsigned int value, Ch* out, unsigned int radix) {                               \
    write_unbounded(value, out, radix);                                                       \
  }                                                                                           \
  void lltoa(long value, Ch* out, unsigned int radix) { write_unbounded(value, out, radix); } \
  void ulltoa(unsigned long value, Ch* out, unsigned int radix) {                             \
    write_unbounded(value, out, radix);                                                       \
  }                                                                                           \
  unsigned long ltoa_n(int value, Ch* out, unsigned long size, unsigned int radix) {          \
    return write_bounded(value, out, size, radix);                                            \
  }                                                                                           \
  unsigned long ultoa_n(unsigned int value, Ch* out, unsigned long size, unsigned int radix) { \
    return write_bounded(value, out, size, radix);                                            \
  }                                                                                           \
  unsigned long lltoa_n(long value, Ch* out, unsigned long size, unsigned int radix) {        \
    return write_bounded(value, out, size, radix);                                            \
  }                                                                                           \
  unsigned long ulltoa_n(unsigned long value, Ch* out, unsigned long size,                    \
                         unsigned int radix) {                                                \
    return write_bounded(value, out, size, radix);                                            \
  }

VEXA_CONVERT_WRITERS(char)
VEXA_CONVERT_WRITERS(unsigned short)
VEXA_CONVERT_WRITERS(wchar_t)

#undef VEXA_CONVERT_WRITERS

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10
