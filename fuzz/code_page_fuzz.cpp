// Fuzz target: strings::code_page, decoding and encoding for every code page
// of the table, plus numbers outside it.
//
// Byte 0 picks the code page (one of the 31 numbers of the table, or, from
// 31 on, a number that is not in it); byte 1 the conversion: encode from
// UTF-8, UTF-16 or UTF-32, or as_utf8, as_ustring, as_utf16, as_utf32. The
// rest is the text (UTF-16 and UTF-32 as little-endian units).
//
// Properties: a number of the table never throws, any other number throws
// exactly invalid_argument_value "Not valid code_page type"; what as_utf8
// gives from any page but UTF-8 itself is well-formed UTF-8 (every sequence
// decodes); as_ustring equals
// as_utf8, and as_utf16/as_utf32 are its transforms; for the pages that
// define all 256 bytes (ISO-8859-1, KOI8-R) encoding the decoded text gives
// the bytes back.
#include <cstring>
#include <string>

#include "fuzz_support.hpp"
#include "vexa/exceptions/logic_error.hpp"
#include "vexa/strings/code_page.hpp"
#include "vexa/strings/unicode.hpp"

namespace {

namespace strings = vexa::strings;
using cp = strings::code_page;

cp::encoding_type const table[] = {
    cp::system_code_set, cp::system_code_set_2, cp::system_code_set_3, cp::utf8, cp::cp932,
    cp::cp936, cp::cp949, cp::cp950, cp::cp1250, cp::cp1251, cp::cp1252, cp::cp1253, cp::cp1254,
    cp::cp1255, cp::cp1256, cp::cp1257, cp::cp1258, cp::koi8_r, cp::koi8_u, cp::iso_8859_1,
    cp::iso_8859_2, cp::iso_8859_3, cp::iso_8859_4, cp::iso_8859_5, cp::iso_8859_6,
    cp::iso_8859_7, cp::iso_8859_8, cp::iso_8859_9, cp::iso_8859_15, cp::ascii, cp::none};
constexpr unsigned table_size = sizeof table / sizeof table[0];  // `none` is not valid
int const outside[] = {-1, 5, 437, 1200, 1259, 65001, 125101, 0x7FFFFFFF};

void check_utf8(std::string const& text, std::string const& what) {
  for (unsigned long p = 0; p < text.size();) {
    unsigned long used;
    strings::unichar(text.data(), text.size(), p, used);
    VEXA_FUZZ_CHECK(used != ~0ul, what + " gave malformed UTF-8 " + vexa_fuzz::hex(text));
    p += used;
  }
}

void convert(cp const& page, unsigned how, std::string const& bytes) {
  switch (how) {
    case 0: page.encode(strings::ustring8(bytes)); break;
    case 1: page.encode(strings::ustring16(vexa_fuzz::units_of<unsigned short>(bytes))); break;
    case 2: page.encode(strings::ustring32(vexa_fuzz::units_of<wchar_t>(bytes))); break;
    default: {
      strings::ustring8 const utf8 = page.as_utf8(bytes);
      // The C library's UTF-8 reader takes the old five- and six-byte forms
      // too, so from UTF-8 itself such bytes pass through unchanged.
      if (page.type() != cp::utf8) check_utf8(utf8, "as_utf8");
      if (how == 3) {
        VEXA_FUZZ_CHECK(page.as_ustring(bytes) == utf8, "as_ustring differs from as_utf8");
      } else if (how == 4) {
        VEXA_FUZZ_CHECK(page.as_utf16(bytes) == strings::utf8_to_utf16(utf8), "as_utf16");
      } else {
        VEXA_FUZZ_CHECK(page.as_utf32(bytes) == strings::utf8_to_utf32(utf8), "as_utf32");
      }
      if (page.type() == cp::iso_8859_1 || page.type() == cp::koi8_r)
        VEXA_FUZZ_CHECK(page.encode(utf8) == bytes, "a full page does not round-trip " + vexa_fuzz::hex(bytes));
      break;
    }
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  unsigned const which = in.byte();
  unsigned const how = in.pick(7);
  std::string const bytes = in.rest();
  bool const valid = which < table_size - 1;
  cp const page(valid ? table[which]
                      : which == table_size - 1
                            ? cp::none
                            : static_cast<cp::encoding_type>(outside[which % (sizeof outside / sizeof outside[0])]));
  try {
    convert(page, how, bytes);
    VEXA_FUZZ_CHECK(valid, "code page " + std::to_string(page.type()) + " converted");
  } catch (vexa::exceptions::invalid_argument_value const& e) {
    VEXA_FUZZ_CHECK(!valid && std::strcmp(e.get_message(), "Not valid code_page type") == 0,
                    "code page " + std::to_string(page.type()) + " raised " + e.get_message());
  }
  return 0;
}
