#include "vexa/strings/unicode.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace vexa::strings;
constexpr unsigned long npos = ~0ul;

template <typename String>
std::string hex(String const& s) {
  std::ostringstream out;
  out << std::hex;
  for (auto c : s) {
    out << ' ' << (static_cast<std::uint32_t>(c) & (sizeof(c) == 1 ? 0xFFu : 0xFFFFFFFFu));
  }
  return "[" + out.str() + " ]";
}

#define EXPECT_UNITS(expected, actual) EXPECT_EQ(hex(expected), hex(actual))

ustring16 u16(std::initializer_list<unsigned> units) {
  ustring16 s;
  for (unsigned u : units) s.push_back(static_cast<unsigned short>(u));
  return s;
}
ustring32 u32(std::initializer_list<std::uint32_t> units) {
  ustring32 s;
  for (std::uint32_t u : units) s.push_back(static_cast<wchar_t>(u));
  return s;
}

// ---- decoding ----------------------------------------------------------------

TEST(Unicode, UnicharUtf8) {
  struct Case { char const* name; std::string bytes; unsigned long pos; unsigned code; unsigned long used; };
  Case const cases[] = {
      {"ascii", "A", 0, 'A', 1},
      {"two bytes", "\xC3\xA9", 0, 0xE9, 2},
      {"three bytes at pos", "a\xE2\x82\xAC", 1, 0x20AC, 3},
      {"four bytes", "\xF0\x9F\x98\x80", 0, 0x1F600, 4},
      {"overlong C0 80 accepted", std::string("\xC0\x80", 2), 0, 0, 2},
      {"encoded surrogate ED A0 80 accepted", "\xED\xA0\x80", 0, 0xD800, 3},
      {"F4 90 80 80 above the range accepted", "\xF4\x90\x80\x80", 0, 0x110000, 4},
      {"F7 BF BF BF", "\xF7\xBF\xBF\xBF", 0, 0x1FFFFF, 4},
      {"lone continuation", "\x80", 0, '?', npos},
      {"F8 lead", "\xF8\x80\x80\x80\x80", 0, '?', npos},
      {"truncated three", "\xE2\x82", 0, '?', npos},
      {"bad continuation", "\xC3(", 0, '?', npos},
      {"pos at end", "ab", 2, '?', npos},
      {"empty", "", 0, '?', npos},
  };
  for (Case const& c : cases) {
    unsigned long used = 7;
    EXPECT_EQ(c.code, unichar(c.bytes.data(), c.bytes.size(), c.pos, used)) << c.name;
    EXPECT_EQ(c.used, used) << c.name;
  }
}

TEST(Unicode, UnicharUtf16AndUtf32) {
  struct Case { ustring16 units; unsigned long pos; unsigned code; unsigned long used; };
  Case const cases[] = {
      {u16({0x41}), 0, 0x41, 1},           {u16({0xFFFF}), 0, 0xFFFF, 1},
      {u16({0xD83D, 0xDE00}), 0, 0x1F600, 2}, {u16({0xDBFF, 0xDFFF}), 0, 0x10FFFF, 2},
      {u16({0xDE00}), 0, '?', npos},       {u16({0xD83D}), 0, '?', npos},
      {u16({0xD83D, 0x41}), 0, '?', npos}, {u16({0x41}), 1, '?', npos},
  };
  for (Case const& c : cases) {
    unsigned long used = 7;
    EXPECT_EQ(c.code, unichar(c.units.data(), c.units.size(), c.pos, used)) << hex(c.units);
    EXPECT_EQ(c.used, used) << hex(c.units);
  }
  // The pair must lie within n even if the buffer goes on.
  unsigned long used = 0;
  EXPECT_EQ(63u, unichar(u16({0xD83D, 0xDE00}).data(), 1, 0, used));
  ustring32 const w = u32({0x41, 0xFFFFFFFFu});
  EXPECT_EQ(0xFFFFFFFFu, unichar(w.data(), 2, 1, used));
  EXPECT_EQ(1u, used);
  EXPECT_EQ(63u, unichar(w.data(), 2, 2, used));
  EXPECT_EQ(npos, used);
}

