#include "vexa/i18n/format_value.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace vexa;
using i18n::message_item;
using types::variant;

// The option text of a catalog argument: 0x01 name 0x01 value, ...
std::string options(std::vector<std::pair<char const*, char const*>> const& pairs) {
  std::string text;
  for (auto const& p : pairs) text += std::string("\x01") + p.first + "\x01" + p.second;
  return text;
}

struct format_case {
  message_item::type_t type;
  variant value;
  std::vector<std::pair<char const*, char const*>> options;
  char const* expected;
};

// Runs a table and reports every mismatch with its row, input and both texts.
void check(char const* table, std::vector<format_case> const& cases) {
  for (std::size_t row = 0; row < cases.size(); ++row) {
    format_case const& c = cases[row];
    std::string const actual = i18n::format_value(c.type, c.value, options(c.options));
    EXPECT_EQ(actual, c.expected) << table << " row " << row << ": type " << c.type << ", value \""
                                  << c.value.as_string() << "\"";
  }
}

TEST(format_value, integers_in_any_base_and_field) {
  check("integers", {
      {message_item::integer, variant(42), {}, "42"},
      {message_item::integer, variant(-42), {}, "-42"},
      {message_item::integer, variant(~0ul), {}, "18446744073709551615"},
      {message_item::integer, variant(-9223372036854775807L - 1), {}, "-9223372036854775808"},
      {message_item::integer, variant(true), {}, "1"},
      {message_item::integer, variant(2.9), {}, "2"},
      {message_item::integer, variant(-0.5), {}, "0"},
      {message_item::integer, variant(255), {{"base", "16"}}, "ff"},
      {message_item::integer, variant(-255), {{"base", "16"}}, "-ff"},
      {message_item::integer, variant(35), {{"base", "36"}}, "z"},
      {message_item::integer, variant(5), {{"base", "2"}, {"fieldsize", "08"}}, "00000101"},
      {message_item::integer, variant(5), {{"base", "37"}}, "5"},  // out of range: decimal
      {message_item::integer, variant(-42), {{"fieldsize", "6"}}, "   -42"},
      {message_item::integer, variant(-42), {{"fieldsize", "-6"}}, "-42   "},
      {message_item::integer, variant(-42), {{"fieldsize", "06"}}, "-00042"},
      {message_item::integer, variant(12345), {{"fieldsize", "3"}}, "12345"},
      {message_item::integer, variant(1), {{"fieldsize", "99999"}}, std::string(255, ' ').append("1").c_str()},
      {message_item::integer, variant(1234567), {{"spaced_dec", "Yes"}}, "1 234 567"},
      {message_item::integer, variant(-123456), {{"spaced_dec", "on"}}, "-123 456"},
      {message_item::integer, variant(123), {{"spaced_dec", "true"}}, "123"},
      {message_item::integer, variant("0x1F"), {}, "31"},
      {message_item::integer, variant(" -17 "), {}, "-17"},
      {message_item::integer, variant(L"8"), {}, "8"},
  });
}

TEST(format_value, reals_with_and_without_precision) {
  check("reals", {
      {message_item::real, variant(2.5), {}, "2.5"},
      {message_item::real, variant(1.0 / 3.0), {}, "0.3333333333"},
      {message_item::real, variant(1e20), {}, "1e+20"},
      {message_item::real, variant(-0.0), {}, "0"},
      {message_item::real, variant(2.5), {{"precision", "2"}}, "2.50"},
      {message_item::real, variant(2.5), {{"prec", "0"}}, "2"},
      {message_item::real, variant(-0.004), {{"precision", "2"}}, "0.00"},  // never "-0"
      {message_item::real, variant(-1.25), {{"precision", "1"}, {"fieldsize", "07"}}, "-0001.2"},
      {message_item::real, variant(1234567.891), {{"precision", "2"}, {"spaced_dec", "1"}}, "1 234 567.89"},
      {message_item::real, variant(7), {{"precision", "1"}}, "7.0"},
      {message_item::real, variant("2.25e1"), {}, "22.5"},
      {message_item::real, variant(".5"), {}, "0.5"},
      {message_item::real, variant(1234.5), {{"dec_point", ","}, {"spaced_dec", "yes"}}, "1 234,5"},
  });
}

