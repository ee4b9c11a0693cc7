// The code pages the vexa program offers on its command line: each number of
// strings::code_page's table with the readable names a user may type for it
// and a one-line description, for `--from CP`/`--to CP` and `--list`.
//
// A name matches without regard to letter case, '-', '_', '.' and spaces, so
// "KOI8-R", "koi8_r" and "koi8r" are one name; the number itself ("1252")
// selects its entry too. Numbers outside the table are not offered.
//
//   vexa_cli::find_code_page("latin1")->number     // 28591
//   vexa_cli::find_code_page("CP-1252")->number    // 1252
//   vexa_cli::find_code_page("ebcdic")             // nullptr
#ifndef VEXA_APPS_CODE_PAGE_NAMES_HPP
#define VEXA_APPS_CODE_PAGE_NAMES_HPP

#include <string>
#include <vector>

#include "vexa/strings/code_page.hpp"

namespace vexa_cli {

struct code_page_name {
  vexa::strings::code_page::encoding_type number;
  std::vector<std::string> names;  // the first is the one shown; may be empty
  std::string description;
};

// Every code page of the table, by increasing number.
std::vector<code_page_name> const& code_page_names();

// The entry whose number or one of whose names is `text`; nullptr if none.
code_page_name const* find_code_page(std::string const& text);

}  // namespace vexa_cli

#endif  // VEXA_APPS_CODE_PAGE_NAMES_HPP
