// vexa — the command-line face of the library.
#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
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
  out << "usage: vexa [-h | --help] [-V | --version] <command> [arguments]\n"
         "       vexa help <command>\n\n"
         "vexa checks and shows what the vexa library does with your texts.\n\n"
         "commands:\n";
  for (command const& c : commands()) {
    std::string head = "  " + c.name + " " + c.usage;
    out << head << "\n      " << c.summary << "\n";
  }
  out << "\nRun 'vexa help <command>' for a command's options.\n";
}

}  // namespace

std::vector<command> const& commands() {
  std::sort(registry().begin(), registry().end(),
            [](command const& a, command const& b) { return a.name < b.name; });
  return registry();
}

registrar::registrar(command c) { registry().push_back(std::move(c)); }

}  // namespace vexa_cli

namespace {

int dispatch(std::vector<std::string> const& args) {
  using namespace vexa_cli;
  auto find = [](std::string const& name) -> command const* {
    for (command const& c : commands()) {
      if (c.name == name) return &c;
    }
    return nullptr;
  };
  if (args.empty()) {
    print_help(std::cerr);
    return 2;
  }
  std::string const& first = args[0];
  if (first == "--help" || first == "-h" || first == "help") {
    if (args.size() == 1) {
      print_help(std::cout);
      return 0;
    }
    // "vexa help CMD" is "vexa CMD --help".
    command const* c = first == "help" && args.size() == 2 ? find(args[1]) : nullptr;
    if (c != nullptr) return c->run({"--help"});
    std::cerr << "vexa: " << (first == "help" && args.size() == 2 ? "unknown command '" + args[1] + "'"
                                                                    : "unexpected argument '" + args[first == "help" ? 2 : 1] + "'")
              << " (see 'vexa --help')\n";
    return 2;
  }
  if (first == "--version" || first == "-V") {
    if (args.size() > 1) {
      std::cerr << "vexa: unexpected argument '" << args[1] << "' (see 'vexa --help')\n";
      return 2;
    }
    std::cout << "vexa " << VEXA_VERSION_TEXT << "\n";
    return 0;
  }
  if (command const* c = find(first)) {
    return c->run(std::vector<std::string>(args.begin() + 1, args.end()));
  }
  std::cerr << "vexa: unknown " << (first.size() > 1 && first[0] == '-' ? "option" : "command") << " '"
            << first << "' (see 'vexa --help')\n";
  return 2;
}

// Help texts and listings go through std::cout: a failed write there is
// reported like any other (one message, status 1), not lost at exit.
int check_standard_output(int status) {
  errno = 0;
  bool failed = !std::cout.flush();
  int error = errno;
  if (std::fflush(stdout) != 0) {
    failed = true;
    error = errno;
  }
  if (!failed && std::ferror(stdout) == 0) return status;
  std::cerr << "vexa: <stdout>: cannot write";
  if (error != 0) std::cerr << " (" << std::strerror(error) << ")";
  std::cerr << "\n";
  return status != 0 ? status : 1;
}

}  // namespace

int main(int argc, char** argv) {
  return check_standard_output(dispatch(std::vector<std::string>(argv + 1, argv + argc)));
}
