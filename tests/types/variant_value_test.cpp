// The conversion table of the value objects: numbers from every held type,
// text from numbers, truth of text, and the defined out-of-range casts.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/types/variant.hpp"

namespace {

using namespace vexa;
using types::variant;

TEST(variant_numbers, every_integer_slot_from_each_kind_of_held_value) {
  unsigned short const text16[] = {'-', '2', 0};
  struct row {
    char const* label; variant v; long as_long; int as_int; signed char as_int8;
    unsigned char as_uint8; unsigned short as_uint16; unsigned int as_uint32; unsigned long as_uint64;
  };
  std::vector<row> const rows = {
      {"true", variant(true), 1, 1, 1, 1, 1, 1, 1},
      {"int 300", variant(300), 300, 300, 44, 44, 300, 300, 300},
      {"uchar 200", variant(static_cast<unsigned char>(200)), 200, 200, -56, 200, 200, 200, 200},
      {"long 2^32+5", variant(4294967301L), 4294967301L, 5, 5, 5, 5, 5, 4294967301UL},
      {"double 3.99", variant(3.99), 3, 3, 3, 3, 3, 3, 3},
      {"double -3.99", variant(-3.99), -3, -3, -3, 253, 65533, 4294967293u, 18446744073709551613UL},
      {"float -1", variant(-1.0f), -1, -1, -1, 255, 65535, 4294967295u, 18446744073709551615UL},
      {"double 2^32+5", variant(4294967301.0), 4294967301L, 5, 5, 5, 5, 5, 4294967301UL},
      {"double 2^64+2^12", variant(18446744073709555712.0), 4096, 4096, 0, 0, 4096, 4096, 4096},
      {"double 1.5*2^63", variant(13835058055282163712.0), -4611686018427387904L, 0, 0, 0, 0, 0,
       13835058055282163712UL},
      {"double NaN", variant(std::nan("")), 0, 0, 0, 0, 0, 0, 0},
      {"long double -inf", variant(-std::numeric_limits<long double>::infinity()), 0, 0, 0, 0, 0, 0, 0},
      {"text 0x1f", variant("0x1f"), 31, 31, 31, 31, 31, 31, 31},
      {"text 300", variant(std::string("300")), 300, 300, 127, 255, 300, 300, 300},  // text saturates
      {"utf16 -2", variant(text16), -2, -2, -2, 0, 0, 0, 0},
      {"utf32 017", variant(L" 017"), 15, 15, 15, 15, 15, 15, 15},
      {"wstring abc", variant(std::wstring(L"abc")), 0, 0, 0, 0, 0, 0, 0},
      {"nil", variant(), 0, 0, 0, 0, 0, 0, 0},
  };
  for (row const& r : rows) {
    SCOPED_TRACE(r.label);
    EXPECT_EQ(r.v.as_long(), r.as_long);
    EXPECT_EQ(r.v.as_int64(), r.as_long);
    EXPECT_EQ(r.v.as_int(), r.as_int);
    EXPECT_EQ(r.v.as_int32(), r.as_int);
    EXPECT_EQ(r.v.as_int8(), r.as_int8);
    EXPECT_EQ(r.v.as_uint8(), r.as_uint8);
    EXPECT_EQ(r.v.as_uint16(), r.as_uint16);
    EXPECT_EQ(r.v.as_uint32(), r.as_uint32);
    EXPECT_EQ(r.v.as_uint64(), r.as_uint64);
  }
}

TEST(variant_numbers, floating_slots) {
  EXPECT_EQ(variant(true).as_double() + variant(-7).as_float() + variant().as_long_double(), -6.0L);
  EXPECT_EQ(variant("2.5e3xyz").as_double(), 2500.0);  // strtod: trailing text ignored, bad text is 0
  EXPECT_EQ(variant("not a number").as_long_double(), 0.0L);
  EXPECT_EQ(variant(L"-0.25").as_float(), -0.25f);
  EXPECT_TRUE(std::isinf(variant(1e300).as_float()));
}

TEST(variant_text, numbers_as_text_in_every_encoding) {
  struct row { variant v; char const* expected; };
  std::vector<row> const rows = {
      {variant(true), "1"}, {variant(false), "0"}, {variant(static_cast<signed char>(-128)), "-128"},
      {variant(std::numeric_limits<int>::min()), "-2147483648"},
      {variant(std::numeric_limits<long>::min()), "-9223372036854775808"},
      {variant(std::numeric_limits<unsigned int>::max()), "4294967295"},
      {variant(std::numeric_limits<unsigned long>::max()), "18446744073709551615"},
      {variant(1.0 / 3.0), "0.3333333333"},  // ten significant digits
      {variant(0.1f), "0.1000000015"},       {variant(1e20), "1e+20"},  {variant(2.0), "2"},
      {variant(1.0L / 3.0L), "0.333333"},    // long double: six, on purpose
  };
  for (row const& r : rows) {
    std::string const expected = r.expected;
    EXPECT_EQ(r.v.as_string(), expected);
    EXPECT_EQ(r.v.as_utf8(), expected);
    EXPECT_EQ(r.v.as_ustring(), expected);
    EXPECT_EQ(r.v.as_wstring(), std::wstring(expected.begin(), expected.end()));
    EXPECT_EQ(r.v.as_utf32(), strings::ustring32(std::wstring(expected.begin(), expected.end())));
    EXPECT_EQ(r.v.as_utf16(), strings::ustring16(expected.begin(), expected.end())) << expected;
  }
}

TEST(variant_text, text_converts_between_encodings) {
  unsigned short const text16[] = {'h', 0xE9, 0};
  for (variant const& v : {variant("h\xC3\xA9"), variant(std::string("h\xC3\xA9")), variant(text16),
                           variant(L"h\u00E9"), variant(std::wstring(L"h\u00E9"))}) {
    SCOPED_TRACE(v.type().name());
    EXPECT_EQ(v.as_string(), "h\xC3\xA9");
    EXPECT_EQ(v.as_wstring(), L"h\u00E9");
    EXPECT_EQ(v.as_utf32(), strings::ustring32(L"h\u00E9"));
    EXPECT_EQ(v.as_utf16(), strings::ustring16(text16));
  }
}

TEST(variant_truth, numbers_and_wide_text) {
  // Wide text never raises: a word that is no number is simply false.
  for (variant const& v : {variant(std::nan("")), variant(-1), variant(L"True"), variant(std::wstring(L"2"))})
    EXPECT_TRUE(v.as_bool()) << v;
  for (variant const& v : {variant(0.0), variant(0UL), variant(L"false"), variant(std::wstring(L"nope"))})
    EXPECT_FALSE(v.as_bool()) << v;
}

TEST(variant_truth, narrow_and_utf16_text_words_numbers_and_refusals) {
  struct row { char const* text; int expected; };  // expected: 1 true, 0 false, -1 raises
  std::vector<row> const rows = {
      {"Yes", 1},    {"ON", 1},     {"TRUE", 1},   {"tRuE", 1},  {"12", 1},   {"0", 0},
      {" -7", 1},    {"0x10", 1},   {"\\x0", 0},   {"", 0},      {"  \t", 0}, {"+", 0},
      {"false", -1}, {"no", -1},    {"off", -1},   {"yes!", -1}, {" x1", -1}, {"- 1", -1},
  };
  for (row const& r : rows) {
    strings::ustring8 narrow(r.text);
    strings::ustring16 wide(narrow.begin(), narrow.end());
    for (variant const& v : {variant(narrow), variant(std::string(narrow)), variant(wide)}) {
      SCOPED_TRACE(std::string("text \"") + r.text + "\" held as " + v.type().name());
      if (r.expected < 0) {
        try {
          v.as_bool();
          ADD_FAILURE() << "no exception";
        } catch (exceptions::invalid_argument_value const& e) {
          EXPECT_STREQ(e.get_message(), "Text is not a number");
          EXPECT_STREQ(e.get_state().file, "generic/convert/str_to_x");
          EXPECT_STREQ(e.get_state().function, "strtointx");
        }
      } else {
        EXPECT_EQ(v.as_bool(), r.expected == 1);
      }
    }
  }
}

}  // namespace
