#include "vexa/system/date_time/arithmetic.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

date_duration plus(date_duration const& a, date_duration const& b) {
  date_duration sum(a);
  return sum += b;
}
date_duration minus(date_duration const& a, date_duration const& b) {
  date_duration difference(a);
  return difference -= b;
}
date_duration operator+(date_duration const& a, date_duration const& b) { return plus(a, b); }
date_duration operator-(date_duration const& a, date_duration const& b) { return minus(a, b); }

time_duration plus(time_duration const& a, time_duration const& b) {
  time_duration sum(a);
  return sum += b;
}
time_duration minus(time_duration const& a, time_duration const& b) {
  time_duration difference(a);
  return difference -= b;
}
time_duration operator+(time_duration const& a, time_duration const& b) { return plus(a, b); }
time_duration operator-(time_duration const& a, time_duration const& b) { return minus(a, b); }

// Every field is below 1000, so the signed differences cannot overflow.
time_duration minus(time const& a, time const& b) {
  return time_duration(static_cast<int>(a.hour()) - static_cast<int>(b.hour()),
                       static_cast<int>(a.minute()) - static_cast<int>(b.minute()),
                       static_cast<int>(a.second()) - static_cast<int>(b.second()),
                       static_cast<long>(a.millisecond()) - static_cast<long>(b.millisecond()));
}
time_duration operator-(time const& a, time const& b) { return minus(a, b); }

time plus(time_duration const& d, time const& t) {
  time sum(t);
  return sum += d;
}
time plus(time const& t, time_duration const& d) {
  time sum(t);
  return sum += d;
}
time minus(time const& t, time_duration const& d) {
  time difference(t);
  return difference -= d;
}
time operator+(time_duration const& d, time const& t) { return plus(d, t); }
time operator+(time const& t, time_duration const& d) { return plus(t, d); }
time operator-(time const& t, time_duration const& d) { return minus(t, d); }

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10
