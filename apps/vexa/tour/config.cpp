// Tour section: the configuration store — the lexer's view of a line, one
// file read into a tree, and a manager answering from the command line, the
// file and the environment in that order.
#include <stdlib.h>
#include <unistd.h>

#include <cstdio>
#include <iomanip>
#include <ostream>
#include <string>
#include <vector>

#include "tour/section.hpp"
#include "vexa/config/config_manager.hpp"
#include "vexa/config/file_item.hpp"
#include "vexa/config/std_config_dispatch.hpp"
#include "vexa/system/file.hpp"

namespace {

using namespace vexa;
using strings::ustring8;

// A copy of examples/config/app.cfg, so an installed program shows the same section.
char const example_cfg[] = R"cfg(# An application's settings, as the vexa configuration reader takes them.
// Both comment forms run to the end of the line.

[application]
title = "Vexa Demo"          # quotes keep the space
version = 2.10

[net]
host = localhost
port = 8080
timeout = 30                 // seconds

[net.proxy]
host = proxy.example
port = 3128

[paths]
data = /var/lib/vexa
search[] = /usr/share/vexa,
           /usr/local/share/vexa,
           "~/.vexa"

[]
log.level = info
)cfg";

void show(std::ostream& out) {
  ustring8 const line = "list[] = a, \"b c\"  # note";
  out << "The lexer cuts `" << line << "` into:\n ";
  unsigned int at = 0;
  config::config_token token;
  while (config::base_config_item::get_token(line, at, token) != config::config_token::T_END) {
    if (token.type != config::config_token::T_SPACE) out << " " << token.CvtTokStr();
  }
  out << "\n\n";

  char folder[] = "/tmp/vexa-tour-XXXXXX";
  if (mkdtemp(folder) == nullptr) {
    out << "(no temporary folder for the example file)\n";
    return;
  }
  ustring8 const file = ustring8(folder) + "/app.cfg";
  system::store_file(file, std::string(example_cfg));
  char const* argv[] = {"tour", "--net.port=9000", "-verbose"};
  char const* envp[] = {"NET.PORT=1", "NET.TIMEOUT=5", "LOG.LEVEL=debug", "EDITOR=vi", nullptr};
  config::config_manager manager;
  manager.init(config::std_config_dispatch(3, argv, envp, file, ""));
  manager.load();

  out << "A manager over the command line (--net.port=9000 -verbose), examples/config/app.cfg\n"
         "and an environment (NET.PORT=1 NET.TIMEOUT=5 LOG.LEVEL=debug EDITOR=vi) asks\n"
         "them in that order; the first source that has a key answers:\n";
  char const* const ids[] = {"command line", "standard file", "enviroment"};
  for (char const* key : {"net.port", "net.timeout", "log.level", "editor", "verbose", "net.proxy.port"}) {
    ustring8 from = "nowhere";
    for (char const* id : ids) {
      if (manager.get_config_item(id)->get_value(key) != nullptr) {
        from = id;
        break;
      }
    }
    out << "  " << std::left << std::setw(22) << (ustring8(key) + " = " + manager.get_value(key).as_string())
        << "  from the " << from << "\n";
  }
  std::vector<types::variant> search;
  manager.get_array("paths.search", search);
  out << "  paths.search is an array of " << search.size() << ": "
      << (search.empty() ? ustring8() : search.front().as_string()) << ", ...\n"
      << "  keys are case-insensitive: get_value(\"NET/PROXY/HOST\") = "
      << manager.get_value("NET/PROXY/HOST").as_string() << "\n";

  auto command_line = manager.get_config_item("command line");
  command_line->set("proxy", "net.proxy.port", 4);
  out << "  a reference (flag 4): proxy -> net.proxy.port = " << manager.get_value("proxy").as_string() << "\n\n";

  out << "The tree of the command line source, as dump writes it:\n";
  config::config_tree tree = command_line->tree();
  out << tree;
  std::remove(file.c_str());
  rmdir(folder);
}

vexa_cli::tour::registrar const section(70, "Configuration", show);

}  // namespace
