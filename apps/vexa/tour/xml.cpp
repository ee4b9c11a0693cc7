// Tour section: the XML subset parser and its token stream.
#include <ostream>
#include <string>

#include "tour/section.hpp"
#include "vexa/exceptions/exception.hpp"
#include "vexa/parser/xml_token_stream.hpp"

namespace {

using vexa::parser::xml_parser;
using vexa::parser::xml_token_stream;
using vexa::strings::ustring8;

char const* const token_names[] = {"element_start", "element_end", "attribute_name", "attribute_value",
                                   "start_tag_end", "comment",     "space",          "character"};
char const* const error_names[] = {"no_error",       "unexpected_end", "tag_mismatch",
                                   "declaration_incomplete", "missing_declaration", "unexpected_character",
                                   "missing_quote",  "unknown_entity", "missing_equals",
                                   "duplicate_attribute", "multiple_roots"};

std::string visible(std::string const& s) {
  std::string out;
  for (char c : s) out += c == '\n' ? std::string("\\n") : std::string(1, c);
  return out;
}

void tokens(std::ostream& out, std::string const& body) {
  out << "  " << visible(body) << "\n";
  xml_token_stream s;
  xml_parser::parse_error const e = s.parse(ustring8("<?xml version=\"1.0\"?>" + body));
  for (auto const& t : s) out << "    " << token_names[t.type()] << " \"" << visible(t.value()) << "\"\n";
  if (e.type != xml_parser::parse_error::no_error) out << "    -> " << error_names[e.type] << "\n";
}

void check(std::ostream& out, std::string const& body) {
  xml_parser p;
  out << "  " << visible(body) << "  ->  ";
  try {
    xml_parser::parse_error const e = p.parse(ustring8("<?xml version=\"1.0\"?>" + body));
    out << error_names[e.type] << " (" << e.type << "), line " << e.line << ", text \"" << e.text << "\"\n";
  } catch (vexa::exceptions::exception const& x) {
    out << "throws \"" << x.get_message() << "\"\n";
  }
}

void show(std::ostream& out) {
  out << "After a mandatory <?xml ...?> declaration, a document becomes a flat list of\n"
         "tokens. A start tag's start_tag_end comes lazily, so a comment right after\n"
         "the tag comes before it; an empty-element tag gives an end token too:\n";
  tokens(out, "<a x='1'><!--c--><b/></a>");
  out << "\nText splits where two white-space bytes meet; one space stays in the text.\n"
         "&nbsp; is one plain space and numeric references give one byte:\n";
  tokens(out, "<a>x y  z&nbsp;&#65;&#x42;</a>");
  out << "\nMalformed input never throws; the parse returns its first fault. Lines count\n"
         "the line feeds in white space between markup, from 0:\n";
  check(out, "\n<a>\n<b></a>");
  check(out, "<a x='1' x='2'/>");
  check(out, "<a></a><b/>");
  check(out, "<a>&copy;</a>");
  check(out, "\n<a>");
  out << "\nA reference above 255 is the conversion's to handle, and it raises:\n";
  check(out, "<a>&#256;</a>");
}

vexa_cli::tour::registrar const section(60, "XML", show);

}  // namespace
