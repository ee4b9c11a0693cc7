#include "vexa/system/date_time/time.hpp"

#include <sys/time.h>

#include <ctime>
#include <stdexcept>

namespace VEXA_2_10 {
namespace system {
namespace date_time {

namespace {

long const milliseconds_per_day = 86400000;

// The clock, broken down by gmtime or localtime, to the millisecond.
time time_now(std::tm* (*breakdown)(std::time_t const*)) {
  timeval now{};
  ::gettimeofday(&now, nullptr);
  std::time_t const seconds = now.tv_sec;
  std::tm const* parts = breakdown(&seconds);
  if (parts == nullptr) return time();
  return time(static_cast<unsigned int>(parts->tm_hour), static_cast<unsigned int>(parts->tm_min),
              static_cast<unsigned int>(parts->tm_sec), static_cast<unsigned int>(now.tv_usec / 1000));
}

}  // namespace

time::time() : hour_(0), minute_(0), second_(0), millisecond_(0) {}

time::time(unsigned int hour, unsigned int minute, unsigned int second, unsigned int millisecond)
    : time() {
  this->hour(hour);
  this->minute(minute);
  this->second(second);
  this->millisecond(millisecond);
}

unsigned int time::hour() const { return hour_; }
unsigned int time::minute() const { return minute_; }
unsigned int time::second() const { return second_; }
unsigned int time::millisecond() const { return millisecond_; }

// The validators take int; an unsigned argument goes through the same
// unsigned comparison, so each setter tests the value as it was given.
bool time::is_valid_hour(int value) { return static_cast<unsigned int>(value) < 24; }
bool time::is_valid_minute(int value) { return static_cast<unsigned int>(value) < 60; }
bool time::is_valid_second(int value) { return static_cast<unsigned int>(value) < 60; }
bool time::is_valid_millisecond(int value) { return static_cast<unsigned int>(value) <= 999; }

unsigned int time::hour(unsigned int value) {
  if (!is_valid_hour(static_cast<int>(value))) throw std::out_of_range("Hour value out of valid range");
  return hour_ = value;
}

unsigned int time::minute(unsigned int value) {
  if (!is_valid_minute(static_cast<int>(value)))
    throw std::out_of_range("Minute value out of valid range");
  return minute_ = value;
}

unsigned int time::second(unsigned int value) {
  if (!is_valid_second(static_cast<int>(value)))
    throw std::out_of_range("Second value out of valid range");
  return second_ = value;
}

unsigned int time::millisecond(unsigned int value) {
  if (!is_valid_millisecond(static_cast<int>(value)))
    throw std::out_of_range("Millisecond value out of valid range");
  return millisecond_ = value;
}

time& time::assign(time const& other) {
  hour_ = other.hour_;
  minute_ = other.minute_;
  second_ = other.second_;
  millisecond_ = other.millisecond_;
  return *this;
}
time& time::operator=(time const& other) { return assign(other); }

time& time::plus_assign(time_duration const& d) {
  time_duration sum(static_cast<int>(hour_), static_cast<int>(minute_), static_cast<int>(second_),
                    static_cast<long>(millisecond_));
  sum += d;
  // Folds -1 day .. any positive sum into one day; further below stays
  // negative and the hour setter refuses it. The addition wraps unsigned.
  long const shifted = static_cast<long>(static_cast<unsigned long>(sum.total_milliseconds()) +
                                         static_cast<unsigned long>(milliseconds_per_day));
  time_duration const folded(0, 0, 0, shifted % milliseconds_per_day);
  hour(folded.hour());
  minute(folded.minute());
  second(folded.second());
  millisecond(folded.millisecond());
  return *this;
}
time& time::operator+=(time_duration const& d) { return plus_assign(d); }

time& time::minus_assign(time_duration const& d) {
  long const negated = static_cast<long>(0ul - static_cast<unsigned long>(d.total_milliseconds()));
  return plus_assign(time_duration(0, 0, 0, negated));
}
time& time::operator-=(time_duration const& d) { return minus_assign(d); }

time time::UTC_time() { return time_now(&std::gmtime); }
time time::local_time() { return time_now(&std::localtime); }

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10
