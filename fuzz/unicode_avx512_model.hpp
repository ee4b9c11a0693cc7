// vexa fuzzing — the library's AVX-512 kernels built over SIMDe's software
// model of the instructions, so that tests and fuzz targets run them on any
// x86-64 machine. The model's gaps (compress, some conversions and
// compares) are filled below from the instructions' definitions, plainly.
// Defines VEXA_HAVE_AVX512_MODEL and avx512_model_transforms() where SIMDe
// (libsimde-dev) is installed.
#ifndef VEXA_FUZZ_UNICODE_AVX512_MODEL_HPP
#define VEXA_FUZZ_UNICODE_AVX512_MODEL_HPP

#include "unicode_transforms.hpp"

#if __has_include(<simde/x86/avx512.h>)
#define VEXA_HAVE_AVX512_MODEL 1
// The model passes its vector types by value between inline functions of
// this one file; the ABI those would have across files does not matter.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpsabi"
#define SIMDE_ENABLE_NATIVE_ALIASES
#include <simde/x86/avx512.h>

#include <cstdint>
#include <cstring>

#include "strings/unicode_kernels.hpp"
#include "strings/unicode_walk.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace _private {
namespace avx512_modelled {

// What the model lacks, written plainly from the instructions' definitions.
inline unsigned _pdep_u32(unsigned source, unsigned mask) {
  unsigned result = 0;
  for (unsigned bit = 1; mask != 0; mask &= mask - 1, bit <<= 1) {
    if (source & bit) result |= mask & (~mask + 1);
  }
  return result;
}

template <typename Lane, typename Mask>
simde__m512i compress(Mask keep, simde__m512i a) {
  Lane in[64 / sizeof(Lane)];
  Lane out[64 / sizeof(Lane)] = {};
  simde_mm512_storeu_si512(in, a);
  unsigned n = 0;
  for (unsigned i = 0; i < 64 / sizeof(Lane); ++i) {
    if ((keep >> i) & 1u) out[n++] = in[i];
  }
  return simde_mm512_loadu_si512(out);
}
// Lane-wise operations the model has no name for.
template <typename To, typename From, unsigned N, typename Source>
simde__m512i widen(Source a) {
  From in[N];
  To out[N];
  std::memcpy(in, &a, sizeof in);
  for (unsigned i = 0; i < N; ++i) out[i] = in[i];
  return simde_mm512_loadu_si512(out);
}
inline simde__m512i _mm512_cvtepu8_epi16(simde__m256i a) { return widen<std::uint16_t, std::uint8_t, 32>(a); }
inline simde__m512i _mm512_cvtepu8_epi32(simde__m128i a) { return widen<std::uint32_t, std::uint8_t, 16>(a); }
inline simde__m512i _mm512_cvtepu16_epi32(simde__m256i a) { return widen<std::uint32_t, std::uint16_t, 16>(a); }

template <typename To, typename From, unsigned N, typename Result>
Result truncate(simde__m512i a) {
  From in[N];
  To out[N];
  Result r;
  simde_mm512_storeu_si512(in, a);
  for (unsigned i = 0; i < N; ++i) out[i] = static_cast<To>(in[i]);
  std::memcpy(&r, out, sizeof out);
  return r;
}
inline simde__m128i _mm512_cvtepi32_epi8(simde__m512i a) { return truncate<std::uint8_t, std::uint32_t, 16, simde__m128i>(a); }
inline simde__m256i _mm512_cvtepi32_epi16(simde__m512i a) {
  return truncate<std::uint16_t, std::uint32_t, 16, simde__m256i>(a);
}

template <typename Lane, typename Compare>
std::uint64_t compare(simde__m512i a, simde__m512i b, Compare test) {
  Lane x[64 / sizeof(Lane)], y[64 / sizeof(Lane)];
  simde_mm512_storeu_si512(x, a);
  simde_mm512_storeu_si512(y, b);
  std::uint64_t mask = 0;
  for (unsigned i = 0; i < 64 / sizeof(Lane); ++i) mask |= std::uint64_t{test(x[i], y[i])} << i;
  return mask;
}
inline std::uint32_t _mm512_cmpeq_epi16_mask(simde__m512i a, simde__m512i b) {
  return static_cast<std::uint32_t>(compare<std::uint16_t>(a, b, [](auto x, auto y) { return x == y; }));
}
inline std::uint16_t _mm512_cmplt_epi32_mask(simde__m512i a, simde__m512i b) {
  return static_cast<std::uint16_t>(compare<std::int32_t>(a, b, [](auto x, auto y) { return x < y; }));
}
inline std::uint16_t _mm512_cmplt_epu32_mask(simde__m512i a, simde__m512i b) {
  return static_cast<std::uint16_t>(compare<std::uint32_t>(a, b, [](auto x, auto y) { return x < y; }));
}

#ifndef _mm512_maskz_compress_epi16
inline simde__m512i _mm512_maskz_compress_epi16(std::uint32_t keep, simde__m512i a) {
  return compress<std::uint16_t>(keep, a);
}
#endif
#ifndef _mm512_maskz_compress_epi8
inline simde__m512i _mm512_maskz_compress_epi8(std::uint64_t keep, simde__m512i a) {
  return compress<std::uint8_t>(keep, a);
}
#endif

}  // namespace avx512_modelled
}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#define VEXA_AVX512
#define VEXA_AVX512_KERNELS avx512_modelled
#include "strings/unicode_avx512.hpp"

