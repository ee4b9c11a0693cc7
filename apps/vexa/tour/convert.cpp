// Tour section: text to integers, integers to digits, values to byte strings.
#include <ostream>
#include <string>

#include "tour/section.hpp"
#include "vexa/exceptions/exception.hpp"
#include "vexa/generic/convert/bin_str.hpp"
#include "vexa/generic/convert/str_to_x.hpp"
#include "vexa/generic/convert/x_to_str.hpp"

namespace {

namespace convert = vexa::generic::convert;
using radix = vexa::types::radix_t;

std::string hex_bytes(std::string const& bytes) {
  static char const digit[] = "0123456789abcdef";
  std::string out;
  for (unsigned char b : bytes) {
    out += ' ';
    out += digit[b >> 4];
    out += digit[b & 15];
  }
  return out;
}

// One parse, shown with its result or the exception it raises.
void parse(std::ostream& out, std::string const& text, radix::base r, bool raise) {
  out << "  str_to_int(\"" << text << "\", radix " << static_cast<unsigned>(r)
      << (raise ? ", raising" : "") << ") = ";
  try {
    out << convert::str_to_int(text.c_str(), text.size(), r, raise) << "\n";
  } catch (vexa::exceptions::exception const& e) {
    out << "throws \"" << e.get_message() << "\" from " << e.get_state().function << "\n";
  }
}

void show(std::ostream& out) {
  out << "Radix 0 lets the text choose: 0x and 0b prefixes, octal after a leading 0,\n"
         "and a backslash in place of that 0. A given radix reads no prefix:\n";
  parse(out, "0x1F", radix::automatic, false);
  parse(out, "\\x1F", radix::automatic, false);
  parse(out, "0b101", radix::automatic, false);
  parse(out, "017", radix::automatic, false);
  parse(out, "0x1F", radix::hexadecimal, false);
  parse(out, "  -42 apples", radix::decimal, false);

  out << "\nOut of range, a value is pinned to the type's limit, or the parse raises:\n";
  parse(out, "2147483648", radix::decimal, false);
  parse(out, "2147483648", radix::decimal, true);
  parse(out, "-2147483649", radix::decimal, true);
  parse(out, "12", static_cast<radix::base>(40), false);
  std::string const minus = "-5";
  out << "  str_to_uint32(\"-5\") = "
      << convert::str_to_uint32(minus.c_str(), minus.size(), radix::decimal, false)
      << "  (a '-' makes an unsigned value 0)\n";

  char digits[66];
  out << "\nDigits in any radix from 2 to 36, letters in lower case:\n";
  convert::ltoa(-2147483647 - 1, digits, 10);
  out << "  ltoa(INT_MIN, 10)     = " << digits << "\n";
  convert::ultoa(0xBEEFu, digits, 16);
  out << "  ultoa(0xBEEF, 16)     = " << digits << "\n";
  convert::lltoa(-255L, digits, 2);
  out << "  lltoa(-255, 2)        = " << digits << "\n";
  convert::ulltoa(~0ul, digits, 36);
  out << "  ulltoa(~0, 36)        = " << digits << "\n";

  out << "\nByte strings: processor order, and most significant byte first in both\n"
         "little_endian:: and big_endian:: (the names are historical):\n";
  out << "  uint32_to_bin_str(0x01020304)                ="
      << hex_bytes(convert::uint32_to_bin_str(0x01020304u)) << "\n";
  out << "  little_endian::uint32_to_bin_str(0x01020304) ="
      << hex_bytes(convert::little_endian::uint32_to_bin_str(0x01020304u)) << "\n";
  out << "  double_to_bin_str(1.0)                       ="
      << hex_bytes(convert::double_to_bin_str(1.0)) << "\n";
}

vexa_cli::tour::registrar const section(20, "Conversions", show);

}  // namespace
