#include "vexa/config/file_item.hpp"

#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "vexa/system/file.hpp"

namespace VEXA_2_10 {
namespace config {

using strings::ustring8;
using tok = config_token::tok_types;

namespace {

// Whether `name` opens for reading. A name holding a NUL byte names no file.
bool opens(ustring8 const& name) {
  if (name.empty() || name.find('\0') != ustring8::npos) return false;
  std::ifstream file(name, std::ios::in | std::ios::binary);
  return file.is_open();
}

// The text value of `key` in the first source that has the key; false when
// none has it.
bool first_value(config_item_list& items, ustring8 const& key, ustring8& value) {
  for (auto const& item : items) {
    if (!item) continue;
    if (base_config_item::entry_type const* entry = item->get_value(key)) {
      value = entry->second.as_string();
      return true;
    }
  }
  return false;
}

bool is_blank(tok kind) {
  return kind == config_token::T_SPACE || kind == config_token::T_TABCHAR || kind == config_token::T_NEWLINE;
}

bool is_comment(tok kind) { return kind == config_token::T_POUND || kind == config_token::T_FSFS; }

// How a value is written so that the reader gives it back.
ustring8 written_value(ustring8 const& value, bool in_array) {
  bool const needs_quotes = value.empty() || value.find_first_of(" #\"") != ustring8::npos ||
                            value.find("//") != ustring8::npos || (in_array && value.find(',') != ustring8::npos);
  if (!needs_quotes) return base_config_item::quote_value(value);
  ustring8 quoted = "\"";
  for (char c : value) {
    if (c == '"') quoted += '\\';
    quoted += c;
  }
  return quoted + "\"";
}

}  // namespace

file_item::file_item(ustring8 const& file_name) : _file_name(file_name) {}
file_item::file_item(file_item const& other) : base_config_item(other), _file_name(other._file_name) {}
file_item& file_item::operator=(file_item const& other) {
  base_config_item::operator=(other);
  _file_name = other._file_name;
  return *this;
}
file_item::~file_item() = default;

file_item* file_item::clone() const {
  auto* copy = new file_item(*this);
  copy->set_owned(true);
  return copy;
}

file_item* file_item::create() const {
  auto* fresh = new file_item(ustring8());
  fresh->set_owned(true);
  return fresh;
}

ustring8 file_item::get_id() const { return "standard file"; }

bool file_item::load(config_item_list& items) {
  _tree.erase();
  ustring8 name;
  if (first_value(items, "cfg_file", name) && opens(name)) {
    _file_name = name;
  } else if (first_value(items, "application.name.raw", name) && opens(name + ".cfg")) {
    _file_name = name + ".cfg";
  }
  load_file();
  return true;
}

void file_item::load_file() {
  if (_file_name.empty()) return;
  ustring8 text;
  if (system::load_file(_file_name, text) != 0) return;
  parse(text);
}

void file_item::parse_comment(ustring8 const& text, unsigned int& position) {
  config_token token;
  for (;;) {
    unsigned int const before = position;
    if (get_token(text, position, token) == config_token::T_END) return;
    if (token.type == config_token::T_NEWLINE) {
      position = before;
      return;
    }
  }
}

void file_item::parse(ustring8 const& text) {
  unsigned int at = 0;
  config_token token;
  ustring8 prefix;
  ustring8 key;
  ustring8 value;
  // Only T_END is taken from what get_token returns; everything else looks at
  // the stored kind, so "*/" (stored 24, returned as "//") is plain text.
  auto next = [&]() { return get_token(text, at, token) != config_token::T_END; };

  while (next()) {
    tok const kind = token.type;
    if (is_blank(kind)) continue;
    if (is_comment(kind)) {
      parse_comment(text, at);
      continue;
    }

    if (kind == config_token::T_SBRACKET) {
      ustring8 section;
      while (next() && token.type != config_token::T_EBRACKET) {
        if (!is_blank(token.type)) section += token.value;
      }
      prefix = section.empty() ? ustring8() : section + ".";
      continue;
    }

    // A key: everything up to the first '=', blanks dropped.
    key.clear();
    bool found_eq = kind == config_token::T_EQ;
    if (!found_eq) key += token.value;
    while (!found_eq && next()) {
      if (token.type == config_token::T_EQ) {
        found_eq = true;
      } else if (!is_blank(token.type)) {
        key += token.value;
      }
    }
    if (!found_eq) break;  // the end came before any '='

    if (key.size() >= 2 && key.compare(key.size() - 2, 2, "[]") == 0) {
      key.resize(key.size() - 2);
      generic::varg_list elements;
      value.clear();
      bool after_comma = false;
      while (next()) {
        tok const part = token.type;
        if (part == config_token::T_NON_ALPHA_NUM && token.value == ",") {
          elements.push_back(generic::argument(types::variant(value)));
          value.clear();
          after_comma = true;
        } else if (part == config_token::T_NEWLINE) {
          if (!after_comma) break;
          after_comma = false;  // one line feed continues the array, a blank line ends it
        } else if (part == config_token::T_SPACE || part == config_token::T_TABCHAR) {
          // dropped
        } else if (is_comment(part)) {
          parse_comment(text, at);
        } else {
          value += token.value;
          after_comma = false;
        }
      }
      if (!value.empty()) elements.push_back(generic::argument(types::variant(value)));
      set_array(prefix + key, elements, generic::varg_list());
      continue;
    }

    value.clear();
    while (next() && token.type != config_token::T_NEWLINE) {
      tok const part = token.type;
      if (part == config_token::T_SPACE || part == config_token::T_TABCHAR) continue;
      if (is_comment(part)) {
        parse_comment(text, at);
        continue;
      }
      value += token.value;
    }
    if (!value.empty()) set(prefix + key, types::variant(value), 0);
  }
}

bool file_item::save(config_item_list&) {
  if (_file_name.empty()) return false;
  ustring8 out;
  _private::for_each_value(
      _tree, [&out](ustring8 const& key, config_tree const& node, std::vector<config_tree const*> const& elements) {
        if ((node.entry().first & 3u) == 3u) {
          out += key + "[] =";
          for (std::size_t i = 0; i < elements.size(); ++i) {
            out += (i == 0 ? " " : ", ") + written_value(elements[i]->entry().second.as_string(), true);
          }
          out += "\n";
        } else {
          out += key + " = " + written_value(node.entry().second.as_string(), false) + "\n";
        }
      });
  return system::store_file(_file_name, out) == 0;
}

}  // namespace config
}  // namespace VEXA_2_10
