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
namespace {

// Error records are made out of line, away from the scanning loops.
[[noreturn]] __attribute__((noinline, cold)) void raise(error::error_type type, unsigned int line,
                                                         char const* text, std::size_t length) {
  throw error(type, line, ustring8(text, length));
}
[[noreturn]] inline void raise(error::error_type type, unsigned int line) { raise(type, line, "", 0); }
// The byte at `at` as the text, or empty at the end.
[[noreturn]] inline void raise_at(error::error_type type, unsigned int line, char const* at, char const* end) {
  raise(type, line, at, at < end ? 1 : 0);
}

// The end of the name at p; raises unexpected_character when p holds no letter.
inline char const* name_end(char const* p, char const* end, unsigned int line) {
  if (p == end || !has_class(*p, name_start_class)) raise_at(error::unexpected_character, line, p, end);
  return skip_name(p, end);
}

// The byte the reference at p (on '&') stands for; p is left on its ';'.
char reference(char const*& p, char const* end, unsigned int line) {
  char const* q = p + 1;
  if (q == end) raise(error::unknown_entity, line);
  if (*q == '#') {
    ++q;
    bool const hex = q < end && *q == 'x';
    q += hex;
    char const* const digits = q;
    byte_class const digit = hex ? xdigit_class : digit_class;
    while (q < end && has_class(*q, digit)) ++q;
    if (q == end || *q != ';') raise_at(error::unexpected_character, line, q, end);
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
    std::size_t length;
    char value;
  };
  static named const names[] = {{"amp;", 4, '&'}, {"apos;", 5, '\''}, {"gt;", 3, '>'},
                                {"lt;", 3, '<'},  {"quot;", 5, '"'},  {"nbsp;", 5, ' '}};
  char const first = *q;
  if (first != 'a' && first != 'g' && first != 'l' && first != 'n' && first != 'q') {
    raise(error::unknown_entity, line);
  }
  std::size_t const left = static_cast<std::size_t>(end - q);
  for (named const& n : names) {
    if (n.rest[0] == first && left >= n.length && std::memcmp(q, n.rest, n.length) == 0) {
      p = q + n.length - 1;
      return n.value;
    }
  }
  raise_at(error::unexpected_character, line, q + 1, end);
}

}  // namespace

class xml_parser::engine {
 public:
  explicit engine(xml_parser& self) : _self(self), _line(0) {}

  // Parses from p; p is left where parsing stopped.
  void run(char const*& p, char const* end);

  // Turns the views of the open elements back into owned names.
  void keep_open_elements();

 private:
  void attribute(char const*& p, char const* end);
  void text_run(char const*& p, char const* end);
  void remember_attribute(std::string_view name) {
    auto& list = _self._attribute_names;
    if (list.empty()) {
      list.push_back(name);
    } else {
      remember_another_attribute(name);
    }
  }
  void remember_another_attribute(std::string_view name);
  void forget_attributes() {
    if (!_self._attribute_names.empty()) {
      _self._attribute_names.clear();
      if (!_self._attribute_set.empty()) _self._attribute_set.clear();
    }
  }
  void skip(char const*& p, char const* end) { p = skip_space(p, end, _line); }

  static void call(std::unique_ptr<text_callback> const& slot, ustring8& scratch, char const* p, std::size_t n) {
    scratch.assign(p, n);
    (*slot)(scratch);
  }

  xml_parser& _self;

 public:
  unsigned int _line;
};

void xml_parser::engine::keep_open_elements() {
  std::string names;
  _self._open_ends.clear();
  for (std::string_view name : _self._open_views) {
    names.append(name.data(), name.size());
    _self._open_ends.push_back(names.size());
  }
  _self._open_names.swap(names);
  _self._open_views.clear();
}

void xml_parser::engine::remember_another_attribute(std::string_view name) {
  auto& list = _self._attribute_names;
  auto& set = _self._attribute_set;
  // Few attributes are compared one by one; many go through a hash set, so
  // a tag with a million attributes stays linear.
  constexpr std::size_t few = 8;
  if (list.size() < few) {
    for (std::string_view seen : list) {
      if (seen.size() == name.size() && same_bytes(seen.data(), name.data(), name.size())) raise(error::duplicate_attribute, _line, name.data(), name.size());
    }
    list.push_back(name);
    return;
  }
  if (set.empty()) set.insert(list.begin(), list.end());
  if (!set.insert(name).second) raise(error::duplicate_attribute, _line, name.data(), name.size());
  list.push_back(name);
}

