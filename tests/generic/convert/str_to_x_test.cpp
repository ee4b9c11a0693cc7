#include "vexa/generic/convert/str_to_x.hpp"

#include <gtest/gtest.h>

#include <cctype>
#include <cerrno>
#include <charconv>
#include <climits>
#include <cstdlib>
#include <algorithm>
#include <functional>
#include <memory>
#include <limits>
#include <random>
#include <string>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/exceptions/runtime_error.hpp"

namespace convert = vexa::generic::convert;
namespace exceptions = vexa::exceptions;
using radix = vexa::types::radix_t;

namespace {

// The same text in units of Ch; bytes are zero-extended for the wide types.
template <typename Ch>
std::basic_string<Ch> widen(std::string const& s) {
  std::basic_string<Ch> w;
  for (char c : s) w.push_back(static_cast<Ch>(static_cast<unsigned char>(c)));
  return w;
}

enum class raised { nothing, overflow, underflow, bad_radix };

// Runs `parse` and reports which of the parsers' exceptions came out; the raise
// site is checked on every exception.
template <typename F>
raised outcome(F&& parse, char const* function) {
  auto site = [&](exceptions::exception const& e) {
    EXPECT_STREQ(e.get_state().file, "generic/convert/str_to_x");
    EXPECT_STREQ(e.get_state().function, function);
    EXPECT_NE(e.get_state().line, 0u);
  };
  try {
    parse();
    return raised::nothing;
  } catch (exceptions::overflow_error const& e) {
    site(e);
    EXPECT_STREQ(e.get_message(), "Number value is to large");
    return raised::overflow;
  } catch (exceptions::underflow_error const& e) {
    site(e);
    EXPECT_STREQ(e.get_message(), "Number value is to small");
    return raised::underflow;
  } catch (exceptions::invalid_argument_value const& e) {
    site(e);
    EXPECT_STREQ(e.get_message(),
                 "invalid radix value, values of 0, 2-36 are the only valid values");
    return raised::bad_radix;
  }
}

template <typename Ch>
class StrToX : public ::testing::Test {};
using unit_types = ::testing::Types<char, unsigned short, wchar_t>;
TYPED_TEST_SUITE(StrToX, unit_types);

// ---- lead-in: white space, sign, prefix, radix --------------------------------

struct lead_case {
  char const* text;
  long length;  // -1: the whole text
  unsigned int radix;
  long expected;
};

lead_case const lead_cases[] = {
    {"0", -1, 0, 0},           {"08", -1, 0, 0},          {"017", -1, 0, 15},
    {"0b101", -1, 0, 5},       {"0B11", -1, 0, 3},        {"0X1f", -1, 0, 31},
    {"0xFF", -1, 0, 255},      {"\\x1F", -1, 0, 31},      {"\\17", -1, 0, 15},
    {"\\b11", -1, 0, 3},       {"\\q", -1, 0, 0},         {"0x1F", -1, 16, 0},
    {"0b1", -1, 2, 0},         {"0x", -1, 0, 0},          {"0b", -1, 0, 0},
    {"\\", -1, 0, 0},          {"0xg", -1, 0, 0},         {"0b2", -1, 0, 0},
    {" 12abc", -1, 0, 12},     {"\t\n\v\f\r 7", -1, 10, 7}, {"1e3", -1, 10, 1},
    {"+42", -1, 10, 42},       {"-42", -1, 10, -42},      {"-0x10", -1, 0, -16},
    {"+", -1, 0, 0},           {"-", -1, 0, 0},           {"   ", -1, 0, 0},
    {"- 4", -1, 10, 0},        {"--4", -1, 10, 0},        {"+-4", -1, 10, 0},
    {"zZ", -1, 36, 1295},      {"1z", -1, 35, 1},         {"ff", -1, 16, 255},
    {"FF", -1, 15, 0},         {"7", -1, 7, 0},           {"101", -1, 2, 5},
    {"12345", 3, 10, 123},     {"0x1F", 3, 0, 1},         {"  -9", 3, 10, 0},
    {"-7", 1, 10, 0},          {"0x", 1, 0, 0},
};

TYPED_TEST(StrToX, LeadInAndPrefixes) {
  using Ch = TypeParam;
  for (lead_case const& c : lead_cases) {
    auto const text = widen<Ch>(c.text);
    unsigned long const n = c.length < 0 ? text.size() : static_cast<unsigned long>(c.length);
    auto const r = static_cast<radix::base>(c.radix);
    SCOPED_TRACE(std::string("text \"") + c.text + "\" length " + std::to_string(n));
    EXPECT_EQ(convert::str_to_long(text.c_str(), n, r, true), c.expected);
    // The unsigned parser reads the lead-in alike; negative values become 0.
    EXPECT_EQ(convert::str_to_uint64(text.c_str(), n, r, false),
              static_cast<unsigned long>(c.expected < 0 ? 0 : c.expected));
  }
}

TYPED_TEST(StrToX, LengthZero) {
  using Ch = TypeParam;
  auto const digits = widen<Ch>("123");
  auto const blank = widen<Ch>(" 5");
  auto const empty = widen<Ch>("");
  // Signed: up to the terminating 0.
  EXPECT_EQ(convert::str_to_int(digits.c_str(), 0, radix::decimal, false), 123);
  EXPECT_EQ(convert::str_to_int(blank.c_str(), 0, radix::decimal, false), 5);
  EXPECT_EQ(convert::str_to_int(empty.c_str(), 0, radix::decimal, false), 0);
  // Unsigned: the first unit only; for the empty text that unit is its 0.
  EXPECT_EQ(convert::str_to_uint32(digits.c_str(), 0, radix::decimal, false), 1u);
  EXPECT_EQ(convert::str_to_uint32(blank.c_str(), 0, radix::decimal, false), 0u);
  EXPECT_EQ(convert::str_to_uint32(empty.c_str(), 0, radix::decimal, false), 0u);
  EXPECT_EQ(convert::str_to_uint32(static_cast<Ch const*>(nullptr), 0, radix::decimal, true), 0u);
  EXPECT_EQ(convert::str_to_int(static_cast<Ch const*>(nullptr), 0, radix::decimal, true), 0);
}

TYPED_TEST(StrToX, RadixCheckedAfterWhiteSpaceAndSign) {
  using Ch = TypeParam;
  unsigned int const bad[] = {1, 37, 100, 0xFFFFFFFFu};
  for (unsigned int r : bad) {
    auto const rb = static_cast<radix::base>(r);
    for (char const* quiet : {"   ", "-", " +"}) {
      auto const t = widen<Ch>(quiet);
      EXPECT_EQ(convert::str_to_int(t.c_str(), t.size(), rb, true), 0) << quiet << " radix " << r;
      EXPECT_EQ(convert::str_to_uint8(t.c_str(), t.size(), rb, true), 0u) << quiet;
    }
    for (char const* loud : {"12", " -x", ""}) {
      auto const t = widen<Ch>(loud);
      EXPECT_EQ(outcome([&] { convert::str_to_int16(t.c_str(), t.size(), rb, false); },
                        "strtointx"),
                raised::bad_radix)
          << '"' << loud << "\" radix " << r;
      EXPECT_EQ(outcome([&] { convert::str_to_uint16(t.c_str(), t.size(), rb, false); },
                        "strtouintx"),
                raised::bad_radix)
          << '"' << loud << "\" radix " << r;
    }
  }
}

// ---- limits of every result type, through every entry point ------------------

// Adds one to a decimal text of digits.
std::string plus_one(std::string s) {
  for (auto i = s.rbegin(); i != s.rend(); ++i) {
    if (*i != '9') {
      ++*i;
      return s;
    }
    *i = '0';
  }
  return "1" + s;
}

template <typename T, typename Ch>
void check_limits(std::function<T(Ch const*, unsigned long, radix::base, bool)> const& parse,
                  char const* name) {
  SCOPED_TRACE(name);
  char const* const function = std::is_signed_v<T> ? "strtointx" : "strtouintx";
  T const hi = std::numeric_limits<T>::max();
  T const lo = std::numeric_limits<T>::min();
  auto run = [&](std::string const& s, unsigned int r, bool flag, T& value) {
    auto const t = widen<Ch>(s);
    auto const rb = static_cast<radix::base>(r);
    return outcome([&] { value = parse(t.c_str(), t.size(), rb, flag); }, function);
  };
  auto expect = [&](std::string const& s, T when_quiet, raised when_loud, unsigned int r = 0) {
    T v = 0;
    EXPECT_EQ(run(s, r, false, v), raised::nothing) << s;
    EXPECT_EQ(v, when_quiet) << s << " radix " << r;
    T w = 0;
    EXPECT_EQ(run(s, r, true, w), when_loud) << s << " radix " << r;
    if (when_loud == raised::nothing) { EXPECT_EQ(w, when_quiet) << s; }
  };
  // The extreme values read exactly in radices without a fast path too.
  for (unsigned int r : {2u, 3u, 7u, 36u}) {
    char digits[70];
    auto const magnitude = static_cast<unsigned long>(hi) + (std::is_signed_v<T> ? 1 : 0);
    *std::to_chars(digits, digits + 70, static_cast<unsigned long>(hi), r).ptr = 0;
    expect(digits, hi, raised::nothing, r);
    *std::to_chars(digits, digits + 70, magnitude, r).ptr = 0;
    if (std::is_signed_v<T>) expect(std::string("-") + digits, lo, raised::nothing, r);
  }
  std::string const top = std::to_string(static_cast<unsigned long>(hi));
  expect(top, hi, raised::nothing);
  expect(plus_one(top), hi, raised::overflow);
  expect("1" + std::string(40, '0'), hi, raised::overflow);
  if constexpr (std::is_signed_v<T>) {
    std::string const bottom = plus_one(top);  // the magnitude of the smallest value
    expect("-" + bottom, lo, raised::nothing);
    expect("-" + plus_one(bottom), lo, raised::underflow);
    expect("-0x" + std::string(sizeof(T) * 2 + 1, 'f'), lo, raised::underflow);
    // The smallest value reads as negative in the overflow test and lets one
    // more digit through, which wraps in the width of T.
    expect("-" + bottom + "0", 0, raised::nothing);
    expect("-" + bottom + "3", static_cast<T>(-3), raised::nothing);
  } else {
    expect("-1", 0, raised::underflow);
    expect("-0", 0, raised::nothing);
    expect("-" + plus_one(top), 0, raised::underflow);
    expect("0x" + std::string(sizeof(T) * 2, 'F'), hi, raised::nothing);
  }
}

#define CHECK_LIMITS(T, name) \
  check_limits<T, Ch>([](Ch const* t, unsigned long n, radix::base r, bool f) { \
    return convert::name(t, n, r, f);                                           \
  }, #name)

TYPED_TEST(StrToX, LimitsOfEveryResultType) {
  using Ch = TypeParam;
  CHECK_LIMITS(unsigned long, str_to_uint64);
  CHECK_LIMITS(unsigned int, str_to_uint32);
  CHECK_LIMITS(unsigned int, str_to_unsigned);
  CHECK_LIMITS(unsigned short, str_to_uint16);
  CHECK_LIMITS(unsigned char, str_to_uint8);
  CHECK_LIMITS(long, str_to_int64);
  CHECK_LIMITS(long, str_to_long);
  CHECK_LIMITS(int, str_to_int32);
  CHECK_LIMITS(int, str_to_signed);
  CHECK_LIMITS(int, str_to_int);
  CHECK_LIMITS(short, str_to_int16);
  CHECK_LIMITS(short, str_to_short);
  CHECK_LIMITS(signed char, str_to_int8);
  check_limits<long, Ch>(convert::strtointx<long, Ch>, "strtointx<long>");
  check_limits<unsigned char, Ch>(convert::strtouintx<unsigned char, Ch>, "strtouintx<uchar>");
}

// ---- against the C library --------------------------------------------------

// Random well-formed texts ([blanks][sign][prefix]digits[tail], cut at a
// random length) against strtol/strtoul, clamped to each result type. The
// C library has no backslash or 0b prefix, so none is generated, and no digit
// or tail unit could be read as "0x" in radix 16.
template <typename Ch>
void compare_with_c_library(unsigned int seed) {
  std::mt19937 rng(seed);
  auto pick = [&](std::string const& from) { return from[rng() % from.size()]; };
  std::string const alnum = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";
  for (int round = 0; round < 4000; ++round) {
    unsigned int r = rng() % 37;
    r = r == 1 ? 0 : r;
    std::string prefix;
    unsigned int base = r;
    if (r == 0) {
      char const* const prefixes[] = {"", "0", "0x", "0X"};
      prefix = prefixes[rng() % 4];
      base = prefix.empty() ? 10 : prefix.size() == 1 ? 8 : 16;
    }
    std::string set;
    for (char c : alnum) {
      unsigned int v = std::isdigit(static_cast<unsigned char>(c)) ? c - '0'
                                                                 : std::tolower(c) - 'a' + 10;
      if (v < base) set += c;
    }
    std::string text(rng() % 3, pick(" \t\n"));
    text += std::string(rng() % 3 == 0 ? "" : rng() % 2 ? "-" : "+");
    std::size_t const sign_at = text.find_first_of("+-");
    text += prefix;
    for (unsigned int i = rng() % 26; i > 0; --i) text += pick(set);
    for (unsigned int i = rng() % 3; i > 0; --i) text += pick(" .;_/");
    if (text.empty()) continue;
    std::string const cut = text.substr(0, 1 + rng() % text.size());
    SCOPED_TRACE("text \"" + cut + "\" radix " + std::to_string(r));

    errno = 0;
    long const sv = std::strtol(cut.c_str(), nullptr, static_cast<int>(r));
    bool const s_range = errno == ERANGE;
    std::string unsigned_text = cut;
    bool const negative = sign_at != std::string::npos && sign_at < cut.size() && cut[sign_at] == '-';
    if (sign_at != std::string::npos && sign_at < cut.size()) unsigned_text.erase(sign_at, 1);
    errno = 0;
    unsigned long const uv = std::strtoul(unsigned_text.c_str(), nullptr, static_cast<int>(r));
    bool const u_range = errno == ERANGE;

    auto const w = widen<Ch>(cut);
    auto const rb = static_cast<radix::base>(r);
    auto check_signed = [&](auto parse, auto zero) {
      using T = decltype(zero);
      T const hi = std::numeric_limits<T>::max(), lo = std::numeric_limits<T>::min();
      // A magnitude of exactly 2^(bits-1) followed by more digits wraps
      // (tested above); the C library has no such case.
      if (negative) {
        for (std::size_t k = sign_at + 2; k < cut.size(); ++k) {
          errno = 0;
          long const head = std::strtol(cut.substr(0, k).c_str(), nullptr, static_cast<int>(r));
          if (errno == 0 && head == lo && set.find(cut[k]) != std::string::npos) {
            return;
          }
        }
      }
      bool const high = (s_range && sv > 0) || sv > hi, low = (s_range && sv < 0) || sv < lo;
      T const expected = high ? hi : low ? lo : static_cast<T>(sv);
      EXPECT_EQ(parse(w.c_str(), w.size(), rb, false), expected);
      T got = 0;
      raised const loud = outcome([&] { got = parse(w.c_str(), w.size(), rb, true); }, "strtointx");
      EXPECT_EQ(loud, high ? raised::overflow : low ? raised::underflow : raised::nothing);
      if (loud == raised::nothing) { EXPECT_EQ(got, expected); }
    };
    auto check_unsigned = [&](auto parse, auto zero) {
      using T = decltype(zero);
      bool const over = u_range || uv > std::numeric_limits<T>::max();
      T const expected = negative ? T(0) : over ? std::numeric_limits<T>::max() : static_cast<T>(uv);
      EXPECT_EQ(parse(w.c_str(), w.size(), rb, false), expected);
      raised const want = negative ? (over || uv != 0 ? raised::underflow : raised::nothing)
                                   : over ? raised::overflow : raised::nothing;
      EXPECT_EQ(outcome([&] { parse(w.c_str(), w.size(), rb, true); }, "strtouintx"), want);
    };
    using P = Ch const*;
    check_signed([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_int64(t, n, b, f); }, 0L);
    check_signed([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_int32(t, n, b, f); }, 0);
    check_signed([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_int16(t, n, b, f); }, short());
    check_signed([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_int8(t, n, b, f); }, static_cast<signed char>(0));
    check_unsigned([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_uint64(t, n, b, f); }, 0UL);
    check_unsigned([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_uint32(t, n, b, f); }, 0U);
    check_unsigned([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_uint16(t, n, b, f); }, static_cast<unsigned short>(0));
    check_unsigned([](P t, unsigned long n, radix::base b, bool f) { return convert::str_to_uint8(t, n, b, f); }, static_cast<unsigned char>(0));
    if (::testing::Test::HasFailure()) return;
  }
}

TYPED_TEST(StrToX, AgreesWithTheCLibrary) { compare_with_c_library<TypeParam>(20240611u); }

// ---- arbitrary input -----------------------------------------------------------

// Any units, any length (0 included), any radix: a value or one of the
// described exceptions, never a crash or a read past the text (ASan build).
TYPED_TEST(StrToX, ArbitraryInputNeverMisbehaves) {
  using Ch = TypeParam;
  std::mt19937_64 rng(7u);
  std::string const likely = "0123456789abcxXbB\\-+ \t";
  for (int round = 0; round < 20000; ++round) {
    std::basic_string<Ch> text;
    for (unsigned int i = rng() % 24; i > 0; --i) {
      auto const bits = rng();
      text.push_back(bits % 3 ? static_cast<Ch>(likely[bits % likely.size()])
                              : static_cast<Ch>(bits >> 8));
    }
    // The exact size as a separate allocation lets ASan see any overread.
    std::unique_ptr<Ch[]> exact(new Ch[text.size() + 1]);
    std::copy(text.begin(), text.end(), exact.get());
    exact[text.size()] = 0;
    unsigned long const n = rng() % 4 == 0 ? 0 : text.size();
    unsigned int const r = rng() % 5 == 0 ? static_cast<unsigned int>(rng()) : rng() % 40;
    auto const rb = static_cast<radix::base>(r);
    bool const flag = rng() % 2;
    bool const radix_ok = r == 0 || (r >= 2 && r <= 36);
    auto check = [&](auto parse, char const* function) {
      raised const got = outcome([&] { parse(exact.get(), n, rb, flag); }, function);
      if (got == raised::bad_radix) { EXPECT_FALSE(radix_ok); }
      if (got == raised::overflow || got == raised::underflow) { EXPECT_TRUE(flag); }
    };
    using P = Ch const*;
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_uint64(t, k, b, f); }, "strtouintx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_uint32(t, k, b, f); }, "strtouintx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_unsigned(t, k, b, f); }, "strtouintx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_uint16(t, k, b, f); }, "strtouintx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_uint8(t, k, b, f); }, "strtouintx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_int64(t, k, b, f); }, "strtointx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_long(t, k, b, f); }, "strtointx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_int32(t, k, b, f); }, "strtointx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_signed(t, k, b, f); }, "strtointx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_int(t, k, b, f); }, "strtointx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_int16(t, k, b, f); }, "strtointx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_short(t, k, b, f); }, "strtointx");
    check([](P t, unsigned long k, radix::base b, bool f) { return convert::str_to_int8(t, k, b, f); }, "strtointx");
    if (::testing::Test::HasFailure()) return;
  }
}

