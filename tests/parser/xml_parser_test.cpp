#include "vexa/parser/xml_parser.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "parser/xml_events.hpp"
#include "vexa/exceptions/runtime_error.hpp"

namespace {

using namespace xml_test;

struct parsed {
  std::string result;
  std::vector<std::string> events;
};

parsed parse_with_events(std::string const& text) {
  xml_parser p;
  recorder r;
  r.attach(p);
  error const e = p.parse(ustring8(text));
  return {result_line(e), r.events};
}

std::string result_of(std::string const& text) {
  xml_parser p;
  return result_line(p.parse(ustring8(text)));
}

std::string const ok = result_line(error::no_error, 0, "");

// ---- the declaration and the byte-order mark ----------------------------------

TEST(XmlParser, DeclarationRules) {
  struct Case { char const* name; std::string text; std::string result; };
  Case const cases[] = {
      {"empty input", "", result_line(error::missing_declaration, 0, "")},
      {"four bytes", "<?xm", result_line(error::missing_declaration, 0, "")},
      {"no declaration", "<a/>", result_line(error::missing_declaration, 0, "")},
      {"upper case", "<?XML?><a/>", result_line(error::missing_declaration, 0, "")},
      {"'>' inside", "<?xml version='1.0'><a/>", result_line(error::missing_declaration, 0, "")},
      {"'<' inside", "<?xml <a/>?>", result_line(error::missing_declaration, 0, "")},
      {"ends inside", "<?xml version='1.0'", result_line(error::declaration_incomplete, 0, "")},
      {"ends on '?'", "<?xml?", result_line(error::declaration_incomplete, 0, "")},
      {"declaration alone", "<?xml version=\"1.0\"?>", result_line(error::declaration_incomplete, 0, "")},
      {"declaration and line feeds", "<?xml?>\n \n", result_line(error::declaration_incomplete, 2, "")},
      {"contents not read", "<?xmlanything at all? ?><a/>", ok},
      {"UTF-8 mark", "\xEF\xBB\xBF<?xml?><a/>", ok},
      {"any three bytes as a mark", "abc<?xml?><a/>", ok},
      {"two bytes are no mark", "ab<?xml?><a/>", result_line(error::missing_declaration, 0, "")},
      {"mark, then too little", "\xEF\xBB\xBF<?x", result_line(error::missing_declaration, 0, "")},
  };
  for (Case const& c : cases) EXPECT_EQ(c.result, result_of(c.text)) << c.name;
}

// ---- every error, with its text and line ----------------------------------------

TEST(XmlParser, ErrorsCarryTypeLineAndText) {
  struct Case { char const* name; std::string body; std::string result; };
  Case const cases[] = {
      {"elements still open: line 0", "\n\n<a>\n<b/>\n", result_line(error::unexpected_end, 0, "")},
      {"comment not closed", "\n<a><!-- x", result_line(error::unexpected_end, 1, "")},
      {"comment marker cut off", "<a><!--", result_line(error::unexpected_end, 0, "")},
      {"comment marker overlaps", "<a><!-->", result_line(error::unexpected_end, 0, "")},
      {"input ends after an end tag's name", "<a></a", result_line(error::unexpected_end, 0, "")},
      {"end tag of another element", "<a><b></a>", result_line(error::tag_mismatch, 0, "a")},
      {"end tag after the root closed", "<a></a></b>", result_line(error::tag_mismatch, 0, "b")},
      {"end tag with nothing ever open", "text</a>", result_line(error::tag_mismatch, 0, "a")},
      {"'/>' with nothing open", "<a></a/>", result_line(error::tag_mismatch, 0, "")},
      {"'<' inside a tag", "<a <b/>", result_line(error::unexpected_character, 0, "<")},
      {"'>' where text would start", "<a>\n></a>", result_line(error::unexpected_character, 1, ">")},
      {"'/' not followed by '>'", "<a /x>", result_line(error::unexpected_character, 0, "x")},
      {"'/' at the end", "<a /", result_line(error::unexpected_character, 0, "")},
      {"name starts with a digit", "<1a/>", result_line(error::unexpected_character, 0, "1")},
      {"'<' at the end", "<a>x<", result_line(error::unexpected_character, 0, "")},
      {"processing instruction", "<?pi?><a/>", result_line(error::unexpected_character, 0, "?")},
      {"'<!' without a comment", "<!DOCTYPE a><a/>", result_line(error::unexpected_character, 0, "!")},
      {"'<!-' without a comment", "<a><!-x--></a>", result_line(error::unexpected_character, 0, "!")},
      {"'<' inside a value", "<a x='<'/>", result_line(error::unexpected_character, 0, "<")},
      {"hyphen ends a name", "<a-b/>", result_line(error::unexpected_character, 0, "-")},
      {"colon ends a name", "<p:a/>", result_line(error::unexpected_character, 0, ":")},
      {"no '='", "<a x>", result_line(error::missing_equals, 0, "x")},
      {"no '=' at the end", "<a x", result_line(error::missing_equals, 0, "x")},
      {"no quote", "<a x=1>", result_line(error::missing_quote, 0, "")},
      {"no quote at the end", "<a x=", result_line(error::missing_quote, 0, "")},
      {"value not closed", "<a x='1/>", result_line(error::missing_quote, 0, "x")},
      {"unknown reference", "<a>&copy;</a>", result_line(error::unknown_entity, 0, "")},
      {"lone '&' at the end", "<a>&", result_line(error::unknown_entity, 0, "")},
      {"duplicate attribute", "<a x=\"1\" x=\"2\"/>", result_line(error::duplicate_attribute, 0, "x")},
      {"second root", "<a></a><b/>", result_line(error::multiple_roots, 0, "")},
      {"second root after text", "<a/> tail <b/>", result_line(error::multiple_roots, 0, "")},
      {"line feeds in white space count", "\n<a>\n\t<b>\n\t\t</a>", result_line(error::tag_mismatch, 3, "a")},
      {"line feeds in text do not", "<a>one\ntwo\nthree</b>", result_line(error::tag_mismatch, 0, "b")},
      {"nor in values and comments", "<a x='\n\n'><!--\n\n--></b>", result_line(error::tag_mismatch, 0, "b")},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.result, result_of(declaration + c.body)) << c.name;
  }
  EXPECT_EQ(result_line(error::tag_mismatch, 1, "b"), result_of("<?xml\n\n?>\n<a></b>")) << "declaration";
}

