// vexa — `strings::code_page`: text between UTF-8 and legacy code pages.
//
// A code_page is a small value naming one encoding by its number in the
// Windows numbering (plus 1..3 for the system's own code set and 4 for
// UTF-8). Each conversion opens an iconv descriptor, converts the whole text
// and closes the descriptor again, so a code_page can be copied and shared
// freely and keeps no state between calls.
//
// Decisions made here:
//   - 1, 2 and 3 all select the system's current code set as
//     nl_langinfo(CODESET) reports it at the time of the call (the C locale's
//     "ANSI_X3.4-1968" unless the program called setlocale). 125100 is plain
//     ASCII. Both are the library's own numbers and are kept as they are.
//   - Bad input never throws. Each input byte that iconv rejects becomes one
//     "?" (a two-byte UTF-8 character that a code page lacks gives "??"); an
//     incomplete sequence at the very end of the input is dropped.
//   - Comparing with types::nil is true exactly when the stored number is
//     negative. code_page(types::nil) stores 0 and so is NOT equal to
//     types::nil; this asymmetry is deliberate and kept.
//   - The iconv descriptor is closed on every path, throwing ones too.
//   - When the output is full it grows by twice the unconverted input and
//     the room offered is everything up to its new end, so a character that
//     needs more bytes than that still gets through. After the input, one
//     more iconv call flushes what the converter held back (the last letter
//     of a 1255 or 1258 text waits there for a combining mark). The same
//     flush runs before the "?" of a rejected byte, so the letter before it
//     keeps its place and never combines with a mark after it.
//   - After a rejected byte, iconv is offered the input in a window of a few
//     bytes that doubles with each clean call. The result is unchanged; the
//     cost per rejected byte stays constant instead of growing with the text
//     (glibc re-converts what it was offered after each rejection).
//   - Errors are thrown as exceptions::invalid_argument_value (an invalid
//     number, "Not valid code_page type", function "to_system_type") or
//     exceptions::runtime_error ("convertions not supported", "Unknown
//     failure on iconv open", "Unknown iconv error", "iconv failed to close",
//     function "encode" or "as_utf8"), all with the file "strings/code_page".
//
//   strings::code_page(strings::code_page::cp1252).encode(ustring8("\xC3\xA9"))  // "\xE9"
//   strings::code_page(strings::code_page::ascii).encode(ustring8("\xC3\xA9"))   // "??"
#ifndef VEXA_STRINGS_CODE_PAGE_HPP
#define VEXA_STRINGS_CODE_PAGE_HPP

#include <cstdint>
#include <string>

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/nil.hpp"

namespace VEXA_2_10 {
namespace strings {

class VEXA_API code_page {
 public:
  // The encodings. The numbers are the contract (stored data holds them);
  // every number not listed, 0 and negative numbers included, is invalid.
  enum encoding_type : std::int32_t {
    none = 0,               // no encoding chosen; no conversion accepts it
    system_code_set = 1,    // nl_langinfo(CODESET)
    system_code_set_2 = 2,  // the same
    system_code_set_3 = 3,  // the same
    utf8 = 4,               // "UTF-8"
    cp932 = 932,            // "WINDOWS-31J" (Japanese)
    cp936 = 936,            // "GBK" (simplified Chinese)
    cp949 = 949,            // "CP949" (Korean)
    cp950 = 950,            // "BIG5" (traditional Chinese)
    cp1250 = 1250,          // "CP1250" (central European)
    cp1251 = 1251,          // "CP1251" (Cyrillic)
    cp1252 = 1252,          // "CP1252" (western European)
    cp1253 = 1253,          // "CP1253" (Greek)
    cp1254 = 1254,          // "CP1254" (Turkish)
    cp1255 = 1255,          // "CP1255" (Hebrew)
    cp1256 = 1256,          // "CP1256" (Arabic)
    cp1257 = 1257,          // "CP1257" (Baltic)
    cp1258 = 1258,          // "CP1258" (Vietnamese)
    koi8_r = 20866,         // "KOI8-R"
    koi8_u = 21866,         // "KOI8-U"
    iso_8859_1 = 28591,     // "ISO-8859-1"
    iso_8859_2 = 28592,     // "ISO-8859-2"
    iso_8859_3 = 28593,     // "ISO-8859-3"
    iso_8859_4 = 28594,     // "ISO-8859-4"
    iso_8859_5 = 28595,     // "ISO-8859-5"
    iso_8859_6 = 28596,     // "ISO-8859-6"
    iso_8859_7 = 28597,     // "ISO-8859-7"
    iso_8859_8 = 28598,     // "ISO-8859-8"
    iso_8859_9 = 28599,     // "ISO-8859-9"
    iso_8859_15 = 28605,    // "ISO-8859-15"
    ascii = 125100          // "ANSI_X3.4-1968"
  };

