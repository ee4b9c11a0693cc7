// vexa — `serialization::serialize_binary_buf`: the compact binary buffer.
//
// Each value is stored as its fixed-width bytes in the processor's order
// (least significant first on x86-64), exactly what `generic::convert`'s
// unqualified `*_to_bin_str` functions give; strings and nested buffers as a
// 4-byte unsigned length followed by their bytes. No type tags, no
// alignment, no header.
//
//   value                 bytes appended
//   int8 / uint8          1
//   int16 / uint16        2
//   int32 / uint32        4
//   int64 / uint64        8
//   float / double        4 / 8, the IEEE 754 bits (the precision is ignored)
//   string / buffer       4-byte length, then the bytes
//
//   serialization::serialize_binary_buf buf;
//   buf.append_string("ab");   // content 02 00 00 00 61 62
//
// Reading cut or crafted content (nothing is ever read past the content):
//   - A fixed-width value at the end reads as 0 and leaves the position
//     alone. A value cut short by the end takes its missing bytes as zero and
//     still advances by its full width, so the buffer is then at its end.
//   - A string reads its length the same way, then "" when nothing follows;
//     a length above what remains takes what remains.
//   - `read_buffer` reads the length like `read_uint32` (0 at the end) and
//     takes the bytes as a substring: a read position beyond the content
//     (after a cut value) raises the string class's `std::out_of_range`; at
//     the very end it gives an empty buffer.
// Lengths above 4294967295 bytes do not fit the prefix; only the low 32 bits
// of such a length are written.
#ifndef VEXA_SERIALIZATION_SERIALIZE_BINARY_BUF_HPP
#define VEXA_SERIALIZATION_SERIALIZE_BINARY_BUF_HPP

#include <string>

#include "vexa/export.hpp"
#include "vexa/serialization/serialize_buffer.hpp"

namespace VEXA_2_10 {
namespace serialization {

class VEXA_API serialize_binary_buf : public serialize_buffer {
 public:
  // Empty content, read position 0.
  serialize_binary_buf();
  // The bytes become the content; read position 0.
  explicit serialize_binary_buf(std::string const& bytes);
  // The other buffer's `as_str()` becomes the content; read position 0.
  explicit serialize_binary_buf(serialize_buffer const& other);
  // Content and read position.
  serialize_binary_buf(serialize_binary_buf const& other);
  serialize_binary_buf& operator=(serialize_binary_buf const& other);
  ~serialize_binary_buf() override;

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
  serialize_binary_buf* read_buffer() const override;

  bool at_end() const override;
  void reset_read() const override;
  serialize_binary_buf* create() const override;
  serialize_binary_buf* clone() const override;

  // ---- implementation details ----
 protected:
  // The content bytes.
  std::string data;
  // Index of the next byte to read; all ones (std::string::npos) means that
  // reading is at its end.
  mutable unsigned long read_position;

 private:
  template <typename T>
  void append_fixed(T const& value);
  template <typename T>
  T read_fixed() const;
  // Reads a length prefix; the bytes it announces then start at the position.
  unsigned long read_length() const;
};

}  // namespace serialization
}  // namespace VEXA_2_10

#endif  // VEXA_SERIALIZATION_SERIALIZE_BINARY_BUF_HPP
