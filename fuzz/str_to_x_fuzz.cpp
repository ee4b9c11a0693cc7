// Fuzz target: the text-to-number parsers against a plain reading of their
// rules, for every entry point, character type, radix 0..40 and both flag
// values, plus str_to_bool.
//
// Input: byte 0 picks the character type (char, UTF-16 unit, wchar_t),
// byte 1 the entry point, byte 2 the radix (mod 41), byte 3 the length
// given (bits 1-2: the real one, 0, or a shorter one taken from byte 4); both
// flag values are tried on every input. The rest is the text: for `char` the bytes as they are; for
// the wider types each byte below 0xF0 is one unit and a byte from 0xF0 on
// announces a raw unit in the next two (UTF-16) or four (wchar_t) bytes, so
// the dictionary's words stay words in every width.
//
// The library reads plain decimal texts eight digits at a time and has
// fixed-radix loops; the reference walks one unit at a time exactly as the
// header describes. Results must match, and so must the exception: its
// class, message, function and file.
#include <cctype>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

#include "fuzz_support.hpp"
#include "vexa/exceptions/logic_error.hpp"
#include "vexa/exceptions/runtime_error.hpp"
#include "vexa/generic/convert/str_to_x.hpp"

namespace {

namespace convert = vexa::generic::convert;
namespace exceptions = vexa::exceptions;
using radix_base = vexa::types::radix_t::base;

// What a parse ends with: a value or one of the three errors.
enum class ending { value, bad_radix, too_large, too_small };

struct outcome {
  ending how = ending::value;
  unsigned long long bits = 0;  // the value's bit pattern in its width
  std::string message, function, file;

