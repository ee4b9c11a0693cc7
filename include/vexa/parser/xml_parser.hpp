// vexa — `parser::xml_parser`: a callback-driven parser for a strict XML
// subset held in memory as 8-bit text.
//
// The parser walks the text once and reports what it finds through six
// optional callbacks (element start, element end, attribute, character text,
// white space, comment). It builds no tree. It never throws for a malformed
// document: every outcome is a `parse_error` value, `no_error` included.
//
// The subset: a mandatory `<?xml ... ?>` declaration first (its contents are
// not read); elements, attributes, empty-element tags, end tags, comments;
// text with the references &amp; &apos; &gt; &lt; &quot; &nbsp; and numeric
// references. No DOCTYPE, CDATA, processing instructions or namespaces (a
// colon ends a name). Bytes are passed through as they are.
//
//   parser::xml_parser p;
//   p.parse(ustring8("<?xml version='1.0'?><a x='1'/>")).type   // no_error
//
// How a document is read:
//   - Three bytes of any value are skipped as a byte-order mark when the
//     fourth byte is '<' (the bytes are not checked to be EF BB BF).
//   - White space is exactly space, tab, CR and LF. A run of it outside a tag
//     is reported as one white-space event; inside a tag it is skipped.
//   - Character text runs up to the next '<'. Two white-space bytes in a row
//     end it (the pair starts a white-space event), so "x y" is one text
//     event and "x  y" is text, white space, text. A '>' inside a run is
//     text; a '>' where a run or markup would start is an error.
//   - &nbsp; is one plain space (0x20), on purpose. A numeric reference gives
//     one byte: "&#x41;" through str_to_uint8 in radix 16, "&#65;" in radix 0,
//     so "&#0101;" is octal (65). Only a lower-case 'x' selects hexadecimal.
//     A value above 255 makes str_to_uint8 raise its overflow_error, which
//     passes out of parse() unchanged; nothing else is thrown for bad input.
//   - Text before and after the root element is accepted; a second
//     top-level element is `multiple_roots`.
//   - An empty-element tag reports its start and then its end.
//   - Names start with a letter and go on with letters, digits and '_'
//     ('-', '.' and ':' end them). Letters and digits are those of the
//     C locale: the process locale is never consulted.
//
// Error records (`parse_error::type`, `text`):
//    0 no_error                the document is complete           ""
//    1 unexpected_end          a comment not closed; the input    ""
//                              ends right after an end tag's name;
//                              elements still open at the end
//    2 tag_mismatch            an end tag that does not close     its name
//                              the innermost element, or closes
//                              none; "/>" with nothing open       ""
//    3 declaration_incomplete  the input ends inside the          ""
//                              declaration or right after it
//    4 missing_declaration     no "<?xml" first; '<' or '>'       ""
//                              inside the declaration
//    5 unexpected_character    a byte not allowed where it stands that byte
//    6 missing_quote           a value not opened by a quote      ""
//                              the input ends inside a value      the attribute
//    7 unknown_entity          '&' followed by no known reference ""
//    8 missing_equals          no '=' after an attribute name     the attribute
//    9 duplicate_attribute     a name twice in one start tag      the attribute
//   10 multiple_roots          a second top-level element         ""
// `line` is the number of line feeds seen in white-space runs (and in the
// white space after the declaration) before the error: line feeds inside text,
// attribute values and comments are not counted, so the first line is 0 and a
// reported line can be smaller than the true one. Elements left open at the
// end, and success, report line 0.
//
// Decisions where the rules above leave a gap:
//   - Where a byte is required and the input ends instead (a name after '<',
//     the '>' after '/', the ';' of a numeric reference), the error is
//     `unexpected_character` with empty text. A lone '&' at the end is
//     `unknown_entity`.
//   - "&#;" and "&#x;" (no digits) give the byte 0.
//   - An end tag when no element is open is `tag_mismatch` with its name.
//   - A comment cut off at the end of input is `unexpected_end`.
//   - The attribute names of a start tag are forgotten at every start tag
//     and at every element end (so "</a x='1' x='1'>" is a duplicate, while
//     attributes after an end tag never clash with the start tag's).
//   - A parser may parse many documents. Each parse restarts the line count
//     and leaves the tag it was in, but keeps the elements a failed parse
//     left open: the next document starts inside them (a fresh parser per
//     document avoids this). Whether a root was already seen is per parse.
//   - A callback may throw; the exception passes out of parse() (a thrown
//     `parse_error` is returned like the parser's own). The events already
//     reported stand.
#ifndef VEXA_PARSER_XML_PARSER_HPP
#define VEXA_PARSER_XML_PARSER_HPP

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "vexa/export.hpp"
#include "vexa/functor/function_type_interface.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace parser {

class VEXA_API xml_parser {
 public:
  using ustring8 = strings::ustring8;
  // Positions in the text: characters of a std::string (a ustring8 is one).
  using iterator = std::string::const_iterator;
  // Callbacks: element start, element end, character text, white space and
  // comment take one text; the attribute callback takes name and value.
  using text_callback = functor::function_type_interface<void(ustring8 const&)>;
  using attribute_callback = functor::function_type_interface<void(ustring8 const&, ustring8 const&)>;

  // The outcome of a parse: a plain value record (see the table above).
  struct VEXA_API parse_error {
    enum error_type : unsigned int {
      no_error = 0,
      unexpected_end = 1,
      tag_mismatch = 2,
      declaration_incomplete = 3,
      missing_declaration = 4,
      unexpected_character = 5,
      missing_quote = 6,
      unknown_entity = 7,
      missing_equals = 8,
      duplicate_attribute = 9,
      multiple_roots = 10
    };

