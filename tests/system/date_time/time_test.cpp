#include "vexa/system/date_time/time.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "system/date_time/expect_out_of_range.hpp"

namespace dt = vexa::system::date_time;
using vexa_test::throws_out_of_range;

namespace {

std::string show(dt::time const& t) {
  char text[32];
  std::snprintf(text, sizeof text, "%02u:%02u:%02u.%03u", t.hour(), t.minute(), t.second(), t.millisecond());
  return text;
}

dt::time_duration ms(long count) { return dt::time_duration(0, 0, 0, count); }

TEST(SystemTime, ConstructorRunsTheSettersInOrder) {
  EXPECT_EQ(show(dt::time()), "00:00:00.000");
  EXPECT_EQ(show(dt::time(23, 59, 59, 999)), "23:59:59.999");
  EXPECT_TRUE(throws_out_of_range([] { dt::time(24, 0, 0, 0); }, "Hour value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::time(0, 60, 0, 0); }, "Minute value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::time(0, 0, 60, 0); }, "Second value out of valid range"));  // no leap second
  EXPECT_TRUE(throws_out_of_range([] { dt::time(0, 0, 0, 1000); }, "Millisecond value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::time(99, 99, 0, 0); }, "Hour value out of valid range"));  // first wins

  dt::time t(1, 2, 3, 4);
  EXPECT_TRUE(throws_out_of_range([&] { t.minute(4294967295u); }, "Minute value out of valid range"));
  EXPECT_EQ(show(t), "01:02:03.004");  // unchanged
  EXPECT_EQ(t.second(59), 59u);
  EXPECT_FALSE(dt::time::is_valid_hour(-1));
  EXPECT_TRUE(dt::time::is_valid_millisecond(999));
  EXPECT_FALSE(dt::time::is_valid_second(60));
}

struct fold_case {
  char const* name;
  dt::time from;
  dt::time_duration by;
  char const* expected;
};

TEST(SystemTime, SumsFoldIntoOneDay) {
  fold_case const cases[] = {
      {"one ms past midnight", dt::time(23, 59, 59, 999), ms(1), "00:00:00.000"},
      {"one ms before midnight", dt::time(0, 0, 0, 0), ms(-1), "23:59:59.999"},
      {"a plain hour", dt::time(8, 30, 0, 0), dt::time_duration(1, 0, 0, 0), "09:30:00.000"},
      {"many days on", dt::time(12, 0, 0, 0), dt::time_duration(24 * 10 + 3, 0, 0, 0), "15:00:00.000"},
      {"exactly one day back", dt::time(0, 0, 0, 0), dt::time_duration(-24, 0, 0, 0), "00:00:00.000"},
      {"minutes carry", dt::time(10, 59, 30, 0), dt::time_duration(0, 0, 45, 0), "11:00:15.000"},
  };
  for (fold_case const& c : cases) {
    dt::time t(c.from);
    t += c.by;
    EXPECT_EQ(show(t), c.expected) << c.name;
  }
  dt::time t(0, 0, 0, 0);
  t -= ms(1);
  EXPECT_EQ(show(t), "23:59:59.999");
  t.minus_assign(dt::time_duration(-1, 0, 0, 0));  // minus a negative span moves on
  EXPECT_EQ(show(t), "00:59:59.999");
}

TEST(SystemTime, MoreThanADayBelowMidnightThrows) {
  dt::time t(0, 0, 0, 0);
  EXPECT_TRUE(throws_out_of_range([&] { t -= dt::time_duration(25, 0, 0, 0); }, "Hour value out of valid range"));
  EXPECT_EQ(show(t), "00:00:00.000");  // the hour setter was the first step
  dt::time u(5, 6, 7, 8);
  EXPECT_TRUE(throws_out_of_range([&] { u += ms(-86400000L * 3); }, "Hour value out of valid range"));
  EXPECT_EQ(show(u), "05:06:07.008");
  // Counts at the 64-bit edges wrap instead of overflowing.
  dt::time v(0, 0, 0, 0);
  EXPECT_TRUE(throws_out_of_range([&] { v -= ms(-9223372036854775807L - 1); }, "Hour value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { v += ms(9223372036854775807L); },  // + 86400000 wraps negative
                                  "Hour value out of valid range"));
  EXPECT_EQ(show(v), "00:00:00.000");
}

TEST(SystemTime, ClockReadersGiveAValidTime) {
  dt::time const utc = dt::time::UTC_time();
  dt::time const local = dt::time::local_time();
  EXPECT_LT(utc.hour(), 24u);
  EXPECT_LT(local.millisecond(), 1000u);
}

}  // namespace
