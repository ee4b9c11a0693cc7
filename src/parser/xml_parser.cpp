#include "vexa/parser/xml_parser.hpp"

#include <cstring>
#include <utility>

#include "parser/xml_scan.hpp"
#include "vexa/generic/convert/str_to_x.hpp"

namespace VEXA_2_10 {
namespace parser {

using strings::ustring8;
using namespace _private;
using error = xml_parser::parse_error;

xml_parser::parse_error::parse_error(error_type type_, unsigned int line_, ustring8 const& text_)
    : type(type_), line(line_), text(text_) {}

// ---- the engine ------------------------------------------------------------
// One pass over [p, end) with raw pointers. Texts are built only for the
// callbacks that are set and for error records; everything else is scanned.
class xml_parser::engine {
 public:
  explicit engine(xml_parser& self) : _self(self) {}

  // Parses from p; p is left where parsing stopped.
  void run(char const*& p, char const* end);

  // The steps, shared with the public step functions.
  static char const* name_end(xml_parser const& self, char const* p, char const* end);
  static char reference(xml_parser const& self, char const*& p, char const* end);
  static char const* skip_space(xml_parser& self, char const* p, char const* end);

 private:
  [[noreturn]] void fail(error::error_type type, ustring8 const& text = ustring8()) const {
    throw error(type, _self._line, text);
  }

  void attribute(char const*& p, char const* end);
  void text_run(char const*& p, char const* end);
  void remember_attribute(std::string_view name);
  void forget_attributes();

  std::string_view innermost() const {
    std::size_t const stop = _self._open_ends.back();
    std::size_t const start = _self._open_ends.size() > 1 ? _self._open_ends[_self._open_ends.size() - 2] : 0;
    return std::string_view(_self._open_names).substr(start, stop - start);
  }
  void push(char const* name, std::size_t length) {
    _self._open_names.append(name, length);
    _self._open_ends.push_back(_self._open_names.size());
  }
  void pop() {
    _self._open_ends.pop_back();
    _self._open_names.resize(_self._open_ends.empty() ? 0 : _self._open_ends.back());
  }

  static void call(std::unique_ptr<text_callback> const& slot, ustring8& scratch, char const* p, std::size_t n) {
    scratch.assign(p, n);
    (*slot)(scratch);
  }

