// The text buffer: decimal items closed by 0x01, strings as length and
// bytes, and the readers' answers to short, malformed and crafted content.
#include "vexa/serialization/serialize_text_buf.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <limits>
#include <memory>
#include <random>
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
  struct row {
    char const* what;
    std::function<void(serialize_buffer&)> append;
    std::string expected;
  };
  std::vector<row> const rows = {
      {"int8", [](serialize_buffer& b) { b.append_int8(-128); }, items("-128|")},
      {"int16", [](serialize_buffer& b) { b.append_int16(-32768); }, items("-32768|")},
      {"int32", [](serialize_buffer& b) { b.append_int32(0); }, items("0|")},
      {"int64", [](serialize_buffer& b) { b.append_int64(std::numeric_limits<long>::min()); },
       items("-9223372036854775808|")},
      {"uint8", [](serialize_buffer& b) { b.append_uint8(255); }, items("255|")},
      {"uint16", [](serialize_buffer& b) { b.append_uint16(65535); }, items("65535|")},
      {"uint32", [](serialize_buffer& b) { b.append_uint32(4294967295u); }, items("4294967295|")},
      {"uint64", [](serialize_buffer& b) { b.append_uint64(~0UL); }, items("18446744073709551615|")},
      {"float, 3 digits", [](serialize_buffer& b) { b.append_float(2.5f, 3); }, items("2.5|")},
      {"double, exponent form", [](serialize_buffer& b) { b.append_double(123456.0, 3); }, items("1.23e+05|")},
      {"double, at most 17 digits", [](serialize_buffer& b) { b.append_double(0.1, 40); },
       items("0.10000000000000001|")},
      {"double, precision 0 as 1", [](serialize_buffer& b) { b.append_double(0.25, 0); }, items("0.2|")},
      {"negative zero", [](serialize_buffer& b) { b.append_double(-0.0, 6); }, items("-0|")},
      {"string ab", [](serialize_buffer& b) { b.append_string("ab"); }, items("2|ab|")},
      {"empty string", [](serialize_buffer& b) { b.append_string(""); }, items("0||")},
      {"string holding the separator", [](serialize_buffer& b) { b.append_string(items("a|")); },
       items("2|a||")},
      {"buffer", [](serialize_buffer& b) {
         serialize_text_buf inner;
         inner.append_int8(7);
         b.append_buffer(inner);
       },
       items("2|7||")},
  };
  for (row const& r : rows) {
    serialize_text_buf buf;
    r.append(buf);
    EXPECT_EQ(hex(buf.as_str()), hex(r.expected)) << r.what;
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

TEST(serialize_text_buf, every_type_round_trips) {
  serialize_text_buf buf;
  buf.append_int8(-128);
  buf.append_int16(-32768);
  buf.append_int32(std::numeric_limits<int>::min());
  buf.append_int64(std::numeric_limits<long>::min());
  buf.append_uint8(255);
  buf.append_uint16(65535);
  buf.append_uint32(4294967295u);
  buf.append_uint64(~0UL);
  buf.append_float(-1.5f, 6);
  buf.append_double(1.0 / 3.0, 17);
  buf.append_string(std::string("\0\x01\x02", 3));
  buf.append_string("");
  buf.append_double(-INFINITY, 3);
  buf.reset_read();
  EXPECT_EQ(buf.read_int8(), -128);
  EXPECT_EQ(buf.read_int16(), -32768);
  EXPECT_EQ(buf.read_int32(), std::numeric_limits<int>::min());
  EXPECT_EQ(buf.read_int64(), std::numeric_limits<long>::min());
  EXPECT_EQ(buf.read_uint8(), 255);
  EXPECT_EQ(buf.read_uint16(), 65535);
  EXPECT_EQ(buf.read_uint32(), 4294967295u);
  EXPECT_EQ(buf.read_uint64(), ~0UL);
  EXPECT_EQ(buf.read_float(), -1.5f);
  EXPECT_EQ(buf.read_double(), 1.0 / 3.0);
  EXPECT_EQ(hex(buf.read_string()), "00 01 02");
  EXPECT_EQ(buf.read_string(), "");
  EXPECT_EQ(buf.read_double(), -INFINITY);
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
TEST(serialize_text_buf, floating_text_follows_the_locale) {
  std::string const previous = std::setlocale(LC_NUMERIC, nullptr);
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") == nullptr && std::setlocale(LC_NUMERIC, "fr_FR.UTF-8") == nullptr)
    GTEST_SKIP() << "no locale with a decimal comma installed";
  serialize_text_buf buf;
  buf.append_double(2.5, 6);
  std::string const written = buf.as_str();
  double const back = buf.read_double();
  std::setlocale(LC_NUMERIC, previous.c_str());
  EXPECT_EQ(written, items("2,5|"));
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

TEST(serialize_text_buf, assign_nesting_create_and_clone) {
  serialize_text_buf buf(items("1|2|3|"));
  EXPECT_EQ(buf.read_int8(), 1);
  buf.assign(items("4|5|6|"));
  EXPECT_EQ(buf.read_int8(), 5) << "the read position is kept";
  buf.assign("7|8", 1);
  EXPECT_EQ(buf.as_str(), "7");
  buf.assign(nullptr, 1);
  EXPECT_EQ(buf.as_str(), "");

  serialize_text_buf inner;
  inner.append_uint16(9);
  serialize_text_buf outer;
  outer.append_buffer(inner);
  outer.append_buffer(outer);
  EXPECT_EQ(hex(outer.as_str()), hex(items("2|9||5|2|9|||")));
  std::unique_ptr<serialize_text_buf> first(outer.read_buffer());
  EXPECT_EQ(first->read_uint16(), 9);
  std::unique_ptr<serialize_text_buf> second(outer.read_buffer());
  EXPECT_EQ(hex(second->as_str()), hex(items("2|9||")));
  std::unique_ptr<serialize_buffer> fresh(static_cast<serialize_buffer const&>(outer).create());
  std::unique_ptr<serialize_buffer> copy(static_cast<serialize_buffer const&>(outer).clone());
  EXPECT_NE(dynamic_cast<serialize_text_buf*>(fresh.get()), nullptr);
  EXPECT_TRUE(fresh->at_end());
  EXPECT_EQ(copy->as_str(), outer.as_str());
  EXPECT_TRUE(copy->at_end()) << "a clone keeps the read position";
}

// Random bytes drawn mostly from the format's own alphabet, read with random
// types: every step moves the reader forward or raises, so the loop ends.
TEST(serialize_text_buf, random_content_is_read_to_its_end) {
  static char const alphabet[] = "\x01\x01\x01-0123456789x. ";
  std::mt19937 rng(5);
  for (int round = 0; round < 2000; ++round) {
    std::string content(rng() % 30, '\0');
    for (char& c : content) c = rng() % 16 == 0 ? static_cast<char>(rng()) : alphabet[rng() % (sizeof alphabet - 1)];
    serialize_text_buf buf(content);
    int steps = 0;
    try {
      while (!buf.at_end()) {
        ASSERT_LT(++steps, 40) << hex(content);
        switch (rng() % 5) {
          case 0: buf.read_int8(); break;
          case 1: buf.read_uint64(); break;
          case 2: buf.read_double(); break;
          case 3: buf.read_string(); break;
          default: delete buf.read_buffer(); break;
        }
      }
    } catch (std::out_of_range const&) {
      // a string announced where the content had already ended
    }
  }
}

}  // namespace
