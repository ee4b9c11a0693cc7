// The binary buffer: exact byte layouts, and cut or crafted content read
// without going past its end.
#include "vexa/serialization/serialize_binary_buf.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "serialization/bytes.hpp"

namespace {

using vexa::serialization::serialize_binary_buf;
using vexa::serialization::serialize_buffer;
using serialization_test::hex;

TEST(serialize_binary_buf, each_append_writes_its_fixed_width_bytes) {
  struct row {
    std::function<void(serialize_buffer&)> append;
    char const* expected;
  };
  std::vector<row> const rows = {
      {[](serialize_buffer& b) { b.append_int8(-2); }, "FE"},
      {[](serialize_buffer& b) { b.append_uint8(200); }, "C8"},
      {[](serialize_buffer& b) { b.append_int16(-2); }, "FE FF"},
      {[](serialize_buffer& b) { b.append_uint16(0x1234); }, "34 12"},
      {[](serialize_buffer& b) { b.append_int32(-1); }, "FF FF FF FF"},
      {[](serialize_buffer& b) { b.append_uint32(1u); }, "01 00 00 00"},
      {[](serialize_buffer& b) { b.append_int64(-256L); }, "00 FF FF FF FF FF FF FF"},
      {[](serialize_buffer& b) { b.append_uint64(0x0102030405060708UL); }, "08 07 06 05 04 03 02 01"},
      {[](serialize_buffer& b) { b.append_float(1.0f, 2); }, "00 00 80 3F"},
      {[](serialize_buffer& b) { b.append_double(1.0, 5); }, "00 00 00 00 00 00 F0 3F"},
      {[](serialize_buffer& b) { b.append_string("ab"); }, "02 00 00 00 61 62"},
      {[](serialize_buffer& b) { b.append_string(""); }, "00 00 00 00"},
      {[](serialize_buffer& b) { b.append_buffer(serialize_binary_buf("\x07")); }, "01 00 00 00 07"},
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    serialize_binary_buf buf;
    rows[i].append(buf);
    EXPECT_EQ(hex(buf.as_str()), rows[i].expected) << "row " << i;
  }
}

// Cut content: what is missing reads as zero, nothing past the content is
// read, and the reader ends up at its end.
TEST(serialize_binary_buf, cut_content_reads_zero_bytes_for_what_is_missing) {
  serialize_binary_buf buf(std::string("\x34\x12\x56"));
  EXPECT_EQ(buf.read_uint16(), 0x1234);
  EXPECT_EQ(buf.read_uint32(), 0x56u) << "one byte left, three missing";
  EXPECT_TRUE(buf.at_end());

  std::string const nine("\x09\0\0\0", 4);
  serialize_binary_buf text(nine + "abc");
  EXPECT_EQ(text.read_string(), "abc") << "a declared length above what remains takes what remains";
  EXPECT_TRUE(text.at_end());
  serialize_binary_buf lonely_length(nine);
  EXPECT_EQ(lonely_length.read_string(), "");
  serialize_binary_buf cut_length(std::string("\x03\0", 2));
  EXPECT_EQ(cut_length.read_string(), "");
  EXPECT_TRUE(cut_length.at_end());

  serialize_binary_buf cut_block(std::string("\x03\0", 2));
  EXPECT_THROW(delete cut_block.read_buffer(), std::out_of_range) << "the block would start past the content";
  serialize_binary_buf long_block(nine + "abc");
  EXPECT_EQ(std::unique_ptr<serialize_binary_buf>(long_block.read_buffer())->as_str(), "abc");
}

}  // namespace