  xml_parser& _self;
};

char const* xml_parser::engine::name_end(xml_parser const& self, char const* p, char const* end) {
  if (p == end) throw error(error::unexpected_character, self._line, ustring8());
  if (!has_class(*p, name_start_class)) throw error(error::unexpected_character, self._line, ustring8(1, *p));
  return skip_name(p, end);
}

char const* xml_parser::engine::skip_space(xml_parser& self, char const* p, char const* end) {
  unsigned int lines = 0;
  for (; p < end && is_space(*p); ++p) lines += *p == '\n';
  self._line += lines;
  return p;
}

// p is on '&'; it is left on the reference's ';'.
char xml_parser::engine::reference(xml_parser const& self, char const*& p, char const* end) {
  auto fail = [&](error::error_type type, char const* at) {
    throw error(type, self._line, at < end ? ustring8(1, *at) : ustring8());
  };
  char const* q = p + 1;
  if (q == end) throw error(error::unknown_entity, self._line, ustring8());
  if (*q == '#') {
    ++q;
    bool const hex = q < end && *q == 'x';
    q += hex;
    char const* const digits = q;
    byte_class const digit = hex ? xdigit_class : digit_class;
    while (q < end && has_class(*q, digit)) ++q;
    if (q == end || *q != ';') fail(error::unexpected_character, q);
    unsigned char value = 0;
    if (q != digits) {
      value = generic::convert::str_to_uint8(digits, static_cast<unsigned long>(q - digits),
                                             hex ? types::radix_t::hexadecimal : types::radix_t::automatic,
                                             true);
    }
    p = q;
    return static_cast<char>(value);
  }
  struct named {
    char const* rest;  // the reference after '&'
    char value;
  };
  static named const names[] = {{"amp;", '&'}, {"apos;", '\''}, {"gt;", '>'},
                                {"lt;", '<'},  {"quot;", '"'},  {"nbsp;", ' '}};
  char const first = *q;
  if (first != 'a' && first != 'g' && first != 'l' && first != 'n' && first != 'q') {
    throw error(error::unknown_entity, self._line, ustring8());
  }
  std::size_t const left = static_cast<std::size_t>(end - q);
  for (named const& n : names) {
    std::size_t const length = std::strlen(n.rest);
    if (n.rest[0] == first && left >= length && std::memcmp(q, n.rest, length) == 0) {
      p = q + length - 1;
      return n.value;
    }
  }
  fail(error::unexpected_character, q + 1);
  return 0;  // not reached
}

void xml_parser::engine::remember_attribute(std::string_view name) {
  auto& list = _self._attribute_names;
  auto& set = _self._attribute_set;
  // Few attributes are compared one by one; many go through a hash set, so
  // a tag with a million attributes stays linear.
  constexpr std::size_t few = 8;
  if (list.size() < few) {
    for (std::string_view seen : list) {
      if (seen == name) fail(error::duplicate_attribute, ustring8(name.data(), name.size()));
    }
    list.push_back(name);
    return;
  }
  if (set.empty()) set.insert(list.begin(), list.end());
  if (!set.insert(name).second) fail(error::duplicate_attribute, ustring8(name.data(), name.size()));
}

void xml_parser::engine::forget_attributes() {
  _self._attribute_names.clear();
  if (!_self._attribute_set.empty()) _self._attribute_set.clear();
}

// p is on the first byte of an attribute name inside a tag; it is left past
// the closing quote.
void xml_parser::engine::attribute(char const*& p, char const* end) {
  char const* const name = p;
  char const* const name_stop = name_end(_self, p, end);
  std::size_t const name_length = static_cast<std::size_t>(name_stop - name);
  remember_attribute(std::string_view(name, name_length));
  p = skip_space(_self, name_stop, end);
  if (p == end || *p != '=') fail(error::missing_equals, ustring8(name, name_length));
  p = skip_space(_self, p + 1, end);
  if (p == end || (*p != '"' && *p != '\'')) fail(error::missing_quote);
  char const quote = *p++;

  bool const report = _self._attribute != nullptr;
  ustring8& value = _self._value_text;
  if (report) value.clear();
  for (;;) {
    char const* const stop = find_value_stop(p, end, quote);
    if (report) value.append(p, static_cast<std::size_t>(stop - p));
    p = stop;
    if (p == end || *p == quote) break;
    if (*p == '<') fail(error::unexpected_character, "<");
    char const byte = reference(_self, p, end);
    if (report) value.push_back(byte);
    ++p;
  }
  if (report) {
    _self._name_text.assign(name, name_length);
    (*_self._attribute)(_self._name_text, value);
  }
  if (p == end) fail(error::missing_quote, ustring8(name, name_length));
  ++p;
}

// p is on the first byte of a text run; it is left on the '<', the white
// space pair or the end that closes it.
void xml_parser::engine::text_run(char const*& p, char const* end) {
  bool const report = _self._character != nullptr;
  ustring8& text = _self._value_text;
  char const* stop = find_text_stop(p, end);
  if (report && (stop == end || *stop != '&')) {
    // The common case: no reference, the text is one slice.
    call(_self._character, text, p, static_cast<std::size_t>(stop - p));
    p = stop;
    return;
  }
  if (report) text.clear();
  for (;;) {
    if (report) text.append(p, static_cast<std::size_t>(stop - p));
    p = stop;
    if (p == end || *p != '&') break;
    char const byte = reference(_self, p, end);
    if (report) text.push_back(byte);
    stop = find_text_stop(++p, end);
  }
  if (report) (*_self._character)(text);
}

void xml_parser::engine::run(char const*& p, char const* end) {
  _self._line = 0;
  _self._in_tag = false;
  // Views of an earlier text must not outlive it.
  forget_attributes();

  if (end - p >= 4 && p[3] == '<') p += 3;  // a byte-order mark, whatever its bytes
  if (end - p < 5 || std::memcmp(p, "<?xml", 5) != 0) fail(error::missing_declaration);
  for (p += 5;; ++p) {
    if (p == end) fail(error::declaration_incomplete);
    if (*p == '<' || *p == '>') fail(error::missing_declaration);
    if (*p == '?' && end - p >= 2 && p[1] == '>') break;
  }
  p = skip_space(_self, p + 2, end);
  if (p == end) fail(error::declaration_incomplete);

  bool root_seen = false;
  for (;;) {
    char const* const run = p;
    p = skip_space(_self, p, end);
    if (p != run && !_self._in_tag && _self._whitespace) {
      call(_self._whitespace, _self._value_text, run, static_cast<std::size_t>(p - run));
    }
    if (p == end) break;

    char const c = *p;
    if (_self._in_tag) {
      if (c == '>') {
        _self._in_tag = false;
        ++p;
      } else if (c == '/') {
        if (end - p < 2 || p[1] != '>') fail(error::unexpected_character, end - p < 2 ? ustring8() : ustring8(1, p[1]));
        if (_self._open_ends.empty()) fail(error::tag_mismatch);
        if (_self._element_end) {
          std::string_view const name = innermost();
          call(_self._element_end, _self._name_text, name.data(), name.size());
        }
        _self._in_tag = false;
        pop();
        forget_attributes();
        p += 2;
      } else if (c == '<') {
        fail(error::unexpected_character, "<");
      } else {
        attribute(p, end);
      }
      continue;
    }

    if (c == '<') {
      _self._in_tag = true;
      char const next = end - p >= 2 ? p[1] : 0;
      if (next == '/') {
        // End tag; the in-tag flag stays set until its '>'.
        char const* const name = p += 2;
        char const* const stop = name_end(_self, name, end);
        std::size_t const length = static_cast<std::size_t>(stop - name);
        if (_self._open_ends.empty() || innermost() != std::string_view(name, length)) {
          fail(error::tag_mismatch, ustring8(name, length));
        }
        pop();
        if (stop == end) fail(error::unexpected_end);
        if (_self._element_end) call(_self._element_end, _self._name_text, name, length);
        forget_attributes();
        p = stop;
      } else if (next == '!' && end - p >= 4 && p[2] == '-' && p[3] == '-') {
        char const* const body = p + 4;
        char const* const close = find_comment_end(body, end);
        if (close == end) fail(error::unexpected_end);
        if (_self._comment) call(_self._comment, _self._value_text, body, static_cast<std::size_t>(close - body));
        _self._in_tag = false;
        p = close + 3;
      } else {
        if (root_seen && _self._open_ends.empty()) fail(error::multiple_roots);
        char const* const name = ++p;
        char const* const stop = name_end(_self, name, end);
        std::size_t const length = static_cast<std::size_t>(stop - name);
        push(name, length);
        root_seen = true;
        forget_attributes();
        if (_self._element_start) call(_self._element_start, _self._name_text, name, length);
        p = stop;
      }
    } else if (c == '>') {
      fail(error::unexpected_character, ">");
    } else {
      text_run(p, end);
    }
  }
  if (!_self._open_ends.empty()) throw error(error::unexpected_end, 0, ustring8());
}

// ---- the parser --------------------------------------------------------------

xml_parser::xml_parser() : _in_tag(false), _line(0) {}
xml_parser::~xml_parser() = default;
xml_parser::xml_parser(xml_parser&& other) noexcept = default;
xml_parser& xml_parser::operator=(xml_parser&& other) noexcept = default;

namespace {
template <typename T>
std::unique_ptr<T> clone_of(std::unique_ptr<T> const& slot) {
  return slot ? std::unique_ptr<T>(slot->clone()) : nullptr;
}
}  // namespace

xml_parser::xml_parser(xml_parser const& other)
    : _element_start(clone_of(other._element_start)),
      _element_end(clone_of(other._element_end)),
      _attribute(clone_of(other._attribute)),
      _character(clone_of(other._character)),
      _whitespace(clone_of(other._whitespace)),
      _comment(clone_of(other._comment)),
      _open_names(other._open_names),
      _open_ends(other._open_ends),
      _in_tag(other._in_tag),
      _line(other._line) {}

xml_parser& xml_parser::operator=(xml_parser const& other) {
  if (this != &other) {
    xml_parser copy(other);
    *this = std::move(copy);
  }
  return *this;
}

void xml_parser::set_element_start_handler(text_callback const& callback) { _element_start.reset(callback.clone()); }
void xml_parser::set_element_end_handler(text_callback const& callback) { _element_end.reset(callback.clone()); }
void xml_parser::set_attribute_handler(attribute_callback const& callback) { _attribute.reset(callback.clone()); }
void xml_parser::set_character_handler(text_callback const& callback) { _character.reset(callback.clone()); }
void xml_parser::set_whitespace_handler(text_callback const& callback) { _whitespace.reset(callback.clone()); }
void xml_parser::set_comment_handler(text_callback const& callback) { _comment.reset(callback.clone()); }

xml_parser::parse_error xml_parser::parse(ustring8 const& text) {
  iterator first = text.begin();
  iterator last = text.end();
  return do_parse(first, last);
}

xml_parser::parse_error xml_parser::parse(iterator first, iterator last) { return do_parse(first, last); }

namespace {
// The bytes of [first, last) as pointers; an empty range reads nothing.
struct byte_range {
  char const* begin;
  char const* end;
  byte_range(xml_parser::iterator const& first, xml_parser::iterator const& last)
      : begin(first == last ? nullptr : &*first), end(begin + (last - first)) {}
};
}  // namespace

xml_parser::parse_error xml_parser::do_parse(iterator& first, iterator& last) {
  byte_range const range(first, last);
  char const* p = range.begin;
  try {
    engine(*this).run(p, range.end);
  } catch (parse_error const& e) {
    first += p - range.begin;
    return e;
  }
  first += p - range.begin;
  return parse_error(parse_error::no_error, 0, ustring8());
}

// ---- the steps ---------------------------------------------------------------

bool xml_parser::is_white_space(iterator const& position) const { return is_space(*position); }

ustring8 xml_parser::parse_whitespace(iterator& position, iterator& last) {
  byte_range const range(position, last);
  char const* const stop = engine::skip_space(*this, range.begin, range.end);
  position += stop - range.begin;
  return ustring8(range.begin, static_cast<std::size_t>(stop - range.begin));
}

ustring8 xml_parser::parse_name(iterator& position, iterator& last) {
  byte_range const range(position, last);
  char const* const stop = engine::name_end(*this, range.begin, range.end);
  position += stop - range.begin - 1;
  return ustring8(range.begin, static_cast<std::size_t>(stop - range.begin));
}

ustring8 xml_parser::parse_attrib_value(iterator& position, iterator& last) {
  byte_range const range(position, last);
  char const* p = range.begin;
  if (p == range.end || (*p != '"' && *p != '\'')) throw parse_error(parse_error::missing_quote, _line, ustring8());
  char const quote = *p++;
  ustring8 value;
  for (;;) {
    char const* const stop = find_value_stop(p, range.end, quote);
    value.append(p, static_cast<std::size_t>(stop - p));
    p = stop;
    if (p == range.end || *p == quote) break;
    if (*p == '<') throw parse_error(parse_error::unexpected_character, _line, "<");
    char const* at = p;
    value.push_back(engine::reference(*this, at, range.end));
    p = at + 1;
  }
  position += p - range.begin;
  return value;
}

ustring8 xml_parser::parse_character(iterator& position, iterator& last) {
  byte_range const range(position, last);
  char const* p = range.begin;
  if (p == range.end) throw parse_error(parse_error::unknown_entity, _line, ustring8());
  char const byte = engine::reference(*this, p, range.end);
  position += p - range.begin;
  return ustring8(1, byte);
}

}  // namespace parser
}  // namespace VEXA_2_10
