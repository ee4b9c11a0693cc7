// types::variant: the handle's constructors and the parts that are not worth
// inlining. Copying, assigning and destroying live in the header so that
// sharing a value never crosses into the library.
#include "vexa/types/variant.hpp"

#include <ostream>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace VEXA_2_10 {
namespace types {
namespace {

// A new value object holding `value`, owned: the last variant deletes it.
// Temporaries (the texts made from pointers) are moved in, not copied.
template <class A>
variant_type* make_owned(A&& value) {
  auto* object = new variant_value_t<std::decay_t<A>>(std::forward<A>(value));
  object->set_owned(true);
  return object;
}

// A null pointer is taken as the empty text rather than crashing in the
// string constructor.
template <class S, class Ch>
S text_or_empty(Ch const* text) {
  return text == nullptr ? S() : S(text);
}

}  // namespace

variant::variant(variant_type* value) : _value(value) { acquire(_value); }

variant::variant() : variant(make_owned(nil_t())) {}
variant::variant(nil_t& value) : variant(make_owned(value)) {}
variant::variant(nil_t const& value) : variant(make_owned(value)) {}
variant::variant(bool value) : variant(make_owned(value)) {}
variant::variant(signed char const& value) : variant(make_owned(value)) {}
variant::variant(unsigned char const& value) : variant(make_owned(value)) {}
variant::variant(short const& value) : variant(make_owned(value)) {}
variant::variant(unsigned short const& value) : variant(make_owned(value)) {}
variant::variant(int const& value) : variant(make_owned(value)) {}
variant::variant(unsigned int const& value) : variant(make_owned(value)) {}
variant::variant(long const& value) : variant(make_owned(value)) {}
variant::variant(unsigned long const& value) : variant(make_owned(value)) {}
variant::variant(float const& value) : variant(make_owned(value)) {}
variant::variant(double const& value) : variant(make_owned(value)) {}
variant::variant(long double const& value) : variant(make_owned(value)) {}
variant::variant(std::string const& value) : variant(make_owned(value)) {}
variant::variant(std::wstring const& value) : variant(make_owned(value)) {}
variant::variant(strings::ustring8 const& value) : variant(make_owned(value)) {}
variant::variant(strings::ustring16 const& value) : variant(make_owned(value)) {}
variant::variant(strings::ustring32 const& value) : variant(make_owned(value)) {}
variant::variant(char const* value) : variant(make_owned(text_or_empty<strings::ustring8>(value))) {}
variant::variant(unsigned short const* value) : variant(make_owned(text_or_empty<strings::ustring16>(value))) {}
variant::variant(wchar_t const* value) : variant(make_owned(text_or_empty<strings::ustring32>(value))) {}

variant& variant::operator=(nil_t const&) {
  variant_type* previous = _value;
  _value = make_owned(nil_t());
  acquire(_value);
  release(previous);
  return *this;
}

// The names' addresses are compared, not their texts: nil_t's type
// information is exported, so every module sees the one copy.
bool variant::equal(nil_t const&) const {
  return _value->type().name() == typeid(nil_t).name();
}

strings::ustring8 variant::as_string() const {
  return equal(nil) ? strings::ustring8() : _value->as_string();
}

std::wstring variant::as_wstring() const {
  return equal(nil) ? std::wstring() : _value->as_wstring();
}

strings::ustring variant::as_ustring() const {
  return equal(nil) ? strings::ustring() : _value->as_ustring();
}

std::string variant::as_utf8() const {
  return equal(nil) ? std::string() : _value->as_utf8();
}

strings::ustring16 variant::as_utf16() const {
  return equal(nil) ? strings::ustring16() : _value->as_utf16();
}

strings::ustring32 variant::as_utf32() const {
  return equal(nil) ? strings::ustring32() : _value->as_utf32();
}

std::ostream& operator<<(std::ostream& os, variant const& value) {
  return value.value_object()->ostream(os);
}

}  // namespace types
}  // namespace VEXA_2_10
