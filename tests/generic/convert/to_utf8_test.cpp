#include "vexa/generic/convert/to_utf8.hpp"

#include <gtest/gtest.h>

namespace convert = vexa::generic::convert;
namespace strings = vexa::strings;

namespace {

TEST(ToUtf8, OneCharacterAndEveryStringType) {
  EXPECT_EQ(convert::to_str('\xFF'), "\xFF");
  EXPECT_EQ(convert::to_str('\0'), std::string(1, '\0'));
  EXPECT_EQ(convert::to_utf8("h\xC3\xA9\xFF\xC0"), "h\xC3\xA9\xFF\xC0");  // bytes unchecked
  EXPECT_EQ(convert::to_utf8(static_cast<char const*>(nullptr)), "");
  EXPECT_EQ(convert::to_utf8(strings::ustring8("a\0b", 3)), strings::ustring8("a\0b", 3));
  char const expected[] = "h\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80";
  EXPECT_EQ(convert::to_utf8(strings::ustring16{0x68, 0xE9, 0x20AC, 0xD83D, 0xDE00}), expected);
  EXPECT_EQ(convert::to_utf8(strings::ustring32{L'h', 0xE9, 0x20AC, 0x1F600}), expected);
  // Malformed input gives what the transforms give.
  EXPECT_EQ(convert::to_utf8(strings::ustring16{0x61, 0xDC00}), "-1");
  EXPECT_EQ(convert::to_utf8(strings::ustring32{0x61, 0xD800}), "-1");
}

}  // namespace
