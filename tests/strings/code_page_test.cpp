// strings::code_page: the value and its comparisons (nil included), invalid
// numbers, and the conversion loop on bad, cut and growing text.
#include "vexa/strings/code_page.hpp"

#include <gtest/gtest.h>
#include <langinfo.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/strings/unicode.hpp"

namespace {

using namespace vexa::strings;
using cp = code_page;
using vexa::types::nil;

std::string hex(std::string const& s) {
  std::string out;
  char buffer[4];
  for (unsigned char c : s) out += (std::snprintf(buffer, sizeof buffer, " %02X", c), buffer);
  return "[" + out + " ]";
}
#define EXPECT_BYTES(expected, actual) EXPECT_EQ(hex(expected), hex(actual))

std::string times(std::string const& s, int n) {
  std::string out;
  while (n-- > 0) out += s;
  return out;
}
cp::encoding_type number(std::int32_t n) { return static_cast<cp::encoding_type>(n); }

}  // namespace

TEST(CodePage, NilBuildsZeroAndOnlyNegativeNumbersEqualNil) {
  EXPECT_EQ(cp().type(), cp::none);
  EXPECT_EQ(cp(nil).type(), cp::none);
  EXPECT_FALSE(cp(nil) == nil);  // the deliberate asymmetry
  EXPECT_TRUE(cp(number(-1)) == nil);
  EXPECT_TRUE(cp(number(INT32_MIN)).equal(nil));
  EXPECT_FALSE(cp(cp::cp1252).equal(nil));
}

TEST(CodePage, AssignmentAndComparisonWorkOnTheStoredNumber) {
  cp page(cp::cp1251);
  cp const copy(page);
  EXPECT_TRUE(copy == page && copy == cp::cp1251 && copy.equal(cp::cp1251) && copy.equal(page));
  page.type(cp::koi8_r);
  EXPECT_TRUE(page != copy && page != cp::cp1251 && page.type() == cp::koi8_r);
  EXPECT_EQ(page.assign(cp::utf8).type(), cp::utf8);
  EXPECT_EQ(page.assign(copy).type(), cp::cp1251);
  EXPECT_EQ(page.assign(nil).type(), cp::none);
  EXPECT_EQ((page = cp::ascii).type(), cp::ascii);
  EXPECT_EQ((page = copy).type(), cp::cp1251);
  EXPECT_EQ((page = nil).type(), cp::none);
  page.type(number(77));  // any number is stored; only conversions check it
  EXPECT_EQ(page.type(), 77);
}

TEST(CodePage, OneTwoAndThreeNameTheLocalesCodeSetAndNumbersOutsideTheTableRaise) {
  for (std::int32_t n : {1, 2, 3}) EXPECT_EQ(cp(cp::cp1252).to_system_type(number(n)), nl_langinfo(CODESET));
  for (std::int32_t n : {0, 5, -1, 437, 1259, 65001, 28600, 125101, INT32_MIN}) {
    // Every conversion reaches the same check before it opens anything.
    for (int call = 0; call < 3; ++call) {
      try {
        if (call == 0) cp().to_system_type(number(n));
        if (call == 1) cp(number(n)).encode(ustring8("abc"));
        if (call == 2) cp(number(n)).as_utf32("");
        ADD_FAILURE() << n << " raised nothing";
      } catch (vexa::exceptions::invalid_argument_value const& e) {
        EXPECT_EQ(std::string("Not valid code_page type @ strings/code_page/to_system_type"),
                  std::string(e.get_message()) + " @ " + e.get_state().file + "/" + e.get_state().function);
      }
    }
  }
}

TEST(CodePage, EncodeReplacesEachRejectedByteAndDropsACutTail) {
  struct Case { char const* name; cp::encoding_type page; std::string utf8, bytes; };
  Case const cases[] = {
      {"e acute into 1252", cp::cp1252, "\xC3\xA9", "\xE9"},
      {"e acute into ASCII: one ? per byte", cp::ascii, "\xC3\xA9", "??"},
      {"euro sign into ASCII", cp::ascii, "x\xE2\x82\xACy", "x???y"},
      {"Cyrillic into KOI8-R", cp::koi8_r, "\xD0\x9F\xD1\x80\xD0\xB8", "\xF0\xD2\xC9"},
      {"Japanese into 932", cp::cp932, "\xE3\x81\x82", "\x82\xA0"},
      {"invalid UTF-8 bytes", cp::cp1252, "a\xFF\x80z", "a??z"},
      {"cut three-byte tail dropped", cp::cp1252, "a\xE2\x82", "a"},
      {"embedded NUL kept", cp::cp1252, std::string("a\0b", 3), std::string("a\0b", 3)},
      {"empty", cp::cp932, "", ""},
  };
  for (Case const& c : cases) EXPECT_BYTES(c.bytes, cp(c.page).encode(ustring8(c.utf8))) << c.name;
}

