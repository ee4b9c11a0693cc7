#include "vexa/generic/convert/x_to_str.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdio>
#include <random>
#include <string>
#include <tuple>

namespace convert = vexa::generic::convert;

namespace {

constexpr int units = 66;  // what the unbounded writers may need
constexpr int canary = 6;  // guard units after them
constexpr long marker = 0x5A;

// A writer's output area: 66 units and canaries, all set to a marker first.
// text() is the text before the terminator, or all units in hex after
// "overrun:" when no terminator comes within 66 units or anything after it
// was touched.
template <typename Ch>
struct buffer {
  Ch unit[units + canary];
  buffer() { std::fill(unit, unit + units + canary, static_cast<Ch>(marker)); }
  std::string text() const {
    int const end = static_cast<int>(std::find(unit, unit + units, Ch(0)) - unit);
    if (end < units &&
        std::count(unit + end + 1, unit + units + canary, Ch(marker)) == units + canary - end - 1) {
      return std::string(unit, unit + end);
    }
    std::string s = "overrun:";
    char b[16];
    for (Ch u : unit) {
      std::snprintf(b, sizeof b, " %lx", static_cast<unsigned long>(u) & 0xFFFFFFFFul);
      s += b;
    }
    return s;
  }
};

template <typename Ch>
class XToStr : public ::testing::Test {};
using unit_types = ::testing::Types<char, unsigned short, wchar_t>;
TYPED_TEST_SUITE(XToStr, unit_types);

enum writer { ltoa, ultoa, lltoa, ulltoa };

// What a writer puts down for `value`, beside what std::to_chars writes
// (lower case too; its radix kept within 2..36).
template <typename Ch, typename V>
std::pair<std::string, std::string> write(V v, void (*writer)(V, Ch*, unsigned int),
                                          unsigned int radix) {
  buffer<Ch> b;
  writer(v, b.unit, radix);
  char t[80];
  int const r = radix < 2 ? 2 : radix > 36 ? 36 : static_cast<int>(radix);
  return {b.text(), std::string(t, std::to_chars(t, t + 80, v, r).ptr)};
}
template <typename Ch>
std::pair<std::string, std::string> write(writer w, long value, unsigned int radix) {
  switch (w) {
    case ltoa:
      return write<Ch>(static_cast<int>(value), convert::ltoa, radix);
    case ultoa:
      return write<Ch>(static_cast<unsigned int>(value), convert::ultoa, radix);
    case lltoa:
      return write<Ch>(value, convert::lltoa, radix);
    default:
      return write<Ch>(static_cast<unsigned long>(value), convert::ulltoa, radix);
  }
}

TYPED_TEST(XToStr, KnownTexts) {
  std::tuple<writer, long, unsigned int, char const*> const cases[] = {
      {ltoa, INT_MIN, 10, "-2147483648"},
      {ultoa, 255, 16, "ff"},
      {lltoa, 0, 16, "0"},
      {lltoa, LONG_MIN, 2, "-1000000000000000000000000000000000000000000000000000000000000000"},
      {ulltoa, -1, 36, "3w5e11264sgsf"},
      {ltoa, 5, 0, ""},  // no digits in radices 0 and 1: the empty text
      {lltoa, LONG_MIN, 1, ""},
      {ultoa, 37 * 37 - 1, 37, "{{"},  // past 36 the digits run on beyond 'z'
  };
  for (auto const& [w, value, radix, expected] : cases) {
    EXPECT_EQ(write<TypeParam>(w, value, radix).first, expected) << value << " " << radix;
  }
  buffer<TypeParam> a, b;  // the template instances are the same writers
  convert::xtostr<long, TypeParam>(LONG_MIN, a.unit, 16);
  convert::uxtostr<unsigned int, TypeParam>(0xBEEFu, b.unit, 16);
  EXPECT_EQ(a.text() + " " + b.text(), "-8000000000000000 beef");
}

// Random values of every magnitude in every radix, all four writers.
TYPED_TEST(XToStr, AgreesWithToChars) {
  std::mt19937_64 rng(42);
  for (int round = 0; round < 20000; ++round) {
    long const value = static_cast<long>(rng() >> (rng() % 64)) * (rng() % 2 ? 1 : -1);
    unsigned int const radix = 2 + rng() % 35;
    writer const w = static_cast<writer>(round % 4);
    auto const [written, expected] = write<TypeParam>(w, value, radix);
    ASSERT_EQ(written, expected) << "writer " << w << " value " << value << " radix " << radix;
  }
}

// Nothing after the terminator is touched (buffer::text checks it).
TYPED_TEST(XToStr, BoundedWritersStayWithinTheSize) {
  buffer<TypeParam> fits, one_short, none, empty;
  EXPECT_EQ(convert::lltoa_n(LONG_MIN, fits.unit, 21, 10), 20u);      // text and 0 fit exactly
  EXPECT_EQ(convert::lltoa_n(LONG_MIN, one_short.unit, 20, 10), 0u);  // the empty text
  EXPECT_EQ(convert::ultoa_n(5u, empty.unit, 9, 0) + convert::ltoa_n(5, none.unit, 0, 10), 0u);
  EXPECT_EQ(fits.text() + "|" + one_short.text() + "|" + empty.text(), "-9223372036854775808||");
  EXPECT_EQ(none.unit[0], static_cast<TypeParam>(marker));
  EXPECT_EQ(convert::ulltoa_n(~0ul, fits.unit, 65, 2), 64u);  // 64 binary digits and the 0
  EXPECT_EQ(fits.text(), std::string(64, '1'));
}

}  // namespace
