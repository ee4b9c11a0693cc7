// The AVX-512 kernels run over SIMDe's software model wherever it is
// installed (fuzz/unicode_avx512_model.hpp), so that they are checked on
// machines without AVX-512 too; the checks are those of
// unicode_kernels_test.cpp. Where the processor has AVX-512, the library's
// own build of the same kernels is checked there as well.
#include "strings/unicode_kernel_sets.hpp"

#include <gtest/gtest.h>

#include "unicode_avx512_model.hpp"

namespace vexa_test {

#if defined(VEXA_HAVE_AVX512_MODEL)
std::vector<vexa_fuzz::unicode_transforms> modelled_kernel_sets() { return {vexa_fuzz::avx512_model_transforms()}; }

TEST(UnicodeAvx512, ModelIsInstalled) { SUCCEED(); }
#else
std::vector<vexa_fuzz::unicode_transforms> modelled_kernel_sets() { return {}; }

TEST(UnicodeAvx512, ModelIsInstalled) { GTEST_SKIP() << "SIMDe (libsimde-dev) is not installed"; }
#endif

}  // namespace vexa_test
