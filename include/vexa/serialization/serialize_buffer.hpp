// vexa — `serialization::serialize_buffer`: the interface of the typed
// sequential buffers.
//
// A buffer is append-only for writing and sequential for reading: values are
// appended one after another and read back, in the same order and with the
// same types, from a read position that starts at 0. The whole content is one
// `std::string` of bytes (`as_str()`), so it can be stored as a file and
// brought back with `assign`. Nothing in the content names the types: the
// reader must know the sequence it wrote.
//
// Two formats implement it: `serialize_binary_buf` (fixed-width bytes in the
// processor's order, length-prefixed strings) and `serialize_text_buf`
// (decimal items closed by the byte 0x01).
//
//   serialization::serialize_binary_buf buf;
//   buf.append_uint32(7u); buf.append_string("ab");
//   buf.read_uint32();   // 7
//   buf.read_string();   // "ab"
//
// Decisions shared by both formats:
//   - Reads are `const` and move a `mutable` read position; a buffer must not
//     be read from two places at once.
//   - Reads at the end never fail: numbers read as 0, strings as "".
//   - `assign` replaces the content but keeps the read position; call
//     `reset_read()` to read the new content from its start.
//   - `assign(char const*, int)` with a null pointer or a negative length
//     assigns the empty content.
//   - `read_buffer()`, `create()` and `clone()` return a new buffer of the
//     same class, allocated with `new`; the caller owns it (and may hand it
//     to `memory::pointers::rc_pointer` after setting its owned flag).
//   - The owned flag and the reference count start at zero; a copy is a new
//     object with a count of zero.
#ifndef VEXA_SERIALIZATION_SERIALIZE_BUFFER_HPP
#define VEXA_SERIALIZATION_SERIALIZE_BUFFER_HPP

#include <string>

#include "vexa/export.hpp"
#include "vexa/generic/abilities/clone_ability.hpp"
#include "vexa/generic/abilities/create_ability.hpp"
#include "vexa/generic/abilities/reference_count_pointer_ability.hpp"

namespace VEXA_2_10 {
namespace serialization {

// serialize_buffer
//
// The abstract buffer. The virtual operations are declared in their fixed
// slot order; every one is answered by the formats.
class VEXA_API serialize_buffer
    : public generic::abilities::create_ability,
      public generic::abilities::clone_ability,
      public generic::abilities::reference_count_pointer_ability<serialize_buffer> {
 public:
  ~serialize_buffer() override;

  // assign
  // Replaces the content by the argument's bytes (the other buffer's
  // `as_str()`); assigning a buffer to itself changes nothing. The read
  // position is kept.
  //   buf.assign(std::string("\x01\0\0\0", 4));
  //   buf.reset_read(); buf.read_uint32();   // 1
  virtual void assign(serialize_buffer const& other) = 0;
  virtual void assign(std::string const& bytes) = 0;
  virtual void assign(char const* bytes, int length) = 0;

  // as_str
  // The whole content, independent of the read position.
  //   binary.append_uint16(1); binary.as_str();   // "\x01\x00"
  //   text.append_uint16(1); text.as_str();       // "1\x01"
  virtual std::string const& as_str() const = 0;

  // append_*
  // Append one value in the buffer's format. The precision of the floating
  // values is the number of significant digits for the text format and is
  // ignored by the binary format.
  //   buf.append_int32(-5);
  //   buf.append_double(0.1, 3);
  virtual void append_int8(signed char const& value) = 0;
  virtual void append_int16(short const& value) = 0;
  virtual void append_int32(int const& value) = 0;
  virtual void append_int64(long const& value) = 0;
  virtual void append_uint8(unsigned char const& value) = 0;
  virtual void append_uint16(unsigned short const& value) = 0;
  virtual void append_uint32(unsigned int const& value) = 0;
  virtual void append_uint64(unsigned long const& value) = 0;
  virtual void append_float(float const& value, unsigned int const& precision) = 0;
  virtual void append_double(double const& value, unsigned int const& precision) = 0;
  // The string's bytes (any bytes, 0 and 0x01 included) with their length.
  virtual void append_string(std::string const& value) = 0;
  // The other buffer's whole content as one length-prefixed block; a buffer
  // may append itself (its content as it was before the call).
  virtual void append_buffer(serialize_buffer const& other) = 0;

  // read_*
  // The next value, read as the given type; 0 at the end (the position is
  // then left alone).
  //   buf.read_int32();   // -5
  //   buf.read_int32();   // 0 once nothing is left
  virtual signed char read_int8() const = 0;
  virtual short read_int16() const = 0;
  virtual int read_int32() const = 0;
  virtual long read_int64() const = 0;
  virtual unsigned char read_uint8() const = 0;
  virtual unsigned short read_uint16() const = 0;
  virtual unsigned int read_uint32() const = 0;
  virtual unsigned long read_uint64() const = 0;
  virtual float read_float() const = 0;
  virtual double read_double() const = 0;
  // The next string; "" at the end.
  virtual std::string read_string() const = 0;
  // The next block as a new buffer of the same class, owned by the caller.
  virtual serialize_buffer* read_buffer() const = 0;

  // at_end
  // True when nothing is left to read.
  //   serialize_text_buf().at_end();   // true
  virtual bool at_end() const = 0;

  // reset_read
  // Reading starts again at the first byte.
  virtual void reset_read() const = 0;

  // create
  // A new, empty buffer of the same class, owned by the caller.
  virtual serialize_buffer* create() const = 0;

  // clone
  // A new copy (content and read position) of the same class, owned by the
  // caller.
  virtual serialize_buffer* clone() const = 0;

 protected:
  serialize_buffer();
  serialize_buffer(serialize_buffer const& other);
  serialize_buffer& operator=(serialize_buffer const& other);
};

}  // namespace serialization
}  // namespace VEXA_2_10

#endif  // VEXA_SERIALIZATION_SERIALIZE_BUFFER_HPP
