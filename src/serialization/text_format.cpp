#include "serialization/text_format.hpp"

#include <langinfo.h>

#include <charconv>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

#include "vexa/generic/convert/str_to_x.hpp"
#include "vexa/generic/convert/x_to_str.hpp"

namespace VEXA_2_10 {
namespace serialization {
namespace _private {

namespace convert = generic::convert;
using types::radix_t;

void append_signed(std::string& out, long value) {
  char digits[68];
  unsigned long const n = convert::lltoa_n(value, digits, sizeof digits, 10);
  digits[n] = separator;
  out.append(digits, n + 1);
}

void append_unsigned(std::string& out, unsigned long value) {
  char digits[68];
  unsigned long const n = convert::ulltoa_n(value, digits, sizeof digits, 10);
  digits[n] = separator;
  out.append(digits, n + 1);
}

// glibc's gcvt is sprintf("%.*g", min(precision, 17), value) with the
// precision taken as an int; to_chars in the general form with a precision
// is specified as that same %g, without the locale. The locale's decimal
// point is put back by hand so that strtod reads the text as gcvt meant it.
void append_floating(std::string& out, double value, unsigned int precision) {
  int const asked = static_cast<int>(precision);
  int const digits = asked < 0 ? 6 : (asked > 17 ? 17 : asked);
  char text[64];
  char* const end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, digits).ptr;
  char* const point = static_cast<char*>(std::memchr(text, '.', static_cast<std::size_t>(end - text)));
  char const* const radix = point != nullptr ? nl_langinfo(RADIXCHAR) : ".";
  if (point == nullptr || (radix[0] == '.' && radix[1] == '\0')) {
    *end = separator;
    out.append(text, static_cast<std::size_t>(end - text) + 1);
    return;
  }
  out.append(text, point);
  out.append(radix);
  out.append(point + 1, end);
  out += separator;
}

void append_bytes(std::string& out, char const* bytes, unsigned long count) {
  append_unsigned(out, count);
  out.append(bytes, count);
  out += separator;
}

bool next_item(char const* text, unsigned long size, unsigned long& position, char const*& item,
               unsigned long& length) {
  if (position == npos) return false;
  if (position >= size) {
    item = text + size;
    length = 0;
    position = npos;
    return true;
  }
  item = text + position;
  void const* const sep = std::memchr(item, separator, size - position);
  if (sep == nullptr) {
    length = size - position;
    position = npos;
  } else {
    length = static_cast<unsigned long>(static_cast<char const*>(sep) - item);
    position += length + 1;
  }
  return true;
}

namespace {

// The integer readers: the parsers with radix 0, never raising. An empty
// item is 0 without a call (the signed parsers would take its length 0 as
// "up to a terminating 0", which the content need not have).
template <typename T, T (*parse)(char const*, unsigned long, radix_t::base, bool)>
T read_integer(char const* text, unsigned long size, unsigned long& position) {
  char const* item;
  unsigned long length;
  if (!next_item(text, size, position, item, length) || length == 0) return 0;
  return parse(item, length, radix_t::automatic, false);
}

bool is_digit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

signed char read_int8(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<signed char, convert::str_to_int8>(t, s, p);
}
short read_int16(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<short, convert::str_to_int16>(t, s, p);
}
int read_int32(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<int, convert::str_to_int32>(t, s, p);
}
long read_int64(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<long, convert::str_to_int64>(t, s, p);
}
unsigned char read_uint8(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<unsigned char, convert::str_to_uint8>(t, s, p);
}
unsigned short read_uint16(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<unsigned short, convert::str_to_uint16>(t, s, p);
}
unsigned int read_uint32(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<unsigned int, convert::str_to_uint32>(t, s, p);
}
unsigned long read_uint64(char const* t, unsigned long s, unsigned long& p) {
  return read_integer<unsigned long, convert::str_to_uint64>(t, s, p);
}

// strtod on the item, unchecked. Plain decimal items that from_chars takes
// whole, in range, go the short way: both round correctly, so the value is
// the same. strtod itself cannot run past the item: the separator is no part
// of any number, and the content's own terminating 0 follows the last item.
double read_double(char const* text, unsigned long size, unsigned long& position) {
  char const* item;
  unsigned long length;
  if (!next_item(text, size, position, item, length)) return 0;
  if (length > 0 && (is_digit(item[0]) || (item[0] == '-' && length > 1 && (is_digit(item[1]) || item[1] == '.')))) {
    double value;
    std::from_chars_result const r = std::from_chars(item, item + length, value);
    if (r.ec == std::errc() && r.ptr == item + length) {
      bool const has_point = std::memchr(item, '.', length) != nullptr;
      char const* const radix = has_point ? nl_langinfo(RADIXCHAR) : ".";
      if (radix[0] == '.' && radix[1] == '\0') return value;
    }
  }
  if (length == 0) return 0;
  // The item is copied when it is the content's last byte run and no 0
  // follows it inside the text (a range of a larger text).
  if (item + length == text + size) {
    std::string const copy(item, length);
    return std::strtod(copy.c_str(), nullptr);
  }
  return std::strtod(item, nullptr);
}

void read_block(char const* text, unsigned long size, unsigned long& position, unsigned long& start,
                unsigned long& count) {
  start = 0;
  count = 0;
  if (position == npos) return;
  long const length = read_int32(text, size, position);
  if (position == npos) {
    if (length == 0) return;
    throw std::out_of_range("serialize_text_buf: string starts beyond the content");
  }
  start = position;
  unsigned long const remaining = size - start;
  if (length < 0) {
    count = remaining;
    position = npos;
    return;
  }
  position += static_cast<unsigned long>(length) + 1;
  count = static_cast<unsigned long>(length) < remaining ? static_cast<unsigned long>(length) : remaining;
}

}  // namespace _private
}  // namespace serialization
}  // namespace VEXA_2_10
