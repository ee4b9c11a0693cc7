// vexa — sums and differences of times and durations
// (`system::date_time` free functions). Each operator calls the named
// function.
//
//   time(10, 0, 0, 0) - time(8, 30, 0, 0)              // time_duration of 90 minutes
//   time(23, 0, 0, 0) + time_duration(2, 0, 0, 0)      // time(1, 0, 0, 0)
#ifndef VEXA_SYSTEM_DATE_TIME_ARITHMETIC_HPP
#define VEXA_SYSTEM_DATE_TIME_ARITHMETIC_HPP

#include "vexa/export.hpp"
#include "vexa/system/date_time/date_duration.hpp"
#include "vexa/system/date_time/time.hpp"
#include "vexa/system/date_time/time_duration.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

// plus, minus (date_duration)
// The sum or difference of the day counts, wrapping in 32 bits.
//   plus(date_duration(2), date_duration(3)).days()    // 5
//   minus(date_duration(2), date_duration(3)).days()   // -1
VEXA_API date_duration plus(date_duration const& a, date_duration const& b);
VEXA_API date_duration minus(date_duration const& a, date_duration const& b);
VEXA_API date_duration operator+(date_duration const& a, date_duration const& b);
VEXA_API date_duration operator-(date_duration const& a, date_duration const& b);

// plus, minus (time_duration)
// The sum or difference of the millisecond counts, wrapping in 64 bits.
//   plus(time_duration(1, 0, 0, 0), time_duration(0, 30, 0, 0)).total_minutes()   // 90
//   minus(time_duration(), time_duration(0, 0, 1, 0)).is_negative()              // true
VEXA_API time_duration plus(time_duration const& a, time_duration const& b);
VEXA_API time_duration minus(time_duration const& a, time_duration const& b);
VEXA_API time_duration operator+(time_duration const& a, time_duration const& b);
VEXA_API time_duration operator-(time_duration const& a, time_duration const& b);

// minus (time, time)
// time_duration(a.hour - b.hour, a.minute - b.minute, a.second - b.second,
// a.millisecond - b.millisecond), each a signed difference.
//   minus(time(8, 0, 0, 0), time(9, 30, 0, 0)).total_minutes()   // -90
//   minus(time(), time()).total_milliseconds()                   // 0
VEXA_API time_duration minus(time const& a, time const& b);
VEXA_API time_duration operator-(time const& a, time const& b);

// plus, minus (time and time_duration)
// A copy of the time, then += or -= the duration (folded into one day; a
// result more than a day below midnight throws std::out_of_range, as
// time::plus_assign does).
//   plus(time(23, 0, 0, 0), time_duration(2, 0, 0, 0))   // 01:00
//   minus(time(), time_duration(0, 0, 0, 1))             // 23:59:59.999
VEXA_API time plus(time_duration const& d, time const& t);
VEXA_API time plus(time const& t, time_duration const& d);
VEXA_API time minus(time const& t, time_duration const& d);
VEXA_API time operator+(time_duration const& d, time const& t);
VEXA_API time operator+(time const& t, time_duration const& d);
VEXA_API time operator-(time const& t, time_duration const& d);

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_DATE_TIME_ARITHMETIC_HPP
