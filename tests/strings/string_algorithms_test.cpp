#include "vexa/strings/string_algorithms.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace vexa::strings;

ustring16 u16(std::string const& ascii) { return ustring16(ascii.begin(), ascii.end()); }

std::string joined(std::vector<std::string> const& pieces) {
  std::string out;
  for (auto const& p : pieces) out += "[" + p + "]";
  return out;
}

TEST(StringAlgorithms, CaseMappingKeepsWhatTheCLibraryDoesNotTake) {
  // Bytes above 0x7F are negative as signed char and kept: UTF-8 survives.
  EXPECT_EQ("HELLO, CAF\xC3\xA9 \xFF", std::string(to_upper(ustring8("Hello, caf\xC3\xA9 \xFF"))));
  EXPECT_EQ("abc\xC3\x89", std::string(to_lower(ustring8("ABC\xC3\x89"))));
  EXPECT_EQ("ABC", gh2::toupper("aBc"));
  EXPECT_EQ("abc", gh2::tolower("aBc"));

  ustring16 wide = u16("aZ");
  wide.push_back(0x1E9);  // above 255: kept
  ustring16 upper = u16("AZ");
  upper.push_back(0x1E9);
  EXPECT_EQ(upper, to_upper(wide));
  EXPECT_EQ(ustring32(L"az\x3A9"), to_lower(ustring32(L"aZ\x3A9")));
  ustring32 negative(1, static_cast<wchar_t>(-5));
  EXPECT_EQ(negative, to_upper(negative));
}

TEST(StringAlgorithms, LowerCaseRange) {
  struct Case { unsigned long first, last; char const* expected; };
  Case const cases[] = {
      {1, 3, "AbcD"}, {0, ~0ul, "abcd"}, {3, 1, "ABCD"}, {2, 2, "ABCD"}, {2, 99, "ABcd"}, {9, ~0ul, "ABCD"},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.expected, lower_case(std::string("ABCD"), c.first, c.last)) << c.first << ".." << c.last;
    EXPECT_EQ(u16(c.expected), lower_case(u16("ABCD"), c.first, c.last)) << c.first << ".." << c.last;
  }
  EXPECT_EQ(ustring32(L"Ab"), lower_case(ustring32(L"AB"), 1, ~0ul));
}

TEST(StringAlgorithms, ReplaceAll) {
  struct Case { char const* text; char const* what; char const* with; char const* expected; std::uint32_t count; };
  Case const cases[] = {
      {"aaa", "a", "aa", "aaaaaa", 3},  // inserted text is not searched again
      {"abc", "x", "y", "abc", 0},
      {"abc", "", "y", "abc", 0},  // empty what: nothing to replace
      {"a-b--c", "--", "+", "a-b+c", 1},
      {"xx", "x", "", "", 2},
      {"aaaa", "aa", "a", "aa", 2},
      {"", "a", "b", "", 0},
  };
  for (Case const& c : cases) {
    std::string s = c.text;
    EXPECT_EQ(c.count, replace_all(s, c.what, c.with)) << c.text;
    EXPECT_EQ(c.expected, s) << c.text;
    std::string g = c.text;
    EXPECT_EQ(c.count, gh2::replace_all(g, c.what, c.with)) << c.text;
    ustring16 w = u16(c.text);
    EXPECT_EQ(c.count, replace_all(w, u16(c.what), u16(c.with))) << c.text;
    EXPECT_EQ(u16(c.expected), w) << c.text;
  }
  std::wstring ws = L"a.b.c";
  EXPECT_EQ(2u, replace_all(ws, std::wstring(L"."), std::wstring(L"::")));
  EXPECT_EQ(L"a::b::c", ws);
  ustring8 u8 = "x\xC3\xA9x";
  EXPECT_EQ(1u, replace_all(u8, ustring8("\xC3\xA9"), ustring8("e")));
  EXPECT_EQ("xex", std::string(u8));
}

TEST(StringAlgorithms, SplitStringKeepsItsAsymmetry) {
  struct Case { char const* text; char const* delimiter; int limit; char const* expected; };
  Case const cases[] = {
      {"a//b/", "/", 0, "[a][][b]"},  // no empty last piece
      {"/a", "/", 0, "[][a]"},        // but an empty first one
      {"abc", "", 0, "[abc]"},
      {"a/b/c/d", "/", 2, "[a][b][c/d]"},
      {"a/b/c/d", "/", -1, "[a][b][c][d]"},
      {"a::b", "::", 0, "[a][b]"},
      {"", "/", 0, ""},
      {"/", "/", 0, "[]"},
      {"a/b", "/", 1, "[a][b]"},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.expected, joined(split_string(std::string(c.text), c.delimiter, c.limit))) << c.text;
    std::vector<ustring8> const eight = split_string(ustring8(c.text), ustring8(c.delimiter), c.limit);
    EXPECT_EQ(c.expected, joined(std::vector<std::string>(eight.begin(), eight.end()))) << c.text;
    std::vector<ustring16> const sixteen = split_string(u16(c.text), u16(c.delimiter), c.limit);
    std::vector<std::string> narrowed;
    for (auto const& piece : sixteen) narrowed.emplace_back(piece.begin(), piece.end());
    EXPECT_EQ(c.expected, joined(narrowed)) << c.text;
  }
  EXPECT_EQ((std::vector<std::wstring>{L"a", L"b"}), split_string(std::wstring(L"a,b,"), std::wstring(L","), 0));
  EXPECT_EQ((std::vector<ustring32>{L"", L"x"}), split_string(ustring32(L"-x"), ustring32(L"-"), 0));
}

}  // namespace