TEST(format_value, memory_sizes_scale_by_1024) {
  check("memory", {
      {message_item::memory, variant(0), {}, "0 B"},
      {message_item::memory, variant(500), {}, "500 B"},
      {message_item::memory, variant(500), {{"precision", "2"}}, "500 B"},  // bytes are whole
      {message_item::memory, variant(1023), {}, "1023 B"},
      {message_item::memory, variant(1024), {}, "1 KB"},
      {message_item::memory, variant(1536), {}, "1.5 KB"},
      {message_item::memory, variant(1536), {{"precision", "2"}}, "1.50 KB"},
      {message_item::memory, variant(1536), {{"dec_point", ","}}, "1,5 KB"},
      {message_item::memory, variant(1048575), {}, "1 MB"},  // 1023.999 KB rounds up a unit
      {message_item::memory, variant(1572864), {}, "1.5 MB"},
      {message_item::memory, variant(1572864), {{"short_form", "yes"}}, "1.5M"},
      {message_item::memory, variant(100), {{"short_form", "yes"}}, "100B"},
      {message_item::memory, variant(~0ul), {}, "16 EB"},
      {message_item::memory, variant(-1536), {}, "-1.5 KB"},
      {message_item::memory, variant(2048), {{"base_unit", "K"}}, "2 MB"},
      {message_item::memory, variant(3), {{"base_unit", "tib"}}, "3 TB"},
      {message_item::memory, variant(1572864), {{"target_unit", "KB"}}, "1536 KB"},
      {message_item::memory, variant(1e30), {}, "827180.6 YB"},
      {message_item::memory, variant(5), {{"base_unit", "X"}}, "5 B"},  // unknown unit: ignored
      {message_item::memory, variant(1536), {{"fieldsize", "08"}}, "  1.5 KB"},  // text pads with spaces
      {message_item::memory_unit, variant(1536), {{"base_unit", "K"}, {"target_unit", "M"}}, "1.5"},
      {message_item::memory_unit, variant(3), {{"base_unit", "M"}, {"target_unit", "K"}}, "3072"},
      {message_item::memory_unit, variant(1536), {}, "1536"},
  });
}

TEST(format_value, metric_values_scale_by_1000_with_prefix_words) {
  check("metric", {
      {message_item::metric, variant(2300), {{"base_unit", "meter"}}, "2.3 kilometer"},
      {message_item::metric, variant(0.0042), {{"base_unit", "gram"}}, "4.2 milligram"},
      {message_item::metric, variant(0.5), {{"base_unit", "kilometer"}}, "500 meter"},
      {message_item::metric, variant(0), {{"base_unit", "meter"}}, "0 meter"},
      {message_item::metric, variant(999999), {{"base_unit", "watt"}}, "1 megawatt"},
      {message_item::metric, variant(1e18), {{"base_unit", "byte"}}, "1 exabyte"},
      {message_item::metric, variant(1e27), {{"base_unit", "byte"}}, "1000 yottabyte"},
      {message_item::metric, variant(1e-21), {{"base_unit", "meter"}}, "0 attometer"},
      {message_item::metric, variant(-2300), {{"base_unit", "meter"}, {"precision", "2"}}, "-2.30 kilometer"},
      {message_item::metric, variant(2300), {}, "2.3 kilo"},
      {message_item::metric, variant(2300), {{"base_unit", "Meter"}, {"dec_point", ","}}, "2,3 Kilometer"},
      {message_item::metric, variant(12), {}, "12"},
      {message_item::metric, variant(300), {{"base_unit", "meter"}, {"target_unit", "Kilometer"}}, "0.3 Kilometer"},
      {message_item::metric_unit, variant(2300), {{"base_unit", "meter"}, {"target_unit", "kilometer"}}, "2.3"},
      {message_item::metric_unit, variant(2), {{"base_unit", "gigawatt"}, {"target_unit", "megawatt"}}, "2000"},
  });
}

