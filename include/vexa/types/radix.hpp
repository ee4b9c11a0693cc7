// vexa — `types::radix_t::base`: the radix argument of the text conversions.
//
// The enumerators' numeric values are the radices themselves: 0 (the text
// decides, by its prefix) and 2 to 36. Any other number cast to `base` is
// passed through unchanged and rejected by the parser that receives it.
//
//   convert::str_to_int("ff", 2, types::radix_t::base16, false);   // 255
//   convert::str_to_int("0x1f", 4, types::radix_t::automatic, false);  // 31
#ifndef VEXA_TYPES_RADIX_HPP
#define VEXA_TYPES_RADIX_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace types {

struct radix_t {
  enum base : unsigned int {
    automatic = 0,
    base2 = 2, base3, base4, base5, base6, base7, base8, base9, base10,
    base11, base12, base13, base14, base15, base16, base17, base18, base19, base20,
    base21, base22, base23, base24, base25, base26, base27, base28, base29, base30,
    base31, base32, base33, base34, base35, base36,
    binary = base2,
    octal = base8,
    decimal = base10,
    hexadecimal = base16
  };
};

}  // namespace types
}  // namespace VEXA_2_10

#endif  // VEXA_TYPES_RADIX_HPP
