// strings::code_page: the value, its comparisons (nil included), the name
// table and the conversion loop's treatment of bad, cut and growing text.
#include "vexa/strings/code_page.hpp"

#include <gtest/gtest.h>
#include <langinfo.h>

#include <cstdint>
#include <sstream>
#include <string>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/strings/unicode.hpp"

namespace {

using namespace vexa::strings;
using cp = code_page;
namespace ex = vexa::exceptions;

std::string hex(std::string const& s) {
  std::ostringstream out;
  out << std::hex;
  for (unsigned char c : s) out << ' ' << static_cast<unsigned>(c);
  return "[" + out.str() + " ]";
}

#define EXPECT_BYTES(expected, actual) EXPECT_EQ(hex(expected), hex(actual))

std::string times(std::string const& s, int n) {
  std::string out;
  while (n-- > 0) out += s;
  return out;
}

cp::encoding_type number(std::int32_t n) { return static_cast<cp::encoding_type>(n); }

// What a call raised: "class: message @ file/function", or "nothing".
template <typename F>
std::string raised(F&& call) {
  try {
    call();
    return "nothing";
  } catch (ex::exception const& e) {
    std::string const kind =
        dynamic_cast<ex::invalid_argument_value const*>(&e) ? "invalid_argument_value" : "other";
    return kind + ": " + e.get_message() + " @ " + e.get_state().file + "/" +
           e.get_state().function;
  }
}

}  // namespace

// ---- the value ------------------------------------------------------------------

TEST(CodePage, NilBuildsZeroAndOnlyNegativeNumbersEqualNil) {
  EXPECT_EQ(cp().type(), cp::none);
  EXPECT_EQ(cp(vexa::types::nil).type(), cp::none);
  EXPECT_FALSE(cp(vexa::types::nil) == vexa::types::nil);  // the deliberate asymmetry
  EXPECT_FALSE(cp().equal(vexa::types::nil));
  EXPECT_TRUE(cp(number(-1)) == vexa::types::nil);
  EXPECT_TRUE(cp(number(INT32_MIN)).equal(vexa::types::nil));
  EXPECT_FALSE(cp(cp::cp1252) == vexa::types::nil);
}

TEST(CodePage, AssignmentAndComparisonWorkOnTheStoredNumber) {
  cp page(cp::cp1251);
  cp const copy(page);
  EXPECT_TRUE(copy == page);
  EXPECT_TRUE(copy == cp::cp1251);
  EXPECT_TRUE(copy.equal(cp::cp1251));
  EXPECT_FALSE(copy != cp::cp1251);

  page.type(cp::koi8_r);
  EXPECT_EQ(page.type(), cp::koi8_r);
  EXPECT_TRUE(page != copy);
  EXPECT_FALSE(page.equal(copy));

  EXPECT_EQ(page.assign(cp::utf8).type(), cp::utf8);
  EXPECT_EQ(page.assign(copy).type(), cp::cp1251);
  EXPECT_EQ(page.assign(vexa::types::nil).type(), cp::none);
  page = cp::ascii;
  EXPECT_EQ(page.type(), cp::ascii);
  page = copy;
  EXPECT_EQ(page.type(), cp::cp1251);
  page = vexa::types::nil;
  EXPECT_EQ(page.type(), cp::none);
  page.type(number(77));  // any number is stored; only conversions check it
  EXPECT_EQ(page.type(), 77);
}

// ---- the name table ---------------------------------------------------------------

TEST(CodePage, ToSystemTypeOfOneTwoThreeIsTheLocalesCodeSet) {
  // 1, 2 and 3 all name the locale's code set; the stored number plays no part.
  std::string const system = nl_langinfo(CODESET);
  for (std::int32_t n : {1, 2, 3}) EXPECT_EQ(cp(cp::cp1252).to_system_type(number(n)), system);
}

