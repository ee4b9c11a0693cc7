// The AVX2 kernels from UTF-16 and UTF-32 to UTF-8, forced on and compared
// with the unit-by-unit rules: every block shape at every offset of a
// 32-unit window, random mixes and the sample texts.
#include "vexa/strings/unicode.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "unicode_reference.hpp"

namespace {

using namespace vexa::strings;
namespace ref = vexa_fuzz::reference;
namespace kernels = vexa::strings::_private;

class UnicodeAvx2Encode : public ::testing::Test {
 protected:
  void SetUp() override {
    _previous = kernels::current_unicode_kernel();
    if (!kernels::force_unicode_kernel(kernels::unicode_kernel::avx2)) GTEST_SKIP() << "no AVX2 here";
  }
  void TearDown() override { kernels::force_unicode_kernel(_previous); }

 private:
  kernels::unicode_kernel _previous = kernels::unicode_kernel::portable;
};

template <typename Units>
std::string hex(Units const& s, std::size_t from = 0, std::size_t count = std::string::npos) {
  std::ostringstream out;
  out << std::hex << '[';
  for (std::size_t i = from; i < s.size() && i - from < count; ++i) {
    out << ' ' << (static_cast<std::uint32_t>(s[i]) & (sizeof(s[i]) == 1 ? 0xFFu : 0xFFFFFFFFu));
  }
  out << " ]";
  return out.str();
}

// Fails with the input and both results (around the first difference when
// they are long).
template <typename Input>
void expect_utf8(std::string const& label, Input const& input, std::string const& expected,
                 std::string const& actual) {
  if (expected == actual) return;
  std::size_t at = 0;
  while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) ++at;
  bool const whole = expected.size() <= 200 && actual.size() <= 200;
  std::size_t const from = whole ? 0 : (at > 16 ? at - 16 : 0);
  std::size_t const count = whole ? std::string::npos : 48;
  ADD_FAILURE() << label << ": first difference at byte " << at << "\n  input    "
                << (input.size() <= 100 ? hex(input) : "(" + std::to_string(input.size()) + " units)")
                << "\n  expected " << hex(expected, from, count) << "\n  actual   " << hex(actual, from, count);
}

void check16(std::string const& label, ref::text16 const& text) {
  expect_utf8(label, text, ref::utf16_to_utf8(text), utf16_to_utf8(ustring16(text)));
}
void check32(std::string const& label, ref::text32 const& text) {
  expect_utf8(label, text, ref::utf32_to_utf8(text), utf32_to_utf8(ustring32(text)));
}

// A code point as its UTF-16 units.
void append16(ref::text16& s, std::uint32_t c) {
  if (c >= 0x10000 && c <= 0x10FFFF) {
    s.push_back(static_cast<unsigned short>(0xD800 + ((c - 0x10000) >> 10)));
    s.push_back(static_cast<unsigned short>(0xDC00 + (c & 0x3FF)));
  } else {
    s.push_back(static_cast<unsigned short>(c));
  }
}

struct Filler { char const* name; std::uint32_t c; };
// Runs of each length of UTF-8 form, and the mixes the kernels branch on.
Filler const fillers[] = {
    {"ascii", 'a'}, {"two-byte", 0x3A9}, {"three-byte", 0x4E2D}, {"four-byte", 0x1F600},
};

// Units placed at each position of a run; a plain code point below 0x110000
// goes into UTF-16 as one unit or a pair, the rest as the raw units listed.
struct Probe { char const* name; std::vector<std::uint32_t> units16; std::int32_t unit32; };
std::vector<Probe> const probes = {
    {"NUL", {0}, 0},
    {"0x7F", {0x7F}, 0x7F},
    {"0x80", {0x80}, 0x80},
    {"0x7FF", {0x7FF}, 0x7FF},
    {"0x800", {0x800}, 0x800},
    {"0xD7FF", {0xD7FF}, 0xD7FF},
    {"0xE000", {0xE000}, 0xE000},
    {"0xFFFF", {0xFFFF}, 0xFFFF},
    {"U+10000", {0xD800, 0xDC00}, 0x10000},
    {"U+10FFFF", {0xDBFF, 0xDFFF}, 0x10FFFF},
    {"lone high", {0xD800}, 0xD800},
    {"lone low", {0xDFFF}, 0xDFFF},
    {"reversed pair", {0xDC00, 0xD800}, 0xDBFF},
    {"high, high, low", {0xDBFF, 0xDBFF, 0xDC00}, -1},
    {"unit -0x80", {0x7FF, 0x3A9}, -0x80},
    {"INT_MIN", {0x41}, INT_MIN},
    {"0x110000", {0xDB00}, 0x110000},
    {"INT_MAX", {0xDE00}, INT_MAX},
};