// ---- references -----------------------------------------------------------------

TEST(XmlParser, ReferencesGiveOneByte) {
  struct Case { std::string reference; std::string text; std::string result; };
  Case const cases[] = {
      {"&amp;", "&", ok},       {"&apos;", "'", ok},
      {"&gt;", ">", ok},        {"&lt;", "<", ok},
      {"&quot;", "\"", ok},     {"&nbsp;", " ", ok},  // a plain space on purpose
      {"&#65;", "A", ok},       {"&#x41;", "A", ok},
      {"&#x6a;", "j", ok},      {"&#0101;", "A", ok},  // radix 0: a leading 0 is octal
      {"&#255;", "\xFF", ok},   {"&#xFF;", "\xFF", ok},
      {"&#0;", std::string(1, '\0'), ok},
      {"&#;", std::string(1, '\0'), ok},
      {"&#x;", std::string(1, '\0'), ok},
      {"&#X41;", "", result_line(error::unexpected_character, 0, "X")},
      {"&#6A;", "", result_line(error::unexpected_character, 0, "A")},
      {"&#x4G;", "", result_line(error::unexpected_character, 0, "G")},
      {"&#65x", "", result_line(error::unexpected_character, 0, "x")},
      {"&amx;", "", result_line(error::unexpected_character, 0, "m")},
      {"&ampx", "", result_line(error::unexpected_character, 0, "m")},
      {"&AMP;", "", result_line(error::unknown_entity, 0, "")},
      {"&gt", "", result_line(error::unexpected_character, 0, "t")},
      {"&n;", "", result_line(error::unexpected_character, 0, ";")},
      {"&copy;", "", result_line(error::unknown_entity, 0, "")},
      {"&;", "", result_line(error::unknown_entity, 0, "")},
      {"& ", "", result_line(error::unknown_entity, 0, "")},
  };
  for (Case const& c : cases) {
    for (bool in_value : {false, true}) {
      std::string const body = in_value ? "<a v='" + c.reference + "'/>" : "<a>" + c.reference + "</a>";
      parsed const got = parse_with_events(declaration + body);
      EXPECT_EQ(c.result, got.result) << body;
      if (c.result != ok) continue;
      std::string const event = in_value ? "attr v=" + shown(c.text) : "text " + shown(c.text);
      ASSERT_GE(got.events.size(), 2u) << body;
      EXPECT_EQ(event, got.events[1]) << body;
    }
  }
}

TEST(XmlParser, NumericReferenceAbove255RaisesTheConversionsError) {
  for (std::string body : {"<a>&#256;</a>", "<a>&#x100;</a>", "<a x='&#99999999999999999999;'/>"}) {
    xml_parser p;
    EXPECT_THROW(p.parse(ustring8(declaration + body)), vexa::exceptions::overflow_error) << body;
  }
}

