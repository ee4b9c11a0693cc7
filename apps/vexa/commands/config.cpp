// vexa config — shows what the configuration reader makes of a .cfg file and
// which source answers a key.
//
//   vexa config dump FILE.cfg                  the file's tree, as config_tree::dump writes it
//   vexa config keys FILE.cfg                  every key with its value, one per line
//   vexa config get KEY [--cfg FILE] [-- ARGS] the key through a manager over ARGS, FILE and
//                                              the environment, with the source that answered
#include <unistd.h>

#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "command.hpp"
#include "options.hpp"
#include "vexa/config/config_manager.hpp"
#include "vexa/config/file_item.hpp"
#include "vexa/config/std_config_dispatch.hpp"

extern char** environ;

namespace {

using namespace vexa;
using strings::ustring8;

vexa_cli::syntax const config_syntax{
    "config",
    "dump FILE.cfg | keys FILE.cfg | get KEY [--cfg FILE] [-- ARGS...]",
    "Shows how the configuration reader understands a .cfg file, and which source\n"
    "answers a key when the command line, a file and the environment all may.",
    {},
    1,
    static_cast<std::size_t>(-1),
    false,
    "Subcommands:\n"
    "  dump FILE.cfg   the file's tree as the library dumps it\n"
    "  keys FILE.cfg   every key with its value, arrays as key[0], key[1], ...\n"
    "  get KEY         the key's value and the source that gave it; see\n"
    "                  'vexa config get --help'",
};

vexa_cli::syntax const dump_syntax{
    "config dump", "FILE.cfg", "Prints the tree that FILE.cfg reads into.", {}, 1, 1, true, ""};

vexa_cli::syntax const keys_syntax{
    "config keys", "FILE.cfg",
    "Prints every key of FILE.cfg with its value, one per line (\"key = value\"),\n"
    "in name order; array elements as \"key[0] = value\".",
    {}, 1, 1, true, ""};

vexa_cli::syntax const get_syntax{
    "config get",
    "KEY [-- ARGS...]",
    "Looks KEY up through a configuration manager over the command line ARGS,\n"
    "the configuration file and the environment, in that order, and prints\n"
    "\"KEY = VALUE (SOURCE)\". ARGS are read as a program's arguments would be:\n"
    "--key=value, -key=value, key=value, key[]=a,b and --flag.",
    {{"cfg", 0, "FILE", "the configuration file (the arguments may name another\n"
                        "with --cfg_file=FILE)", true}},
    1,
    static_cast<std::size_t>(-1),
    false,
    "Exit status 1 when no source has a value for KEY.",
};

// Reads FILE into a file source; false (after a message) when it cannot be read.
bool read_file(vexa_cli::syntax const& s, std::string const& path, config::file_item& item) {
  if (!std::ifstream(path, std::ios::binary).is_open()) {
    std::cerr << "vexa " << s.command << ": " << path << ": cannot read\n";
    return false;
  }
  item.load_file();
  return true;
}

int run_dump(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(dump_syntax, args, opts)) return *status;
  config::file_item item(opts.operands()[0]);
  if (!read_file(dump_syntax, opts.operands()[0], item)) return 1;
  config::config_tree tree = item.tree();
  std::cout << tree;
  return 0;
}

// Every valued node below `tree`, depth first in name order, as a
// configuration file would hold it; array elements as key[i].
void list_keys(config::config_tree const& tree, std::ostream& out) {
  config::_private::for_each_value(
      tree, [&out](strings::ustring8 const& key, config::config_tree const& node,
                   std::vector<config::config_tree const*> const& elements) {
        if ((node.entry().first & 3u) == 3u) {
          for (std::size_t i = 0; i < elements.size(); ++i) {
            out << key << "[" << i << "] = " << elements[i]->entry().second.as_string() << "\n";
          }
        } else {
          out << key << " = " << node.entry().second.as_string() << "\n";
        }
      });
}

int run_keys(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(keys_syntax, args, opts)) return *status;
  config::file_item item(opts.operands()[0]);
  if (!read_file(keys_syntax, opts.operands()[0], item)) return 1;
  list_keys(item.tree(), std::cout);
  return 0;
}

int run_get(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(get_syntax, args, opts)) return *status;
  if (opts.operands_before_dashes() != 1) {
    return vexa_cli::usage_error(get_syntax, "expected one KEY before '--'");
  }
  std::string const key = opts.operands()[0];
  std::vector<std::string> const rest(opts.operands().begin() + 1, opts.operands().end());
  std::vector<char const*> argv{"vexa"};
  for (auto const& a : rest) argv.push_back(a.c_str());

  config::config_manager manager;
  manager.init(config::std_config_dispatch(static_cast<int>(argv.size()), argv.data(),
                                           const_cast<char const* const*>(environ), opts.value("cfg"), ""));
  manager.load();

  // The manager gives the value; the source is found by asking the sources in
  // the same order along the same references.
  char const* const order[] = {"command line", "standard file", "enviroment"};
  auto answering = [&](ustring8 const& k, bool arrays) -> config::base_config_item* {
    for (char const* id : order) {
      auto item = manager.get_config_item(id);
      auto const* entry = item ? item->get_value(k) : nullptr;
      if (entry != nullptr && (!arrays || (entry->first & 3u) == 3u)) return item.get();
    }
    return nullptr;
  };

  types::variant const value = manager.get_value(key);
  if (value != types::nil) {
    ustring8 current = key;
    std::vector<ustring8> seen{current};
    config::base_config_item* source = answering(current, false);
    while (source != nullptr) {
      auto const* entry = source->get_value(current);
      if ((entry->first & 4u) == 0) break;
      current = entry->second.as_string();
      bool again = false;
      for (auto const& s : seen) again = again || s == current;
      if (again) break;
      seen.push_back(current);
      source = answering(current, false);
    }
    std::cout << key << " = " << value.as_string() << " (" << (source ? source->get_id() : ustring8("?"));
    if (current != key) std::cout << ", through " << current;
    std::cout << ")\n";
    return 0;
  }
  if (manager.is_array(key)) {
    std::vector<types::variant> elements;
    manager.get_array(key, elements);
    ustring8 const source = answering(key, true)->get_id();
    for (std::size_t i = 0; i < elements.size(); ++i) {
      std::cout << key << "[" << i << "] = " << elements[i].as_string() << " (" << source << ")\n";
    }
    return 0;
  }
  std::cerr << "vexa config get: " << key << " is not set\n";
  return 1;
}

int run(std::vector<std::string> const& args) {
  std::string const sub = args.empty() ? std::string() : args[0];
  std::vector<std::string> const rest(args.empty() ? args.end() : args.begin() + 1, args.end());
  if (sub == "dump") return run_dump(rest);
  if (sub == "keys") return run_keys(rest);
  if (sub == "get") return run_get(rest);
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(config_syntax, args, opts)) return *status;
  return vexa_cli::usage_error(config_syntax, "unknown subcommand '" + sub + "'");
}

vexa_cli::registrar const config_command({"config", "dump|keys FILE.cfg | get KEY [--cfg FILE] [-- ARGS...]",
                                          "show what a .cfg file holds and which source answers a key", run});

}  // namespace