TEST_F(UnicodeAvx2Encode, EveryProbeAtEveryOffsetOfEachRun) {
  for (Filler const& filler : fillers) {
    for (Probe const& probe : probes) {
      for (std::size_t at = 0; at < 40; ++at) {
        for (std::size_t length : {at + 1, std::size_t{48}, std::size_t{80}}) {
          if (length <= at) continue;
          ref::text16 text16;
          ref::text32 text32;
          for (std::size_t i = 0; i < length; ++i) {
            if (i == at) {
              for (std::uint32_t u : probe.units16) text16.push_back(static_cast<unsigned short>(u));
              text32.push_back(static_cast<wchar_t>(probe.unit32));
            } else {
              append16(text16, filler.c);
              text32.push_back(static_cast<wchar_t>(filler.c));
            }
          }
          std::string const label = std::string(probe.name) + " at " + std::to_string(at) + " of " +
                                    std::to_string(length) + " " + filler.name;
          check16(label, text16);
          check32(label, text32);
        }
      }
    }
  }
}

// Every length up to three blocks, every filler, and a pair split at the end.
TEST_F(UnicodeAvx2Encode, EveryLengthOfEachRun) {
  for (Filler const& filler : fillers) {
    ref::text16 text16;
    ref::text32 text32;
    for (std::size_t length = 1; length <= 100; ++length) {
      append16(text16, filler.c);
      text32.push_back(static_cast<wchar_t>(filler.c));
      std::string const label = std::to_string(length) + " " + filler.name;
      check16(label, text16);
      check32(label, text32);
      check16(label + " and a high surrogate", text16 + ref::text16(1, 0xD83D));
    }
  }
}

// Random mixes of all the kinds, with a rare unit the kernels must leave.
TEST_F(UnicodeAvx2Encode, RandomMixes) {
  std::mt19937 random(20261123);
  std::uint32_t const starts[] = {0, 0x80, 0x800, 0xE000, 0x10000};
  std::uint32_t const sizes[] = {0x80, 0x780, 0xD000, 0x2000, 0x100000};
  for (unsigned round = 0; round < 3000; ++round) {
    // Each round favours some kinds, as real texts do.
    unsigned weights[5];
    for (unsigned& w : weights) w = random() % 4 == 0 ? 0 : 1 + random() % 8;
    weights[0] += 1;
    unsigned const total = weights[0] + weights[1] + weights[2] + weights[3] + weights[4];
    bool const faulty = round % 3 == 0;
    std::size_t const length = 1 + random() % 200;
    ref::text16 text16;
    ref::text32 text32;
    for (std::size_t i = 0; i < length; ++i) {
      if (faulty && random() % 64 == 0) {
        std::uint32_t const odd[] = {0xD800, 0xDBFF, 0xDC00, 0xDFFF};
        std::int32_t const odd32[] = {0xD800, 0xDFFF, -1, INT_MIN, 0x110000};
        text16.push_back(static_cast<unsigned short>(odd[random() % 4]));
        text32.push_back(static_cast<wchar_t>(odd32[random() % 5]));
        continue;
      }
      unsigned pick = static_cast<unsigned>(random() % total);
      unsigned kind = 0;
      while (pick >= weights[kind]) pick -= weights[kind++];
      std::uint32_t const c = starts[kind] + static_cast<std::uint32_t>(random() % sizes[kind]);
      append16(text16, c);
      text32.push_back(static_cast<wchar_t>(c));
    }
    std::string const label = "round " + std::to_string(round);
    check16(label, text16);
    check32(label, text32);
  }
}

std::string read_file(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream bytes;
  bytes << in.rdbuf();
  return bytes.str();
}

// The sample texts are well-formed UTF-8: both ways back give them unchanged.
TEST_F(UnicodeAvx2Encode, SampleTextsComeBackUnchanged) {
  char const* const names[] = {"arabic", "chinese", "emoji", "english", "hebrew", "hindi",
                               "japanese", "korean", "latin", "russian", "thai"};
  for (char const* name : names) {
    std::string const text = read_file(std::string(VEXA_TEST_UNICODE_DIR) + "/" + name + ".utf8.txt");
    ASSERT_FALSE(text.empty()) << name;
    ref::text16 const text16 = ref::utf8_to_utf16(text);
    ref::text32 const text32 = ref::utf8_to_utf32(text);
    expect_utf8(std::string(name) + " from UTF-16", text16, text, utf16_to_utf8(ustring16(text16)));
    expect_utf8(std::string(name) + " from UTF-32", text32, text, utf32_to_utf8(ustring32(text32)));
  }
}

}  // namespace
