// vexa — `serialization::serialize_text_buf`: the text buffer.
//
// Every value is written as decimal text and closed by the separator byte
// 0x01, so the content stays readable and does not depend on byte order.
// Strings and nested buffers are written as their length in bytes (decimal),
// 0x01, the raw bytes, 0x01; since the length counts the bytes, a string may
// hold 0x01 itself.
//
//   value                        text before the 0x01
//   int8, int16, int32           generic::convert::ltoa, radix 10
//   int64                        generic::convert::lltoa, radix 10
//   uint8, uint16, uint32        generic::convert::ultoa, radix 10
//   uint64                       generic::convert::ulltoa, radix 10
//   float, double                what the C library's gcvt(value, precision)
//                                writes: printf's %g with `precision`
//                                significant digits, at most 17 (0 counts as 1,
//                                from 2^31 on the default 6), the locale's
//                                decimal point, "inf", "-nan" and so on
//   string, buffer               length, 0x01, the bytes
//
//   serialization::serialize_text_buf buf;
//   buf.append_int32(-5); buf.append_string("ab"); buf.append_double(0.1, 3);
//   buf.as_str();   // "-5\x01" "2\x01" "ab\x01" "0.1\x01"
//
// Reading a number takes the text up to the next 0x01 (or to the end of the
// content when none follows) and steps over the separator. Integers are read
// by `generic::convert::str_to_int8` ... `str_to_uint64` with radix 0 and
// without raising: the text decides its radix ("0x1f" is 31, "010" is 8),
// digits are read up to the first other character ("12ab" is 12, "" and "ab"
// are 0) and out-of-range values saturate. Floating values are read with the
// C library's strtod, without any check ("ab" is 0).
//
// Reading a string reads its length as an int32, then takes that many bytes
// and steps over them and the closing separator; a length above what remains
// takes what remains and leaves the buffer at its end. Decisions for crafted
// content:
//   - A length whose text has no separator after it (the content ends
//     there): a length of 0 gives "", any other raises the string class's
//     `std::out_of_range` (a substring beyond the content); the reader stays
//     at its end either way.
//   - A negative length takes everything that remains and leaves the reader
//     at its end, so a reader never moves backwards and never loops.
// `read_buffer` reads the same layout and returns a new `serialize_text_buf`.
//
// Writing uses `std::to_chars` and reading tries `std::from_chars` first;
// both give exactly what gcvt and strtod give (the locale's decimal point
// included), only faster.
#ifndef VEXA_SERIALIZATION_SERIALIZE_TEXT_BUF_HPP
#define VEXA_SERIALIZATION_SERIALIZE_TEXT_BUF_HPP

#include <string>

#include "vexa/export.hpp"
#include "vexa/serialization/serialize_buffer.hpp"

namespace VEXA_2_10 {
namespace serialization {

class labeled_text_buffer;

class VEXA_API serialize_text_buf : public serialize_buffer {
 public:
  // The separator written after every item.
  static constexpr char separator = '\x01';

  // Empty content, read position 0.
  serialize_text_buf();
  // The bytes become the content; read position 0.
  explicit serialize_text_buf(std::string const& bytes);
  // The other buffer's `as_str()` becomes the content; read position 0.
  explicit serialize_text_buf(serialize_buffer const& other);
  // Content and read position.
  serialize_text_buf(serialize_text_buf const& other);
  serialize_text_buf& operator=(serialize_text_buf const& other);
  ~serialize_text_buf() override;

  void assign(serialize_buffer const& other) override;
  void assign(std::string const& bytes) override;
  void assign(char const* bytes, int length) override;
  std::string const& as_str() const override;

  void append_int8(signed char const& value) override;
  void append_int16(short const& value) override;
  void append_int32(int const& value) override;
  void append_int64(long const& value) override;
  void append_uint8(unsigned char const& value) override;
  void append_uint16(unsigned short const& value) override;
  void append_uint32(unsigned int const& value) override;
  void append_uint64(unsigned long const& value) override;
  void append_float(float const& value, unsigned int const& precision) override;
  void append_double(double const& value, unsigned int const& precision) override;
  void append_string(std::string const& value) override;
  void append_buffer(serialize_buffer const& other) override;

  signed char read_int8() const override;
  short read_int16() const override;
  int read_int32() const override;
  long read_int64() const override;
  unsigned char read_uint8() const override;
  unsigned short read_uint16() const override;
  unsigned int read_uint32() const override;
  unsigned long read_uint64() const override;
  float read_float() const override;
  double read_double() const override;
  std::string read_string() const override;
  serialize_text_buf* read_buffer() const override;

  bool at_end() const override;
  void reset_read() const override;
  serialize_text_buf* create() const override;
  serialize_text_buf* clone() const override;

  // ---- implementation details ----
 protected:
  // The content bytes.
  std::string data;
  // Index of the next byte to read; all ones (std::string::npos) means that
  // reading is at its end.
  mutable unsigned long read_position;

 private:
  // The labeled buffer writes its working text in place.
  friend class labeled_text_buffer;
};

}  // namespace serialization
}  // namespace VEXA_2_10

#endif  // VEXA_SERIALIZATION_SERIALIZE_TEXT_BUF_HPP
