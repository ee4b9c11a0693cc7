// The value objects behind types::variant: one class per held type, all
// written once here and instantiated for the eighteen held types.
//
// What each held type answers:
//
//   held type            numbers              as_bool          text                    ostream
//   bool                 1 / 0                value            "1" / "0"               stream's bool
//   integers             cast (wrap)          value != 0       decimal digits          stream's integer
//   float, double        cast (see below)     value != 0       gcvt, 10 digits         stream's floating
//   long double          cast (see below)     value != 0       string stream, 6 digits stream's floating
//   ustring8, string     str_to_... / strtod  text rule        the text                the text
//   ustring16            str_to_... / strtod  text rule        UTF-16 -> UTF-8         the text as UTF-8
//   ustring32            str_to_... / strtod  str_to_bool      UTF-32 -> UTF-8         the text as UTF-8
//   std::wstring         str_to_... / strtod  str_to_bool      UTF-32 -> UTF-8         "< name instance at p >"
//   nil_t                0                    false            "0"                     0
#include "vexa/types/variant.hpp"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <ostream>
#include <sstream>
#include <type_traits>
#include <utility>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/generic/convert/str_to_x.hpp"
#include "vexa/generic/convert/x_to_str.hpp"
#include "vexa/strings/unicode.hpp"
#include "vexa/types/radix.hpp"
#include "vexa/types/stream.hpp"

