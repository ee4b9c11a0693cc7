// vexa — general stream operators for values that have none of their own.
//
// Two templates in namespace `types`: one for enumerations, one for any other
// type that no stream operator accepts. They are found by argument-dependent
// look-up for types of this namespace; elsewhere bring them in with
// `using types::operator<<;`.
//
//   enum class colour { red = 2 };
//   using types::operator<<;
//   std::cout << colour::red;      // "< 6colour value of 2 >" (the type's name as typeid gives it)
//   std::cout << std::wstring();   // "< NSt7__cxx1112basic_string... instance at 0x7ffd... >"
#ifndef VEXA_TYPES_STREAM_HPP
#define VEXA_TYPES_STREAM_HPP

#include <ostream>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace _private {
namespace stream_probe {

// Whether `std::ostream << T const&` already means something. The probe is
// made in a namespace that does not see types::operator<<, with a stream type
// of its own, so the general template below never takes part in deciding
// whether it applies.
struct probe_stream : std::ostream {};

template <class T, class = void>
struct has_stream_operator : std::false_type {};
template <class T>
struct has_stream_operator<
    T, std::void_t<decltype(std::declval<probe_stream&>() << std::declval<T const&>())>>
    : std::true_type {};

}  // namespace stream_probe
}  // namespace _private

namespace types {
namespace _private {

// Writes "< name value of number >".
inline std::ostream& write_enumeration(std::ostream& os, char const* name, long long signed_value,
                                       unsigned long long unsigned_value) {
  os << "< " << name << " value of ";
  std::ios_base::fmtflags base = os.flags() & std::ios_base::basefield;
  if (base == std::ios_base::hex || base == std::ios_base::oct)
    os << unsigned_value;
  else
    os << signed_value;
  return os << " >";
}

// Writes "< name instance at address >".
inline std::ostream& write_instance(std::ostream& os, char const* name, void const* address) {
  return os << "< " << name << " instance at " << address << " >";
}

template <class E>
using enumeration_base_t = std::conditional_t<std::is_same<std::underlying_type_t<E>, bool>::value,
                                              int, std::underlying_type_t<E>>;

}  // namespace _private

// operator<< for an enumeration
//
// Writes "< ", the enumeration's type name, " value of ", its number, " >".
// The number is unsigned when the stream is in hexadecimal or octal mode and
// signed otherwise. Never fails.
//   enum class level : signed char { none = -1 };
//   os << std::dec << level::none;   // "< 5level value of -1 >"
//   os << std::hex << level::none;   // "< 5level value of ff >"
template <class E, std::enable_if_t<std::is_enum<E>::value, int> = 0>
std::ostream& operator<<(std::ostream& os, E const& value) {
  using base = _private::enumeration_base_t<E>;
  return _private::write_enumeration(
      os, typeid(E).name(),
      static_cast<long long>(static_cast<std::make_signed_t<base>>(value)),
      static_cast<unsigned long long>(static_cast<std::make_unsigned_t<base>>(value)));
}

// operator<< for any type without a stream operator
//
// Writes "< ", the type's name, " instance at ", the object's address, " >".
// It steps aside for enumerations and for every type some stream operator
// already accepts, so it never hides a real one. Never fails.
//   struct opaque {} o;
//   os << o;   // "< 6opaque instance at 0x7ffc... >" (the address varies)
template <class Stream, class T,
          std::enable_if_t<std::conjunction<
                               std::is_base_of<std::ostream, Stream>,
                               std::negation<std::is_same<Stream, VEXA_2_10::_private::stream_probe::probe_stream>>,
                               std::negation<std::is_enum<T>>,
                               std::negation<VEXA_2_10::_private::stream_probe::has_stream_operator<T>>>::value,
                           int> = 0>
std::ostream& operator<<(Stream& os, T const& value) {
  return _private::write_instance(os, typeid(T).name(), static_cast<void const*>(&value));
}

}  // namespace types
}  // namespace VEXA_2_10

#endif  // VEXA_TYPES_STREAM_HPP
