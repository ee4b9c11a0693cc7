// Bad and huge input: every prefix of a document, random mutations, random
// bytes, deep nesting, a huge value and many elements. Each must give a
// described result, the same with callbacks as without, and must not depend
// on bytes past the end of the range parsed.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "parser/xml_events.hpp"
#include "vexa/exceptions/exception.hpp"
#include "vexa/parser/xml_token_stream.hpp"

namespace {

using namespace xml_test;
using vexa::parser::xml_token_stream;

std::string const sample = declaration +
                           "\n<!-- sample -->\n<root a='1' b=\"x &amp; y\">\n"
                           "  <item n='&#65;&#x42;'>text &lt;here&gt;  and&nbsp;there</item>\n"
                           "  <empty/><!----><e2 />\r\n  tail text\n</root>\n";

// Bytes that would change the outcome if the parser read them.
std::string const poison = "-->?>;'\"</a>x=";

// The outcome of one parse: the record, or the name of what was thrown.
std::string outcome_plain(std::string const& text, std::size_t length) {
  xml_parser p;
  try {
    return result_line(p.parse(text.begin(), text.begin() + static_cast<long>(length)));
  } catch (vexa::exceptions::exception const&) {
    return "exception";
  }
}

std::string outcome_stream(std::string const& text) {
  xml_token_stream s;
  try {
    return result_line(s.parse(ustring8(text)));
  } catch (vexa::exceptions::exception const&) {
    return "exception";
  }
}

// Without callbacks, with callbacks, and with bytes after the range: all alike.
void expect_consistent(std::string const& text, char const* what) {
  std::string const alone = outcome_stream(text);
  EXPECT_EQ(alone, outcome_plain(text, text.size())) << what << ": " << shown(text);
  EXPECT_EQ(alone, outcome_plain(text + poison, text.size())) << what << ": " << shown(text);
}

TEST(XmlRobustness, EveryPrefixOfADocument) {
  ASSERT_EQ(result_line(error::no_error, 0, ""), outcome_stream(sample));
  // Before the root, a prefix of comments and white space is a whole
  // document (no root is required); from the root's '<' on, every prefix
  // short of its closing '>' fails.
  std::size_t const root_opened = sample.find("<root");
  std::size_t const root_closed = sample.rfind('>') + 1;
  for (std::size_t n = 0; n < sample.size(); ++n) {
    std::string const prefix = sample.substr(0, n);
    expect_consistent(prefix, "prefix");
    if (n > root_opened && n < root_closed) {
      EXPECT_NE(result_line(error::no_error, 0, ""), outcome_stream(prefix)) << n;
    }
  }
}

TEST(XmlRobustness, RandomMutations) {
  std::mt19937 rng(20261123);
  std::string const alphabet = "<>/!-?&#;x='\" \n\tamp";
  for (int round = 0; round < 3000; ++round) {
    std::string text = sample;
    int const edits = 1 + static_cast<int>(rng() % 4);
    for (int e = 0; e < edits; ++e) {
      std::size_t const at = rng() % (text.size() + 1);
      char const byte = rng() % 4 == 0 ? static_cast<char>(rng()) : alphabet[rng() % alphabet.size()];
      switch (rng() % 3) {
        case 0: if (at < text.size()) text[at] = byte; break;
        case 1: text.insert(at, 1, byte); break;
        default: if (at < text.size()) text.erase(at, 1); break;
      }
    }
    expect_consistent(text, "mutation");
  }
}

TEST(XmlRobustness, RandomBytes) {
  std::mt19937 rng(7);
  std::string text = declaration + "<r>";
  while (text.size() < (1u << 20)) text += static_cast<char>(rng());
  expect_consistent(text, "random bytes");
  // Markup-heavy noise gets further before it fails.
  std::string const alphabet = "<>/!-?&#;x='\" \nab";
  for (int round = 0; round < 200; ++round) {
    std::string noise = declaration;
    for (int i = 0; i < 200; ++i) noise += alphabet[rng() % alphabet.size()];
    expect_consistent(noise, "noise");
  }
}

TEST(XmlRobustness, DeepNestingNeedsNoStack) {
  std::size_t const depth = 1000000;
  std::string open;
  open.reserve(depth * 7 + 64);
  open = declaration;
  for (std::size_t i = 0; i < depth; ++i) open += "<a>";
  std::string closed = open;
  for (std::size_t i = 0; i < depth; ++i) closed += "</a>";
  xml_parser p;
  EXPECT_EQ(result_line(error::no_error, 0, ""), result_line(p.parse(ustring8(closed))));
  EXPECT_EQ(result_line(error::unexpected_end, 0, ""), result_line(p.parse(ustring8(open))));
  // The failed parse left a million open elements; the next document closes them.
  EXPECT_EQ(result_line(error::no_error, 0, ""),
            result_line(p.parse(ustring8(declaration + closed.substr(open.size())))));
}

struct sizes {
  std::size_t starts = 0;
  std::size_t value = 0;
  void on_start(ustring8 const&) { ++starts; }
  void on_attribute(ustring8 const&, ustring8 const& v) { value = v.size(); }
};

TEST(XmlRobustness, HugeValue) {
  std::size_t const size = 100u << 20;
  std::string text = declaration + "<a v='";
  text.append(size, 'v');
  text += "'/>";
  xml_parser p;
  EXPECT_EQ(result_line(error::no_error, 0, ""), result_line(p.parse(ustring8(text))));
  sizes s;
  p.set_attribute_handler(vexa::functor::member_function(&s, &sizes::on_attribute));
  text.resize(text.size() - 3);  // the closing quote is gone
  EXPECT_EQ(result_line(error::missing_quote, 0, "v"), result_line(p.parse(ustring8(text))));
  EXPECT_EQ(size, s.value);
}

TEST(XmlRobustness, TenMillionElements) {
  std::size_t const count = 10000000;
  std::string text = declaration + "<r>";
  text.reserve(text.size() + 4 * count + 4);
  for (std::size_t i = 0; i < count; ++i) text += "<a/>";
  text += "</r>";
  xml_parser p;
  sizes s;
  p.set_element_start_handler(vexa::functor::member_function(&s, &sizes::on_start));
  EXPECT_EQ(result_line(error::no_error, 0, ""), result_line(p.parse(ustring8(text))));
  EXPECT_EQ(count + 1, s.starts);
}

}  // namespace