// ---- character classification ---------------------------------------------------

TYPED_TEST(StrToX, DigitClassificationMatchesTheParser) {
  using Ch = TypeParam;
  std::vector<long> units;
  for (long u = 0; u < 256; ++u) units.push_back(u);
  if (sizeof(Ch) > 1) units.insert(units.end(), {0x130, 0x141, 0x161, 0xFF10, 0x10030});
  for (unsigned int r = 2; r <= 36; ++r) {
    for (long u : units) {
      Ch const c = static_cast<Ch>(u);
      convert::radix_digit_type const type = convert::isradixdigit(c, r);
      long const v = std::is_same_v<Ch, char> ? static_cast<signed char>(c) : static_cast<long>(c);
      long const value = type == convert::decimal_radix_digit ? v - 48
                         : type == convert::upper_radix_digit ? v - 55
                         : type == convert::lower_radix_digit ? v - 87
                                                              : 0;
      Ch const text[] = {c, 0};
      ASSERT_EQ(convert::str_to_long(text, 1, static_cast<radix::base>(r), true), value)
          << "unit 0x" << std::hex << u << std::dec << " radix " << r << " type " << type;
      if (type != convert::not_radix_digit) { ASSERT_LT(value, static_cast<long>(r)); }
    }
  }
  // Beyond 36 the classification still follows its bounds.
  EXPECT_EQ(convert::isradixdigit(static_cast<Ch>('['), 40), convert::upper_radix_digit);
  EXPECT_EQ(convert::isradixdigit(static_cast<Ch>('5'), 4), convert::not_radix_digit);
}

