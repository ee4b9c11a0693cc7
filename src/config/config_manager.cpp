#include "vexa/config/config_manager.hpp"

#include <ostream>
#include <set>

namespace VEXA_2_10 {
namespace config {

using strings::ustring8;
using entry_type = base_config_item::entry_type;

namespace {

bool is_array_entry(entry_type const* entry) { return entry != nullptr && (entry->first & 3u) == 3u; }

}  // namespace

config_manager::config_manager() = default;
config_manager::~config_manager() = default;

void config_manager::init(config_dispatch const& dispatch) {
  _items.clear();
  _dispatch.reset(dispatch.clone());
  _dispatch->setup(_items);
}

bool config_manager::load() { return _dispatch && _dispatch->load(_items); }
bool config_manager::save() { return _dispatch && _dispatch->save(_items); }
void config_manager::unload() {
  if (_dispatch) _dispatch->unload(_items);
}

types::variant config_manager::get_value(ustring8 const& key) {
  // The visited keys are only gathered once a reference is met: a plain
  // look-up allocates nothing.
  std::set<ustring8> visited;
  ustring8 followed;
  ustring8 const* current = &key;
  for (;;) {
    entry_type const* entry = nullptr;
    for (auto const& item : _items) {
      if (item && (entry = item->get_value(*current)) != nullptr) break;
    }
    if (entry == nullptr || is_array_entry(entry)) return types::variant();
    if ((entry->first & 4u) == 0) return entry->second;
    if (visited.empty()) visited.insert(key);
    followed = entry->second.as_string();
    if (!visited.insert(followed).second) return types::variant();  // a loop of references
    current = &followed;
  }
}

bool config_manager::value_exist(ustring8 const& key) { return get_value(key) != types::nil; }

bool config_manager::is_array(ustring8 const& key) {
  for (auto const& item : _items) {
    if (item && is_array_entry(item->get_value(key))) return true;
  }
  return false;
}

void config_manager::get_array(ustring8 const& key, std::vector<types::variant>& result) {
  for (auto const& item : _items) {
    if (!item || !is_array_entry(item->get_value(key))) continue;
    config_tree::pair_array elements;
    item->tree().get_array(key, elements);
    for (auto const& element : elements) result.push_back(element.second.second);
    return;
  }
}

void config_manager::get_key_value_array(ustring8 const& key,
                                         std::vector<std::pair<ustring8, types::variant>>& result) {
  for (auto const& item : _items) {
    if (!item) continue;
    config_tree::pair_array below;
    item->tree().get_value_pair_array(key, below, true, ustring8());
    if (below.empty()) continue;
    for (auto const& pair : below) {
      if ((pair.second.first & 1u) != 0) result.emplace_back(pair.first, pair.second.second);
    }
    return;
  }
}

memory::pointers::rc_pointer<base_config_item> config_manager::get_config_item(ustring8 const& id) {
  for (auto const& item : _items) {
    if (item && item->get_id() == id) return item;
  }
  return memory::pointers::rc_pointer<base_config_item>();
}

std::ostream& config_manager::dump(std::ostream& os) {
  os << "config_manager:\n";
  for (auto const& item : _items) {
    os << "\nconfig_item:\n";
    if (item) item->dump(os);
  }
  return os << "\nno more config_items!\n\nending output\n";
}

std::ostream& operator<<(std::ostream& os, config_manager& manager) { return manager.dump(os); }

}  // namespace config
}  // namespace VEXA_2_10
