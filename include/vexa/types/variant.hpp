// vexa — `types::variant`: a dynamically typed value.
//
// A variant holds a bool, one of the eleven built-in integer and floating
// types, one of five string types, or nothing (`types::nil`). It is a handle
// around an immutable, reference-counted value object (`variant_value_t<T>`,
// derived from `variant_type`): copying a variant shares the value object,
// and nothing ever writes into a value object after it is made, so sharing
// needs no copy-on-write. A variant never changes the type of what it holds;
// the `as_...` accessors convert a copy on demand.
//
//   types::variant v(300);
//   v.as_int8();     // 44: integer conversions keep the low bits
//   v.as_string();   // "300"
//
// Conversions between arithmetic types never fail and never report overflow:
// floating to integer truncates toward zero, integer widths wrap in two's
// complement. A floating value whose truncation does not fit the target
// (beyond 64 bits, negative into an unsigned type) is reduced modulo 2^64 and
// then wrapped like any 64-bit integer, and NaN and the infinities give 0.
// This is what the processor's own conversion gives wherever that conversion
// is defined, and it keeps the out-of-range cases defined too:
//
//   types::variant(-1.0).as_uint32();              // 4294967295
//   types::variant(4294967301.0).as_int32();       // 5
//
// Text converts to integers through `generic::convert::str_to_...` (radix
// taken from the text, errors not raised: out-of-range text saturates), to
// floating values through the C library's `strtod` (unparsable text is 0).
//
// The count is a plain integer updated without atomics: a variant and all its
// copies belong to one thread.
#ifndef VEXA_TYPES_VARIANT_HPP
#define VEXA_TYPES_VARIANT_HPP

#include <iosfwd>
#include <string>
#include <typeinfo>

#include "vexa/export.hpp"
#include "vexa/generic/abilities/clone_ability.hpp"
#include "vexa/generic/abilities/reference_count_pointer_ability.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/nil.hpp"

namespace VEXA_2_10 {
namespace types {

// variant_type
//
// The abstract value object. The slots below are in their fixed order; every
// one is answered by `variant_value_t<T>`. The owned flag and the count start
// at zero: whoever creates the object with `new` sets the flag.
class VEXA_API variant_type : public generic::abilities::clone_ability,
                              public generic::abilities::reference_count_pointer_ability<variant_type> {
 public:
  variant_type();
  ~variant_type() override;

  // True for every held type.
  virtual bool convertible() const = 0;
  // The type information of the held value's type.
  virtual std::type_info const& type() const = 0;
  // A new, owned object of the same class holding a copy of the value; its
  // count is zero and the caller takes the first reference.
  virtual variant_type* clone() const = 0;
  // Writes the value the way the stream writes its type, with three
  // exceptions: small integers as numbers, nil as 0, and std::wstring in the
  // general "< name instance at address >" form (types/stream.hpp).
  virtual std::ostream& ostream(std::ostream& os) const = 0;

  virtual int as_int() const = 0;
  virtual short as_short() const = 0;
  virtual long as_long() const = 0;
  virtual signed char as_int8() const = 0;
  virtual short as_int16() const = 0;
  virtual int as_int32() const = 0;
  virtual long as_int64() const = 0;
  virtual unsigned char as_uint8() const = 0;
  virtual unsigned short as_uint16() const = 0;
  virtual unsigned int as_uint32() const = 0;
  virtual unsigned long as_uint64() const = 0;
  virtual bool as_bool() const = 0;
  virtual strings::ustring8 as_string() const = 0;
  virtual std::wstring as_wstring() const = 0;
  virtual strings::ustring as_ustring() const = 0;
  virtual std::string as_utf8() const = 0;
  virtual strings::ustring16 as_utf16() const = 0;
  virtual strings::ustring32 as_utf32() const = 0;
  virtual float as_float() const = 0;
  virtual double as_double() const = 0;
  virtual long double as_long_double() const = 0;
};

// variant_value_t<T>
//
// The value object for one held type. Instances exist for exactly bool, the
// eleven integer and floating types, std::string, std::wstring, ustring8,
// ustring16, ustring32 and nil_t; any other T does not link.
//
//   types::variant_value_t<types::nil_t> n(types::nil);
//   n.as_string();   // "0" (the handle reads a nil variant as "")
template <class T>
class VEXA_API variant_value_t : public variant_type {
 public:
  explicit variant_value_t(T const& value);
  explicit variant_value_t(T&& value);
  ~variant_value_t() override;

