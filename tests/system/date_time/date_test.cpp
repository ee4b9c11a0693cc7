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

unsigned month_length(unsigned y, unsigned m) {
  static unsigned const lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  bool const leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0;
  return m == 2 && leap ? 29 : lengths[m - 1];
}

// Days since 1 January 1970 in closed form, a second count for far years.
std::int64_t days_from_civil(std::int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  std::int64_t const era = y / 400;  // y >= 0 here
  unsigned const yoe = static_cast<unsigned>(y - era * 400);
  unsigned const doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  return era * 146097 + yoe * 365 + yoe / 4 - yoe / 100 + doy - 719468;
}

TEST(SystemDate, DayNumbersMatchADayByDayCountOfTheCalendar) {
  // Every day from 1 March of year 0 (day 1) to the end of 2800, and back:
  // the number of 29 February comes back as 1 March.
  unsigned y = 0, m = 3, d = 1, mismatches = 0;
  for (std::uint32_t n = 1; y <= 2800 && mismatches < 5; ++n) {
    dt::date back;
    back.pJulian_day_number(n);
    bool const feb29 = m == 2 && d == 29;
    std::string const counted = std::to_string(y) + "-" + std::to_string(m) + "-" + std::to_string(d);
    std::string const returned = feb29 ? std::to_string(y) + "-3-1" : counted;
    if (dt::date(d, m, y).pJulian_day_number() != n || show(back) != returned)
      ADD_FAILURE() << "day " << n << ": " << counted << " numbers as " << dt::date(d, m, y).pJulian_day_number()
                    << " and comes back as " << show(back) << (++mismatches, "");
    if (++d > month_length(y, m)) {
      d = 1;
      if (++m > 12) m = 1, ++y;
    }
  }
  // Far years, up to where 365 * year still fits 32 bits, against the closed form.
  std::uint32_t const origin = dt::date(1, 3, 0).pJulian_day_number();
  for (std::uint32_t year = 2801; year < 11000000; year += 7919 + year % 13) {
    for (unsigned month : {1u, 2u, 3u, 12u}) {
      dt::date const date(month == 2 ? 28 : 31, month, year);
      ASSERT_EQ(date.pJulian_day_number() - origin,
                days_from_civil(year, month, date.day()) - days_from_civil(0, 3, 1))
          << show(date);
    }
  }
}

TEST(SystemDate, StoredDayAndConstrainedDay) {
  dt::date d(31, 2, 2023);
  EXPECT_EQ(d.day(), 28u);
  EXPECT_TRUE(d.is_day_constrained());
  d.month(3);
  EXPECT_EQ(d.day(), 31u);
  EXPECT_FALSE(d.is_day_constrained());
  // The stored day numbers the date: 31 February 2023 is 3 March 2023.
  EXPECT_EQ(dt::date(31, 2, 2023).pJulian_day_number(), dt::date(3, 3, 2023).pJulian_day_number());
  struct {
    unsigned day, month, year, expected;
  } const cases[] = {{31, 4, 2024, 30},  {31, 11, 2024, 30}, {31, 12, 2024, 31}, {30, 2, 2024, 29},
                     {30, 2, 2100, 28},  {29, 2, 2000, 29},  {29, 2, 1900, 28},  {15, 2, 2023, 15}};
  for (auto const& c : cases)
    EXPECT_EQ(dt::date(c.day, c.month, c.year).get_days(), c.expected) << c.day << "/" << c.month << "/" << c.year;
  EXPECT_EQ(dt::date().day(), 0u);  // month 0
  for (unsigned year : {1900u, 2023u}) EXPECT_FALSE(dt::date(1, 1, year).is_leap_year()) << year;
  for (unsigned year : {0u, 2000u, 2024u}) EXPECT_TRUE(dt::date(1, 1, year).is_leap_year()) << year;
}

TEST(SystemDate, SettersCheckTheirRangesInOrder) {
  EXPECT_TRUE(throws_out_of_range([] { dt::date(0, 1, 2000); }, "day value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::date(32, 1, 2000); }, "day value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::date(1, 13, 2000); }, "month value out of valid range"));
  EXPECT_TRUE(throws_out_of_range([] { dt::date(0, 0, 2000); }, "day value out of valid range"));
  dt::date d(15, 6, 2020);
  EXPECT_TRUE(throws_out_of_range([&] { d.month(0); }, "month value out of valid range"));
  EXPECT_EQ(show(d), "2020-6-15");  // unchanged
  EXPECT_EQ(d.year(4294967295u), 4294967295u);  // the year is not checked
}

TEST(SystemDate, MovingByDaysAndThe29FebruaryRule) {
  struct {
    char const* name;
    dt::date from;
    int days;  // added; subtracted when `back`
    bool back;
    char const* expected;
  } const cases[] = {
      {"across a year", dt::date(31, 12, 2007), 1, false, "2008-1-1"},
      {"onto 29 February", dt::date(28, 2, 2008), 1, false, "2008-3-1"},
      {"from 29 February by nothing", dt::date(29, 2, 2008), 0, false, "2008-3-1"},
      {"a 400-year 29 February", dt::date(28, 2, 2000), 1, false, "2000-3-1"},
      {"a leap year's length", dt::date(1, 3, 2023), 366, false, "2024-3-1"},
      {"a negative count", dt::date(1, 1, 2024), -1, false, "2023-12-31"},
      {"the stored day counts", dt::date(31, 4, 2024), 0, false, "2024-5-1"},
      {"back across a year", dt::date(1, 1, 2008), 1, true, "2007-12-31"},
      {"back onto 29 February", dt::date(1, 3, 2024), 1, true, "2024-3-1"},
      {"back by a negative count", dt::date(30, 12, 2023), -3, true, "2024-1-2"},
      {"back to day 1", dt::date(2, 3, 0), 1, true, "0-3-1"},
  };
  for (auto const& c : cases) {
    dt::date d(c.from);
    if (c.back) {
      d -= dt::date_duration(c.days);
    } else {
      d += dt::date_duration(c.days);
    }
    EXPECT_EQ(show(d), c.expected) << c.name;
  }
}

TEST(SystemDate, TheRangeEdges) {
  dt::date d(15, 6, 2020);
  int const whole = static_cast<int>(d.pJulian_day_number());
  EXPECT_TRUE(throws_out_of_range([&] { d -= dt::date_duration(whole); }, "date value out of valid range"));
  EXPECT_EQ(show(d), "2020-6-15");
  // Day numbers from 2^31 up are negative as signed values: nothing lies below.
  dt::date far(1, 3, 6000000);
  EXPECT_TRUE(throws_out_of_range([&] { far -= dt::date_duration(0); }, "date value out of valid range"));
  // Wrapping below day 1, past 2^32 or from the unset date is meaningless but defined.
  dt::date low(1, 3, 0), high(31, 12, 4294967295u), unset;
  low += dt::date_duration(-1);
  high += dt::date_duration(2147483647);
  unset += dt::date_duration(0);
  for (dt::date const& e : {low, high, unset})
    EXPECT_TRUE(dt::date::is_valid_month(e.month()) && dt::date::is_valid_day(e.day())) << show(e);
  EXPECT_GE(dt::date::UTC_date().year(), 2020u);
  EXPECT_FALSE(dt::date::local_date().is_day_constrained());
}

}  // namespace
