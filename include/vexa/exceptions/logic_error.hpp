// vexa — logic errors: `logic_error`, `out_of_range`, `length_error`,
// `invalid_argument_value`.
//
// Errors a caller could have avoided (an invalid radix, an unknown code page).
// The leaf classes add nothing but their dynamic type.
//
//   try { throw exceptions::invalid_argument_value("Not valid code_page type", 1, "f", "g"); }
//   catch (exceptions::logic_error const& e) { e.get_message(); }  // "Not valid code_page type"
#ifndef VEXA_EXCEPTIONS_LOGIC_ERROR_HPP
#define VEXA_EXCEPTIONS_LOGIC_ERROR_HPP

#include <string>

#include "vexa/exceptions/exception.hpp"

namespace VEXA_2_10 {
namespace exceptions {

class VEXA_API logic_error : public exception {
 public:
  logic_error(std::string const& message, unsigned int line, char const* file,
              char const* function);
  logic_error(std::string const& message, exception::state const& where);
  logic_error(logic_error const& other);
  ~logic_error() override;

  // The stored message's NUL-terminated text.
  char const* get_message() const override;

 private:
  std::string _message;
};

class VEXA_API out_of_range : public logic_error {
 public:
  out_of_range(std::string const& message, unsigned int line, char const* file,
               char const* function);
  out_of_range(std::string const& message, exception::state const& where);
  out_of_range(out_of_range const& other);
  ~out_of_range() override;
};

class VEXA_API length_error : public logic_error {
 public:
  length_error(std::string const& message, unsigned int line, char const* file,
               char const* function);
  length_error(std::string const& message, exception::state const& where);
  length_error(length_error const& other);
  ~length_error() override;
};

class VEXA_API invalid_argument_value : public logic_error {
 public:
  invalid_argument_value(std::string const& message, unsigned int line, char const* file,
                         char const* function);
  invalid_argument_value(std::string const& message, exception::state const& where);
  invalid_argument_value(invalid_argument_value const& other);
  ~invalid_argument_value() override;
};

}  // namespace exceptions
}  // namespace VEXA_2_10

#endif  // VEXA_EXCEPTIONS_LOGIC_ERROR_HPP