  // ---- construction and assignment ----------------------------------------

  // code_page
  // The default and the nil constructor store 0 (no encoding); the others
  // store the given number or copy it. Nothing is checked until a conversion.
  //   code_page().type()                  // code_page::none
  //   code_page(code_page::cp1251).type() // 1251
  code_page();
  code_page(types::nil_t const& nil);
  code_page(encoding_type const& encoding);
  code_page(code_page const& other);
  ~code_page();

  // type
  // The stored number; the setter replaces it (any number, checked later).
  //   code_page cp; cp.type(code_page::utf8);
  //   cp.type()   // code_page::utf8
  encoding_type type() const;
  void type(encoding_type const& encoding);

  // assign, operator=
  // Replace the stored number; nil stores 0. Return *this.
  //   code_page cp(code_page::cp1252);
  //   cp = types::nil;   // cp.type() == code_page::none
  code_page& assign(code_page const& other);
  code_page& assign(encoding_type const& encoding);
  code_page& assign(types::nil_t const& nil);
  code_page& operator=(code_page const& other);
  code_page& operator=(encoding_type const& encoding);
  code_page& operator=(types::nil_t const& nil);

  // ---- comparison ------------------------------------------------------------

  // equal, operator==, operator!= (code_page, encoding_type)
  // Compare the stored numbers.
  //   code_page(code_page::cp1252) == code_page::cp1252   // true
  //   code_page() != code_page(code_page::utf8)           // true
  bool equal(code_page const& other) const;
  bool equal(encoding_type const& encoding) const;
  bool operator==(code_page const& other) const;
  bool operator==(encoding_type const& encoding) const;
  bool operator!=(code_page const& other) const;
  bool operator!=(encoding_type const& encoding) const;

  // equal, operator== (types::nil_t)
  // True exactly when the stored number is negative, so a code_page built
  // from types::nil (which stores 0) does not equal types::nil.
  //   code_page(types::nil) == types::nil                     // false
  //   code_page(code_page::encoding_type(-1)) == types::nil   // true
  bool equal(types::nil_t const& nil) const;
  bool operator==(types::nil_t const& nil) const;

  // ---- names -----------------------------------------------------------------

  // to_system_type
  // The iconv name of `encoding` (not of the stored number): "CP1252",
  // "WINDOWS-31J", ...; for 1, 2 and 3 nl_langinfo(CODESET). Throws
  // exceptions::invalid_argument_value "Not valid code_page type" for any
  // number outside the table.
  //   code_page().to_system_type(code_page::koi8_r)   // "KOI8-R"
  //   code_page().to_system_type(code_page::none)     // throws
  std::string to_system_type(encoding_type encoding) const;

  // ---- conversions -------------------------------------------------------------

  // encode
  // The text converted from UTF-8 into this code page. Every input byte that
  // iconv rejects (invalid UTF-8, or a character the page lacks) becomes one
  // "?"; an incomplete UTF-8 sequence at the end is dropped. The 16- and
  // 32-bit forms transform their argument to UTF-8 first (a malformed one
  // therefore arrives as the text "-1"). Throws for an invalid number and
  // when iconv fails (see the top of this header).
  //   code_page(code_page::cp1251).encode(ustring8("\xD0\xAF"))   // "\xDF"
  //   code_page(code_page::cp1252).encode(ustring8("a\xE2\x82"))  // "a"
  std::string encode(ustring8 const& text) const;
  std::string encode(ustring16 const& text) const;
  std::string encode(ustring32 const& text) const;

  // as_utf8
  // Bytes in this code page converted into UTF-8. A byte the page does not
  // define becomes one "?"; a multi-byte sequence cut off at the end of the
  // input is dropped. Throws as encode does (function "as_utf8").
  //   code_page(code_page::iso_8859_1).as_utf8("\xE9")   // "\xC3\xA9"
  //   code_page(code_page::utf8).as_utf8("A\xC3")         // "A"
  ustring8 as_utf8(std::string const& bytes) const;

  // as_ustring, as_utf16, as_utf32
  // as_utf8's result itself, or transformed into UTF-16 or UTF-32.
  //   code_page(code_page::cp1252).as_utf16("\x80")   // {0x20AC}
  //   code_page(code_page::cp1252).as_utf32("\x80")   // {0x20AC}
  ustring8 as_ustring(std::string const& bytes) const;
  ustring16 as_utf16(std::string const& bytes) const;
  ustring32 as_utf32(std::string const& bytes) const;

  // ---- implementation details ----------------------------------------------------

 private:
  encoding_type _encoding;
};

}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_STRINGS_CODE_PAGE_HPP
