// AVX2 kernels from UTF-8 to UTF-16 and UTF-32 (see unicode_kernels.hpp).
#include "strings/unicode_kernels.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {

#if defined(__x86_64__) || defined(__i386__)

void avx2_decode(u8 const*& p, u8 const* end, u16*& o) { ssse3_decode(p, end, o); }
void avx2_decode(u8 const*& p, u8 const* end, wchar_t*& o) { ssse3_decode(p, end, o); }

#endif

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10
