// Test helper: byte strings shown as hexadecimal pairs, so that a mismatch
// prints both contents whole and readable.
#ifndef VEXA_TESTS_SERIALIZATION_BYTES_HPP
#define VEXA_TESTS_SERIALIZATION_BYTES_HPP

#include <string>

namespace serialization_test {

inline std::string hex(std::string const& bytes) {
  static char const digits[] = "0123456789ABCDEF";
  std::string out;
  for (unsigned char c : bytes) {
    if (!out.empty()) out += ' ';
    out += digits[c >> 4];
    out += digits[c & 15];
  }
  return out;
}

}  // namespace serialization_test

#endif  // VEXA_TESTS_SERIALIZATION_BYTES_HPP
