// The exception tree: its own root, raise-site records, copies.
#include <cstring>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/exceptions/runtime_error.hpp"

namespace ex = vexa::exceptions;

namespace {

// Throws `E` and reports which of the handlers below caught it.
template <class E>
std::string caught_by() {
  try {
    throw E("message", 17, "generic/convert/str_to_x", "strtointx");
  } catch (std::exception const&) {
    return "std::exception";
  } catch (ex::runtime_error const&) {
    return "runtime_error";
  } catch (ex::logic_error const&) {
    return "logic_error";
  } catch (ex::exception const&) {
    return "exception";
  }
}

}  // namespace

TEST(Exception, EachLeafIsCaughtByItsBaseAndNeverByTheStandardRoot) {
  EXPECT_EQ(caught_by<ex::runtime_error>(), "runtime_error");
  EXPECT_EQ(caught_by<ex::overflow_error>(), "runtime_error");
  EXPECT_EQ(caught_by<ex::underflow_error>(), "runtime_error");
  EXPECT_EQ(caught_by<ex::logic_error>(), "logic_error");
  EXPECT_EQ(caught_by<ex::out_of_range>(), "logic_error");
  EXPECT_EQ(caught_by<ex::length_error>(), "logic_error");
  EXPECT_EQ(caught_by<ex::invalid_argument_value>(), "logic_error");
}

TEST(Exception, CaughtAsTheRootItReportsItsMessageAndRaiseSite) {
  try {
    throw ex::overflow_error("Number value is to large", 123, "generic/convert/str_to_x",
                             "strtointx");
  } catch (ex::exception const& e) {
    EXPECT_STREQ(e.get_message(), "Number value is to large");
    EXPECT_EQ(e.get_state().line, 123u);
    EXPECT_STREQ(e.get_state().file, "generic/convert/str_to_x");
    EXPECT_STREQ(e.get_state().function, "strtointx");
    EXPECT_NE(dynamic_cast<ex::overflow_error const*>(&e), nullptr);
  }
}

TEST(Exception, CopiesCarryLineFileFunctionAndMessage) {
  ex::invalid_argument_value original("Not valid code_page type", 42, "strings/code_page",
                                      "to_system_type");
  ex::invalid_argument_value copy(original);
  EXPECT_STREQ(copy.get_message(), original.get_message());
  EXPECT_NE(copy.get_message(), original.get_message()) << "the copy owns its own text";
  EXPECT_EQ(copy.get_state().line, 42u);
  EXPECT_STREQ(copy.get_state().file, "strings/code_page");
  EXPECT_STREQ(copy.get_state().function, "to_system_type");

  ex::underflow_error rebuilt("Number value is to small", original.get_state());
  EXPECT_STREQ(rebuilt.get_state().function, "to_system_type");
  EXPECT_STREQ(rebuilt.get_message(), "Number value is to small");
}

TEST(ExceptionState, TextsUpTo255BytesAreKeptWholeLongerOnesAreCut) {
  std::string const exact(255, 'f');
  std::string const longer(300, 'g');
  ex::exception::state whole(1, exact.c_str(), exact.c_str());
  EXPECT_EQ(std::string(whole.file), exact);
  EXPECT_EQ(std::string(whole.function), exact);

  ex::exception::state cut(1, longer.c_str(), longer.c_str());
  EXPECT_EQ(std::string(cut.file), std::string(255, 'g'));
  EXPECT_EQ(std::string(cut.function), std::string(255, 'g'));
}

TEST(ExceptionState, NullPointersLeaveTheEmptyText) {
  ex::exception::state where(7, nullptr, nullptr);
  EXPECT_EQ(where.line, 7u);
  EXPECT_STREQ(where.file, "");
  EXPECT_STREQ(where.function, "");

  ex::logic_error e("", 0, nullptr, "f");
  EXPECT_STREQ(e.get_message(), "");
  EXPECT_STREQ(e.get_state().file, "");
  EXPECT_STREQ(e.get_state().function, "f");
}
