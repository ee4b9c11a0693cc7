#include "vexa/config/commandline_item.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace vexa;
using config::commandline_item;

std::string dumped(config::base_config_item& item) {
  std::ostringstream out;
  item.dump(out);
  return out.str();
}

// The item's values as "key=value" for each valued node, name order.
std::string values(config::base_config_item const& item) {
  config::config_tree::pair_array all;
  for (auto const& top : item.tree().children()) {
    all.emplace_back(top.first, top.second->entry());
    item.tree().get_value_pair_array(top.first, all, true, top.first + ".");
  }
  std::string text;
  for (auto const& p : all) {
    if (p.second.first != 0) text += p.first + "=" + p.second.second.as_string() + " ";
  }
  return text;
}

TEST(commandline_item_reading, every_argument_form) {
  char const* argv[] = {"/usr/bin/tool", "--Net.Port=8080", "-v", "level=3", "in.txt", "--list[]=a,b,,c,",
                        "-", "--=x", "--name=John Smith", "--expr==5", "--", "--late=1", nullptr};
  commandline_item item(12, argv);
  EXPECT_EQ(values(item),
            "application.name=tool application.name.raw=/usr/bin/tool arguments=4 "
            "arguments.0=in.txt arguments.1=- arguments.2=--=x arguments.3=--late=1 expr==5 level=3 list=4 "
            "list.0=a list.1=b list.2= list.3=c name=John Smith net.port=8080 v=true ");
}

TEST(commandline_item_reading, degenerate_vectors) {
  char const* only_name[] = {"tool"};
  char const* with_null[] = {nullptr, nullptr, "-x"};
  EXPECT_EQ(values(commandline_item(0, nullptr)), "");
  EXPECT_EQ(values(commandline_item(-3, only_name)), "");
  EXPECT_EQ(values(commandline_item(1, only_name)), "application.name=tool application.name.raw=tool ");
  EXPECT_EQ(values(commandline_item(3, with_null)), "x=true ");
}

TEST(commandline_item_reading, load_starts_again_and_unload_empties) {
  char const* argv[] = {"tool", "-a=1"};
  commandline_item item(2, argv);
  config::config_item_list items;
  item.set("extra", 1);
  EXPECT_TRUE(item.load(items));
  EXPECT_EQ(values(item), "a=1 application.name=tool application.name.raw=tool ");
  item.unload(items);
  EXPECT_EQ(dumped(item), "object : command line\nend\n");

  memory::pointers::rc_pointer<config::base_config_item> fresh(item.create());
  EXPECT_EQ(fresh->get_id(), "command line");
  EXPECT_EQ(values(*fresh), "");
}

TEST(make_key_value, splits_at_the_first_equals_outside_quotes) {
  struct split_case {
    char const* text;
    bool found;
    char const* key;
    char const* value;
  };
  std::vector<split_case> const cases = {
      {"net.port = 80", true, "net.port", " 80"},
      {"verbose", false, "", ""},
      {"a==b", true, "a", "=b"},
      {"a+=b", true, "a+", "b"},
      {"\"x=y\"=z", true, "x=y", "z"},
      {"k\t[] =a,b", true, "k[]", "a,b"},
      {"=", true, "", ""},
  };
  for (auto const& c : cases) {
    strings::ustring8 key = "old", value = "old";
    EXPECT_EQ(config::base_config_item::make_key_value(c.text, key, value), c.found) << c.text;
    EXPECT_EQ(key + "|" + value, std::string(c.key) + "|" + c.value) << c.text;
  }
}

}  // namespace
