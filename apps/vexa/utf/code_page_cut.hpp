// Where `vexa utf` may cut a block of code-page text so that no character is
// split between two conversions.
//
// Single-byte pages cut anywhere. The double-byte pages (932, 936, 949, 950),
// the system's own code set (which may be any multi-byte set) and 1255 and
// 1258 (where a letter waits for a combining mark) cut after the last byte
// below 0x80: in all of them such a byte is never a lead byte, so it ends a
// character (an ASCII one or a trail byte). A block without such a byte is
// walked pair by pair from its start, which is a character boundary, so the
// carry stays below two bytes and memory stays bounded; a malformed pair in
// such a run may then be read differently than one whole conversion would.
//
//   complete_prefix(code_page::cp932, "ab\x82\xA0\x82", 5)   // 4
//   complete_prefix(code_page::cp1252, "ab\xE9", 3)          // 3
#ifndef VEXA_APPS_UTF_CODE_PAGE_CUT_HPP
#define VEXA_APPS_UTF_CODE_PAGE_CUT_HPP

#include <cstddef>

#include "vexa/strings/code_page.hpp"

namespace vexa_cli {
namespace utf {

// complete_prefix
// The length of the longest prefix of `data[0..size)` (which starts at a
// character boundary) that can be converted now; the rest waits for the next
// block. Returns `size` for single-byte pages, 0 when nothing can be cut.
//   complete_prefix(code_page::cp936, "\xC4\xE3", 2)    // 2
//   complete_prefix(code_page::cp936, "\xC4", 1)        // 0
std::size_t complete_prefix(vexa::strings::code_page::encoding_type page, unsigned char const* data,
                            std::size_t size);

}  // namespace utf
}  // namespace vexa_cli

#endif  // VEXA_APPS_UTF_CODE_PAGE_CUT_HPP
