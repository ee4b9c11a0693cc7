#include "vexa/system/date_time/date_duration.hpp"

namespace VEXA_2_10 {
namespace system {
namespace date_time {

date_duration::date_duration() : days_(0) {}
date_duration::date_duration(int days) : days_(days) {}
date_duration::date_duration(date_duration const& other) : days_(other.days_) {}
date_duration::~date_duration() {}

int date_duration::days() const { return days_; }
int date_duration::days(int days) { return days_ = days; }

date_duration& date_duration::assign(date_duration const& other) {
  days_ = other.days_;
  return *this;
}
date_duration& date_duration::operator=(date_duration const& other) { return assign(other); }

// Day counts wrap in 32 bits, through the unsigned type.
date_duration& date_duration::plus_assign(date_duration const& other) {
  days_ = static_cast<int>(static_cast<unsigned int>(days_) + static_cast<unsigned int>(other.days_));
  return *this;
}
date_duration& date_duration::operator+=(date_duration const& other) { return plus_assign(other); }

date_duration& date_duration::minus_assign(date_duration const& other) {
  days_ = static_cast<int>(static_cast<unsigned int>(days_) - static_cast<unsigned int>(other.days_));
  return *this;
}
date_duration& date_duration::operator-=(date_duration const& other) { return minus_assign(other); }

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10