// p is on the first byte of an attribute name inside a tag; it is left past
// the closing quote.
void xml_parser::engine::attribute(char const*& p, char const* end) {
  char const* const name = p;
  char const* const name_stop = name_end(p, end, _line);
  std::size_t const name_length = static_cast<std::size_t>(name_stop - name);
  remember_attribute(std::string_view(name, name_length));
  p = name_stop;
  skip(p, end);
  if (p == end || *p != '=') raise(error::missing_equals, _line, name, name_length);
  ++p;
  skip(p, end);
  if (p == end || (*p != '"' && *p != '\'')) raise(error::missing_quote, _line);
  char const quote = *p++;

  char const* stop = find_value_stop(p, end, quote);
  if (_self._attribute == nullptr) {
    while (stop != end && *stop != quote) {
      if (*stop == '<') raise(error::unexpected_character, _line, "<", 1);
      reference(stop, end, _line);
      stop = find_value_stop(stop + 1, end, quote);
    }
    p = stop;
  } else {
    ustring8& value = _self._value_text;
    value.assign(p, static_cast<std::size_t>(stop - p));
    p = stop;
    while (p != end && *p != quote) {
      if (*p == '<') raise(error::unexpected_character, _line, "<", 1);
      value.push_back(reference(p, end, _line));
      stop = find_value_stop(++p, end, quote);
      value.append(p, static_cast<std::size_t>(stop - p));
      p = stop;
    }
    _self._name_text.assign(name, name_length);
    (*_self._attribute)(_self._name_text, value);
  }
  if (p == end) raise(error::missing_quote, _line, name, name_length);
  ++p;
}

// p is on the first byte of a text run; it is left on the '<', the white
// space pair or the end that closes it.
void xml_parser::engine::text_run(char const*& p, char const* end) {
  char const* stop = find_text_stop(p, end);
  if (_self._character == nullptr) {
    while (stop != end && *stop == '&') {
      reference(stop, end, _line);
      stop = find_text_stop(stop + 1, end);
    }
    p = stop;
    return;
  }
  ustring8& text = _self._value_text;
  text.assign(p, static_cast<std::size_t>(stop - p));
  p = stop;
  while (p != end && *p == '&') {
    text.push_back(reference(p, end, _line));
    stop = find_text_stop(++p, end);
    text.append(p, static_cast<std::size_t>(stop - p));
    p = stop;
  }
  (*_self._character)(text);
}

