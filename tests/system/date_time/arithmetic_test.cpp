#include "vexa/system/date_time/arithmetic.hpp"

#include <gtest/gtest.h>

#include "system/date_time/expect_out_of_range.hpp"

namespace dt = vexa::system::date_time;

namespace {

TEST(SystemDateTimeArithmetic, DayCountsWrapIn32Bits) {
  EXPECT_EQ((dt::date_duration(2) - dt::date_duration(3)).days(), -1);
  EXPECT_EQ(dt::plus(dt::date_duration(2147483647), dt::date_duration(1)).days(), -2147483647 - 1);
  EXPECT_EQ(dt::minus(dt::date_duration(-2147483647 - 1), dt::date_duration(1)).days(), 2147483647);
}

TEST(SystemDateTimeArithmetic, TimesAndDurations) {
  EXPECT_EQ((dt::time(8, 0, 0, 0) - dt::time(9, 30, 0, 0)).total_milliseconds(), -5400000);
  EXPECT_EQ(dt::minus(dt::time(0, 0, 1, 0), dt::time(23, 59, 59, 999)).total_milliseconds(), -86398999);
  EXPECT_EQ((dt::time_duration(1, 0, 0, 0) + dt::time_duration(0, 30, 0, 0)).total_minutes(), 90.0);
  dt::time const eleven(23, 0, 0, 0);
  dt::time_duration const two_hours(2, 0, 0, 0);
  EXPECT_EQ((eleven + two_hours).hour(), 1u);
  EXPECT_EQ((two_hours + eleven).hour(), 1u);
  EXPECT_EQ(dt::minus(dt::time(), dt::time_duration(0, 0, 0, 1)).millisecond(), 999u);
  EXPECT_EQ(eleven.hour(), 23u);  // the operands are untouched
  EXPECT_TRUE(vexa_test::throws_out_of_range([] { dt::time() - dt::time_duration(25, 0, 0, 0); },
                                             "Hour value out of valid range"));
}

}  // namespace
