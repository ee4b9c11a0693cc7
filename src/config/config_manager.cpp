#include "vexa/config/config_manager.hpp"

#include <cstdint>
#include <ostream>
#include <set>
#include <string>
#include <typeinfo>
#include <unordered_map>

#include "vexa/config/commandline_item.hpp"
#include "vexa/config/enviroment_item.hpp"
#include "vexa/config/file_item.hpp"
#include "vexa/config/user_item.hpp"

namespace VEXA_2_10 {
namespace config {

using strings::ustring8;
using entry_type = base_config_item::entry_type;

namespace {

bool is_array_entry(entry_type const* entry) { return entry != nullptr && (entry->first & 3u) == 3u; }

// The library's own sources answer get_value from their trees alone.
bool answers_from_its_tree(base_config_item const& item) {
  std::type_info const& type = typeid(item);
  return type == typeid(file_item) || type == typeid(commandline_item) || type == typeid(enviroment_item) ||
         type == typeid(user_item);
}

constexpr std::size_t longest_remembered_key = 256;
constexpr std::size_t most_remembered_answers = 1u << 16;

}  // namespace

// What get_value answered, valid while every source's tree has the generation
// noted here.
struct config_manager::answers {
  std::vector<std::pair<base_config_item const*, std::uint64_t>> generations;
  bool usable = false;
  std::unordered_map<std::string, types::variant> values;
};

config_manager::config_manager() : _answers(new answers) {}
config_manager::~config_manager() = default;

bool config_manager::answers_valid() {
  answers& a = *_answers;
  bool same = a.generations.size() == _items.size();
  if (same) {
    auto noted = a.generations.begin();
    for (auto const& item : _items) {
      if (noted->first != item.get() || (item && noted->second != item->tree().generation())) {
        same = false;
        break;
      }
      ++noted;
    }
  }
  if (!same) {
    a.values.clear();
    a.generations.clear();
    a.usable = true;
    for (auto const& item : _items) {
      a.generations.emplace_back(item.get(), item ? item->tree().generation() : 0);
      if (item && !answers_from_its_tree(*item)) a.usable = false;
    }
  }
  return a.usable;
}

void config_manager::init(config_dispatch const& dispatch) {
  _answers.reset(new answers);
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
  if (key.size() > longest_remembered_key || !answers_valid()) return resolve(key);
  auto& values = _answers->values;
  auto const known = values.find(key);
  if (known != values.end()) return known->second;
  types::variant value = resolve(key);
  if (values.size() < most_remembered_answers) {
    // A private copy of the value object, made right after the table's node,
    // usually shares its cache line: a repeated look-up touches less memory.
    values.emplace(key, types::variant(value.value_object()->clone()));
  }
  return value;
}

types::variant config_manager::resolve(ustring8 const& key) {
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
    // The first source that has the key answers, array or not.
    if (!item || item->get_value(key) == nullptr) continue;
    config_tree::pair_array elements;
    item->tree().get_array(key, elements);
    for (auto const& element : elements) result.push_back(element.second.second);
    return;
  }
}

void config_manager::get_key_value_array(ustring8 const& key,
                                         std::vector<std::pair<ustring8, types::variant>>& result) {
  for (auto const& item : _items) {
    if (!item || item->get_value(key) == nullptr) continue;
    config_tree::pair_array below;
    item->tree().get_value_pair_array(key, below, true, ustring8());
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
