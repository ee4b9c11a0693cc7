#include "vexa/generic/argument.hpp"

#include <gtest/gtest.h>

namespace {

using namespace vexa;
using generic::argument;

TEST(argument, nil_means_unnamed_and_holding_nil) {
  EXPECT_TRUE(argument() == types::nil);
  EXPECT_TRUE(argument(types::nil) == types::nil);
  EXPECT_TRUE(argument(types::variant()) == types::nil);
  EXPECT_TRUE(argument("x", types::nil) != types::nil);  // named: a real, empty argument
  EXPECT_TRUE(argument(types::variant(0)) != types::nil);
  EXPECT_FALSE(argument(types::variant(1)).has_name());
}

TEST(argument, assignment_replaces_value_or_both) {
  argument a("n", 1);
  a = 2;
  EXPECT_EQ(a.name(), "n");
  EXPECT_EQ(a.value().as_int(), 2);

  a.assign("m", "text");
  EXPECT_EQ(a.name(), "m");
  EXPECT_EQ(a.value().as_string(), "text");

  argument b(types::variant(3.5));
  b = a;
  EXPECT_EQ(b.name(), "m");
  EXPECT_EQ(b.value().value_object(), a.value().value_object());  // the value is shared, not copied
  argument& self = b;
  b = self;
  EXPECT_EQ(b.value().value_object()->reference_count(), 2u);

  b.name("");
  b.value(types::variant());
  EXPECT_TRUE(b == types::nil);
}

}  // namespace
