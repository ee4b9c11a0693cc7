// vexa fuzzing — the six transforms against the plain rules.
//
// check_from(text) runs both transforms that start from the text's encoding
// and compares each result with unicode_reference.hpp, whole. With `chain`
// the results go through the transforms once more (UTF-8 -> UTF-16 -> UTF-32
// and so on), so that text the first step made well formed reaches the other
// kernels too.
#ifndef VEXA_FUZZ_UNICODE_CHECKS_HPP
#define VEXA_FUZZ_UNICODE_CHECKS_HPP

#include <string>

#include "fuzz_support.hpp"
#include "unicode_reference.hpp"
#include "unicode_transforms.hpp"
#include "vexa/strings/unicode.hpp"

namespace vexa_fuzz {

template <typename Got, typename Want, typename Source>
void expect_same(char const* transform, Source const& source, Got const& got, Want const& want) {
  VEXA_FUZZ_CHECK(static_cast<Want const&>(got) == want,
                  std::string(transform) + " of " + hex(source) + "\n  gave     " + hex(got) +
                      "\n  expected " + hex(want));
}

inline void check_from(vexa::strings::ustring8 const& text, bool chain,
                       unicode_transforms const& t = library_transforms());
inline void check_from(vexa::strings::ustring16 const& text, bool chain,
                       unicode_transforms const& t = library_transforms());
inline void check_from(vexa::strings::ustring32 const& text, bool chain,
                       unicode_transforms const& t = library_transforms());

inline void check_from(vexa::strings::ustring8 const& text, bool chain, unicode_transforms const& t) {
  vexa::strings::ustring16 const to16 = t.utf8_to_utf16(text);
  expect_same("utf8_to_utf16", text, to16, reference::utf8_to_utf16(text));
  vexa::strings::ustring32 const to32 = t.utf8_to_utf32(text);
  expect_same("utf8_to_utf32", text, to32, reference::utf8_to_utf32(text));
  if (chain) {
    check_from(to16, false, t);
    check_from(to32, false, t);
  }
}

inline void check_from(vexa::strings::ustring16 const& text, bool chain, unicode_transforms const& t) {
  vexa::strings::ustring8 const to8 = t.utf16_to_utf8(text);
  expect_same("utf16_to_utf8", text, to8, reference::utf16_to_utf8(text));
  vexa::strings::ustring32 const to32 = t.utf16_to_utf32(text);
  expect_same("utf16_to_utf32", text, to32, reference::utf16_to_utf32(text));
  if (chain) {
    check_from(to8, false, t);
    check_from(to32, false, t);
  }
}

inline void check_from(vexa::strings::ustring32 const& text, bool chain, unicode_transforms const& t) {
  vexa::strings::ustring8 const to8 = t.utf32_to_utf8(text);
  expect_same("utf32_to_utf8", text, to8, reference::utf32_to_utf8(text));
  vexa::strings::ustring16 const to16 = t.utf32_to_utf16(text);
  expect_same("utf32_to_utf16", text, to16, reference::utf32_to_utf16(text));
  if (chain) {
    check_from(to8, false, t);
    check_from(to16, false, t);
  }
}

}  // namespace vexa_fuzz

#endif  // VEXA_FUZZ_UNICODE_CHECKS_HPP
