// Messages of the vexa program's file handling.
#include "io/io_error.hpp"

#include <cstring>

namespace vexa_cli {

std::string io_message(std::string const& name, std::string const& what, int error) {
  std::string text = name + ": " + what;
  if (error != 0) text += std::string(" (") + std::strerror(error) + ")";
  return text;
}

}  // namespace vexa_cli
