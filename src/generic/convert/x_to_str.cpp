#include "vexa/generic/convert/x_to_str.hpp"

#include <cstring>
#include <type_traits>

#define VEXA_INLINE inline __attribute__((always_inline))

namespace VEXA_2_10 {
namespace generic {
namespace convert {
namespace {

// Sign, 64 binary digits and the terminating 0.
constexpr unsigned long max_units = 66;

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

template <typename Ch>
VEXA_INLINE Ch* put_pair(Ch* p, char const* pair) {
  p -= 2;
  p[0] = static_cast<Ch>(pair[0]);
  p[1] = static_cast<Ch>(pair[1]);
  return p;
}

// Writes the digits of `v` so that the last one lands just before `end` and
// returns the first; at least one digit is written. For any radix from 2 the
// quotient of a magnitude of at most 2^(bits-1) is below 2^(bits-1), so
// "the quotient read as signed is at least 1" and "the quotient is not 0"
// agree, and one loop serves signed and unsigned values alike.
template <typename U, typename Ch>
VEXA_INLINE Ch* digits_backwards(U v, unsigned int radix, Ch* end) {
  Ch* p = end;
  switch (radix) {
    case 10:
      while (v >= 100) {
        U const q = static_cast<U>(v / 100);
        p = put_pair(p, pairs.decimal + 2 * static_cast<unsigned int>(v - q * 100));
        v = q;
      }
      if (v >= 10) return put_pair(p, pairs.decimal + 2 * static_cast<unsigned int>(v));
      *--p = static_cast<Ch>('0' + static_cast<unsigned int>(v));
      return p;
    case 16:
      while (v >= 0x100) {
        p = put_pair(p, pairs.hex + 2 * static_cast<unsigned int>(v & 0xFF));
        v = static_cast<U>(v >> 8);
      }
      if (v >= 0x10) return put_pair(p, pairs.hex + 2 * static_cast<unsigned int>(v));
      *--p = static_cast<Ch>(pairs.hex[2 * static_cast<unsigned int>(v) + 1]);
      return p;
    case 8:
      do {
        *--p = static_cast<Ch>('0' + static_cast<unsigned int>(v & 7));
        v = static_cast<U>(v >> 3);
      } while (v != 0);
      return p;
    case 2:
      do {
        *--p = static_cast<Ch>('0' + static_cast<unsigned int>(v & 1));
        v = static_cast<U>(v >> 1);
      } while (v != 0);
      return p;
    default:
      do {
        U const q = static_cast<U>(v / radix);
        U const r = static_cast<U>(v - q * radix);
        // Past 35 the letters run on beyond 'z', wrapping in the unit's width.
        *--p = static_cast<Ch>(r <= 9 ? '0' + r : 'a' + (r - 10));
        v = q;
      } while (v != 0);
      return p;
  }
}

// The text of a value in a local buffer; `first` points at its first unit,
// the text runs to the buffer's end (no terminator).
template <typename Ch>
struct rendered {
  Ch unit[max_units];
  Ch* first;
  unsigned long size() const { return static_cast<unsigned long>(unit + max_units - first); }
};

template <typename T, typename Ch>
VEXA_INLINE void render(T value, unsigned int radix, rendered<Ch>& text) {
  using U = std::make_unsigned_t<T>;
  Ch* const end = text.unit + max_units;
  if constexpr (std::is_signed_v<T>) {
    // The magnitude in the unsigned type: exact for the smallest value too.
    bool const negative = value < 0;
    U const magnitude = negative ? static_cast<U>(0u - static_cast<U>(value)) : static_cast<U>(value);
    text.first = digits_backwards(magnitude, radix, end);
    if (negative) *--text.first = static_cast<Ch>('-');
  } else {
    text.first = digits_backwards(static_cast<U>(value), radix, end);
  }
}

template <typename T, typename Ch>
VEXA_INLINE void write_unbounded(T value, Ch* out, unsigned int radix) {
  if (radix < 2) {
    out[0] = 0;
    return;
  }
  rendered<Ch> text;
  render(value, radix, text);
  unsigned long const n = text.size();
  std::memcpy(out, text.first, n * sizeof(Ch));
  out[n] = 0;
}

template <typename T, typename Ch>
VEXA_INLINE unsigned long write_bounded(T value, Ch* out, unsigned long size, unsigned int radix) {
  if (size == 0) return 0;
  if (radix < 2) {
    out[0] = 0;
    return 0;
  }
  rendered<Ch> text;
  render(value, radix, text);
  unsigned long const n = text.size();
  if (n >= size) {
    out[0] = 0;
    return 0;
  }
  std::memcpy(out, text.first, n * sizeof(Ch));
  out[n] = 0;
  return n;
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
