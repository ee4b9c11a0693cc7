// vexa — a signed number of days (`system::date_time::date_duration`).
//
// One 32-bit count of days, set and read as `int`; sums and differences wrap
// in 32 bits. Moving a date by it is date::plus_assign / minus_assign.
//
//   date_duration(3).days()              // 3
//   date_duration(1) += date_duration(-2)   // days() == -1
#ifndef VEXA_SYSTEM_DATE_TIME_DATE_DURATION_HPP
#define VEXA_SYSTEM_DATE_TIME_DATE_DURATION_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

class VEXA_API date_duration {
 public:
  // date_duration
  // 0 days, or `days`. Never fails.
  //   date_duration().days()     // 0
  //   date_duration(-7).days()   // -7
  date_duration();
  date_duration(int days);
  date_duration(date_duration const& other);
  ~date_duration();

  // days
  // The count; the setter stores `days` and returns it.
  //   d.days(10)   // 10
  //   d.days()     // 10
  int days() const;
  int days(int days);

  // assign, plus_assign, minus_assign and their operators
  // Copy, add or subtract the counts (32-bit, wrapping); return *this.
  //   d += date_duration(1);
  //   d -= date_duration(1);
  date_duration& assign(date_duration const& other);
  date_duration& operator=(date_duration const& other);
  date_duration& plus_assign(date_duration const& other);
  date_duration& operator+=(date_duration const& other);
  date_duration& minus_assign(date_duration const& other);
  date_duration& operator-=(date_duration const& other);

  // ---- implementation details ----
 private:
  int days_;
};

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_DATE_TIME_DATE_DURATION_HPP
