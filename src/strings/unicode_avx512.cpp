// The AVX-512 kernel set of the Unicode transforms (see unicode_avx512.hpp).
#include "strings/unicode_kernels.hpp"

#if defined(__x86_64__) || defined(__i386__)
#include <immintrin.h>

// GCC 12 takes the deliberately undefined start values inside its AVX-512
// intrinsics for uninitialised variables once they are inlined here.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#define VEXA_AVX512 __attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi2,avx2,bmi,bmi2,popcnt")))
#include "strings/unicode_avx512.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {

void avx512_decode(u8 const*& p, u8 const* end, u16*& o) { avx512::decode(p, end, o); }
void avx512_decode(u8 const*& p, u8 const* end, wchar_t*& o) { avx512::decode(p, end, o); }
void avx512_encode(u16 const*& p, u16 const* end, u8*& o) { avx512::encode(p, end, o); }
void avx512_encode(wchar_t const*& p, wchar_t const* end, u8*& o) { avx512::encode(p, end, o); }
void avx512_widen(u16 const*& p, u16 const* end, wchar_t*& o) { avx512::widen(p, end, o); }
void avx512_narrow(wchar_t const*& p, wchar_t const* end, u16*& o) { avx512::narrow(p, end, o); }
std::size_t avx512_utf16_length_of_utf8(u8 const* p, std::size_t n) { return avx512::utf8_units<true>(p, n); }
std::size_t avx512_utf32_length_of_utf8(u8 const* p, std::size_t n) { return avx512::utf8_units<false>(p, n); }
std::size_t avx512_utf8_length_of_utf16(u16 const* p, std::size_t n) { return avx512::utf8_length_of_utf16(p, n); }
std::size_t avx512_utf8_length_of_utf32(wchar_t const* p, std::size_t n) { return avx512::utf8_length_of_utf32(p, n); }
std::size_t avx512_utf32_length_of_utf16(u16 const* p, std::size_t n) { return avx512::utf32_length_of_utf16(p, n); }
std::size_t avx512_utf16_length_of_utf32(wchar_t const* p, std::size_t n) { return avx512::utf16_length_of_utf32(p, n); }

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif
