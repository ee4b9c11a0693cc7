// vexa tour — a short guided demonstration of the library on built-in
// examples. The sections live under tour/, one file per subsystem.
#include <cctype>
#include <iostream>
#include <string>
#include <vector>

#include "command.hpp"
#include "options.hpp"
#include "tour/section.hpp"

namespace {

std::string lowered(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

vexa_cli::syntax const tour_syntax{
    "tour",
    "[TOPIC...]",
    "Shows what the library does, section by section, on built-in examples.\n"
    "With TOPICs, only the sections whose title contains one of them (any case).",
    {{"list", 0, "", "list the section titles instead of showing them"}},
};

int run(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(tour_syntax, args, opts)) return *status;
  bool const list = opts.has("list");
  std::vector<std::string> topics;
  for (std::string const& a : opts.operands()) topics.push_back(lowered(a));

  int shown = 0;
  for (vexa_cli::tour::section const& s : vexa_cli::tour::sections()) {
    bool wanted = topics.empty();
    for (std::string const& t : topics) wanted = wanted || lowered(s.title).find(t) != std::string::npos;
    if (!wanted) continue;
    ++shown;
    if (list) {
      std::cout << s.title << "\n";
      continue;
    }
    std::cout << (shown > 1 ? "\n" : "") << "== " << s.title << " ==\n\n";
    s.show(std::cout);
  }
  if (shown == 0 && !topics.empty()) {
    std::cerr << "vexa tour: no section matches (see 'vexa tour --list')\n";
    return 2;
  }
  return 0;
}

vexa_cli::registrar const tour_command({"tour", "[--list] [TOPIC...]",
                                        "a short guided demonstration of the library", run});

}  // namespace
