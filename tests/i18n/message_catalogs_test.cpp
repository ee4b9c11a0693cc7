#include "vexa/i18n/message_catalogs.hpp"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "i18n/catalog_files.hpp"
#include "vexa/system/file.hpp"

namespace {

using namespace vexa;
using catalog_test::catalog;
using catalog_test::msg;
using catalog_test::xmc;
using generic::argument;
using generic::varg_list;
using strings::ustring8;
using i18n::message_catalogs;
using result_type = message_catalogs::result_type;
using load_error = i18n::_private::xmc_file_loader::load_error;
using loader = i18n::_private::xmc_file_loader;

std::string const R = "message_catalogs::result_type - ";
std::string const L = "xmc_file_loader::load_error - ";

std::string describe(result_type const& r) { return std::to_string(r.type()) + " " + r.message(); }

TEST(message_catalogs_result, texts_of_the_set_and_of_loader_errors) {
  std::vector<std::string> texts;
  for (unsigned type = 0; type <= 6; ++type)
    texts.push_back(describe(result_type(static_cast<message_catalogs::error_type>(type), "p")));
  EXPECT_EQ(texts, (std::vector<std::string>{
                       "0 " + R + "No Error",
                       "1 " + R + "No catalog was loaded in file: \"p\"",
                       "2 unknown, or unhandle case happened! 2 str data=p",
                       "3 " + R + "File \"p\" was not found on disk",
                       "4 " + R + "Directory \"p\" was not found on disk",
                       "5 " + R + "Entity (file or directory) \"p\" was not found on disk",
                       "6 unknown, or unhandle case happened! 6 str data=p",
                   }));

  struct row {
    unsigned loader_type;
    char const* headline;
  } const rows[] = {{0, "No Error"},
                    {1, "No catalog was loaded"},
                    {2, "Default locale lookup not supported yet"},
                    {3, "File was not found on disk"},
                    {4, "XML parse error, XML file not well formed"},
                    {5, "XMC file is not valid"},
                    {9, "XMC file is not valid"},
                    {13, "XMC file is not valid"},
                    {14, "Unexpected error happened during loading"},
                    {15, "Unhandled case"}};
  for (row const& r : rows) {
    load_error const e(static_cast<loader::error_type>(r.loader_type), "s");
    EXPECT_EQ(describe(result_type(e)), std::to_string(r.loader_type) + " " + R + r.headline + "\n " + e.message());
  }
  load_error framed(loader::not_xmc_file, "html");
  framed.append_error_stack(load_error::in_file, "a.xmc");
  EXPECT_EQ(describe(result_type(framed)),
            "7 " + R + "XMC file is not valid\n " + L + "Not XMC file, root element is not XMC but \"html\"\n in file: \"a.xmc\"");
  std::ostringstream out;
  out << message_catalogs::entity_not_found;
  EXPECT_EQ(out.str(), "5");
}

class message_catalogs_files : public catalog_test::temp_dir_test {
 protected:
  // An application catalog in three languages, one message each with an argument.
  void write_app() {
    write("app/en.xmc", xmc(catalog("app", "en", msg("saved", "Saved <arg name=\"size\" type=\"memory\"/>.") +
                                                     msg("bye", "Bye"))));
    write("app/de.XMC", xmc(catalog("app", "de", msg("saved", "Gespeichert: <arg name=\"size\" type=\"memory\"/>."))));
    write("app/sub/fr.xml", xmc(catalog("app", "fr", msg("saved", "Enregistré : <arg name=\"size\" type=\"memory\"/>."))));
    write("app/notes.txt", "not a catalog");
  }
};

TEST_F(message_catalogs_files, load_picks_file_or_directory) {
  write_app();
  varg_list const args(argument("size", 1536));
  struct row {
    char const* lang;
    char const* expected;
  } const rows[] = {{"de_AT", "Gespeichert: 1.5 KB."}, {"fr", "Enregistré : 1.5 KB."}, {"ja", "Saved 1.5 KB."}};
  for (row const& r : rows) {
    message_catalogs catalogs;
    result_type const result = catalogs.load(dir + "/app", r.lang);
    ASSERT_EQ(result.type(), message_catalogs::no_error) << result.message();
    EXPECT_EQ(std::string(catalogs.message("app", "saved").as_string(args)), r.expected) << r.lang;
    EXPECT_EQ(std::string(catalogs.message("app", "bye").as_string(args)), "Bye");
  }

  message_catalogs catalogs;
  EXPECT_EQ(describe(catalogs.load(dir + "/app/en.xmc", "de")), "0 " + R + "No Error\n " + L + "No Error");
  EXPECT_EQ(catalogs.count("app"), 2u);
  EXPECT_EQ(describe(catalogs.load(dir + "/none", "de")),
            "5 " + R + "Entity (file or directory) \"" + dir + "/none\" was not found on disk");
  EXPECT_EQ(describe(catalogs.load_directory(dir + "/none", "de")),
            "4 " + R + "Directory \"" + dir + "/none\" was not found on disk");
  EXPECT_EQ(catalogs.load_file(dir + "/app/en.xmc", "").type(), 2u);

  message_catalogs french_only;  // valid, but nothing for the language: result 1, empty set
  std::string const fr = dir + "/app/sub/fr.xml";
  EXPECT_EQ(describe(french_only.load(fr, "de")), "1 " + R + "No catalog was loaded in file: \"" + fr + "\"");
  EXPECT_TRUE(french_only == types::nil);

  message_catalogs filtered;
  write("two.xmc", xmc(catalog("a", "en", msg("m", "A")) + catalog("b", "en", msg("m", "B"))));
  EXPECT_EQ(filtered.load(dir + "/two.xmc", "en", "b").type(), 0u);
  EXPECT_TRUE(!filtered.has_catalog("a") && filtered.has_catalog("b"));
  EXPECT_EQ(message_catalogs().load(dir + "/two.xmc", "en", "c").type(), 1u);
}

TEST_F(message_catalogs_files, look_ups_erasure_and_sharing) {
  write_app();
  message_catalogs catalogs;
  ASSERT_EQ(catalogs.load_directory(dir + "/app", "de").type(), 0u);
  EXPECT_EQ(catalogs.count(), 1u);
  EXPECT_EQ(catalogs.size(), 1u);
  EXPECT_TRUE(catalogs.has_catalog("app") && !catalogs.has_catalog("App"));
  EXPECT_TRUE(catalogs.has_catalog("app", "de") && catalogs.has_catalog("app", "en"));
  EXPECT_FALSE(catalogs.has_catalog("app", "fr"));
  EXPECT_EQ(catalogs.size("app"), 2u);
  EXPECT_EQ(catalogs.count("none"), 0u);
  EXPECT_TRUE(catalogs.catalog("none") == types::nil);
  EXPECT_TRUE(catalogs.catalog("app") != types::nil);
  EXPECT_TRUE(catalogs.message("none", "saved") == types::nil);
  EXPECT_TRUE(catalogs.message("app", "none") == types::nil);
  EXPECT_TRUE(catalogs.has_message("app", "bye") && !catalogs.has_message("app", "none"));
  EXPECT_TRUE(catalogs.begin("none") == catalogs.end("none"));
  std::string names;
  for (auto it = catalogs.begin("app"); it != catalogs.end("app"); ++it) names += it->first + " ";
  EXPECT_EQ(names, "bye saved ");

  // The wide forms forward to the UTF-8 ones.
  EXPECT_TRUE(catalogs.has_catalog(strings::ustring16{'a', 'p', 'p'}) && catalogs.has_catalog(strings::ustring32(L"app")));
  EXPECT_EQ(catalogs.message(strings::ustring32(L"app"), strings::ustring32(L"bye")).name(), "bye");
  EXPECT_EQ(catalogs.count(strings::ustring16{'a', 'p', 'p'}), 2u);
  message_catalogs wide;
  std::string const app = dir + "/app";
  EXPECT_EQ(wide.load(strings::ustring32(app.begin(), app.end()), strings::ustring32(L"fr")).type(), 0u);
  EXPECT_TRUE(wide.has_catalog("app", "fr"));

  message_catalogs copy(catalogs);  // copies share the catalogs
  EXPECT_EQ(copy.catalog("app").get(), catalogs.catalog("app").get());
  copy.erase("app");
  EXPECT_FALSE(copy.has_catalog("app"));
  EXPECT_TRUE(catalogs.has_catalog("app"));
  copy = catalogs;
  copy = types::nil;
  EXPECT_TRUE(copy == types::nil && catalogs != types::nil);
  catalogs.erase(strings::ustring16{'x'});
  catalogs.erase();
  EXPECT_EQ(catalogs.count(), 0u);
}

TEST_F(message_catalogs_files, a_directory_loads_what_it_can_and_reports_the_first_failure) {
  write("d/a_good.xmc", xmc(catalog("c", "en", msg("a", "A"))));
  std::string const unclosed = write("d/b_bad.xmc", xmc(catalog("c", "en", msg("b", "B") + "<p/>")));
  std::string const foreign = write("d/c_bad.xml", "<?xml?><root/>");
  write("d/d_good.xml", xmc(catalog("c", "en", msg("d", "D"))));
  // The entries are taken in the system's order, so the first failure is
  // whichever bad file the listing names first.
  std::string first_bad;
  for (std::string const& entry : system::list_directory(ustring8(dir + "/d")))
    if (first_bad.empty() && (entry == unclosed || entry == foreign)) first_bad = entry;
  std::string const expected =
      first_bad == unclosed
          ? "13 " + R + "XMC file is not valid\n " + L + "Expected catalog end tag not found for catalog \"c\"" +
                "\n in catalog element: \"c\"\n in file: \"" + unclosed + "\""
          : "7 " + R + "XMC file is not valid\n " + L + "Not XMC file, root element is not XMC but \"root\"\n in file: \"" + foreign + "\"";
  message_catalogs catalogs;
  result_type const r = catalogs.load(dir + "/d", "en");
  EXPECT_EQ(describe(r), expected);
  EXPECT_EQ(catalogs.count("c"), 2u);  // a and d; the failing files gave nothing
  EXPECT_FALSE(catalogs.has_message("c", "b"));
}

TEST_F(message_catalogs_files, a_directory_is_loaded_in_the_order_the_system_lists_it) {
  // Equal languages: the file loaded last wins, and that is the last one listed.
  for (char const* name : {"a", "b", "c", "d"})
    write(std::string("order/") + name + ".xmc", xmc(catalog("c", "de", msg("m", name))));
  std::string last;
  for (std::string const& entry : system::list_directory(ustring8(dir + "/order"))) last = entry;
  message_catalogs catalogs;
  ASSERT_EQ(catalogs.load_directory(dir + "/order", "de").type(), 0u);
  EXPECT_EQ(dir + "/order/" + std::string(catalogs.message("c", "m").as_string(varg_list())) + ".xmc", last);
}

TEST_F(message_catalogs_files, later_loads_replace_equal_languages) {
  write("one.xmc", xmc(catalog("c", "de", msg("m", "eins"))));
  write("two.xmc", xmc(catalog("c", "de", msg("m", "zwei"))));
  write("en.xmc", xmc(catalog("c", "en", msg("m", "one"))));
  message_catalogs catalogs;
  catalogs.load(dir + "/one.xmc", "de");
  catalogs.load(dir + "/two.xmc", "de");
  catalogs.load(dir + "/en.xmc", "de");
  EXPECT_EQ(std::string(catalogs.message("c", "m").as_string(varg_list())), "zwei");
}

// ---- bad input ----

TEST_F(message_catalogs_files, malformed_files_give_results_never_exceptions) {
  std::string garbage;
  for (int i = 0; i < 4096; ++i) garbage += static_cast<char>((i * 7919) % 256);
  struct row {
    char const* name;
    std::string content;
    unsigned expected;
  } const rows[] = {
      {"empty.xmc", "", 4},
      {"garbage.xmc", garbage, 4},
      {"garbage_after_header.xmc", "\xEF\xBB\xBF<?xml?>" + garbage, 4},
      {"nul.xmc", std::string("<?xml?><xmc version=\"1.0\">\0</xmc>", 33), 0},
      {"reference.xmc", xmc(catalog("c", "en", msg("m", "&#999;"))), 14},
      {"unclosed.xmc", "<?xml?><xmc version=\"1.0\"><catalog name=\"c\" lang=\"en\"><msg name=\"m\">", 4},
  };
  for (row const& r : rows) {
    message_catalogs catalogs;
    std::string const path = write(r.name, r.content);
    EXPECT_EQ(catalogs.load_file(path, "en").type(), r.expected) << r.name;
    EXPECT_EQ(catalogs.count(), 0u) << r.name;
  }
  message_catalogs catalogs;
  EXPECT_EQ(catalogs.load_file(dir, "en").type(), 3u);  // a directory is no file
  EXPECT_EQ(catalogs.load_file(dir + "/missing.xmc", "en").type(), 3u);
  EXPECT_EQ(catalogs.load_file(dir + "/empty.xmc" + std::string(1, '\0') + "x", "en").type(), 3u);
}

TEST_F(message_catalogs_files, a_50_megabyte_message) {
  std::string const text(50u << 20, 'x');
  write("big.xmc", xmc(catalog("c", "en", msg("big", text + "<arg name=\"n\" type=\"int\"/>"))));
  message_catalogs catalogs;
  ASSERT_EQ(catalogs.load(dir + "/big.xmc", "en").type(), 0u);
  std::string const rendered = catalogs.message("c", "big").as_string(varg_list(argument("n", 7)));
  EXPECT_EQ(rendered.size(), text.size() + 1);
  EXPECT_EQ(rendered.substr(rendered.size() - 2), "x7");
}

TEST_F(message_catalogs_files, a_directory_of_ten_thousand_files) {
  for (int d = 0; d < 10; ++d) write("many/" + std::to_string(d) + "/readme.txt", "");
  for (int i = 0; i < 10000; ++i)
    std::ofstream(dir + "/many/" + std::to_string(i % 10) + "/m" + std::to_string(i) + ".xmc")
        << xmc(catalog("c", "en", msg("m" + std::to_string(i), "v")));
  message_catalogs catalogs;
  ASSERT_EQ(catalogs.load(dir + "/many", "en").type(), 0u);
  EXPECT_EQ(catalogs.count("c"), 10000u);
}

TEST_F(message_catalogs_files, include_cycles_and_directory_link_loops_end) {
  write("loop/a.xmc", xmc("<include file=\"b.xmc\"/>"));
  write("loop/b.xmc", xmc("<include file=\"./a.xmc\"/>"));
  ASSERT_EQ(::symlink((dir + "/loop").c_str(), (dir + "/loop/again").c_str()), 0);
  message_catalogs catalogs;
  result_type const r = catalogs.load(dir + "/loop", "en");
  EXPECT_EQ(r.type(), 5u);
  EXPECT_NE(r.message().find("Invalid attibute \"file\"\n in file: \"" + dir + "/loop/"), std::string::npos) << r.message();
}

}  // namespace
