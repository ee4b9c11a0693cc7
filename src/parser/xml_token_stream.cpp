#include "vexa/parser/xml_token_stream.hpp"

#include "vexa/functor/member_function.hpp"

namespace VEXA_2_10 {
namespace parser {

using strings::ustring8;

xml_token_stream::token::token(token_type type, ustring8 const& value) : _type(type), _value(value) {}

// ---- the arena -----------------------------------------------------------------

namespace _private {

struct token_arena::block {
  block* previous;
};

void token_arena::release() {
  while (_blocks != nullptr) {
    block* const previous = _blocks->previous;
    ::operator delete(_blocks);
    _blocks = previous;
  }
  _next = _end = nullptr;
  _next_size = 0;
}

void* token_arena::grow(std::size_t bytes, std::size_t align) {
  // Blocks double from 4 KB to 256 KB; a larger request gets its own.
  std::size_t const header = (sizeof(block) + align - 1) / align * align;
  _next_size = _next_size == 0 ? 4096 : _next_size < (256u << 10) ? 2 * _next_size : _next_size;
  std::size_t const size = header + bytes > _next_size ? header + bytes : _next_size;
  auto* const b = static_cast<block*>(::operator new(size));
  b->previous = _blocks;
  _blocks = b;
  char* const base = reinterpret_cast<char*>(b);
  _next = base + header + bytes;
  _end = base + size;
  return base + header;
}

}  // namespace _private

// ---- the stream -----------------------------------------------------------------

xml_token_stream::xml_token_stream() : _start_tag_closed(true), _tokens(token_list::allocator_type(&_arena)) {
  bind();
}

xml_token_stream::xml_token_stream(xml_token_stream const& other)
    : _start_tag_closed(other._start_tag_closed),
      _tokens(other._tokens.begin(), other._tokens.end(), token_list::allocator_type(&_arena)),
      _parser(other._parser) {
  bind();
}

xml_token_stream& xml_token_stream::operator=(xml_token_stream const& other) {
  if (this != &other) {
    _start_tag_closed = other._start_tag_closed;
    _tokens.clear();
    _arena.release();
    _tokens.assign(other._tokens.begin(), other._tokens.end());
    _parser = other._parser;
    bind();
  }
  return *this;
}

void xml_token_stream::bind() {
  _parser.set_element_start_handler(functor::member_function(this, &xml_token_stream::on_element_start));
  _parser.set_element_end_handler(functor::member_function(this, &xml_token_stream::on_element_end));
  _parser.set_attribute_handler(functor::member_function(this, &xml_token_stream::on_attribute));
  _parser.set_character_handler(functor::member_function(this, &xml_token_stream::on_character));
  _parser.set_whitespace_handler(functor::member_function(this, &xml_token_stream::on_space));
  _parser.set_comment_handler(functor::member_function(this, &xml_token_stream::on_comment));
}

xml_parser::parse_error xml_token_stream::parse(ustring8 const& text) {
  _start_tag_closed = true;
  return _parser.parse(text);
}

xml_parser::parse_error xml_token_stream::parse(xml_parser::iterator const& first,
                                                xml_parser::iterator const& last) {
  _start_tag_closed = true;
  return _parser.parse(first, last);
}

std::size_t xml_token_stream::size() const {
  std::size_t n = 0;
  for (auto it = _tokens.begin(); it != _tokens.end(); ++it) ++n;
  return n;
}

void xml_token_stream::close_start_tag() {
  if (!_start_tag_closed) {
    _tokens.emplace_back(token::start_tag_end, ustring8());
    _start_tag_closed = true;
  }
}

void xml_token_stream::on_element_start(ustring8 const& name) {
  close_start_tag();
  _tokens.emplace_back(token::element_start, name);
  _start_tag_closed = false;
}

void xml_token_stream::on_element_end(ustring8 const& name) {
  close_start_tag();
  _tokens.emplace_back(token::element_end, name);
}

void xml_token_stream::on_attribute(ustring8 const& name, ustring8 const& value) {
  _tokens.emplace_back(token::attribute_name, name);
  _tokens.emplace_back(token::attribute_value, value);
}

void xml_token_stream::on_character(ustring8 const& text) {
  close_start_tag();
  _tokens.emplace_back(token::character, text);
}

void xml_token_stream::on_space(ustring8 const& text) {
  close_start_tag();
  _tokens.emplace_back(token::space, text);
}

void xml_token_stream::on_comment(ustring8 const& text) { _tokens.emplace_back(token::comment, text); }

}  // namespace parser
}  // namespace VEXA_2_10