namespace vexa_fuzz {
namespace avx512_model {

namespace internal = vexa::strings::_private;
using internal::u16;
using internal::u8;
using vexa::strings::ustring16;
using vexa::strings::ustring32;
using vexa::strings::ustring8;

inline void decode16(u8 const*& p, u8 const* end, u16*& o) { internal::avx512_modelled::decode(p, end, o); }
inline void decode32(u8 const*& p, u8 const* end, wchar_t*& o) { internal::avx512_modelled::decode(p, end, o); }
inline void encode16(u16 const*& p, u16 const* end, u8*& o) { internal::avx512_modelled::encode(p, end, o); }
inline void encode32(wchar_t const*& p, wchar_t const* end, u8*& o) { internal::avx512_modelled::encode(p, end, o); }

inline internal::unicode_kernels const kernels = {
    internal::unicode_kernel::avx512, decode16, decode32, encode16, encode32,
    internal::avx512_modelled::widen, internal::avx512_modelled::narrow,
    internal::avx512_modelled::utf8_units<true>, internal::avx512_modelled::utf8_units<false>,
    internal::avx512_modelled::utf8_length_of_utf16, internal::avx512_modelled::utf8_length_of_utf32,
    internal::avx512_modelled::utf32_length_of_utf16, internal::avx512_modelled::utf16_length_of_utf32};

inline ustring16 utf8_to_utf16(ustring8 const& s) { return internal::walk::from_utf8<ustring16>(s, false, kernels); }
inline ustring32 utf8_to_utf32(ustring8 const& s) { return internal::walk::from_utf8<ustring32>(s, true, kernels); }
inline ustring8 utf16_to_utf8(ustring16 const& s) { return internal::walk::to_utf8<u16>(s, kernels); }
inline ustring32 utf16_to_utf32(ustring16 const& s) { return internal::walk::utf16_to_utf32(s, kernels); }
inline ustring8 utf32_to_utf8(ustring32 const& s) { return internal::walk::to_utf8<wchar_t>(s, kernels); }
inline ustring16 utf32_to_utf16(ustring32 const& s) { return internal::walk::utf32_to_utf16(s, kernels); }

}  // namespace avx512_model

inline unicode_transforms const& avx512_model_transforms() {
  static unicode_transforms const model = {
      "avx512 (software model)",   avx512_model::utf8_to_utf16,  avx512_model::utf8_to_utf32,
      avx512_model::utf16_to_utf8, avx512_model::utf16_to_utf32, avx512_model::utf32_to_utf8,
      avx512_model::utf32_to_utf16};
  return model;
}

}  // namespace vexa_fuzz
#pragma GCC diagnostic pop
#endif

#endif  // VEXA_FUZZ_UNICODE_AVX512_MODEL_HPP
