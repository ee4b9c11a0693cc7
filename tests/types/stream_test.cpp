// Streaming variants, and the general operators for enumerations and for
// types without a stream operator.
#include "vexa/types/stream.hpp"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <typeinfo>
#include <vector>

#include "vexa/types/variant.hpp"

namespace {

using namespace vexa;
using types::variant;

enum class small_enum : signed char { minus = -1, two = 2 };
enum plain_enum { plain_seven = 7 };
struct opaque {};
struct printable {};
std::ostream& operator<<(std::ostream& os, printable const&) { return os << "printable"; }

template <class T>
std::string streamed(T const& value, std::ios_base& (*mode)(std::ios_base&) = std::dec) {
  using types::operator<<;
  std::ostringstream os;
  os << mode << value;
  return os.str();
}

TEST(variant_stream, each_held_type_writes_through_its_value_object) {
  unsigned short const text16[] = {'h', 0xE9, 0};
  struct row { variant v; char const* expected; };
  std::vector<row> const rows = {
      {variant(true), "1"},   {variant(static_cast<signed char>(65)), "65"}, {variant(-12), "-12"},
      {variant("text"), "text"}, {variant(static_cast<unsigned char>(66)), "66"}, {variant(), "0"},
      {variant(1.0 / 3.0), "0.333333"}, {variant(text16), "h\xC3\xA9"}, {variant(L"h\u00E9"), "h\xC3\xA9"},
  };
  for (row const& r : rows) EXPECT_EQ(streamed(r.v), r.expected) << r.v.type().name();
  EXPECT_EQ(streamed(variant(true), std::boolalpha), "true");
}

TEST(variant_stream, wide_string_prints_its_type_and_address) {
  variant v(std::wstring(L"hidden"));
  auto const* held = dynamic_cast<types::variant_value_t<std::wstring> const*>(v.value_object());
  ASSERT_NE(held, nullptr);
  std::ostringstream address;
  address << static_cast<void const*>(&held->value);
  EXPECT_EQ(streamed(v), std::string("< ") + typeid(std::wstring).name() + " instance at " + address.str() + " >");
}

TEST(general_stream, enumerations_and_opaque_types) {
  std::string const name = typeid(small_enum).name();
  EXPECT_EQ(streamed(small_enum::minus), "< " + name + " value of -1 >");
  EXPECT_EQ(streamed(small_enum::minus, std::hex), "< " + name + " value of ff >");
  EXPECT_EQ(streamed(small_enum::two, std::oct), "< " + name + " value of 2 >");
  EXPECT_EQ(streamed(plain_seven), std::string("< ") + typeid(plain_enum).name() + " value of 7 >");

  opaque o;
  std::ostringstream address;
  address << static_cast<void const*>(&o);
  EXPECT_EQ(streamed(o), std::string("< ") + typeid(opaque).name() + " instance at " + address.str() + " >");
  // Types that already have a stream operator keep it.
  EXPECT_EQ(streamed(printable()), "printable");
  EXPECT_EQ(streamed(std::string("s")) + streamed(42), "s42");
}

}  // namespace
