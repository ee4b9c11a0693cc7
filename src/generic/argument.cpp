#include "vexa/generic/argument.hpp"

namespace VEXA_2_10 {
namespace generic {

argument::argument() = default;
argument::argument(types::nil_t const&) {}
argument::argument(types::variant const& value) : _value(value) {}
argument::argument(strings::ustring8 const& name, types::variant const& value) : _name(name), _value(value) {}
argument::argument(argument const& other) = default;
argument::~argument() = default;

strings::ustring8 const& argument::name() const { return _name; }
void argument::name(strings::ustring8 const& name) { _name = name; }
types::variant const& argument::value() const { return _value; }
void argument::value(types::variant const& value) { _value = value; }

argument& argument::assign(types::variant const& value) {
  _value = value;
  return *this;
}

argument& argument::operator=(types::variant const& value) { return assign(value); }

argument& argument::assign(strings::ustring8 const& name, types::variant const& value) {
  _name = name;
  _value = value;
  return *this;
}

argument& argument::assign(argument const& other) {
  if (&other != this) {
    _name = other._name;
    _value = other._value;
  }
  return *this;
}

argument& argument::operator=(argument const& other) { return assign(other); }

bool argument::has_name() const { return !_name.empty(); }

bool argument::equal(types::nil_t const&) const { return _name.empty() && _value == types::nil; }
bool argument::operator==(types::nil_t const& value) const { return equal(value); }
bool argument::operator!=(types::nil_t const& value) const { return !equal(value); }

}  // namespace generic
}  // namespace VEXA_2_10