void xml_parser::engine::run(char const*& p, char const* end) {
  // The in-tag flag lives in a register while the parse runs.
  bool in_tag = false;
  struct keep_flag {
    bool const& flag;
    bool& member;
    ~keep_flag() { member = flag; }
  } const keep{in_tag, _self._in_tag};
  // Views of an earlier text must not outlive it.
  _self._attribute_names.clear();
  _self._attribute_set.clear();
  auto& open = _self._open_views;
  open.clear();
  for (std::size_t i = 0, from = 0; i < _self._open_ends.size(); from = _self._open_ends[i++]) {
    open.emplace_back(_self._open_names.data() + from, _self._open_ends[i] - from);
  }

  if (end - p >= 4 && p[3] == '<') p += 3;  // a byte-order mark, whatever its bytes
  if (end - p < 5 || std::memcmp(p, "<?xml", 5) != 0) raise(error::missing_declaration, _line);
  for (p += 5;; ++p) {
    if (p == end) raise(error::declaration_incomplete, _line);
    if (*p == '<' || *p == '>') raise(error::missing_declaration, _line);
    if (*p == '?' && end - p >= 2 && p[1] == '>') break;
  }
  p += 2;
  skip(p, end);
  if (p == end) raise(error::declaration_incomplete, _line);

  bool root_seen = false;
  for (;;) {
    if (is_space(*p)) {
      char const* const run = p;
      skip(p, end);
      if (!in_tag && _self._whitespace) {
        call(_self._whitespace, _self._value_text, run, static_cast<std::size_t>(p - run));
      }
      if (p == end) break;
    }

    char const c = *p;
    if (in_tag) {
      if (c == '>') {
        in_tag = false;
        ++p;
      } else if (c == '/') {
        if (end - p < 2 || p[1] != '>') raise_at(error::unexpected_character, _line, p + 1, end);
        if (open.empty()) raise(error::tag_mismatch, _line);
        if (_self._element_end) call(_self._element_end, _self._name_text, open.back().data(), open.back().size());
        in_tag = false;
        open.pop_back();
        forget_attributes();
        p += 2;
      } else if (c == '<') {
        raise(error::unexpected_character, _line, "<", 1);
      } else {
        attribute(p, end);
      }
    } else if (c == '<') {
      in_tag = true;
      char const next = end - p >= 2 ? p[1] : 0;
      if (next == '/') {
        // End tag; the in-tag flag stays set until its '>'.
        char const* const name = p += 2;
        char const* const stop = name_end(name, end, _line);
        std::size_t const length = static_cast<std::size_t>(stop - name);
        if (open.empty() || open.back().size() != length || !same_bytes(open.back().data(), name, length)) {
          raise(error::tag_mismatch, _line, name, length);
        }
        open.pop_back();
        if (stop == end) raise(error::unexpected_end, _line);
        if (_self._element_end) call(_self._element_end, _self._name_text, name, length);
        forget_attributes();
        p = stop;
      } else if (next == '!' && end - p >= 4 && p[2] == '-' && p[3] == '-') {
        char const* const body = p + 4;
        char const* const close = find_comment_end(body, end);
        if (close == end) raise(error::unexpected_end, _line);
        if (_self._comment) call(_self._comment, _self._value_text, body, static_cast<std::size_t>(close - body));
        in_tag = false;
        p = close + 3;
      } else {
        if (root_seen && open.empty()) raise(error::multiple_roots, _line);
        char const* const name = ++p;
        char const* const stop = name_end(name, end, _line);
        std::size_t const length = static_cast<std::size_t>(stop - name);
        open.emplace_back(name, length);
        root_seen = true;
        forget_attributes();
        if (_self._element_start) call(_self._element_start, _self._name_text, name, length);
        p = stop;
      }
    } else if (c == '>') {
      raise(error::unexpected_character, _line, ">", 1);
    } else {
      text_run(p, end);
    }
    if (p == end) break;
  }
  if (!open.empty()) raise(error::unexpected_end, 0);
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
  engine e(*this);
  // However the parse ends, the open elements are kept as owned names and
  // the position and line count are set.
  struct finish {
    engine& e;
    xml_parser& self;
    iterator& first;
    char const*& p;
    char const* begin;
    ~finish() {
      e.keep_open_elements();
      self._line = e._line;
      first += p - begin;
    }
  };
  try {
    finish const guard{e, *this, first, p, range.begin};
    e.run(p, range.end);
  } catch (parse_error const& error) {
    return error;
  }
  return parse_error(parse_error::no_error, 0, ustring8());
}

// ---- the steps ---------------------------------------------------------------

bool xml_parser::is_white_space(iterator const& position) const { return is_space(*position); }

ustring8 xml_parser::parse_whitespace(iterator& position, iterator& last) {
  byte_range const range(position, last);
  char const* const stop = skip_space(range.begin, range.end, _line);
  position += stop - range.begin;
  return ustring8(range.begin, static_cast<std::size_t>(stop - range.begin));
}

ustring8 xml_parser::parse_name(iterator& position, iterator& last) {
  byte_range const range(position, last);
  char const* const stop = name_end(range.begin, range.end, _line);
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
    value.push_back(reference(at, range.end, _line));
    p = at + 1;
  }
  position += p - range.begin;
  return value;
}

ustring8 xml_parser::parse_character(iterator& position, iterator& last) {
  byte_range const range(position, last);
  char const* p = range.begin;
  if (p == range.end) throw parse_error(parse_error::unknown_entity, _line, ustring8());
  char const byte = reference(p, range.end, _line);
  position += p - range.begin;
  return ustring8(1, byte);
}

}  // namespace parser
}  // namespace VEXA_2_10
