#include "vexa/i18n/xmc_file_loader.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "i18n/catalog_files.hpp"

namespace {

using namespace vexa;
using catalog_test::catalog;
using catalog_test::items;
using catalog_test::msg;
using catalog_test::xmc;
using i18n::_private::xmc_file_loader;
using load_error = xmc_file_loader::load_error;
using parse_error = parser::xml_parser::parse_error;

std::string const P = "xmc_file_loader::load_error - ";

// Loads `text` as the file "t.xmc" for de_DE; returns the whole error text.
std::string load_text(std::string const& text, xmc_file_loader& loader) {
  if (loader.languages().empty()) loader.parse("/nonexistent/never-read.xmc", "de_DE");
  load_error const e = loader.parse_string(text, "t.xmc");
  return std::to_string(e.type()) + " " + e.message();
}

std::string load_text(std::string const& text) {
  xmc_file_loader loader;
  return load_text(text, loader);
}

TEST(xmc_file_loader, error_texts_of_the_document_and_its_root) {
  struct row {
    char const* what;
    std::string text;
    std::string expected;
  } const rows[] = {
      {"empty file", "", "4 " + P + "Valid XML header not found\n at line: \"0\""},
      {"declaration only", "<?xml version=\"1.0\"?>", "4 " + P + "No root element was found\n at line: \"0\""},
      {"unclosed root", "<?xml?>\n\n<xmc version=\"1.0\">", "4 " + P + "Unexpected end of file during XML parsing\n at line: \"0\""},
      {"mismatch", "<?xml?>\n<xmc version=\"1.0\">\n<a></b></xmc>", "4 " + P + "Mismatched end element \"b\" was found\n at line: \"2\""},
      {"binary", std::string("\x7f" "ELF\x02\x01\x01\0\0\0", 10), "4 " + P + "Valid XML header not found\n at line: \"0\""},
      {"refused reference", "<?xml?><xmc version=\"1.0\">&#300;</xmc>", "14 " + P + "Unexpected parse error happen!"},
      {"no root element", "<?xml?>hello", "7 " + P + "Not XMC file, root element is not XMC but \"Value Not Defined\"\n in file: \"t.xmc\""},
      {"other root", "<?xml?><root version=\"1.0\"/>", "7 " + P + "Not XMC file, root element is not XMC but \"root\"\n in file: \"t.xmc\""},
      {"root without version", "<?xml?><xmc/>", "5 " + P + "Invalid attibute \"\"\n in file: \"t.xmc\""},
      {"version not first", "<?xml?><xmc lang=\"x\" version=\"1.0\"/>", "5 " + P + "Invalid attibute \"lang\"\n in file: \"t.xmc\""},
      {"version 2.0", "<?xml?><xmc version=\"2.0\"/>", "8 " + P + "XMC version \"2.0\" is not supported\n in file: \"t.xmc\""},
      {"version 1.1", "<?xml?><xmc version=\"1.1\" other=\"ignored\"></xmc>", "0 " + P + "No Error"},
      {"foreign element", xmc("<p/>"), "6 " + P + "Invalid element \"p\"\n in file: \"t.xmc\""},
      {"include without end", xmc("<include file=\"/\">x</include>"), "3 " + P + "File \"/\" was not found on disk\n in file: \"t.xmc\""},
  };
  for (row const& r : rows) EXPECT_EQ(load_text(r.text), r.expected) << r.what;
}

TEST(xmc_file_loader, error_frames_come_innermost_first) {
  std::string const catalog_part = catalog("main", "en", msg("greeting", "Hi <p/>"));
  xmc_file_loader loader;
  loader.parse("/nonexistent/x.xmc", "en");
  load_error const e = loader.parse_string(xmc(catalog_part), "/x/a.xmc");
  EXPECT_EQ(e.type(), xmc_file_loader::invalid_element);
  EXPECT_EQ(e.message(), P + "Invalid element \"p\"\n in message element: \"greeting\"\n in catalog element: \"main\"\n in file: \"/x/a.xmc\"");

  std::string const F = "\n in file: \"t.xmc\"";
  std::string const C = "\n in catalog element: \"main\"";
  std::string const M = "\n in message element: \"m\"";
  struct row {
    std::string body;
    std::string expected;
  } const rows[] = {
      {catalog("main", "en", msg("m", "a<br x=\"1\"/>")), "5 " + P + "Invalid attibute \"x\"" + M + C + F},
      {catalog("main", "en", msg("m", "a<br>b</br>")), "9 " + P + "Expected BR end tag not found" + M + C + F},
      {catalog("main", "en", msg("m", "<arg name=\"a\">x</arg>")),
       "11 " + P + "Expected arg (argument) end tag not found for argument \"a\"" + M + C + F},
      {catalog("main", "en", "<msg name=\"m\" foo=\"1\"/>"), "5 " + P + "Invalid attibute \"foo\"" + C + F},
      {catalog("main", "en", "<message name=\"m\"/>"), "13 " + P + "Expected catalog end tag not found for catalog \"main\"" + C + F},
      {"<catalog name=\"main\" lang=\"en\" id=\"1\"/>", "5 " + P + "Invalid attibute \"id\"" + F},
      {"<include file=\"t.xmc\" x=\"\"/>", "5 " + P + "Invalid attibute \"x\"" + F},
      {"<include/>", "3 " + P + "File \"\" was not found on disk" + F},
  };
  for (row const& r : rows) EXPECT_EQ(load_text(xmc(r.body)), r.expected) << r.body;
}

TEST(xmc_file_loader, message_items_fold_white_space_and_keep_options) {
  xmc_file_loader loader;
  std::string const body = catalog("main", "en",
                                    "\n  <msg name=\"greeting\" meta=\"shown first\">\n"
                                    "     Hello,   <arg name=\"who\" type=\"STRING\"/>  and <!-- note -->"
                                    "<argument type=\"int\" base=\"16\" name=\"n\" fieldsize=\"4\"></argument>!<br/>Bye\n"
                                    "  </msg>\n"
                                    "  <msg name=\"a\"><arg name=\"x\"/> <arg name=\"y\"/></msg>");
  ASSERT_EQ(load_text(xmc(body), loader), "0 " + P + "No Error");
  i18n::message_t const& m = loader.messages().at("main").at("greeting");
  EXPECT_EQ(items(m), "0:Hello, \n1:who\n0: and \n3:n|base|16|fieldsize|4\n0:!\nBye \n");
  EXPECT_EQ(m.meta(), "shown first");
  EXPECT_EQ(m._orginal_locale(), "en");
  EXPECT_EQ(items(loader.messages().at("main").at("a")), "1:x\n0: \n1:y\n");
}

TEST(xmc_file_loader, argument_type_names) {
  char const* const names[] = {"value", "string", "number", "int",        "double", "time",        "date",
                               "memory", "MEM",   "mem_unit", "memory_unit", "metric", "metric_unit", "Duration",
                               "foo",   ""};
  std::string messages;
  for (char const* name : names) messages += "<arg name=\"v\" type=\"" + std::string(name) + "\"/>";
  messages += "<arg name=\"untyped\"/>";
  xmc_file_loader loader;
  ASSERT_EQ(load_text(xmc(catalog("c", "en", msg("m", messages))), loader), "0 " + P + "No Error");
  std::vector<unsigned> types;
  for (auto const& item : loader.messages().at("c").at("m").items()) types.push_back(item.type());
  EXPECT_EQ(types, (std::vector<unsigned>{0, 1, 2, 3, 4, 5, 6, 7, 7, 8, 8, 9, 10, 11, 1, 1, 1}));
}

TEST(xmc_file_loader, language_list_and_weights) {
  struct row {
    char const* lang;
    std::vector<std::string> list;
  } const rows[] = {
      {"de_DE", {".", "en", "de", "de_DE"}},
      {"de-DE", {".", "en", "de", "de_DE"}},
      {"en_US", {".", "en", "en_US"}},
      {"en", {".", "en"}},
      {"zh.Hant-TW", {".", "en", "zh", "zh_Hant", "zh_Hant_TW"}},
  };
  for (row const& r : rows) {
    xmc_file_loader loader;
    EXPECT_EQ(loader.parse("/nonexistent/a.xmc", r.lang).type(), xmc_file_loader::file_not_found);
    EXPECT_EQ(std::vector<std::string>(loader.languages().begin(), loader.languages().end()), r.list) << r.lang;
  }
  xmc_file_loader loader;
  loader.parse("/nonexistent/a.xmc", "de_DE", "main");
  EXPECT_EQ(std::vector<std::string>(loader.languages().begin(), loader.languages().end()),
            (std::vector<std::string>{".", "en", "de", "de_DE", ".", "en"}));
  EXPECT_EQ(loader.catalog_id(), "main");
  EXPECT_EQ(loader.get_locale_weight("de.DE"), 4u);
  EXPECT_EQ(loader.get_locale_weight("en"), 2u);
  EXPECT_EQ(loader.get_locale_weight("fr"), 0u);

  // An empty language is refused before the disk is touched.
  xmc_file_loader empty;
  load_error const e = empty.parse("/nonexistent/a.xmc", "");
  EXPECT_EQ(e.type(), xmc_file_loader::default_locale_lookup);
  EXPECT_EQ(e.message(), P + "Default locale lookup not supported yet");
  EXPECT_TRUE(empty.languages().empty());
}

TEST(xmc_file_loader, the_best_language_wins_and_ties_keep_the_first) {
  std::string const body = catalog("main", "de_DE", msg("hi", "Servus") + msg("only", "DE")) +
                           catalog("main", "en", msg("hi", "Hello") + msg("en_only", "E")) +
                           catalog("main", "de", msg("hi", "Hallo") + msg("only", "de")) +
                           catalog("main", "fr", msg("hi", "Salut") + msg("fr_only", "F")) +
                           catalog("main", "de-DE", msg("hi", "Grüß Gott")) +
                           catalog("other", "de", msg("x", "X"));
  xmc_file_loader loader;
  ASSERT_EQ(load_text(xmc(body), loader), "0 " + P + "No Error");
  auto const& main = loader.messages().at("main");
  EXPECT_EQ(items(main.at("hi")), "0:Servus\n");
  EXPECT_EQ(items(main.at("only")), "0:DE\n");
  EXPECT_EQ(main.count("fr_only"), 0u);
  EXPECT_EQ(main.count("en_only"), 1u);
  EXPECT_EQ(loader.messages().count("other"), 1u);

  xmc_file_loader filtered;
  filtered.parse("/nonexistent/a.xmc", "de", "other");
  ASSERT_EQ(filtered.parse_string(xmc(body), "t.xmc").type(), xmc_file_loader::no_error);
  EXPECT_EQ(filtered.messages().size(), 1u);
  EXPECT_EQ(filtered.messages().count("other"), 1u);

  filtered.reset();
  EXPECT_TRUE(filtered.messages().empty());
  EXPECT_EQ(filtered.catalog_id(), "other");
}

TEST(xmc_file_loader, combine_data_lets_the_later_load_win_on_equal_weight) {
  i18n::catalog_map table;
  for (char const* text : {"first", "second"}) {
    xmc_file_loader loader;
    loader.parse("/nonexistent/a.xmc", "de");
    ASSERT_EQ(loader.parse_string(xmc(catalog("main", "de", msg("m", text))), "t.xmc").type(), 0u);
    loader.combine_data(table);
  }
  EXPECT_EQ(table.at("main")->message("m").as_string(generic::varg_list()), "second");
  EXPECT_EQ(table.at("main")->name(), "main");

  xmc_file_loader english;  // a weaker language does not replace a stronger one
  english.parse("/nonexistent/a.xmc", "de");
  english.parse_string(xmc(catalog("main", "en", msg("m", "english"))), "t.xmc");
  english.combine_data(table);
  EXPECT_EQ(table.at("main")->message("m").as_string(generic::varg_list()), "second");

  table["main"].reset();
  try {
    english.combine_data(table);
    ADD_FAILURE() << "no throw";
  } catch (char const* text) {
    EXPECT_STREQ(text, "unreferanced object");
  }
}

TEST(xmc_file_loader, format_msg_texts) {
  std::vector<std::string> parse_texts;
  for (unsigned code = 0; code <= 11; ++code)
    parse_texts.push_back(load_error::format_msg(xmc_file_loader::xml_parse_error,
                                                 parse_error(static_cast<parse_error::error_type>(code), 7, "q")));
  std::string const L = "\n at line: \"7\"";
  EXPECT_EQ(parse_texts, (std::vector<std::string>{
                             P + "Unknown Parse error",
                             P + "Unexpected end of file during XML parsing" + L,
                             P + "Mismatched end element \"q\" was found" + L,
                             P + "No root element was found" + L,
                             P + "Valid XML header not found" + L,
                             P + "Unexpected character \"q\" found while parsing" + L,
                             P + "Missing \" while parsing attribute \"q\"" + L,
                             P + "Unknown enity being parsed" + L,
                             P + "Missing = sign for attribute \"q\"" + L,
                             P + "attribute \"q\" is being redefined" + L,
                             P + "Data found after root element" + L,
                             P + "Unknown Parse error",
                         }));
  std::vector<std::string> texts;
  for (unsigned type : {0u, 1u, 2u, 9u, 10u, 12u, 14u, 15u})
    texts.push_back(load_error::format_msg(static_cast<xmc_file_loader::error_type>(type), "s"));
  EXPECT_EQ(texts, (std::vector<std::string>{
                       P + "No Error", P + "No catalog was loaded in file: \"s\"",
                       P + "Default locale lookup not supported yet", P + "Expected BR end tag not found",
                       P + "Expected msg (message) end tag not found for message \"s\"",
                       P + "Expected \"include\" end tag not found", P + "Unexpected parse error happen!",
                       "unknown, or unhandle case happened! 15 str data=s"}));
  load_error e(xmc_file_loader::unexpected_error, "Nothing of interest in the file.");
  e.append_error_stack(load_error::at_line, "3");
  e.append_error_stack(static_cast<load_error::append_type>(0), "x");
  EXPECT_EQ(e.message(), P + "Unexpected parse error happen!\n at line: \"3\"\n unknown, or unhandle case happened! 0 str data=x");
  load_error copy(e);
  copy = load_error(xmc_file_loader::no_error, "");
  EXPECT_EQ(copy.type(), xmc_file_loader::no_error);

  std::ostringstream out;
  out << xmc_file_loader::catalog_end_missing << ' ' << load_error::in_file;
  EXPECT_EQ(out.str(), "13 3");
}

// ---- files and includes ----

class xmc_file_loader_files : public catalog_test::temp_dir_test {};

TEST_F(xmc_file_loader_files, includes_resolve_against_the_including_file_nested_too) {
  write("cat/a.xmc", xmc("<include file=\"sub/b.xmc\"/>" + catalog("main", "en", msg("a", "A"))));
  write("cat/sub/b.xmc", xmc("<include file=\"c.xmc\"></include>" + catalog("main", "en", msg("b", "B"))));
  write("cat/sub/c.xmc", xmc("<include file=\"" + dir + "/abs.xmc\"/>" + catalog("main", "en", msg("c", "C"))));
  write("abs.xmc", xmc(catalog("main", "en", msg("abs", "Z"))));
  xmc_file_loader loader;
  load_error const e = loader.parse(dir + "/cat/a.xmc", "en");
  ASSERT_EQ(e.type(), xmc_file_loader::no_error) << e.message();
  EXPECT_EQ(loader.messages().at("main").size(), 4u);
  EXPECT_EQ(loader.base_directory(), dir + "/cat/");
}

TEST_F(xmc_file_loader_files, include_errors_carry_every_file_frame) {
  std::string const a = write("a.xmc", xmc("<include file=\"sub/b.xmc\"/>"));
  std::string const b = write("sub/b.xmc", xmc("<include file=\"c.xmc\"/>"));
  std::string const c = write("sub/c.xmc", xmc(catalog("main", "en", msg("m", "<p/>"))));
  xmc_file_loader loader;
  EXPECT_EQ(loader.parse(a, "en").message(), P + "Invalid element \"p\"\n in message element: \"m\"\n in catalog element: \"main\"" +
                                                 "\n in file: \"" + c + "\"\n in file: \"" + b + "\"\n in file: \"" + a + "\"");

  write("sub/c.xmc", "<?xml?><xmc version=\"1.0\"><a></xmc>");  // an XML fault names the files around it
  EXPECT_EQ(xmc_file_loader().parse(a, "en").message(),
            P + "Mismatched end element \"xmc\" was found\n at line: \"0\"\n in file: \"" + b + "\"\n in file: \"" + a + "\"");

  write("sub/b.xmc", xmc("<include file=\"C:\"/>"));  // two characters: relative
  EXPECT_EQ(xmc_file_loader().parse(a, "en").message(),
            P + "File \"" + dir + "/sub/C:\" was not found on disk\n in file: \"" + b + "\"\n in file: \"" + a + "\"");

  write("sub/b.xmc", xmc("<include file=\"c.xmc\">\n</include>"));
  write("sub/c.xmc", xmc(""));
  EXPECT_EQ(xmc_file_loader().parse(a, "en").message(),
            P + "Expected \"include\" end tag not found\n in file: \"" + b + "\"\n in file: \"" + a + "\"");
}

TEST_F(xmc_file_loader_files, a_file_that_includes_itself_fails_with_its_frames) {
  std::string const self = write("self.xmc", xmc("<include file=\"self.xmc\"/>"));
  xmc_file_loader loader;
  load_error const e = loader.parse(self, "en");
  EXPECT_EQ(e.type(), xmc_file_loader::invalid_attribute);
  EXPECT_EQ(e.message(), P + "Invalid attibute \"file\"\n in file: \"" + self + "\"");

  std::string const a = write("a.xmc", xmc("<include file=\"sub/b.xmc\"/>"));
  std::string const b = write("sub/b.xmc", xmc("<include file=\"../a.xmc\"/>"));
  EXPECT_EQ(std::string(xmc_file_loader().parse(a, "en").message()),
            P + "Invalid attibute \"file\"\n in file: \"" + b + "\"\n in file: \"" + a + "\"");

  // The same file twice side by side is no cycle.
  std::string const twice = write("twice.xmc", xmc("<include file=\"leaf.xmc\"/><include file=\"leaf.xmc\"/>"));
  write("leaf.xmc", xmc(catalog("c", "en", msg("m", "x"))));
  EXPECT_EQ(xmc_file_loader().parse(twice, "en").type(), xmc_file_loader::no_error);
}

TEST_F(xmc_file_loader_files, a_long_include_chain_uses_no_deep_recursion) {
  int const depth = 3000;
  for (int i = 0; i < depth; ++i)
    write("f" + std::to_string(i) + ".xmc", xmc("<include file=\"f" + std::to_string(i + 1) + ".xmc\"/>"));
  write("f" + std::to_string(depth) + ".xmc", xmc(catalog("deep", "en", msg("m", "bottom"))));
  xmc_file_loader loader;
  load_error const e = loader.parse(dir + "/f0.xmc", "en");
  ASSERT_EQ(e.type(), xmc_file_loader::no_error) << e.message().substr(0, 300);
  EXPECT_EQ(items(loader.messages().at("deep").at("m")), "0:bottom\n");
}

}  // namespace