TEST(CodePage, DecodeReplacesUndefinedBytesAndDropsACutTail) {
  struct Case { char const* name; cp::encoding_type page; std::string bytes, utf8; };
  Case const cases[] = {
      {"1252 euro sign", cp::cp1252, "\x80", "\xE2\x82\xAC"},
      {"1252 undefined 81", cp::cp1252, "a\x81z", "a?z"},
      {"UTF-8 lone lead at the end", cp::utf8, "A\xC3", "A"},
      {"932 lead byte cut off", cp::cp932, "a\x82", "a"},
      // Pairs that straddle where iconv was told the input ends, after a
      // rejected byte, are offered again in full.
      {"932 pairs after a rejected byte", cp::cp932, "\xFF" "a" + times("\x82\xA0", 20),
       "?a" + times("\xE3\x81\x82", 20)},
      {"1255 last letter held back, then flushed", cp::cp1255, "\xE0", "\xD7\x90"},
      {"1258 last letter held back, then flushed", cp::cp1258, "a", "a"},
      // A held-back letter comes out before the "?" of the byte after it,
      // and the mark beyond that byte stands alone.
      {"1255 letter, rejected byte, mark", cp::cp1255, "\xE0\xFF\xC8", "\xD7\x90?\xD6\xB8"},
      {"1258 letter, rejected byte, mark", cp::cp1258, "a\x81\xEC", "a?\xCC\x81"},
      // Output longer than the input grows the buffer, also where twice the
      // remaining input is less than one character needs, and where a
      // rejected byte meets a full buffer.
      {"one byte, three out", cp::cp1252, "\x80", "\xE2\x82\xAC"},
      {"many bytes, three out each", cp::cp1252, times("\x80", 500), times("\xE2\x82\xAC", 500)},
      {"rejected byte at a full buffer", cp::cp1252, "\xE9\xE9\x81\x8D", "\xC3\xA9\xC3\xA9??"},
  };
  for (Case const& c : cases) EXPECT_BYTES(c.utf8, cp(c.page).as_utf8(c.bytes)) << c.name;
}

TEST(CodePage, WideFormsGoThroughUtf8) {
  ustring8 const text("\xD0\x9F\xD1\x80\xD0\xB8");
  EXPECT_BYTES("\xCF\xF0\xE8", cp(cp::cp1251).encode(utf8_to_utf16(text)));
  EXPECT_BYTES("\xCF\xF0\xE8", cp(cp::cp1251).encode(utf8_to_utf32(text)));
  EXPECT_TRUE(cp(cp::cp1251).as_utf16("\xCF\xF0\xE8") == utf8_to_utf16(text));
  EXPECT_TRUE(cp(cp::cp1251).as_utf32("\xCF\xF0\xE8") == utf8_to_utf32(text));
  EXPECT_BYTES(text, cp(cp::cp1251).as_ustring("\xCF\xF0\xE8"));
  // A malformed wide text reaches the converter as the transform's "-1".
  EXPECT_BYTES("-1", cp(cp::cp1252).encode(ustring16(1, 0xDC00)));
}

TEST(CodePage, HundredMegabyteInputsConvertWhole) {
  std::size_t const size = 100u << 20;
  std::string text(size - 2, 'a');
  text += "\xC3\xA9";  // one character at the very end: the output is a byte shorter
  std::string const bytes = cp(cp::cp1252).encode(ustring8(text));
  ASSERT_EQ(bytes.size(), size - 1);
  EXPECT_EQ(bytes.find_first_not_of('a'), size - 2);
  EXPECT_EQ(bytes.back(), '\xE9');
  EXPECT_TRUE(cp(cp::cp1252).as_utf8(bytes) == text);  // growing near the end
}
