#include "vexa/parser/xml_token_stream.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "parser/xml_events.hpp"

namespace {

using namespace xml_test;
using vexa::parser::xml_token_stream;
using token = xml_token_stream::token;

// "0 a", "4 ", "7 hi": the type number, a space, the value.
std::vector<std::string> lines_of(xml_token_stream const& s) {
  std::vector<std::string> out;
  for (token const& t : s) out.push_back(std::to_string(t.type()) + " " + shown(t.value()));
  return out;
}

std::vector<std::string> tokens_of(std::string const& body, std::string* result = nullptr) {
  xml_token_stream s;
  error const e = s.parse(ustring8(declaration + body));
  if (result != nullptr) *result = result_line(e);
  return lines_of(s);
}

TEST(XmlTokenStream, TokenTypesHaveFixedNumbers) {
  EXPECT_EQ(0u, token::element_start);
  EXPECT_EQ(1u, token::element_end);
  EXPECT_EQ(2u, token::attribute_name);
  EXPECT_EQ(3u, token::attribute_value);
  EXPECT_EQ(4u, token::start_tag_end);
  EXPECT_EQ(5u, token::comment);
  EXPECT_EQ(6u, token::space);
  EXPECT_EQ(7u, token::character);
  token const t(token::character, "hi");
  EXPECT_EQ(token::character, t.type());
  EXPECT_EQ("hi", t.value());
}

TEST(XmlTokenStream, TokenOrder) {
  struct Case { char const* name; std::string body; std::vector<std::string> tokens; };
  Case const cases[] = {
      {"empty element", "<a x='1'/>", {"0 a", "2 x", "3 1", "4 ", "1 a"}},
      {"text", "<a>hi</a>", {"0 a", "4 ", "7 hi", "1 a"}},
      {"a comment after a start tag comes before its start_tag_end", "<a><!--c--></a>",
       {"0 a", "5 c", "4 ", "1 a"}},
      {"space between end tags, verbatim", "<a><b></b>\n  </a>", {"0 a", "4 ", "0 b", "4 ", "1 b", "6 \\n  ", "1 a"}},
      {"nested start tags", "<a><b/></a>", {"0 a", "4 ", "0 b", "4 ", "1 b", "1 a"}},
      {"white space closes the start tag", "<a> x  y</a>", {"0 a", "4 ", "6  ", "7 x", "6   ", "7 y", "1 a"}},
      {"attributes and comments keep it open", "<a x='&lt;'><!--1--><!--2-->t</a>",
       {"0 a", "2 x", "3 <", "5 1", "5 2", "4 ", "7 t", "1 a"}},
      {"text and comments outside the root", "<!--h-->\n<a/>\nt",
       {"5 h", "6 \\n", "0 a", "4 ", "1 a", "6 \\n", "7 t"}},
  };
  for (Case const& c : cases) {
    std::string result;
    std::vector<std::string> const got = tokens_of(c.body, &result);
    EXPECT_EQ(result_line(error::no_error, 0, ""), result) << c.name;
    EXPECT_TRUE(same_lines(c.tokens, got)) << c.name;
  }
}

TEST(XmlTokenStream, TokensBeforeAFaultStay) {
  std::string result;
  std::vector<std::string> const got = tokens_of("<a x='1'>t</b>", &result);
  EXPECT_EQ(result_line(error::tag_mismatch, 0, "b"), result);
  EXPECT_TRUE(same_lines({"0 a", "2 x", "3 1", "4 ", "7 t"}, got));
}

TEST(XmlTokenStream, SecondParseAppends) {
  xml_token_stream s;
  EXPECT_EQ(error::no_error, s.parse(ustring8(declaration + "<a/>")).type);
  std::string const second = declaration + "<b>t</b>";
  EXPECT_EQ(error::no_error, s.parse(second.begin(), second.end()).type);
  EXPECT_TRUE(same_lines({"0 a", "4 ", "1 a", "0 b", "4 ", "7 t", "1 b"}, lines_of(s)));
  EXPECT_EQ(7u, s.size());

  // parse() closes a start tag that the previous parse left open.
  xml_token_stream open;
  EXPECT_EQ(error::unexpected_end, open.parse(ustring8(declaration + "<a>")).type);
  EXPECT_EQ(error::no_error, open.parse(ustring8(declaration + "</a>")).type);
  EXPECT_TRUE(same_lines({"0 a", "1 a"}, lines_of(open)));
}

TEST(XmlTokenStream, CopiesAreIndependent) {
  xml_token_stream s;
  s.parse(ustring8(declaration + "<a/>"));
  xml_token_stream copy(s);
  copy.parse(ustring8(declaration + "<b/>"));
  EXPECT_EQ(3u, s.size());
  EXPECT_EQ(6u, copy.size());
  s = copy;
  s.parse(ustring8(declaration + "<c/>"));
  EXPECT_EQ(9u, s.size());
  EXPECT_EQ(6u, copy.size());
  EXPECT_EQ(0u, xml_token_stream().size());
}

}  // namespace
