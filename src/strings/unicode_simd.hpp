// Block kernels of the Unicode transforms for processors with SSSE3 (byte
// shuffles). They convert whole blocks of text that need no special care and
// leave everything else (four-byte sequences, surrogates, malformed text, the
// last few units) to the unit-by-unit code in unicode_transform.cpp, which
// alone decides the results for such text.
#ifndef VEXA_SRC_STRINGS_UNICODE_SIMD_HPP
#define VEXA_SRC_STRINGS_UNICODE_SIMD_HPP

namespace VEXA_2_10 {
namespace strings {
namespace _private {

// Whether the kernels below may be called on this processor.
bool have_block_kernels();

// UTF-8 to UTF-16 (or UTF-32) units. Consumes, from p, well-formed one-, two-
// and three-byte sequences in blocks, as long as at least 18 bytes remain,
// and stops before a four-byte or malformed sequence. The output must have
// room for one unit per byte from p to end.
void decode_blocks(unsigned char const*& p, unsigned char const* end, unsigned short*& o);
void decode_blocks(unsigned char const*& p, unsigned char const* end, wchar_t*& o);

// UTF-16 (or UTF-32) to UTF-8. Consumes blocks of 8 units that hold code
// points up to 0xFFFF and no surrogate (or, from UTF-16, exactly four
// surrogate pairs), while 8 units remain. The output must have
// room for three bytes per unit from p to end, plus 4.
void encode_blocks(unsigned short const*& p, unsigned short const* end, unsigned char*& o);
void encode_blocks(wchar_t const*& p, wchar_t const* end, unsigned char*& o);

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_STRINGS_UNICODE_SIMD_HPP
