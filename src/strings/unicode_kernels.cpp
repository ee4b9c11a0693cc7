// Chooses the kernel set of the Unicode transforms once, from the
// processor's features, and lets tests and benchmarks force another.
#include "strings/unicode_kernels.hpp"

#include <atomic>

namespace VEXA_2_10 {
namespace strings {
namespace _private {

namespace {

#define VEXA_LENGTH_PASSES(prefix)                                                   \
  prefix##_utf16_length_of_utf8, prefix##_utf32_length_of_utf8,                      \
      prefix##_utf8_length_of_utf16, prefix##_utf8_length_of_utf32,                  \
      prefix##_utf32_length_of_utf16, prefix##_utf16_length_of_utf32

unicode_kernels const portable_set = {
    unicode_kernel::portable, portable_decode, portable_decode, portable_encode, portable_encode,
    portable_widen, portable_narrow, VEXA_LENGTH_PASSES(portable)};

#if defined(__x86_64__) || defined(__i386__)
// SSSE3 adds mixed-text decoding and encoding to the portable runs.
unicode_kernels const ssse3_set = {
    unicode_kernel::ssse3, ssse3_decode, ssse3_decode, ssse3_encode, ssse3_encode,
    portable_widen, portable_narrow, VEXA_LENGTH_PASSES(portable)};

unicode_kernels const avx2_set = {
    unicode_kernel::avx2, avx2_decode, avx2_decode, avx2_encode, avx2_encode,
    avx2_widen, avx2_narrow, VEXA_LENGTH_PASSES(avx2)};

unicode_kernels const avx512_set = {
    unicode_kernel::avx512, avx512_decode, avx512_decode, avx512_encode, avx512_encode,
    avx512_widen, avx512_narrow, VEXA_LENGTH_PASSES(avx512)};

bool cpu_has(unicode_kernel kernel) {
  __builtin_cpu_init();
  switch (kernel) {
    case unicode_kernel::portable: return true;
    case unicode_kernel::ssse3: return __builtin_cpu_supports("ssse3");
    case unicode_kernel::avx2:
      return __builtin_cpu_supports("avx2") && __builtin_cpu_supports("bmi2") &&
             __builtin_cpu_supports("popcnt");
    // The AVX-512 kernels pack their results with VBMI2's compress; a
    // processor with AVX-512 but without it keeps the AVX2 set.
    case unicode_kernel::avx512:
      return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
             __builtin_cpu_supports("avx512vl") && __builtin_cpu_supports("avx512vbmi2") &&
             __builtin_cpu_supports("bmi2") && __builtin_cpu_supports("popcnt");
  }
  return false;
}
#else
bool cpu_has(unicode_kernel kernel) { return kernel == unicode_kernel::portable; }
#endif

#undef VEXA_LENGTH_PASSES

unicode_kernels const* set_of(unicode_kernel kernel) {
  if (!cpu_has(kernel)) return nullptr;
  switch (kernel) {
    case unicode_kernel::portable: return &portable_set;
#if defined(__x86_64__) || defined(__i386__)
    case unicode_kernel::ssse3: return &ssse3_set;
    case unicode_kernel::avx2: return &avx2_set;
    case unicode_kernel::avx512: return &avx512_set;
#else
    default: return nullptr;
#endif
  }
  return nullptr;
}

unicode_kernels const* best_set() {
  for (unicode_kernel k : {unicode_kernel::avx512, unicode_kernel::avx2, unicode_kernel::ssse3}) {
    if (unicode_kernels const* set = set_of(k)) return set;
  }
  return &portable_set;
}

std::atomic<unicode_kernels const*>& chosen() {
  static std::atomic<unicode_kernels const*> set{best_set()};
  return set;
}

}  // namespace

unicode_kernels const& active_kernels() { return *chosen().load(std::memory_order_relaxed); }

bool unicode_kernel_available(unicode_kernel kernel) { return set_of(kernel) != nullptr; }

bool force_unicode_kernel(unicode_kernel kernel) {
  unicode_kernels const* set = set_of(kernel);
  if (set == nullptr) return false;
  chosen().store(set, std::memory_order_relaxed);
  return true;
}

unicode_kernel current_unicode_kernel() { return active_kernels().level; }

char const* unicode_kernel_name(unicode_kernel kernel) {
  switch (kernel) {
    case unicode_kernel::portable: return "portable";
    case unicode_kernel::ssse3: return "ssse3";
    case unicode_kernel::avx2: return "avx2";
    case unicode_kernel::avx512: return "avx512";
  }
  return "unknown";
}

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
