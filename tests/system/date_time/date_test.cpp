#include "vexa/system/date_time/date.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "system/date_time/expect_out_of_range.hpp"

namespace dt = vexa::system::date_time;
using vexa_test::throws_out_of_range;

namespace {

std::string show(dt::date const& d) {
  return std::to_string(d.year()) + "-" + std::to_string(d.month()) + "-" + std::to_string(d.day());
}

// ---- the proleptic Gregorian calendar, counted one day at a time -------------

bool leap(unsigned y) { return (y % 4 == 0 && y % 100 != 0) || y % 400 == 0; }

unsigned month_length(unsigned y, unsigned m) {
  static unsigned const lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return m == 2 && leap(y) ? 29 : lengths[m - 1];
}

// A second, closed-form count (days since 1 January 1970) for far years.
std::int64_t days_from_civil(std::int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  std::int64_t const era = (y >= 0 ? y : y - 399) / 400;
  unsigned const yoe = static_cast<unsigned>(y - era * 400);
  unsigned const doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  unsigned const doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

TEST(SystemDate, DayNumbersMatchADayByDayCountOfTheCalendar) {
  // From 1 March of year 0 (day 1) to the end of year 2800, every day.
  unsigned y = 0, m = 3, d = 1;
  unsigned mismatches = 0;
  for (std::uint32_t n = 1; y <= 2800; ++n) {
    dt::date const date(d, m, y);
    if (date.pJulian_day_number() != n && ++mismatches < 5)
      ADD_FAILURE() << y << "-" << m << "-" << d << " numbers as " << date.pJulian_day_number()
                    << ", counted " << n;
    // Back from the number: the same date, except that 29 February is 1 March.
    dt::date back;
    back.pJulian_day_number(n);
    bool const feb29 = m == 2 && d == 29;
    unsigned const want_m = feb29 ? 3 : m, want_d = feb29 ? 1 : d;
    if ((back.year() != y || back.month() != want_m || back.day() != want_d) && ++mismatches < 5)
      ADD_FAILURE() << "day " << n << " gives " << show(back) << ", counted " << y << "-" << m << "-" << d;
    if (++d > month_length(y, m)) {
      d = 1;
      if (++m > 12) {
        m = 1;
        ++y;
      }
    }
  }
  EXPECT_EQ(mismatches, 0u);
}

TEST(SystemDate, FarYearsAgreeWithAClosedFormCount) {
  dt::date const origin(1, 3, 0);
  std::int64_t const origin_days = days_from_civil(0, 3, 1);
  // Years up to where 365 * year still fits 32 bits, in steps of odd sizes.
  for (std::uint64_t y = 2801; y < 11000000; y += 7919 + (y % 13)) {
    for (unsigned m : {1u, 2u, 3u, 7u, 12u}) {
      dt::date const date(m == 2 ? 28 : 31, m, static_cast<unsigned>(y));
      std::int64_t const expected = days_from_civil(static_cast<std::int64_t>(y), m, date.day()) - origin_days;
      ASSERT_EQ(static_cast<std::int64_t>(date.pJulian_day_number() - origin.pJulian_day_number()), expected)
          << show(date);
    }
  }
}

TEST(SystemDate, StoredDayAndConstrainedDay) {
  dt::date d(31, 2, 2023);
  EXPECT_EQ(d.day(), 28u);
  EXPECT_EQ(d.get_days(), 28u);
  EXPECT_TRUE(d.is_day_constrained());
  d.month(3);
  EXPECT_EQ(d.day(), 31u);
  EXPECT_FALSE(d.is_day_constrained());
  // The stored day numbers the date: 31 February 2023 is 3 March 2023.
  dt::date const feb31(31, 2, 2023);
  EXPECT_EQ(feb31.pJulian_day_number(), dt::date(3, 3, 2023).pJulian_day_number());

  struct constrained_case {
    unsigned day, month, year, expected;
  } const cases[] = {
      {31, 4, 2024, 30}, {31, 6, 2024, 30}, {31, 9, 2024, 30}, {31, 11, 2024, 30},
      {31, 1, 2024, 31}, {31, 12, 2024, 31}, {30, 2, 2024, 29}, {30, 2, 2100, 28},
      {29, 2, 2000, 29}, {29, 2, 1900, 28}, {15, 2, 2023, 15},
  };
  for (constrained_case const& c : cases)
    EXPECT_EQ(dt::date(c.day, c.month, c.year).day(), c.expected) << c.day << "/" << c.month << "/" << c.year;
  EXPECT_EQ(dt::date().day(), 0u);  // month 0
  EXPECT_FALSE(dt::date().is_day_constrained());
}

TEST(SystemDate, SettersCheckTheirRangesInOrder) {
  EXPECT_TRUE(throws_out_of_range([] { dt::date(0, 1, 2000); }, "day value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::date(32, 1, 2000); }, "day value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::date(1, 13, 2000); }, "month value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::date(1, 0, 2000); }, "month value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::date(0, 0, 2000); }, "day value out of valid range"));
  dt::date d(15, 6, 2020);
  EXPECT_TRUE(throws_out_of_range([&] { d.month(13); }, "month value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { d.day(0); }, "day value out of valid range"));
  EXPECT_EQ(show(d), "2020-6-15");  // unchanged
  EXPECT_EQ(d.year(4294967295u), 4294967295u);  // the year is not checked
  EXPECT_EQ(d.day(31), 31u);
  EXPECT_FALSE(dt::date::is_valid_day(0));
  EXPECT_TRUE(dt::date::is_valid_month(12));
}

TEST(SystemDate, LeapYears) {
  struct {
    unsigned year;
    bool leap;
  } const cases[] = {{1900, false}, {2000, true}, {2024, true}, {2023, false}, {0, true}, {400, true}, {100, false}};
  for (auto const& c : cases) EXPECT_EQ(dt::date(1, 1, c.year).is_leap_year(), c.leap) << c.year;
}

struct move_case {
  char const* name;
  dt::date from;
  int days;
  char const* expected;
};

TEST(SystemDate, MovingByDaysAndThe29FebruaryRule) {
  move_case const forward[] = {
      {"across a year", dt::date(31, 12, 2007), 1, "2008-1-1"},
      {"onto 29 February", dt::date(28, 2, 2008), 1, "2008-3-1"},
      {"from 29 February by nothing", dt::date(29, 2, 2008), 0, "2008-3-1"},
      {"past 29 February", dt::date(28, 2, 2008), 2, "2008-3-1"},
      {"past 29 February in 2000", dt::date(28, 2, 2000), 2, "2000-3-1"},
      {"ordinary year", dt::date(28, 2, 2023), 1, "2023-3-1"},
      {"a leap year's length", dt::date(1, 3, 2023), 366, "2024-3-1"},
      {"backward by a negative count", dt::date(1, 1, 2024), -1, "2023-12-31"},
      {"the stored day counts", dt::date(31, 4, 2024), 0, "2024-5-1"},
  };
  for (move_case const& c : forward) {
    dt::date d(c.from);
    d += dt::date_duration(c.days);
    EXPECT_EQ(show(d), c.expected) << c.name;
  }
  move_case const backward[] = {
      {"across a year", dt::date(1, 1, 2008), 1, "2007-12-31"},
      {"onto 29 February", dt::date(1, 3, 2024), 1, "2024-3-1"},
      {"a negative count moves forward", dt::date(30, 12, 2023), -3, "2024-1-2"},
      {"to day 1", dt::date(2, 3, 0), 1, "0-3-1"},
  };
  for (move_case const& c : backward) {
    dt::date d(c.from);
    d -= dt::date_duration(c.days);
    EXPECT_EQ(show(d), c.expected) << c.name;
  }
}

TEST(SystemDate, MovingBelowDayOneThrows) {
  dt::date d(15, 6, 2020);
  int const whole = static_cast<int>(d.pJulian_day_number());
  EXPECT_TRUE(throws_out_of_range([&] { d -= dt::date_duration(whole); }, "date value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([&] { d.minus_assign(dt::date_duration(whole + 1)); },
                                  "date value out of valid range"));
  EXPECT_EQ(show(d), "2020-6-15");
  d -= dt::date_duration(whole - 1);
  EXPECT_EQ(show(d), "0-3-1");
  // Day numbers from 2^31 up are negative as signed values: nothing is below.
  dt::date far(1, 3, 6000000);
  EXPECT_GT(far.pJulian_day_number(), 2147483648u);
  EXPECT_TRUE(throws_out_of_range([&] { far -= dt::date_duration(0); }, "date value out of valid range"));
}

TEST(SystemDate, ArithmeticAtTheUnsignedEdgesIsDefined) {
  // Wrapping below day 1 or past 2^32 gives meaningless but valid fields.
  dt::date low(1, 3, 0);
  low += dt::date_duration(-1);
  EXPECT_TRUE(dt::date::is_valid_month(low.month()));
  EXPECT_TRUE(dt::date::is_valid_day(low.day()));
  dt::date high(31, 12, 4294967295u);
  high += dt::date_duration(2147483647);
  EXPECT_TRUE(dt::date::is_valid_month(high.month()));
  dt::date january_of_zero(1, 1, 0);  // before day 1: the year wraps inside the count
  dt::date copy;
  copy.pJulian_day_number(january_of_zero.pJulian_day_number());
  EXPECT_TRUE(dt::date::is_valid_day(copy.day()));
  dt::date unset;
  unset += dt::date_duration(0);  // month 0, day 0: numbered, converted, valid afterwards
  EXPECT_TRUE(dt::date::is_valid_month(unset.month()));
}

TEST(SystemDate, ClockReadersGiveAValidDate) {
  dt::date const utc = dt::date::UTC_date();
  dt::date const local = dt::date::local_date();
  EXPECT_GE(utc.year(), 2020u);
  EXPECT_TRUE(dt::date::is_valid_month(local.month()));
  EXPECT_FALSE(utc.is_day_constrained());
}

}  // namespace
