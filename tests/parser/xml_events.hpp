// Test support: records the events of an xml_parser as short lines and
// compares whole lists, printing both in full on a mismatch.
#ifndef VEXA_TESTS_PARSER_XML_EVENTS_HPP
#define VEXA_TESTS_PARSER_XML_EVENTS_HPP

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "vexa/functor/member_function.hpp"
#include "vexa/parser/xml_parser.hpp"

namespace xml_test {

using vexa::parser::xml_parser;
using vexa::strings::ustring8;
using error = xml_parser::parse_error;

// Control bytes and bytes from 0x7F shown as \n, \t, \r or \xHH.
inline std::string shown(std::string const& s) {
  static char const hex[] = "0123456789ABCDEF";
  std::string out;
  for (char ch : s) {
    unsigned char const c = static_cast<unsigned char>(ch);
    if (c == '\n') out += "\\n";
    else if (c == '\t') out += "\\t";
    else if (c == '\r') out += "\\r";
    else if (c == '\\') out += "\\\\";
    else if (c < 0x20 || c >= 0x7F) out += std::string("\\x") + hex[c >> 4] + hex[c & 15];
    else out += ch;
  }
  return out;
}

inline std::string joined(std::vector<std::string> const& lines) {
  std::string out;
  for (std::string const& l : lines) out += "    " + l + "\n";
  return out.empty() ? "    (none)\n" : out;
}

// Whole lists on failure, so the first difference is seen in context.
inline ::testing::AssertionResult same_lines(std::vector<std::string> const& expected,
                                             std::vector<std::string> const& actual) {
  if (expected == actual) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "\n  expected:\n" << joined(expected) << "  actual:\n" << joined(actual);
}

// "start a", "end a", "attr x=1", "text hi", "space \n  ", "comment c".
struct recorder {
  std::vector<std::string> events;

  void on_start(ustring8 const& s) { events.push_back("start " + shown(s)); }
  void on_end(ustring8 const& s) { events.push_back("end " + shown(s)); }
  void on_attribute(ustring8 const& n, ustring8 const& v) { events.push_back("attr " + shown(n) + "=" + shown(v)); }
  void on_text(ustring8 const& s) { events.push_back("text " + shown(s)); }
  void on_space(ustring8 const& s) { events.push_back("space " + shown(s)); }
  void on_comment(ustring8 const& s) { events.push_back("comment " + shown(s)); }

  void attach(xml_parser& p) {
    using vexa::functor::member_function;
    p.set_element_start_handler(member_function(this, &recorder::on_start));
    p.set_element_end_handler(member_function(this, &recorder::on_end));
    p.set_attribute_handler(member_function(this, &recorder::on_attribute));
    p.set_character_handler(member_function(this, &recorder::on_text));
    p.set_whitespace_handler(member_function(this, &recorder::on_space));
    p.set_comment_handler(member_function(this, &recorder::on_comment));
  }
};

// "type line text" of a result, for whole-record comparisons.
inline std::string result_line(error const& e) {
  return std::to_string(e.type) + " line " + std::to_string(e.line) + " \"" + shown(e.text) + "\"";
}
inline std::string result_line(error::error_type type, unsigned line, std::string const& text) {
  return result_line(error(type, line, text));
}

inline std::string const declaration = "<?xml version=\"1.0\"?>";

}  // namespace xml_test

#endif  // VEXA_TESTS_PARSER_XML_EVENTS_HPP
