#include "code_page_names.hpp"

#include <cctype>

namespace vexa_cli {
namespace {

using cp = vexa::strings::code_page;

// Lower case without the separators people vary: "ISO-8859-1" and
// "iso_8859_1" both become "iso88591".
std::string folded(std::string const& text) {
  std::string out;
  for (unsigned char c : text) {
    if (c == '-' || c == '_' || c == '.' || c == ' ') continue;
    out += static_cast<char>(std::tolower(c));
  }
  return out;
}

bool all_digits(std::string const& text) {
  if (text.empty() || text.size() > 9) return false;
  for (unsigned char c : text) {
    if (!std::isdigit(c)) return false;
  }
  return true;
}

}  // namespace

std::vector<code_page_name> const& code_page_names() {
  static std::vector<code_page_name> const table = {
      {cp::system_code_set, {"system", "locale"}, "the locale's own code set"},
      {cp::system_code_set_2, {}, "the locale's own code set (as 1)"},
      {cp::system_code_set_3, {}, "the locale's own code set (as 1)"},
      {cp::utf8, {"utf-8", "utf8"}, "Unicode, UTF-8"},
      {cp::cp932, {"shift_jis", "cp932", "windows-31j", "sjis", "ms932"}, "Japanese (Windows Shift JIS)"},
      {cp::cp936, {"gbk", "cp936"}, "simplified Chinese (GBK)"},
      {cp::cp949, {"cp949", "uhc"}, "Korean (unified Hangul code)"},
      {cp::cp950, {"big5", "cp950"}, "traditional Chinese (Big5)"},
      {cp::cp1250, {"cp1250", "windows-1250"}, "central European (Windows)"},
      {cp::cp1251, {"cp1251", "windows-1251"}, "Cyrillic (Windows)"},
      {cp::cp1252, {"cp1252", "windows-1252"}, "western European (Windows)"},
      {cp::cp1253, {"cp1253", "windows-1253"}, "Greek (Windows)"},
      {cp::cp1254, {"cp1254", "windows-1254"}, "Turkish (Windows)"},
      {cp::cp1255, {"cp1255", "windows-1255"}, "Hebrew (Windows)"},
      {cp::cp1256, {"cp1256", "windows-1256"}, "Arabic (Windows)"},
      {cp::cp1257, {"cp1257", "windows-1257"}, "Baltic (Windows)"},
      {cp::cp1258, {"cp1258", "windows-1258"}, "Vietnamese (Windows)"},
      {cp::koi8_r, {"koi8-r", "cp20866"}, "Russian (KOI8-R)"},
      {cp::koi8_u, {"koi8-u", "cp21866"}, "Ukrainian (KOI8-U)"},
      {cp::iso_8859_1, {"latin1", "iso-8859-1", "l1", "cp28591"}, "western European (ISO)"},
      {cp::iso_8859_2, {"latin2", "iso-8859-2", "l2", "cp28592"}, "central European (ISO)"},
      {cp::iso_8859_3, {"latin3", "iso-8859-3", "l3", "cp28593"}, "south European (ISO)"},
      {cp::iso_8859_4, {"latin4", "iso-8859-4", "l4", "cp28594"}, "north European (ISO)"},
      {cp::iso_8859_5, {"iso-8859-5", "cyrillic", "cp28595"}, "Cyrillic (ISO)"},
      {cp::iso_8859_6, {"iso-8859-6", "arabic", "cp28596"}, "Arabic (ISO)"},
      {cp::iso_8859_7, {"iso-8859-7", "greek", "cp28597"}, "Greek (ISO)"},
      {cp::iso_8859_8, {"iso-8859-8", "hebrew", "cp28598"}, "Hebrew (ISO, visual order)"},
      {cp::iso_8859_9, {"latin5", "iso-8859-9", "l5", "cp28599"}, "Turkish (ISO)"},
      {cp::iso_8859_15, {"latin9", "iso-8859-15", "l9", "cp28605"}, "western European with the euro sign (ISO)"},
      {cp::ascii, {"ascii", "us-ascii"}, "plain 7-bit ASCII"},
  };
  return table;
}

code_page_name const* find_code_page(std::string const& text) {
  if (all_digits(text)) {
    long const number = std::stol(text);
    for (code_page_name const& entry : code_page_names()) {
      if (entry.number == number) return &entry;
    }
    return nullptr;
  }
  std::string const wanted = folded(text);
  if (wanted.empty()) return nullptr;
  for (code_page_name const& entry : code_page_names()) {
    for (std::string const& name : entry.names) {
      if (folded(name) == wanted) return &entry;
    }
  }
  return nullptr;
}

}  // namespace vexa_cli
