// vexa — `parser::xml_token_stream`: a document as a flat list of tokens.
//
// The stream owns an `xml_parser` whose six callbacks are bound to its own
// `on_*` member functions, and turns each event into a `token` (a type and a
// text) appended to a linked list, walked with begin() and end().
//
//   parser::xml_token_stream s;
//   s.parse(ustring8("<?xml?><a>hi</a>"));   // element_start a, start_tag_end,
//                                             // character hi, element_end a
//
// Token types (the numbers are fixed):
//   0 element_start    the element name
//   1 element_end      the element name (an empty-element tag gives one too)
//   2 attribute_name   the name
//   3 attribute_value  the value, references decoded
//   4 start_tag_end    empty; closes a start tag before the next content
//   5 comment          the bytes between "<!--" and "-->"
//   6 space            a white-space run outside tags, verbatim
//   7 character        character text, references decoded
//
// The start_tag_end of a start tag is emitted lazily, by the first element
// start, element end, text or white space after it. Attributes and comments
// do not emit it, so a comment right after a start tag comes BEFORE that
// tag's start_tag_end: "<a><!--c--></a>" is element_start a, comment c,
// start_tag_end, element_end a. The order is relied upon and kept.
//
// parse() does not clear the list: a second parse appends to the tokens of
// the first, on purpose. Use a fresh stream per document. After a failed
// parse the tokens made before the fault stay. size() walks the list.
//
// Copies hold their own tokens and bind their parser to themselves.
#ifndef VEXA_PARSER_XML_TOKEN_STREAM_HPP
#define VEXA_PARSER_XML_TOKEN_STREAM_HPP

#include <cstddef>
#include <list>
#include <type_traits>

#include "vexa/export.hpp"
#include "vexa/parser/xml_parser.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace parser {
namespace _private {

// Memory for the nodes of one token list, handed out in order from blocks
// and released all at once with the arena: tokens are only ever appended,
// so nothing is freed one by one.
class VEXA_API token_arena {
 public:
  token_arena() = default;
  token_arena(token_arena const&) = delete;
  token_arena& operator=(token_arena const&) = delete;
  ~token_arena() { release(); }

  void* allocate(std::size_t bytes, std::size_t align) {
    std::size_t const skip = (align - reinterpret_cast<std::size_t>(_next) % align) % align;
    if (_next != nullptr && static_cast<std::size_t>(_end - _next) >= skip + bytes) {
      void* const p = _next + skip;
      _next += skip + bytes;
      return p;
    }
    return grow(bytes, align);
  }
  // Frees every block; whatever was allocated is gone.
  void release();

 private:
  void* grow(std::size_t bytes, std::size_t align);

  struct block;
  block* _blocks = nullptr;
  char* _next = nullptr;
  char* _end = nullptr;
  std::size_t _next_size = 0;
};

template <class T>
struct token_allocator {
  using value_type = T;
  using propagate_on_container_copy_assignment = std::false_type;
  using propagate_on_container_move_assignment = std::false_type;
  using propagate_on_container_swap = std::false_type;

  explicit token_allocator(token_arena* a) : arena(a) {}
  template <class U>
  token_allocator(token_allocator<U> const& other) : arena(other.arena) {}

  T* allocate(std::size_t n) { return static_cast<T*>(arena->allocate(n * sizeof(T), alignof(T))); }
  void deallocate(T*, std::size_t) noexcept {}

  template <class U>
  bool operator==(token_allocator<U> const& other) const { return arena == other.arena; }
  template <class U>
  bool operator!=(token_allocator<U> const& other) const { return arena != other.arena; }

  token_arena* arena;
};

}  // namespace _private

class VEXA_API xml_token_stream {
 public:
  using ustring8 = strings::ustring8;

  class VEXA_API token {
   public:
    enum token_type : unsigned int {
      element_start = 0,
      element_end = 1,
      attribute_name = 2,
      attribute_value = 3,
      start_tag_end = 4,
      comment = 5,
      space = 6,
      character = 7
    };

    // token
    // A token of `type` holding `value`.
    //   token t(token::character, "hi");
    //   t.type() == token::character; t.value() == "hi"
    token(token_type type, ustring8 const& value);

    token_type type() const { return _type; }
    ustring8 const& value() const { return _value; }

   private:
    token_type _type;
    ustring8 _value;
  };

  // A doubly linked list whose nodes come from the stream's own arena.
  using token_list = std::list<token, _private::token_allocator<token>>;
  using iterator = token_list::iterator;
  using const_iterator = token_list::const_iterator;

  // xml_token_stream
  // An empty stream with its parser's callbacks bound to on_*.
  //   parser::xml_token_stream s;
  //   s.size() == 0
  xml_token_stream();
  xml_token_stream(xml_token_stream const& other);
  xml_token_stream& operator=(xml_token_stream const& other);

  // parse
  // Marks the last start tag as closed, parses `text` (or [first, last)) and
  // appends its tokens. Returns the parser's result (type 0 on success); a
  // numeric reference above 255 raises the conversion's overflow_error.
  //   s.parse(ustring8("<?xml?><a x='1'/>"));   // no_error; 5 tokens
  //   s.parse(ustring8("<a/>")).type            // missing_declaration
  xml_parser::parse_error parse(ustring8 const& text);
  xml_parser::parse_error parse(xml_parser::iterator const& first, xml_parser::iterator const& last);

  // begin, end
  // Iterators over the tokens in document order.
  //   for (auto const& t : s) std::cout << t.type() << ' ' << t.value() << '\n';
  //   s.begin() == s.end()   // no tokens
  iterator begin() { return _tokens.begin(); }
  iterator end() { return _tokens.end(); }
  const_iterator begin() const { return _tokens.begin(); }
  const_iterator end() const { return _tokens.end(); }

  // size
  // The number of tokens, counted by walking the list (callers iterate).
  //   s.parse(ustring8("<?xml?><a/>")); s.size() == 3
  //   xml_token_stream().size() == 0
  std::size_t size() const;

  // on_*
  // The parser's callbacks (see the token table above).
  //   s.on_character("hi");   // appends start_tag_end first when a start tag is open
  //   s.on_attribute("x", "1");   // appends attribute_name x, attribute_value 1
  void on_element_start(ustring8 const& name);
  void on_element_end(ustring8 const& name);
  void on_attribute(ustring8 const& name, ustring8 const& value);
  void on_character(ustring8 const& text);
  void on_space(ustring8 const& text);
  void on_comment(ustring8 const& text);

  // ---- implementation details ----------------------------------------------
 private:
  void bind();
  void close_start_tag();

  bool _start_tag_closed;
  _private::token_arena _arena;  // before the list: it outlives the nodes
  token_list _tokens;
  xml_parser _parser;
};

}  // namespace parser
}  // namespace VEXA_2_10

#endif  // VEXA_PARSER_XML_TOKEN_STREAM_HPP
