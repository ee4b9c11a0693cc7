#include "vexa/config/config_manager.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "system/temp_directory.hpp"
#include "vexa/config/module_config_dispatch.hpp"
#include "vexa/config/std_config_dispatch.hpp"
#include "vexa/config/user_item.hpp"
#include "vexa/system/file.hpp"

namespace {

using namespace vexa;
using config::config_manager;
using strings::ustring8;

std::string dumped(config_manager& m) {
  std::ostringstream out;
  out << m;
  return out.str();
}

class config_manager_test : public ::testing::Test {
 protected:
  void SetUp() override {
    file = dir / "app.cfg";
    system::store_file(ustring8(file),
                       ustring8("[net]\nport = 80\nhost = filehost\nlist[] = f1, f2\n[]\nonly.file = yes\n"));
  }
  // A manager over the command line, the file and the environment.
  void start(std::vector<char const*> arguments, std::vector<char const*> environment) {
    argv = std::move(arguments);
    envp = std::move(environment);
    envp.push_back(nullptr);
    manager.init(config::std_config_dispatch(int(argv.size()), argv.data(), envp.data(), file, "named"));
    ASSERT_TRUE(manager.load());
  }
  std::string value(char const* key) { return manager.get_value(key).as_string(); }

  vexa_test::temp_directory dir;
  std::string file;
  std::vector<char const*> argv, envp;
  config_manager manager;
};

TEST_F(config_manager_test, command_line_over_file_over_environment) {
  start({"tool", "--net.port=8080"}, {"NET.PORT=1", "NET.HOST=envhost", "ONLY.ENV=e", "ONLY.FILE=no"});
  EXPECT_EQ(value("net.port") + " " + value("net.host") + " " + value("only.env") + " " + value("only.file"),
            "8080 filehost e yes");
  EXPECT_EQ(value("application.name"), "named");  // the dispatch's name, again after load
  EXPECT_TRUE(manager.value_exist("Net.Port"));
  EXPECT_FALSE(manager.value_exist("net"));   // answered by the command line's passing node
  EXPECT_FALSE(manager.value_exist("missing"));
  EXPECT_TRUE(manager.get_value("missing") == types::nil);

  ASSERT_TRUE(manager.get_config_item("standard file"));
  EXPECT_EQ(manager.get_config_item("enviroment")->get_id(), "enviroment");
  EXPECT_FALSE(manager.get_config_item("nope"));
}

TEST_F(config_manager_test, arrays_across_sources) {
  start({"tool", "--net.list=plain"}, {"NET.HOST=envhost"});
  auto env = manager.get_config_item("enviroment");
  env->set_array("net.port", generic::varg_list(generic::argument("e1")), generic::varg_list());
  EXPECT_TRUE(manager.is_array("net.list"));   // behind the command line's plain value
  EXPECT_EQ(value("net.list"), "plain");
  EXPECT_TRUE(manager.is_array("net.port"));  // the file's plain value does not hide the env's array
  EXPECT_EQ(value("net.port"), "80");
  env->set_array("env.only", generic::varg_list(generic::argument("e1")), generic::varg_list());
  EXPECT_TRUE(manager.is_array("env.only"));
  EXPECT_TRUE(manager.get_value("env.only") == types::nil);

  std::vector<types::variant> elements;
  manager.get_array("net.list", elements);  // the command line has the key: its plain value hides the file's array
  EXPECT_TRUE(elements.empty());
  manager.get_array("env.only", elements);
  manager.get_array("missing", elements);
  std::string all;
  for (auto const& e : elements) all += e.as_string() + " ";
  EXPECT_EQ(all, "e1 ");

  std::vector<std::pair<ustring8, types::variant>> pairs;
  manager.get_key_value_array("net", pairs);
  all.clear();
  for (auto const& p : pairs) all += p.first + "=" + p.second.as_string() + " ";
  EXPECT_EQ(all, "list=plain ");  // the command line is the first source with anything below "net"
}

TEST_F(config_manager_test, references_are_followed_and_loops_end) {
  start({"tool"}, {});
  auto line = manager.get_config_item("command line");
  line->set("alias", "net.port", 4);
  line->set("ping", "PONG", 4);
  line->set("pong", "ping", 4);
  line->set("to.array", "net.list", 4);
  line->set("self", "self", 4);
  EXPECT_EQ(value("alias"), "80");
  EXPECT_TRUE(manager.get_value("ping") == types::nil);
  EXPECT_TRUE(manager.get_value("self") == types::nil);
  EXPECT_TRUE(manager.get_value("to.array") == types::nil);
}

TEST_F(config_manager_test, module_dispatch_files_then_environment_then_user_item) {
  std::string const second = dir / "second.cfg";
  system::store_file(ustring8(second), ustring8("net.port = 99\nsecond = 2\n"));
  char const* environment[] = {"SECOND=env", "FROM.ENV=1", nullptr};
  manager.init(config::module_config_dispatch(
      generic::varg_list(generic::argument(types::variant(file)), generic::argument("x", types::variant(second))),
      environment));
  ASSERT_TRUE(manager.load());
  manager.get_config_item("user item")->set("default.only", "d");
  manager.get_config_item("user item")->set("from.env", "user");
  EXPECT_EQ(value("net.port") + " " + value("second") + " " + value("from.env") + " " + value("default.only"),
            "80 2 1 d");
}

TEST_F(config_manager_test, dump_texts) {
  config_manager empty;
  EXPECT_EQ(dumped(empty), "config_manager:\n\nno more config_items!\n\nending output\n");
  EXPECT_FALSE(empty.is_array("x"));
  EXPECT_FALSE(empty.load());
  EXPECT_TRUE(empty.get_value("x") == types::nil);

  std::string const single = dir / "single.cfg";
  system::store_file(ustring8(single), ustring8("a = 1\n"));
  manager.init(config::module_config_dispatch(generic::varg_list(generic::argument(types::variant(single))), nullptr));
  manager.load();
  EXPECT_EQ(dumped(manager),
            "config_manager:\n"
            "\nconfig_item:\nobject : standard file\na : 1 1\n|\nend\n"
            "\nconfig_item:\nobject : enviroment\nend\n"
            "\nconfig_item:\nobject : user item\nend\n"
            "\nno more config_items!\n\nending output\n");
  manager.unload();
  EXPECT_FALSE(manager.value_exist("a"));
}

}  // namespace

