// The text buffer: decimal items closed by 0x01, strings as length and
// bytes, and the readers' answers to short, malformed and crafted content.
#include "vexa/serialization/serialize_text_buf.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <limits>
#include <random>
#include <utility>
#include <stdexcept>
#include <string>
#include <vector>

#include "serialization/bytes.hpp"

namespace {

using vexa::serialization::serialize_buffer;
using vexa::serialization::serialize_text_buf;
using serialization_test::hex;

// Separators shown as '|' in expected texts.
std::string items(std::string text) {
  for (char& c : text)
    if (c == '|') c = '\x01';
  return text;
}

TEST(serialize_text_buf, each_append_writes_decimal_text_and_a_separator) {
  using append = std::function<void(serialize_buffer&)>;
  std::vector<std::pair<append, char const*>> const rows = {
      {[](serialize_buffer& b) { b.append_int8(-128); }, "-128|"},
      {[](serialize_buffer& b) { b.append_int64(std::numeric_limits<long>::min()); }, "-9223372036854775808|"},
      {[](serialize_buffer& b) { b.append_uint8(255); }, "255|"},
      {[](serialize_buffer& b) { b.append_uint64(~0UL); }, "18446744073709551615|"},
      {[](serialize_buffer& b) { b.append_float(2.5f, 3); }, "2.5|"},
      {[](serialize_buffer& b) { b.append_double(123456.0, 3); }, "1.23e+05|"},
      {[](serialize_buffer& b) { b.append_double(0.1, 40); }, "0.10000000000000001|"},  // at most 17 digits
      {[](serialize_buffer& b) { b.append_double(0.25, 0); }, "0.2|"},                  // precision 0 as 1
      {[](serialize_buffer& b) { b.append_double(-0.0, 6); }, "-0|"},
      {[](serialize_buffer& b) { b.append_string(""); }, "0||"},
      {[](serialize_buffer& b) { b.append_string(items("a|")); }, "2|a||"},
      {[](serialize_buffer& b) { b.append_buffer(serialize_text_buf(items("7|"))); }, "2|7||"},
  };
  for (auto const& [write, expected] : rows) {
    serialize_text_buf buf;
    write(buf);
    EXPECT_EQ(hex(buf.as_str()), hex(items(expected)));
  }
}

TEST(serialize_text_buf, mixed_items_have_the_documented_bytes_and_read_back) {
  serialize_text_buf buf;
  buf.append_int32(-5);
  buf.append_string("ab");
  buf.append_double(0.1, 3);
  EXPECT_EQ(hex(buf.as_str()), "2D 35 01 32 01 61 62 01 30 2E 31 01");
  EXPECT_EQ(buf.read_int32(), -5);
  EXPECT_EQ(buf.read_string(), "ab");
  EXPECT_EQ(buf.read_double(), 0.1);
  EXPECT_TRUE(buf.at_end());
  EXPECT_EQ(buf.read_int32(), 0);
  EXPECT_EQ(buf.read_string(), "");
  EXPECT_TRUE(buf.at_end());
}

// The floating writer must give exactly what the C library's gcvt gives.
TEST(serialize_text_buf, floating_text_matches_gcvt) {
  std::mt19937_64 rng(11);
  std::vector<double> values = {0.0, -0.0, 1e-310, 5e-324, 1e300, -1e22, 0.5, 9.9999999999999999e22,
                                INFINITY, -INFINITY, NAN, -NAN, 123456789.0, 1e-5, 1e-4, 1e16};
  for (int i = 0; i < 3000; ++i) {
    unsigned long const bits = rng();
    double d;
    std::memcpy(&d, &bits, sizeof d);
    values.push_back(i % 2 ? d : static_cast<double>(static_cast<long>(bits >> 34)) / 1000.0);
  }
  unsigned int const precisions[] = {0, 1, 2, 3, 6, 10, 15, 16, 17, 18, 30, 2147483648u, ~0u};
  for (double const v : values) {
    for (unsigned int const p : precisions) {
      char expected[128];
      gcvt(v, static_cast<int>(p), expected);
      serialize_text_buf buf;
      buf.append_double(v, p);
      ASSERT_EQ(buf.as_str(), std::string(expected) + '\x01') << "precision " << p;
    }
  }
}

// Both directions follow the locale's decimal point, as gcvt and strtod do.
// A German locale is compiled into a temporary folder for the test (skipped
// where localedef or its sources are missing).
TEST(serialize_text_buf, floating_text_follows_the_locale) {
  char folder[] = "/tmp/vexa_locale_XXXXXX";
  ASSERT_NE(mkdtemp(folder), nullptr);
  std::string const command = std::string("localedef -i de_DE -f UTF-8 ") + folder + "/de_DE.UTF-8 >/dev/null 2>&1";
  std::string const previous = std::setlocale(LC_NUMERIC, nullptr);
  bool const made = std::system(command.c_str()) == 0 && setenv("LOCPATH", folder, 1) == 0 &&
                    std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
  serialize_text_buf buf;
  buf.append_double(2.5, 6);
  double const back = buf.read_double();
  std::setlocale(LC_NUMERIC, previous.c_str());
  unsetenv("LOCPATH");
  std::filesystem::remove_all(folder);
  if (!made) GTEST_SKIP() << "no German locale could be made";
  EXPECT_EQ(hex(buf.as_str()), hex(items("2,5|")));
  EXPECT_EQ(back, 2.5);
}

TEST(serialize_text_buf, number_items_are_read_like_the_text_conversions) {
  struct row {
    char const* content;
    long expected;
  };
  row const rows[] = {
      {"0x1f|", 31},     {"010|", 8},   {"\\x10|", 16},  {"  +7|", 7},      {"12ab|", 12},
      {"ab|", 0},        {"|", 0},      {"99", 99},      {"08|", 0},        {"-0|", 0},
      {"99999999999999999999|", std::numeric_limits<long>::max()},
  };
  for (row const& r : rows) {
    serialize_text_buf buf(items(r.content));
    EXPECT_EQ(buf.read_int64(), r.expected) << r.content;
    EXPECT_TRUE(buf.at_end()) << r.content;
  }
  serialize_text_buf narrow(items("300|-300|-5|70000|"));
  EXPECT_EQ(narrow.read_int8(), 127) << "out of range saturates";
  EXPECT_EQ(narrow.read_int8(), -128);
  EXPECT_EQ(narrow.read_uint32(), 0u) << "a sign on an unsigned item gives 0";
  EXPECT_EQ(narrow.read_uint16(), 65535);

  serialize_text_buf floating(items("ab|0x10|1e400|  2.5|"));
  EXPECT_EQ(floating.read_double(), 0.0) << "unparsable reads as 0";
  EXPECT_EQ(floating.read_double(), 16.0);
  EXPECT_EQ(floating.read_double(), HUGE_VAL);
  EXPECT_EQ(floating.read_double(), 2.5);
}

TEST(serialize_text_buf, crafted_lengths_never_move_the_reader_backwards) {
  serialize_text_buf longer(items("9|abc"));
  EXPECT_EQ(longer.read_string(), "abc") << "takes what remains";
  EXPECT_TRUE(longer.at_end());

  serialize_text_buf negative(items("-8|abc|7|"));
  EXPECT_EQ(hex(negative.read_string()), hex(items("abc|7|"))) << "a negative length takes the rest";
  EXPECT_TRUE(negative.at_end());

  serialize_text_buf no_separator("5");
  EXPECT_THROW(no_separator.read_string(), std::out_of_range);
  EXPECT_TRUE(no_separator.at_end());
  serialize_text_buf zero_without_separator("0");
  EXPECT_EQ(zero_without_separator.read_string(), "");
  EXPECT_TRUE(zero_without_separator.at_end());

  serialize_text_buf block("5");
  EXPECT_THROW(delete block.read_buffer(), std::out_of_range);
}

}  // namespace