  bool operator==(outcome const& o) const {
    return how == o.how && bits == o.bits && message == o.message && function == o.function &&
           file == o.file;
  }
  std::string show() const {
    static char const* const names[] = {"value", "bad radix", "too large", "too small"};
    return std::string(names[static_cast<int>(how)]) + " " + std::to_string(bits) + " \"" +
           message + "\" " + function + " " + file;
  }
};

template <typename T>
outcome value_of(T v) {
  outcome o;
  o.bits = static_cast<unsigned long long>(static_cast<std::make_unsigned_t<T>>(v));
  return o;
}

outcome raised(ending how, char const* function) {
  static char const* const messages[] = {
      "", "invalid radix value, values of 0, 2-36 are the only valid values",
      "Number value is to large", "Number value is to small"};
  outcome o;
  o.how = how;
  o.message = messages[static_cast<int>(how)];
  o.function = function;
  o.file = "generic/convert/str_to_x";
  return o;
}

// ---- the reference ------------------------------------------------------------

long unit_value(char c) { return static_cast<signed char>(c); }
long unit_value(unsigned short c) { return c; }
long unit_value(wchar_t c) { return c; }

template <typename Ch>
bool space(Ch c) {
  long const v = unit_value(c);
  return v >= 0 && v <= 255 && std::isspace(static_cast<int>(v)) != 0;
}

// The digit value of c in radix r, or -1.
template <typename Ch>
long digit(Ch c, unsigned r) {
  long const v = unit_value(c);
  long const radix = r;
  if (v > 47 && v < 48 + (radix < 10 ? radix : 10)) return v - 48;
  if (v > 64 && v < radix + 55) return v - 55;
  if (v >= 'a' && v < radix + 87) return v - 87;
  return -1;
}

template <typename Ch>
unsigned long length_of(Ch const* text) {
  unsigned long n = 0;
  while (text[n] != 0) ++n;
  return n;
}

template <typename T, typename Ch>
outcome reference_parse(Ch const* text, unsigned long n, unsigned r, bool raise) {
  using U = std::make_unsigned_t<T>;
  constexpr bool is_signed = std::is_signed_v<T>;
  char const* const function = is_signed ? "strtointx" : "strtouintx";
  if (text == nullptr) return value_of<T>(0);
  if (is_signed && n == 0) n = length_of(text);
  unsigned long p = 0;
  while (space(text[p]))
    if (++p >= n) return value_of<T>(0);
  Ch const sign = text[p];
  bool const minus = unit_value(sign) == '-';
  if (minus || unit_value(sign) == '+')
    if (++p >= n) return value_of<T>(0);
  if (r != 0 && (r == 1 || r > 36)) return raised(ending::bad_radix, function);
  if (r == 0) {
    r = 10;
    if (unit_value(text[p]) == '0' || unit_value(text[p]) == '\\') {
      if (++p >= n) return value_of<T>(0);
      long const c = unit_value(text[p]);
      r = 8;
      if (c == 'b' || c == 'B' || c == 'x' || c == 'X') {
        r = (c == 'b' || c == 'B') ? 2 : 16;
        if (++p >= n) return value_of<T>(0);
      }
    }
  }
  U const limit = is_signed && minus ? static_cast<U>(U(1) << (std::numeric_limits<U>::digits - 1))
                                     : static_cast<U>(std::numeric_limits<T>::max());
  U const cutoff = static_cast<U>(limit / r);
  U const cutlim = static_cast<U>(limit % r);
  U v = 0;
  bool overflow = false;
  for (;;) {
    long const d = digit(text[p], r);
    if (d < 0) break;
    bool const at_cutoff = is_signed ? static_cast<T>(v) >= static_cast<T>(cutoff) : v >= cutoff;
    if (at_cutoff && !(v == cutoff && static_cast<U>(d) <= cutlim)) {
      overflow = true;
      break;
    }
    v = static_cast<U>(static_cast<unsigned long long>(v) * r + static_cast<unsigned long long>(d));
    if (++p >= n) break;
  }
  if (is_signed) {
    if (overflow) {
      if (raise) return raised(minus ? ending::too_small : ending::too_large, function);
      return minus ? value_of<T>(std::numeric_limits<T>::min()) : value_of<T>(std::numeric_limits<T>::max());
    }
    return value_of<T>(static_cast<T>(minus ? static_cast<U>(U(0) - v) : v));
  }
  if (overflow) {
    if (raise) return raised(minus ? ending::too_small : ending::too_large, function);
    v = std::numeric_limits<U>::max();
  }
  if (minus && v != 0) {
    if (raise) return raised(ending::too_small, function);
    return value_of<T>(0);
  }
  return value_of<T>(static_cast<T>(v));
}

// ---- the entry points -----------------------------------------------------------

template <typename Call>
outcome run(Call call) {
  try {
    return value_of(call());
  } catch (exceptions::invalid_argument_value const& e) {
    outcome o = raised(ending::bad_radix, "");
    o.message = e.get_message();
    o.function = e.get_state().function;
    o.file = e.get_state().file;
    return o;
  } catch (exceptions::overflow_error const& e) {
    outcome o = raised(ending::too_large, "");
    o.message = e.get_message();
    o.function = e.get_state().function;
    o.file = e.get_state().file;
    return o;
  } catch (exceptions::underflow_error const& e) {
    outcome o = raised(ending::too_small, "");
    o.message = e.get_message();
    o.function = e.get_state().function;
    o.file = e.get_state().file;
    return o;
  }
}

template <typename Ch>
void check_entry_point(unsigned which, Ch const* text, unsigned long n, unsigned radix, bool raise,
                       std::basic_string<Ch> const& whole) {
  radix_base const r = static_cast<radix_base>(radix);
  outcome got, want;
#define VEXA_FUZZ_ENTRY(index, name, T, parser)                                            \
  case index:                                                                              \
    got = run([&] { return convert::name(text, n, r, raise); });                           \
    want = reference_parse<T>(text, n, radix, raise);                                      \
    VEXA_FUZZ_CHECK(got == want, std::string(#name) + " of " + vexa_fuzz::hex(whole) +     \
                                     " length " + std::to_string(n) + " radix " +          \
                                     std::to_string(radix) + " flag " +                    \
                                     std::to_string(raise) + "\n  gave     " + got.show() + \
                                     "\n  expected " + want.show());                       \
    break;
  switch (which) {
    VEXA_FUZZ_ENTRY(0, str_to_uint64, unsigned long, strtouintx)
    VEXA_FUZZ_ENTRY(1, str_to_uint32, unsigned int, strtouintx)
    VEXA_FUZZ_ENTRY(2, str_to_unsigned, unsigned int, strtouintx)
    VEXA_FUZZ_ENTRY(3, str_to_uint16, unsigned short, strtouintx)
    VEXA_FUZZ_ENTRY(4, str_to_uint8, unsigned char, strtouintx)
    VEXA_FUZZ_ENTRY(5, str_to_int64, long, strtointx)
    VEXA_FUZZ_ENTRY(6, str_to_long, long, strtointx)
    VEXA_FUZZ_ENTRY(7, str_to_int32, int, strtointx)
    VEXA_FUZZ_ENTRY(8, str_to_signed, int, strtointx)
    VEXA_FUZZ_ENTRY(9, str_to_int, int, strtointx)
    VEXA_FUZZ_ENTRY(10, str_to_int16, short, strtointx)
    VEXA_FUZZ_ENTRY(11, str_to_short, short, strtointx)
    VEXA_FUZZ_ENTRY(12, str_to_int8, signed char, strtointx)
    default:
      break;
  }
#undef VEXA_FUZZ_ENTRY
}

template <typename Ch>
std::basic_string<Ch> text_of(vexa_fuzz::input& in) {
  if constexpr (sizeof(Ch) == 1) {
    return in.rest();
  } else {
    std::basic_string<Ch> text;
    while (!in.empty()) {
      unsigned const b = in.byte();
      if (b < 0xF0) text.push_back(static_cast<Ch>(b));
      else if (sizeof(Ch) == 2) text.push_back(static_cast<Ch>(in.word16()));
      else text.push_back(static_cast<Ch>(in.word32()));
    }
    return text;
  }
}

bool reference_bool(std::basic_string<wchar_t> const& text) {
  std::basic_string<wchar_t> lowered = text;
  for (wchar_t& c : lowered)
    if (c >= 0 && c <= 255) c = static_cast<wchar_t>(std::tolower(static_cast<int>(c)));
  if (lowered == L"yes" || lowered == L"on" || lowered == L"true") return true;
  return reference_parse<long>(text.c_str(), text.size(), 0, false).bits != 0;
}

template <typename Ch>
void check(vexa_fuzz::input& in, unsigned which, unsigned radix, unsigned mode, unsigned cut) {
  std::basic_string<Ch> const text = text_of<Ch>(in);
  unsigned long n = text.size();
  if (mode == 1) n = 0;  // the signed parsers count to the terminator
  if (mode == 2 && n > 0) n = cut % n;  // stops inside the text
  check_entry_point(which, text.c_str(), n, radix, false, text);
  check_entry_point(which, text.c_str(), n, radix, true, text);
  if constexpr (std::is_same_v<Ch, wchar_t>) {
    bool const got = convert::str_to_bool(vexa::strings::ustring32(text));
    VEXA_FUZZ_CHECK(got == reference_bool(text), "str_to_bool of " + vexa_fuzz::hex(text));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  unsigned const type = in.pick(3);
  unsigned const which = in.pick(13);
  unsigned const radix = in.pick(41);
  unsigned const mode = (in.byte() >> 1) & 3;
  unsigned const cut = in.byte();
  if (type == 0) check<char>(in, which, radix, mode, cut);
  if (type == 1) check<unsigned short>(in, which, radix, mode, cut);
  if (type == 2) check<wchar_t>(in, which, radix, mode, cut);
  return 0;
}
