#include "vexa/system/date_time/time_duration.hpp"

#include <gtest/gtest.h>

namespace dt = vexa::system::date_time;

namespace {

TEST(SystemTimeDuration, PartsKeepTheSignAndAreNotReducedToADay) {
  unsigned const minus1 = 4294967295u;
  struct {
    char const* name;
    dt::time_duration d;
    long total_ms;
    unsigned hour, minute, second, millisecond;
  } const cases[] = {
      {"25 hours", dt::time_duration(25, 0, 0, 0), 90000000, 25, 0, 0, 0},
      {"mixed", dt::time_duration(1, 61, 59, 1234), 7320234, 2, 2, 0, 234},
      {"-1500 ms", dt::time_duration(0, 0, 0, -1500), -1500, 0, 0, minus1, 4294966796u},
      {"-90 minutes", dt::time_duration(0, -90, 0, 0), -5400000, minus1, 4294967266u, 0, 0},
  };
  for (auto const& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(c.d.total_milliseconds(), c.total_ms);
    EXPECT_EQ(c.d.hour(), c.hour);
    EXPECT_EQ(c.d.minute(), c.minute);
    EXPECT_EQ(c.d.second(), c.second);
    EXPECT_EQ(c.d.millisecond(), c.millisecond);
    EXPECT_EQ(c.d.is_negative(), c.total_ms < 0);
  }
  EXPECT_DOUBLE_EQ(dt::time_duration(0, 90, 0, 0).total_hours(), 1.5);
  EXPECT_DOUBLE_EQ(dt::time_duration(0, 0, 0, -500).total_seconds(), -0.5);
}

TEST(SystemTimeDuration, WholeSecondsWrapIn32BitsTheCountIn64) {
  // 600 hours is 2,160,000,000 ms: past the 32-bit signed range, so it wraps.
  EXPECT_EQ(dt::time_duration(600, 0, 0, 0).total_milliseconds(), 2160000000L - 4294967296L);
  EXPECT_EQ(dt::time_duration(0, 0, 0, 2160000000L).total_milliseconds(), 2160000000L);
  EXPECT_EQ(dt::time_duration(0, 0, 0, 4294967296L + 7).millisecond(), 7u);  // low 32 bits only
  EXPECT_EQ(dt::time_duration(2147483647, 2147483647, 2147483647, 9223372036854775807L).total_milliseconds(),
            9223372036851114807L);  // -3661000 from the 32-bit part, then a 64-bit wrap
  dt::time_duration big(0, 0, 0, 9223372036854775807L);
  big += dt::time_duration(0, 0, 0, 1);
  EXPECT_TRUE(big.is_negative());
  EXPECT_EQ(big.hour(), static_cast<unsigned>(static_cast<unsigned long>(-2562047788015L)));
  big -= dt::time_duration(0, 0, 0, 1);
  EXPECT_EQ(big.total_milliseconds(), 9223372036854775807L);
}

}  // namespace
