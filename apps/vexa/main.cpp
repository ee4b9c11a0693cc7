// vexa — the command-line face of the library.
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "command.hpp"

namespace vexa_cli {
namespace {

std::vector<command>& registry() {
  static std::vector<command> all;
  return all;
}

void print_help(std::ostream& out) {
  out << "usage: vexa [--help] [--version] <command> [arguments]\n\n"
         "vexa checks and shows what the vexa library does with your texts.\n\n"
         "commands:\n";
  for (command const& c : commands()) {
    std::string head = "  " + c.name + " " + c.usage;
    out << head << "\n      " << c.summary << "\n";
  }
  out << "\nRun 'vexa <command> --help' for a command's options.\n";
}

}  // namespace

std::vector<command> const& commands() {
  std::sort(registry().begin(), registry().end(),
            [](command const& a, command const& b) { return a.name < b.name; });
  return registry();
}

registrar::registrar(command c) { registry().push_back(std::move(c)); }

}  // namespace vexa_cli

int main(int argc, char** argv) {
  using namespace vexa_cli;
  std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
    print_help(args.empty() ? std::cerr : std::cout);
    return args.empty() ? 2 : 0;
  }
  if (args[0] == "--version") {
    std::cout << "vexa " << VEXA_VERSION_TEXT << "\n";
    return 0;
  }
  for (command const& c : commands()) {
    if (c.name == args[0]) {
      return c.run(std::vector<std::string>(args.begin() + 1, args.end()));
    }
  }
  std::cerr << "vexa: unknown command '" << args[0] << "' (see 'vexa --help')\n";
  return 2;
}
