// The six transforms of one kernel set, so that the same checks run on the
// sets the library picks on this machine and on sets built over a software
// model of instructions it lacks.
#ifndef VEXA_TESTS_STRINGS_UNICODE_KERNEL_SETS_HPP
#define VEXA_TESTS_STRINGS_UNICODE_KERNEL_SETS_HPP

#include <string>
#include <vector>

#include "vexa/strings/unicode.hpp"

namespace vexa_test {

using vexa::strings::ustring16;
using vexa::strings::ustring32;
using vexa::strings::ustring8;

struct kernel_transforms {
  std::string name;
  ustring16 (*utf8_to_utf16)(ustring8 const&);
  ustring32 (*utf8_to_utf32)(ustring8 const&);
  ustring8 (*utf16_to_utf8)(ustring16 const&);
  ustring32 (*utf16_to_utf32)(ustring16 const&);
  ustring8 (*utf32_to_utf8)(ustring32 const&);
  ustring16 (*utf32_to_utf16)(ustring32 const&);
};

// The sets this machine cannot run, over the software model; empty where the
// model is not installed (unicode_avx512_test.cpp).
std::vector<kernel_transforms> modelled_kernel_sets();

}  // namespace vexa_test

#endif  // VEXA_TESTS_STRINGS_UNICODE_KERNEL_SETS_HPP
