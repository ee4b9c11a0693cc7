// strings::code_page against glibc's iconv called directly, for every code
// page of the table in both directions: every single byte value, every
// two-byte sequence of the multi-byte pages and every character of the
// Basic Multilingual Plane.
//
// The reference converts into one buffer large enough for any result and
// applies the library's rules for rejected input by hand: one "?" per byte
// that iconv rejects, a cut-off tail dropped, held-back output flushed.
#include <gtest/gtest.h>
#include <errno.h>
#include <iconv.h>
#include <langinfo.h>

#include <cstdint>
#include <cstdio>
#include <string>

#include "vexa/strings/code_page.hpp"

namespace {

using namespace vexa::strings;
using cp = code_page;

struct page_case {
  std::int32_t number;
  char const* iconv_name;  // nullptr: the locale's code set
  bool multi_byte;
};

page_case const pages[] = {
    {1, nullptr, false},           {2, nullptr, false},           {3, nullptr, false},
    {4, "UTF-8", true},            {932, "WINDOWS-31J", true},    {936, "GBK", true},
    {949, "CP949", true},          {950, "BIG5", true},           {1250, "CP1250", false},
    {1251, "CP1251", false},       {1252, "CP1252", false},       {1253, "CP1253", false},
    {1254, "CP1254", false},       {1255, "CP1255", false},       {1256, "CP1256", false},
    {1257, "CP1257", false},       {1258, "CP1258", false},       {20866, "KOI8-R", false},
    {21866, "KOI8-U", false},      {28591, "ISO-8859-1", false},  {28592, "ISO-8859-2", false},
    {28593, "ISO-8859-3", false},  {28594, "ISO-8859-4", false},  {28595, "ISO-8859-5", false},
    {28596, "ISO-8859-6", false},  {28597, "ISO-8859-7", false},  {28598, "ISO-8859-8", false},
    {28599, "ISO-8859-9", false},  {28605, "ISO-8859-15", false}, {125100, "ANSI_X3.4-1968", false},
};

std::string iconv_name(page_case const& page) {
  return page.iconv_name ? page.iconv_name : nl_langinfo(CODESET);
}

cp page_of(page_case const& page) { return cp(static_cast<cp::encoding_type>(page.number)); }

// One descriptor of glibc's iconv, reused for many conversions.
class direct {
 public:
  direct(std::string const& to, std::string const& from) : _cd(iconv_open(to.c_str(), from.c_str())) {}
  ~direct() {
    if (ok()) iconv_close(_cd);
  }
  direct(direct const&) = delete;
  direct& operator=(direct const&) = delete;

  bool ok() const { return _cd != reinterpret_cast<iconv_t>(-1); }

  // The expected result of converting `in`; sets `failed` when iconv reports
  // anything the library treats as an error.
  std::string convert(std::string const& in, bool& failed) {
    std::string out(in.size() * 4 + 64, '\0');
    char* to = &out[0];
    std::size_t room = out.size();
    char* from = const_cast<char*>(in.data());
    std::size_t left = in.size();
    iconv(_cd, nullptr, nullptr, nullptr, nullptr);
    while (left > 0) {
      if (iconv(_cd, &from, &left, &to, &room) != static_cast<std::size_t>(-1)) continue;
      if (errno == EILSEQ) {
        *to++ = '?';
        --room;
        ++from;
        --left;
      } else if (errno == EINVAL) {
        left = 0;
      } else {
        failed = true;
        return "";
      }
    }
    if (iconv(_cd, nullptr, nullptr, &to, &room) == static_cast<std::size_t>(-1)) failed = true;
    out.resize(static_cast<std::size_t>(to - out.data()));
    return out;
  }

 private:
  iconv_t _cd;
};

std::string hex(std::string const& s, std::size_t from, std::size_t count) {
  std::string out;
  char buffer[8];
  for (std::size_t i = from; i < s.size() && i < from + count; ++i) {
    std::snprintf(buffer, sizeof buffer, " %02X", static_cast<unsigned char>(s[i]));
    out += buffer;
  }
  return "[" + out + " ]";
}

// Empty when equal; otherwise where the two first differ, with context.
std::string difference(std::string const& expected, std::string const& actual) {
  if (expected == actual) return "";
  std::size_t at = 0;
  while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) ++at;
  std::size_t const from = at < 8 ? 0 : at - 8;
  return "sizes " + std::to_string(expected.size()) + "/" + std::to_string(actual.size()) +
         ", first difference at byte " + std::to_string(at) + ": expected " +
         hex(expected, from, 24) + " actual " + hex(actual, from, 24);
}

