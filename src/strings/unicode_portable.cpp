// The portable kernel set: runs of ASCII and of units that need no pairing,
// with SSE2 (every x86-64 processor has it) or words of eight bytes, and the
// length passes a unit at a time. It is the floor the other sets stand on
// and what the unit-by-unit paths are tested with.
#include <cstdint>

#include "strings/unicode_kernels.hpp"
#include "strings/unicode_sse2.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {

namespace {

// Moves 16-unit blocks while each is taken whole; stops at the first unit a
// block did not take, or with fewer than 16 left.
template <typename In, typename Out>
void ascii_runs(In const*& p, In const* end, Out*& o) {
  while (end - p >= 16) {
    unsigned const k = sse2::ascii_block(p, o);
    p += k;
    o += k;
    if (k != 16) return;
  }
}

}  // namespace

void portable_decode(u8 const*& p, u8 const* end, u16*& o) { ascii_runs(p, end, o); }
void portable_decode(u8 const*& p, u8 const* end, wchar_t*& o) { ascii_runs(p, end, o); }
void portable_encode(u16 const*& p, u16 const* end, u8*& o) { ascii_runs(p, end, o); }
// Negative units go as one byte each, their low byte, in the same blocks.
void portable_encode(wchar_t const*& p, wchar_t const* end, u8*& o) { ascii_runs(p, end, o); }

void portable_widen(u16 const*& p, u16 const* end, wchar_t*& o) {
  if (end - p >= 8) sse2::run_plain_blocks(p, end, o, sse2::plain_block_16to32);
}
void portable_narrow(wchar_t const*& p, wchar_t const* end, u16*& o) {
  if (end - p >= 8) sse2::run_plain_blocks(p, end, o, sse2::plain_block_32to16);
}

std::size_t portable_utf16_length_of_utf8(u8 const* p, std::size_t n) {
  std::size_t units = 0;
  for (std::size_t i = 0; i < n; ++i) units += ((p[i] & 0xC0u) != 0x80u) + (p[i] >= 0xF0u);
  return units;
}

std::size_t portable_utf32_length_of_utf8(u8 const* p, std::size_t n) {
  std::size_t units = 0;
  for (std::size_t i = 0; i < n; ++i) units += (p[i] & 0xC0u) != 0x80u;
  return units;
}

std::size_t portable_utf8_length_of_utf16(u16 const* p, std::size_t n) {
  std::size_t bytes = n;
  for (std::size_t i = 0; i < n; ++i) {
    unsigned const u = p[i];
    bytes += static_cast<std::size_t>(u >= 0x80u) + (u >= 0x800u);
    bytes -= (u & 0xF800u) == 0xD800u;  // a pair is four bytes, not six
  }
  return bytes;
}

std::size_t portable_utf8_length_of_utf32(wchar_t const* p, std::size_t n) {
  std::size_t bytes = 0;
  for (std::size_t i = 0; i < n; ++i) {
    std::int32_t const c = p[i];
    bytes += c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : c <= 0x10FFFF ? 4 : 0;
  }
  return bytes;
}

std::size_t portable_utf32_length_of_utf16(u16 const* p, std::size_t n) {
  std::size_t units = n;
  for (std::size_t i = 0; i < n; ++i) units -= (p[i] & 0xFC00u) == 0xDC00u;
  return units;
}

std::size_t portable_utf16_length_of_utf32(wchar_t const* p, std::size_t n) {
  std::size_t units = n;
  for (std::size_t i = 0; i < n; ++i) {
    std::int32_t const c = p[i];
    units += c >= 0xFFFF && c <= 0x10FFFF;
  }
  return units;
}

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