// ---- events -----------------------------------------------------------------------

TEST(XmlParser, EventsInDocumentOrder) {
  struct Case { char const* name; std::string body; std::vector<std::string> events; };
  Case const cases[] = {
      {"empty-element tag reports start and end", "<a x='1' y=\"2\"/>",
       {"start a", "attr x=1", "attr y=2", "end a"}},
      {"white space around '=' and before '>'", "<a x = '1' ></a >", {"start a", "attr x=1", "end a"}},
      {"attributes need no separating space", "<a x='1'y='2'/>", {"start a", "attr x=1", "attr y=2", "end a"}},
      {"values keep line feeds and the other quote", "<a x='\"\n\"'/>", {"start a", "attr x=\"\\n\"", "end a"}},
      {"a single space or line feed stays in the text", "<a>x y\nz </a>", {"start a", "text x y\\nz ", "end a"}},
      {"two white-space bytes split the text", "<a>x  y</a>", {"start a", "text x", "space   ", "text y", "end a"}},
      {"CR LF splits too", "<a>x\r\ny</a>", {"start a", "text x", "space \\r\\n", "text y", "end a"}},
      {"'>' inside a text run is text", "<a>x>y</a>", {"start a", "text x>y", "end a"}},
      {"'/' starts text", "<a>/x</a>", {"start a", "text /x", "end a"}},
      {"references inside text", "<a>&lt;b&gt; &amp; c</a>", {"start a", "text <b> & c", "end a"}},
      {"a reference can make a pair that does not split", "<a>x &#32;y</a>", {"start a", "text x  y", "end a"}},
      {"white space between elements", "<a>\n  <b/>\n</a>",
       {"start a", "space \\n  ", "start b", "end b", "space \\n", "end a"}},
      {"text outside the root (white space right after the declaration is skipped)", " head <a/> tail", {"text head ", "start a", "end a", "space  ", "text tail"}},
      {"comments anywhere, '--' inside", "<!--c1--><a><!-- x -- y --></a><!---->",
       {"comment c1", "start a", "comment  x -- y ", "end a", "comment "}},
      {"names of letters, digits and '_'", "<A_1><b2_/></A_1>", {"start A_1", "start b2_", "end b2_", "end A_1"}},
      {"end tag may carry attributes", "<a></a x='1'>", {"start a", "end a", "attr x=1"}},
      {"white space in a tag is not reported", "<a\n\tx='1'\n/>", {"start a", "attr x=1", "end a"}},
      {"bytes pass through", "<a>\xC3\xA9\x01</a>", {"start a", "text \\xC3\\xA9\\x01", "end a"}},
  };
  for (Case const& c : cases) {
    parsed const got = parse_with_events(declaration + c.body);
    EXPECT_EQ(ok, got.result) << c.name;
    EXPECT_TRUE(same_lines(c.events, got.events)) << c.name;
  }
}

TEST(XmlParser, EventsBeforeAFaultStand) {
  parsed const got = parse_with_events(declaration + "<a x='1'>t<b y='2");
  EXPECT_EQ(result_line(error::missing_quote, 0, "y"), got.result);
  // The value read so far is reported before the fault.
  EXPECT_TRUE(same_lines({"start a", "attr x=1", "text t", "start b", "attr y=2"}, got.events));
}

TEST(XmlParser, EmptySlotsDropEvents) {
  xml_parser p;
  recorder r;
  p.set_comment_handler(vexa::functor::member_function(&r, &recorder::on_comment));
  EXPECT_EQ(ok, result_line(p.parse(ustring8(declaration + "<a x='1'>t &amp;<!--c--> <b/></a>"))));
  EXPECT_TRUE(same_lines({"comment c"}, r.events));
}

// ---- state between parses ------------------------------------------------------------

TEST(XmlParser, OneParserManyDocuments) {
  xml_parser p;
  recorder r;
  r.attach(p);
  EXPECT_EQ(ok, result_line(p.parse(ustring8(declaration + "<a/>"))));
  // A root per parse: the first document's root does not count against this one.
  EXPECT_EQ(ok, result_line(p.parse(ustring8(declaration + "<b/>"))));
  // A failed parse leaves its open elements; the next document starts in them.
  EXPECT_EQ(result_line(error::unexpected_end, 0, ""), result_line(p.parse(ustring8(declaration + "<c><d>"))));
  r.events.clear();
  EXPECT_EQ(ok, result_line(p.parse(ustring8(declaration + "\n</d></c>"))));
  EXPECT_TRUE(same_lines({"end d", "end c"}, r.events));
}

