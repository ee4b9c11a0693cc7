// vexa — a signed span of milliseconds (`system::date_time::time_duration`).
//
// One signed 64-bit count of milliseconds; negative spans are allowed. The
// parts are not normalised to a day: a span of 25 hours has hour() 25.
//
// Decisions:
//   - The four-part constructor sums hours, minutes and seconds in 32-bit
//     signed arithmetic that wraps (beyond about 596 hours), then widens and
//     adds the milliseconds in 64 bits. Sums beyond the 64-bit range wrap too;
//     nothing here has undefined behaviour.
//   - The parts keep the sign of the count and are returned as the bit
//     patterns of negative numbers: time_duration(0, 0, 0, -1500).second() is
//     4294967295 (-1).
//
//   time_duration(1, 30, 0, 0).total_minutes()   // 90.0
//   time_duration(25, 0, 0, 0).hour()           // 25
#ifndef VEXA_SYSTEM_DATE_TIME_TIME_DURATION_HPP
#define VEXA_SYSTEM_DATE_TIME_TIME_DURATION_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

class VEXA_API time_duration {
 public:
  // time_duration
  // 0 ms; or hours*3600000 + minutes*60000 + seconds*1000 in wrapping 32-bit
  // signed arithmetic, widened, plus `milliseconds`. Never fails.
  //   time_duration(0, 1, 1, 5).total_milliseconds()   // 61005
  //   time_duration(-1, 0, 0, 0).is_negative()         // true
  time_duration();
  time_duration(time_duration const& other);
  time_duration(int hours, int minutes, int seconds, long milliseconds);

  // total_hours, total_minutes, total_seconds
  // The count divided by 3600000.0, 60000.0 and 1000.0.
  //   time_duration(0, 90, 0, 0).total_hours()   // 1.5
  //   time_duration(0, 0, 0, -500).total_seconds()   // -0.5
  double total_hours() const;
  double total_minutes() const;
  double total_seconds() const;
  // total_milliseconds
  // The count itself.
  //   time_duration(0, 0, 2, 3).total_milliseconds()   // 2003
  //   time_duration().total_milliseconds()            // 0
  long total_milliseconds() const;

  // hour, minute, second, millisecond
  // hour(): total_hours() truncated toward zero (not reduced modulo 24);
  // minute(), second(): total_minutes() / total_seconds() truncated, then
  // the remainder by 60; millisecond(): the count cut to 32 bits, then the
  // remainder by 1000. Negative spans give negative parts as unsigned bit
  // patterns.
  //   time_duration(25, 61, 0, 0).minute()          // 1
  //   time_duration(0, 0, 0, -1500).millisecond()   // 4294966796 (-500)
  unsigned int hour() const;
  unsigned int minute() const;
  unsigned int second() const;
  unsigned int millisecond() const;

  // is_negative
  // True when the count is below 0.
  //   time_duration(0, 0, 0, -1).is_negative()   // true
  //   time_duration().is_negative()             // false
  bool is_negative() const;

  // assign, plus_assign, minus_assign and their operators
  // Copy, add or subtract the counts (64-bit, wrapping); return *this.
  //   d += time_duration(0, 0, 1, 0);   // one second more
  //   d -= d;                           // 0
  time_duration& assign(time_duration const& other);
  time_duration& operator=(time_duration const& other);
  time_duration& plus_assign(time_duration const& other);
  time_duration& operator+=(time_duration const& other);
  time_duration& minus_assign(time_duration const& other);
  time_duration& operator-=(time_duration const& other);

  // ---- implementation details ----
 private:
  long milliseconds_;
};

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_DATE_TIME_TIME_DURATION_HPP
