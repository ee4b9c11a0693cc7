#include "vexa/system/date_time/time_duration.hpp"

#include <cstdint>

namespace VEXA_2_10 {
namespace system {
namespace date_time {

namespace {

// Sums wrap in the unsigned type of the same width: no signed overflow.
long wrapping_add(long a, long b) {
  return static_cast<long>(static_cast<unsigned long>(a) + static_cast<unsigned long>(b));
}

long wrapping_sub(long a, long b) {
  return static_cast<long>(static_cast<unsigned long>(a) - static_cast<unsigned long>(b));
}

// A signed part handed out as the bit pattern of its low 32 bits.
unsigned int bit_pattern(long value) {
  return static_cast<unsigned int>(static_cast<unsigned long>(value));
}

}  // namespace

time_duration::time_duration() : milliseconds_(0) {}

time_duration::time_duration(time_duration const& other) : milliseconds_(other.milliseconds_) {}

time_duration::time_duration(int hours, int minutes, int seconds, long milliseconds) {
  // The whole-second part is summed in 32 bits and wraps there (beyond about
  // 596 hours), as stored data made with it expects.
  std::uint32_t const sum = static_cast<std::uint32_t>(hours) * 3600000u +
                            static_cast<std::uint32_t>(minutes) * 60000u +
                            static_cast<std::uint32_t>(seconds) * 1000u;
  milliseconds_ = wrapping_add(static_cast<std::int32_t>(sum), milliseconds);
}

double time_duration::total_hours() const { return static_cast<double>(milliseconds_) / 3600000.0; }
double time_duration::total_minutes() const { return static_cast<double>(milliseconds_) / 60000.0; }
double time_duration::total_seconds() const { return static_cast<double>(milliseconds_) / 1000.0; }
long time_duration::total_milliseconds() const { return milliseconds_; }

// The quotients of a 64-bit count by 3600000, 60000 and 1000 always fit a
// long, so the truncations below are defined for every count.
unsigned int time_duration::hour() const { return bit_pattern(static_cast<long>(total_hours())); }

unsigned int time_duration::minute() const {
  return bit_pattern(static_cast<long>(total_minutes()) % 60);
}

unsigned int time_duration::second() const {
  return bit_pattern(static_cast<long>(total_seconds()) % 60);
}

unsigned int time_duration::millisecond() const {
  auto const low = static_cast<std::int32_t>(static_cast<std::uint32_t>(milliseconds_));
  return bit_pattern(low % 1000);
}

bool time_duration::is_negative() const { return milliseconds_ < 0; }

time_duration& time_duration::assign(time_duration const& other) {
  milliseconds_ = other.milliseconds_;
  return *this;
}
time_duration& time_duration::operator=(time_duration const& other) { return assign(other); }

time_duration& time_duration::plus_assign(time_duration const& other) {
  milliseconds_ = wrapping_add(milliseconds_, other.milliseconds_);
  return *this;
}
time_duration& time_duration::operator+=(time_duration const& other) { return plus_assign(other); }

time_duration& time_duration::minus_assign(time_duration const& other) {
  milliseconds_ = wrapping_sub(milliseconds_, other.milliseconds_);
  return *this;
}
time_duration& time_duration::operator-=(time_duration const& other) { return minus_assign(other); }

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10
