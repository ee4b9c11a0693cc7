// vexa — a calendar date in the proleptic Gregorian calendar
// (`system::date_time::date`).
//
// Three unsigned 32-bit fields: year (unchecked), month 1..12, day 1..31.
// The month and day setters throw std::out_of_range with the fixed texts
// "month value out of valid range" and "day value out of valid range"; moving
// a date below day 1 throws "date value out of valid range".
//
// Decisions a user must know:
//   - The stored day is checked against 31 only, whatever the month, so day
//     and month can be set in either order. `day()` answers the CONSTRAINED
//     day, clamped to the month's length: date(31, 2, 2023).day() is 28, and
//     after month(3) it is 31 again. `is_day_constrained()` tells the two
//     apart.
//   - Day numbers count from 1 March of year 0 (day 1) in unsigned 32-bit
//     arithmetic, and use the STORED day: 31 February numbers as 3 March.
//   - Converting a day number back never gives 29 February: that day comes
//     back as 1 March of the same year. So any arithmetic that lands on 29
//     February gives 1 March (28 February 2008 + 1 day is 1 March 2008, and
//     29 February 2008 + 0 days too).
//   - A negative duration given to minus_assign moves the date forward.
//   - Dates before 1 March of year 0 give meaningless (but defined) numbers.
//
//   date d(31, 12, 2007);  d += date_duration(1);   // 1 January 2008
//   date(29, 2, 2008) += date_duration(0)          // 1 March 2008
#ifndef VEXA_SYSTEM_DATE_TIME_DATE_HPP
#define VEXA_SYSTEM_DATE_TIME_DATE_HPP

#include "vexa/export.hpp"
#include "vexa/system/date_time/date_duration.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

class VEXA_API date {
 public:
  // date
  // All fields 0 (an invalid date); or, from DAY, MONTH, YEAR in that
  // argument order, zero and then the setters day, month, year in that order.
  //   date(31, 2, 2023).day()   // 28 (stored 31)
  //   date(0, 1, 2000)          // throws "day value out of valid range"
  date();
  date(date const& other) = default;
  date(unsigned int day, unsigned int month, unsigned int year);

  // year, month, day
  // Readers: the stored year and month, and the constrained day (get_days).
  // Setters store and return the value; month and day throw out_of_range for
  // values outside 1..12 and 1..31, changing nothing. The year is unchecked.
  //   d.month(13)   // throws "month value out of valid range"
  //   d.day(31)     // 31, even in April
  unsigned int year() const;
  unsigned int month() const;
  unsigned int day() const;
  unsigned int year(unsigned int value);
  unsigned int month(unsigned int value);
  unsigned int day(unsigned int value);

  // is_valid_month, is_valid_day
  // 1..12 and 1..31 (whatever the month).
  //   date::is_valid_day(31)   // true
  //   date::is_valid_month(0)  // false
  static bool is_valid_month(unsigned int value);
  static bool is_valid_day(unsigned int value);

  // is_leap_year
  // Divisible by 4 and not by 100, or divisible by 400.
  //   date(1, 1, 2000).is_leap_year()   // true
  //   date(1, 1, 1900).is_leap_year()   // false
  bool is_leap_year() const;

  // get_days
  // The stored day clamped to the month's length (30 for April, June,
  // September, November; 28 or 29 for February); 0 when the month is 0 or
  // above 12.
  //   date(31, 4, 2024).get_days()   // 30
  //   date().get_days()              // 0
  unsigned int get_days() const;

  // is_day_constrained
  // True when get_days() differs from the stored day.
  //   date(30, 2, 2024).is_day_constrained()   // true
  //   date(29, 2, 2024).is_day_constrained()   // false
  bool is_day_constrained() const;

  // pJulian_day_number
  // The day number (1 March of year 0 is day 1), from the stored day, in
  // unsigned 32-bit arithmetic. The setter replaces year, month and day with
  // the date of day number `n` (29 February never results: 1 March instead)
  // and returns `n`.
  //   date(1, 3, 0).pJulian_day_number()   // 1
  //   d.pJulian_day_number(60)              // d is 29 April of year 0
  unsigned int pJulian_day_number() const;
  unsigned int pJulian_day_number(unsigned int n);

  // assign, operator=
  // Copies the three fields; returns *this.
  //   d.assign(date(1, 1, 2000));
  //   d = date();
  date& assign(date const& other);
  date& operator=(date const& other);

  // plus_assign, operator+=
  // Day number + days (32-bit wrap), converted back, set through the setters
  // day, month, year. Returns *this.
  //   date(28, 2, 2023) += date_duration(1)   // 1 March 2023
  //   date(28, 2, 2008) += date_duration(1)   // 1 March 2008 (not the 29th)
  date& plus_assign(date_duration const& d);
  date& operator+=(date_duration const& d);

  // minus_assign, operator-=
  // When days < day number (as signed 32-bit values), moves back by `days`
  // (forward for a negative count); otherwise throws "date value out of
  // valid range" and changes nothing.
  //   date(1, 3, 2024) -= date_duration(1)   // 1 March 2024 again, not 29 February
  //   date(1, 3, 0) -= date_duration(1)      // throws
  date& minus_assign(date_duration const& d);
  date& operator-=(date_duration const& d);

  // UTC_date, local_date
  // Today from the system clock (time, then gmtime or localtime).
  //   date::UTC_date().year()   // e.g. 2026
  //   date::local_date()        // the calendar on the wall
  static date UTC_date();
  static date local_date();

  // ---- implementation details ----
 private:
  unsigned int year_;
  unsigned int month_;
  unsigned int day_;
};

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_DATE_TIME_DATE_HPP
