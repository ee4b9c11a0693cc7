#include "vexa/config/base_config_item.hpp"

#include <ostream>
#include <string>
#include <utility>

namespace VEXA_2_10 {
namespace config {

using strings::ustring8;

base_config_item::base_config_item() = default;
base_config_item::base_config_item(base_config_item const& other)
    : clone_ability(other), create_ability(other), reference_count_pointer_ability(other), _tree(other._tree) {}
base_config_item& base_config_item::operator=(base_config_item const& other) {
  _tree = other._tree;
  return *this;
}
base_config_item::~base_config_item() = default;

bool base_config_item::load(config_item_list&) { return true; }
bool base_config_item::save(config_item_list&) { return true; }
void base_config_item::unload(config_item_list&) { _tree.erase(); }

base_config_item::entry_type const* base_config_item::get_value(ustring8 const& key) const {
  return _tree.get_node(key);
}

void base_config_item::set(ustring8 const& key, types::variant const& value, unsigned int flags) {
  _tree.set_node(key, value, flags);
}

void base_config_item::set_array(ustring8 const& key, generic::varg_list const& elements,
                                 generic::varg_list const& attributes) {
  config_tree* node = _tree.make_node(key);
  node->release_children();
  node->_entry.first = 3u;
  node->_entry.second = types::variant(static_cast<unsigned int>(elements.count()));
  unsigned long index = 0;
  for (generic::argument const& element : elements) {
    auto child = memory::pointers::make_rc<config_tree>();
    child->_entry.first = 1u;
    child->_entry.second = element.value();
    node->_children.emplace(std::to_string(index++), std::move(child));
  }
  for (generic::argument const& attribute : attributes) {
    if (attribute.has_name()) node->set_node(attribute.name(), attribute.value(), 0u);
  }
}

std::ostream& base_config_item::dump(std::ostream& os) {
  os << "object : " << get_id() << "\n";
  return _tree.dump(os, 0);
}

bool base_config_item::make_key_value(ustring8 const& text, ustring8& key, ustring8& value) {
  key.clear();
  value.clear();
  unsigned int at = 0;
  config_token token;
  ustring8 gathered;
  while (get_token(text, at, token) != config_token::T_END) {
    switch (token.type) {
      case config_token::T_SPACE:
      case config_token::T_TABCHAR:
        break;
      case config_token::T_EQ:
      case config_token::T_EQEQ:
        key = gathered;
        value.assign(text, token.start_position + 1, ustring8::npos);
        return true;
      case config_token::T_PLUSEQ:
      case config_token::T_MINUSEQ:
      case config_token::T_COLONEQ:
      case config_token::T_LTEQ:
      case config_token::T_GTEQ:
      case config_token::T_TIMESEQ:
      case config_token::T_DIVEQ:
        // The '=' is the second byte of these: the first belongs to the key.
        key = gathered + token.value.substr(0, 1);
        value.assign(text, token.start_position + 2, ustring8::npos);
        return true;
      default:
        gathered += token.value;
        break;
    }
  }
  return false;
}

ustring8 base_config_item::quote_value(ustring8 const& value) {
  if (value.find_first_of("\r\t\n") == ustring8::npos) return value;
  return "\"" + value + "\"";
}

}  // namespace config
}  // namespace VEXA_2_10
