// Tour section: legacy code pages, a round trip and the '?' for what a page
// cannot hold.
#include <cstdio>
#include <ostream>
#include <string>

#include "tour/section.hpp"
#include "vexa/strings/code_page.hpp"

namespace {

using vexa::strings::code_page;
using vexa::strings::ustring8;

std::string bytes(std::string const& s) {
  std::string out;
  char buffer[8];
  for (unsigned char c : s) {
    std::snprintf(buffer, sizeof buffer, " %02X", static_cast<unsigned>(c));
    out += buffer;
  }
  return out;
}

void show(std::ostream& out) {
  ustring8 const french("d\xC3\xA9j\xC3\xA0 vu \xE2\x82\xAC");
  ustring8 const russian("\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82");
  ustring8 const japanese("\xE3\x81\x93\xE3\x82\x93\xE3\x81\xAB\xE3\x81\xA1\xE3\x81\xAF");

  out << "A code_page names an encoding by number and converts through iconv:\n";
  struct row { char const* label; code_page page; ustring8 text; };
  row const rows[] = {{"1252 ", code_page(code_page::cp1252), french},
                      {"1251 ", code_page(code_page::cp1251), russian},
                      {"20866", code_page(code_page::koi8_r), russian},
                      {"932  ", code_page(code_page::cp932), japanese}};
  for (row const& r : rows) {
    std::string const encoded = r.page.encode(r.text);
    out << "  " << r.label << " encode(\"" << r.text << "\") =" << bytes(encoded) << "\n"
        << "        as_utf8 of that gives the text back: "
        << (r.page.as_utf8(encoded) == r.text ? "yes" : "no") << "\n";
  }

  code_page const ascii(code_page::ascii);
  out << "\nWhat a page cannot hold becomes one '?' per rejected input byte:\n"
      << "  125100 (ASCII) encode(\"" << french << "\") = \"" << ascii.encode(french) << "\"\n"
      << "  1252 as_utf8(61 81 62) = \"" << code_page(code_page::cp1252).as_utf8("a\x81" "b")
      << "\"  (81 is not defined in 1252)\n"
      << "and a sequence cut off at the end of the input is dropped:\n"
      << "  932 as_utf8(61 82) = \"" << code_page(code_page::cp932).as_utf8("a\x82") << "\"\n\n";

  out << "code_page(types::nil) stores 0 and is not equal to types::nil; only a\n"
      << "negative number is: code_page(types::nil) == types::nil is "
      << (code_page(vexa::types::nil) == vexa::types::nil ? "true" : "false") << ".\n";
}

vexa_cli::tour::registrar const section(15, "Code pages", show);

}  // namespace
