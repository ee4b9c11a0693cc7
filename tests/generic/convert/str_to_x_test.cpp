#include "vexa/generic/convert/str_to_x.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <memory>
#include <random>
#include <string>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/exceptions/runtime_error.hpp"

namespace convert = vexa::generic::convert;
namespace exceptions = vexa::exceptions;
using radix = vexa::types::radix_t;

namespace {

// The same (ASCII) text in units of Ch.
template <typename Ch>
std::basic_string<Ch> widen(std::string const& s) {
  return std::basic_string<Ch>(s.begin(), s.end());
}

enum class raised { nothing, overflow, underflow, bad_radix };
char const* const messages[] = {"", "Number value is to large", "Number value is to small",
                                "invalid radix value, values of 0, 2-36 are the only valid values"};

// Runs `parse` (returning T) and reports which exception came out, checking
// its message and raise site.
template <typename T, typename F>
raised outcome(F&& parse) {
  try {
    parse();
    return raised::nothing;
  } catch (exceptions::exception const& e) {
    using namespace exceptions;
    raised const r = dynamic_cast<overflow_error const*>(&e)           ? raised::overflow
                     : dynamic_cast<underflow_error const*>(&e)        ? raised::underflow
                     : dynamic_cast<invalid_argument_value const*>(&e) ? raised::bad_radix
                                                                       : raised::nothing;
    EXPECT_STREQ(e.get_message(), messages[static_cast<int>(r)]);
    EXPECT_STREQ(e.get_state().file, "generic/convert/str_to_x");
    EXPECT_STREQ(e.get_state().function, std::is_signed_v<T> ? "strtointx" : "strtouintx");
    EXPECT_NE(e.get_state().line, 0u);
    return r;
  }
}

// Every entry point, as a callable over any unit type, with its name.
#define ENTRY(name)                                                                                \
  [](auto const* t, unsigned long n, radix::base b, bool f) { return convert::name(t, n, b, f); }, \
      #name
template <typename F>
void each_entry_point(F&& f) {
  // clang-format off
  f(ENTRY(str_to_uint64)); f(ENTRY(str_to_uint32)); f(ENTRY(str_to_unsigned));
  f(ENTRY(str_to_uint16)); f(ENTRY(str_to_uint8));  f(ENTRY(str_to_int64));
  f(ENTRY(str_to_long));   f(ENTRY(str_to_int32));  f(ENTRY(str_to_signed));
  f(ENTRY(str_to_int));    f(ENTRY(str_to_int16));  f(ENTRY(str_to_short));
  f(ENTRY(str_to_int8));
  // clang-format on
}

template <typename Ch>
class StrToX : public ::testing::Test {};
using unit_types = ::testing::Types<char, unsigned short, wchar_t>;
TYPED_TEST_SUITE(StrToX, unit_types);

// Each text through str_to_long and str_to_uint64. The unsigned parser
// reads the lead-in alike; a '-' makes its value 0. With length 0 the signed
// parser reads up to the terminator, the unsigned one the first unit only.
// clang-format off
struct lead_case { char const* text; long length; unsigned int radix; long expected;
                   unsigned long unsigned_expected; };
lead_case const lead_cases[] = {  // length -1: the whole text
    {"0", -1, 0, 0, 0},       {"08", -1, 0, 0, 0},       {"017", -1, 0, 15, 15},   {"0b101", -1, 0, 5, 5},
    {"0B11", -1, 0, 3, 3},    {"0X1f", -1, 0, 31, 31},   {"\\x1F", -1, 0, 31, 31}, {"\\17", -1, 0, 15, 15},
    {"\\b11", -1, 0, 3, 3},   {"\\q", -1, 0, 0, 0},      {"0x1F", -1, 16, 0, 0},   {"0b1", -1, 2, 0, 0},
    {"0x", -1, 0, 0, 0},      {"0b", -1, 0, 0, 0},       {"\\", -1, 0, 0, 0},      {"0xg", -1, 0, 0, 0},
    {"0b2", -1, 0, 0, 0},     {" 12abc", -1, 0, 12, 12}, {"1e3", -1, 10, 1, 1},    {"+42", -1, 10, 42, 42},
    {"-42", -1, 10, -42, 0},  {"-0x10", -1, 0, -16, 0},  {"+", -1, 0, 0, 0},       {"-", -1, 0, 0, 0},
    {"   ", -1, 0, 0, 0},     {"- 4", -1, 10, 0, 0},     {"--4", -1, 10, 0, 0},    {"+-4", -1, 10, 0, 0},
    {"zZ", -1, 36, 1295, 1295}, {"1z", -1, 35, 1, 1},    {"FF", -1, 15, 0, 0},     {"7", -1, 7, 0, 0},
    {"101", -1, 2, 5, 5},     {"12345", 3, 10, 123, 123}, {"0x1F", 3, 0, 1, 1},    {"  -9", 3, 10, 0, 0},
    {"-7", 1, 10, 0, 0},      {"0x", 1, 0, 0, 0},        {"123", 0, 10, 123, 1},   {" 5", 0, 10, 5, 0},
    {"", 0, 10, 0, 0},        {"\t\n\v\f\r 7", -1, 10, 7, 7},  {"123456789012", 9, 10, 123456789, 123456789},
};
// clang-format on

TYPED_TEST(StrToX, LeadInAndPrefixes) {
  for (lead_case const& c : lead_cases) {
    auto const text = widen<TypeParam>(c.text);
    unsigned long const n = c.length < 0 ? text.size() : static_cast<unsigned long>(c.length);
    auto const r = static_cast<radix::base>(c.radix);
    EXPECT_EQ(convert::str_to_long(text.c_str(), n, r, true), c.expected) << c.text << " " << n;
    EXPECT_EQ(convert::str_to_uint64(text.c_str(), n, r, false), c.unsigned_expected) << c.text;
  }
  auto const none = static_cast<TypeParam const*>(nullptr);  // a null text reads as 0
  EXPECT_EQ(convert::str_to_uint32(none, 0, radix::decimal, true), 0u);
  EXPECT_EQ(convert::str_to_int(none, 0, radix::decimal, true), 0);
}

// "Text of white space only yields 0 and never throws, even with an invalid
// radix": the radix is checked once white space and sign are behind.
TYPED_TEST(StrToX, RadixCheckedAfterWhiteSpaceAndSign) {
  for (unsigned int r : {1u, 37u, 100u, 0xFFFFFFFFu}) {
    auto const rb = static_cast<radix::base>(r);
    for (char const* text : {"   ", "-", " +", "12", " -x", ""}) {
      auto const t = widen<TypeParam>(text);
      bool const quiet = t.find_first_not_of(widen<TypeParam>(" +-")) == t.npos && !t.empty();
      each_entry_point([&](auto parse, char const* name) {
        using T = decltype(parse(t.c_str(), 0, rb, false));
        EXPECT_EQ(outcome<T>([&] { EXPECT_EQ(parse(t.c_str(), t.size(), rb, false), T(0)); }),
                  quiet ? raised::nothing : raised::bad_radix)
            << name << " \"" << text << "\" radix " << r;
      });
    }
  }
}

template <typename Ch, typename F>
void check_limits(F parse, char const* name) {
  using T = decltype(parse(static_cast<Ch const*>(nullptr), 0, radix::decimal, false));
  SCOPED_TRACE(name);
  T const hi = std::numeric_limits<T>::max(), lo = std::numeric_limits<T>::min();
  auto expect = [&](std::string const& s, T when_quiet, raised when_loud, unsigned int r = 0) {
    auto const t = widen<Ch>(s);
    auto const rb = static_cast<radix::base>(r);
    EXPECT_EQ(parse(t.c_str(), t.size(), rb, false), when_quiet) << s << " radix " << r;
    EXPECT_EQ(outcome<T>([&] { EXPECT_EQ(parse(t.c_str(), t.size(), rb, true), when_quiet); }),
              when_loud)
        << s << " radix " << r;
  };
  auto text = [](unsigned long v) { return std::to_string(v); };
  unsigned long const top = static_cast<unsigned long>(hi);
  std::string const above = ~top ? text(top + 1) : "18446744073709551616";
  expect(text(top), hi, raised::nothing);
  expect(above, hi, raised::overflow);
  expect("1" + std::string(40, '0'), hi, raised::overflow);
  for (unsigned int r : {2u, 3u, 7u, 36u}) {  // radices without a fast path
    char digits[70];
    *std::to_chars(digits, digits + 70, static_cast<unsigned long>(hi), r).ptr = 0;
    expect(digits, hi, raised::nothing, r);
    *std::to_chars(digits, digits + 70, static_cast<unsigned long>(hi) + 1, r).ptr = 0;
    if (std::is_signed_v<T>) expect(std::string("-") + digits, lo, raised::nothing, r);
  }
  if constexpr (std::is_signed_v<T>) {
    expect("-" + above, lo, raised::nothing);  // the magnitude of the smallest value
    expect("-" + text(top + 2), lo, raised::underflow);
    expect("-0x" + std::string(sizeof(T) * 2 + 1, 'f'), lo, raised::underflow);
    // The smallest value reads as negative in the overflow test and lets one
    // more digit through, which wraps in the width of T.
    expect("-" + above + "0", 0, raised::nothing);
    expect("-" + above + "3", static_cast<T>(-3), raised::nothing);
  } else {
    expect("-1", 0, raised::underflow);
    expect("-0", 0, raised::nothing);
    expect("-" + above, 0, raised::underflow);
    expect("0x" + std::string(sizeof(T) * 2, 'F'), hi, raised::nothing);
  }
}

TYPED_TEST(StrToX, LimitsOfEveryResultType) {
  each_entry_point([](auto parse, char const* name) { check_limits<TypeParam>(parse, name); });
  check_limits<TypeParam>(convert::strtointx<short, TypeParam>, "strtointx");
  check_limits<TypeParam>(convert::strtouintx<unsigned long, TypeParam>, "strtouintx");
}

// Random [sign]digits texts in every radix, cut at a random length, against
// the magnitude strtoul reads from the digits (the lead-in is covered above).
TYPED_TEST(StrToX, AgreesWithTheCLibrary) {
  std::mt19937 rng(20240611u);
  for (int round = 0; round < 4000; ++round) {
    unsigned int const r = round % 3 ? 10 : rng() % 35 + 2;
    std::string const set = std::string("0123456789abcdefghijklmnopqrstuvwxyz").substr(0, r);
    std::string text = std::string("  -+").substr(rng() % 4, 1);
    for (unsigned int i = rng() % 26; i > 0; --i) text += set[rng() % r];
    text = text.substr(0, 1 + rng() % text.size()) + ".";
    bool const negative = text[0] == '-';
    std::string lower = text.substr(text[0] == '-' || text[0] == '+');
    errno = 0;
    unsigned long const m = std::strtoul(lower.c_str(), nullptr, static_cast<int>(r));
    bool const range = errno == ERANGE;
    lower.erase(0, lower.find_first_not_of('0'));
    auto const w = widen<TypeParam>(text);
    auto const rb = static_cast<radix::base>(r);
    each_entry_point([&](auto parse, char const* name) {
      using T = decltype(parse(w.c_str(), 0, rb, false));
      T const hi = std::numeric_limits<T>::max(), lo = std::numeric_limits<T>::min();
      unsigned long const limit =
          static_cast<unsigned long>(hi) + (std::is_signed_v<T> && negative);
      // A magnitude of exactly 2^(bits-1) followed by more digits wraps
      // (tested above); the C library has no such case.
      char head[80];
      std::string const h(head, std::to_chars(head, head + 80, limit, r).ptr);
      if (negative && lower.compare(0, h.size(), h) == 0 && set.find(lower[h.size()]) != set.npos) {
        return;
      }
      bool const over = range || m > limit, zero = !std::is_signed_v<T> && negative;
      T const expected = zero ? T(0) : over ? (negative ? lo : hi) : T(negative ? 0 - m : m);
      raised const loud = zero   ? (over || m ? raised::underflow : raised::nothing)
                          : over ? (negative ? raised::underflow : raised::overflow)
                                 : raised::nothing;
      EXPECT_EQ(parse(w.c_str(), w.size(), rb, false), expected) << name << " " << text << " " << r;
      EXPECT_EQ(outcome<T>([&] { EXPECT_EQ(parse(w.c_str(), w.size(), rb, true), expected); }),
                loud)
          << name << " " << text << " " << r;
    });
    if (::testing::Test::HasFailure()) return;
  }
}

// Any units, any length (0 included), any radix: a value or the described
// exception, never a crash or a read past the text (ASan build).
TYPED_TEST(StrToX, ArbitraryInputNeverMisbehaves) {
  using Ch = TypeParam;
  std::mt19937_64 rng(7u);
  std::string const likely = "0123456789abcxXbB\\-+ \t";
  for (int round = 0; round < 20000; ++round) {
    std::size_t const size = rng() % 24;
    std::unique_ptr<Ch[]> text(new Ch[size + 1]());  // exact size: ASan sees any overread
    for (std::size_t i = 0; i < size; ++i) {
      auto const bits = rng();
      text[i] = static_cast<Ch>(bits % 3 ? likely[bits % likely.size()] : bits >> 8);
    }
    unsigned long const n = rng() % 4 == 0 ? 0 : size;
    unsigned int const r = rng() % 5 == 0 ? static_cast<unsigned int>(rng()) : rng() % 40;
    bool const flag = rng() % 2, radix_ok = r == 0 || (r >= 2 && r <= 36);
    each_entry_point([&](auto parse, char const* name) {
      using T = decltype(parse(text.get(), 0, radix::decimal, false));
      raised const got =
          outcome<T>([&] { parse(text.get(), n, static_cast<radix::base>(r), flag); });
      EXPECT_TRUE(got == raised::nothing || (got == raised::bad_radix && !radix_ok) ||
                  (got != raised::bad_radix && flag))
          << name;
    });
    if (::testing::Test::HasFailure()) return;
  }
}

// isradixdigit's classes and values against what the parser makes of each
// unit alone; wide units are never taken for their low byte.
TYPED_TEST(StrToX, DigitClassificationMatchesTheParser) {
  long const offset[] = {0, 48, 55, 87};  // by radix_digit_type
  for (long u = 0; u < 0x10000; u = u < 255 ? u + 1 : u == 255 ? 0x130 : u + 0x1000) {
    TypeParam const text[] = {static_cast<TypeParam>(u), 0};
    long const v = std::is_same_v<TypeParam, char> ? static_cast<signed char>(u) : text[0];
    for (unsigned int r = 2; r <= 36; ++r) {
      convert::radix_digit_type const type = convert::isradixdigit(text[0], r);
      ASSERT_EQ(convert::str_to_long(text, 1, static_cast<radix::base>(r), true),
                type == convert::not_radix_digit ? 0 : v - offset[type])
          << "unit " << v << " radix " << r << " type " << type;
    }
  }
  EXPECT_EQ(convert::isradixdigit('[', 40), convert::upper_radix_digit);  // bounds beyond 36
}

// In the C locale the tests run in, white space is 9-13 and 32; `char` is
// sign-extended, so its bytes from 0x80 are negative and never white space.
TEST(StrToXClassify, IsSpace) {
  for (long u = -300; u < 70000; u += u < 300 ? 1 : 0x1000) {
    bool const space = (u >= 9 && u <= 13) || u == 32;
    EXPECT_EQ(convert::is_space(static_cast<wchar_t>(u)), space) << u;
    EXPECT_TRUE(u < 0 || u > 65535 || convert::is_space(static_cast<unsigned short>(u)) == space);
    EXPECT_TRUE(u < -128 || u > 255 || convert::is_space(static_cast<char>(u)) == space) << u;
  }
}

TEST(StrToXBool, WordsAndNumbers) {
  for (wchar_t const* yes :
       {L"yes", L"YES", L"On", L"TRUE", L"2", L"0x10", L"-7", L" 5", L"\\x1"}) {
    EXPECT_TRUE(convert::str_to_bool(yes)) << yes;
  }
  for (wchar_t const* no : {L"0", L"no", L"off", L"false", L"", L"nope", L"yes ", L"\x130n"}) {
    EXPECT_FALSE(convert::str_to_bool(no)) << no;
  }
}

}  // namespace
