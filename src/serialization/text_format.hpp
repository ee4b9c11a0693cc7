// The text format's items, shared by serialize_text_buf and the labeled
// buffer's parser (which reads nested groups in place, as ranges of one text).
//
// A reader is a text of `size` bytes and a position into it; the position
// npos means "at the end", and a position at or past `size` reads as an
// empty last item.
#ifndef VEXA_SRC_SERIALIZATION_TEXT_FORMAT_HPP
#define VEXA_SRC_SERIALIZATION_TEXT_FORMAT_HPP

#include <string>

namespace VEXA_2_10 {
namespace serialization {
namespace _private {

constexpr unsigned long npos = static_cast<unsigned long>(-1);
constexpr char separator = '\x01';

// Appends the decimal digits of `value` and the separator.
void append_signed(std::string& out, long value);
void append_unsigned(std::string& out, unsigned long value);
// Appends what gcvt(value, precision) writes, and the separator.
void append_floating(std::string& out, double value, unsigned int precision);
// Appends length, separator, the bytes, separator.
void append_bytes(std::string& out, char const* bytes, unsigned long count);

// The next item: false when the position is npos (nothing is read);
// otherwise `item`/`length` are the text up to the next separator (or the
// end) and the position moves past that separator (npos when there was none).
bool next_item(char const* text, unsigned long size, unsigned long& position,
               char const*& item, unsigned long& length);

// The numeric readers: 0 when the position is npos.
signed char read_int8(char const* text, unsigned long size, unsigned long& position);
short read_int16(char const* text, unsigned long size, unsigned long& position);
int read_int32(char const* text, unsigned long size, unsigned long& position);
long read_int64(char const* text, unsigned long size, unsigned long& position);
unsigned char read_uint8(char const* text, unsigned long size, unsigned long& position);
unsigned short read_uint16(char const* text, unsigned long size, unsigned long& position);
unsigned int read_uint32(char const* text, unsigned long size, unsigned long& position);
unsigned long read_uint64(char const* text, unsigned long size, unsigned long& position);
double read_double(char const* text, unsigned long size, unsigned long& position);

// A length-prefixed block: sets `start`/`count` to its bytes inside the text
// (count 0 for an empty block) and moves the position past it. Raises
// std::out_of_range where the block would start beyond the text.
void read_block(char const* text, unsigned long size, unsigned long& position,
                unsigned long& start, unsigned long& count);

}  // namespace _private
}  // namespace serialization
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_SERIALIZATION_TEXT_FORMAT_HPP
