#include "vexa/system/date_time/date.hpp"

#include <cstdint>
#include <ctime>
#include <stdexcept>

namespace VEXA_2_10 {
namespace system {
namespace date_time {

namespace {

using u32 = std::uint32_t;

date date_now(std::tm* (*breakdown)(std::time_t const*)) {
  std::time_t const seconds = ::time(nullptr);
  std::tm const* parts = breakdown(&seconds);
  if (parts == nullptr) return date();
  return date(static_cast<unsigned int>(parts->tm_mday), static_cast<unsigned int>(parts->tm_mon + 1),
              static_cast<unsigned int>(parts->tm_year) + 1900u);
}

}  // namespace

date::date() : year_(0), month_(0), day_(0) {}

date::date(unsigned int day, unsigned int month, unsigned int year) : date() {
  this->day(day);
  this->month(month);
  this->year(year);
}

unsigned int date::year() const { return year_; }
unsigned int date::month() const { return month_; }
unsigned int date::day() const { return get_days(); }

unsigned int date::year(unsigned int value) { return year_ = value; }

unsigned int date::month(unsigned int value) {
  if (!is_valid_month(value)) throw std::out_of_range("month value out of valid range");
  return month_ = value;
}

unsigned int date::day(unsigned int value) {
  if (!is_valid_day(value)) throw std::out_of_range("day value out of valid range");
  return day_ = value;
}

bool date::is_valid_month(unsigned int value) { return value >= 1 && value <= 12; }
bool date::is_valid_day(unsigned int value) { return value >= 1 && value <= 31; }

bool date::is_leap_year() const {
  return (year_ % 4 == 0 && year_ % 100 != 0) || year_ % 400 == 0;
}

unsigned int date::get_days() const {
  switch (month_) {
    case 1: case 3: case 5: case 7: case 8: case 10: case 12:
      return day_;
    case 4: case 6: case 9: case 11:
      return day_ < 30 ? day_ : 30;
    case 2: {
      unsigned int const last = is_leap_year() ? 29 : 28;
      return day_ < last ? day_ : last;
    }
    default:
      return 0;
  }
}

bool date::is_day_constrained() const { return get_days() != day_; }

// Years begin in March, so February's length only matters at a year's end;
// months pair up as 61-day blocks (31 + 30), with August/September and
// December/January breaking the pattern by one day.
unsigned int date::pJulian_day_number() const {
  u32 y = year_;
  u32 m = month_;
  if (m < 3) {
    m += 12;
    y -= 1;  // wraps below year 0; such dates are meaningless but defined
  }
  u32 const k = m - 3;
  u32 const p = k / 2;
  u32 n = y * 365u + y / 4u - y / 100u + y / 400u + p * 61u + (p >= 3 ? 1u : 0u);
  if (k % 2 == 1) n += (p == 3 || p == 4) ? 30u : 31u;
  return n + day_;
}

// No correction for the last day of a 4- or 400-year block: the number of
// 29 February comes back as 1 March of the same year, on purpose.
unsigned int date::pJulian_day_number(unsigned int n) {
  u32 const d = n - 1u;
  u32 const c400 = d / 146097u;
  u32 r = d % 146097u;
  u32 const c100 = r / 36524u;
  r %= 36524u;
  u32 const c4 = r / 1461u;
  r %= 1461u;
  u32 const c1 = r / 365u;
  r %= 365u;
  u32 const t = r + 1u;
  u32 const p = (t - (t > 183u ? 1u : 0u) - 1u) / 61u;
  u32 const u = t - p * 61u - (p > 2u ? 1u : 0u);
  u32 const f = (p == 3u || p == 4u) ? 30u : 31u;
  u32 const s = u > f ? 1u : 0u;
  u32 month = 2u * p + s + 3u;
  u32 year = 400u * c400 + 100u * c100 + 4u * c4 + c1;
  if (month > 12u) {
    month -= 12u;
    year += 1u;
  }
  year_ = year;
  month_ = month;
  day_ = u - f * s;
  return n;
}

date& date::assign(date const& other) {
  year_ = other.year_;
  month_ = other.month_;
  day_ = other.day_;
  return *this;
}
date& date::operator=(date const& other) { return assign(other); }

date& date::plus_assign(date_duration const& d) {
  date moved;
  moved.pJulian_day_number(pJulian_day_number() + static_cast<u32>(d.days()));
  day(moved.day_);
  month(moved.month_);
  year(moved.year_);
  return *this;
}
date& date::operator+=(date_duration const& d) { return plus_assign(d); }

date& date::minus_assign(date_duration const& d) {
  u32 const n = pJulian_day_number();
  if (!(d.days() < static_cast<std::int32_t>(n))) throw std::out_of_range("date value out of valid range");
  date moved;
  moved.pJulian_day_number(n - static_cast<u32>(d.days()));
  day(moved.day_);
  month(moved.month_);
  year(moved.year_);
  return *this;
}
date& date::operator-=(date_duration const& d) { return minus_assign(d); }

date date::UTC_date() { return date_now(&std::gmtime); }
date date::local_date() { return date_now(&std::localtime); }

}  // namespace date_time
}  // namespace system
}  // namespace VEXA_2_10
