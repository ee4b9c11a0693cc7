// strings::code_page against glibc's iconv called directly, for every code
// page of the table in both directions: every byte value alone, every
// character U+0000..U+00FF alone, and all 65536 byte pairs in one text.
//
// The reference converts into one buffer large enough for any result and
// applies the library's rules by hand: one "?" per byte iconv rejects (after
// what the converter held back), a cut-off tail dropped, held-back output
// flushed at the end.
#include <errno.h>
#include <gtest/gtest.h>
#include <iconv.h>
#include <langinfo.h>

#include <cstdio>
#include <string>

#include "vexa/strings/code_page.hpp"

namespace {

using namespace vexa::strings;

struct page_case { int number; char const* name; };  // a null name: the locale's code set
page_case const pages[] = {
    {1, nullptr}, {2, nullptr}, {3, nullptr}, {4, "UTF-8"}, {932, "WINDOWS-31J"}, {936, "GBK"},
    {949, "CP949"}, {950, "BIG5"}, {1250, "CP1250"}, {1251, "CP1251"}, {1252, "CP1252"},
    {1253, "CP1253"}, {1254, "CP1254"}, {1255, "CP1255"}, {1256, "CP1256"}, {1257, "CP1257"},
    {1258, "CP1258"}, {20866, "KOI8-R"}, {21866, "KOI8-U"}, {28591, "ISO-8859-1"},
    {28592, "ISO-8859-2"}, {28593, "ISO-8859-3"}, {28594, "ISO-8859-4"}, {28595, "ISO-8859-5"},
    {28596, "ISO-8859-6"}, {28597, "ISO-8859-7"}, {28598, "ISO-8859-8"}, {28599, "ISO-8859-9"},
    {28605, "ISO-8859-15"}, {125100, "ANSI_X3.4-1968"},
};

// The expected result of converting `in`; "iconv failed" for any other error.
std::string reference(char const* to, char const* from, std::string const& in) {
  iconv_t const cd = iconv_open(to, from);
  if (cd == reinterpret_cast<iconv_t>(-1)) return "iconv_open failed";
  std::string out(in.size() * 4 + 64, '\0');
  char* at = &out[0];
  std::size_t room = out.size();
  char* next = const_cast<char*>(in.data());
  std::size_t left = in.size();
  bool failed = false;
  while (left > 0 && !failed) {
    if (iconv(cd, &next, &left, &at, &room) != static_cast<std::size_t>(-1)) continue;
    if (errno == EILSEQ) {
      failed = iconv(cd, nullptr, nullptr, &at, &room) == static_cast<std::size_t>(-1);
      *at++ = '?', --room, ++next, --left;
    } else if (errno == EINVAL) {
      left = 0;
    } else {
      failed = true;
    }
  }
  failed = failed || iconv(cd, nullptr, nullptr, &at, &room) == static_cast<std::size_t>(-1);
  iconv_close(cd);
  return failed ? "iconv failed" : out.substr(0, static_cast<std::size_t>(at - out.data()));
}

std::string hex(std::string const& s) {
  std::string out;
  char buffer[4];
  for (unsigned char c : s) out += (std::snprintf(buffer, sizeof buffer, " %02X", c), buffer);
  return "[" + out + " ]";
}

// Where two long texts first differ, with some context; empty when equal.
std::string difference(std::string const& expected, std::string const& actual) {
  if (expected == actual) return "";
  std::size_t at = 0;
  while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) ++at;
  std::size_t const from = at < 8 ? 0 : at - 8;
  return "sizes " + std::to_string(expected.size()) + "/" + std::to_string(actual.size()) +
         ", from byte " + std::to_string(from) + ": expected " + hex(expected.substr(from, 24)) +
         " actual " + hex(actual.substr(from, 24));
}

}  // namespace

TEST(CodePageIconv, EveryByteValueAndEveryLatin1CharacterAlone) {
  for (page_case const& page : pages) {
    std::string const name = page.name ? page.name : nl_langinfo(CODESET);
    code_page const cp(static_cast<code_page::encoding_type>(page.number));
    for (unsigned b = 0; b < 256; ++b) {
      std::string const byte(1, static_cast<char>(b));
      EXPECT_EQ("", difference(reference("UTF-8", name.c_str(), byte), cp.as_utf8(byte)))
          << page.number << " byte " << b;
      std::string const latin1 = b < 0x80 ? byte : std::string{char(0xC0 | b >> 6), char(0x80 | (b & 0x3F))};
      std::string const bytes = cp.encode(ustring8(latin1));
      EXPECT_EQ("", difference(reference(name.c_str(), "UTF-8", latin1), bytes)) << page.number << " U+" << b;
      // A character the page lacks becomes one "?" per UTF-8 byte.
      if (b != '?' && bytes.find('?') != std::string::npos) {
        EXPECT_EQ(std::string(latin1.size(), '?'), bytes) << page.number << " U+" << b;
      }
    }
  }
}

// The multi-byte pages meet every lead and trail byte combination, the
// others a long run of mixed bytes; what comes out (the page's repertoire
// with a "?" per rejected byte) goes back the other way.
TEST(CodePageIconv, EveryBytePairInOneTextBothWays) {
  std::string pairs;
  for (unsigned i = 0; i < 65536; ++i) pairs += std::string{char(i >> 8), char(i & 0xFF)};
  for (page_case const& page : pages) {
    std::string const name = page.name ? page.name : nl_langinfo(CODESET);
    code_page const cp(static_cast<code_page::encoding_type>(page.number));
    std::string const text = reference("UTF-8", name.c_str(), pairs);
    EXPECT_EQ("", difference(text, cp.as_utf8(pairs))) << page.number;
    EXPECT_EQ("", difference(reference(name.c_str(), "UTF-8", text), cp.encode(ustring8(text))))
        << page.number;
  }
}
