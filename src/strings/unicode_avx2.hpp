// The few register moves every AVX2 Unicode kernel uses, and the target
// attribute their functions carry (the library is built for the x86-64
// baseline; these run only where the processor has AVX2).
#ifndef VEXA_SRC_STRINGS_UNICODE_AVX2_HPP
#define VEXA_SRC_STRINGS_UNICODE_AVX2_HPP

#include <immintrin.h>

#define VEXA_AVX2 __attribute__((target("avx2,bmi,bmi2,popcnt")))

namespace VEXA_2_10 {
namespace strings {
namespace _private {
namespace avx2 {

VEXA_AVX2 inline __m256i load(void const* p) { return _mm256_loadu_si256(static_cast<__m256i const*>(p)); }
VEXA_AVX2 inline __m128i load128(void const* p) { return _mm_loadu_si128(static_cast<__m128i const*>(p)); }
VEXA_AVX2 inline void store(void* p, __m256i v) { _mm256_storeu_si256(static_cast<__m256i*>(p), v); }
VEXA_AVX2 inline void store128(void* p, __m128i v) { _mm_storeu_si128(static_cast<__m128i*>(p), v); }
// One bit per byte, and one per 32-bit lane.
VEXA_AVX2 inline unsigned mask8(__m256i v) { return static_cast<unsigned>(_mm256_movemask_epi8(v)); }
VEXA_AVX2 inline unsigned mask32(__m256i v) {
  return static_cast<unsigned>(_mm256_movemask_ps(_mm256_castsi256_ps(v)));
}

}  // namespace avx2
}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_STRINGS_UNICODE_AVX2_HPP
