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

TEST(SystemTime, SettersCheckTheirRangesInOrder) {
  EXPECT_TRUE(throws_out_of_range([] { dt::time(24, 0, 0, 0); }, "Hour value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::time(0, 60, 0, 0); }, "Minute value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::time(0, 0, 60, 0); }, "Second value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::time(0, 0, 0, 1000); }, "Millisecond value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::time(99, 99, 0, 0); }, "Hour value out of valid range"));
  dt::time t(1, 2, 3, 4);
  EXPECT_TRUE(throws_out_of_range([&] { t.minute(4294967295u); }, "Minute value out of valid range"));
  EXPECT_EQ(show(t), "01:02:03.004");  // unchanged
  EXPECT_FALSE(dt::time::is_valid_hour(-1));
  EXPECT_LT(dt::time::UTC_time().hour(), 24u);
  EXPECT_LT(dt::time::local_time().millisecond(), 1000u);
}

TEST(SystemTime, SumsFoldIntoOneDay) {
  struct {
    char const* name;
    dt::time from;
    dt::time_duration by;
    char const* expected;
  } const cases[] = {
      {"one ms past midnight", dt::time(23, 59, 59, 999), ms(1), "00:00:00.000"},
      {"one ms before midnight", dt::time(0, 0, 0, 0), ms(-1), "23:59:59.999"},
      {"many days on", dt::time(12, 0, 0, 0), dt::time_duration(243, 0, 0, 0), "15:00:00.000"},
      {"exactly one day back", dt::time(0, 0, 0, 0), dt::time_duration(-24, 0, 0, 0), "00:00:00.000"},
      {"carries", dt::time(10, 59, 30, 0), dt::time_duration(0, 0, 45, 0), "11:00:15.000"},
  };
  for (auto const& c : cases) {
    dt::time t(c.from);
    t += c.by;
    EXPECT_EQ(show(t), c.expected) << c.name;
  }
  dt::time t(0, 0, 0, 0);
  t -= ms(1);
  t.minus_assign(dt::time_duration(-1, 0, 0, 0));  // minus a negative span moves on
  EXPECT_EQ(show(t), "00:59:59.999");
}

TEST(SystemTime, MoreThanADayBelowMidnightThrows) {
  dt::time t;
  EXPECT_TRUE(throws_out_of_range([&] { t -= dt::time_duration(25, 0, 0, 0); }, "Hour value out of valid range"));
  EXPECT_EQ(show(t), "00:00:00.000");
  // Less than an hour further down, the hour part is 0 and the minute setter
  // is the first to refuse; the hour set before the throw stays.
  t = dt::time(5, 6, 7, 8);
  EXPECT_TRUE(throws_out_of_range([&] { t -= dt::time_duration(30, 0, 0, 0); }, "Minute value out of valid range"));
  EXPECT_EQ(show(t), "00:06:07.008");
  // Closer still, the second or the millisecond setter is the one.
  t = dt::time();
  EXPECT_TRUE(throws_out_of_range([&] { t -= dt::time_duration(24, 0, 1, 0); }, "Second value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { t -= dt::time_duration(24, 0, 0, 1); }, "Millisecond value out of valid range"));
  EXPECT_EQ(show(t), "00:00:00.000");
  // Counts at the 64-bit edges wrap instead of overflowing.
  EXPECT_TRUE(throws_out_of_range([&] { t -= ms(-9223372036854775807L - 1); }, "Hour value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { t += ms(9223372036854775807L); }, "Hour value out of valid range"));
}

}  // namespace
