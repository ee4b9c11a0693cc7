// The strict, streaming check of UTF-8, UTF-16 and UTF-32 input.
#include "utf/checker.hpp"

#include <cstring>

namespace vexa_cli {
namespace utf {
namespace {

std::uint32_t unit16(unsigned char const* p, bool big) {
  return big ? (std::uint32_t(p[0]) << 8 | p[1]) : (std::uint32_t(p[1]) << 8 | p[0]);
}

std::uint32_t unit32(unsigned char const* p, bool big) {
  return big ? (std::uint32_t(p[0]) << 24 | std::uint32_t(p[1]) << 16 | std::uint32_t(p[2]) << 8 | p[3])
             : (std::uint32_t(p[3]) << 24 | std::uint32_t(p[2]) << 16 | std::uint32_t(p[1]) << 8 | p[0]);
}

bool is_continuation(unsigned char b) { return (b & 0xC0) == 0x80; }

// The index of the first byte in memory order whose bit in `high` is set.
std::size_t first_marked_byte(std::uint64_t high) {
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
  return static_cast<std::size_t>(__builtin_ctzll(high)) / 8;
#else
  return static_cast<std::size_t>(__builtin_clzll(high)) / 8;
#endif
}

}  // namespace

checker::checker(form f, std::uint64_t start) : form_(f), big_(big_endian(f)), offset_(start) {}

std::size_t checker::check(unsigned char const* data, std::size_t size) {
  if (failed_) return 0;
  switch (unit_size(form_)) {
    case 1: return check_utf8(data, size);
    case 2: return check_utf16(data, size);
    default: return check_utf32(data, size);
  }
}

std::size_t checker::fail(unsigned char const* data, std::size_t at, char const* what) {
  advance(data, at);
  failed_ = true;
  fault_ = fault{offset_, line_, column_, what};
  return at;
}

fault const& checker::finish(unsigned char const* data, std::size_t size) {
  if (failed_) return fault_;
  char const* what = "truncated code unit";
  if (form_ == form::utf8) what = "truncated sequence";
  // A high surrogate whose partner the input does not hold.
  if (unit_size(form_) == 2 && size >= 2) what = "lone surrogate";
  fail(data, 0, what);
  return fault_;
}

std::size_t checker::check_utf8(unsigned char const* data, std::size_t size) {
  std::size_t i = 0;
  while (i < size) {
    unsigned char const lead = data[i];
    if (lead < 0x80) {
      // ASCII up to the next byte with its high bit set, eight at a time.
      if (i + 8 <= size) {
        std::uint64_t word;
        std::memcpy(&word, data + i, 8);
        std::uint64_t const high = word & 0x8080808080808080u;
        i += high == 0 ? 8 : first_marked_byte(high);
      } else {
        ++i;
      }
      continue;
    }
    // The common well-formed two- and three-byte characters first.
    if (lead >= 0xC2 && lead <= 0xDF) {
      if (i + 1 < size && is_continuation(data[i + 1])) {
        i += 2;
        continue;
      }
    } else if (lead >= 0xE1 && lead <= 0xEF && lead != 0xED) {
      if (i + 2 < size && is_continuation(data[i + 1]) && is_continuation(data[i + 2])) {
        i += 3;
        continue;
      }
    }
    std::size_t length;
    unsigned char low = 0x80;   // the second byte's allowed range
    unsigned char high = 0xBF;
    char const* below = "";     // what a second byte under `low` means
    char const* above = "";     // and one over `high`
    if (lead < 0xC0) return fail(data, i, "unexpected continuation byte");
    if (lead < 0xC2) return fail(data, i, "overlong form");
    if (lead < 0xE0) {
      length = 2;
    } else if (lead < 0xF0) {
      length = 3;
      if (lead == 0xE0) low = 0xA0, below = "overlong form";
      if (lead == 0xED) high = 0x9F, above = "encoded surrogate";
    } else if (lead < 0xF5) {
      length = 4;
      if (lead == 0xF0) low = 0x90, below = "overlong form";
      if (lead == 0xF4) high = 0x8F, above = "above U+10FFFF";
    } else if (lead < 0xF8) {
      return fail(data, i, "above U+10FFFF");
    } else {
      return fail(data, i, "invalid byte");
    }
    for (std::size_t k = 1; k < length; ++k) {
      if (i + k >= size) {  // the next block completes it
        advance(data, i);
        return i;
      }
      unsigned char const b = data[i + k];
      if (!is_continuation(b)) return fail(data, i, "truncated sequence");
      if (k == 1 && b < low) return fail(data, i, below);
      if (k == 1 && b > high) return fail(data, i, above);
    }
    i += length;
  }
  advance(data, i);
  return i;
}

std::size_t checker::check_utf16(unsigned char const* data, std::size_t size) {
  std::size_t i = 0;
  while (i + 2 <= size) {
    std::uint32_t const u = unit16(data + i, big_);
    if (u < 0xD800 || u > 0xDFFF) {
      i += 2;
      continue;
    }
    if (u >= 0xDC00) return fail(data, i, "lone surrogate");
    if (i + 4 > size) break;  // the partner is in the next block
    std::uint32_t const next = unit16(data + i + 2, big_);
    if (next < 0xDC00 || next > 0xDFFF) return fail(data, i, "lone surrogate");
    i += 4;
  }
  advance(data, i);
  return i;
}

std::size_t checker::check_utf32(unsigned char const* data, std::size_t size) {
  std::size_t i = 0;
  for (; i + 4 <= size; i += 4) {
    std::uint32_t const u = unit32(data + i, big_);
    if (u > 0x10FFFF) return fail(data, i, "above U+10FFFF");
    if (u >= 0xD800 && u <= 0xDFFF) return fail(data, i, "encoded surrogate");
  }
  advance(data, i);
  return i;
}

void checker::advance(unsigned char const* data, std::size_t size) {
  offset_ += size;
  unsigned const unit = unit_size(form_);
  // Characters since the last line feed, counted from the end backwards.
  std::size_t newlines = 0;
  std::size_t last = size;  // the byte after the last line feed
  if (unit == 1) {
    for (std::size_t i = 0; i < size; ++i) newlines += data[i] == '\n';
    if (newlines != 0) {
      last = static_cast<unsigned char const*>(::memrchr(data, '\n', size)) - data + 1;
    }
  } else {
    for (std::size_t i = 0; i < size; i += unit) {
      std::uint32_t const u = unit == 2 ? unit16(data + i, big_) : unit32(data + i, big_);
      if (u == 0x0A) {
        ++newlines;
        last = i + unit;
      }
    }
  }
  std::size_t const from = newlines != 0 ? last : 0;
  std::uint64_t characters = 0;
  if (unit == 1) {
    for (std::size_t i = from; i < size; ++i) characters += !is_continuation(data[i]);
  } else if (unit == 2) {
    for (std::size_t i = from; i < size; i += 2) {
      std::uint32_t const u = unit16(data + i, big_);
      characters += u < 0xDC00 || u > 0xDFFF;
    }
  } else {
    characters = (size - from) / 4;
  }
  line_ += newlines;
  column_ = (newlines != 0 ? 1 : column_) + characters;
}

}  // namespace utf
}  // namespace vexa_cli
