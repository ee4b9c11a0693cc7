// Tour section: the string types, the Unicode transforms and the string
// algorithms.
#include <cstdio>
#include <ostream>
#include <string>
#include <vector>

#include "tour/section.hpp"
#include "vexa/strings/string_algorithms.hpp"
#include "vexa/strings/unicode.hpp"

namespace {

using namespace vexa::strings;

template <typename String>
std::string units(String const& s, int digits) {
  std::string out;
  char buffer[16];
  for (auto c : s) {
    std::snprintf(buffer, sizeof buffer, " %0*X", digits, static_cast<unsigned>(c) & (digits == 2 ? 0xFFu : 0xFFFFFFFFu));
    out += buffer;
  }
  return out;
}

std::string quoted(std::string const& s) { return "\"" + s + "\""; }

void show(std::ostream& out) {
  ustring8 const sample("Gr\xC3\xBC\xC3\x9F" "e \xCE\xBA\xCE\xB1\xCE\xBB\xCE\xB7\xCE\xBC\xCE\xAD\xCF\x81\xCE\xB1 "
                        "\xE3\x81\x93\xE3\x82\x93\xE3\x81\xAB\xE3\x81\xA1\xE3\x81\xAF \xF0\x9F\x98\x80");
  ustring16 const sixteen = utf8_to_utf16(sample);
  ustring32 const thirtytwo = utf16_to_utf32(sixteen);
  out << "One text in the three string types (lengths count code units):\n"
      << "  " << sample << "\n"
      << "  ustring8  " << string_length(sample) << " bytes:" << units(sample, 2) << "\n"
      << "  ustring16 " << string_length(sixteen) << " units:" << units(sixteen, 4) << "\n"
      << "  ustring32 " << string_length(thirtytwo) << " units:" << units(thirtytwo, 6) << "\n"
      << "  UTF-8 -> UTF-16 -> UTF-32 -> UTF-8 gives the text back: "
      << (utf32_to_utf8(thirtytwo) == sample ? "yes" : "no") << "\n\n";

  unsigned long used = 0;
  unsigned const code = unichar(sample.data(), sample.size(), 2, used);
  char hex[16];
  std::snprintf(hex, sizeof hex, "U+%04X", code);
  out << "Decoding one character: unichar(text, size, 2, used) = " << hex << " with used = " << used << ";\n"
      << "character 6 of the text starts at byte " << character_index(sample, 6) << ".\n\n";

  ustring16 lone;
  lone.push_back('A');
  lone.push_back(0xD800);
  out << "Malformed text never throws. A transform answers with the text \"-1\":\n"
      << "  utf16_to_utf8(0041 D800)       = " << quoted(utf16_to_utf8(lone)) << "\n"
      << "  utf8_to_utf16(\"caf\" C3)        =" << units(utf8_to_utf16("caf\xC3"), 4) << "  (\"-1\")\n"
      << "while utf8_to_utf32 puts '?' in place of each bad byte:\n"
      << "  utf8_to_utf32(\"a\" 80 \"z\")      =" << units(utf8_to_utf32("a\x80z"), 6) << "\n"
      << "so check text first where it matters: gh2::validate_utf8(C3 28) = "
      << (gh2::validate_utf8("\xC3(", 2) ? "true" : "false") << ".\n\n";

  std::string list = "red,green,,blue,";
  std::string pieces;
  for (std::string const& p : split_string(list, ",", 0)) pieces += "[" + p + "]";
  std::string sum = "1-2-3";
  std::uint32_t const count = replace_all(sum, "-", " + ");
  out << "Algorithms work code unit by code unit:\n"
      << "  split_string(\"" << list << "\", \",\") = " << pieces << "  (no empty last piece)\n"
      << "  split_string(\"a/b/c/d\", \"/\", 2) has " << split_string(std::string("a/b/c/d"), "/", 2).size()
      << " pieces, the last is \"c/d\"\n"
      << "  replace_all(\"1-2-3\", \"-\", \" + \") = " << quoted(sum) << " (" << count << " replacements)\n"
      << "  to_upper(\"gr\xC3\xBC\xC3\x9F" "e\") = " << quoted(to_upper(ustring8("gr\xC3\xBC\xC3\x9F" "e")))
      << "  (bytes above 0x7F are kept as they are)\n";
}

vexa_cli::tour::registrar const section(10, "Strings and Unicode", show);

}  // namespace