TEST(XmlParser, ParseOverARangeAndDoParsePosition) {
  std::string const text = "xx" + declaration + "<a>t</a>yy";
  xml_parser p;
  EXPECT_EQ(ok, result_line(p.parse(text.begin() + 2, text.end() - 2)));

  std::string const bad = declaration + "<a><b></c>";
  xml_parser::iterator first = bad.begin(), last = bad.end();
  EXPECT_EQ(result_line(error::tag_mismatch, 0, "c"), result_line(p.do_parse(first, last)));
  EXPECT_EQ(bad.find("c>"), static_cast<std::size_t>(first - bad.begin()));

  first = bad.begin();
  last = bad.begin();
  EXPECT_EQ(result_line(error::missing_declaration, 0, ""), result_line(p.do_parse(first, last)));
}

TEST(XmlParser, CopiesCloneTheCallbacks) {
  recorder r;
  xml_parser copy;
  {
    xml_parser original;
    r.attach(original);
    copy = original;
  }
  EXPECT_EQ(ok, result_line(copy.parse(ustring8(declaration + "<a/>"))));
  EXPECT_TRUE(same_lines({"start a", "end a"}, r.events));
}

TEST(XmlParser, ManyAttributesStayDistinct) {
  // Past the first few names the duplicate test takes another path.
  std::string tag = "<a";
  for (int i = 0; i < 2000; ++i) tag += " n" + std::to_string(i) + "='v'";
  EXPECT_EQ(ok, result_of(declaration + tag + "/>"));
  EXPECT_EQ(result_line(error::duplicate_attribute, 0, "n3"), result_of(declaration + tag + " n3='x'/>"));
  EXPECT_EQ(result_line(error::duplicate_attribute, 0, "n1999"), result_of(declaration + tag + " n1999='x'/>"));
  // The names are forgotten at the next start tag.
  EXPECT_EQ(ok, result_of(declaration + "<r>" + tag + "/>" + tag + "/></r>"));
}

// ---- the steps on their own --------------------------------------------------------

TEST(XmlParser, StepFunctions) {
  xml_parser p;
  std::string s = " \n\t\nx";
  xml_parser::iterator it = s.begin(), end = s.end();
  EXPECT_TRUE(p.is_white_space(it));
  EXPECT_EQ(" \n\t\n", p.parse_whitespace(it, end));
  EXPECT_EQ('x', *it);
  EXPECT_FALSE(p.is_white_space(it));
  EXPECT_EQ("", p.parse_whitespace(it, end));

  s = "ab_1-x";
  it = s.begin(), end = s.end();
  EXPECT_EQ("ab_1", p.parse_name(it, end));
  EXPECT_EQ('1', *it) << "left on the name's last byte";

  s = "'a&lt;b\"'rest";
  it = s.begin(), end = s.end();
  EXPECT_EQ("a<b\"", p.parse_attrib_value(it, end));
  EXPECT_EQ(8, it - s.begin()) << "left on the closing quote";

  s = "\"open";
  it = s.begin(), end = s.end();
  EXPECT_EQ("open", p.parse_attrib_value(it, end));
  EXPECT_TRUE(it == end);

  s = "&#x41;z";
  it = s.begin(), end = s.end();
  EXPECT_EQ("A", p.parse_character(it, end));
  EXPECT_EQ(';', *it);

  // The steps throw their records, with the line count of the parser (two
  // line feeds were skipped above).
  struct Case { std::string text; int step; std::string result; };
  Case const cases[] = {
      {"1a", 0, result_line(error::unexpected_character, 2, "1")},
      {"", 0, result_line(error::unexpected_character, 2, "")},
      {"x'", 1, result_line(error::missing_quote, 2, "")},
      {"'a<'", 1, result_line(error::unexpected_character, 2, "<")},
      {"'&bad;'", 1, result_line(error::unknown_entity, 2, "")},
      {"&quo;", 2, result_line(error::unexpected_character, 2, "u")},
  };
  for (Case const& c : cases) {
    s = c.text;
    it = s.begin(), end = s.end();
    try {
      if (c.step == 0) p.parse_name(it, end);
      if (c.step == 1) p.parse_attrib_value(it, end);
      if (c.step == 2) p.parse_character(it, end);
      ADD_FAILURE() << "no throw for " << c.text;
    } catch (error const& e) {
      EXPECT_EQ(c.result, result_line(e)) << c.text;
    }
  }
}

}  // namespace
