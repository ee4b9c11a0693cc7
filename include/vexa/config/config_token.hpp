// vexa — `config::config_token`: one token of the configuration language, and
// the six character-class functions of its lexer.
//
// The lexer itself is `config::base_config_item::get_token` (base_config_item.hpp);
// it is byte-oriented: every byte is one character, letters and digits are
// what the C library's `isalpha` and `isdigit` say of the byte (taken as
// unsigned char, so bytes 0x80 and up never reach them as negative values).
//
// Kind 24 (`T_STARFS`, "*/") is stored in a token but never returned by the
// lexer, which returns 16 (`T_FSFS`) for it; `CvtTokStr` calls it "unknown
// type". Value 25 has no name and is never produced. Both are kept as they are
// on purpose: the file reader decides on the stored kind, so "*/" is ordinary
// text and not a comment.
//
//   config::config_token t;           // empty value, positions 0, T_END
//   t.CvtTokStr();                    // "T_END"
#ifndef VEXA_CONFIG_CONFIG_TOKEN_HPP
#define VEXA_CONFIG_CONFIG_TOKEN_HPP

#include <cstdint>

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API config_token {
 public:
  // The kinds, with what the lexer produces for each (value in brackets).
  enum tok_types : std::uint32_t {
    T_VAR = 0,             // a run of letters [the letters]
    T_NUM = 1,             // a run of decimal digits [the digits]
    T_NEWLINE = 2,         // "\n" or "\r\n" ["\n"]
    T_TABCHAR = 3,         // "\t"
    T_UNKNOWN = 4,         // "\r" not followed by "\n"
    T_END = 5,             // at or past the end [value untouched]
    T_SPACE = 6,           // one or more 0x20 bytes [value untouched]
    T_EQ = 7,              // =
    T_EQEQ = 8,            // ==
    T_GT = 9,              // >
    T_GTEQ = 10,           // >=
    T_LT = 11,             // <
    T_LTEQ = 12,           // <=
    T_COLON = 13,          // :
    T_COLONEQ = 14,        // :=
    T_POUND = 15,          // #
    T_FSFS = 16,           // //
    T_DOT = 17,            // .
    T_SBRACKET = 18,       // [
    T_EBRACKET = 19,       // ]
    T_PLUS = 20,           // +
    T_MINUS = 21,          // -
    T_PLUSEQ = 22,         // +=
    T_MINUSEQ = 23,        // -=
    T_STARFS = 24,         // */ (stored only; the lexer returns T_FSFS)
    T_TIMES = 26,          // *
    T_DIV = 27,            // /
    T_TIMESEQ = 28,        // *=
    T_DIVEQ = 29,          // /=
    T_STRING = 30,         // "..." [the bytes between the quotes, escapes kept]
    T_NON_ALPHA_NUM = 31,  // any other single byte [that byte]
  };

  // An empty value, both positions 0 and the kind T_END.
  config_token();

  // CvtTokStr
  // The kind's name for diagnostics, exactly as in the enumeration. The four
  // kinds that carry free text append it: "T_VAR :[abc]" (space before the
  // colon), "T_UNKNOWN:[\r]", "T_STRING:[...]", "T_NON_ALPHA_NUM:[,]".
  // Kinds 24, 25 and 32 upwards give "unknown type".
  //   token.type = config_token::T_PLUSEQ; token.CvtTokStr();   // "T_PLUSEQ"
  //   token.type = config_token::T_STARFS; token.CvtTokStr();   // "unknown type"
  strings::ustring8 CvtTokStr() const;

  strings::ustring8 value;      // the token's text (see the kinds above)
  std::uint32_t end_position;   // index just past the token
  std::uint32_t start_position; // index of the token's first byte
  tok_types type;
};

// ---- character classes --------------------------------------------------------

// isConfigWhite: space, horizontal tab, line feed, carriage return.
//   isConfigWhite('\t')   // true
//   isConfigWhite('\v')   // false
VEXA_API bool isConfigWhite(char c);

// isConfigSpace: the space byte 0x20 only.
//   isConfigSpace(' ')    // true
//   isConfigSpace('\t')   // false
VEXA_API bool isConfigSpace(char c);

// isConfigAlpha: the C library's isalpha of the byte.
//   isConfigAlpha('q')    // true
//   isConfigAlpha('_')    // false
VEXA_API bool isConfigAlpha(char c);

// isConfigDigit: the C library's isdigit of the byte.
//   isConfigDigit('7')    // true
//   isConfigDigit('x')    // false
VEXA_API bool isConfigDigit(char c);

// isConfigDelim: a byte of " +-*^/%=;(),<>~&|{}\n\t[]?$", carriage return, or
// the zero byte (the search takes in the set's terminator, left so on purpose).
//   isConfigDelim('\0')   // true
//   isConfigDelim('.')    // false
VEXA_API bool isConfigDelim(char c);

// isConfigDotSlash: '.', '/' or backslash, the separators of key components.
//   isConfigDotSlash('\\')   // true
//   isConfigDotSlash(':')    // false
VEXA_API bool isConfigDotSlash(char c);

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_CONFIG_TOKEN_HPP
