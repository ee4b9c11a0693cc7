// vexa — a date and a time of day together (`system::date_time::date_time_t`).
//
// A `time` followed by a `date` (the time part is stored first, though the
// constructor takes the date first). The readers and setters forward to the
// parts and throw what the parts throw.
//
// Decisions of this version, kept exactly:
//   - Adding or subtracting a date_duration does NOTHING; move the date part
//     through date() instead.
//   - Adding a time_duration of more than 23 whole hours (in either
//     direction) first calls this object's day setter with the hours' signed
//     remainder by 24, and moves the date part by the number of days that
//     setter returns; then the whole duration is added to the time part, which
//     folds it into one day. So +25 hours sets the day of the month to 1,
//     adds one day and moves the time one hour on; +48 hours (remainder 0)
//     and -25 hours (remainder -1) throw "day value out of valid range".
//   - The clock readers take the date and the time from ONE reading of the
//     clock, so both belong to the same instant.
//
//   date_time_t dt(date(10, 5, 2024), time(8, 0, 0, 0));
//   dt += time_duration(25, 0, 0, 0);   // 2 May 2024, 09:00
#ifndef VEXA_SYSTEM_DATE_TIME_DATE_TIME_HPP
#define VEXA_SYSTEM_DATE_TIME_DATE_TIME_HPP

#include "vexa/export.hpp"
#include "vexa/system/date_time/date.hpp"
#include "vexa/system/date_time/date_duration.hpp"
#include "vexa/system/date_time/time.hpp"
#include "vexa/system/date_time/time_duration.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

class VEXA_API date_time_t {
 public:
  // date_time_t
  // 00:00:00.000 of the invalid date 0-0-0; a copy; or the given parts (date
  // first). Never fails.
  //   date_time_t(date(1, 1, 2000), time(12, 0, 0, 0)).hour()   // 12
  //   date_time_t().month()                                    // 0
  date_time_t();
  date_time_t(date_time_t const& other);
  date_time_t(date_time::date const& d, date_time::time const& t);

  // year, month, day, is_leap_year, is_day_constrained
  // Forwarded to the date part (day() is the constrained day).
  //   dt.day(31)       // 31, or throws "day value out of valid range"
  //   dt.month(0)      // throws "month value out of valid range"
  unsigned int year() const;
  unsigned int month() const;
  unsigned int day() const;
  unsigned int year(unsigned int value);
  unsigned int month(unsigned int value);
  unsigned int day(unsigned int value);
  bool is_leap_year() const;
  bool is_day_constrained() const;

  // hour, minute, second, millisecond
  // Forwarded to the time part.
  //   dt.hour(23)   // 23
  //   dt.hour(24)   // throws "Hour value out of valid range"
  unsigned int hour() const;
  unsigned int minute() const;
  unsigned int second() const;
  unsigned int millisecond() const;
  unsigned int hour(unsigned int value);
  unsigned int minute(unsigned int value);
  unsigned int second(unsigned int value);
  unsigned int millisecond(unsigned int value);

  // time, date
  // References to the parts.
  //   dt.date() += date_duration(1);   // the way to move the date
  //   dt.time().minute()
  date_time::time& time();
  date_time::time const& time() const;
  date_time::date& date();
  date_time::date const& date() const;

  // assign, operator=
  // The whole value (self-assignment skipped; date part, then time part), both
  // parts, or one part only. Return *this.
  //   dt = date(1, 1, 2000);       // the time part stays
  //   dt = time(0, 0, 0, 0);       // the date part stays
  date_time_t& assign(date_time_t const& other);
  date_time_t& assign(date_time::date const& d, date_time::time const& t);
  date_time_t& assign(date_time::date const& d);
  date_time_t& assign(date_time::time const& t);
  date_time_t& operator=(date_time_t const& other);
  date_time_t& operator=(date_time::date const& d);
  date_time_t& operator=(date_time::time const& t);

  // plus_assign, minus_assign (date_duration) and their operators
  // Do nothing and return *this unchanged.
  //   dt += date_duration(5);   // dt is as before
  //   dt.date() += date_duration(5);   // moves the date
  date_time_t& plus_assign(date_duration const& d);
  date_time_t& operator+=(date_duration const& d);
  date_time_t& minus_assign(date_duration const& d);
  date_time_t& operator-=(date_duration const& d);

  // plus_assign, minus_assign (time_duration) and their operators
  // h = total_hours() cut to a 32-bit integer; when |h| > 23, day(h % 24) is
  // called and the date moved by the days it returns (back for minus); then
  // the time part += (or -=) the whole duration. Throws what the setters throw.
  //   dt += time_duration(1, 0, 0, 0);    // one hour on, date unchanged
  //   dt += time_duration(48, 0, 0, 0);   // throws "day value out of valid range"
  date_time_t& plus_assign(time_duration const& d);
  date_time_t& operator+=(time_duration const& d);
  date_time_t& minus_assign(time_duration const& d);
  date_time_t& operator-=(time_duration const& d);

  // UTC_date_time, local_date_time
  // Date and time of one clock reading (gettimeofday, then gmtime or
  // localtime). Throws "Second value out of valid range" in a leap second.
  //   date_time_t::UTC_date_time().year()
  //   date_time_t::local_date_time().hour()
  static date_time_t UTC_date_time();
  static date_time_t local_date_time();

  // ---- implementation details ----
 private:
  date_time_t& move_by(time_duration const& d, bool forward);

  date_time::time time_;
  date_time::date date_;
};

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_DATE_TIME_DATE_TIME_HPP