TEST(CodePage, NumbersOutsideTheTableRaiseFromToSystemType) {
  std::string const expected =
      "invalid_argument_value: Not valid code_page type @ strings/code_page/to_system_type";
  for (std::int32_t n : {0, 5, -1, 437, 1249, 1259, 65001, 28600, 125101, INT32_MIN}) {
    EXPECT_EQ(raised([&] { cp().to_system_type(number(n)); }), expected) << n;
    // Every conversion reaches the same check before it opens anything.
    EXPECT_EQ(raised([&] { cp(number(n)).encode(ustring8("abc")); }), expected) << n;
    EXPECT_EQ(raised([&] { cp(number(n)).as_utf8(""); }), expected) << n;
    EXPECT_EQ(raised([&] { cp(number(n)).as_utf32("abc"); }), expected) << n;
  }
}

// ---- conversions ------------------------------------------------------------------

TEST(CodePage, EncodeReplacesEachRejectedByteAndDropsACutTail) {
  struct Case { char const* name; cp::encoding_type page; std::string utf8; std::string bytes; };
  Case const cases[] = {
      {"e acute into 1252", cp::cp1252, "\xC3\xA9", "\xE9"},
      {"euro sign into 1252", cp::cp1252, "\xE2\x82\xAC", "\x80"},
      {"e acute into ASCII: one ? per byte", cp::ascii, "\xC3\xA9", "??"},
      {"euro sign into ASCII", cp::ascii, "x\xE2\x82\xACy", "x???y"},
      {"emoji into 1251", cp::cp1251, "\xF0\x9F\x98\x80", "????"},
      {"Cyrillic into KOI8-R", cp::koi8_r, "\xD0\x9F\xD1\x80\xD0\xB8", "\xF0\xD2\xC9"},
      {"Cyrillic into 1251", cp::cp1251, "\xD0\xAF", "\xDF"},
      {"Japanese into 932", cp::cp932, "\xE3\x81\x82", "\x82\xA0"},
      {"invalid UTF-8 bytes", cp::cp1252, "a\xFF\x80z", "a??z"},
      {"cut three-byte tail dropped", cp::cp1252, "a\xE2\x82", "a"},
      {"cut two-byte tail dropped", cp::utf8, "ab\xC3", "ab"},
      {"embedded NUL kept", cp::cp1252, std::string("a\0b", 3), std::string("a\0b", 3)},
      {"empty", cp::cp932, "", ""},
  };
  for (Case const& c : cases) EXPECT_BYTES(c.bytes, cp(c.page).encode(ustring8(c.utf8))) << c.name;
}

TEST(CodePage, DecodeReplacesUndefinedBytesAndDropsACutTail) {
  struct Case { char const* name; cp::encoding_type page; std::string bytes; std::string utf8; };
  Case const cases[] = {
      {"Latin-1 e acute", cp::iso_8859_1, "\xE9", "\xC3\xA9"},
      {"1252 euro sign", cp::cp1252, "\x80", "\xE2\x82\xAC"},
      {"1252 undefined 81", cp::cp1252, "a\x81z", "a?z"},
      {"ASCII high byte", cp::ascii, "\xE9", "?"},
      {"UTF-8 lone lead at the end", cp::utf8, "A\xC3", "A"},
      {"UTF-8 invalid lead inside", cp::utf8, "A\xFF" "B", "A?B"},
      {"932 pair", cp::cp932, "\x82\xA0", "\xE3\x81\x82"},
      {"932 lead byte cut off", cp::cp932, "a\x82", "a"},
      // Pairs that straddle where iconv was told the input ends, after a
      // rejected byte, are offered again in full.
      {"932 pairs after a rejected byte", cp::cp932, "\xFF" "a" + times("\x82\xA0", 20),
       "?a" + times("\xE3\x81\x82", 20)},
      {"936 pair", cp::cp936, "\xC4\xE3", "\xE4\xBD\xA0"},
      {"1255 last letter held back, then flushed", cp::cp1255, "\xE0", "\xD7\x90"},
      {"1258 last letter held back, then flushed", cp::cp1258, "a", "a"},
      {"empty", cp::koi8_u, "", ""},
  };
  for (Case const& c : cases) EXPECT_BYTES(c.utf8, cp(c.page).as_utf8(c.bytes)) << c.name;
}

