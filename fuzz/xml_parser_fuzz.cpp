// Fuzz target: parser::xml_parser on the input as a document.
//
// Byte 0 chooses what runs: 0xF0-0xF2 drive the steps parse_name,
// parse_attrib_value and parse_character on their own, any other value
// parses the rest of the input as one document.
//
// Properties: parse() returns a known error type and throws nothing but the
// overflow_error of a numeric reference above 255; a successful document's
// start and end events nest with equal names and close everything, and its
// names are well formed; a second parser given the same text and a parse
// through do_parse agree with the first; the steps leave their position
// inside the text.
#include <string>
#include <vector>

#include "fuzz_support.hpp"
#include "vexa/exceptions/runtime_error.hpp"
#include "vexa/functor/member_function.hpp"
#include "vexa/parser/xml_parser.hpp"

namespace {

namespace parser = vexa::parser;
using vexa::strings::ustring8;
using parse_error = parser::xml_parser::parse_error;

// Every event of a parse, as one text, and whether starts and ends nested.
struct recorder {
  std::string events;
  std::vector<std::string> open;
  bool nested = true;
  std::string fault;

  static bool name_ok(std::string const& name) {
    if (name.empty()) return false;
    unsigned char const first = static_cast<unsigned char>(name[0]);
    if (!((first | 0x20) >= 'a' && (first | 0x20) <= 'z')) return false;
    for (unsigned char c : name)
      if (!(((c | 0x20) >= 'a' && (c | 0x20) <= 'z') || (c >= '0' && c <= '9') || c == '_')) return false;
    return true;
  }

  void on_start(ustring8 const& name) {
    events += "<" + name + "\n";
    if (!name_ok(name)) fault = "element name '" + name + "'";
    open.push_back(name);
  }
  void on_end(ustring8 const& name) {
    events += ">" + name + "\n";
    if (open.empty() || open.back() != name) nested = false;
    if (!open.empty()) open.pop_back();
  }
  void on_attribute(ustring8 const& name, ustring8 const& value) {
    events += "@" + name + "=" + value + "\n";
    if (!name_ok(name)) fault = "attribute name '" + name + "'";
  }
  void on_character(ustring8 const& text) {
    events += "t" + text + "\n";
    if (text.empty()) fault = "empty character event";
  }
  void on_space(ustring8 const& text) {
    events += "s" + text + "\n";
    if (text.empty() || text.find_first_not_of(" \t\r\n") != std::string::npos)
      fault = "white-space event '" + text + "'";
  }
  void on_comment(ustring8 const& text) { events += "!" + text + "\n"; }

  void attach(parser::xml_parser& p) {
    namespace functor = vexa::functor;
    p.set_element_start_handler(functor::member_function(this, &recorder::on_start));
    p.set_element_end_handler(functor::member_function(this, &recorder::on_end));
    p.set_attribute_handler(functor::member_function(this, &recorder::on_attribute));
    p.set_character_handler(functor::member_function(this, &recorder::on_character));
    p.set_whitespace_handler(functor::member_function(this, &recorder::on_space));
    p.set_comment_handler(functor::member_function(this, &recorder::on_comment));
  }
};

struct result {
  bool overflow = false;
  unsigned type = 0, line = 0;
  std::string text;

  bool operator==(result const& o) const {
    return overflow == o.overflow && type == o.type && line == o.line && text == o.text;
  }
  std::string show() const {
    return overflow ? "overflow_error" : std::to_string(type) + "/" + std::to_string(line) + "/'" + text + "'";
  }
};

template <typename Parse>
result run(Parse parse) {
  result r;
  try {
    parse_error const e = parse();
    r.type = e.type;
    r.line = e.line;
    r.text = e.text;
  } catch (vexa::exceptions::overflow_error const&) {
    r.overflow = true;  // a numeric reference above 255
  }
  return r;
}

void check_document(ustring8 const& text) {
  recorder first;
  parser::xml_parser p;
  first.attach(p);
  result const got = run([&] { return p.parse(text); });
  VEXA_FUZZ_CHECK(got.type <= parse_error::multiple_roots, "unknown error type " + got.show());
  VEXA_FUZZ_CHECK(first.fault.empty(), first.fault);
  if (!got.overflow && got.type == parse_error::no_error) {
    VEXA_FUZZ_CHECK(first.nested && first.open.empty(),
                    "a complete document with unbalanced events:\n" + first.events);
  }

  // A fresh parser, parsing through do_parse, sees the same.
  recorder second;
  parser::xml_parser q;
  second.attach(q);
  parser::xml_parser::iterator position = text.begin(), last = text.end();
  result const again = run([&] { return q.do_parse(position, last); });
  VEXA_FUZZ_CHECK(again == got && second.events == first.events,
                  "parse and do_parse differ: " + got.show() + " vs " + again.show());
  VEXA_FUZZ_CHECK(position >= text.begin() && position <= text.end(), "do_parse left the text");
  if (!got.overflow && got.type == parse_error::no_error)
    VEXA_FUZZ_CHECK(position == text.end(), "a complete document not read to its end");

  // A copy of a parser that succeeded parses the same document the same way.
  if (!got.overflow && got.type == parse_error::no_error) {
    recorder third;
    parser::xml_parser r(p);
    third.attach(r);
    result const copy = run([&] { return r.parse(text); });
    VEXA_FUZZ_CHECK(copy == got && third.events == first.events, "a second parse differs");
  }
}

void check_step(unsigned step, ustring8 const& text) {
  if (text.empty()) return;  // the steps need a byte at the position
  parser::xml_parser p;
  parser::xml_parser::iterator position = text.begin(), last = text.end();
  try {
    if (step == 0) p.parse_name(position, last);
    if (step == 1) p.parse_attrib_value(position, last);
    if (step == 2) p.parse_character(position, last);
  } catch (parse_error const& e) {
    VEXA_FUZZ_CHECK(e.type <= parse_error::multiple_roots, "unknown error type");
  } catch (vexa::exceptions::overflow_error const&) {
    VEXA_FUZZ_CHECK(step != 0, "parse_name raised overflow_error");
  }
  VEXA_FUZZ_CHECK(position >= text.begin() && position <= text.end(), "a step left the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  unsigned const mode = in.byte();
  ustring8 const text(in.rest());
  if (mode >= 0xF0 && mode <= 0xF2) check_step(mode - 0xF0, text);
  else check_document(text);
  return 0;
}
