// The binary buffer: exact byte layouts, round trips, and cut or crafted
// content read without going past its end.
#include "vexa/serialization/serialize_binary_buf.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "serialization/bytes.hpp"
#include "vexa/memory/pointers/rc_pointer.hpp"

namespace {

using vexa::serialization::serialize_binary_buf;
using vexa::serialization::serialize_buffer;
using serialization_test::hex;

std::string bytes(std::initializer_list<int> values) {
  std::string out;
  for (int v : values) out += static_cast<char>(v);
  return out;
}

TEST(serialize_binary_buf, each_append_writes_its_fixed_width_bytes) {
  struct row {
    char const* what;
    std::function<void(serialize_buffer&)> append;
    std::string expected;
  };
  std::vector<row> const rows = {
      {"int8 -2", [](serialize_buffer& b) { b.append_int8(-2); }, bytes({0xFE})},
      {"uint8 200", [](serialize_buffer& b) { b.append_uint8(200); }, bytes({0xC8})},
      {"int16 -2", [](serialize_buffer& b) { b.append_int16(-2); }, bytes({0xFE, 0xFF})},
      {"uint16 0x1234", [](serialize_buffer& b) { b.append_uint16(0x1234); }, bytes({0x34, 0x12})},
      {"int32 -1", [](serialize_buffer& b) { b.append_int32(-1); }, bytes({0xFF, 0xFF, 0xFF, 0xFF})},
      {"uint32 1", [](serialize_buffer& b) { b.append_uint32(1u); }, bytes({1, 0, 0, 0})},
      {"int64 -256", [](serialize_buffer& b) { b.append_int64(-256L); },
       bytes({0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF})},
      {"uint64 0x0102030405060708", [](serialize_buffer& b) { b.append_uint64(0x0102030405060708UL); },
       bytes({8, 7, 6, 5, 4, 3, 2, 1})},
      {"float 1.0, precision ignored", [](serialize_buffer& b) { b.append_float(1.0f, 2); },
       bytes({0, 0, 0x80, 0x3F})},
      {"double 1.0, precision ignored", [](serialize_buffer& b) { b.append_double(1.0, 5); },
       bytes({0, 0, 0, 0, 0, 0, 0xF0, 0x3F})},
      {"string ab", [](serialize_buffer& b) { b.append_string("ab"); }, bytes({2, 0, 0, 0, 'a', 'b'})},
      {"empty string", [](serialize_buffer& b) { b.append_string(""); }, bytes({0, 0, 0, 0})},
      {"buffer holding uint16 7",
       [](serialize_buffer& b) {
         serialize_binary_buf inner;
         inner.append_uint16(7);
         b.append_buffer(inner);
       },
       bytes({2, 0, 0, 0, 7, 0})},
  };
  for (row const& r : rows) {
    serialize_binary_buf buf;
    r.append(buf);
    EXPECT_EQ(hex(buf.as_str()), hex(r.expected)) << r.what;
  }
}

TEST(serialize_binary_buf, values_read_back_in_the_order_they_were_appended) {
  serialize_binary_buf buf;
  std::string const with_zeros("a\0\x01z", 4);
  EXPECT_TRUE(buf.at_end());
  EXPECT_EQ(buf.read_int32(), 0);
  buf.append_int8(-128);
  buf.append_int16(-32768);
  buf.append_int32(std::numeric_limits<int>::min());
  buf.append_int64(std::numeric_limits<long>::min());
  buf.append_uint8(255);
  buf.append_uint16(65535);
  buf.append_uint32(4294967295u);
  buf.append_uint64(~0UL);
  buf.append_float(-0.25f, 0);
  buf.append_double(std::nan(""), 0);
  buf.append_string(with_zeros);
  buf.append_string("");
  EXPECT_EQ(buf.as_str().size(), 1u + 2 + 4 + 8 + 1 + 2 + 4 + 8 + 4 + 8 + 8 + 4);

  buf.reset_read();
  EXPECT_EQ(buf.read_int8(), -128);
  EXPECT_EQ(buf.read_int16(), -32768);
  EXPECT_EQ(buf.read_int32(), std::numeric_limits<int>::min());
  EXPECT_EQ(buf.read_int64(), std::numeric_limits<long>::min());
  EXPECT_EQ(buf.read_uint8(), 255);
  EXPECT_EQ(buf.read_uint16(), 65535);
  EXPECT_EQ(buf.read_uint32(), 4294967295u);
  EXPECT_EQ(buf.read_uint64(), ~0UL);
  EXPECT_EQ(buf.read_float(), -0.25f);
  EXPECT_TRUE(std::isnan(buf.read_double()));
  EXPECT_EQ(hex(buf.read_string()), hex(with_zeros));
  EXPECT_FALSE(buf.at_end());  // the empty string's length is still ahead
  EXPECT_EQ(buf.read_string(), "");
  EXPECT_TRUE(buf.at_end());
  EXPECT_EQ(buf.read_uint64(), 0u);
  EXPECT_EQ(buf.read_string(), "");
}

TEST(serialize_binary_buf, assign_replaces_the_content_and_keeps_the_read_position) {
  serialize_binary_buf buf(bytes({1, 0, 2, 0}));
  EXPECT_EQ(buf.read_uint16(), 1);
  buf.assign(bytes({5, 0, 6, 0, 7, 0}));
  EXPECT_EQ(buf.read_uint16(), 6) << "reading goes on at byte 2";
  buf.assign(buf.as_str().data() + 2, 2);  // bytes from its own content
  EXPECT_EQ(hex(buf.as_str()), "06 00");
  buf.assign(static_cast<serialize_buffer const&>(buf));
  EXPECT_EQ(hex(buf.as_str()), "06 00");
  buf.assign(nullptr, 3);
  EXPECT_EQ(buf.as_str(), "");
  buf.assign("xyz", -1);
  EXPECT_EQ(buf.as_str(), "");

  serialize_binary_buf const from_base(static_cast<serialize_buffer const&>(serialize_binary_buf(bytes({9}))));
  EXPECT_EQ(from_base.read_uint8(), 9);
}

TEST(serialize_binary_buf, nested_buffers_come_back_as_new_owned_buffers) {
  serialize_binary_buf inner;
  inner.append_int32(42);
  inner.append_string("in");
  serialize_binary_buf outer;
  outer.append_buffer(inner);
  outer.append_buffer(outer);  // its own content as it was: the first block
  outer.append_uint8(3);

  std::unique_ptr<serialize_binary_buf> first(outer.read_buffer());
  EXPECT_EQ(first->read_int32(), 42);
  EXPECT_EQ(first->read_string(), "in");
  std::unique_ptr<serialize_binary_buf> second(outer.read_buffer());
  EXPECT_EQ(hex(second->as_str()), hex(std::string(bytes({10, 0, 0, 0})) + inner.as_str()));
  EXPECT_EQ(outer.read_uint8(), 3);
  std::unique_ptr<serialize_binary_buf> past(outer.read_buffer());
  EXPECT_EQ(past->as_str(), "") << "at the very end: an empty buffer";
}

TEST(serialize_binary_buf, create_clone_and_counting) {
  serialize_binary_buf buf(bytes({1, 2, 3}));
  EXPECT_EQ(buf.read_uint8(), 1);
  std::unique_ptr<serialize_buffer> fresh(static_cast<serialize_buffer const&>(buf).create());
  std::unique_ptr<serialize_buffer> copy(static_cast<serialize_buffer const&>(buf).clone());
  EXPECT_NE(dynamic_cast<serialize_binary_buf*>(fresh.get()), nullptr);
  EXPECT_EQ(fresh->as_str(), "");
  EXPECT_EQ(hex(copy->as_str()), "01 02 03");
  EXPECT_EQ(copy->read_uint8(), 2) << "a clone keeps the read position";
  EXPECT_EQ(copy->reference_count(), 0u);
  EXPECT_FALSE(copy->owned());

  auto* counted = new serialize_binary_buf(bytes({4}));
  counted->set_owned(true);
  {
    vexa::memory::pointers::rc_pointer<serialize_buffer> p(counted);
    vexa::memory::pointers::rc_pointer<serialize_buffer> q(p);
    EXPECT_EQ(counted->reference_count(), 2u);
    EXPECT_EQ(q->read_uint8(), 4);
  }  // deleted here: the leak checker would notice otherwise
}

// Cut content: what is missing reads as zero, nothing past the content is
// read, and the reader ends up at its end.
TEST(serialize_binary_buf, cut_content_reads_zero_bytes_for_what_is_missing) {
  serialize_binary_buf buf(bytes({0x34, 0x12, 0x56}));
  EXPECT_EQ(buf.read_uint16(), 0x1234);
  EXPECT_EQ(buf.read_uint32(), 0x56u) << "one byte left, three missing";
  EXPECT_TRUE(buf.at_end());
  EXPECT_EQ(buf.read_uint32(), 0u);

  serialize_binary_buf text(std::string(bytes({9, 0, 0, 0})) + "abc");
  EXPECT_EQ(text.read_string(), "abc") << "a declared length above what remains takes what remains";
  EXPECT_TRUE(text.at_end());

  serialize_binary_buf lonely_length(bytes({3, 0, 0, 0}));
  EXPECT_EQ(lonely_length.read_string(), "");
  serialize_binary_buf cut_length(bytes({3, 0}));
  EXPECT_EQ(cut_length.read_string(), "");
  EXPECT_TRUE(cut_length.at_end());

  serialize_binary_buf cut_block(bytes({3, 0}));
  EXPECT_THROW(delete cut_block.read_buffer(), std::out_of_range)
      << "the block would start two bytes past the content";
  serialize_binary_buf long_block(std::string(bytes({9, 0, 0, 0})) + "abc");
  std::unique_ptr<serialize_binary_buf> rest(long_block.read_buffer());
  EXPECT_EQ(rest->as_str(), "abc");
}

// Random content read with random types: every read stays inside the
// content (the address checker watches) and each step moves on or ends.
TEST(serialize_binary_buf, random_content_is_read_to_its_end) {
  std::mt19937 rng(7);
  for (int round = 0; round < 500; ++round) {
    std::string content(rng() % 40, '\0');
    for (char& c : content) c = static_cast<char>(rng() % 8 == 0 ? rng() % 256 : rng() % 4);
    serialize_binary_buf buf(content);
    int steps = 0;
    try {
      while (!buf.at_end()) {
        ASSERT_LT(++steps, 100) << hex(content);
        switch (rng() % 5) {
          case 0: buf.read_int8(); break;
          case 1: buf.read_uint32(); break;
          case 2: buf.read_double(); break;
          case 3: buf.read_string(); break;
          default: delete buf.read_buffer(); break;
        }
      }
    } catch (std::out_of_range const&) {
      // a block announced past the content
    }
  }
}

}  // namespace
