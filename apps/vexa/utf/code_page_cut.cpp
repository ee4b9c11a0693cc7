// Safe cut points in code-page text.
#include "utf/code_page_cut.hpp"

namespace vexa_cli {
namespace utf {
namespace {

using cp = vexa::strings::code_page;

bool double_byte(cp::encoding_type page) {
  return page == cp::cp932 || page == cp::cp936 || page == cp::cp949 || page == cp::cp950;
}

// Pages whose characters (or letters with their marks) may span bytes.
bool needs_cut(cp::encoding_type page) {
  return double_byte(page) || page == cp::system_code_set || page == cp::system_code_set_2 ||
         page == cp::system_code_set_3 || page == cp::cp1255 || page == cp::cp1258;
}

// The byte starts a two-byte character of the page.
bool lead_byte(cp::encoding_type page, unsigned char b) {
  if (page == cp::cp932) return (b >= 0x81 && b <= 0x9F) || (b >= 0xE0 && b <= 0xFC);
  return b >= 0x81 && b <= 0xFE;
}

}  // namespace

std::size_t complete_prefix(cp::encoding_type page, unsigned char const* data, std::size_t size) {
  if (!needs_cut(page)) return size;
  for (std::size_t i = size; i > 0; --i) {
    if (data[i - 1] < 0x80) return i;
  }
  // No byte below 0x80: only the double-byte pages have a known structure;
  // for the others the block is taken whole.
  if (!double_byte(page)) return size;
  std::size_t at = 0;
  while (at < size) {
    std::size_t const length = lead_byte(page, data[at]) ? 2 : 1;
    if (size - at < length) break;
    at += length;
  }
  return at;
}

}  // namespace utf
}  // namespace vexa_cli
