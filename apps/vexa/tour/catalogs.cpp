// Tour section: message catalogs — one message of a small catalog in three
// languages, with typed arguments. The catalog files are written into a fresh
// temporary directory first, so the section needs nothing from the source
// tree and runs the same from an installed program.
#include <stdlib.h>

#include <ostream>
#include <string>

#include "tour/section.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/i18n/format_value.hpp"
#include "vexa/i18n/message_catalogs.hpp"
#include "vexa/system/file.hpp"
#include "vexa/system/io.hpp"

namespace {

using namespace vexa;
using generic::argument;
using strings::ustring8;

// A trimmed copy of examples/catalogs: the application catalog, which
// includes the shared units from a subdirectory.
char const app_xmc[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<xmc version="1.1">
  <include file="common/units.xmc"/>
  <catalog name="app" lang="en">
    <msg name="greeting">
      Hello, <arg name="user" type="string"/>!</msg>
    <msg name="saved">
      Saved <arg name="file" type="string"/> (<arg name="size" type="memory"/>) in
      <arg name="elapsed" type="duration"/>.</msg>
    <msg name="quick_start">cmake --workflow --preset <arg name="preset" type="string"/> &amp;&amp; build/<arg name="preset" type="string"/>/bin/vexa <arg name="command" type="string"/></msg>
  </catalog>
  <catalog name="app" lang="de">
    <msg name="greeting">Hallo, <arg name="user" type="string"/>!</msg>
    <msg name="saved">
      <arg name="file" type="string"/> gespeichert (<arg name="size" type="memory" dec_point=","/>) in
      <arg name="elapsed" type="duration" dy="Tg" hr="Std" min="Min" sec="Sek"/>.</msg>
  </catalog>
  <catalog name="app" lang="de_DE">
    <msg name="greeting">Guten Tag, <arg name="user" type="string"/>!</msg>
  </catalog>
  <catalog name="app" lang="fr">
    <msg name="greeting">Bonjour, <arg name="user" type="string"/> !</msg>
    <msg name="saved">
      <arg name="file" type="string"/> enregistré (<arg name="size" type="memory" dec_point=","/>) en
      <arg name="elapsed" type="duration" dy="j" hr="h" min="min" sec="s"/>.</msg>
  </catalog>
</xmc>
)";

char const units_xmc[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<xmc version="1.0">
  <catalog name="units" lang=".">
    <msg name="size">Size: <arg name="bytes" type="memory" precision="2"/></msg>
  </catalog>
</xmc>
)";

// The catalog files in a fresh temporary directory, removed again on scope exit.
struct catalog_files {
  ustring8 root;
  catalog_files() {
    char pattern[] = "/tmp/vexa-tour-XXXXXX";
    if (::mkdtemp(pattern) == nullptr) return;
    root = pattern;
    system::create_directory(root + "/common/");
    system::store_file(root + "/app.xmc", ustring8(app_xmc));
    system::store_file(root + "/common/units.xmc", ustring8(units_xmc));
  }
  ~catalog_files() {
    if (root.empty()) return;
    system::io::remove_file(root + "/common/units.xmc");
    system::io::remove_dir(root + "/common");
    system::io::remove_file(root + "/app.xmc");
    system::io::remove_dir(root);
  }
  catalog_files(catalog_files const&) = delete;
  catalog_files& operator=(catalog_files const&) = delete;
};

void show(std::ostream& out) {
  catalog_files const files;
  std::string const path = files.root;
  generic::varg_list const args(argument("file", "report.txt"), argument("size", 1536ul),
                                argument("elapsed", 3723000), argument("user", "Ada"));
  out << "Catalogs are XMC files; each language keeps the best variant of every message.\n"
         "Message \"saved\" of catalog \"app\" (app.xmc, written to a temporary directory), with\n"
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
