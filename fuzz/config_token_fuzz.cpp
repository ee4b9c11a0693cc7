// Fuzz target: the configuration lexer, base_config_item::get_token, over
// the whole input, and the two helpers built on it, make_key_value and
// quote_value.
//
// Properties: every call before the end moves the position forward and
// returns a kind of the enumeration other than 24 and 25 (the lexer reports
// "*/" as 16); the walk reaches T_END within one call per byte plus one (an
// unterminated string ends one past the text), and T_END leaves the position
// alone; every other token records where it starts and ends; CvtTokStr names
// every token. make_key_value splits only where it
// finds an '=' and then returns a value that is a tail of the text.
#include <string>

#include "fuzz_support.hpp"
#include "vexa/config/base_config_item.hpp"
#include "vexa/config/config_token.hpp"

namespace {

namespace config = vexa::config;
using token = config::config_token;
using vexa::strings::ustring8;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  ustring8 const text(in.rest());
  if (text.size() > 0xFFFFFF) return 0;  // positions are 32-bit

  unsigned int position = 0;
  token t;
  std::size_t calls = 0;
  for (;;) {
    unsigned int const before = position;
    token::tok_types const kind = config::base_config_item::get_token(text, position, t);
    ++calls;
    VEXA_FUZZ_CHECK(kind <= token::T_NON_ALPHA_NUM && kind != 24 && kind != 25,
                    "kind " + std::to_string(kind) + " at " + std::to_string(before));
    VEXA_FUZZ_CHECK(!t.CvtTokStr().empty(), "a token without a name");
    if (kind == token::T_END) {
      VEXA_FUZZ_CHECK(position == before, "T_END moved the position");
      VEXA_FUZZ_CHECK(before >= text.size(), "T_END inside the text at " + std::to_string(before));
      break;
    }
    VEXA_FUZZ_CHECK(position > before && position <= text.size() + 1,
                    "position " + std::to_string(before) + " -> " + std::to_string(position) +
                        " of " + std::to_string(text.size()));
    VEXA_FUZZ_CHECK(t.start_position == before && t.end_position == position,
                    "token positions " + std::to_string(t.start_position) + ".." +
                        std::to_string(t.end_position) + " for a call from " + std::to_string(before));
    VEXA_FUZZ_CHECK(t.type == kind || (kind == token::T_FSFS && t.type == token::T_STARFS),
                    "stored kind " + std::to_string(t.type) + ", returned " + std::to_string(kind));
    VEXA_FUZZ_CHECK(calls <= text.size() + 1, "the lexer does not reach the end");
  }

  ustring8 key, value;
  if (config::base_config_item::make_key_value(text, key, value)) {
    VEXA_FUZZ_CHECK(value.size() < text.size() &&
                        text.compare(text.size() - value.size(), value.size(), value) == 0,
                    "the value is no tail of the text");
  } else {
    VEXA_FUZZ_CHECK(key.empty() && value.empty(), "no '=' but a key or value");
  }
  ustring8 const quoted = config::base_config_item::quote_value(text);
  VEXA_FUZZ_CHECK(quoted == text || quoted == "\"" + text + "\"", "quote_value changed the text");
  return 0;
}
