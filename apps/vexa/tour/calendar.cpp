// Tour section: the calendar's rules a user must know (system::date_time).
#include <cstdio>
#include <ostream>
#include <stdexcept>
#include <string>

#include "tour/section.hpp"
#include "vexa/system/date_time/arithmetic.hpp"
#include "vexa/system/date_time/date.hpp"
#include "vexa/system/date_time/date_time.hpp"
#include "vexa/system/date_time/time.hpp"

namespace {

namespace dt = vexa::system::date_time;

std::string text(dt::date const& d) {
  static char const* const names[] = {"?",   "Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  return std::to_string(d.day()) + " " + names[d.month() <= 12 ? d.month() : 0] + " " + std::to_string(d.year());
}

std::string text(dt::time const& t) {
  char out[16];
  std::snprintf(out, sizeof out, "%02u:%02u:%02u.%03u", t.hour(), t.minute(), t.second(), t.millisecond());
  return out;
}

std::string text(dt::date_time_t const& v) { return text(v.date()) + " " + text(v.time()); }

// One step, shown with its result or the out_of_range it throws.
template <typename Value, typename Step>
void show_step(std::ostream& out, std::string const& label, Value value, Step step) {
  out << "  " << label << " = ";
  try {
    step(value);
    out << text(value) << "\n";
  } catch (std::out_of_range const& e) {
    out << "throws \"" << e.what() << "\"\n";
  }
}

void show(std::ostream& out) {
  dt::date feb(31, 2, 2023);
  out << "A date stores its day checked against 31 only, and day() clamps it to the month,\n"
         "so day and month can be set in either order:\n"
      << "  date(31, 2, 2023): day() = " << feb.day() << ", is_day_constrained() = " << std::boolalpha
      << feb.is_day_constrained();
  feb.month(3);
  out << "; after month(3): day() = " << feb.day() << "\n";

  out << "\nDate arithmetic never produces 29 February: that day comes out as 1 March:\n";
  show_step(out, "28 Feb 2008 + 1 day", dt::date(28, 2, 2008), [](dt::date& d) { d += dt::date_duration(1); });
  show_step(out, "29 Feb 2008 + 0 days", dt::date(29, 2, 2008), [](dt::date& d) { d += dt::date_duration(0); });
  show_step(out, "1 Mar 2024 - 1 day", dt::date(1, 3, 2024), [](dt::date& d) { d -= dt::date_duration(1); });
  show_step(out, "31 Dec 2007 + 1 day", dt::date(31, 12, 2007), [](dt::date& d) { d += dt::date_duration(1); });
  show_step(out, "1 Mar 0 - 1 day", dt::date(1, 3, 0), [](dt::date& d) { d -= dt::date_duration(1); });

  out << "\nA time folds sums into one day, down to one day below midnight:\n";
  show_step(out, "23:59:59.999 + 1 ms", dt::time(23, 59, 59, 999),
            [](dt::time& t) { t += dt::time_duration(0, 0, 0, 1); });
  show_step(out, "00:00 - 1 ms", dt::time(), [](dt::time& t) { t -= dt::time_duration(0, 0, 0, 1); });
  show_step(out, "12:00 + 243 hours", dt::time(12, 0, 0, 0),
            [](dt::time& t) { t += dt::time_duration(243, 0, 0, 0); });
  show_step(out, "00:00 - 25 hours", dt::time(), [](dt::time& t) { t -= dt::time_duration(25, 0, 0, 0); });
  dt::time_duration const day_and_hour(25, 0, 0, 0), negative(0, 0, 0, -1500);
  out << "  time_duration(25, 0, 0, 0).hour() = " << day_and_hour.hour() << " (not modulo 24)\n"
      << "  time_duration(0, 0, 0, -1500): second() = " << static_cast<int>(negative.second())
      << ", millisecond() = " << static_cast<int>(negative.millisecond())
      << " (signed parts, returned as unsigned bit patterns)\n";

  out << "\nA date_time_t ignores date durations, and a time duration over 23 hours first\n"
         "sets the day of the month to hours % 24, then moves the date by that many days:\n";
  dt::date_time_t const start(dt::date(10, 5, 2024), dt::time(8, 0, 0, 0));
  out << "  start: " << text(start) << "\n";
  show_step(out, "start + 5 days", start, [](dt::date_time_t& v) { v += dt::date_duration(5); });
  show_step(out, "start + 23 hours", start, [](dt::date_time_t& v) { v += dt::time_duration(23, 0, 0, 0); });
  show_step(out, "start + 25 hours", start, [](dt::date_time_t& v) { v += dt::time_duration(25, 0, 0, 0); });
  show_step(out, "start + 48 hours", start, [](dt::date_time_t& v) { v += dt::time_duration(48, 0, 0, 0); });
  show_step(out, "start.date() + 5 days", start, [](dt::date_time_t& v) { v.date() += dt::date_duration(5); });
}

vexa_cli::tour::registrar const section(40, "The calendar", show);

}  // namespace
