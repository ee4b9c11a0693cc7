#include "vexa/exceptions/runtime_error.hpp"

#include "exceptions/leaf_constructors.hpp"

namespace VEXA_2_10 {
namespace exceptions {

runtime_error::runtime_error(std::string const& message, unsigned int line, char const* file,
                             char const* function)
    : exception(line, file, function), _message(message) {}

runtime_error::runtime_error(std::string const& message, exception::state const& where)
    : exception(where), _message(message) {}

runtime_error::runtime_error(runtime_error const& other)
    : exception(other), _message(other._message) {}

runtime_error::~runtime_error() = default;

char const* runtime_error::get_message() const { return _message.c_str(); }

VEXA_EXCEPTION_LEAF(overflow_error, runtime_error)
VEXA_EXCEPTION_LEAF(underflow_error, runtime_error)

}  // namespace exceptions
}  // namespace VEXA_2_10
