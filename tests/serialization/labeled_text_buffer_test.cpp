// The labeled text buffer: the text it writes, what parsing gives back,
// label normalisation, overlay, and trees far deeper than the call stack.
#include "vexa/serialization/labeled_text_buffer.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include "serialization/bytes.hpp"
#include "vexa/serialization/serialize_text_buf.hpp"

namespace {

using vexa::serialization::labeled_serialize_buffer;
using vexa::serialization::labeled_text_buffer;
using vexa::types::nil;
using vexa::types::variant;
using serialization_test::hex;

std::string items(std::string text) {
  for (char& c : text)
    if (c == '|') c = '\x01';
  return text;
}

TEST(labeled_text_buffer, writes_in_label_order_and_reads_back_strings) {
  labeled_text_buffer buf;
  buf.add_value("b", 5);
  buf.create_group("a").add_value("c", "x");
  EXPECT_EQ(hex(buf.as_str()), hex(items("2|a |8|1|c|1|x||1|b|1|5|")));

  labeled_text_buffer const parsed(buf.as_str());
  ASSERT_TRUE(parsed.has_group("a"));
  EXPECT_FALSE(parsed.has_label("a ")) << "the marker space is stripped";
  EXPECT_FALSE(parsed.has_value("a"));
  EXPECT_EQ(parsed.retrieve_group("a")->retrieve_value("c").as_string(), "x");
  EXPECT_TRUE(parsed.retrieve_value("b").type() == typeid(std::string));
  EXPECT_EQ(parsed.retrieve_value("b").as_int(), 5);
  EXPECT_EQ(parsed.retrieve_group("z"), nullptr);
  EXPECT_EQ(parsed.retrieve_value("z"), nil);

  labeled_text_buffer both;  // a value and a group under one label: the value first
  both.add_value("g", 1.5);
  both.create_group("g").add_value("k", true);
  both.create_group("empty");  // written as a value, "" for nil
  EXPECT_EQ(hex(both.as_str()), hex(items("5|empty|0||1|g|3|1.5|2|g |8|1|k|1|1||")));
}

TEST(labeled_text_buffer, labels_lose_newlines_returns_and_tabs_at_both_ends) {
  labeled_text_buffer buf;
  buf.add_value("key\t", 1);
  buf.add_value("\nkey\r\n", 2);
  buf.create_group("\tkey").add_value("x", 3);
  buf.add_value(" in\tside", 4);
  EXPECT_EQ(buf.retrieve_value("key").as_int(), 2);
  EXPECT_TRUE(buf.has_group("key\n")) << "look-ups normalise too";
  EXPECT_TRUE(buf.has_label(" in\tside")) << "spaces and inner tabs are kept";
  EXPECT_FALSE(buf.has_label("in\tside"));
}

TEST(labeled_text_buffer, texts_round_trip_exactly) {
  labeled_text_buffer buf;
  buf.add_value(items("with|separator"), items(std::string("bytes|\0|", 8)));
  buf.add_value("nil", variant());
  labeled_text_buffer& outer = buf.create_group("outer group");
  outer.add_value("n", -12L);
  outer.create_group("inner").create_group("leaf ").add_value("deep", 0.25);
  buf.add_value("outer group", 7u);

  std::string const text = buf.as_str();
  labeled_text_buffer back(text);
  EXPECT_EQ(hex(back.as_str()), hex(text));
  EXPECT_EQ(back.retrieve_group("outer group")->retrieve_group("inner")->retrieve_group("leaf ")
                ->retrieve_value("deep").as_double(), 0.25);
  EXPECT_EQ(back.retrieve_value("outer group").as_uint32(), 7u);

  back.assign(back.as_str());  // its own text
  EXPECT_EQ(hex(back.as_str()), hex(text));
  back.assign(back.retrieve_group("outer group")->as_str());  // text owned by one of its groups
  EXPECT_EQ(back.retrieve_value("n").as_int(), -12);
  back.assign(text.data(), -1);
  EXPECT_TRUE(back.is_empty());
}

TEST(labeled_text_buffer, documented_quirks_of_the_text) {
  labeled_text_buffer empty_label;
  empty_label.add_value("\t", 1);  // normalises to the empty label, which sorts first
  empty_label.add_value("a", 2);
  EXPECT_TRUE(empty_label.has_label(""));
  EXPECT_TRUE(labeled_text_buffer(empty_label.as_str()).is_empty()) << "an empty label ends parsing";

  labeled_text_buffer space_label;
  space_label.add_value("x ", items("1|a|1|b|"));
  labeled_text_buffer const back(space_label.as_str());
  EXPECT_EQ(back.retrieve_group("x")->retrieve_value("a").as_string(), "b") << "read back as a group";

  labeled_text_buffer empty_group;
  empty_group.create_group("g");
  EXPECT_TRUE(empty_group.has_label("g"));
  EXPECT_FALSE(empty_group.has_group("g"));
  EXPECT_NE(empty_group.retrieve_group("g"), nullptr);
}

TEST(labeled_text_buffer, overlay_replaces_values_and_merges_groups) {
  labeled_text_buffer base;
  base.add_value("keep", 1);
  base.add_value("replace", 2);
  base.create_group("g").add_value("inner", "old");
  base.create_group("g").add_value("only base", 3);

  labeled_text_buffer top;
  top.add_value("replace", 20);
  top.add_value("keep", variant());  // nil replaces nothing
  top.create_group("g").add_value("inner", "new");
  top.create_group("g").create_group("h").add_value("added", 4);
  top.create_group("untouched");  // empty: adds nothing

  base.overlay(top);
  EXPECT_EQ(base.retrieve_value("keep").as_int(), 1);
  EXPECT_EQ(base.retrieve_value("replace").as_int(), 20);
  labeled_text_buffer const* g = base.retrieve_group("g");
  EXPECT_EQ(g->retrieve_value("inner").as_string(), "new");
  EXPECT_EQ(g->retrieve_value("only base").as_int(), 3);
  EXPECT_EQ(g->retrieve_group("h")->retrieve_value("added").as_int(), 4);
  EXPECT_FALSE(base.has_label("untouched"));

  base.overlay(*base.retrieve_group("g"));  // one of its own groups
  EXPECT_TRUE(base.retrieve_group("h")->has_value("added"));
  base.retrieve_group("g")->overlay(base);  // its own parent
  EXPECT_EQ(base.retrieve_group("g")->retrieve_group("g")->retrieve_value("inner").as_string(), "new");
}

TEST(labeled_text_buffer, copies_are_deep_and_independent) {
  labeled_text_buffer buf;
  buf.create_group("g").add_value("v", 1);
  labeled_text_buffer copy(buf);
  std::unique_ptr<labeled_text_buffer> clone(buf.clone()), fresh(buf.create());
  buf.create_group("g").add_value("v", 2);
  EXPECT_EQ(copy.retrieve_group("g")->retrieve_value("v").as_int(), 1);
  EXPECT_EQ(clone->retrieve_group("g")->retrieve_value("v").as_int(), 1);
  EXPECT_TRUE(fresh->is_empty());

  labeled_text_buffer assigned;
  assigned.assign(static_cast<labeled_serialize_buffer const&>(buf));
  EXPECT_EQ(assigned.as_str(), buf.as_str());
  assigned = *assigned.retrieve_group("g");  // from one of its own groups
  EXPECT_EQ(assigned.retrieve_value("v").as_int(), 2);
}

// 100,000 nested groups: writing, parsing, copying, overlaying and
// destroying all run without using the call stack per level.
TEST(labeled_text_buffer, deep_nesting_needs_no_call_stack) {
  constexpr int depth = 100000;
  labeled_text_buffer buf;
  labeled_text_buffer* level = &buf;
  for (int i = 0; i < depth; ++i) level = &level->create_group("g");
  level->add_value("bottom", depth);

  std::string const text = buf.as_str();
  labeled_text_buffer back(text);
  labeled_text_buffer const* walk = &back;
  int levels = 0;
  for (; walk->has_group("g"); ++levels) walk = walk->retrieve_group("g");
  EXPECT_EQ(levels, depth);
  EXPECT_EQ(walk->retrieve_value("bottom").as_int(), depth);
  labeled_text_buffer copy(back);
  copy.overlay(buf);
  EXPECT_EQ(copy.as_str(), text);
}

// Crafted texts: a string announced where the text has ended raises (the
// entries read so far stay); random bytes never crash or hang. (Random texts
// need not round-trip: empty labels and empty groups change on the way.)
TEST(labeled_text_buffer, crafted_and_random_texts) {
  labeled_text_buffer buf;
  EXPECT_THROW(buf.assign(items("1|a|1|b|1|c|5")), std::out_of_range);
  EXPECT_EQ(buf.retrieve_value("a").as_string(), "b");
  buf.assign(items("1|a|-8|"));  // a negative length would step back to the start
  EXPECT_TRUE(buf.has_label("a"));

  static char const alphabet[] = "\x01\x01\x01\x01 -0123456789ab";
  std::mt19937 rng(3);
  for (int round = 0; round < 3000; ++round) {
    std::string text(rng() % 40, '\0');
    for (char& c : text) c = alphabet[rng() % (sizeof alphabet - 1)];
    try {
      labeled_text_buffer const parsed(text);
      labeled_text_buffer(parsed.as_str()).as_str();
    } catch (std::out_of_range const&) {
    }
  }
}

// Groups are parsed in place, as ranges of the one text. Reading each group's
// text as a string of its own and assigning it to the group (the plain way)
// must give the same tree, and raise where it raises, for any text.
void parse_group_by_group(labeled_text_buffer& target, std::string const& text) {
  target.assign(std::string());
  vexa::serialization::serialize_text_buf in(text);
  while (!in.at_end()) {
    std::string label = in.read_string();
    if (label.empty()) break;
    if (label.back() != ' ') {
      target.add_value(label, variant(in.read_string()));
      continue;
    }
    label.pop_back();
    labeled_text_buffer& group = target.create_group(label);
    parse_group_by_group(group, in.read_string());
  }
}

TEST(labeled_text_buffer, parsing_in_place_equals_parsing_group_by_group) {
  static char const alphabet[] = "\x01\x01\x01\x01 -0123456789ab\t";
  std::mt19937 rng(7);
  for (int round = 0; round < 20000; ++round) {
    std::string text(rng() % 50, '\0');
    for (char& c : text) c = alphabet[rng() % (sizeof alphabet - 1)];
    labeled_text_buffer in_place, plain;
    bool in_place_raised = false, plain_raised = false;
    try {
      in_place.assign(text);
    } catch (std::out_of_range const&) {
      in_place_raised = true;
    }
    try {
      parse_group_by_group(plain, text);
    } catch (std::out_of_range const&) {
      plain_raised = true;
    }
    ASSERT_EQ(in_place_raised, plain_raised) << hex(text);
    ASSERT_EQ(hex(in_place.as_str()), hex(plain.as_str())) << hex(text);
  }
}

}  // namespace
