#include "vexa/generic/convert/x_to_str.hpp"

#include <gtest/gtest.h>

#include <charconv>
#include <climits>
#include <cstdio>
#include <random>
#include <string>

namespace convert = vexa::generic::convert;

namespace {

constexpr int units = 66;   // what the unbounded writers may use
constexpr int canary = 6;   // guard units after them
constexpr long marker = 0x5A;

// A writer's output area: 66 units and canaries, all set to a marker first.
template <typename Ch>
struct buffer {
  Ch unit[units + canary];
  buffer() { std::fill(unit, unit + units + canary, static_cast<Ch>(marker)); }

  // The text up to the terminator, as hex units for readable mismatches.
  std::string hex() const {
    std::string s;
    for (int i = 0; i < units + canary; ++i) {
      char b[16];
      std::snprintf(b, sizeof b, "%lx ", static_cast<unsigned long>(unit[i]) & 0xFFFFFFFFul);
      s += b;
      if (unit[i] == 0) break;
    }
    return s;
  }
  // The text, if it is terminated within the 66 units and nothing after the
  // terminator was touched; otherwise "<overrun>".
  std::string text() const {
    std::string s;
    int i = 0;
    for (; i < units && unit[i] != 0; ++i) s += static_cast<char>(unit[i]);
    if (i == units) return "<overrun>";
    for (++i; i < units + canary; ++i) {
      if (unit[i] != static_cast<Ch>(marker)) return "<overrun>";
    }
    return s;
  }
};

template <typename Ch>
class XToStr : public ::testing::Test {};
using unit_types = ::testing::Types<char, unsigned short, wchar_t>;
TYPED_TEST_SUITE(XToStr, unit_types);

// The writers under test, by value type.
enum class writer { ltoa, ultoa, lltoa, ulltoa };

template <typename Ch>
std::string write(writer w, long value, unsigned int radix, buffer<Ch>& b) {
  switch (w) {
    case writer::ltoa: convert::ltoa(static_cast<int>(value), b.unit, radix); break;
    case writer::ultoa: convert::ultoa(static_cast<unsigned int>(value), b.unit, radix); break;
    case writer::lltoa: convert::lltoa(value, b.unit, radix); break;
    case writer::ulltoa: convert::ulltoa(static_cast<unsigned long>(value), b.unit, radix); break;
  }
  return b.text();
}

struct digits_case {
  writer w;
  long value;
  unsigned int radix;
  char const* expected;
};

digits_case const digits_cases[] = {
    {writer::ltoa, INT_MIN, 10, "-2147483648"},
    {writer::ltoa, INT_MAX, 10, "2147483647"},
    {writer::ltoa, INT_MIN, 2, "-10000000000000000000000000000000"},
    {writer::ltoa, -1, 16, "-1"},
    {writer::ltoa, 0, 10, "0"},
    {writer::ltoa, -35, 36, "-z"},
    {writer::ultoa, 255, 16, "ff"},
    {writer::ultoa, 0, 2, "0"},
    {writer::ultoa, UINT_MAX, 10, "4294967295"},
    {writer::ultoa, UINT_MAX, 8, "37777777777"},
    {writer::lltoa, 0, 16, "0"},
    {writer::lltoa, LONG_MIN, 10, "-9223372036854775808"},
    {writer::lltoa, LONG_MIN, 16, "-8000000000000000"},
    {writer::lltoa, LONG_MIN, 2,
     "-1000000000000000000000000000000000000000000000000000000000000000"},
    {writer::lltoa, LONG_MAX, 36, "1y2p0ij32e8e7"},
    {writer::lltoa, 99, 10, "99"},
    {writer::lltoa, 100, 10, "100"},
    {writer::lltoa, -256, 16, "-100"},
    {writer::ulltoa, -1, 10, "18446744073709551615"},
    {writer::ulltoa, -1, 36, "3w5e11264sgsf"},
    {writer::ulltoa, -1, 2, "1111111111111111111111111111111111111111111111111111111111111111"},
    {writer::ulltoa, 1, 3, "1"},
    // No digits in radices 0 and 1: the empty text.
    {writer::ltoa, 5, 0, ""},
    {writer::ulltoa, 5, 1, ""},
    {writer::lltoa, LONG_MIN, 1, ""},
    // Past 36 the digit formula runs on beyond 'z'.
    {writer::ultoa, 36, 37, "{"},
    {writer::ultoa, 37 * 37 - 1, 37, "{{"},
};

TYPED_TEST(XToStr, KnownTexts) {
  for (digits_case const& c : digits_cases) {
    buffer<TypeParam> b;
    EXPECT_EQ(write(c.w, c.value, c.radix, b), c.expected)
        << "value " << c.value << " radix " << c.radix << " units " << b.hex();
  }
}

// Random values in every radix against std::to_chars (which writes lower
// case too); the output must end exactly at its terminator.
TYPED_TEST(XToStr, AgreesWithToChars) {
  std::mt19937_64 rng(42);
  for (int round = 0; round < 20000; ++round) {
    unsigned long bits = rng();
    bits >>= rng() % 64;  // all magnitudes, small ones too
    long const value = static_cast<long>(bits) * (rng() % 2 ? 1 : -1);
    unsigned int const radix = 2 + rng() % 35;
    char expected[80];
    writer const w = static_cast<writer>(round % 4);
    char* end = nullptr;
    switch (w) {
      case writer::ltoa: end = std::to_chars(expected, expected + 80, static_cast<int>(value), radix).ptr; break;
      case writer::ultoa: end = std::to_chars(expected, expected + 80, static_cast<unsigned int>(value), radix).ptr; break;
      case writer::lltoa: end = std::to_chars(expected, expected + 80, value, radix).ptr; break;
      case writer::ulltoa: end = std::to_chars(expected, expected + 80, static_cast<unsigned long>(value), radix).ptr; break;
    }
    *end = 0;
    buffer<TypeParam> b;
    ASSERT_EQ(write(w, value, radix, b), expected)
        << "writer " << static_cast<int>(w) << " value " << value << " radix " << radix
        << " units " << b.hex();
  }
}

// The templates are the same writers under their own names.
TYPED_TEST(XToStr, TemplateInstances) {
  using Ch = TypeParam;
  buffer<Ch> a, b, c, d;
  convert::xtostr<int, Ch>(-7, a.unit, 2);
  convert::xtostr<long, Ch>(LONG_MIN, b.unit, 10);
  convert::uxtostr<unsigned int, Ch>(0xBEEFu, c.unit, 16);
  convert::uxtostr<unsigned long, Ch>(~0ul, d.unit, 8);
  EXPECT_EQ(a.text(), "-111");
  EXPECT_EQ(b.text(), "-9223372036854775808");
  EXPECT_EQ(c.text(), "beef");
  EXPECT_EQ(d.text(), "1777777777777777777777");
}

TYPED_TEST(XToStr, BoundedWritersNeverExceedTheSize) {
  using Ch = TypeParam;
  struct {
    unsigned long size;
    unsigned int radix;
    unsigned long written;
    char const* text;
  } const cases[] = {
      {21, 10, 20, "-9223372036854775808"},  // text and 0 fit exactly
      {20, 10, 0, ""},                       // one unit short: the empty text
      {1, 10, 0, ""},
      {66, 2, 65, "-1000000000000000000000000000000000000000000000000000000000000000"},
      {30, 0, 0, ""},
  };
  for (auto const& c : cases) {
    buffer<Ch> b;
    EXPECT_EQ(convert::lltoa_n(LONG_MIN, b.unit, c.size, c.radix), c.written) << c.size;
    EXPECT_EQ(b.text(), c.text) << b.hex();
    for (unsigned long i = c.size; i < units + canary; ++i) {
      ASSERT_EQ(b.unit[i], static_cast<Ch>(marker)) << "size " << c.size << " unit " << i;
    }
  }
  buffer<Ch> untouched;
  EXPECT_EQ(convert::ltoa_n(5, untouched.unit, 0, 10), 0u);
  EXPECT_EQ(untouched.unit[0], static_cast<Ch>(marker));
  buffer<Ch> small;
  EXPECT_EQ(convert::ultoa_n(255u, small.unit, 3, 16), 2u);
  EXPECT_EQ(small.text(), "ff");
  EXPECT_EQ(convert::ulltoa_n(~0ul, small.unit, 65, 2), 64u);
  EXPECT_EQ(small.text(), std::string(64, '1'));
}

}  // namespace