TEST(StrToXClassify, IsSpaceFollowsTheCLibrary) {
  for (int u = 0; u < 256; ++u) {
    bool const c_library = std::isspace(u) != 0;
    EXPECT_EQ(convert::is_space(static_cast<unsigned short>(u)), c_library) << u;
    EXPECT_EQ(convert::is_space(static_cast<wchar_t>(u)), c_library) << u;
    // `char` is sign-extended: the bytes from 0x80 are never white space.
    EXPECT_EQ(convert::is_space(static_cast<char>(u)), u < 128 && c_library) << u;
  }
  for (long u : {0x85L, 0xA0L, 0x1680L, 0x2000L, 0x3000L, 0x10020L, -1L, -224L}) {
    EXPECT_FALSE(convert::is_space(static_cast<wchar_t>(u))) << u;
  }
  EXPECT_FALSE(convert::is_space(static_cast<unsigned short>(0x120)));  // 0x20 + 256
}

// ---- truth values -----------------------------------------------------------------

TEST(StrToXBool, WordsAndNumbers) {
  struct {
    wchar_t const* text;
    bool expected;
  } const cases[] = {
      {L"yes", true},   {L"YES", true},   {L"On", true},      {L"TRUE", true},  {L"1", true},
      {L"2", true},     {L"0x10", true},  {L"-7", true},      {L" 5", true},    {L"\\x1", true},
      {L"0", false},    {L"no", false},   {L"off", false},    {L"false", false}, {L"", false},
      {L"nope", false}, {L"yes ", false}, {L"0x0", false},    {L"\x130n", false},
  };
  for (auto const& c : cases) {
    EXPECT_EQ(convert::str_to_bool(c.text), c.expected) << "case " << (&c - cases);
  }
}

}  // namespace
