#include "vexa/config/config_token.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "vexa/config/base_config_item.hpp"

namespace {

using namespace vexa;
using config::base_config_item;
using config::config_token;

// Every token of `text` as "returned/stored[value]@start-end", the whole
// list at once so a mismatch shows all of it.
std::string tokens(strings::ustring8 const& text) {
  std::string all;
  unsigned int at = 0;
  config_token t;
  for (int guard = 0; guard < 100; ++guard) {
    t.value = "~";  // shows which kinds leave the value untouched
    auto const returned = base_config_item::get_token(text, at, t);
    if (returned == config_token::T_END) return all + "END@" + std::to_string(at);
    all += std::to_string(returned) + "/" + std::to_string(t.type) + "[" + t.value + "]@" +
           std::to_string(t.start_position) + "-" + std::to_string(t.end_position) + " ";
  }
  return all + "(no end)";
}

struct lexer_case {
  char const* name;
  strings::ustring8 text;
  std::string expected;
};

TEST(config_lexer, token_sequences) {
  std::vector<lexer_case> const cases = {
      {"empty", "", "END@0"},
      {"spaces keep the value", "   =", "6/6[~]@0-3 7/7[=]@3-4 END@4"},
      {"two-byte operators win", "a==b", "0/0[a]@0-1 8/8[==]@1-3 0/0[b]@3-4 END@4"},
      {"every operator", "<=>=:=+=-=*=/=//<>:+-*#/.[]",
       "12/12[<=]@0-2 10/10[>=]@2-4 14/14[:=]@4-6 22/22[+=]@6-8 23/23[-=]@8-10 28/28[*=]@10-12 "
       "29/29[/=]@12-14 16/16[//]@14-16 11/11[<]@16-17 9/9[>]@17-18 13/13[:]@18-19 20/20[+]@19-20 "
       "21/21[-]@20-21 26/26[*]@21-22 15/15[#]@22-23 27/27[/]@23-24 17/17[.]@24-25 18/18[[]@25-26 "
       "19/19[]]@26-27 END@27"},
      {"star slash is stored 24, returned 16", "x*/", "0/0[x]@0-1 16/24[*/]@1-3 END@3"},
      {"line ends", "\r\n\n\r\t", "2/2[\n]@0-2 2/2[\n]@2-3 4/4[\r]@3-4 3/3[\t]@4-5 END@5"},
      {"escapes stay in strings", "\"a\\\"b\"c", "30/30[a\\\"b]@0-6 0/0[c]@6-7 END@7"},
      {"unterminated string", "\"abc", "30/30[abc]@0-5 END@5"},
      {"backslash as last byte", "\"ab\\", "30/30[ab\\]@0-5 END@5"},
      {"strings span lines", "\"a\nb\"", "30/30[a\nb]@0-5 END@5"},
      {"numbers have no sign or point", "-12.5", "21/21[-]@0-1 1/1[12]@1-3 17/17[.]@3-4 1/1[5]@4-5 END@5"},
      {"letters and digits do not mix", "abc12a_b",
       "0/0[abc]@0-3 1/1[12]@3-5 0/0[a]@5-6 31/31[_]@6-7 0/0[b]@7-8 END@8"},
      {"high bytes one at a time", "\xC3\xA9,", "31/31[\xC3]@0-1 31/31[\xA9]@1-2 31/31[,]@2-3 END@3"},
      {"zero byte", strings::ustring8("a\0b", 3), std::string("0/0[a]@0-1 31/31[") + '\0' + "]@1-2 0/0[b]@2-3 END@3"},
  };
  for (auto const& c : cases) EXPECT_EQ(tokens(c.text), c.expected) << c.name;
}

TEST(config_lexer, the_end_leaves_the_token_alone) {
  config_token t;
  t.value = "kept";
  t.start_position = 7;
  t.end_position = 9;
  t.type = config_token::T_NUM;
  unsigned int at = 5;
  EXPECT_EQ(base_config_item::get_token("abc", at, t), config_token::T_END);
  EXPECT_EQ(at, 5u);
  EXPECT_EQ(t.value, "kept");
  EXPECT_EQ(t.start_position, 7u);
  EXPECT_EQ(t.end_position, 9u);
  EXPECT_EQ(t.type, config_token::T_END);
}

TEST(config_token_names, CvtTokStr) {
  struct name_case {
    unsigned kind;
    char const* value;
    char const* expected;
  };
  std::vector<name_case> const cases = {
      {0, "abc", "T_VAR :[abc]"}, {1, "12", "T_NUM"}, {4, "\r", "T_UNKNOWN:[\r]"}, {5, "", "T_END"},
      {22, "+=", "T_PLUSEQ"},     {24, "*/", "unknown type"}, {25, "", "unknown type"},
      {29, "/=", "T_DIVEQ"},      {30, "s", "T_STRING:[s]"},   {31, ",", "T_NON_ALPHA_NUM:[,]"},
      {32, "", "unknown type"},   {0xFFFFFFFFu, "", "unknown type"},
  };
  for (auto const& c : cases) {
    config_token t;
    t.type = static_cast<config_token::tok_types>(c.kind);
    t.value = c.value;
    EXPECT_EQ(t.CvtTokStr(), c.expected) << c.kind;
  }
}

TEST(config_character_classes, each_class_over_all_bytes) {
  std::string white, space, alpha, digit, delim, dotslash;
  for (int b = 0; b < 256; ++b) {
    char const c = static_cast<char>(b);
    if (config::isConfigWhite(c)) white += c;
    if (config::isConfigSpace(c)) space += c;
    if (config::isConfigAlpha(c)) alpha += c;
    if (config::isConfigDigit(c)) digit += c;
    if (config::isConfigDelim(c)) delim += c;
    if (config::isConfigDotSlash(c)) dotslash += c;
  }
  EXPECT_EQ(white, "\t\n\r ");
  EXPECT_EQ(space, " ");
  EXPECT_EQ(alpha, "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
  EXPECT_EQ(digit, "0123456789");
  EXPECT_EQ(delim, std::string(1, '\0') + "\t\n\r $%&()*+,-/;<=>?[]^{|}~");
  EXPECT_EQ(dotslash, "./\\");
}

}  // namespace
