#include "vexa/generic/varg_list.hpp"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace vexa;
using generic::argument;
using generic::varg_list;

std::string names(varg_list const& list) {
  std::string all;
  for (argument const& a : list) all += (a.has_name() ? a.name() : strings::ustring8("_")) + a.value().as_string() + " ";
  return all;
}

TEST(varg_list_building, names_are_unique_and_a_nil_argument_ends_the_list) {
  varg_list list;
  std::vector<bool> const added = {list.push_back("x", 1), list.push_back("x", 2), list.push_back("", 7),
                                   list.push_back(argument(types::variant(7))), list.push_back(argument(7))};
  EXPECT_EQ(added, (std::vector<bool>{true, false, true, true, true}));
  EXPECT_EQ(names(list), "x1 _7 _7 _7 ");
  EXPECT_TRUE(list != types::nil && varg_list() == types::nil);

  varg_list built(argument("a", 1), argument("b", 2), argument("a", 3), argument(types::variant(4)));
  EXPECT_EQ(names(built), "a1 b2 _4 ");
  EXPECT_EQ(names(varg_list(argument("a", 1), argument(), argument("b", 2))), "a1 ");
  EXPECT_EQ(names(varg_list(argument("a", types::nil), argument("b", 2))), "a b2 ");

  varg_list full(argument(1), argument(2), argument(3), argument(4), argument(5), argument(6), argument(7),
                 argument(8), argument(9), argument(10), argument(11), argument(12), argument(13),
                 argument(14), argument(15), argument(16), argument(17), argument(18), argument(19),
                 argument(20), argument(21), argument(22), argument(23), argument(24), argument(25),
                 argument("z", 26));
  EXPECT_EQ(full.count(), 26u);
  EXPECT_EQ(full["z"].value().as_int(), 26);
}

TEST(varg_list_lookup, by_name_and_by_index) {
  varg_list list(argument("a", 1), argument(types::variant("u")), argument("b", 2));
  EXPECT_EQ(list.at("b").value().as_int(), 2);
  EXPECT_EQ(list[""].value().as_string(), "u");  // the empty name finds the first unnamed argument
  EXPECT_TRUE(list.has_argument("a") && !list.has_argument("A") && list.find("A") == list.end());
  EXPECT_EQ(&list.at("missing"), &varg_list::nil_argument);
  EXPECT_TRUE(list["missing"] == types::nil);

  EXPECT_EQ(list.at(0).name(), "a");
  list[1] = 9;
  varg_list const& view = list;
  EXPECT_EQ(view[1].value().as_int(), 9);
  for (unsigned long index : {3UL, ~0UL}) {
    EXPECT_THROW(view[index], std::out_of_range);
    try {
      list.at(index);
      ADD_FAILURE() << "index " << index;
    } catch (std::out_of_range const& e) { EXPECT_STREQ(e.what(), "vector::_M_range_check"); }
  }
}

TEST(varg_list_removal, erasures_keep_the_order_of_the_rest) {
  varg_list list(argument("a", 1), argument("b", 2), argument("c", 3), argument("d", 4), argument("e", 5));
  EXPECT_EQ(list.erase(9UL), 5UL);
  EXPECT_EQ(list.erase(1UL), 1UL);
  EXPECT_EQ(names(list), "a1 c3 d4 e5 ");
  EXPECT_EQ(list.erase("d")->name(), "e");
  EXPECT_TRUE(list.erase("zz") == list.end());
  EXPECT_EQ(list.erase(list.begin())->name(), "c");
  EXPECT_EQ(names(list), "c3 e5 ");

  varg_list copy(argument("old", 0));
  copy = list;
  copy.erase(copy.begin(), copy.begin() + 1);
  EXPECT_EQ(names(copy), "e5 ");
  EXPECT_EQ(names(list), "c3 e5 ");
  list.erase();
  copy.clear();
  EXPECT_TRUE(list.empty() && copy.empty());
}

}  // namespace
