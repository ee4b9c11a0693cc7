// shared_pointer: shared ownership of objects without a count of their own.
#include <gtest/gtest.h>

#include "vexa/memory/pointers/shared_pointer.hpp"

using vexa::memory::pointers::shared_pointer;

namespace {

struct tracked {
  explicit tracked(int* deaths) : deaths(deaths) {}
  ~tracked() { ++*deaths; }
  int* deaths;
};

}  // namespace

TEST(SharedPointer, TheObjectGoesWithTheLastCopy) {
  int deaths = 0;
  shared_pointer<tracked> a(new tracked(&deaths));
  {
    shared_pointer<tracked> b = a;
    shared_pointer<tracked> c;
    c = b;
    EXPECT_EQ(a.use_count(), 3u);
    EXPECT_TRUE(c == a);
  }
  EXPECT_EQ(a.use_count(), 1u);
  EXPECT_EQ(deaths, 0);
  a.reset(new tracked(&deaths));
  EXPECT_EQ(deaths, 1);
  a.reset();
  EXPECT_EQ(deaths, 2);
  EXPECT_EQ(a.use_count(), 0u);
  EXPECT_FALSE(a);
}

TEST(SharedPointer, SelfAssignmentAndMovesKeepOneOwner) {
  int deaths = 0;
  shared_pointer<tracked> a(new tracked(&deaths));
  shared_pointer<tracked>& alias = a;
  a = alias;
  EXPECT_EQ(a.use_count(), 1u);
  shared_pointer<tracked> b(std::move(a));
  EXPECT_FALSE(a);
  EXPECT_EQ(b.use_count(), 1u);
  EXPECT_EQ(deaths, 0);
}
