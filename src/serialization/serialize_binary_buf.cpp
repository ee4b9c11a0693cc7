#include "vexa/serialization/serialize_binary_buf.hpp"

#include <cstdint>
#include <cstring>

namespace VEXA_2_10 {
namespace serialization {

namespace {
constexpr unsigned long npos = static_cast<unsigned long>(-1);
}

serialize_binary_buf::serialize_binary_buf() : read_position(0) {}
serialize_binary_buf::serialize_binary_buf(std::string const& bytes) : data(bytes), read_position(0) {}
serialize_binary_buf::serialize_binary_buf(serialize_buffer const& other)
    : data(other.as_str()), read_position(0) {}
serialize_binary_buf::serialize_binary_buf(serialize_binary_buf const& other)
    : serialize_buffer(other), data(other.data), read_position(other.read_position) {}
serialize_binary_buf& serialize_binary_buf::operator=(serialize_binary_buf const& other) {
  if (&other != this) {
    data = other.data;
    read_position = other.read_position;
  }
  return *this;
}
serialize_binary_buf::~serialize_binary_buf() = default;

void serialize_binary_buf::assign(serialize_buffer const& other) {
  if (&other != this) data = other.as_str();
}
void serialize_binary_buf::assign(std::string const& bytes) {
  if (&bytes != &data) data = bytes;
}
void serialize_binary_buf::assign(char const* bytes, int length) {
  if (bytes == nullptr || length <= 0)
    data.clear();
  else
    data.assign(bytes, static_cast<unsigned long>(length));  // safe when `bytes` lies in `data`
}
std::string const& serialize_binary_buf::as_str() const { return data; }

// The value's own bytes: on the x86-64 target, exactly the processor-order
// byte strings of generic::convert, without making a string per value.
template <typename T>
void serialize_binary_buf::append_fixed(T const& value) {
  char bytes[sizeof(T)];
  std::memcpy(bytes, &value, sizeof(T));
  data.append(bytes, sizeof(T));
}

void serialize_binary_buf::append_int8(signed char const& v) { data += static_cast<char>(v); }
void serialize_binary_buf::append_int16(short const& v) { append_fixed(v); }
void serialize_binary_buf::append_int32(int const& v) { append_fixed(v); }
void serialize_binary_buf::append_int64(long const& v) { append_fixed(v); }
void serialize_binary_buf::append_uint8(unsigned char const& v) { data += static_cast<char>(v); }
void serialize_binary_buf::append_uint16(unsigned short const& v) { append_fixed(v); }
void serialize_binary_buf::append_uint32(unsigned int const& v) { append_fixed(v); }
void serialize_binary_buf::append_uint64(unsigned long const& v) { append_fixed(v); }
void serialize_binary_buf::append_float(float const& v, unsigned int const&) { append_fixed(v); }
void serialize_binary_buf::append_double(double const& v, unsigned int const&) { append_fixed(v); }

void serialize_binary_buf::append_string(std::string const& value) {
  unsigned long const n = value.size();  // before the prefix: `value` may be this content
  append_fixed(static_cast<std::uint32_t>(n));
  data.append(value, 0, n);
}

void serialize_binary_buf::append_buffer(serialize_buffer const& other) { append_string(other.as_str()); }

// At the end: 0, position kept. Otherwise the width's bytes, those past the
// content taken as zero, and the position moves on by the full width.
template <typename T>
T serialize_binary_buf::read_fixed() const {
  unsigned long const position = read_position;
  unsigned long const size = data.size();
  if (position >= size) return T(0);  // npos included
  T value;
  if (size - position >= sizeof(T)) {
    std::memcpy(&value, data.data() + position, sizeof(T));
  } else {
    unsigned char bytes[sizeof(T)] = {};
    std::memcpy(bytes, data.data() + position, size - position);
    std::memcpy(&value, bytes, sizeof(T));
  }
  read_position = position + sizeof(T);
  return value;
}

signed char serialize_binary_buf::read_int8() const { return read_fixed<signed char>(); }
short serialize_binary_buf::read_int16() const { return read_fixed<short>(); }
int serialize_binary_buf::read_int32() const { return read_fixed<int>(); }
long serialize_binary_buf::read_int64() const { return read_fixed<long>(); }
unsigned char serialize_binary_buf::read_uint8() const { return read_fixed<unsigned char>(); }
unsigned short serialize_binary_buf::read_uint16() const { return read_fixed<unsigned short>(); }
unsigned int serialize_binary_buf::read_uint32() const { return read_fixed<unsigned int>(); }
unsigned long serialize_binary_buf::read_uint64() const { return read_fixed<unsigned long>(); }
float serialize_binary_buf::read_float() const { return read_fixed<float>(); }
double serialize_binary_buf::read_double() const { return read_fixed<double>(); }

unsigned long serialize_binary_buf::read_length() const { return read_fixed<std::uint32_t>(); }

// The steps of reading a fixed-width length and the bytes, in one place.
std::string serialize_binary_buf::read_string() const {
  unsigned long position = read_position;
  unsigned long const size = data.size();
  if (position >= size) return std::string();
  if (size - position < 4) {  // a cut length: the reader ends
    read_position = position + 4;
    return std::string();
  }
  std::uint32_t length;
  std::memcpy(&length, data.data() + position, 4);
  position += 4;
  unsigned long const remaining = size - position;
  unsigned long const count = length < remaining ? length : remaining;
  read_position = position + count;
  return std::string(data.data() + position, count);
}

serialize_binary_buf* serialize_binary_buf::read_buffer() const {
  unsigned long const length = read_length();
  // substr raises std::out_of_range for a position beyond the content.
  std::string bytes = read_position == npos ? data.substr(read_position) : data.substr(read_position, length);
  read_position += bytes.size();
  return new serialize_binary_buf(bytes);
}

bool serialize_binary_buf::at_end() const { return read_position == npos || read_position >= data.size(); }
void serialize_binary_buf::reset_read() const { read_position = 0; }
serialize_binary_buf* serialize_binary_buf::create() const { return new serialize_binary_buf(); }
serialize_binary_buf* serialize_binary_buf::clone() const { return new serialize_binary_buf(*this); }

}  // namespace serialization
}  // namespace VEXA_2_10
