// AVX2 kernels from UTF-16 and UTF-32 to UTF-8 (see unicode_kernels.hpp).
#include "strings/unicode_kernels.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {

#if defined(__x86_64__) || defined(__i386__)

void avx2_encode(u16 const*& p, u16 const* end, u8*& o) { ssse3_encode(p, end, o); }
void avx2_encode(wchar_t const*& p, wchar_t const* end, u8*& o) { ssse3_encode(p, end, o); }

#endif

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