TEST(format_value, durations_from_milliseconds) {
  check("durations", {
      {message_item::duration, variant(0), {}, "0 sec"},
      {message_item::duration, variant(999), {}, "0 sec"},
      {message_item::duration, variant(-999), {}, "0 sec"},
      {message_item::duration, variant(90061000), {}, "1 dy 1 hr 1 min 1 sec"},
      {message_item::duration, variant(86400000 + 180000), {}, "1 dy 3 min"},
      {message_item::duration, variant(93784000), {{"dy", "no"}}, "26 hr 3 min 4 sec"},
      {message_item::duration, variant(3723000), {{"hr", "h"}, {"min", "m"}, {"sec", "no"}}, "1 h 2 m"},
      {message_item::duration, variant(59000), {{"sec", "off"}}, "0 min"},
      {message_item::duration, variant(60000), {{"hr", "yes"}}, "0 hr 1 min"},
      {message_item::duration, variant(1500), {{"precision", "1"}}, "1.5 sec"},
      {message_item::duration, variant(61005), {{"precision", "3"}}, "1 min 1.005 sec"},
      {message_item::duration, variant(1500), {{"precision", "2"}, {"dec_point", ","}}, "1,50 sec"},
      {message_item::duration, variant(-61000), {}, "-1 min 1 sec"},
      {message_item::duration, variant(7200000),
       {{"dy", "no"}, {"hr", "no"}, {"min", "no"}, {"sec", "no"}}, "2 hr"},  // all off: all shown
      {message_item::duration, variant("3600000"), {{"hr", "Stunde"}}, "1 Stunde"},
  });
}

TEST(format_value, exactly_minus_zero_where_it_cannot_format) {
  check("failures", {
      {message_item::integer, variant(), {}, "-0"},
      {message_item::integer, variant("twelve"), {}, "-0"},
      {message_item::integer, variant("12abc"), {}, "-0"},
      {message_item::integer, variant(""), {}, "-0"},
      {message_item::integer, variant("-"), {}, "-0"},
      {message_item::integer, variant("nan"), {}, "-0"},
      {message_item::integer, variant("0x"), {}, "-0"},
      {message_item::integer, variant(1e30), {}, "-0"},
      {message_item::real, variant(__builtin_nan("")), {}, "-0"},
      {message_item::memory, variant(__builtin_inf()), {}, "-0"},
      {message_item::real, variant("1e999"), {}, "-0"},
      {message_item::number, variant(1), {}, "-0"},
      {message_item::time, variant(1), {}, "-0"},
      {message_item::date, variant(1), {}, "-0"},
      {message_item::string, variant(1), {}, "-0"},
      {message_item::text, variant(1), {}, "-0"},
      {static_cast<message_item::type_t>(99), variant(1), {}, "-0"},
      {message_item::integer, variant(), {{"default", "n/a"}}, "n/a"},
      {message_item::integer, variant("x"), {{"default", "none"}, {"fieldsize", "06"}}, "  none"},
  });
}

TEST(format_value, option_text_edge_forms_and_locale) {
  // Options without a value, stray separators and unknown names do no harm.
  EXPECT_EQ(i18n::format_value(message_item::integer, variant(9), "\x01" "base"), "9");
  EXPECT_EQ(i18n::format_value(message_item::integer, variant(9), "\x01\x01\x01" "base\x01" "2\x01"), "1001");
  EXPECT_EQ(i18n::format_value(message_item::integer, variant(9), "\x01" "colour\x01" "red"), "9");
  EXPECT_EQ(i18n::format_value(message_item::real, variant(2.5), "\x01" "precision\x01" "many"), "2.5");
  // The decimal point does not follow the C library's locale.
  char const* const previous = std::setlocale(LC_NUMERIC, nullptr);
  std::string const saved = previous ? previous : "C";
  if (std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr) {
    EXPECT_EQ(i18n::format_value(message_item::real, variant(2.5), ""), "2.5");
    EXPECT_EQ(i18n::format_value(message_item::memory, variant(1536), ""), "1.5 KB");
    std::setlocale(LC_NUMERIC, saved.c_str());
  }
}

}  // namespace
