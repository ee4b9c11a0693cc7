// vexa catalog — checks, lists and renders XMC message catalogs.
//
//   vexa catalog check PATH [--lang L]
//   vexa catalog list PATH --lang L
//   vexa catalog render PATH --lang L CATALOG MESSAGE [NAME[:TYPE]=VALUE ...]
//
// PATH is a catalog file or a directory of them. `check` loads for L ("en"
// when not given: the neutral and English catalogs) and prints the load
// result; exit status 1 when the load fails. `render` builds the argument
// list from NAME=VALUE pairs, the optional TYPE choosing the value's type.
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "command.hpp"
#include "options.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/i18n/message_catalogs.hpp"

namespace {

using namespace vexa;
using i18n::message_catalogs;
using i18n::message_item;

vexa_cli::option const lang_option{"lang", 'l', "L", "the language to load, e.g. de_DE or fr"};

vexa_cli::syntax const catalog_syntax{
    "catalog",
    "check|list|render ...",
    "Checks, lists and renders XMC message catalogs. PATH is a catalog file or a\n"
    "directory (every .xmc and .xml file below it is read).",
    {},
    0,
    0,
    false,
    "subcommands:\n"
    "  check PATH [--lang L]      load and print the result; status 1 when it fails\n"
    "  list PATH --lang L         catalogs, languages, messages and their arguments\n"
    "  render PATH --lang L CATALOG MESSAGE [NAME[:TYPE]=VALUE ...]\n"
    "                             render one message\n"};

vexa_cli::syntax const check_syntax{
    "catalog check", "PATH",
    "Loads the catalogs at PATH for the language (default en) and prints the result.\n"
    "Exit status 1 when the load fails.",
    {lang_option}, 1, 1, true};

vexa_cli::syntax const list_syntax{
    "catalog list", "PATH",
    "Lists the catalogs loaded from PATH for the language: their languages, and each\n"
    "message with the language it was read in and its arguments (name:type).",
    {lang_option}, 1, 1, true};

vexa_cli::syntax const render_syntax{
    "catalog render", "PATH CATALOG MESSAGE [NAME[:TYPE]=VALUE ...]",
    "Renders one message of the catalogs at PATH for the language.",
    {lang_option}, 3, static_cast<std::size_t>(-1), false,
    "argument types (the value's type; the catalog decides how it is shown):\n"
    "  string (default), int, uint, double, bool,\n"
    "  mem or memory (a byte count), metric (a number), ms or duration (milliseconds)\n"
    "example:\n"
    "  vexa catalog render examples/catalogs --lang de app saved file=a.txt size:mem=1536 elapsed:ms=61000\n"};

char const* type_name(message_item::type_t type) {
  static char const* const names[] = {"value", "string", "number", "int",    "double",      "time",
                                      "date",  "memory", "mem_unit", "metric", "metric_unit", "duration"};
  return type < 12 ? names[type] : "unknown";
}

// Loads PATH for the language; prints the failure and returns false.
bool load(message_catalogs& catalogs, std::string const& path, std::string const& lang) {
  message_catalogs::result_type const result = catalogs.load(path, lang);
  if (result.type() == message_catalogs::no_error) return true;
  std::cerr << result.message() << "\n";
  return false;
}

int check(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(check_syntax, args, opts)) return *status;
  std::string const lang = opts.value("lang", "en");
  message_catalogs catalogs;
  message_catalogs::result_type const result = catalogs.load(opts.operands()[0], lang);
  std::cout << result.message() << "\n";
  if (result.type() != message_catalogs::no_error) return 1;
  unsigned long messages = 0;
  for (auto const& entry : catalogs) messages += entry.second->count();
  std::cout << catalogs.count() << (catalogs.count() == 1 ? " catalog, " : " catalogs, ") << messages
            << (messages == 1 ? " message" : " messages") << " for language " << lang << "\n";
  return 0;
}

