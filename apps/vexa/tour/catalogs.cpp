// Tour section: message catalogs — one message of the example catalogs in
// three languages, with typed arguments.
#include <ostream>
#include <string>

#include "tour/section.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/i18n/format_value.hpp"
#include "vexa/i18n/message_catalogs.hpp"

namespace {

using namespace vexa;
using generic::argument;

void show(std::ostream& out) {
  std::string const path = std::string(VEXA_EXAMPLES_DIR) + "/catalogs";
  generic::varg_list const args(argument("file", "report.txt"), argument("size", 1536ul),
                                argument("elapsed", 3723000), argument("user", "Ada"));
  out << "Catalogs are XMC files; each language keeps the best variant of every message.\n"
         "Message \"saved\" of catalog \"app\" in " << path << ", with\n"
         "  file=\"report.txt\", size=1536 (memory), elapsed=3723000 ms (duration):\n";
  for (char const* lang : {"en", "de_DE", "fr"}) {
    i18n::message_catalogs catalogs;
    i18n::message_catalogs::result_type const result = catalogs.load(path, lang);
    if (result.type() != i18n::message_catalogs::no_error) {
      out << "  " << lang << ": " << result.message() << "\n";
      continue;
    }
    out << "  " << lang << (lang[2] ? ": " : ":    ") << catalogs.message("app", "saved").as_string(args) << "\n";
  }

  i18n::message_catalogs catalogs;
  catalogs.load(path, "en");
  out << "\nThe README's first command, rendered from a catalog message:\n  "
      << catalogs.message("app", "quick_start")
             .as_string(generic::varg_list(argument("preset", "release"), argument("command", "tour")))
      << "\n";

  out << "\nA missing argument shows in place: "
      << catalogs.message("app", "greeting").as_string(generic::varg_list()) << "\n";

  using i18n::message_item;
  out << "\nformat_value on its own (the options as a catalog writes them):\n"
      << "  memory 1572864                  -> " << i18n::format_value(message_item::memory, 1572864, "") << "\n"
      << "  metric 2300, base_unit=meter    -> "
      << i18n::format_value(message_item::metric, 2300, "\x01" "base_unit\x01" "meter") << "\n"
      << "  duration 90061000               -> " << i18n::format_value(message_item::duration, 90061000, "") << "\n"
      << "  int 255, base=2, fieldsize=010  -> "
      << i18n::format_value(message_item::integer, 255, "\x01" "base\x01" "2\x01" "fieldsize\x01" "010") << "\n"
      << "  int \"twelve\"                    -> " << i18n::format_value(message_item::integer, "twelve", "")
      << " (the mark a message shows as ?invalid?)\n";
}

vexa_cli::tour::registrar const section(80, "Message catalogs", show);

}  // namespace
