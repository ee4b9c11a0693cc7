#include "vexa/config/enviroment_item.hpp"

#include <gtest/gtest.h>

#include <string>

#include "vexa/config/user_item.hpp"

namespace {

using namespace vexa;

std::string text(config::base_config_item const& item, char const* key) {
  auto const* entry = item.get_value(key);
  return entry == nullptr ? "null" : std::to_string(entry->first) + ":" + entry->second.as_string();
}

TEST(enviroment_item_reading, names_split_at_the_first_equals) {
  char const* envp[] = {"HOME=/home/ann", "Net.Port=81", "EMPTY=", "NOEQUALS", "X=a=b", nullptr};
  config::enviroment_item item(envp);
  EXPECT_EQ(item.get_id(), "enviroment");
  EXPECT_EQ(text(item, "home") + " " + text(item, "net.port") + " " + text(item, "empty") + " " +
                text(item, "noequals") + " " + text(item, "x"),
            "1:/home/ann 1:81 1: null 1:a=b");
  config::config_item_list items;
  item.unload(items);
  EXPECT_EQ(text(item, "home"), "null");
  item.load(items);
  EXPECT_EQ(text(item, "home"), "1:/home/ann");
  EXPECT_EQ(text(config::enviroment_item(nullptr), "home"), "null");
}

TEST(user_item_values, set_keeps_across_load) {
  config::user_item item;
  config::config_item_list items;
  item.set("Window.Width", 640);
  item.set_array("l", generic::varg_list(generic::argument("a")), generic::varg_list(generic::argument("kind", "k")));
  item.set_array("l", generic::varg_list(generic::argument("b"), generic::argument("c")),
                 generic::varg_list(generic::argument(types::variant("unnamed"))));
  EXPECT_TRUE(item.load(items));
  EXPECT_EQ(text(item, "window.width") + " " + text(item, "l") + " " + text(item, "l.1") + " " + text(item, "l.kind"),
            "1:640 3:2 1:c null");  // set_array replaced the old elements and attributes
  item.set_array("m", generic::varg_list(), generic::varg_list(generic::argument("kind", "k")));
  EXPECT_EQ(text(item, "m") + " " + text(item, "m.kind"), "3:0 1:k");
  EXPECT_EQ(item.get_id(), "user item");
  EXPECT_TRUE(item.save(items));
}

}  // namespace
