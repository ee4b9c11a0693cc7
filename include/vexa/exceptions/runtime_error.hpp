// vexa — run-time errors: `runtime_error`, `overflow_error`, `underflow_error`.
//
// Errors that only show when the program runs (a value out of a type's range,
// a failing system conversion). The leaf classes add nothing but their
// dynamic type, so a handler can select them.
//
//   try { throw exceptions::overflow_error("Number value is to large", __LINE__, "f", "g"); }
//   catch (exceptions::runtime_error const& e) { e.get_message(); }  // "Number value is to large"
#ifndef VEXA_EXCEPTIONS_RUNTIME_ERROR_HPP
#define VEXA_EXCEPTIONS_RUNTIME_ERROR_HPP

#include <string>

#include "vexa/exceptions/exception.hpp"

namespace VEXA_2_10 {
namespace exceptions {

class VEXA_API runtime_error : public exception {
 public:
  runtime_error(std::string const& message, unsigned int line, char const* file,
                char const* function);
  runtime_error(std::string const& message, exception::state const& where);
  runtime_error(runtime_error const& other);
  ~runtime_error() override;

  // The stored message's NUL-terminated text.
  char const* get_message() const override;

 private:
  std::string _message;
};

class VEXA_API overflow_error : public runtime_error {
 public:
  overflow_error(std::string const& message, unsigned int line, char const* file,
                 char const* function);
  overflow_error(std::string const& message, exception::state const& where);
  overflow_error(overflow_error const& other);
  ~overflow_error() override;
};

class VEXA_API underflow_error : public runtime_error {
 public:
  underflow_error(std::string const& message, unsigned int line, char const* file,
                  char const* function);
  underflow_error(std::string const& message, exception::state const& where);
  underflow_error(underflow_error const& other);
  ~underflow_error() override;
};

}  // namespace exceptions
}  // namespace VEXA_2_10

#endif  // VEXA_EXCEPTIONS_RUNTIME_ERROR_HPP