TEST(CodePage, OutputLongerThanTheInputGrowsTheBuffer) {
  // Latin-1 80..FF doubles in UTF-8.
  std::string high;
  for (int b = 0x80; b <= 0xFF; ++b) high += static_cast<char>(b);
  ustring8 const decoded = cp(cp::iso_8859_1).as_utf8(high);
  ASSERT_EQ(decoded.size(), 256u);
  EXPECT_BYTES(high, cp(cp::iso_8859_1).encode(decoded));

  // One input byte that needs three output bytes, the last byte of the
  // input: twice the remaining input is not enough room, the conversion must
  // still finish.
  EXPECT_BYTES("\xE2\x82\xAC", cp(cp::cp1252).as_utf8("\x80"));
  std::string euros(1000, '\x80');
  ustring8 const three = cp(cp::cp1252).as_utf8(euros);
  ASSERT_EQ(three.size(), 3000u);
  EXPECT_BYTES("\xE2\x82\xAC", three.substr(2997));

  // A rejected byte that meets a full buffer.
  EXPECT_BYTES("\xC3\xA9?", cp(cp::cp1252).as_utf8("\xE9\x81"));
  EXPECT_BYTES("\xC3\xA9\xC3\xA9??", cp(cp::cp1252).as_utf8("\xE9\xE9\x81\x8D"));
}

TEST(CodePage, WideFormsGoThroughUtf8) {
  ustring16 const sixteen = utf8_to_utf16("\xD0\x9F\xD1\x80\xD0\xB8");
  ustring32 const thirtytwo = utf8_to_utf32("\xD0\x9F\xD1\x80\xD0\xB8");
  EXPECT_BYTES("\xCF\xF0\xE8", cp(cp::cp1251).encode(sixteen));
  EXPECT_BYTES("\xCF\xF0\xE8", cp(cp::cp1251).encode(thirtytwo));
  EXPECT_TRUE(cp(cp::cp1251).as_utf16("\xCF\xF0\xE8") == sixteen);
  EXPECT_TRUE(cp(cp::cp1251).as_utf32("\xCF\xF0\xE8") == thirtytwo);
  EXPECT_BYTES("\xD0\x9F\xD1\x80\xD0\xB8", cp(cp::cp1251).as_ustring("\xCF\xF0\xE8"));

  // A malformed wide text reaches the converter as the transform's "-1".
  ustring16 lone;
  lone.push_back(0xDC00);
  EXPECT_BYTES("-1", cp(cp::cp1252).encode(lone));
}

TEST(CodePage, EveryPageRoundTripsPrintableAscii) {
  std::string ascii;
  for (int c = 0x20; c < 0x7F; ++c) ascii += static_cast<char>(c);
  cp::encoding_type const pages[] = {
      cp::system_code_set, cp::system_code_set_2, cp::system_code_set_3, cp::utf8,
      cp::cp932, cp::cp936, cp::cp949, cp::cp950, cp::cp1250, cp::cp1251, cp::cp1252,
      cp::cp1253, cp::cp1254, cp::cp1255, cp::cp1256, cp::cp1257, cp::cp1258, cp::koi8_r,
      cp::koi8_u, cp::iso_8859_1, cp::iso_8859_2, cp::iso_8859_3, cp::iso_8859_4,
      cp::iso_8859_5, cp::iso_8859_6, cp::iso_8859_7, cp::iso_8859_8, cp::iso_8859_9,
      cp::iso_8859_15, cp::ascii};
  for (cp::encoding_type page : pages) {
    std::string const bytes = cp(page).encode(ustring8(ascii));
    EXPECT_BYTES(ascii, bytes) << page;
    EXPECT_BYTES(ascii, cp(page).as_utf8(bytes)) << page;
  }
}

TEST(CodePage, HundredMegabyteInputsConvertWhole) {
  std::size_t const size = 100u << 20;
  std::string text(size, 'a');
  text[size - 2] = '\xC3';  // a two-byte character at the very end:
  text[size - 1] = '\xA9';  // the output is one byte shorter
  std::string const bytes = cp(cp::cp1252).encode(ustring8(text));
  ASSERT_EQ(bytes.size(), size - 1);
  EXPECT_EQ(bytes.back(), '\xE9');
  EXPECT_EQ(bytes.find_first_not_of('a'), size - 2);

  // The way back grows the buffer near the end.
  ustring8 const back = cp(cp::cp1252).as_utf8(bytes);
  ASSERT_EQ(back.size(), size);
  EXPECT_TRUE(back == text);
}