namespace VEXA_2_10 {
namespace types {
namespace {

namespace convert = generic::convert;

// double to float of a value beyond float's range gives an infinity on IEEE
// 754 targets; nothing here relies on anything else.
static_assert(std::numeric_limits<float>::is_iec559 && std::numeric_limits<double>::is_iec559,
              "the floating conversions assume IEEE 754 types");

template <class T>
constexpr bool is_text8 = std::is_same<T, strings::ustring8>::value || std::is_same<T, std::string>::value;
template <class T>
constexpr bool is_text16 = std::is_same<T, strings::ustring16>::value;
template <class T>
constexpr bool is_text32 = std::is_same<T, strings::ustring32>::value || std::is_same<T, std::wstring>::value;
template <class T>
constexpr bool is_text = is_text8<T> || is_text16<T> || is_text32<T>;
template <class T>
constexpr bool is_nil = std::is_same<T, nil_t>::value;

// ---- numbers from numbers ----

// Truncates toward zero and wraps into R. The processor's conversion is used
// whenever the truncated value fits 64 signed bits; beyond that the value is
// reduced modulo 2^64 (exact in long double), and NaN and the infinities are 0.
template <class R, class F>
R floating_to_integer(F value) {
  using unsigned_r = std::make_unsigned_t<R>;
  constexpr F low = static_cast<F>(-9223372036854775807.0L - 1.0L);  // -2^63
  constexpr F high = static_cast<F>(9223372036854775808.0L);         //  2^63
  std::uint64_t bits;
  if (value >= low && value < high) {
    bits = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
  } else if (!std::isfinite(value)) {
    return 0;
  } else {
    long double rest = std::fmod(std::trunc(static_cast<long double>(value)), 18446744073709551616.0L);
    bits = rest < 0 ? 0 - static_cast<std::uint64_t>(-rest) : static_cast<std::uint64_t>(rest);
  }
  return static_cast<R>(static_cast<unsigned_r>(bits));
}

template <class R, class T>
R to_number(T const& value) {
  if constexpr (is_nil<T>) {
    return R(0);
  } else if constexpr (std::is_floating_point<T>::value && std::is_integral<R>::value) {
    return floating_to_integer<R>(value);
  } else {
    return static_cast<R>(value);  // integer widths wrap; bool is 1 or 0
  }
}

// ---- text in the other encodings ----

std::string const& utf8_of(std::string const& text) { return text; }
strings::ustring8 utf8_of(strings::ustring16 const& text) { return strings::utf16_to_utf8(text); }
strings::ustring8 utf8_of(strings::ustring32 const& text) { return strings::utf32_to_utf8(text); }
strings::ustring8 utf8_of(std::wstring const& text) { return strings::utf32_to_utf8(strings::ustring32(text)); }

strings::ustring16 utf16_of(std::string const& text) { return strings::utf8_to_utf16(strings::ustring8(text)); }
strings::ustring16 utf16_of(strings::ustring8 const& text) { return strings::utf8_to_utf16(text); }
strings::ustring16 const& utf16_of(strings::ustring16 const& text) { return text; }
strings::ustring16 utf16_of(std::wstring const& text) { return strings::utf32_to_utf16(strings::ustring32(text)); }
strings::ustring16 utf16_of(strings::ustring32 const& text) { return strings::utf32_to_utf16(text); }

strings::ustring32 utf32_of(std::string const& text) { return strings::utf8_to_utf32(strings::ustring8(text)); }
strings::ustring32 utf32_of(strings::ustring8 const& text) { return strings::utf8_to_utf32(text); }
strings::ustring32 utf32_of(strings::ustring16 const& text) { return strings::utf16_to_utf32(text); }
std::wstring const& utf32_of(std::wstring const& text) { return text; }

// ---- numbers as text ----

// Digits of an integer in base 10, written by the library's digit writers in
// the requested code unit.
template <class Ch, class T>
std::basic_string<Ch> integer_digits(T value) {
  Ch buffer[72];  // sign, 64 binary digits and the terminator would fit
  if constexpr (std::is_same<T, long>::value)
    convert::lltoa(value, buffer, 10);
  else if constexpr (std::is_same<T, unsigned long>::value)
    convert::ulltoa(value, buffer, 10);
  else if constexpr (std::is_signed<T>::value)
    convert::ltoa(static_cast<int>(value), buffer, 10);
  else
    convert::ultoa(static_cast<unsigned int>(value), buffer, 10);
  return std::basic_string<Ch>(buffer);
}

template <class Ch>
std::basic_string<Ch> widen(std::string const& ascii) {
  return std::basic_string<Ch>(ascii.begin(), ascii.end());
}

// The text of a non-text value, in code units Ch. Floating text is ASCII, so
// widening it unit by unit is its UTF-16 and UTF-32 form.
template <class Ch, class T>
std::basic_string<Ch> number_text(T const& value) {
  if constexpr (is_nil<T>) {
    return widen<Ch>("0");
  } else if constexpr (std::is_same<T, bool>::value) {
    return widen<Ch>(value ? "1" : "0");  // what a string stream writes in numeric bool mode
  } else if constexpr (std::is_integral<T>::value) {
    return integer_digits<Ch>(value);
  } else if constexpr (std::is_same<T, long double>::value) {
    std::ostringstream stream;  // default settings: six significant digits
    stream << value;
    return widen<Ch>(stream.str());
  } else {
    char buffer[64];  // "-1.234567891e-308" and "-nan" fit with room to spare
    return widen<Ch>(::gcvt(static_cast<double>(value), 10, buffer));
  }
}

// ---- truth of text ----

// The character's value for the C library's tolower: char is taken as its
// byte, wider units above 255 are left alone (the tables cover bytes only).
template <class Ch>
unsigned long lowered(Ch c) {
  unsigned long v = std::is_same<Ch, char>::value ? static_cast<unsigned char>(c) : static_cast<unsigned long>(c);
  return v <= 255 ? static_cast<unsigned long>(std::tolower(static_cast<int>(v))) : v;
}

template <class Ch>
bool equals_lowered(Ch const* text, std::size_t length, char const* word) {
  std::size_t i = 0;
  for (; i < length && word[i] != '\0'; ++i)
    if (lowered(text[i]) != static_cast<unsigned char>(word[i])) return false;
  return i == length && word[i] == '\0';
}

// Only "yes", "on" and "true" are words; anything else must be a number.
// Empty and blank text (and a lone sign) hold no number and read as false;
// text whose first character after blanks and sign cannot start a number is
// refused rather than read as 0, so "false" raises instead of looking true
// or false by accident.
template <class Ch>
bool text_truth(Ch const* text, std::size_t length) {
  if (equals_lowered(text, length, "yes") || equals_lowered(text, length, "on") ||
      equals_lowered(text, length, "true"))
    return true;
  std::size_t i = 0;
  while (i < length && convert::is_space(text[i])) ++i;
  if (i < length && (text[i] == Ch('-') || text[i] == Ch('+'))) ++i;
  if (i == length) return false;
  if (!(text[i] >= Ch('0') && text[i] <= Ch('9')) && text[i] != Ch('\\'))
    throw exceptions::invalid_argument_value("Text is not a number", __LINE__, "generic/convert/str_to_x",
                                             "strtointx");
  return convert::str_to_long(text, length, radix_t::automatic, false) != 0;
}

}  // namespace

variant_type::variant_type() = default;
variant_type::~variant_type() = default;

template <class T>
variant_value_t<T>::variant_value_t(T const& value) : value(value) {}

template <class T>
variant_value_t<T>::variant_value_t(T&& value) : value(std::move(value)) {}

template <class T>
variant_value_t<T>::~variant_value_t() = default;

template <class T>
bool variant_value_t<T>::convertible() const {
  return true;
}

template <class T>
std::type_info const& variant_value_t<T>::type() const {
  return typeid(T);
}

template <class T>
variant_type* variant_value_t<T>::clone() const {
  variant_value_t* copy = new variant_value_t(value);
  copy->set_owned(true);
  return copy;
}

template <class T>
std::ostream& variant_value_t<T>::ostream(std::ostream& os) const {
  if constexpr (std::is_same<T, std::wstring>::value) {
    return types::operator<<(os, value);  // the general "instance at" form, on purpose
  } else if constexpr (is_text8<T>) {
    return os << static_cast<std::string const&>(value);
  } else if constexpr (is_text<T>) {
    return os << utf8_of(value);
  } else if constexpr (is_nil<T>) {
    return os << 0;
  } else if constexpr (std::is_same<T, signed char>::value || std::is_same<T, unsigned char>::value) {
    return os << static_cast<int>(value);  // a number, not a character
  } else {
    return os << value;
  }
}

// Integer slots: text goes to the parser of the same name (radix from the
// text, no raising), everything else is cast.
#define VEXA_VARIANT_INTEGER_SLOT(slot, result, parser)                                \
  template <class T>                                                                  \
  result variant_value_t<T>::slot() const {                                           \
    if constexpr (is_text<T>)                                                         \
      return convert::parser(value.c_str(), value.size(), radix_t::automatic, false); \
    else                                                                              \
      return to_number<result>(value);                                                \
  }

VEXA_VARIANT_INTEGER_SLOT(as_int, int, str_to_int)
VEXA_VARIANT_INTEGER_SLOT(as_short, short, str_to_short)
VEXA_VARIANT_INTEGER_SLOT(as_long, long, str_to_long)
VEXA_VARIANT_INTEGER_SLOT(as_int8, signed char, str_to_int8)
VEXA_VARIANT_INTEGER_SLOT(as_int16, short, str_to_int16)
VEXA_VARIANT_INTEGER_SLOT(as_int32, int, str_to_int32)
VEXA_VARIANT_INTEGER_SLOT(as_int64, long, str_to_int64)
VEXA_VARIANT_INTEGER_SLOT(as_uint8, unsigned char, str_to_uint8)
VEXA_VARIANT_INTEGER_SLOT(as_uint16, unsigned short, str_to_uint16)
VEXA_VARIANT_INTEGER_SLOT(as_uint32, unsigned int, str_to_uint32)
VEXA_VARIANT_INTEGER_SLOT(as_uint64, unsigned long, str_to_uint64)

#undef VEXA_VARIANT_INTEGER_SLOT

// Floating slots: text through strtod without an error check (unparsable
// text is 0).
#define VEXA_VARIANT_FLOATING_SLOT(slot, result)                                \
  template <class T>                                                           \
  result variant_value_t<T>::slot() const {                                    \
    if constexpr (is_text<T>)                                                  \
      return static_cast<result>(std::strtod(utf8_of(value).c_str(), nullptr)); \
    else                                                                       \
      return to_number<result>(value);                                         \
  }

VEXA_VARIANT_FLOATING_SLOT(as_float, float)
VEXA_VARIANT_FLOATING_SLOT(as_double, double)
VEXA_VARIANT_FLOATING_SLOT(as_long_double, long double)

#undef VEXA_VARIANT_FLOATING_SLOT

template <class T>
bool variant_value_t<T>::as_bool() const {
  if constexpr (std::is_same<T, strings::ustring32>::value)
    return convert::str_to_bool(value);
  else if constexpr (is_text32<T>)
    return convert::str_to_bool(strings::ustring32(value));
  else if constexpr (is_text<T>)
    return text_truth(value.c_str(), value.size());
  else if constexpr (is_nil<T>)
    return false;
  else
    return value != 0;  // a NaN is not 0, so it is true
}

template <class T>
strings::ustring8 variant_value_t<T>::as_string() const {
  if constexpr (is_text<T>)
    return utf8_of(value);
  else
    return number_text<char>(value);
}

template <class T>
std::wstring variant_value_t<T>::as_wstring() const {
  if constexpr (is_text<T>)
    return utf32_of(value);
  else
    return number_text<wchar_t>(value);
}

template <class T>
strings::ustring variant_value_t<T>::as_ustring() const {
  return variant_value_t::as_string();
}

template <class T>
std::string variant_value_t<T>::as_utf8() const {
  return variant_value_t::as_string();
}

template <class T>
strings::ustring16 variant_value_t<T>::as_utf16() const {
  if constexpr (is_text<T>)
    return utf16_of(value);
  else
    return number_text<unsigned short>(value);
}

template <class T>
strings::ustring32 variant_value_t<T>::as_utf32() const {
  if constexpr (is_text<T>)
    return utf32_of(value);
  else
    return number_text<wchar_t>(value);
}

template class variant_value_t<bool>;
template class variant_value_t<signed char>;
template class variant_value_t<unsigned char>;
template class variant_value_t<short>;
template class variant_value_t<unsigned short>;
template class variant_value_t<int>;
template class variant_value_t<unsigned int>;
template class variant_value_t<long>;
template class variant_value_t<unsigned long>;
template class variant_value_t<float>;
template class variant_value_t<double>;
template class variant_value_t<long double>;
template class variant_value_t<std::string>;
template class variant_value_t<std::wstring>;
template class variant_value_t<strings::ustring8>;
template class variant_value_t<strings::ustring16>;
template class variant_value_t<strings::ustring32>;
template class variant_value_t<nil_t>;

}  // namespace types
}  // namespace VEXA_2_10
