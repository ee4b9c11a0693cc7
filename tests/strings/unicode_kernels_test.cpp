// Every kernel set the processor has gives exactly the unit-by-unit results
// of the rules in unicode.hpp, on the named hard cases at every offset of a
// block, on random mixes and on real texts with and without damage.
#include "vexa/strings/unicode.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "strings/unicode_kernel_sets.hpp"
#include "unicode_reference.hpp"

namespace {

using namespace vexa::strings;
namespace reference = vexa_fuzz::reference;
using _private::unicode_kernel;

using kernel_transforms = vexa_fuzz::unicode_transforms;

unicode_kernel const all_kernels[] = {unicode_kernel::portable, unicode_kernel::ssse3, unicode_kernel::avx2,
                                      unicode_kernel::avx512};

// Runs `test` with the transforms of each kernel set this processor has,
// then restores the set that was in use; then with each set built over the
// software model of instructions.
template <typename Test>
void for_each_kernel(Test test) {
  unicode_kernel const before = _private::current_unicode_kernel();
  for (unicode_kernel kernel : all_kernels) {
    if (!_private::force_unicode_kernel(kernel)) continue;
    SCOPED_TRACE(std::string("kernel ") + _private::unicode_kernel_name(kernel));
    test(vexa_fuzz::library_transforms());
  }
  _private::force_unicode_kernel(before);
  for (kernel_transforms const& set : vexa_test::modelled_kernel_sets()) {
    SCOPED_TRACE(std::string("kernel ") + set.name);
    test(set);
  }
}

template <typename String>
std::string hex(String const& s) {
  std::ostringstream out;
  out << std::hex;
  for (auto c : s) out << ' ' << (static_cast<std::uint32_t>(c) & (sizeof(c) == 1 ? 0xFFu : 0xFFFFFFFFu));
  return "[" + out.str() + " ]";
}

// Compares whole results, printing input, expected and actual on a mismatch.
template <typename Got, typename Want, typename Source>
::testing::AssertionResult same(char const* transform, Source const& source, Got const& got, Want const& want) {
  if (static_cast<Want const&>(got) == want) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << transform << " of " << hex(source) << "\n  gave     " << hex(got)
                                       << "\n  expected " << hex(want);
}

void check(kernel_transforms const& t, ustring8 const& s) {
  EXPECT_TRUE(same("utf8_to_utf16", s, t.utf8_to_utf16(s), reference::utf8_to_utf16(s)));
  EXPECT_TRUE(same("utf8_to_utf32", s, t.utf8_to_utf32(s), reference::utf8_to_utf32(s)));
}
void check(kernel_transforms const& t, ustring16 const& s) {
  EXPECT_TRUE(same("utf16_to_utf8", s, t.utf16_to_utf8(s), reference::utf16_to_utf8(s)));
  EXPECT_TRUE(same("utf16_to_utf32", s, t.utf16_to_utf32(s), reference::utf16_to_utf32(s)));
}
void check(kernel_transforms const& t, ustring32 const& s) {
  EXPECT_TRUE(same("utf32_to_utf8", s, t.utf32_to_utf8(s), reference::utf32_to_utf8(s)));
  EXPECT_TRUE(same("utf32_to_utf16", s, t.utf32_to_utf16(s), reference::utf32_to_utf16(s)));
}

// Well-formed fills the kernels take in blocks: ASCII, two-byte letters,
// three-byte ideographs, four-byte emoji, and a mix of all four.
std::u32string const fills[] = {
    U"The quick brown fox jumps over the lazy dog. ",
    U"\u0421\u044a\u0435\u0448\u044c \u0436\u0435 \u0435\u0449\u0451 \u044d\u0442\u0438\u0445 ",
    U"\u6c49\u5b57\u7f16\u7801\u8f6c\u6362\u6d4b\u8bd5\uac00\ud7a3\u0e01\u0e02",
    U"\U0001F600\U0001F680\U0001F9D1\U00010000\U0010FFFF",
    U"a\u00e9\u20ac\U0001F600 b\u0416\u4e2d\U0001F4A9 ",
};

ustring8 to8(std::u32string const& s) { return reference::utf32_to_utf8(reference::text32(s.begin(), s.end())); }
ustring16 to16(std::u32string const& s) { return reference::utf8_to_utf16(to8(s)); }
ustring32 to32(std::u32string const& s) { return ustring32(reference::text32(s.begin(), s.end())); }

// A fill repeated to `units` code points.
std::u32string repeated(std::u32string const& fill, std::size_t units) {
  std::u32string s;
  while (s.size() < units) s += fill;
  s.resize(units);
  return s;
}

TEST(UnicodeKernels, ForcingAndNaming) {
  unicode_kernel const before = _private::current_unicode_kernel();
  EXPECT_TRUE(_private::unicode_kernel_available(unicode_kernel::portable));
  EXPECT_TRUE(_private::force_unicode_kernel(unicode_kernel::portable));
  EXPECT_EQ(_private::current_unicode_kernel(), unicode_kernel::portable);
  EXPECT_STREQ(_private::unicode_kernel_name(unicode_kernel::avx2), "avx2");
  // A set the processor lacks is refused and changes nothing.
  for (unicode_kernel kernel : all_kernels) {
    bool const available = _private::unicode_kernel_available(kernel);
    EXPECT_EQ(_private::force_unicode_kernel(kernel), available);
    if (available) {
      EXPECT_EQ(_private::current_unicode_kernel(), kernel);
    }
  }
  _private::force_unicode_kernel(before);
}

// The hard cases of each encoding, each placed at every offset of 70 units of
// every fill, so that it lands at each position of a block and at its edges.
TEST(UnicodeKernels, NamedCasesAtEveryOffset) {
  struct case8 { char const* name; std::string bytes; };
  case8 const cases8[] = {
      {"overlong C0 80", std::string("\xC0\x80", 2)},
      {"encoded surrogate ED A0 80", "\xED\xA0\x80"},
      {"F4 90 80 80 above U+10FFFF", "\xF4\x90\x80\x80"},
      {"F0 80 80 80 plane 0 in four bytes", std::string("\xF0\x80\x80\x80", 4)},
      {"F7 BF BF BF", "\xF7\xBF\xBF\xBF"},
      {"lone continuation", "\x80"},
      {"F8 lead", "\xF8\x88\x80\x80\x80"},
      {"FF byte", "\xFF"},
      {"truncated three", "\xE2\x82"},
      {"truncated four", "\xF0\x9F\x98"},
      {"two-byte lead before ASCII", "\xC3("},
      {"three-byte lead, one continuation, lead", "\xE2\x82\xE2\x82\xAC"},
  };
  struct case16 { char const* name; std::vector<unsigned short> units; };
  case16 const cases16[] = {
      {"lone high", {0xD83D}}, {"lone low", {0xDE00}}, {"high high low", {0xD83D, 0xD83D, 0xDE00}},
      {"low high", {0xDE00, 0xD83D}}, {"pair", {0xD83D, 0xDE00}}, {"U+FFFF", {0xFFFF}},
  };
  struct case32 { char const* name; std::vector<std::uint32_t> units; };
  case32 const cases32[] = {
      {"surrogate", {0xD800}}, {"low surrogate", {0xDFFF}}, {"U+FFFF, a pair on purpose", {0xFFFF}},
      {"0x110000 skipped or refused", {0x110000}}, {"negative", {0xFFFFFFFEu}}, {"-1", {0xFFFFFFFFu}},
      {"0x7FFFFFFF", {0x7FFFFFFFu}}, {"U+10FFFF", {0x10FFFF}},
  };
  for_each_kernel([&](kernel_transforms const& t) {
    for (std::u32string const& fill : fills) {
      std::u32string const base = repeated(fill, 70);
      for (std::size_t at = 0; at <= base.size(); ++at) {
        std::u32string const head = base.substr(0, at), tail = base.substr(at);
        for (case8 const& c : cases8) {
          SCOPED_TRACE(c.name);
          check(t, ustring8(to8(head) + c.bytes + to8(tail)));
        }
        for (case16 const& c : cases16) {
          SCOPED_TRACE(c.name);
          check(t, ustring16(to16(head) + reference::text16(c.units.begin(), c.units.end()) + to16(tail)));
        }
        for (case32 const& c : cases32) {
          SCOPED_TRACE(c.name);
          reference::text32 middle;
          for (std::uint32_t u : c.units) middle.push_back(static_cast<wchar_t>(u));
          check(t, ustring32(to32(head) + middle + to32(tail)));
        }
      }
      if (HasFailure()) return;
    }
  });
}

// Random mixes of every kind of character, with a little damage in some.
TEST(UnicodeKernels, RandomMixes) {
  std::mt19937 rng(20261123);
  std::uint32_t const starts[] = {0x20, 0x80, 0x800, 0x10000};
  std::uint32_t const spans[] = {0x60, 0x780, 0xF800, 0x100000};
  std::vector<std::u32string> texts;
  for (int t = 0; t < 400; ++t) {
    std::u32string s;
    std::size_t const length = rng() % 300;
    unsigned const kinds = 1 + rng() % 15;  // which of the four ranges appear
    while (s.size() < length) {
      unsigned const k = rng() % 4;
      if (!((kinds >> k) & 1u)) continue;
      s.push_back(static_cast<char32_t>(starts[k] + rng() % spans[k]));
    }
    texts.push_back(s);
  }
  for_each_kernel([&](kernel_transforms const& t) {
    std::mt19937 damage(7);
    for (std::u32string const& s : texts) {
      ustring8 a = to8(s);
      ustring16 b = to16(s);
      ustring32 c = to32(s);
      check(t, a);
      check(t, b);
      check(t, c);
      if (!a.empty() && damage() % 2 == 0) {
        a[damage() % a.size()] = static_cast<char>(damage());
        b[damage() % b.size()] = static_cast<unsigned short>(0xD800 + damage() % 0x800);
        c[damage() % c.size()] = static_cast<wchar_t>(damage());
        check(t, a);
        check(t, b);
        check(t, c);
      }
      if (HasFailure()) return;
    }
  });
}

// The sample texts of many scripts, whole and with bytes changed.
TEST(UnicodeKernels, SampleTextsWholeAndDamaged) {
  std::vector<ustring8> texts;
  std::error_code error;
  for (auto const& entry : std::filesystem::directory_iterator(VEXA_TEST_UNICODE_DIR, error)) {
    std::ifstream in(entry.path(), std::ios::binary);
    texts.emplace_back(std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()));
  }
  if (texts.empty()) GTEST_SKIP() << "no sample texts in " << VEXA_TEST_UNICODE_DIR;
  for_each_kernel([&](kernel_transforms const& t) {
    std::mt19937 rng(11);
    for (ustring8 const& text : texts) {
      check(t, text);
      check(t, ustring16(reference::utf8_to_utf16(text)));
      check(t, ustring32(reference::utf8_to_utf32(text)));
      for (int round = 0; round < 8; ++round) {
        ustring8 damaged = text;
        for (int k = 0; k < 3; ++k) damaged[rng() % damaged.size()] = static_cast<char>(rng());
        check(t, damaged);
        // Cutting at any byte leaves a truncated sequence at the end.
        check(t, ustring8(text.substr(0, rng() % text.size())));
      }
      if (HasFailure()) return;
    }
  });
}

}  // namespace
