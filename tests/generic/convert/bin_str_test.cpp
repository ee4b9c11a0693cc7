#include "vexa/generic/convert/bin_str.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace convert = vexa::generic::convert;

namespace {

std::string hex(std::string const& bytes) {
  std::string s;
  char const digit[] = "0123456789abcdef";
  for (unsigned char b : bytes) {
    s += digit[b >> 4];
    s += digit[b & 15];
    s += ' ';
  }
  return s;
}

// One codec: an encoder and its two decoders in one byte order.
template <typename T>
struct codec {
  std::string (*encode)(T const&);
  T (*from_pointer)(char const*);
  T (*from_string)(std::string const&);
};

#define CODEC(ns, name, T) \
  codec<T> { ns name##_to_bin_str, ns bin_str_to_##name, ns bin_str_to_##name }

// The three versions of one value type: processor order, then the two
// most-significant-first namespaces.
#define CODECS(name, T)                                                        \
  std::array<codec<T>, 3> {                                                    \
    CODEC(convert::, name, T), CODEC(convert::little_endian::, name, T),       \
        CODEC(convert::big_endian::, name, T)                                  \
  }

template <typename T>
T from_bits(std::uint64_t bits) {
  T value;
  std::memcpy(&value, &bits, sizeof(T));  // little-endian host: the low bytes
  return value;
}

template <typename T>
std::uint64_t to_bits(T value) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &value, sizeof(T));
  return bits;
}

// Encodes 0x0102...(width) in every version and checks the bytes; decodes
// them back, from a pointer, from an exact string, from a longer string; a
// string one byte short decodes as 0.
template <typename T>
void check(std::array<codec<T>, 3> const& versions, char const* name) {
  SCOPED_TRACE(name);
  std::string ascending;  // 01 02 03 ...
  for (unsigned int i = 1; i <= sizeof(T); ++i) ascending += static_cast<char>(i);
  std::string const descending(ascending.rbegin(), ascending.rend());
  std::uint64_t bits = 0;
  for (unsigned char b : ascending) bits = bits << 8 | b;
  T const value = from_bits<T>(bits);

  for (int v = 0; v < 3; ++v) {
    codec<T> const& c = versions[v];
    std::string const expected = v == 0 ? descending : ascending;
    std::string const bytes = c.encode(value);
    EXPECT_EQ(hex(bytes), hex(expected)) << "version " << v;
    EXPECT_EQ(to_bits(c.from_pointer(expected.data())), bits) << "version " << v;
    EXPECT_EQ(to_bits(c.from_string(expected)), bits) << "version " << v;
    EXPECT_EQ(to_bits(c.from_string(expected + "\x7F\x7F")), bits) << "version " << v;
    EXPECT_EQ(to_bits(c.from_string(expected.substr(1))), 0u) << "version " << v;
    EXPECT_EQ(to_bits(c.from_string(std::string())), 0u) << "version " << v;
  }

  // Round trips of random bit patterns (NaN payloads among them).
  std::mt19937_64 rng(sizeof(T));
  for (int round = 0; round < 2000; ++round) {
    std::uint64_t const pattern = sizeof(T) == 8 ? rng() : rng() & ((1ull << 8 * sizeof(T)) - 1);
    T const x = from_bits<T>(pattern);
    for (int v = 0; v < 3; ++v) {
      std::string const bytes = versions[v].encode(x);
      ASSERT_EQ(bytes.size(), sizeof(T));
      ASSERT_EQ(to_bits(versions[v].from_string(bytes)), pattern) << hex(bytes);
      ASSERT_EQ(to_bits(versions[v].from_pointer(bytes.data())), pattern) << hex(bytes);
    }
  }
}

TEST(BinStr, ByteOrdersAndRoundTrips) {
  check<short>(CODECS(int16, short), "int16");
  check<unsigned short>(CODECS(uint16, unsigned short), "uint16");
  check<int>(CODECS(int32, int), "int32");
  check<unsigned int>(CODECS(uint32, unsigned int), "uint32");
  check<long>(CODECS(int64, long), "int64");
  check<unsigned long>(CODECS(uint64, unsigned long), "uint64");
  check<float>(CODECS(float, float), "float");
  check<double>(CODECS(double, double), "double");
}

TEST(BinStr, KnownValues) {
  EXPECT_EQ(hex(convert::uint32_to_bin_str(0x01020304u)), "04 03 02 01 ");
  EXPECT_EQ(hex(convert::little_endian::uint32_to_bin_str(0x01020304u)), "01 02 03 04 ");
  EXPECT_EQ(hex(convert::big_endian::uint32_to_bin_str(0x01020304u)), "01 02 03 04 ");
  EXPECT_EQ(hex(convert::int16_to_bin_str(-2)), "fe ff ");
  EXPECT_EQ(hex(convert::double_to_bin_str(1.0)), "00 00 00 00 00 00 f0 3f ");
  EXPECT_EQ(hex(convert::big_endian::float_to_bin_str(-0.0f)), "80 00 00 00 ");
  EXPECT_EQ(convert::bin_str_to_int16(std::string("\xFE\xFF", 2)), -2);
  EXPECT_EQ(convert::little_endian::bin_str_to_int64(std::string(8, '\xFF')), -1);
  EXPECT_EQ(convert::bin_str_to_uint32(std::string("abc")), 0u);
  double const nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(to_bits(convert::bin_str_to_double(convert::double_to_bin_str(nan))), to_bits(nan));
}

}  // namespace
