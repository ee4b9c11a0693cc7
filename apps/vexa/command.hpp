// The vexa program's subcommands register themselves here, one file each
// under commands/, so a new subsystem adds its command without touching main.
#ifndef VEXA_APPS_COMMAND_HPP
#define VEXA_APPS_COMMAND_HPP

#include <string>
#include <vector>

namespace vexa_cli {

struct command {
  std::string name;
  std::string usage;    // argument synopsis shown by --help, e.g. "[--from ENC] [FILE]"
  std::string summary;  // one line
  // Receives the arguments after the command name; returns the exit status.
  int (*run)(std::vector<std::string> const& args);
};

// Every registered command, sorted by name.
std::vector<command> const& commands();

struct registrar {
  explicit registrar(command c);
};

}  // namespace vexa_cli

#endif  // VEXA_APPS_COMMAND_HPP
