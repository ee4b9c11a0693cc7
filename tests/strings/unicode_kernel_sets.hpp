// The kernel sets the Unicode tests run besides the library's own: those
// built over a software model of instructions this machine may lack.
#ifndef VEXA_TESTS_STRINGS_UNICODE_KERNEL_SETS_HPP
#define VEXA_TESTS_STRINGS_UNICODE_KERNEL_SETS_HPP

#include <vector>

#include "unicode_transforms.hpp"

namespace vexa_test {

// Empty where the model is not installed (unicode_avx512_test.cpp).
std::vector<vexa_fuzz::unicode_transforms> modelled_kernel_sets();

}  // namespace vexa_test

#endif  // VEXA_TESTS_STRINGS_UNICODE_KERNEL_SETS_HPP
