// rc_pointer: shares objects that count their own holders.
#include <gtest/gtest.h>

#include "vexa/generic/abilities/reference_count_pointer_ability.hpp"
#include "vexa/memory/pointers/rc_pointer.hpp"

using vexa::memory::pointers::make_rc;
using vexa::memory::pointers::rc_pointer;

namespace {

struct tracked : vexa::generic::abilities::reference_count_pointer_ability<tracked> {
  explicit tracked(int* deaths) : deaths(deaths) {}
  ~tracked() override { ++*deaths; }
  int* deaths;
};

struct derived_tracked : tracked {
  using tracked::tracked;
};

}  // namespace

TEST(RcPointer, CopiesShareOneObjectWhichGoesWithTheLastHolder) {
  int deaths = 0;
  {
    rc_pointer<tracked> a = make_rc<tracked>(&deaths);
    EXPECT_TRUE(a->owned());
    EXPECT_EQ(a.use_count(), 1u);
    {
      rc_pointer<tracked> b = a;
      rc_pointer<tracked> c(b);
      EXPECT_EQ(a.get(), c.get());
      EXPECT_EQ(a.use_count(), 3u);
    }
    EXPECT_EQ(a.use_count(), 1u);
    EXPECT_EQ(deaths, 0);
  }
  EXPECT_EQ(deaths, 1);
}

TEST(RcPointer, AnObjectNotMarkedOwnedIsNeverDeleted) {
  int deaths = 0;
  tracked* not_owned = new tracked(&deaths);
  {
    rc_pointer<tracked> a(not_owned);
    rc_pointer<tracked> b = a;
    EXPECT_EQ(not_owned->reference_count(), 2u);
  }
  EXPECT_EQ(not_owned->reference_count(), 0u);
  EXPECT_EQ(deaths, 0);
  delete not_owned;
}

TEST(RcPointer, AssignmentReleasesTheOldObjectAndSelfAssignmentKeepsTheCount) {
  int deaths = 0;
  rc_pointer<tracked> a = make_rc<tracked>(&deaths);
  rc_pointer<tracked> b = make_rc<tracked>(&deaths);
  rc_pointer<tracked>& alias = a;
  a = alias;
  EXPECT_EQ(a.use_count(), 1u);
  EXPECT_EQ(deaths, 0);

  a = b;
  EXPECT_EQ(deaths, 1) << "a was the last holder of its first object";
  EXPECT_EQ(b.use_count(), 2u);

  rc_pointer<tracked> moved(std::move(a));
  EXPECT_FALSE(a);
  EXPECT_EQ(moved.use_count(), 2u);
  moved.reset();
  b.reset();
  EXPECT_EQ(deaths, 2);
}

TEST(RcPointer, ADerivedPointerConvertsAndDeletesThroughTheVirtualDestructor) {
  int deaths = 0;
  {
    rc_pointer<derived_tracked> d = make_rc<derived_tracked>(&deaths);
    rc_pointer<tracked> base = d;
    EXPECT_EQ(base.use_count(), 2u);
    EXPECT_TRUE(base == d);
  }
  EXPECT_EQ(deaths, 1);
}
