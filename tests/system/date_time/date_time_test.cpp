#include "vexa/system/date_time/date_time.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <ctime>
#include <string>

#include "system/date_time/expect_out_of_range.hpp"

namespace dt = vexa::system::date_time;
using vexa_test::throws_out_of_range;

namespace {

std::string show(dt::date_time_t const& v) {
  char text[64];
  std::snprintf(text, sizeof text, "%u-%u-%u %02u:%02u:%02u.%03u", v.year(), v.month(), v.day(), v.hour(),
                v.minute(), v.second(), v.millisecond());
  return text;
}

dt::date_time_t const may10(dt::date(10, 5, 2024), dt::time(8, 0, 0, 0));

TEST(SystemDateTime, LongTimeDurationsGoThroughTheDaySetterDateDurationsNowhere) {
  struct {
    char const* name;
    int hours;  // added; subtracted when negative
    char const* expected;
  } const cases[] = {
      {"23 hours: no day step, the time wraps alone", 23, "2024-5-10 07:00:00.000"},
      {"25 hours: day set to 1, then one day on", 25, "2024-5-2 09:00:00.000"},
      {"30 hours: day set to 6, then six days on", 30, "2024-5-12 14:00:00.000"},
      {"minus 25 hours: day set to 1, one day back", -25, "2024-4-30 07:00:00.000"},
      {"minus 9 hours", -9, "2024-5-10 23:00:00.000"},
  };
  for (auto const& c : cases) {
    dt::date_time_t v(may10);
    if (c.hours > 0) {
      v += dt::time_duration(c.hours, 0, 0, 0);
    } else {
      v -= dt::time_duration(-c.hours, 0, 0, 0);
    }
    EXPECT_EQ(show(v), c.expected) << c.name;
  }
  dt::date_time_t v(may10);
  v += dt::date_duration(5);
  v -= dt::date_duration(3);
  EXPECT_EQ(show(v), "2024-5-10 08:00:00.000");
  v.date() += dt::date_duration(5);  // the date part moves itself
  EXPECT_EQ(show(v), "2024-5-15 08:00:00.000");
}

TEST(SystemDateTime, WholeDaysAndNegativeRemaindersThrow) {
  dt::date_time_t v(may10);
  EXPECT_TRUE(throws_out_of_range([&] { v += dt::time_duration(48, 0, 0, 0); }, "day value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { v += dt::time_duration(-25, 0, 0, 0); }, "day value out of valid range"));
  EXPECT_EQ(show(v), "2024-5-10 08:00:00.000");
  EXPECT_ANY_THROW(v += dt::time_duration(0, 0, 0, -9223372036854775807L - 1));  // the cut to 32 bits wraps
  // The date step comes before the time step, and stays when the time refuses.
  dt::date_time_t x(dt::date(10, 5, 2024), dt::time());
  EXPECT_TRUE(throws_out_of_range([&] { x -= dt::time_duration(49, 0, 0, 0); }, "Hour value out of valid range"));
  EXPECT_EQ(show(x), "2024-4-30 00:00:00.000");
}

TEST(SystemDateTime, PartsAssignmentsAndForwarders) {
  dt::date_time_t v(may10);
  v = dt::date(31, 1, 2000);
  v = dt::time(1, 2, 3, 4);
  v.month(2);  // the stored day stays 31
  EXPECT_TRUE(v.is_day_constrained() && v.is_leap_year());
  v.assign(v);
  EXPECT_EQ(show(v), "2000-2-29 01:02:03.004");
  EXPECT_TRUE(throws_out_of_range([&] { v.hour(24); }, "Hour value out of valid range"));
  EXPECT_EQ(show(dt::date_time_t()), "0-0-0 00:00:00.000");
}

TEST(SystemDateTime, ClockReadersTakeBothPartsFromOneInstant) {
  for (int attempt = 0; attempt < 5; ++attempt) {
    std::time_t const before = ::time(nullptr);
    dt::date_time_t const utc = dt::date_time_t::UTC_date_time();
    if (::time(nullptr) != before) continue;  // a second boundary fell in between: read again
    std::tm const p = *std::gmtime(&before);
    char expected[64];
    std::snprintf(expected, sizeof expected, "%d-%d-%d %02d:%02d:%02d", p.tm_year + 1900, p.tm_mon + 1, p.tm_mday,
                  p.tm_hour, p.tm_min, p.tm_sec);
    EXPECT_EQ(show(utc).substr(0, show(utc).size() - 4), expected);
    break;
  }
  EXPECT_TRUE(dt::date::is_valid_month(dt::date_time_t::local_date_time().month()));
}

}  // namespace
