#include "vexa/exceptions/exception.hpp"

#include <cstring>

namespace VEXA_2_10 {
namespace exceptions {
namespace {

// Copies at most 255 bytes and always terminates; null leaves the empty text.
void copy_text(char (&target)[256], char const* source) {
  target[0] = '\0';
  if (source == nullptr) return;
  std::size_t length = ::strnlen(source, sizeof target - 1);
  std::memcpy(target, source, length);
  target[length] = '\0';
}

}  // namespace

exception::state::state(unsigned int line_, char const* file_, char const* function_)
    : line(line_) {
  copy_text(file, file_);
  copy_text(function, function_);
}

exception::state::state(state const& other) : line(other.line) {
  copy_text(file, other.file);
  copy_text(function, other.function);
}

exception::state& exception::state::operator=(state const& other) {
  if (this != &other) {
    line = other.line;
    copy_text(file, other.file);
    copy_text(function, other.function);
  }
  return *this;
}

exception::exception(unsigned int line, char const* file, char const* function)
    : _state(line, file, function) {}

exception::exception(state const& where) : _state(where) {}

exception::exception(exception const& other) : _state(other._state) {}

exception::~exception() = default;

exception::state const& exception::get_state() const { return _state; }

}  // namespace exceptions
}  // namespace VEXA_2_10