std::string utf8_of(std::uint32_t c) {
  std::string s;
  if (c < 0x80) {
    s += static_cast<char>(c);
  } else if (c < 0x800) {
    s += static_cast<char>(0xC0 | (c >> 6));
    s += static_cast<char>(0x80 | (c & 0x3F));
  } else {
    s += static_cast<char>(0xE0 | (c >> 12));
    s += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
    s += static_cast<char>(0x80 | (c & 0x3F));
  }
  return s;
}

}  // namespace

TEST(CodePageIconv, ToSystemTypeNamesEveryPageOfTheTable) {
  for (page_case const& page : pages) {
    EXPECT_EQ(iconv_name(page), cp().to_system_type(page_of(page).type())) << page.number;
  }
}

// Each byte value alone, decoded; then each character so found, encoded back.
TEST(CodePageIconv, EveryByteValueInBothDirections) {
  for (page_case const& page : pages) {
    direct decoder("UTF-8", iconv_name(page));
    direct encoder(iconv_name(page), "UTF-8");
    ASSERT_TRUE(decoder.ok() && encoder.ok()) << page.number;
    for (int b = 0; b < 256; ++b) {
      std::string const byte(1, static_cast<char>(b));
      bool failed = false;
      std::string const text = decoder.convert(byte, failed);
      ASSERT_FALSE(failed) << page.number << " byte " << b;
      std::string const decoded = page_of(page).as_utf8(byte);
      EXPECT_EQ("", difference(text, decoded)) << page.number << " byte " << b;

      std::string const bytes = encoder.convert(text, failed);
      ASSERT_FALSE(failed) << page.number << " byte " << b;
      EXPECT_EQ("", difference(bytes, page_of(page).encode(ustring8(text))))
          << page.number << " byte " << b;
      // A single-byte page gives back the byte it defines.
      if (!page.multi_byte && text != "?") {
        EXPECT_EQ(hex(byte, 0, 1), hex(bytes, 0, 8)) << page.number;
      }
    }
  }
}

// All 65536 byte pairs in one text: the multi-byte pages meet every lead and
// trail byte combination, and every other page a long run of mixed bytes.
// What comes out, the page's whole repertoire with a "?" for each rejected
// byte, goes back the other way.
TEST(CodePageIconv, EveryBytePairInBothDirections) {
  std::string pairs;
  for (int lead = 0; lead < 256; ++lead) {
    for (int trail = 0; trail < 256; ++trail) {
      pairs += static_cast<char>(lead);
      pairs += static_cast<char>(trail);
    }
  }
  for (page_case const& page : pages) {
    direct decoder("UTF-8", iconv_name(page));
    direct encoder(iconv_name(page), "UTF-8");
    bool failed = false;
    std::string const text = decoder.convert(pairs, failed);
    ASSERT_FALSE(failed) << page.number;
    EXPECT_EQ("", difference(text, page_of(page).as_utf8(pairs))) << page.number;

    std::string const bytes = encoder.convert(text, failed);
    ASSERT_FALSE(failed) << page.number;
    EXPECT_EQ("", difference(bytes, page_of(page).encode(ustring8(text)))) << page.number;
  }
}

// Each character U+0000..U+00FF alone: what a page lacks becomes one "?" per
// UTF-8 byte.
TEST(CodePageIconv, EveryLatin1CharacterEncodesAsIconvDoes) {
  for (page_case const& page : pages) {
    direct encoder(iconv_name(page), "UTF-8");
    for (std::uint32_t c = 0; c < 0x100; ++c) {
      std::string const one = utf8_of(c);
      bool failed = false;
      std::string const reference = encoder.convert(one, failed);
      ASSERT_FALSE(failed) << page.number << " U+" << c;
      std::string const bytes = page_of(page).encode(ustring8(one));
      EXPECT_EQ("", difference(reference, bytes)) << page.number << " U+" << c;
      if (bytes.find('?') != std::string::npos && c != '?') {
        EXPECT_EQ(std::string(one.size(), '?'), bytes) << page.number << " U+" << c;
      }
    }
  }
}
