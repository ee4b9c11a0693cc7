#include "vexa/generic/convert/bin_str.hpp"

#include <cstdint>
#include <cstring>

namespace VEXA_2_10 {
namespace generic {
namespace convert {
namespace {

// The unsigned integer that carries a value's bytes.
template <unsigned long Width>
struct bits_of;
template <>
struct bits_of<2> {
  using type = std::uint16_t;
  static type reversed(type v) { return __builtin_bswap16(v); }
};
template <>
struct bits_of<4> {
  using type = std::uint32_t;
  static type reversed(type v) { return __builtin_bswap32(v); }
};
template <>
struct bits_of<8> {
  using type = std::uint64_t;
  static type reversed(type v) { return __builtin_bswap64(v); }
};

enum class order { processor, reversed };

// Byte strings are copied through an integer of the same width, reversed for
// the most-significant-first namespaces; memcpy keeps float bit patterns (and
// NaN payloads) intact where a conversion would not.
template <typename T, order O>
std::string encode(T const& value) {
  using bits = bits_of<sizeof(T)>;
  typename bits::type b;
  std::memcpy(&b, &value, sizeof(T));
  if (O == order::reversed) b = bits::reversed(b);
  return std::string(reinterpret_cast<char const*>(&b), sizeof(T));
}

template <typename T, order O>
T decode(char const* bytes) {
  using bits = bits_of<sizeof(T)>;
  typename bits::type b;
  std::memcpy(&b, bytes, sizeof(T));
  if (O == order::reversed) b = bits::reversed(b);
  T value;
  std::memcpy(&value, &b, sizeof(T));
  return value;
}

template <typename T, order O>
T decode(std::string const& bytes) {
  if (bytes.size() < sizeof(T)) return T(0);
  return decode<T, O>(bytes.data());
}

}  // namespace

#define VEXA_BIN_STR(name, T, O)                                                   \
  std::string name##_to_bin_str(T const& value) { return encode<T, O>(value); }    \
  T bin_str_to_##name(char const* bytes) { return decode<T, O>(bytes); }           \
  T bin_str_to_##name(std::string const& bytes) { return decode<T, O>(bytes); }

#define VEXA_BIN_STR_ORDER(O)                   \
  VEXA_BIN_STR(int16, short, O)                 \
  VEXA_BIN_STR(uint16, unsigned short, O)       \
  VEXA_BIN_STR(int32, int, O)                   \
  VEXA_BIN_STR(uint32, unsigned int, O)         \
  VEXA_BIN_STR(int64, long, O)                  \
  VEXA_BIN_STR(uint64, unsigned long, O)        \
  VEXA_BIN_STR(float, float, O)                 \
  VEXA_BIN_STR(double, double, O)

VEXA_BIN_STR_ORDER(order::processor)

// Both namespaces put the most significant byte first; see the header.
namespace little_endian {
VEXA_BIN_STR_ORDER(order::reversed)
}  // namespace little_endian

namespace big_endian {
VEXA_BIN_STR_ORDER(order::reversed)
}  // namespace big_endian

#undef VEXA_BIN_STR_ORDER
#undef VEXA_BIN_STR

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10
