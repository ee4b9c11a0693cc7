// The configuration lexer: config_token, its names, the character classes and
// base_config_item::get_token.
#include "vexa/config/config_token.hpp"

#include <ctype.h>

#include <cctype>
#include <cstring>
#include <limits>

#include "vexa/config/base_config_item.hpp"

namespace VEXA_2_10 {
namespace config {

config_token::config_token() : end_position(0), start_position(0), type(T_END) {}

strings::ustring8 config_token::CvtTokStr() const {
  switch (type) {
    case T_VAR: return "T_VAR :[" + value + "]";
    case T_NUM: return "T_NUM";
    case T_NEWLINE: return "T_NEWLINE";
    case T_TABCHAR: return "T_TABCHAR";
    case T_UNKNOWN: return "T_UNKNOWN:[" + value + "]";
    case T_END: return "T_END";
    case T_SPACE: return "T_SPACE";
    case T_EQ: return "T_EQ";
    case T_EQEQ: return "T_EQEQ";
    case T_GT: return "T_GT";
    case T_GTEQ: return "T_GTEQ";
    case T_LT: return "T_LT";
    case T_LTEQ: return "T_LTEQ";
    case T_COLON: return "T_COLON";
    case T_COLONEQ: return "T_COLONEQ";
    case T_POUND: return "T_POUND";
    case T_FSFS: return "T_FSFS";
    case T_DOT: return "T_DOT";
    case T_SBRACKET: return "T_SBRACKET";
    case T_EBRACKET: return "T_EBRACKET";
    case T_PLUS: return "T_PLUS";
    case T_MINUS: return "T_MINUS";
    case T_PLUSEQ: return "T_PLUSEQ";
    case T_MINUSEQ: return "T_MINUSEQ";
    case T_TIMES: return "T_TIMES";
    case T_DIV: return "T_DIV";
    case T_TIMESEQ: return "T_TIMESEQ";
    case T_DIVEQ: return "T_DIVEQ";
    case T_STRING: return "T_STRING:[" + value + "]";
    case T_NON_ALPHA_NUM: return "T_NON_ALPHA_NUM:[" + value + "]";
    default: return "unknown type";  // 24 (stored for "*/"), 25 and 32 upwards
  }
}

bool isConfigWhite(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }
bool isConfigSpace(char c) { return c == ' '; }
bool isConfigAlpha(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }
bool isConfigDigit(char c) { return std::isdigit(static_cast<unsigned char>(c)) != 0; }
bool isConfigDotSlash(char c) { return c == '.' || c == '/' || c == '\\'; }

bool isConfigDelim(char c) {
  // strchr finds the set's own terminator too, so the zero byte is a delimiter.
  return c == '\r' || std::strchr(" +-*^/%=;(),<>~&|{}\n\t[]?$", c) != nullptr;
}

namespace {

using tok = config_token::tok_types;

// Positions are 32-bit: text beyond this length reads as past its end, which
// also keeps "one past the end" of an unterminated string representable.
constexpr std::uint32_t longest_text = std::numeric_limits<std::uint32_t>::max() - 1;

bool is_operator(char c) {
  switch (c) {
    case '#': case '<': case '>': case '*': case '/': case '+': case '.': case ':':
    case '-': case '[': case ']': case '=': case '\n': case '\t': case '\r':
      return true;
    default:
      return false;
  }
}

bool is_class(unsigned short const* classes, char c, int mask) {
  return (classes[static_cast<unsigned char>(c)] & mask) != 0;
}

// The two-byte form when `next` is '=', else the one-byte form.
tok with_eq(char next, tok two, tok one) { return next == '=' ? two : one; }

}  // namespace

config_token::tok_types base_config_item::get_token(strings::ustring8 const& text, unsigned int& position,
                                                     config_token& token) {
  std::uint32_t const length =
      text.size() > longest_text ? longest_text : static_cast<std::uint32_t>(text.size());
  std::uint32_t const start = position;
  if (length <= start) {
    token.type = config_token::T_END;
    return config_token::T_END;
  }
  char const* const s = text.data();
  std::uint32_t at = start;

  if (s[at] == ' ') {
    while (at < length && s[at] == ' ') ++at;
    token.start_position = start;
    token.end_position = at;
    token.type = config_token::T_SPACE;
    position = at;
    return config_token::T_SPACE;
  }

  // The C library's own class table for the current locale, read inline:
  // the same answers as isalpha and isdigit without a call per byte.
  unsigned short const* const classes = *__ctype_b_loc();
  char const c = s[at];
  char const next = at + 1 < length ? s[at + 1] : '\0';
  tok kind;
  tok returned;
  std::uint32_t size = 1;
  if (is_operator(c)) {
    switch (c) {
      case '*':
        kind = next == '=' ? config_token::T_TIMESEQ : next == '/' ? config_token::T_STARFS : config_token::T_TIMES;
        break;
      case '/':
        kind = next == '=' ? config_token::T_DIVEQ : next == '/' ? config_token::T_FSFS : config_token::T_DIV;
        break;
      case '+': kind = with_eq(next, config_token::T_PLUSEQ, config_token::T_PLUS); break;
      case '-': kind = with_eq(next, config_token::T_MINUSEQ, config_token::T_MINUS); break;
      case ':': kind = with_eq(next, config_token::T_COLONEQ, config_token::T_COLON); break;
      case '<': kind = with_eq(next, config_token::T_LTEQ, config_token::T_LT); break;
      case '>': kind = with_eq(next, config_token::T_GTEQ, config_token::T_GT); break;
      case '=': kind = with_eq(next, config_token::T_EQEQ, config_token::T_EQ); break;
      case '#': kind = config_token::T_POUND; break;
      case '.': kind = config_token::T_DOT; break;
      case '[': kind = config_token::T_SBRACKET; break;
      case ']': kind = config_token::T_EBRACKET; break;
      case '\t': kind = config_token::T_TABCHAR; break;
      case '\n': kind = config_token::T_NEWLINE; break;
      default:  // '\r'
        kind = next == '\n' ? config_token::T_NEWLINE : config_token::T_UNKNOWN;
        break;
    }
    bool const two_bytes = kind == config_token::T_TIMESEQ || kind == config_token::T_STARFS ||
                           kind == config_token::T_DIVEQ || kind == config_token::T_FSFS ||
                           kind == config_token::T_PLUSEQ || kind == config_token::T_MINUSEQ ||
                           kind == config_token::T_COLONEQ || kind == config_token::T_LTEQ ||
                           kind == config_token::T_GTEQ || kind == config_token::T_EQEQ ||
                           (c == '\r' && kind == config_token::T_NEWLINE);
    size = two_bytes ? 2 : 1;
    if (kind == config_token::T_NEWLINE) {
      token.value.assign(1, '\n');
    } else {
      token.value.assign(s + at, size);
    }
    // "*/" is stored as its own kind but reported as "//", deliberately.
    returned = kind == config_token::T_STARFS ? config_token::T_FSFS : kind;
    at += size;
  } else if (c == '"') {
    std::uint32_t const first = at + 1;
    std::uint32_t end = first;
    while (end < length && s[end] != '"') {
      if (s[end] == '\\' && end + 1 < length) ++end;  // the escaped byte never ends the string
      ++end;
    }
    token.value.assign(s + first, end - first);
    kind = returned = config_token::T_STRING;
    at = end + 1;  // past the closing quote, or one past the end when there is none
  } else if (is_class(classes, c, _ISdigit)) {
    std::uint32_t end = at + 1;
    while (end < length && is_class(classes, s[end], _ISdigit)) ++end;
    token.value.assign(s + at, end - at);
    kind = returned = config_token::T_NUM;
    at = end;
  } else if (is_class(classes, c, _ISalpha)) {
    std::uint32_t end = at + 1;
    while (end < length && is_class(classes, s[end], _ISalpha)) ++end;
    token.value.assign(s + at, end - at);
    kind = returned = config_token::T_VAR;
    at = end;
  } else {
    token.value.assign(1, c);
    kind = returned = config_token::T_NON_ALPHA_NUM;
    at += 1;
  }
  token.start_position = start;
  token.end_position = at;
  token.type = kind;
  position = at;
  return returned;
}

}  // namespace config
}  // namespace VEXA_2_10
