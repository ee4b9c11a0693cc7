// The strict check of `vexa utf`'s input, block by block.
//
// The library's transforms are lenient on purpose (a bad sequence becomes
// '?' or the text "-1"), so the program checks its input itself and names
// the first fault exactly:
//   - where: the byte offset from the start of the input (a byte-order mark
//     included), the line (1 + the number of U+000A before it) and the
//     column (1 + the number of characters since the last U+000A);
//   - what: "truncated sequence" (a UTF-8 sequence cut short by a byte that
//     does not continue it, or by the end), "unexpected continuation byte"
//     (80..BF where a character should begin), "overlong form" (C0, C1, or
//     E0/F0 followed by a byte that makes a shorter form possible), "encoded
//     surrogate" (D800..DFFF in UTF-8 or UTF-32), "above U+10FFFF" (F4 90 and
//     up, leads F5..F7, UTF-32 values), "invalid byte" (F8..FF), "lone
//     surrogate" (a UTF-16 surrogate without its partner) and "truncated
//     code unit" (the input ends inside a UTF-16 or UTF-32 unit).
// A character cut by the end of a block is not a fault: check() stops before
// it and the caller carries its (at most three) bytes into the next block.
//
//   checker c(form::utf8, 0);
//   std::size_t ok = c.check(block, size);   // whole, valid characters
//   if (c.failed()) report(c.failure());     // the fault begins at block + ok
#ifndef VEXA_APPS_UTF_CHECKER_HPP
#define VEXA_APPS_UTF_CHECKER_HPP

#include <cstddef>
#include <cstdint>

#include "utf/encoding.hpp"

namespace vexa_cli {
namespace utf {

struct fault {
  std::uint64_t byte = 0;
  std::uint64_t line = 1;
  std::uint64_t column = 1;
  char const* what = "";
};

class checker {
 public:
  // checker
  // Checks text of form `f` whose first byte is at offset `start` of the
  // input (the length of a byte-order mark before it, or 0).
  //   checker c(form::utf16le, 2);   // after FF FE
  //   checker c(form::utf8, 0);
  checker(form f, std::uint64_t start);

  // check
  // Returns the length of the longest prefix of `data[0..size)` made of
  // whole, valid characters. When it is shorter than `size`, either a fault
  // begins right after it (failed() is then true) or the rest is the start
  // of a character that the next block completes (fewer than four bytes).
  //   c.check("a\xC3", 2)   // 1, not failed: C3 waits for its second byte
  //   c.check("a\x80", 2)   // 1, failed: unexpected continuation byte at 1
  std::size_t check(unsigned char const* data, std::size_t size);

  // finish
  // The input ended with the `size` bytes of an unfinished character left
  // (what check() left over); records and returns the fault.
  //   c.finish("\xE2\x82", 2).what   // "truncated sequence"
  //   c.finish("\0", 1).what         // "truncated code unit" (UTF-16)
  fault const& finish(unsigned char const* data, std::size_t size);

  bool failed() const { return failed_; }
  fault const& failure() const { return fault_; }

  // ---- implementation details --------------------------------------------------
 private:
  std::size_t check_utf8(unsigned char const* data, std::size_t size);
  std::size_t check_utf16(unsigned char const* data, std::size_t size);
  std::size_t check_utf32(unsigned char const* data, std::size_t size);
  // Moves the position past `size` bytes of valid text.
  void advance(unsigned char const* data, std::size_t size);
  std::size_t fail(unsigned char const* data, std::size_t at, char const* what);

  form form_;
  bool big_;
  std::uint64_t offset_;      // input offset of the next byte to check
  std::uint64_t line_ = 1;
  std::uint64_t column_ = 1;  // column of the next character
  bool failed_ = false;
  fault fault_{};
};

}  // namespace utf
}  // namespace vexa_cli

#endif  // VEXA_APPS_UTF_CHECKER_HPP
