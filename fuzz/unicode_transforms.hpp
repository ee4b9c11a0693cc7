// vexa fuzzing — the six transforms of one kernel set, so that the same
// checks run on the library's own transforms (the set it picked or was made
// to use) and on kernel sets built over a software model of instructions
// the machine lacks (unicode_avx512_model.hpp).
#ifndef VEXA_FUZZ_UNICODE_TRANSFORMS_HPP
#define VEXA_FUZZ_UNICODE_TRANSFORMS_HPP

#include "vexa/strings/unicode.hpp"

namespace vexa_fuzz {

struct unicode_transforms {
  char const* name;
  vexa::strings::ustring16 (*utf8_to_utf16)(vexa::strings::ustring8 const&);
  vexa::strings::ustring32 (*utf8_to_utf32)(vexa::strings::ustring8 const&);
  vexa::strings::ustring8 (*utf16_to_utf8)(vexa::strings::ustring16 const&);
  vexa::strings::ustring32 (*utf16_to_utf32)(vexa::strings::ustring16 const&);
  vexa::strings::ustring8 (*utf32_to_utf8)(vexa::strings::ustring32 const&);
  vexa::strings::ustring16 (*utf32_to_utf16)(vexa::strings::ustring32 const&);
};

inline unicode_transforms const& library_transforms() {
  namespace s = vexa::strings;
  static unicode_transforms const library = {"library",         s::utf8_to_utf16, s::utf8_to_utf32,
                                             s::utf16_to_utf8,  s::utf16_to_utf32, s::utf32_to_utf8,
                                             s::utf32_to_utf16};
  return library;
}

}  // namespace vexa_fuzz

#endif  // VEXA_FUZZ_UNICODE_TRANSFORMS_HPP
