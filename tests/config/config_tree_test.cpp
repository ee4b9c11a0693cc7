#include "vexa/config/config_tree.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace vexa;
using config::config_tree;
using strings::ustring8;

// An entry as "flags value", or "null".
std::string entry(config_tree const& t, ustring8 const& key) {
  auto const* e = t.get_node(key);
  return e == nullptr ? "null" : std::to_string(e->first) + " " + e->second.as_string();
}

std::string pairs(config_tree::pair_array const& list) {
  std::string all;
  for (auto const& p : list) all += p.first + "=" + std::to_string(p.second.first) + ":" + p.second.second.as_string() + " ";
  return all;
}

std::string dumped(config_tree& t, int depth = 0) {
  std::ostringstream out;
  t.dump(out, depth);
  return out.str();
}

TEST(config_tree_keys, case_and_separators_name_one_node) {
  config_tree t;
  t.set_node("A.B", "v", 0);
  EXPECT_EQ(entry(t, "a.b"), "1 v");
  EXPECT_EQ(entry(t, "a/B"), "1 v");
  EXPECT_EQ(entry(t, "A\\b"), "1 v");
  EXPECT_EQ(entry(t, "a.b."), "1 v");   // a separator right before the end ends the key
  EXPECT_EQ(entry(t, "a"), "0 ");       // only passed through
  EXPECT_EQ(entry(t, "a.c"), "null");
  EXPECT_EQ(entry(t, "a.b.c"), "null");
  EXPECT_EQ(entry(t, ""), "null");      // the empty key names the child ""
  t.set_node("", 1, 0);
  t.set_node("x..y", 2, 0);             // an empty middle component
  EXPECT_EQ(entry(t, ""), "1 1");
  EXPECT_EQ(entry(t, "X./Y"), "1 2");

  t.set_node("list", 0, 2);
  t.set_node("flags", 0, 0xF0);
  EXPECT_EQ(entry(t, "list"), "3 0");
  EXPECT_EQ(entry(t, "flags"), "241 0");
  t.set_node("a", "top", 0);            // a value beside children keeps them
  EXPECT_EQ(entry(t, "a"), "1 top");
  EXPECT_EQ(entry(t, "a.b"), "1 v");

  ustring8 head = "old", rest = "old";
  t.parse_string("Net.Sub/X", head, rest);
  EXPECT_EQ(head + "|" + rest, "net|Sub/X");
  t.parse_string("ABC", head, rest);
  EXPECT_EQ(head + "|" + rest, "abc|");
  t.parse_string("\\x", head, rest);
  EXPECT_EQ(head + "|" + rest, "|x");
}

TEST(config_tree_arrays, elements_stop_at_the_first_gap) {
  config_tree t;
  for (char const* k : {"l.0", "l.1", "l.3", "l.name"}) t.set_node(k, ustring8(k), 0);
  config_tree::pair_array out;
  t.get_array("l", out);
  EXPECT_EQ(pairs(out), "");  // no array flag yet
  t.set_node("l", 3, 2);
  t.get_array("L", out);
  t.get_array("missing", out);
  EXPECT_EQ(pairs(out), "0=1:l.0 1=1:l.1 ");
}

TEST(config_tree_pairs, children_in_name_order_and_depth_first) {
  config_tree t;
  for (char const* k : {"s.b", "s.a.y", "s.a", "s.a.x.z", "s.c", "other"}) t.set_node(k, ustring8(k), 0);
  config_tree::pair_array flat, deep;
  t.get_value_pair_array("s", flat, false, "p:");
  EXPECT_EQ(pairs(flat), "p:a=1:s.a p:b=1:s.b p:c=1:s.c ");
  t.get_value_pair_array("s", deep, true, "s.");
  EXPECT_EQ(pairs(deep), "s.a=1:s.a s.a.x=0: s.a.x.z=1:s.a.x.z s.a.y=1:s.a.y s.b=1:s.b s.c=1:s.c ");
  t.get_value_pair_array("nope", deep, true, "");
  EXPECT_EQ(deep.size(), 6u);
}

TEST(config_tree_dump, exact_text) {
  config_tree t;
  EXPECT_EQ(dumped(t), "end\n");
  EXPECT_EQ(dumped(t, 1), "|\t\tend\n");
  t.set_node("a", "v", 0);
  EXPECT_EQ(dumped(t), "a : 1 v\n|\nend\n");
  t.set_node("b.c", 7, 4);
  EXPECT_EQ(dumped(t),
            "a : 1 v\n|\n"
            "b : true\n|---------------\\\n"
            "|\t\tc : 5 7\n|\t\t|\n|\t\tend\n"
            "end\n");
  std::ostringstream via_operator;
  via_operator << t;
  EXPECT_EQ(via_operator.str(), dumped(t));
}

TEST(config_tree_copies, are_deep_and_independent) {
  config_tree source;
  source.set_node("a.b", 1, 0);
  config_tree copy(source);
  copy.set_node("a.b", 2, 0);
  copy.set_node("a.c", 3, 0);
  EXPECT_EQ(entry(source, "a.b"), "1 1");
  EXPECT_EQ(entry(source, "a.c"), "null");
  EXPECT_EQ(entry(copy, "a.b"), "1 2");

  memory::pointers::rc_pointer<config_tree> clone(source.clone());
  EXPECT_TRUE(clone->owned());
  EXPECT_EQ(clone->reference_count(), 1u);
  EXPECT_EQ(entry(*clone, "a.b"), "1 1");

  // Assigning a subtree of the tree to the tree itself.
  config_tree nested;
  nested.set_node("x.y.z", 9, 0);
  nested = *nested.children().begin()->second;
  EXPECT_EQ(entry(nested, "y.z"), "1 9");
  EXPECT_EQ(entry(nested, "x"), "null");

  nested.erase();
  EXPECT_TRUE(nested.children().empty());
  EXPECT_EQ(nested.entry().first, 0u);
}

TEST(config_tree_copies, an_empty_child_pointer_throws_the_bare_text) {
  using map_type = config_tree::children_type;
  map_type broken;
  broken.emplace("x", memory::pointers::rc_pointer<config_tree>());
  try {
    map_type copy(broken);
    ADD_FAILURE() << "no throw";
  } catch (char const* text) {
    EXPECT_STREQ(text, "unreferanced object");
  }
  map_type target;
  target.emplace("old", memory::pointers::make_rc<config_tree>());
  EXPECT_THROW(target = broken, char const*);
  EXPECT_TRUE(target.empty());  // emptied before the copy

  map_type good;
  good.emplace("y", memory::pointers::make_rc<config_tree>());
  target = good;
  ASSERT_EQ(target.size(), 1u);
  EXPECT_NE(target.begin()->second, good.begin()->second);
}

TEST(config_tree_limits, a_million_components_in_bounded_stack) {
  ustring8 key;
  for (int i = 0; i < 1000000; ++i) key += i == 0 ? "k" : ".k";
  config_tree t;
  t.set_node(key, "deep", 0);
  EXPECT_EQ(entry(t, key), "1 deep");
  config_tree copy(t);
  config_tree::pair_array below;
  copy.get_value_pair_array(key.substr(0, key.size() - 4), below, true, "");  // the last two levels
  EXPECT_EQ(pairs(below), "k=0: k.k=1:deep ");
  t = copy;
  EXPECT_EQ(entry(t, key), "1 deep");
}

}  // namespace
