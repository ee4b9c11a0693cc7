// vexa — a time of day with millisecond resolution (`system::date_time::time`).
//
// Four unsigned 32-bit fields: hour 0..23, minute 0..59, second 0..59 (no
// leap second), millisecond 0..999. Every setter checks its range and throws
// std::out_of_range with a fixed text, leaving the field unchanged:
//   "Hour value out of valid range", "Minute value out of valid range",
//   "Second value out of valid range", "Millisecond value out of valid range".
//
// Decisions:
//   - Adding a duration folds the result into one day: from -1 day up to any
//     positive sum the time wraps round midnight (23:59:59.999 + 1 ms is
//     00:00:00.000, 00:00 - 1 ms is 23:59:59.999). A result more than one day
//     below midnight stays negative, and the first setter that meets a
//     negative part throws: the hour setter ("Hour value out of valid
//     range") when the remaining count is an hour or more below zero;
//     nearer to zero the hour is set to 0 and the minute, second or
//     millisecond setter refuses (00:00 minus one day and 1 ms throws
//     "Millisecond value out of valid range"). The time keeps what was set
//     before the throw.
//   - The clock readers use gettimeofday and gmtime / localtime; a leap second
//     reported by the system (second 60) makes the second setter throw.
//
//   time t(23, 59, 59, 999);  t += time_duration(0, 0, 0, 1);   // 00:00:00.000
//   time(24, 0, 0, 0)                                           // throws
#ifndef VEXA_SYSTEM_DATE_TIME_TIME_HPP
#define VEXA_SYSTEM_DATE_TIME_TIME_HPP

#include "vexa/export.hpp"
#include "vexa/system/date_time/time_duration.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

class VEXA_API time {
 public:
  // time
  // 00:00:00.000; or zero, then the setters in the order hour, minute,
  // second, millisecond, so the first bad argument throws its out_of_range.
  //   time(12, 30, 0, 0).minute()   // 30
  //   time(1, 60, 0, 0)             // throws "Minute value out of valid range"
  time();
  time(time const& other) = default;
  time(unsigned int hour, unsigned int minute, unsigned int second, unsigned int millisecond);

  // hour, minute, second, millisecond
  // The readers return the field. The setters store a valid value and return
  // it; an invalid one throws std::out_of_range and changes nothing.
  //   t.hour(23)   // 23
  //   t.hour(24)   // throws "Hour value out of valid range"
  unsigned int hour() const;
  unsigned int minute() const;
  unsigned int second() const;
  unsigned int millisecond() const;
  unsigned int hour(unsigned int value);
  unsigned int minute(unsigned int value);
  unsigned int second(unsigned int value);
  unsigned int millisecond(unsigned int value);

  // is_valid_hour, is_valid_minute, is_valid_second, is_valid_millisecond
  // value < 24, < 60, < 60, <= 999, compared unsigned: negatives are invalid.
  //   time::is_valid_hour(23)   // true
  //   time::is_valid_hour(-1)   // false
  static bool is_valid_hour(int value);
  static bool is_valid_minute(int value);
  static bool is_valid_second(int value);
  static bool is_valid_millisecond(int value);

  // assign, operator=
  // Copies all four fields; returns *this.
  //   t.assign(time(1, 2, 3, 4));
  //   t = time();
  time& assign(time const& other);
  time& operator=(time const& other);

  // plus_assign, operator+=, minus_assign, operator-=
  // The fields as a duration, plus (or minus) `d`, folded by
  // (count + 86400000) % 86400000, set back through the setters in the order
  // hour, minute, second, millisecond. A count still negative after the fold
  // throws from the first setter that meets a negative part (the hour's,
  // unless less than an hour remains below zero).
  //   time(0, 0, 0, 0) -= time_duration(0, 0, 0, 1)    // 23:59:59.999
  //   time(0, 0, 0, 0) -= time_duration(25, 0, 0, 0)   // throws
  time& plus_assign(time_duration const& d);
  time& operator+=(time_duration const& d);
  time& minus_assign(time_duration const& d);
  time& operator-=(time_duration const& d);

  // UTC_time, local_time
  // The system clock's time of day in UTC or in local time, to the
  // millisecond. Throws "Second value out of valid range" in a leap second.
  //   time::UTC_time().hour()     // 0..23
  //   time::local_time()          // the wall clock
  static time UTC_time();
  static time local_time();

  // ---- implementation details ----
 private:
  unsigned int hour_;
  unsigned int minute_;
  unsigned int second_;
  unsigned int millisecond_;
};

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_DATE_TIME_TIME_HPP
