// The one failure of the vexa program's file handling: a line of text that
// names the file and the fault, e.g. "in.txt: cannot open (No such file or
// directory)". Subcommands print it after their own name and exit 1.
#ifndef VEXA_APPS_IO_IO_ERROR_HPP
#define VEXA_APPS_IO_IO_ERROR_HPP

#include <stdexcept>
#include <string>

namespace vexa_cli {

class io_error : public std::runtime_error {
 public:
  explicit io_error(std::string const& message) : std::runtime_error(message) {}
};

// "NAME: WHAT (strerror(error))", or without the parenthesis for error 0.
std::string io_message(std::string const& name, std::string const& what, int error);

}  // namespace vexa_cli

#endif  // VEXA_APPS_IO_IO_ERROR_HPP
