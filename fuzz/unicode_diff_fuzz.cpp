// Fuzz target: the block kernels of the transforms against the plain rules.
//
// Every kernel set the processor has (portable, SSSE3, AVX2, AVX-512) is
// run on each input, and the AVX-512 set over a software model where the
// processor lacks it. Random bytes seldom hold the long runs of well-formed
// text that the kernels take, so this target builds its text from the input
// as a recipe: byte 0 picks the source encoding (0 UTF-8, 1 UTF-16, 2 UTF-32),
// then each step is a command byte (low four bits: what, high four bits: how
// many times, 1-16) and its payload:
//    0-4  one ASCII unit (payload byte & 0x7F, NUL and controls included)
//    5-7  a character of 0x80..0x7FF              (2-byte payload)
//    8-10 a character of 0x800..0xFFFF, surrogate code points included
//   11-12 a character of 0x10000..0x10FFFF       (3-byte payload)
//   13    a raw unit: a byte, a 16-bit or 32-bit unit as it is (4-byte payload)
//   14    a code point above 0x10FFFF (raw unit in UTF-16)
//   15    a cut sequence: a three-byte lead and one continuation (UTF-8), a
//         lone high surrogate (UTF-16), a negative unit (UTF-32)
// Code points are written in the well-formed form of the source encoding
// (UTF-8 encodes surrogates and values above 0x10FFFF by the bit pattern).
// Every transform of the text, and of its results, is compared with the
// plain rules.
#include <cstdint>
#include <string>

#include "unicode_avx512_model.hpp"
#include "unicode_checks.hpp"

namespace {

namespace strings = vexa::strings;

constexpr std::size_t max_units = 1 << 16;

void put8(std::string& out, std::uint32_t c) {
  if (c < 0x80) {
    out.push_back(static_cast<char>(c));
  } else if (c < 0x800) {
    out.push_back(static_cast<char>(0xC0 | (c >> 6)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else if (c < 0x10000) {
    out.push_back(static_cast<char>(0xE0 | (c >> 12)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  } else {
    out.push_back(static_cast<char>(0xF0 | ((c >> 18) & 0x07)));
    out.push_back(static_cast<char>(0x80 | ((c >> 12) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | ((c >> 6) & 0x3F)));
    out.push_back(static_cast<char>(0x80 | (c & 0x3F)));
  }
}

void put16(std::basic_string<unsigned short>& out, std::uint32_t c) {
  if (c < 0x10000) {
    out.push_back(static_cast<unsigned short>(c));
  } else {
    std::uint32_t const v = c - 0x10000;
    out.push_back(static_cast<unsigned short>(0xD800 + ((v >> 10) & 0x3FF)));
    out.push_back(static_cast<unsigned short>(0xDC00 + (v & 0x3FF)));
  }
}

// What one recipe step adds, in each encoding.
struct builder {
  unsigned source;
  std::string text8;
  std::basic_string<unsigned short> text16;
  std::basic_string<wchar_t> text32;

  std::size_t size() const { return text8.size() + text16.size() + text32.size(); }

  void character(std::uint32_t c) {
    if (source == 0) put8(text8, c);
    if (source == 1) put16(text16, c);
    if (source == 2) text32.push_back(static_cast<wchar_t>(c));
  }
  void raw(std::uint32_t u) {
    if (source == 0) text8.push_back(static_cast<char>(u & 0xFF));
    if (source == 1) text16.push_back(static_cast<unsigned short>(u & 0xFFFF));
    if (source == 2) text32.push_back(static_cast<wchar_t>(u));
  }
  void above_range(std::uint32_t c) {
    if (source == 1) raw(c);
    else character(c);  // UTF-8 writes the bit pattern (lead F4..F7)
  }
  void cut() {
    if (source == 0) {
      text8.push_back('\xE2');
      text8.push_back('\x82');
    }
    if (source == 1) text16.push_back(0xD83D);
    if (source == 2) text32.push_back(static_cast<wchar_t>(-2));
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  builder text{in.pick(3), {}, {}, {}};
  while (!in.empty() && text.size() < max_units) {
    unsigned const command = in.byte();
    unsigned const what = command & 15;
    unsigned const times = 1 + (command >> 4);
    std::uint32_t c = 0;
    if (what <= 4) c = in.byte() & 0x7F;
    else if (what <= 7) c = 0x80 + in.word16() % 0x780;
    else if (what <= 10) c = 0x800 + in.word16() % 0xF800;
    else if (what <= 12) c = 0x10000 + (in.word16() | (std::uint32_t{in.byte()} << 16)) % 0x100000;
    else if (what == 13) c = in.word32();
    else if (what == 14) c = 0x110000 + in.word16() % 0xF0000;  // up to 0x1FFFFF
    for (unsigned k = 0; k < times; ++k) {
      if (what <= 12) text.character(c);
      else if (what == 13) text.raw(c);
      else if (what == 14) text.above_range(c);
      else text.cut();
    }
  }
  // Every kernel set this processor has must give the same, plain results.
  using strings::_private::unicode_kernel;
  for (unicode_kernel kernel :
       {unicode_kernel::portable, unicode_kernel::ssse3, unicode_kernel::avx2, unicode_kernel::avx512}) {
    if (!strings::_private::force_unicode_kernel(kernel)) continue;
    if (text.source == 0) vexa_fuzz::check_from(strings::ustring8(text.text8), true);
    if (text.source == 1) vexa_fuzz::check_from(strings::ustring16(text.text16), true);
    if (text.source == 2) vexa_fuzz::check_from(strings::ustring32(text.text32), true);
  }
#if defined(VEXA_HAVE_AVX512_MODEL)
  // The AVX-512 kernels over the software model, where the processor lacks them.
  if (!strings::_private::unicode_kernel_available(unicode_kernel::avx512)) {
    auto const& model = vexa_fuzz::avx512_model_transforms();
    if (text.source == 0) vexa_fuzz::check_from(strings::ustring8(text.text8), true, model);
    if (text.source == 1) vexa_fuzz::check_from(strings::ustring16(text.text16), true, model);
    if (text.source == 2) vexa_fuzz::check_from(strings::ustring32(text.text32), true, model);
  }
#endif
  return 0;
}