int list(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(list_syntax, args, opts)) return *status;
  if (!opts.has("lang")) return vexa_cli::usage_error(list_syntax, "--lang is required");
  message_catalogs catalogs;
  if (!load(catalogs, opts.operands()[0], opts.value("lang"))) return 1;
  for (auto const& entry : catalogs) {
    i18n::catalog_t const& c = *entry.second;
    std::cout << "catalog " << entry.first << " (languages:";
    for (auto it = c.languages_begin(); it != c.languages_end(); ++it) std::cout << " " << *it;
    std::cout << ")\n";
    for (auto const& m : c) {
      std::cout << "  " << m.first << " [" << m.second._orginal_locale() << "]";
      std::string seen;
      for (message_item const& item : m.second.items()) {
        if (!item.is_argument()) continue;
        std::string const arg = item.name() + ":" + type_name(item.type());
        if (seen.find(" " + arg + " ") != std::string::npos) continue;  // each argument once
        seen += " " + arg + " ";
        std::cout << " " << arg;
      }
      std::cout << "\n";
    }
  }
  return 0;
}

// NAME[:TYPE]=VALUE to an argument; false (with `error` set) when it is not one.
bool make_argument(std::string const& given, generic::varg_list& args, std::string& error) {
  std::size_t const equals = given.find('=');
  if (equals == std::string::npos || equals == 0) {
    error = "argument '" + given + "' is not NAME=VALUE";
    return false;
  }
  std::string name = given.substr(0, equals);
  std::string const value = given.substr(equals + 1);
  std::string type = "string";
  if (std::size_t const colon = name.find(':'); colon != std::string::npos) {
    type = name.substr(colon + 1);
    name.resize(colon);
  }
  auto number = [&](auto convert) {
    char* end = nullptr;
    errno = 0;
    auto const n = convert(value.c_str(), &end);
    if (value.empty() || *end != 0 || errno != 0) {
      error = "argument '" + name + "': '" + value + "' is not a valid " + type;
      return false;
    }
    args.push_back(name, types::variant(n));
    return true;
  };
  if (type == "string") {
    args.push_back(name, types::variant(strings::ustring8(value)));
    return true;
  }
  if (type == "int" || type == "ms" || type == "duration")
    return number([](char const* s, char** e) { return std::strtol(s, e, 0); });
  if (type == "uint" || type == "mem" || type == "memory") {
    if (!value.empty() && value[0] == '-') {
      error = "argument '" + name + "': '" + value + "' is not a valid " + type;
      return false;
    }
    return number([](char const* s, char** e) { return std::strtoul(s, e, 0); });
  }
  if (type == "double" || type == "metric") return number([](char const* s, char** e) { return std::strtod(s, e); });
  if (type == "bool") {
    if (value != "true" && value != "false") {
      error = "argument '" + name + "': a bool is true or false";
      return false;
    }
    args.push_back(name, types::variant(value == "true"));
    return true;
  }
  error = "argument '" + name + "': unknown type '" + type + "'";
  return false;
}

int render(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(render_syntax, args, opts)) return *status;
  if (!opts.has("lang")) return vexa_cli::usage_error(render_syntax, "--lang is required");
  std::vector<std::string> const& operands = opts.operands();
  generic::varg_list arguments;
  for (std::size_t i = 3; i < operands.size(); ++i) {
    std::string error;
    if (!make_argument(operands[i], arguments, error)) return vexa_cli::usage_error(render_syntax, error);
  }
  message_catalogs catalogs;
  if (!load(catalogs, operands[0], opts.value("lang"))) return 1;
  i18n::message_t const& message = catalogs.message(operands[1], operands[2]);
  if (message == types::nil) {
    std::cerr << "vexa catalog render: no message '" << operands[2] << "' in catalog '" << operands[1] << "'\n";
    return 1;
  }
  std::cout << message.as_string(arguments) << "\n";
  if (!message.has_valid_args(arguments)) {
    std::cerr << "vexa catalog render: missing argument(s):";
    for (strings::ustring8 const& name : message.arguments())
      if (!arguments.has_argument(name)) std::cerr << " " << name;
    std::cerr << "\n";
    return 1;
  }
  return 0;
}

int run(std::vector<std::string> const& args) {
  if (!args.empty() && args[0] == "check") return check({args.begin() + 1, args.end()});
  if (!args.empty() && args[0] == "list") return list({args.begin() + 1, args.end()});
  if (!args.empty() && args[0] == "render") return render({args.begin() + 1, args.end()});
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(catalog_syntax, args, opts)) return *status;
  return vexa_cli::usage_error(catalog_syntax, args.empty() ? "a subcommand is required (check, list or render)"
                                                            : "unknown subcommand '" + args[0] + "'");
}

vexa_cli::registrar const catalog_command({"catalog", "check|list|render PATH [--lang L] ...",
                                           "check, list and render XMC message catalogs", run});

}  // namespace
