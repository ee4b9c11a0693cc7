#include "vexa/system/date_time/date_time.hpp"

#include <sys/time.h>

#include <cstdint>
#include <ctime>

namespace VEXA_2_10 {
namespace system {
namespace date_time {

namespace {

// One clock reading, broken down once, gives both parts.
date_time_t date_time_now(std::tm* (*breakdown)(std::time_t const*)) {
  timeval now{};
  ::gettimeofday(&now, nullptr);
  std::time_t const seconds = now.tv_sec;
  std::tm const* parts = breakdown(&seconds);
  if (parts == nullptr) return date_time_t();
  date const d(static_cast<unsigned int>(parts->tm_mday), static_cast<unsigned int>(parts->tm_mon + 1),
               static_cast<unsigned int>(parts->tm_year) + 1900u);
  time const t(static_cast<unsigned int>(parts->tm_hour), static_cast<unsigned int>(parts->tm_min),
               static_cast<unsigned int>(parts->tm_sec), static_cast<unsigned int>(now.tv_usec / 1000));
  return date_time_t(d, t);
}

}  // namespace

date_time_t::date_time_t() : time_(), date_() {}
date_time_t::date_time_t(date_time_t const& other) : time_(other.time_), date_(other.date_) {}
date_time_t::date_time_t(date_time::date const& d, date_time::time const& t) : time_(t), date_(d) {}

unsigned int date_time_t::year() const { return date_.year(); }
unsigned int date_time_t::month() const { return date_.month(); }
unsigned int date_time_t::day() const { return date_.day(); }
unsigned int date_time_t::year(unsigned int value) { return date_.year(value); }
unsigned int date_time_t::month(unsigned int value) { return date_.month(value); }
unsigned int date_time_t::day(unsigned int value) { return date_.day(value); }
bool date_time_t::is_leap_year() const { return date_.is_leap_year(); }
bool date_time_t::is_day_constrained() const { return date_.is_day_constrained(); }

unsigned int date_time_t::hour() const { return time_.hour(); }
unsigned int date_time_t::minute() const { return time_.minute(); }
unsigned int date_time_t::second() const { return time_.second(); }
unsigned int date_time_t::millisecond() const { return time_.millisecond(); }
unsigned int date_time_t::hour(unsigned int value) { return time_.hour(value); }
unsigned int date_time_t::minute(unsigned int value) { return time_.minute(value); }
unsigned int date_time_t::second(unsigned int value) { return time_.second(value); }
unsigned int date_time_t::millisecond(unsigned int value) { return time_.millisecond(value); }

date_time::time& date_time_t::time() { return time_; }
date_time::time const& date_time_t::time() const { return time_; }
date_time::date& date_time_t::date() { return date_; }
date_time::date const& date_time_t::date() const { return date_; }

date_time_t& date_time_t::assign(date_time_t const& other) {
  if (this != &other) {
    date_ = other.date_;
    time_ = other.time_;
  }
  return *this;
}
date_time_t& date_time_t::assign(date_time::date const& d, date_time::time const& t) {
  date_ = d;
  time_ = t;
  return *this;
}
date_time_t& date_time_t::assign(date_time::date const& d) {
  date_ = d;
  return *this;
}
date_time_t& date_time_t::assign(date_time::time const& t) {
  time_ = t;
  return *this;
}
date_time_t& date_time_t::operator=(date_time_t const& other) { return assign(other); }
date_time_t& date_time_t::operator=(date_time::date const& d) { return assign(d); }
date_time_t& date_time_t::operator=(date_time::time const& t) { return assign(t); }

// Date durations leave the value alone in this version.
date_time_t& date_time_t::plus_assign(date_duration const&) { return *this; }
date_time_t& date_time_t::operator+=(date_duration const& d) { return plus_assign(d); }
date_time_t& date_time_t::minus_assign(date_duration const&) { return *this; }
date_time_t& date_time_t::operator-=(date_duration const& d) { return minus_assign(d); }

date_time_t& date_time_t::move_by(time_duration const& d, bool forward) {
  // total_hours() of any 64-bit count fits a long; the cut to 32 bits wraps.
  auto const hours = static_cast<std::int32_t>(
      static_cast<std::uint32_t>(static_cast<unsigned long>(static_cast<long>(d.total_hours()))));
  long const magnitude = hours < 0 ? -static_cast<long>(hours) : static_cast<long>(hours);
  if (magnitude > 23) {
    // The day setter receives the signed remainder (so 0 or a negative one
    // throws) and what it returns is the number of days to move.
    unsigned int const days = day(static_cast<unsigned int>(hours % 24));
    date_duration const step(static_cast<int>(days));
    if (forward) {
      date_ += step;
    } else {
      date_ -= step;
    }
  }
  if (forward) {
    time_ += d;
  } else {
    time_ -= d;
  }
  return *this;
}

date_time_t& date_time_t::plus_assign(time_duration const& d) { return move_by(d, true); }
date_time_t& date_time_t::operator+=(time_duration const& d) { return plus_assign(d); }
date_time_t& date_time_t::minus_assign(time_duration const& d) { return move_by(d, false); }
date_time_t& date_time_t::operator-=(time_duration const& d) { return minus_assign(d); }

date_time_t date_time_t::UTC_date_time() { return date_time_now(&std::gmtime); }
date_time_t date_time_t::local_date_time() { return date_time_now(&std::localtime); }

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10
