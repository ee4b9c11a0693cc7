#include "vexa/exceptions/logic_error.hpp"

#include "exceptions/leaf_constructors.hpp"

namespace VEXA_2_10 {
namespace exceptions {

logic_error::logic_error(std::string const& message, unsigned int line, char const* file,
                             char const* function)
    : exception(line, file, function), _message(message) {}

logic_error::logic_error(std::string const& message, exception::state const& where)
    : exception(where), _message(message) {}

logic_error::logic_error(logic_error const& other)
    : exception(other), _message(other._message) {}

logic_error::~logic_error() = default;

char const* logic_error::get_message() const { return _message.c_str(); }

VEXA_EXCEPTION_LEAF(out_of_range, logic_error)
VEXA_EXCEPTION_LEAF(length_error, logic_error)
VEXA_EXCEPTION_LEAF(invalid_argument_value, logic_error)

}  // namespace exceptions
}  // namespace VEXA_2_10
