// The variant handle: which value object each constructor makes, sharing and
// counts, nil, and the handle's own reading rules.
#include "vexa/types/variant.hpp"

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>
#include <vector>

namespace {

using namespace vexa;
using types::variant;

std::uint32_t count_of(variant const& v) { return v.value_object()->reference_count(); }

TEST(variant_construction, each_constructor_holds_its_row_type) {
  unsigned short const text16[] = {'h', 'i', 0};
  struct row { variant v; std::type_info const& expected; };
  std::vector<row> const rows = {
      {variant(true), typeid(bool)},  {variant(static_cast<signed char>(-5)), typeid(signed char)},
      {variant(7), typeid(int)},      {variant(static_cast<unsigned char>(5)), typeid(unsigned char)},
      {variant(static_cast<short>(-6)), typeid(short)},
      {variant(static_cast<unsigned short>(6)), typeid(unsigned short)},
      {variant(7u), typeid(unsigned int)},    {variant(7L), typeid(long)},
      {variant(7UL), typeid(unsigned long)},  {variant(1.5f), typeid(float)},
      {variant(1.5), typeid(double)},         {variant(1.5L), typeid(long double)},
      {variant(std::string("a")), typeid(std::string)},
      {variant(std::wstring(L"a")), typeid(std::wstring)},
      {variant(strings::ustring8("a")), typeid(strings::ustring8)},
      {variant(strings::ustring16(text16)), typeid(strings::ustring16)},
      {variant(strings::ustring32(L"a")), typeid(strings::ustring32)},
      // The pointer forms make the library's own string types.
      {variant("a"), typeid(strings::ustring8)},  {variant(text16), typeid(strings::ustring16)},
      {variant(L"a"), typeid(strings::ustring32)},
      {variant(), typeid(types::nil_t)},          {variant(types::nil), typeid(types::nil_t)},
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_TRUE(rows[i].v.type() == rows[i].expected)
        << "row " << i << ": holds " << rows[i].v.type().name() << ", expected " << rows[i].expected.name();
    EXPECT_TRUE(rows[i].v.value_object()->owned()) << "row " << i;
  }
  EXPECT_EQ(variant(static_cast<char const*>(nullptr)).as_string(), "");
}

TEST(variant_sharing, copies_share_one_counted_value_object) {
  variant a("text");
  EXPECT_EQ(count_of(a), 1u);
  {
    variant b(a);
    EXPECT_EQ(b.value_object(), a.value_object());
    EXPECT_EQ(count_of(a), 2u);
  }
  EXPECT_EQ(count_of(a), 1u);

  variant c(5);
  variant const keep_c = c;  // watches c's first value object
  c = a;
  EXPECT_EQ(c.value_object(), a.value_object());
  EXPECT_EQ(count_of(a), 2u);
  EXPECT_EQ(count_of(keep_c), 1u);

  variant& self = c;
  c = self;  // self-assignment changes nothing
  EXPECT_EQ(count_of(a), 2u);

  c = types::nil;  // a fresh nil value; the shared one loses a holder
  EXPECT_TRUE(c == types::nil);
  EXPECT_EQ(count_of(a), 1u);
  EXPECT_EQ(a.as_string(), "text");  // the last holder of the replaced object deletes it (asan watches)
}

TEST(variant_sharing, clone_is_private_and_unowned_objects_survive) {
  variant a(42);
  variant copy(a.value_object()->clone());
  EXPECT_NE(copy.value_object(), a.value_object());
  EXPECT_EQ(count_of(copy), 1u);
  EXPECT_EQ(copy.as_int(), 42);

  types::variant_value_t<int> outside(7);  // not owned: no variant deletes it
  {
    variant held(&outside);
    variant second = held;
    EXPECT_EQ(outside.reference_count(), 2u);
  }
  EXPECT_EQ(outside.reference_count(), 0u);
}

TEST(variant_nil, nil_compares_equal_and_reads_as_empty_text) {
  for (variant const& v : {variant(), variant(types::nil), variant(types::nil_t())}) {
    EXPECT_TRUE(v == types::nil);
    EXPECT_FALSE(v != types::nil);
    EXPECT_EQ(v.as_int(), 0);
    EXPECT_FALSE(v.as_bool());
    EXPECT_TRUE(v.as_string().empty() && v.as_ustring().empty() && v.as_utf8().empty());
    EXPECT_TRUE(v.as_wstring().empty() && v.as_utf16().empty() && v.as_utf32().empty());
    EXPECT_EQ(v.as_ushort(), 0);
    // The value object itself answers "0".
    EXPECT_EQ(v.value_object()->as_string(), "0");
    EXPECT_EQ(v.value_object()->as_wstring(), L"0");
  }
  EXPECT_TRUE(variant(0) != types::nil && variant("") != types::nil);
}

}  // namespace