TEST(Unicode, CharacterIndex) {
  struct Case8 { std::string text; unsigned long index, expected; };
  Case8 const cases8[] = {
      {"abc", 0, 0}, {"abc", 3, npos}, {"a\xC3\xA9z", 2, 3}, {"\xF0\x9F\x98\x80z", 1, 4},
      {"a\x80z", 2, npos}, {"\xC3(z", 1, npos},
      // Two characters in four bytes: index 3 walks through the terminator.
      {"\xC3\xA9\xC3\xA9", 3, 5}, {"\xF0\x9F\x98\x80\xC3\xA9x", 6, 10},
  };
  for (Case8 const& c : cases8) {
    EXPECT_EQ(c.expected, character_index(ustring8(c.text), c.index)) << hex(c.text) << " #" << c.index;
  }
  struct Case16 { ustring16 text; unsigned long index, expected; };
  Case16 const cases16[] = {
      {u16({0x41, 0x42}), 0, 0},  {u16({0x41, 0x42}), 2, npos},
      {u16({0xD83D, 0xDE00, 0x78}), 1, 2}, {u16({0xD83D, 0x78, 0x79}), 1, npos},
      // Single-unit steps test the string's first unit.
      {u16({0xDC00, 0x78, 0x79}), 1, npos}, {u16({0x78, 0xDC00, 0x79}), 2, 2},
      {u16({0x78, 0xD83D}), 1, 1}, {u16({0x41, 0x42, 0x43}), 2, 2},
  };
  for (Case16 const& c : cases16) {
    EXPECT_EQ(c.expected, character_index(c.text, c.index)) << hex(c.text) << " #" << c.index;
  }
}

TEST(Unicode, Gh2ChecksAndLengths) {
  struct Case { std::string bytes; unsigned long length; bool valid; };
  Case const cases[] = {
      {"a", 1, true},         {"\xC3\xA9", 2, true},  {"\xC3(", 2, false},
      {"\xE2\x82\xAC", 3, true}, {"\xE2\x82", 3, false}, {"\xF7\xBF\xBF\xBF", 4, true},
      {"\xF8\x80", 0, false}, {"\x80", 0, false},     {"", 0, false},
  };
  for (Case const& c : cases) {
    EXPECT_EQ(c.length, gh2::get_utf8_length(c.bytes.data(), c.bytes.size())) << hex(c.bytes);
    EXPECT_EQ(c.valid, gh2::validate_utf8(c.bytes.data(), c.bytes.size())) << hex(c.bytes);
  }
  EXPECT_FALSE(gh2::validate_utf8(static_cast<unsigned char const*>(nullptr), 4));
  EXPECT_EQ(0u, gh2::get_utf8_length(static_cast<char const*>(nullptr), 4));
  EXPECT_EQ(3u, string_length("h\xC3\xA9"));
  EXPECT_EQ(2u, string_length(L"h\xE9"));
  EXPECT_EQ(1u, string_length(u16({0x41}).c_str()));
  EXPECT_EQ(3u, string_length(ustring32(L"a\0b", 3)));
}

// ---- transforms: named cases -------------------------------------------------

TEST(Unicode, TransformsToUtf8) {
  struct Case { char const* name; ustring32 in; std::string out; };
  Case const from32[] = {
      {"empty", u32({}), ""},
      {"all lengths", u32({0x41, 0xE9, 0x20AC, 0x1F600}), "A\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"},
      {"surrogate anywhere", u32({0x41, 0x42, 0xD800}), "-1"},
      {"above range skipped", u32({0x41, 0x110000, 0x42}), "AB"},
      {"negative as low byte", u32({0xFFFFFFC3u, 0x80000041u}), "\xC3\x41"},
  };
  for (Case const& c : from32) EXPECT_UNITS(c.out, utf32_to_utf8(c.in)) << c.name;

  struct Case16 { char const* name; ustring16 in; std::string out; };
  Case16 const from16[] = {
      {"empty", u16({}), ""},
      {"pair", u16({0x41, 0xD83D, 0xDE00}), "A\xF0\x9F\x98\x80"},
      {"bmp", u16({0x7FF, 0x800, 0xFFFF}), "\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF"},
      {"high surrogate last", u16({0x41, 0xD83D}), "-1"},
      {"lone low", u16({0xDC00, 0x41}), "-1"},
      {"high then ascii", u16({0xD83D, 0x41}), "-1"},
  };
  for (Case16 const& c : from16) EXPECT_UNITS(c.out, utf16_to_utf8(c.in)) << c.name;
}

