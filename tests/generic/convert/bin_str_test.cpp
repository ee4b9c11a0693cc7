#include "vexa/generic/convert/bin_str.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <tuple>

namespace convert = vexa::generic::convert;

namespace {

std::string hex(std::string const& bytes) {
  std::string s;
  for (unsigned char b : bytes) s += {"0123456789abcdef"[b >> 4], "0123456789abcdef"[b & 15], ' '};
  return s;
}

// A value's bit pattern in the low bytes of a 64-bit integer.
template <typename T>
std::uint64_t bits_of(T value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof(T));
  return bits;
}

// One byte order of one type: the encoder and both decoders.
template <typename T>
using codec = std::tuple<std::string (*)(T const&), T (*)(char const*), T (*)(std::string const&)>;

// The value 0x0102...(width) gives descending bytes in processor order and
// ascending bytes in both named orders; each decoder reads back its own
// encoder's bytes (a longer string too); a string one byte short gives 0.
template <typename T>
void check(codec<T> const (&versions)[3], char const* name) {
  SCOPED_TRACE(name);
  std::string ascending;
  std::uint64_t bits = 0;
  for (unsigned int i = 1; i <= sizeof(T); ++i) {
    ascending += static_cast<char>(i);
    bits = bits << 8 | i;
  }
  std::mt19937_64 rng(sizeof(T));
  for (int v = 0; v < 3; ++v) {
    auto const [encode, from_pointer, from_string] = versions[v];
    std::string const expected =
        v == 0 ? std::string(ascending.rbegin(), ascending.rend()) : ascending;
    T value;
    std::memcpy(&value, &bits, sizeof(T));
    EXPECT_EQ(hex(encode(value)), hex(expected)) << "version " << v;
    EXPECT_EQ(bits_of(from_pointer(expected.data())), bits) << "version " << v;
    EXPECT_EQ(bits_of(from_string(expected + "\x7F")), bits) << "version " << v;
    EXPECT_EQ(bits_of(from_string(expected.substr(1))), 0u) << "version " << v;
    for (int round = 0; round < 2000; ++round) {  // random bit patterns, NaN payloads among them
      std::uint64_t const pattern = rng() >> (64 - 8 * sizeof(T));
      std::memcpy(&value, &pattern, sizeof(T));
      std::string const bytes = encode(value);
      ASSERT_EQ(bits_of(from_string(bytes)), pattern) << hex(bytes);
      ASSERT_EQ(bits_of(from_pointer(bytes.data())), pattern) << hex(bytes);
    }
  }
}

#define CODEC(ns, name) \
  { ns name##_to_bin_str, ns bin_str_to_##name, ns bin_str_to_##name }
#define CHECK(name, T)                                                     \
  check<T>({CODEC(convert::, name), CODEC(convert::little_endian::, name), \
            CODEC(convert::big_endian::, name)},                           \
           #name)

TEST(BinStr, ByteOrdersAndRoundTrips) {
  CHECK(int16, short);
  CHECK(uint16, unsigned short);
  CHECK(int32, int);
  CHECK(uint32, unsigned int);
  CHECK(int64, long);
  CHECK(uint64, unsigned long);
  CHECK(float, float);
  CHECK(double, double);
}

}  // namespace
