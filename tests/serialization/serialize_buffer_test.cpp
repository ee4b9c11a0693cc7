// What both formats share: every type read back in the order appended,
// assign keeping the read position, nested buffers, create and clone.
#include "vexa/serialization/serialize_buffer.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>

#include "serialization/bytes.hpp"
#include "vexa/memory/pointers/rc_pointer.hpp"
#include "vexa/serialization/serialize_binary_buf.hpp"
#include "vexa/serialization/serialize_text_buf.hpp"

namespace {

using namespace vexa::serialization;
using serialization_test::hex;

template <typename Buffer>
class serialize_buffer_formats : public ::testing::Test {};
using formats = ::testing::Types<serialize_binary_buf, serialize_text_buf>;
TYPED_TEST_SUITE(serialize_buffer_formats, formats);

TYPED_TEST(serialize_buffer_formats, every_type_reads_back_in_the_order_appended) {
  TypeParam buf;
  serialize_buffer& b = buf;
  EXPECT_TRUE(b.at_end());
  EXPECT_EQ(b.read_int32(), 0);
  std::string const odd_bytes("a\0\x01z", 4);
  b.append_int8(-128);
  b.append_int16(-32768);
  b.append_int32(std::numeric_limits<int>::min());
  b.append_int64(std::numeric_limits<long>::min());
  b.append_uint8(255);
  b.append_uint16(65535);
  b.append_uint32(4294967295u);
  b.append_uint64(~0UL);
  b.append_float(-1.5f, 6);
  b.append_double(1.0 / 3.0, 17);
  b.append_double(-INFINITY, 3);
  b.append_string(odd_bytes);
  b.append_string("");
  b.reset_read();
  EXPECT_EQ(b.read_int8(), -128);
  EXPECT_EQ(b.read_int16(), -32768);
  EXPECT_EQ(b.read_int32(), std::numeric_limits<int>::min());
  EXPECT_EQ(b.read_int64(), std::numeric_limits<long>::min());
  EXPECT_EQ(b.read_uint8(), 255);
  EXPECT_EQ(b.read_uint16(), 65535);
  EXPECT_EQ(b.read_uint32(), 4294967295u);
  EXPECT_EQ(b.read_uint64(), ~0UL);
  EXPECT_EQ(b.read_float(), -1.5f);
  EXPECT_EQ(b.read_double(), 1.0 / 3.0);
  EXPECT_EQ(b.read_double(), -INFINITY);
  EXPECT_EQ(hex(b.read_string()), hex(odd_bytes));
  EXPECT_FALSE(b.at_end()) << "the empty string is still ahead";
  EXPECT_EQ(b.read_string(), "");
  EXPECT_TRUE(b.at_end());
  EXPECT_EQ(b.read_uint64(), 0u);
  EXPECT_EQ(b.read_string(), "");
  EXPECT_TRUE(b.at_end());
}

TYPED_TEST(serialize_buffer_formats, assign_replaces_the_content_and_keeps_the_read_position) {
  TypeParam first, second;
  for (unsigned short v : {1, 2}) first.append_uint16(v);
  for (unsigned short v : {5, 6, 7}) second.append_uint16(v);
  EXPECT_EQ(first.read_uint16(), 1);
  first.assign(second.as_str());
  EXPECT_EQ(first.read_uint16(), 6) << "reading goes on after the first item";
  first.assign(static_cast<serialize_buffer const&>(first));
  EXPECT_EQ(first.as_str(), second.as_str());
  first.assign(first.as_str().data() + 1, 1);  // bytes from its own content
  EXPECT_EQ(first.as_str(), second.as_str().substr(1, 1));
  first.assign(nullptr, 3);
  EXPECT_EQ(first.as_str(), "");
  first.assign("xyz", -1);
  EXPECT_EQ(first.as_str(), "");
  TypeParam const from_base(static_cast<serialize_buffer const&>(second));
  EXPECT_EQ(from_base.read_uint16(), 5);
}

TYPED_TEST(serialize_buffer_formats, nested_buffers_create_clone_and_counting) {
  TypeParam inner, outer;
  inner.append_int32(42);
  inner.append_string("in");
  outer.append_buffer(inner);
  outer.append_buffer(outer);  // its own content as it was: the first block
  outer.append_uint8(3);
  std::unique_ptr<TypeParam> first(outer.read_buffer());
  EXPECT_EQ(first->read_int32(), 42);
  EXPECT_EQ(first->read_string(), "in");
  std::unique_ptr<TypeParam> second(outer.read_buffer());
  EXPECT_EQ(std::unique_ptr<TypeParam>(second->read_buffer())->as_str(), inner.as_str());
  EXPECT_EQ(outer.read_uint8(), 3);
  EXPECT_EQ(std::unique_ptr<TypeParam>(outer.read_buffer())->as_str(), "") << "at the end: an empty buffer";

  outer.reset_read();
  delete outer.read_buffer();
  serialize_buffer const& base = outer;
  std::unique_ptr<serialize_buffer> fresh(base.create()), copy(base.clone());
  EXPECT_NE(dynamic_cast<TypeParam*>(fresh.get()), nullptr);
  EXPECT_TRUE(fresh->at_end());
  EXPECT_EQ(copy->as_str(), outer.as_str());
  EXPECT_EQ(hex(copy->read_string()), hex(outer.read_string())) << "a clone keeps the read position";
  EXPECT_EQ(copy->reference_count(), 0u);
  EXPECT_FALSE(copy->owned());

  auto* counted = new TypeParam(outer.as_str());
  counted->set_owned(true);
  vexa::memory::pointers::rc_pointer<serialize_buffer> p(counted), q(p);
  EXPECT_EQ(counted->reference_count(), 2u);  // deleted with the last pointer (the leak checker watches)
}

// Random bytes, mostly digits, separators and small values, read with random
// types: every read stays inside the content (the address checker watches)
// and every step moves the reader forward or raises, so the loop ends.
TYPED_TEST(serialize_buffer_formats, random_content_is_read_to_its_end) {
  static char const alphabet[] = "\x01\x01\x01\x00\x02-0123456789x. ";
  std::mt19937 rng(5);
  for (int round = 0; round < 2000; ++round) {
    std::string content(rng() % 30, '\0');
    for (char& c : content) c = rng() % 16 == 0 ? static_cast<char>(rng()) : alphabet[rng() % (sizeof alphabet - 1)];
    TypeParam buf(content);
    int steps = 0;
    try {
      while (!buf.at_end()) {
        ASSERT_LT(++steps, 40) << hex(content);
        switch (rng() % 5) {
          case 0: buf.read_int8(); break;
          case 1: buf.read_uint64(); break;
          case 2: buf.read_double(); break;
          case 3: buf.read_string(); break;
          default: delete buf.read_buffer(); break;
        }
      }
    } catch (std::out_of_range const&) {
      // a block announced where the content had already ended
    }
  }
}

}  // namespace
