#include "vexa/serialization/serialize_text_buf.hpp"

#include "serialization/text_format.hpp"

namespace VEXA_2_10 {
namespace serialization {

namespace format = _private;

serialize_text_buf::serialize_text_buf() : read_position(0) {}
serialize_text_buf::serialize_text_buf(std::string const& bytes) : data(bytes), read_position(0) {}
serialize_text_buf::serialize_text_buf(serialize_buffer const& other) : data(other.as_str()), read_position(0) {}
serialize_text_buf::serialize_text_buf(serialize_text_buf const& other)
    : serialize_buffer(other), data(other.data), read_position(other.read_position) {}
serialize_text_buf& serialize_text_buf::operator=(serialize_text_buf const& other) {
  if (&other != this) {
    data = other.data;
    read_position = other.read_position;
  }
  return *this;
}
serialize_text_buf::~serialize_text_buf() = default;

void serialize_text_buf::assign(serialize_buffer const& other) {
  if (&other != this) data = other.as_str();
}
void serialize_text_buf::assign(std::string const& bytes) {
  if (&bytes != &data) data = bytes;
}
void serialize_text_buf::assign(char const* bytes, int length) {
  if (bytes == nullptr || length <= 0)
    data.clear();
  else
    data.assign(bytes, static_cast<unsigned long>(length));  // safe when `bytes` lies in `data`
}
std::string const& serialize_text_buf::as_str() const { return data; }

void serialize_text_buf::append_int8(signed char const& v) { format::append_signed(data, v); }
void serialize_text_buf::append_int16(short const& v) { format::append_signed(data, v); }
void serialize_text_buf::append_int32(int const& v) { format::append_signed(data, v); }
void serialize_text_buf::append_int64(long const& v) { format::append_signed(data, v); }
void serialize_text_buf::append_uint8(unsigned char const& v) { format::append_unsigned(data, v); }
void serialize_text_buf::append_uint16(unsigned short const& v) { format::append_unsigned(data, v); }
void serialize_text_buf::append_uint32(unsigned int const& v) { format::append_unsigned(data, v); }
void serialize_text_buf::append_uint64(unsigned long const& v) { format::append_unsigned(data, v); }
void serialize_text_buf::append_float(float const& v, unsigned int const& precision) {
  format::append_floating(data, v, precision);
}
void serialize_text_buf::append_double(double const& v, unsigned int const& precision) {
  format::append_floating(data, v, precision);
}

void serialize_text_buf::append_string(std::string const& value) {
  if (&value == &data) {  // appending the content to itself: the content as it was
    std::string const copy(value);
    format::append_bytes(data, copy.data(), copy.size());
  } else {
    format::append_bytes(data, value.data(), value.size());
  }
}

void serialize_text_buf::append_buffer(serialize_buffer const& other) { append_string(other.as_str()); }

signed char serialize_text_buf::read_int8() const { return format::read_int8(data.data(), data.size(), read_position); }
short serialize_text_buf::read_int16() const { return format::read_int16(data.data(), data.size(), read_position); }
int serialize_text_buf::read_int32() const { return format::read_int32(data.data(), data.size(), read_position); }
long serialize_text_buf::read_int64() const { return format::read_int64(data.data(), data.size(), read_position); }
unsigned char serialize_text_buf::read_uint8() const {
  return format::read_uint8(data.data(), data.size(), read_position);
}
unsigned short serialize_text_buf::read_uint16() const {
  return format::read_uint16(data.data(), data.size(), read_position);
}
unsigned int serialize_text_buf::read_uint32() const {
  return format::read_uint32(data.data(), data.size(), read_position);
}
unsigned long serialize_text_buf::read_uint64() const {
  return format::read_uint64(data.data(), data.size(), read_position);
}
// Read as a double and narrowed, as strtod's result would be.
float serialize_text_buf::read_float() const {
  return static_cast<float>(format::read_double(data.data(), data.size(), read_position));
}
double serialize_text_buf::read_double() const { return format::read_double(data.data(), data.size(), read_position); }

std::string serialize_text_buf::read_string() const {
  unsigned long start, count;
  format::read_block(data.data(), data.size(), read_position, start, count);
  return count == 0 ? std::string() : std::string(data, start, count);
}

serialize_text_buf* serialize_text_buf::read_buffer() const {
  unsigned long start, count;
  format::read_block(data.data(), data.size(), read_position, start, count);
  return new serialize_text_buf(count == 0 ? std::string() : std::string(data, start, count));
}

bool serialize_text_buf::at_end() const { return read_position == format::npos || read_position >= data.size(); }
void serialize_text_buf::reset_read() const { read_position = 0; }
serialize_text_buf* serialize_text_buf::create() const { return new serialize_text_buf(); }
serialize_text_buf* serialize_text_buf::clone() const { return new serialize_text_buf(*this); }

}  // namespace serialization
}  // namespace VEXA_2_10