TEST(Unicode, TransformsToUtf16AndUtf32) {
  struct Case { char const* name; std::string in; ustring16 out16; ustring32 out32; };
  Case const from8[] = {
      {"empty", "", u16({}), u32({})},
      {"emoji F0 9F 98 80", "\xF0\x9F\x98\x80", u16({0xD83D, 0xDE00}), u32({0x1F600})},
      {"overlong C0 80", std::string("\xC0\x80", 2), u16({0}), u32({0})},
      {"encoded surrogate ED A0 80", "\xED\xA0\x80", u16({0xD800}), u32({0xD800})},
      {"F4 90 80 80", "\xF4\x90\x80\x80", u16({0xDC00, 0xDC00}), u32({0x110000})},
      {"plane 0 in four bytes", "\xF0\x80\x81\x81", u16({0xD7C0, 0xDC41}), u32({0x41})},
      {"bad first byte ends", "\x80zz", u16({'-', '1'}), u32({'?'})},
      {"bad continuation at start", "\xC3(z", u16({'-', '1'}), u32({'?'})},
      {"bad later resumes", "a\xC3(\xFF", u16({'-', '1'}), u32({'a', '?', '(', '?'})},
      {"truncated four", "ab\xF0\x9F\x98", u16({'-', '1'}), u32({'a', 'b', '?', '?', '?'})},
  };
  for (Case const& c : from8) {
    EXPECT_UNITS(c.out16, utf8_to_utf16(c.in)) << c.name;
    EXPECT_UNITS(c.out32, utf8_to_utf32(c.in)) << c.name;
  }
  struct Case32 { char const* name; ustring32 in; ustring16 out; };
  Case32 const from32[] = {
      {"U+1F600 without 0x10000 subtracted", u32({0x1F600}), u16({0xD87D, 0xDE00})},
      {"0xFFFF becomes a pair", u32({0xFFFF}), u16({0xD83F, 0xDFFF})},
      {"negative gives low 16 bits", u32({0xFFFF0041u}), u16({0x41})},
      {"surrogate", u32({0x41, 0xDFFF}), u16({'-', '1'})},
      {"above range", u32({0x110000}), u16({'-', '1'})},
  };
  for (Case32 const& c : from32) EXPECT_UNITS(c.out, utf32_to_utf16(c.in)) << c.name;
  EXPECT_UNITS(u32({0x41, 0x1F600}), utf16_to_utf32(u16({0x41, 0xD83D, 0xDE00})));
  EXPECT_UNITS(u32({'-', '1'}), utf16_to_utf32(u16({0xDC00})));
  EXPECT_UNITS(u32({'-', '1'}), utf16_to_utf32(u16({0x41, 0xD800})));
}

// ---- transforms against the unit-by-unit rules, on random text -----------------

std::string encode8(std::uint32_t c) {
  std::string s;
  if (c < 0x80) { s += char(c); }
  else if (c < 0x800) { s += char(0xC0 | c >> 6); s += char(0x80 | (c & 0x3F)); }
  else if (c < 0x10000) { s += char(0xE0 | c >> 12); s += char(0x80 | ((c >> 6) & 0x3F)); s += char(0x80 | (c & 0x3F)); }
  else { s += char(0xF0 | c >> 18); s += char(0x80 | ((c >> 12) & 0x3F)); s += char(0x80 | ((c >> 6) & 0x3F)); s += char(0x80 | (c & 0x3F)); }
  return s;
}

// Text built from runs, of one character or mixed, that cross the block
// sizes of the fast paths, with occasional malformed units.
template <typename Unit>
std::basic_string<Unit> random_text(std::mt19937& rng, bool garbage, unsigned max_runs) {
  static std::uint32_t const palette[] = {'a', ' ', 0x7F, 0xE9, 0x416, 0x7FF, 0x800, 0x4E2D, 0xFFFF, 0x1F600, 0x10FFFF};
  std::basic_string<Unit> s;
  for (unsigned r = rng() % max_runs; r > 0; --r) {
    bool const mixed = rng() % 2 == 0;
    std::uint32_t c = palette[rng() % 11];
    for (unsigned i = rng() % 40; i > 0; --i) {
      if (mixed) c = palette[rng() % 11];
      if (sizeof(Unit) == 1) for (char b : encode8(c)) s += Unit(b);
      else if (sizeof(Unit) == 2 && c > 0xFFFF) { s += Unit(0xD7C0 + (c >> 10)); s += Unit(0xDC00 | (c & 0x3FF)); }
      else s += Unit(c);
    }
    if (garbage && rng() % 3 == 0) s.insert(rng() % (s.size() + 1), 1, Unit(rng() % 2 ? rng() : 0xD800 + rng() % 0x800));
  }
  return s;
}

