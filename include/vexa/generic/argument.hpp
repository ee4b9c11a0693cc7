// vexa — `generic::argument`: a value held in a variant, optionally named.
//
// The empty name means the argument is unnamed. An argument equals nil when
// it has no name and its value is nil; a named argument holding nil is a
// real argument (a placeholder that was given, but empty).
//
//   generic::argument a("count", 3);
//   a.has_name();             // true
//   a.value().as_string();    // "3"
#ifndef VEXA_GENERIC_ARGUMENT_HPP
#define VEXA_GENERIC_ARGUMENT_HPP

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/nil.hpp"
#include "vexa/types/variant.hpp"

namespace VEXA_2_10 {
namespace generic {

class VEXA_API argument {
 public:
  // An unnamed argument holding nil.
  argument();
  argument(types::nil_t const& value);
  // An unnamed argument.
  argument(types::variant const& value);
  argument(strings::ustring8 const& name, types::variant const& value);
  argument(argument const& other);
  ~argument();

  // The name; empty for an unnamed argument.
  strings::ustring8 const& name() const;
  void name(strings::ustring8 const& name);
  // The value; shares the variant's value object with the caller's copy.
  types::variant const& value() const;
  void value(types::variant const& value);

  // Replace the value and keep the name. Returns *this.
  //   argument a("n", 1); a = 2;   // a.name() == "n", a.value().as_int() == 2
  argument& assign(types::variant const& value);
  argument& operator=(types::variant const& value);
  // Replace name and value. Returns *this.
  argument& assign(strings::ustring8 const& name, types::variant const& value);
  // Copy name and value; assigning an argument to itself does nothing.
  argument& assign(argument const& other);
  argument& operator=(argument const& other);

  // True when the name is not empty.
  bool has_name() const;

  // True for an unnamed argument holding nil.
  //   argument().equal(types::nil);                  // true
  //   argument("x", types::nil) == types::nil;       // false: it has a name
  bool equal(types::nil_t const& value) const;
  bool operator==(types::nil_t const& value) const;
  bool operator!=(types::nil_t const& value) const;

  // ---- implementation details ----
 private:
  strings::ustring8 _name;
  types::variant _value;
};

}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_ARGUMENT_HPP
