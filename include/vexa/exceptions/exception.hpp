// vexa — the root of the library's exception tree.
//
// Every error the library reports by throwing is an `exceptions::exception`.
// The root derives from nothing (not from std::exception): catch
// `exceptions::exception&` to see every library error. There is no what();
// the message is read with get_message().
//
//   try { convert::str_to_int("99999999999", 0, radix_t::base(0), true); }
//   catch (exceptions::exception const& e) { e.get_message(); }  // "Number value is to large"
#ifndef VEXA_EXCEPTIONS_EXCEPTION_HPP
#define VEXA_EXCEPTIONS_EXCEPTION_HPP

#include <cstdint>

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace exceptions {

class VEXA_API exception {
 public:
  // The raise site: source line, source file path and bare function name.
  // Texts longer than 255 bytes are cut at 255; a null pointer leaves the
  // empty text.
  struct VEXA_API state {
    std::uint32_t line;
    char file[256];
    char function[256];

    state(unsigned int line, char const* file, char const* function);
    state(state const& other);
    state& operator=(state const& other);
  };

  exception(unsigned int line, char const* file, char const* function);
  explicit exception(state const& where);
  exception(exception const& other);
  virtual ~exception();

  // The fixed message text; valid as long as the exception object lives.
  virtual char const* get_message() const = 0;

  // The raise site recorded at construction.
  state const& get_state() const;

 private:
  state _state;
};

}  // namespace exceptions
}  // namespace VEXA_2_10

#endif  // VEXA_EXCEPTIONS_EXCEPTION_HPP
