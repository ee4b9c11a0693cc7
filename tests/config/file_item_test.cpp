#include "vexa/config/file_item.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "system/temp_directory.hpp"
#include "vexa/config/commandline_item.hpp"
#include "vexa/config/user_item.hpp"
#include "vexa/system/file.hpp"

namespace {

using namespace vexa;
using config::file_item;
using strings::ustring8;

// Every node of the item with a flag word, as "key=flags:value" lines in name
// order, so one comparison shows the whole tree.
std::string listing(config::base_config_item const& item) {
  config::config_tree::pair_array all;
  for (auto const& top : item.tree().children()) {
    all.emplace_back(top.first, top.second->entry());
    item.tree().get_value_pair_array(top.first, all, true, top.first + ".");
  }
  std::string text;
  for (auto const& p : all) {
    if (p.second.first != 0) text += p.first + "=" + std::to_string(p.second.first) + ":" + p.second.second.as_string() + "\n";
  }
  return text;
}

class file_item_test : public ::testing::Test {
 protected:
  // Writes `content` to a file in the test's directory and reads it.
  std::string parsed(ustring8 const& content) {
    std::string const path = dir / "t.cfg";
    EXPECT_EQ(system::store_file(ustring8(path), content), 0);
    file_item item(path);
    item.load_file();
    return listing(item);
  }
  vexa_test::temp_directory dir;
};

TEST_F(file_item_test, syntax) {
  struct syntax_case {
    char const* name;
    char const* text;
    char const* expected;
  };
  std::vector<syntax_case> const cases = {
      {"section", "[net]\nport = 80\n", "net.port=1:80\n"},
      {"dotted keys nest", "a.b = 1\nA/C=2", "a.b=1:1\na.c=1:2\n"},
      {"spaces dropped outside quotes", "colour = dark red\nq = \"dark  red\"\n", "colour=1:darkred\nq=1:dark  red\n"},
      {"escapes kept", "q = \"a\\\"b\"", "q=1:a\\\"b\n"},
      {"comments", "# c\n// c\nx = 1 # note\ny = # note\nz = 2 // note\n", "x=1:1\nz=1:2\n"},
      {"empty value stores nothing", "x =\ny = \"\"\n", ""},
      {"array continued after a comma", "list[] = a, b,\n c\nnext = 1\n",
       "list=3:3\nlist.0=1:a\nlist.1=1:b\nlist.2=1:c\nnext=1:1\n"},
      {"array ends at a line feed", "l[] = a\nb = 1\n", "b=1:1\nl=3:1\nl.0=1:a\n"},
      {"empty elements in the middle", "l[] = a,,b", "l=3:3\nl.0=1:a\nl.1=1:\nl.2=1:b\n"},
      {"trailing comma at the end of the file", "l[] = a, b,", "l=3:2\nl.0=1:a\nl.1=1:b\n"},
      {"no element at all", "l[] =", "l=3:0\n"},
      {"a blank line after a comma ends the array", "l[] = a,\n\nb = 1", "b=1:1\nl=3:1\nl.0=1:a\n"},
      {"a key runs on until '='", "key\nmore = 1\n", "keymore=1:1\n"},
      {"star slash is text", "a = x*/y\n", "a=1:x*/y\n"},
      {"empty section name resets", "[s]\na=1\n[]\nb=2\n[ x y ]\nc=3", "b=1:2\ns.a=1:1\nxy.c=1:3\n"},
      {"crlf and tabs", "a\t=\t1\r\nb = 2\r\n", "a=1:1\nb=1:2\n"},
      {"unterminated section", "[open\na = 1", ""},
      {"unterminated string", "a = \"open\nb = 2", "a=1:open\nb = 2\n"},
      {"no '=' at all", "just words here", ""},
      {"an '=' first", "= 5\n[s]\n= 6", "=1:5\ns=1:6\n"},
  };
  for (auto const& c : cases) EXPECT_EQ(parsed(c.text), c.expected) << c.name;
}

TEST_F(file_item_test, parse_comment_stops_before_the_line_feed) {
  file_item item("");
  unsigned int at = 1;
  item.parse_comment("# x\ny", at);
  EXPECT_EQ(at, 3u);
  at = 1;
  item.parse_comment("# x", at);
  EXPECT_EQ(at, 3u);
}

TEST_F(file_item_test, missing_or_unnamed_files_leave_the_item_empty) {
  file_item missing(dir / "none.cfg");
  missing.load_file();
  file_item unnamed("");
  unnamed.load_file();
  EXPECT_EQ(listing(missing) + listing(unnamed), "");
  EXPECT_EQ(missing.get_id(), "standard file");
}

TEST_F(file_item_test, load_finds_the_file_through_the_other_sources) {
  system::store_file(ustring8(dir / "own.cfg"), ustring8("from = own"));
  system::store_file(ustring8(dir / "named.cfg"), ustring8("from = named"));
  system::store_file(ustring8(dir / "app.cfg"), ustring8("from = app"));
  std::string const app = dir / "app";

  auto load_with = [&](std::vector<std::string> const& arguments) {
    std::vector<char const*> argv;
    for (auto const& a : arguments) argv.push_back(a.c_str());
    config::config_item_list items;
    items.push_back(memory::pointers::make_rc<config::commandline_item>(int(argv.size()), argv.data()));
    auto file = memory::pointers::make_rc<file_item>(dir / "own.cfg");
    items.push_back(file);
    file->set("stale", 1);
    EXPECT_TRUE(file->load(items));
    return file->get_file_name().substr(dir.path().size()) + " " + listing(*file);
  };
  EXPECT_EQ(load_with({"tool"}), "/own.cfg from=1:own\n");
  EXPECT_EQ(load_with({app}), "/app.cfg from=1:app\n");
  EXPECT_EQ(load_with({app, "--cfg_file=" + (dir / "named.cfg")}), "/named.cfg from=1:named\n");
  // A cfg_file that does not open is passed over for the application's name.
  EXPECT_EQ(load_with({app, "--cfg_file=" + (dir / "none.cfg")}), "/app.cfg from=1:app\n");
}

TEST_F(file_item_test, save_writes_what_load_reads_back) {
  std::string const path = dir / "saved.cfg";
  file_item item(path);
  item.set("net.port", 80);
  item.set("net.host", "local host");
  item.set("note", "a # b // c");
  item.set("tab", "a\tb");
  item.set_array("list", generic::varg_list(generic::argument("x,y"), generic::argument("z")), generic::varg_list());
  config::config_item_list items;
  ASSERT_TRUE(item.save(items));
  ustring8 text;
  system::load_file(ustring8(path), text);
  EXPECT_EQ(text,
            "list[] = \"x,y\", z\nnet.host = \"local host\"\nnet.port = 80\nnote = \"a # b // c\"\n"
            "tab = \"a\tb\"\n");
  file_item again(path);
  again.load_file();
  EXPECT_EQ(listing(again), listing(item));
  EXPECT_FALSE(file_item("").save(items));
  EXPECT_FALSE(file_item(dir / "no/such/dir.cfg").save(items));

  EXPECT_EQ(config::base_config_item::quote_value("a\tb"), "\"a\tb\"");
  EXPECT_EQ(config::base_config_item::quote_value("a\rb"), "\"a\rb\"");
  EXPECT_EQ(config::base_config_item::quote_value("a b"), "a b");
}

TEST_F(file_item_test, bad_input_never_crashes) {
  // Binary garbage from a fixed generator: whatever it parses to, no crash.
  ustring8 garbage;
  std::uint32_t state = 12345;
  for (int i = 0; i < 200000; ++i) {
    state = state * 1103515245u + 12345u;
    garbage += static_cast<char>(state >> 24);
  }
  parsed(garbage);

  // A 10 MB line of array elements, and a key of a million components.
  ustring8 line = "l[] = ";
  while (line.size() < 10 * 1024 * 1024) line += std::string(1023, 'x') + ",";
  std::string const elements = parsed(line + "\nafter = 1");
  // After the trailing comma the next line is one more element.
  EXPECT_EQ(elements.substr(0, 10), "l=3:10241\n");
  EXPECT_NE(elements.find("l.10240=1:after=1\n"), std::string::npos);

  ustring8 key;
  for (int i = 0; i < 1000000; ++i) key += i == 0 ? "k" : ".k";
  file_item deep(dir / "deep.cfg");
  system::store_file(ustring8(deep.get_file_name()), key + " = bottom\n");
  deep.load_file();
  ASSERT_NE(deep.get_value(key), nullptr);
  EXPECT_EQ(deep.get_value(key)->second.as_string(), "bottom");
  config::config_item_list items;
  file_item copy(deep);
  EXPECT_EQ(copy.get_value(key)->second.as_string(), "bottom");
}

}  // namespace
