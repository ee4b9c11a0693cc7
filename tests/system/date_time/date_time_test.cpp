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

dt::date_time_t at(unsigned day, unsigned month, unsigned year, unsigned hour) {
  return dt::date_time_t(dt::date(day, month, year), dt::time(hour, 0, 0, 0));
}

TEST(SystemDateTime, DateDurationsDoNothing) {
  dt::date_time_t v = at(10, 5, 2024, 8);
  v += dt::date_duration(5);
  v -= dt::date_duration(3);
  v.plus_assign(dt::date_duration(-1));
  EXPECT_EQ(show(v), "2024-5-10 08:00:00.000");
  v.date() += dt::date_duration(5);  // the date part moves itself
  EXPECT_EQ(show(v), "2024-5-15 08:00:00.000");
}

struct shift_case {
  char const* name;
  bool plus;
  dt::time_duration by;
  char const* expected;  // from 10 May 2024 08:00
};

TEST(SystemDateTime, LongTimeDurationsGoThroughTheDaySetter) {
  shift_case const cases[] = {
      {"23 hours: no day step, the time wraps alone", true, dt::time_duration(23, 0, 0, 0), "2024-5-10 07:00:00.000"},
      {"25 hours: day set to 1, then one day on", true, dt::time_duration(25, 0, 0, 0), "2024-5-2 09:00:00.000"},
      {"30 hours: day set to 6, then six days on", true, dt::time_duration(30, 0, 0, 0), "2024-5-12 14:00:00.000"},
      {"minus 25 hours: day set to 1, one day back", false, dt::time_duration(25, 0, 0, 0), "2024-4-30 07:00:00.000"},
      {"one hour", true, dt::time_duration(1, 0, 0, 0), "2024-5-10 09:00:00.000"},
      {"minus nine hours", false, dt::time_duration(9, 0, 0, 0), "2024-5-10 23:00:00.000"},
  };
  for (shift_case const& c : cases) {
    dt::date_time_t v = at(10, 5, 2024, 8);
    if (c.plus) {
      v += c.by;
    } else {
      v -= c.by;
    }
    EXPECT_EQ(show(v), c.expected) << c.name;
  }
}

TEST(SystemDateTime, WholeDaysAndNegativeRemaindersThrow) {
  dt::date_time_t v = at(10, 5, 2024, 8);
  EXPECT_TRUE(throws_out_of_range([&] { v += dt::time_duration(48, 0, 0, 0); }, "day value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { v += dt::time_duration(-25, 0, 0, 0); }, "day value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { v.minus_assign(dt::time_duration(24, 0, 0, 0)); },
                                  "day value out of valid range"));
  EXPECT_EQ(show(v), "2024-5-10 08:00:00.000");
  // Far beyond the 32-bit hour range the cut wraps, without undefined behaviour.
  dt::date_time_t w = at(10, 5, 2024, 8);
  EXPECT_ANY_THROW(w += dt::time_duration(0, 0, 0, -9223372036854775807L - 1));
  // The date step comes before the time step: a later failure keeps it.
  dt::date_time_t x = at(10, 5, 2024, 0);
  EXPECT_TRUE(throws_out_of_range([&] { x -= dt::time_duration(49, 0, 0, 0); }, "Hour value out of valid range"));
  EXPECT_EQ(x.day(), 30u);  // day set to 1, one day back; the time refused -49 hours
  EXPECT_EQ(x.month(), 4u);
}

TEST(SystemDateTime, PartsAssignmentsAndForwarders) {
  dt::date_time_t v = at(10, 5, 2024, 8);
  v = dt::date(31, 1, 2000);
  EXPECT_EQ(show(v), "2000-1-31 08:00:00.000");
  v = dt::time(1, 2, 3, 4);
  EXPECT_EQ(show(v), "2000-1-31 01:02:03.004");
  v.month(2);  // the stored day stays 31
  EXPECT_EQ(v.day(), 29u);
  EXPECT_TRUE(v.is_day_constrained());
  EXPECT_TRUE(v.is_leap_year());
  v = v;  // self-assignment
  v.assign(v);
  EXPECT_EQ(show(v), "2000-2-29 01:02:03.004");
  dt::date_time_t const copy(v);
  v.assign(dt::date(1, 1, 1999), dt::time(23, 0, 0, 0));
  EXPECT_EQ(show(v), "1999-1-1 23:00:00.000");
  EXPECT_EQ(show(copy), "2000-2-29 01:02:03.004");
  EXPECT_TRUE(throws_out_of_range([&] { v.hour(24); }, "Hour value out of valid range"));
  EXPECT_EQ(v.time().hour(), 23u);
  EXPECT_EQ(show(dt::date_time_t()), "0-0-0 00:00:00.000");
}

TEST(SystemDateTime, ClockReadersTakeBothPartsFromOneInstant) {
  for (int attempt = 0; attempt < 5; ++attempt) {
    std::time_t const before = ::time(nullptr);
    dt::date_time_t const utc = dt::date_time_t::UTC_date_time();
    std::time_t const after = ::time(nullptr);
    if (before != after) continue;  // a second boundary fell in between: read again
    std::tm const parts = *std::gmtime(&before);
    EXPECT_EQ(utc.year(), static_cast<unsigned>(parts.tm_year + 1900));
    EXPECT_EQ(utc.month(), static_cast<unsigned>(parts.tm_mon + 1));
    EXPECT_EQ(utc.day(), static_cast<unsigned>(parts.tm_mday));
    EXPECT_EQ(utc.hour(), static_cast<unsigned>(parts.tm_hour));
    EXPECT_EQ(utc.minute(), static_cast<unsigned>(parts.tm_min));
    EXPECT_EQ(utc.second(), static_cast<unsigned>(parts.tm_sec));
    break;
  }
  dt::date_time_t const local = dt::date_time_t::local_date_time();
  EXPECT_TRUE(dt::date::is_valid_month(local.month()));
}

}  // namespace
