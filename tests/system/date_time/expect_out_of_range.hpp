// Checks that a calendar operation throws std::out_of_range with one exact
// text, printing what was thrown instead on mismatch.
#ifndef VEXA_TESTS_SYSTEM_DATE_TIME_EXPECT_OUT_OF_RANGE_HPP
#define VEXA_TESTS_SYSTEM_DATE_TIME_EXPECT_OUT_OF_RANGE_HPP

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace vexa_test {

template <typename Operation>
::testing::AssertionResult throws_out_of_range(Operation&& operation, std::string const& text) {
  try {
    operation();
  } catch (std::out_of_range const& e) {
    if (e.what() == text) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "threw \"" << e.what() << "\", expected \"" << text << "\"";
  } catch (...) {
    return ::testing::AssertionFailure() << "threw something other than std::out_of_range";
  }
  return ::testing::AssertionFailure() << "threw nothing, expected \"" << text << "\"";
}

}  // namespace vexa_test

#endif  // VEXA_TESTS_SYSTEM_DATE_TIME_EXPECT_OUT_OF_RANGE_HPP
