#include "vexa/generic/argument.hpp"

#include <gtest/gtest.h>

namespace {

using namespace vexa;
using generic::argument;

TEST(argument, nil_means_unnamed_and_holding_nil) {
  for (argument const& a : {argument(), argument(types::nil), argument(types::variant())}) EXPECT_TRUE(a == types::nil);
  EXPECT_TRUE(argument("x", types::nil) != types::nil);  // named: a real, empty argument
  EXPECT_TRUE(argument(types::variant(0)) != types::nil);
  EXPECT_FALSE(argument(types::variant(1)).has_name());
}

TEST(argument, assignment_replaces_value_or_both_and_shares_the_value) {
  argument a("n", 1), b(types::variant(3.5));
  a = 2;
  EXPECT_EQ(a.name() + a.value().as_string(), "n2");
  a.assign("m", "text");
  EXPECT_EQ(a.name() + a.value().as_string(), "mtext");
  b = a;
  argument& self = b;
  b = self;
  EXPECT_EQ(b.name(), "m");
  EXPECT_EQ(b.value().value_object(), a.value().value_object());
  EXPECT_EQ(b.value().value_object()->reference_count(), 2u);
}

}  // namespace