  bool convertible() const override;
  std::type_info const& type() const override;
  variant_type* clone() const override;
  std::ostream& ostream(std::ostream& os) const override;

  int as_int() const override;
  short as_short() const override;
  long as_long() const override;
  signed char as_int8() const override;
  short as_int16() const override;
  int as_int32() const override;
  long as_int64() const override;
  unsigned char as_uint8() const override;
  unsigned short as_uint16() const override;
  unsigned int as_uint32() const override;
  unsigned long as_uint64() const override;
  bool as_bool() const override;
  strings::ustring8 as_string() const override;
  std::wstring as_wstring() const override;
  strings::ustring as_ustring() const override;
  std::string as_utf8() const override;
  strings::ustring16 as_utf16() const override;
  strings::ustring32 as_utf32() const override;
  float as_float() const override;
  double as_double() const override;
  long double as_long_double() const override;

  // Set by the constructor, never modified: that is what makes sharing safe.
  T const value;
};

extern template class variant_value_t<bool>;
extern template class variant_value_t<signed char>;
extern template class variant_value_t<unsigned char>;
extern template class variant_value_t<short>;
extern template class variant_value_t<unsigned short>;
extern template class variant_value_t<int>;
extern template class variant_value_t<unsigned int>;
extern template class variant_value_t<long>;
extern template class variant_value_t<unsigned long>;
extern template class variant_value_t<float>;
extern template class variant_value_t<double>;
extern template class variant_value_t<long double>;
extern template class variant_value_t<std::string>;
extern template class variant_value_t<std::wstring>;
extern template class variant_value_t<strings::ustring8>;
extern template class variant_value_t<strings::ustring16>;
extern template class variant_value_t<strings::ustring32>;
extern template class variant_value_t<nil_t>;

// variant
//
// The handle: one counted pointer to the value object, never null. Each
// constructor from a value allocates a new owned value object; copies and
// assignments share (a pointer copy and one count update, no allocation).
//
//   types::variant a("text"), b = a;   // one value object, count 2
//   b = 5;                             // a keeps "text" alone, count 1
class VEXA_API variant {
 public:
  // Holds a new nil value.
  variant();
  variant(nil_t& value);
  variant(nil_t const& value);

  variant(bool value);
  variant(signed char const& value);
  variant(unsigned char const& value);
  variant(short const& value);
  variant(unsigned short const& value);
  variant(int const& value);
  variant(unsigned int const& value);
  variant(long const& value);
  variant(unsigned long const& value);
  variant(float const& value);
  variant(double const& value);
  variant(long double const& value);
  variant(std::string const& value);
  variant(std::wstring const& value);
  variant(strings::ustring8 const& value);
  variant(strings::ustring16 const& value);
  variant(strings::ustring32 const& value);
  // The pointer forms make the library's own string types on purpose:
  // char const* a ustring8, unsigned short const* a ustring16 and
  // wchar_t const* a ustring32 (not a std::wstring).
  variant(char const* value);
  variant(unsigned short const* value);
  variant(wchar_t const* value);

  // Shares the value object. A variant copied from itself holds no object
  // and may only be assigned to or destroyed.
  variant(variant const& other) : _value(&other == this ? nullptr : other._value) { acquire(_value); }

  ~variant() { release(_value); }

  // Shares the source's value object and releases the previous one (deleted
  // when this was its last holder and it is owned). Self-assignment does
  // nothing. Returns *this.
  variant& assign(variant const& other) {
    if (&other != this) {
      // Take the new object before letting go of the old one, so that a
      // throwing destructor leaves this variant holding the new value.
      variant_type* previous = _value;
      _value = other._value;
      acquire(_value);
      release(previous);
    }
    return *this;
  }
  variant& operator=(variant const& other) { return assign(other); }

  // Holds a new nil value instead.
  variant& operator=(nil_t const& value);

  // The type information of the held type; there is no numeric type code.
  //   types::variant(L"x").type() == typeid(strings::ustring32);   // true
  std::type_info const& type() const { return _value->type(); }