    parse_error(error_type type, unsigned int line, ustring8 const& text);

    error_type type;
    unsigned int line;
    ustring8 text;
  };

  // xml_parser
  // A parser with every callback slot empty (events are dropped).
  //   parser::xml_parser p;
  //   p.parse(ustring8("<?xml?><a/>")).type   // no_error
  xml_parser();
  ~xml_parser();
  // Copies clone the callbacks, so both parsers call the same bound objects.
  xml_parser(xml_parser const& other);
  xml_parser& operator=(xml_parser const& other);
  xml_parser(xml_parser&& other) noexcept;
  xml_parser& operator=(xml_parser&& other) noexcept;

  // set_*_handler
  // Stores a clone of `callback` in the slot (replacing what was there); the
  // caller's object may go away. The bound object must outlive the parses.
  //   p.set_element_start_handler(functor::member_function(&sink, &sink_type::on_start));
  //   p.parse(text);   // calls sink.on_start(name) for each start tag
  void set_element_start_handler(text_callback const& callback);
  void set_element_end_handler(text_callback const& callback);
  void set_attribute_handler(attribute_callback const& callback);
  void set_character_handler(text_callback const& callback);
  void set_whitespace_handler(text_callback const& callback);
  void set_comment_handler(text_callback const& callback);

  // parse
  // Parses every byte of `text` (or of [first, last)) as one document and
  // reports its events. Returns `no_error`, or the first fault found.
  //   p.parse(ustring8("<?xml?><a><b></a>"))   // {tag_mismatch, 0, "a"}
  //   p.parse(ustring8("<?xml?><a>"))          // {unexpected_end, 0, ""}
  parse_error parse(ustring8 const& text);
  parse_error parse(iterator first, iterator last);

  // do_parse
  // The work of parse(); `first` is left where parsing stopped (at `last`
  // after success, at the offending byte or name after most faults).
  //   iterator b = s.begin(), e = s.end();
  //   p.do_parse(b, e);   // b == e for a complete document
  parse_error do_parse(iterator& first, iterator& last);

  // ---- steps of do_parse, usable on their own ------------------------------
  // Each takes the position and the end; the last three throw `parse_error`
  // (line: the parser's current line count) for bad input.

  // is_white_space
  // True for space, tab, CR and LF at `position` (which must not be the end).
  //   is_white_space(it)   // true when *it == '\n'
  //   is_white_space(it)   // false when *it == '\v'
  bool is_white_space(iterator const& position) const;

  // parse_whitespace
  // The white-space run at `position` (possibly empty); `position` is left on
  // the first other byte or at the end. Each line feed adds one to the line
  // count. Never throws.
  //   " \n x" -> " \n " (position on 'x', line count + 1)
  //   "x"     -> ""     (position unchanged)
  ustring8 parse_whitespace(iterator& position, iterator& last);

  // parse_name
  // The name at `position`: a letter, then letters, digits and '_'.
  // `position` is left on the name's LAST byte. Throws unexpected_character
  // with the first byte when it is no letter (empty text at the end).
  //   "ab_1-x" -> "ab_1" (position on '1')
  //   "1a"     -> throws {unexpected_character, line, "1"}
  ustring8 parse_name(iterator& position, iterator& last);

  // parse_attrib_value
  // The quoted value at `position` with references decoded and every other
  // byte kept (line feeds too); `position` is left on the closing quote, or
  // at the end when the quote never comes (what was read is returned).
  // Throws missing_quote "" when `position` is no quote, unexpected_character
  // "<" for a '<' inside, and what parse_character throws.
  //   "'a&lt;b'"  -> "a<b" (position on the closing quote)
  //   "x"         -> throws {missing_quote, line, ""}
  ustring8 parse_attrib_value(iterator& position, iterator& last);

  // parse_character
  // The one byte that the reference at `position` (on '&') stands for;
  // `position` is left on its ';'. Throws unexpected_character (the byte
  // after the digits when it is no ';'; for a misspelt name the byte after
  // its first letter), unknown_entity "" (no reference starts with the byte
  // after '&'); a value above 255 raises the conversion's overflow_error.
  //   "&#x41;" -> "A";  "&nbsp;" -> " "
  //   "&amx;"  -> throws {unexpected_character, line, "m"}
  ustring8 parse_character(iterator& position, iterator& last);

  // ---- implementation details ----------------------------------------------
 private:
  class engine;
  friend class engine;

  std::unique_ptr<text_callback> _element_start;
  std::unique_ptr<text_callback> _element_end;
  std::unique_ptr<attribute_callback> _attribute;
  std::unique_ptr<text_callback> _character;
  std::unique_ptr<text_callback> _whitespace;
  std::unique_ptr<text_callback> _comment;

  // The open elements, innermost last: their names one after another in
  // `_open_names`, and where each one ends. During a parse they are views
  // (`_open_views`, into the text or into `_open_names`) and are copied back
  // when it stops, so the common case copies no name.
  std::string _open_names;
  std::vector<std::size_t> _open_ends;
  std::vector<std::string_view> _open_views;

  // The attribute names of the current start tag, as views of the text being
  // parsed; a hash set takes over when a tag has many attributes.
  std::vector<std::string_view> _attribute_names;
  std::unordered_set<std::string_view> _attribute_set;

  bool _in_tag;
  unsigned int _line;

  // Scratch texts handed to the callbacks, reused to spare allocations.
  ustring8 _name_text;
  ustring8 _value_text;
};

}  // namespace parser
}  // namespace VEXA_2_10

#endif  // VEXA_PARSER_XML_PARSER_HPP
