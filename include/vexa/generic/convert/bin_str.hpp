// vexa — values to raw byte strings and back (`generic::convert`).
//
// A byte string holds exactly a value's bytes: 2 for 16-bit, 4 for 32-bit
// and `float`, 8 for 64-bit and `double`. Floating-point values travel as
// their IEEE 754 bit patterns, NaN payloads included.
//
// Three byte orders, each with the same functions:
//   generic::convert::               the processor's own order (x86-64: least
//                                    significant byte first)
//   generic::convert::little_endian::  most significant byte first
//   generic::convert::big_endian::     most significant byte first
// Both named namespaces reverse the processor's order and are identical in
// effect; `little_endian` does NOT mean least significant first. The names
// are kept as they are because stored data and callers depend on them.
//
//   convert::uint32_to_bin_str(0x01020304u)                 // "\x04\x03\x02\x01"
//   convert::little_endian::uint32_to_bin_str(0x01020304u)  // "\x01\x02\x03\x04"
//
// Encoders (`*_to_bin_str`) return a string of the value's width. Decoders
// (`bin_str_to_*`) read back what the encoder of the same order wrote:
//   - the `char const*` form reads the width's bytes without any check;
//   - the `std::string` form returns 0 when the string is shorter than the
//     width (nothing is read) and ignores bytes past the width.
//   convert::bin_str_to_uint16(std::string("\x34\x12"))  // 0x1234
//   convert::bin_str_to_uint32(std::string("abc"))       // 0 (too short)
#ifndef VEXA_GENERIC_CONVERT_BIN_STR_HPP
#define VEXA_GENERIC_CONVERT_BIN_STR_HPP

#include <string>

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace convert {

// ---- processor order -----------------------------------------------------------

// *_to_bin_str
// The value's bytes, lowest-addressed first; always the value's width.
//   int16_to_bin_str(short(-2))   // "\xFE\xFF"
//   double_to_bin_str(1.0)        // "\0\0\0\0\0\0\xF0\x3F"
VEXA_API std::string int16_to_bin_str(short const& value);
VEXA_API std::string uint16_to_bin_str(unsigned short const& value);
VEXA_API std::string int32_to_bin_str(int const& value);
VEXA_API std::string uint32_to_bin_str(unsigned int const& value);
VEXA_API std::string int64_to_bin_str(long const& value);
VEXA_API std::string uint64_to_bin_str(unsigned long const& value);
VEXA_API std::string float_to_bin_str(float const& value);
VEXA_API std::string double_to_bin_str(double const& value);

// bin_str_to_*
// The value whose bytes, lowest-addressed first, open `bytes`; 0 from the
// `std::string` form when it holds fewer bytes than the width.
//   bin_str_to_int16(std::string("\xFE\xFF"))   // -2
//   bin_str_to_int16(std::string("\xFE"))       // 0
VEXA_API short bin_str_to_int16(char const* bytes);
VEXA_API short bin_str_to_int16(std::string const& bytes);
VEXA_API unsigned short bin_str_to_uint16(char const* bytes);
VEXA_API unsigned short bin_str_to_uint16(std::string const& bytes);
VEXA_API int bin_str_to_int32(char const* bytes);
VEXA_API int bin_str_to_int32(std::string const& bytes);
VEXA_API unsigned int bin_str_to_uint32(char const* bytes);
VEXA_API unsigned int bin_str_to_uint32(std::string const& bytes);
VEXA_API long bin_str_to_int64(char const* bytes);
VEXA_API long bin_str_to_int64(std::string const& bytes);
VEXA_API unsigned long bin_str_to_uint64(char const* bytes);
VEXA_API unsigned long bin_str_to_uint64(std::string const& bytes);
VEXA_API float bin_str_to_float(char const* bytes);
VEXA_API float bin_str_to_float(std::string const& bytes);
VEXA_API double bin_str_to_double(char const* bytes);
VEXA_API double bin_str_to_double(std::string const& bytes);

// ---- most significant byte first ----------------------------------------------

namespace little_endian {

VEXA_API std::string int16_to_bin_str(short const& value);
VEXA_API std::string uint16_to_bin_str(unsigned short const& value);
VEXA_API std::string int32_to_bin_str(int const& value);
VEXA_API std::string uint32_to_bin_str(unsigned int const& value);
VEXA_API std::string int64_to_bin_str(long const& value);
VEXA_API std::string uint64_to_bin_str(unsigned long const& value);
VEXA_API std::string float_to_bin_str(float const& value);
VEXA_API std::string double_to_bin_str(double const& value);

VEXA_API short bin_str_to_int16(char const* bytes);
VEXA_API short bin_str_to_int16(std::string const& bytes);
VEXA_API unsigned short bin_str_to_uint16(char const* bytes);
VEXA_API unsigned short bin_str_to_uint16(std::string const& bytes);
VEXA_API int bin_str_to_int32(char const* bytes);
VEXA_API int bin_str_to_int32(std::string const& bytes);
VEXA_API unsigned int bin_str_to_uint32(char const* bytes);
VEXA_API unsigned int bin_str_to_uint32(std::string const& bytes);
VEXA_API long bin_str_to_int64(char const* bytes);
VEXA_API long bin_str_to_int64(std::string const& bytes);
VEXA_API unsigned long bin_str_to_uint64(char const* bytes);
VEXA_API unsigned long bin_str_to_uint64(std::string const& bytes);
VEXA_API float bin_str_to_float(char const* bytes);
VEXA_API float bin_str_to_float(std::string const& bytes);
VEXA_API double bin_str_to_double(char const* bytes);
VEXA_API double bin_str_to_double(std::string const& bytes);

}  // namespace little_endian

namespace big_endian {

VEXA_API std::string int16_to_bin_str(short const& value);
VEXA_API std::string uint16_to_bin_str(unsigned short const& value);
VEXA_API std::string int32_to_bin_str(int const& value);
VEXA_API std::string uint32_to_bin_str(unsigned int const& value);
VEXA_API std::string int64_to_bin_str(long const& value);
VEXA_API std::string uint64_to_bin_str(unsigned long const& value);
VEXA_API std::string float_to_bin_str(float const& value);
VEXA_API std::string double_to_bin_str(double const& value);

VEXA_API short bin_str_to_int16(char const* bytes);
VEXA_API short bin_str_to_int16(std::string const& bytes);
VEXA_API unsigned short bin_str_to_uint16(char const* bytes);
VEXA_API unsigned short bin_str_to_uint16(std::string const& bytes);
VEXA_API int bin_str_to_int32(char const* bytes);
VEXA_API int bin_str_to_int32(std::string const& bytes);
VEXA_API unsigned int bin_str_to_uint32(char const* bytes);
VEXA_API unsigned int bin_str_to_uint32(std::string const& bytes);
VEXA_API long bin_str_to_int64(char const* bytes);
VEXA_API long bin_str_to_int64(std::string const& bytes);
VEXA_API unsigned long bin_str_to_uint64(char const* bytes);
VEXA_API unsigned long bin_str_to_uint64(std::string const& bytes);
VEXA_API float bin_str_to_float(char const* bytes);
VEXA_API float bin_str_to_float(std::string const& bytes);
VEXA_API double bin_str_to_double(char const* bytes);
VEXA_API double bin_str_to_double(std::string const& bytes);

}  // namespace big_endian

}  // namespace convert
}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_CONVERT_BIN_STR_HPP
