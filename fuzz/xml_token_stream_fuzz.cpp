// Fuzz target: parser::xml_token_stream on the input as a document.
//
// Byte 0 splits the input: when it is below the input's length, the text
// before that offset is parsed first by its own stream and must leave that
// stream's tokens untouched by nothing but appending (a second parse adds to
// the list); the whole rest is then parsed by a fresh stream.
//
// Properties of the token list: only the eight token types; an attribute
// name is always followed by its value; element starts and ends nest with
// equal names, and after a successful parse all of them are closed; a
// start_tag_end never comes twice for one start tag; copies hold equal
// tokens. parse() throws nothing but the overflow_error of a numeric
// reference above 255.
#include <string>
#include <vector>

#include "fuzz_support.hpp"
#include "vexa/exceptions/runtime_error.hpp"
#include "vexa/parser/xml_token_stream.hpp"

namespace {

namespace parser = vexa::parser;
using vexa::strings::ustring8;
using token = parser::xml_token_stream::token;

std::string show(parser::xml_token_stream const& s) {
  std::string out;
  for (token const& t : s) out += std::to_string(t.type()) + " '" + t.value() + "'\n";
  return out;
}

// Parses `text`; false when a numeric reference overflowed.
bool parse(parser::xml_token_stream& stream, ustring8 const& text, unsigned& type) {
  try {
    type = stream.parse(text).type;
    return true;
  } catch (vexa::exceptions::overflow_error const&) {
    return false;
  }
}

void check_tokens(parser::xml_token_stream const& stream, bool complete) {
  std::vector<std::string> open;
  bool tag_open = false;  // a start tag waits for its start_tag_end
  for (auto it = stream.begin(); it != stream.end(); ++it) {
    token const& t = *it;
    VEXA_FUZZ_CHECK(t.type() <= token::character, "token type " + std::to_string(t.type()));
    switch (t.type()) {
      case token::element_start:
        open.push_back(t.value());
        tag_open = true;
        break;
      case token::element_end:
        VEXA_FUZZ_CHECK(!open.empty() && open.back() == t.value(),
                        "end '" + t.value() + "' closes nothing it opened:\n" + show(stream));
        open.pop_back();
        tag_open = false;
        break;
      case token::attribute_name: {
        auto next = it;
        ++next;
        VEXA_FUZZ_CHECK(next != stream.end() && next->type() == token::attribute_value,
                        "an attribute name without its value:\n" + show(stream));
        break;
      }
      case token::start_tag_end:
        VEXA_FUZZ_CHECK(tag_open && t.value().empty(), "a start_tag_end of no start tag:\n" + show(stream));
        tag_open = false;
        break;
      case token::space:
        VEXA_FUZZ_CHECK(!t.value().empty() && t.value().find_first_not_of(" \t\r\n") == std::string::npos,
                        "a space token of '" + t.value() + "'");
        break;
      default:
        break;
    }
  }
  if (complete) VEXA_FUZZ_CHECK(open.empty(), "a complete document left elements open:\n" + show(stream));
  std::size_t count = 0;
  for (auto it = stream.begin(); it != stream.end(); ++it) ++count;
  VEXA_FUZZ_CHECK(stream.size() == count, "size() differs from the walk");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  std::size_t const split = in.byte();
  std::string const bytes = in.rest();

  parser::xml_token_stream stream;
  unsigned type = 0;
  bool const finished = parse(stream, ustring8(bytes), type);
  check_tokens(stream, finished && type == 0);
  parser::xml_token_stream const copy(stream);
  VEXA_FUZZ_CHECK(show(copy) == show(stream), "a copy holds other tokens");

  if (split < bytes.size()) {
    // A second parse appends: the first parse's tokens stay in front.
    parser::xml_token_stream twice;
    unsigned first_type = 0, second_type = 0;
    if (parse(twice, ustring8(bytes.substr(0, split)), first_type)) {
      std::string const before = show(twice);
      parse(twice, ustring8(bytes.substr(split)), second_type);
      VEXA_FUZZ_CHECK(show(twice).compare(0, before.size(), before) == 0,
                      "a second parse changed the first one's tokens");
    }
  }
  return 0;
}