namespace {

// A source that answers from elsewhere than its tree: the manager must ask it
// every time.
class counting_item : public config::user_item {
 public:
  entry_type const* get_value(ustring8 const& key) const override {
    _entry = entry_type(1u, types::variant(static_cast<int>(++_asked)));
    return key == "dynamic" ? &_entry : nullptr;
  }
  counting_item* clone() const override { return new counting_item(*this); }

 private:
  mutable int _asked = 0;
  mutable entry_type _entry;
};

class single_source : public config::config_dispatch {
 public:
  explicit single_source(bool counting) : _counting(counting) {}
  void setup(config::config_item_list& items) override {
    if (_counting) {
      items.push_back(memory::pointers::make_rc<counting_item>());
    } else {
      items.push_back(memory::pointers::make_rc<config::user_item>());
    }
  }
  single_source* clone() const override { return new single_source(*this); }

 private:
  bool _counting;
};

TEST(config_manager_answers, follow_every_change_of_a_source) {
  config_manager manager;
  manager.init(single_source(false));
  auto item = manager.get_config_item("user item");
  EXPECT_TRUE(manager.get_value("k") == types::nil);
  item->set("k", 1);
  EXPECT_EQ(manager.get_value("k").as_int(), 1);
  item->set("K", 2);
  EXPECT_EQ(manager.get_value("k").as_int(), 2);
  item->set_array("k", generic::varg_list(generic::argument(3)), generic::varg_list());
  EXPECT_TRUE(manager.get_value("k") == types::nil);
  manager.unload();
  EXPECT_FALSE(manager.is_array("k"));
  EXPECT_TRUE(manager.get_value("k") == types::nil);

  manager.init(single_source(true));
  EXPECT_EQ(manager.get_value("dynamic").as_int(), 1);
  EXPECT_EQ(manager.get_value("dynamic").as_int(), 2);  // asked again, not remembered
}

}  // namespace

namespace {

// A fresh source after init again may sit where the old one was and have
// been changed as often: the answers of the old one must not come back.
TEST(config_manager_answers, never_outlive_the_sources_of_an_earlier_init) {
  config_manager manager;
  for (int round = 1; round <= 3; ++round) {
    manager.init(single_source(false));
    manager.get_config_item("user item")->set("k", round);
    EXPECT_EQ(manager.get_value("k").as_int(), round) << "after init number " << round;
  }
}

}  // namespace
