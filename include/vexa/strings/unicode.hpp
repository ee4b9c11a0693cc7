// vexa — Unicode transforms between ustring8, ustring16 and ustring32, and
// decoding of single characters.
//
// The transforms are pure arithmetic on code units; no locale is consulted.
// They do not throw on bad text. A transform that meets an unpaired surrogate
// or a malformed sequence returns the two-character text "-1" in the target
// encoding instead of any converted text, so a caller that needs to tell a
// failure from a genuine "-1" compares the input with "-1" as well.
//
// Decoding is lenient on purpose: overlong forms, encoded surrogates and
// values above 0x10FFFF are not rejected (lead bytes F5..F7 decode to values
// up to 0x1FFFFF). Callers that need strict text check it with
// gh2::validate_utf8 first.
//
//   strings::utf8_to_utf16("h\xC3\xA9")   // {0x0068, 0x00E9}
//   strings::utf16_to_utf8({0xDC00})      // "-1" (a lone surrogate)
#ifndef VEXA_STRINGS_UNICODE_HPP
#define VEXA_STRINGS_UNICODE_HPP

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace strings {

// ---- decoding one character -------------------------------------------------

// unichar (UTF-8)
// Decodes the sequence at `pos` of the `n`-byte buffer `s` and sets `used` to
// its length in bytes. On failure (pos not below n, a byte 80..BF or F8..FF
// as lead, a sequence cut short by `n`, a following byte not 10xxxxxx) returns
// 63 ('?') and sets `used` to the all-ones value. Only s[pos..n) is read.
//   unichar("\xE2\x82\xAC", 3, 0, used)   // 0x20AC, used == 3
//   unichar("\xE2\x82", 2, 0, used)       // 63, used == ~0ul
VEXA_API unsigned int unichar(char const* s, unsigned long n, unsigned long pos,
                              unsigned long& used);

// unichar (UTF-16)
// A unit outside D800..DFFF is returned with `used` = 1; a high surrogate
// followed within `n` by a low one gives the code point with `used` = 2.
// A lone surrogate or pos not below n gives 63 and `used` all-ones.
//   unichar({0xD83D, 0xDE00}, 2, 0, used)   // 0x1F600, used == 2
//   unichar({0xDE00}, 1, 0, used)           // 63, used == ~0ul
VEXA_API unsigned int unichar(unsigned short const* s, unsigned long n,
                              unsigned long pos, unsigned long& used);

// unichar (UTF-32)
// The unit at `pos`, unchanged, with `used` = 1; 63 and all-ones when pos is
// not below n.
//   unichar(L"ab", 2, 1, used)   // 'b', used == 1
//   unichar(L"ab", 2, 2, used)   // 63, used == ~0ul
VEXA_API unsigned int unichar(wchar_t const* s, unsigned long n, unsigned long pos,
                              unsigned long& used);

// character_index (UTF-8)
// The byte offset of character number `index`. Returns all-ones when `index`
// is not below the size in bytes or when a malformed sequence is met, 0 for
// index 0. The walk counts characters, not bytes, and does not stop at the
// end of the string: an index above the number of characters walks through
// the terminator one byte per step (bytes beyond the terminator count as 0;
// nothing outside the string is read).
//   character_index(ustring8("a\xC3\xA9z"), 2)   // 3
//   character_index(ustring8("\xC3\xA9\xC3\xA9"), 3)   // 5 (past the end)
VEXA_API unsigned long character_index(ustring8 const& s, unsigned long index);

// character_index (UTF-16)
// The unit offset of character number `index`; a surrogate pair counts as
// one character. All-ones when `index` is not below the size or a high
// surrogate is not followed by a low one. The low-surrogate test for a
// single-unit step looks at the FIRST unit of the string: a string that
// begins with a low surrogate fails every such step, while a stray low
// surrogate elsewhere counts as one character.
//   character_index({0xD83D, 0xDE00, 'x'}, 1)   // 2
//   character_index({0xDC00, 'x', 'y'}, 1)     // all-ones
VEXA_API unsigned long character_index(ustring16 const& s, unsigned long index);

// ---- transforms -------------------------------------------------------------

// utf32_to_utf8
// Each unit is compared as a signed 32-bit value: below 0x80 one byte (so a
// negative unit becomes one byte holding its low eight bits), below 0x800 two
// bytes, up to 0xFFFF three, up to 0x10FFFF four; units above 0x10FFFF are
// skipped silently. Any surrogate unit (D800..DFFF) makes the result "-1".
//   utf32_to_utf8(L"\x20AC")    // "\xE2\x82\xAC"
//   utf32_to_utf8(L"a\xD800")   // "-1"
VEXA_API ustring8 utf32_to_utf8(ustring32 const& text);

// utf16_to_utf8
// Surrogate pairs are combined; a lone low surrogate, or a high surrogate not
// followed by a low one (the last unit included), makes the result "-1".
//   utf16_to_utf8({0xD83D, 0xDE00})   // "\xF0\x9F\x98\x80"
//   utf16_to_utf8({'a', 0xD83D})      // "-1"
VEXA_API ustring8 utf16_to_utf8(ustring16 const& text);

// utf8_to_utf32
// Decodes each character as unichar does. A malformed sequence as the first
// character gives the one-character result "?" (the conversion stops there);
// anywhere later it appends '?' and resumes at the next byte. Never "-1".
//   utf8_to_utf32("a\xC3\xA9")   // {'a', 0xE9}
//   utf8_to_utf32("a\x80z")      // {'a', '?', 'z'}
VEXA_API ustring32 utf8_to_utf32(ustring8 const& text);

// utf16_to_utf32
// Pairs surrogates as utf16_to_utf8 does; a lone surrogate makes the result
// the UTF-32 text "-1".
//   utf16_to_utf32({0xD83D, 0xDE00})   // {0x1F600}
//   utf16_to_utf32({0xDC00})           // L"-1"
VEXA_API ustring32 utf16_to_utf32(ustring16 const& text);

// utf8_to_utf16
// One unit per one-, two- or three-byte sequence (surrogates and overlong
// forms pass through); a four-byte sequence gives a pair computed from the
// bits. A lead byte 80..BF or F8..FF, a missing or wrong continuation byte
// makes the result the UTF-16 text "-1".
//   utf8_to_utf16("\xF0\x9F\x98\x80")   // {0xD83D, 0xDE00}
//   utf8_to_utf16("\xC3(")              // u"-1"
VEXA_API ustring16 utf8_to_utf16(ustring8 const& text);

// utf32_to_utf16
// A unit below 0xFFFF (compared signed, so negative units give their low 16
// bits) that is no surrogate gives one unit. A unit from 0xFFFF to 0x10FFFF
// gives the pair ((c >> 10) + 0xD800, (c & 0x3FF) + 0xDC00) WITHOUT first
// subtracting 0x10000: U+1F600 becomes D87D DE00 and 0xFFFF itself a pair.
// This differs on purpose from utf8_to_utf16 and is kept for compatibility
// with stored data. A surrogate or a unit above 0x10FFFF gives "-1".
//   utf32_to_utf16(L"\x1F600")   // {0xD87D, 0xDE00}
//   utf32_to_utf16(L"\xD800")    // u"-1"
VEXA_API ustring16 utf32_to_utf16(ustring32 const& text);

// ---- lengths ----------------------------------------------------------------

// string_length
// The number of units before the first 0 (pointer forms), or the string's
// size in units (string forms). A null pointer has length 0.
//   string_length("h\xC3\xA9")             // 3
//   string_length(ustring32(L"h\xE9"))     // 2
VEXA_API unsigned long string_length(char const* text);
VEXA_API unsigned long string_length(unsigned short const* text);
VEXA_API unsigned long string_length(wchar_t const* text);
VEXA_API unsigned long string_length(ustring8 const& text);
VEXA_API unsigned long string_length(ustring16 const& text);
VEXA_API unsigned long string_length(ustring32 const& text);

namespace gh2 {

// get_utf8_length
// The length of the sequence that starts at s[0], from its lead byte alone:
// 11110xxx 4, 1110xxxx 3, 110xxxxx 2, 0xxxxxxx 1; 0 for any other lead, an
// empty buffer (n == 0) or a null pointer.
//   get_utf8_length("\xE2\x82\xAC", 3)   // 3
//   get_utf8_length("\x80", 1)           // 0
VEXA_API unsigned long get_utf8_length(unsigned char const* s, unsigned long n);
VEXA_API unsigned long get_utf8_length(char const* s, unsigned long n);

// validate_utf8
// Whether the FIRST sequence of the buffer is well formed: a valid lead byte,
// n at least its length, and every following byte of it 10xxxxxx. False for
// n == 0 or a null pointer. Overlong forms and surrogates are not checked.
//   validate_utf8("\xC3\xA9", 2)   // true
//   validate_utf8("\xC3(", 2)      // false
VEXA_API bool validate_utf8(unsigned char const* s, unsigned long n);
VEXA_API bool validate_utf8(char const* s, unsigned long n);

}  // namespace gh2

// ---- implementation details ---------------------------------------------------
//
// Not for callers. The transforms move text in blocks with the widest kernels
// the processor has, chosen once at the first transform; every kernel gives
// the same results. Tests and benchmarks force one set to run each that the
// machine has; the library reads no environment variable to choose.
namespace _private {

enum class unicode_kernel { portable, ssse3, avx2, avx512 };

// Whether this processor can run the kernel set.
VEXA_API bool unicode_kernel_available(unicode_kernel kernel);

// Makes every later transform use the kernel set; false, changing nothing,
// when the processor cannot run it. Not for use while another thread
// transforms text.
VEXA_API bool force_unicode_kernel(unicode_kernel kernel);

// The set in use ("portable", "ssse3", "avx2", "avx512" for unicode_kernel_name).
VEXA_API unicode_kernel current_unicode_kernel();
VEXA_API char const* unicode_kernel_name(unicode_kernel kernel);

}  // namespace _private

}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_STRINGS_UNICODE_HPP