void check_unit_rules(ustring8 const& t8, ustring16 const& t16, ustring32 const& t32) {
  // From UTF-8: the reference decodes with unichar.
  ustring16 want16;
  ustring32 want32;
  bool bad = false;
  for (unsigned long p = 0, used = 0; p < t8.size(); p += used) {
    std::uint32_t const c = unichar(t8.data(), t8.size(), p, used);
    want32.push_back(wchar_t(c));
    if (used == npos) { bad = true; if (p == 0) break; used = 1; continue; }
    if (used == 4) { want16.push_back((0xD800 + (((c >> 16) - 1) << 6) + ((c >> 10) & 0x3F)) & 0xFFFF); want16.push_back(0xDC00 | (c & 0x3FF)); }
    else want16.push_back(static_cast<unsigned short>(c));
  }
  EXPECT_UNITS(bad ? u16({'-', '1'}) : want16, utf8_to_utf16(t8)) << hex(t8);
  EXPECT_UNITS(want32, utf8_to_utf32(t8)) << hex(t8);

  // From UTF-16: the reference pairs with unichar.
  std::string want8;
  want32.clear();
  bad = false;
  for (unsigned long p = 0, used = 0; p < t16.size() && !bad; p += used) {
    std::uint32_t const c = unichar(t16.data(), t16.size(), p, used);
    bad = used == npos;
    want8 += encode8(c);
    want32.push_back(wchar_t(c));
  }
  EXPECT_UNITS(bad ? std::string("-1") : want8, utf16_to_utf8(t16)) << hex(t16);
  EXPECT_UNITS(bad ? u32({'-', '1'}) : want32, utf16_to_utf32(t16)) << hex(t16);

  // From UTF-32.
  want8.clear();
  want16.clear();
  bool bad8 = false, bad16 = false;
  for (wchar_t w : t32) {
    std::int32_t const c = w;
    bool const surrogate = c >= 0xD800 && c <= 0xDFFF;
    bad8 |= surrogate;
    bad16 |= surrogate || c > 0x10FFFF;
    if (c < 0x80) want8 += char(c & 0xFF);
    else if (c <= 0x10FFFF) want8 += encode8(std::uint32_t(c));
    if (c < 0xFFFF) want16.push_back(std::uint32_t(c) & 0xFFFF);
    else { want16.push_back((std::uint32_t(c) >> 10) + 0xD800); want16.push_back((c & 0x3FF) + 0xDC00); }
  }
  EXPECT_UNITS(bad8 ? std::string("-1") : want8, utf32_to_utf8(t32)) << hex(t32);
  EXPECT_UNITS(bad16 ? u16({'-', '1'}) : want16, utf32_to_utf16(t32)) << hex(t32);
}

TEST(Unicode, TransformsMatchUnitRulesOnRandomText) {
  std::mt19937 rng(20240611);
  for (int round = 0; round < 3000 && !HasFailure(); ++round) {
    bool const garbage = round % 2 == 1;
    // Now and then a long clean text, beyond the on-stack output buffer.
    unsigned const runs = round % 300 == 0 ? 600 : 6;
    ustring8 const t8 = random_text<char>(rng, garbage, runs);
    ustring16 const t16 = random_text<unsigned short>(rng, garbage, runs);
    check_unit_rules(t8, t16, random_text<wchar_t>(rng, garbage, runs));
  }
}

// Every prefix of mixed text, and random bytes, through every reader: under
// the sanitizers this proves that nothing reads outside the string.
TEST(Unicode, TruncatedAndRandomInputStayInBounds) {
  std::string const sample = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80zzzzzzzzzzzzzzzzz\xF0\x9F\x98";
  std::mt19937 rng(7);
  std::vector<std::string> inputs;
  for (std::size_t n = 0; n <= sample.size(); ++n) inputs.push_back(sample.substr(0, n));
  for (int i = 0; i < 500; ++i) {
    std::string s(rng() % 40, '\0');
    for (char& b : s) b = char(rng() % 3 == 0 ? 'x' : rng());
    inputs.push_back(s);
  }
  unsigned long sink = 0;
  for (std::string const& s : inputs) {
    // Exact-size heap copies, so a read past the end is caught.
    std::vector<char> const b8(s.begin(), s.end());
    std::vector<unsigned short> b16;
    std::vector<wchar_t> b32;
    for (std::size_t i = 0; i + 1 < s.size(); i += 2) b16.push_back(std::uint16_t((s[i] & 0xFF) << 8 | (s[i + 1] & 0xFF)));
    for (std::size_t i = 0; i + 3 < s.size(); i += 4) b32.push_back(wchar_t(std::uint32_t(b16[i / 2]) << 16 | b16[i / 2 + 1]));
    for (unsigned long pos = 0; pos <= s.size() + 1; ++pos) {
      unsigned long used = 0;
      sink += unichar(b8.data(), b8.size(), pos, used) + used;
      sink += unichar(b16.data(), b16.size(), pos, used) + used;
      sink += unichar(b32.data(), b32.size(), pos, used) + used;
      sink += gh2::validate_utf8(b8.data() + std::min<std::size_t>(pos, b8.size()), b8.size() - std::min<std::size_t>(pos, b8.size()));
      sink += character_index(ustring8(s), pos);
      sink += character_index(ustring16(b16.begin(), b16.end()), pos);
    }
    ustring16 const t16(b16.begin(), b16.end());
    ustring32 const t32(b32.begin(), b32.end());
    sink += utf8_to_utf16(s).size() + utf8_to_utf32(s).size() + utf16_to_utf8(t16).size() +
            utf16_to_utf32(t16).size() + utf32_to_utf8(t32).size() + utf32_to_utf16(t32).size();
  }
  EXPECT_NE(0u, sink);
}

}  // namespace
