// The one command-line parser of every vexa subcommand, so that all of them
// accept the same forms and fail the same way.
//
// Accepted forms:
//   --name VALUE  --name=VALUE  -n VALUE  -nVALUE   an option with a value
//   --flag  -f                                     an option without one
//   --                                             ends the options
//   -                                              an operand (standard input)
//   -h  --help                                     prints the command's help
// Unknown options, a missing value, a value given to a flag, an empty file
// name and a wrong number of operands are usage errors: one line on standard
// error naming the command and the fault, and exit status 2.
//
//   vexa_cli::parsed_options opts;
//   if (auto status = vexa_cli::parse_options(utf_syntax, args, opts)) return *status;
//   std::string const to = opts.value("to", "UTF-8");
#ifndef VEXA_APPS_OPTIONS_HPP
#define VEXA_APPS_OPTIONS_HPP

#include <iosfwd>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace vexa_cli {

struct option {
  std::string name{};      // the long name without dashes, e.g. "from"
  char short_name = 0;     // e.g. 'o', or 0 for none
  std::string value_name{};  // e.g. "ENC" when the option takes a value; empty for a flag
  std::string help{};      // one line; "\n" starts a continuation line
  bool file = false;       // the value names a file: an empty value is refused
};

// What a subcommand accepts; also the source of its --help text.
struct syntax {
  std::string command{};     // "utf", or "xml check" for a sub-subcommand
  std::string operands{};    // synopsis of the operands, e.g. "[FILE]"
  std::string description{}; // a paragraph shown under the usage line
  std::vector<option> options{};
  std::size_t min_operands = 0;
  std::size_t max_operands = static_cast<std::size_t>(-1);
  bool operands_are_files = false;  // empty operands are refused
  std::string epilog{};      // text shown after the options
};

class parsed_options {
 public:
  // Whether the option was given at least once.
  bool has(std::string const& name) const;
  // The last value given to the option, or `fallback` when it was not given.
  std::string value(std::string const& name, std::string const& fallback = std::string()) const;
  // Every value given to the option, in order (empty when not given).
  std::vector<std::string> values(std::string const& name) const;
  // The operands, in order; those after "--" included.
  std::vector<std::string> const& operands() const { return operands_; }
  // The number of operands that came before "--" (all of them when there was none).
  std::size_t operands_before_dashes() const { return before_dashes_; }

 private:
  friend std::optional<int> parse_options(syntax const&, std::vector<std::string> const&,
                                          parsed_options&);
  std::map<std::string, std::vector<std::string>> given_;
  std::vector<std::string> operands_;
  std::size_t before_dashes_ = 0;
};

// parse_options
// Fills `out` from `args` (the arguments after the command's name). Returns
// nothing when the command should go on, or the exit status it should return
// at once: 0 after printing the help to standard output for -h/--help, 2
// after printing a usage error to standard error.
//   parse_options(utf_syntax, {"--to=utf-16le", "in.txt"}, opts)   // nullopt
//   parse_options(utf_syntax, {"--bogus"}, opts)                    // 2
std::optional<int> parse_options(syntax const& s, std::vector<std::string> const& args,
                                 parsed_options& out);

// The --help text of a command.
void print_help(syntax const& s, std::ostream& out);

// Prints "vexa CMD: MESSAGE (see 'vexa help CMD')" to standard error; returns 2.
int usage_error(syntax const& s, std::string const& message);

}  // namespace vexa_cli

#endif  // VEXA_APPS_OPTIONS_HPP