  // True when the held type is nil_t (compared on the type names' addresses).
  //   types::variant().equal(types::nil);    // true
  //   types::variant(0).equal(types::nil);   // false
  bool equal(nil_t const& value) const;
  bool operator==(nil_t const& value) const { return equal(value); }
  bool operator!=(nil_t const& value) const { return !equal(value); }

  // Numeric readings. The narrow ones keep the low bits of the value object's
  // answer (sign-extended for the signed ones). Never fail for arithmetic
  // values; text is parsed with its own radix prefix and saturates.
  //   types::variant(-1).as_uint16();        // 65535
  //   types::variant("0x1f").as_int();       // 31
  int as_int() const { return _value->as_int(); }
  short as_short() const { return _value->as_short(); }
  long as_long() const { return _value->as_long(); }
  signed char as_int8() const { return _value->as_int8(); }
  short as_int16() const { return _value->as_int16(); }
  int as_int32() const { return _value->as_int32(); }
  long as_int64() const { return _value->as_int64(); }
  unsigned char as_uint8() const { return _value->as_uint8(); }
  unsigned short as_uint16() const { return _value->as_uint16(); }
  unsigned int as_uint32() const { return _value->as_uint32(); }
  unsigned long as_uint64() const { return _value->as_uint64(); }
  float as_float() const { return _value->as_float(); }
  double as_double() const { return _value->as_double(); }
  long double as_long_double() const { return _value->as_long_double(); }

  // Aliases without a slot of their own: as_short as unsigned, as_long as
  // unsigned, and as_int under three names.
  unsigned short as_ushort() const { return static_cast<unsigned short>(as_short()); }
  unsigned long as_ulong() const { return static_cast<unsigned long>(as_long()); }
  unsigned int as_uint() const { return static_cast<unsigned int>(as_int()); }
  unsigned int as_unsigned() const { return static_cast<unsigned int>(as_int()); }
  int as_signed() const { return as_int(); }

  // Truth value. Numbers: non-zero (NaN counts as true). Narrow and UTF-16
  // text: "yes", "on" and "true" in any case are true, empty or blank text is
  // false, other text is read as a number; text that is no number raises
  // exceptions::invalid_argument_value ("Text is not a number"), so "false"
  // raises too. Wide text: generic::convert::str_to_bool, which never raises.
  //   types::variant("ON").as_bool();    // true
  //   types::variant("0x0").as_bool();   // false
  bool as_bool() const { return _value->as_bool(); }

  // Text readings. A nil variant reads as the empty text (its value object
  // alone would say "0"). Integers are written in decimal, float and double
  // with ten significant digits, long double with six, bool as "1" or "0".
  //   types::variant(1.0 / 3.0).as_string();   // "0.3333333333"
  //   types::variant().as_string();            // ""
  strings::ustring8 as_string() const;
  std::wstring as_wstring() const;
  strings::ustring as_ustring() const;
  std::string as_utf8() const;
  strings::ustring16 as_utf16() const;
  strings::ustring32 as_utf32() const;

  // For holders that need a private deep copy: the held value object, and a
  // variant taking one reference to a given object (owned flag as its
  // creator set it; null is not allowed).
  //   types::variant copy(original.value_object()->clone());   // unshared
  //   copy.value_object()->reference_count();                  // 1
  variant_type const* value_object() const { return _value; }
  explicit variant(variant_type* value);

  // ---- implementation details ----
 private:
  // The counting is written out here rather than through rc_pointer so that
  // a copy is exactly one pointer store and one increment, inline.
  static void acquire(variant_type* value) {
    if (value != nullptr) value->add_reference();
  }
  static void release(variant_type* value) {
    if (value != nullptr && value->release_reference() == 0 && value->owned()) delete value;
  }

  // The counted pointer: one reference held, never null after construction.
  variant_type* _value;
};

// Writes the held value through its value object's ostream slot.
//   std::cout << types::variant(42);   // 42
VEXA_API std::ostream& operator<<(std::ostream& os, variant const& value);

}  // namespace types
}  // namespace VEXA_2_10

#endif  // VEXA_TYPES_VARIANT_HPP
