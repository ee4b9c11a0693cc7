#include "vexa/config/config_tree.hpp"

#include <atomic>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "config/key_component.hpp"

namespace VEXA_2_10 {
namespace config {

using memory::pointers::rc_pointer;
using strings::ustring8;

namespace {

// One counter for every tree of the process: a new tree and each change take
// the next number, so no two readings of generation() ever coincide unless
// they are of the same tree in the same state, even when a new tree is made
// where an old one was and has been changed as often.
std::atomic<std::uint64_t> last_generation{0};

std::uint64_t next_generation() { return last_generation.fetch_add(1, std::memory_order_relaxed) + 1; }

}  // namespace

config_tree::config_tree() : _entry(0u, types::variant()), _generation(next_generation()) {}
config_tree::config_tree(types::variant const& empty) : _entry(0u, empty), _generation(next_generation()) {}

config_tree::config_tree(config_tree const& other)
    : clone_ability(other),
      reference_count_pointer_ability(other),
      _entry(other._entry),
      _generation(next_generation()) {
  copy_children_from(other);
}

config_tree& config_tree::operator=(config_tree const& other) {
  if (this != &other) {
    // Copy first: `other` may live below this node.
    config_tree copy(other);
    release_children();
    _children.swap(copy._children);
    _entry = copy._entry;
    _generation = next_generation();
  }
  return *this;
}

config_tree::~config_tree() { release_children(); }

config_tree* config_tree::clone() const {
  config_tree* copy = new config_tree(*this);
  copy->set_owned(true);
  return copy;
}

// Node by node with a work list instead of each child copying its own
// children, so the depth of the tree never becomes depth of the call stack.
void config_tree::copy_children_from(config_tree const& other) {
  std::vector<std::pair<config_tree const*, config_tree*>> work{{&other, this}};
  while (!work.empty()) {
    auto const [from, to] = work.back();
    work.pop_back();
    for (auto const& child : from->_children) {
      if (!child.second) throw "unreferanced object";
      auto* node = new config_tree();
      node->set_owned(true);
      node->_entry = child.second->_entry;
      to->_children.emplace_hint(to->_children.end(), child.first, rc_pointer<config_tree>(node));
      if (!child.second->_children.empty()) work.emplace_back(child.second.get(), node);
    }
  }
}

// Children that this tree alone holds are emptied before they are let go, so
// no destructor has grandchildren left to release in turn.
void config_tree::release_children() {
  _generation = next_generation();
  std::vector<rc_pointer<config_tree>> pending;
  for (auto& child : _children) pending.push_back(std::move(child.second));
  _children.clear();
  while (!pending.empty()) {
    rc_pointer<config_tree> node = std::move(pending.back());
    pending.pop_back();
    if (node && node->reference_count() == 1 && node->owned()) {
      for (auto& child : node->_children) pending.push_back(std::move(child.second));
      node->_children.clear();
    }
  }
}

void config_tree::parse_string(ustring8 const& key, ustring8& head, ustring8& rest) const {
  head.clear();
  rest.clear();
  std::size_t at = 0;
  while (at < key.size() && !isConfigDotSlash(key[at])) head.push_back(_private::fold_byte(key[at++]));
  if (at < key.size()) rest.assign(key, at + 1, ustring8::npos);
}

config_tree const* config_tree::find_node(ustring8 const& key) const {
  _private::key_walk walk(key);
  std::string buffer;
  config_tree const* node = this;
  bool last = false;
  do {
    std::string_view const name = walk.next(buffer, last);
    auto const found = node->_children.find(name);
    if (found == node->_children.end() || !found->second) return nullptr;
    node = found->second.get();
  } while (!last);
  return node;
}

config_tree::entry_type const* config_tree::get_node(ustring8 const& key) const {
  config_tree const* node = find_node(key);
  return node == nullptr ? nullptr : &node->_entry;
}

config_tree* config_tree::make_node(ustring8 const& key) {
  _generation = next_generation();
  _private::key_walk walk(key);
  std::string buffer;
  config_tree* node = this;
  // The nodes made by one call share one empty value instead of one each.
  std::optional<types::variant> empty;
  auto fresh = [&empty]() {
    if (!empty) empty.emplace();
    auto* made = new config_tree(*empty);
    made->set_owned(true);
    return rc_pointer<config_tree>(made);
  };
  bool last = false;
  do {
    std::string_view const name = walk.next(buffer, last);
    auto found = node->_children.lower_bound(name);
    if (found == node->_children.end() || std::string_view(found->first) != name) {
      found = node->_children.emplace_hint(found, ustring8(name), fresh());
    } else if (!found->second) {
      found->second = fresh();
    }
    node = found->second.get();
  } while (!last);
  return node;
}

void config_tree::set_node(ustring8 const& key, types::variant const& value, unsigned int flags) {
  config_tree* node = make_node(key);
  node->_entry.first = flags | 1u;
  node->_entry.second = value;
}

void config_tree::get_array(ustring8 const& key, pair_array& result) const {
  config_tree const* node = find_node(key);
  if (node == nullptr || (node->_entry.first & 2u) == 0) return;
  for (unsigned long index = 0;; ++index) {
    ustring8 const name = std::to_string(index);
    auto const found = node->_children.find(name);
    if (found == node->_children.end() || !found->second) return;
    result.emplace_back(name, found->second->_entry);
  }
}

void config_tree::get_value_pair_array(ustring8 const& key, pair_array& result, bool recursive,
                                       ustring8 const& prefix) const {
  config_tree const* node = find_node(key);
  if (node == nullptr) return;
  // One path text shared by all levels: a frame remembers how much of it is
  // its own prefix, so a deep tree costs no copy of the prefix per level.
  struct frame {
    children_type::const_iterator next, end;
    std::size_t prefix_length;
  };
  ustring8 path = prefix;
  std::vector<frame> work{{node->_children.begin(), node->_children.end(), path.size()}};
  while (!work.empty()) {
    frame& top = work.back();
    if (top.next == top.end) {
      work.pop_back();
      continue;
    }
    auto const& child = *top.next++;
    if (!child.second) continue;
    path.resize(top.prefix_length);
    path += child.first;
    result.emplace_back(path, child.second->_entry);
    if (recursive && !child.second->_children.empty()) {
      path += '.';
      config_tree const* below = child.second.get();
      work.push_back({below->_children.begin(), below->_children.end(), path.size()});
    }
  }
}

void config_tree::erase() { release_children(); }

std::ostream& config_tree::dump(std::ostream& os, int depth) {
  auto indent = [&os](int levels) {
    for (int i = 0; i < levels; ++i) os << "|\t\t";
  };
  struct frame {
    children_type::const_iterator next, end;
    int depth;
  };
  std::vector<frame> work{{_children.begin(), _children.end(), depth}};
  while (!work.empty()) {
    frame& top = work.back();
    int const level = top.depth;
    if (top.next == top.end) {
      indent(level);
      os << "end\n";
      work.pop_back();
      continue;
    }
    auto const& child = *top.next++;
    indent(level);
    os << child.first << " : ";
    config_tree const* node = child.second.get();
    if (node == nullptr) {
      os << "true\n";
    } else if (node->_entry.first != 0) {
      os << node->_entry.first << ' ' << node->_entry.second.as_string() << '\n';
    } else {
      os << "true\n";
    }
    indent(level);
    if (node != nullptr && !node->_children.empty()) {
      os << "|---------------\\\n";
      work.push_back({node->_children.begin(), node->_children.end(), level + 1});
    } else {
      os << "|\n";
    }
  }
  return os;
}

std::ostream& operator<<(std::ostream& os, config_tree& tree) { return tree.dump(os, 0); }

namespace _private {

void for_each_value(config_tree const& tree, value_visitor const& visit) {
  // One key text shared by all levels: a frame remembers how much of it is
  // its own prefix, so a key of many components costs no copy per level.
  struct frame {
    config_tree::child_list::const_iterator next, end;
    std::size_t prefix_length;
    std::size_t elements;  // children "0".."elements-1" went with their array
  };
  auto is_element = [](strings::ustring8 const& name, std::size_t elements) {
    if (elements == 0 || name.empty() || name.size() > 19) return false;
    for (char c : name) {
      if (c < '0' || c > '9') return false;
    }
    return (name.size() == 1 || name[0] != '0') && std::stoul(name) < elements;
  };
  strings::ustring8 key;
  std::vector<config_tree const*> elements;
  std::vector<frame> work{{tree.children().begin(), tree.children().end(), 0, 0}};
  while (!work.empty()) {
    frame& top = work.back();
    if (top.next == top.end) {
      work.pop_back();
      continue;
    }
    auto const& child = *top.next++;
    if (!child.second || is_element(child.first, top.elements)) continue;
    key.resize(top.prefix_length);
    key += child.first;
    config_tree const& node = *child.second;
    unsigned const flags = node.entry().first;
    elements.clear();
    if ((flags & 3u) == 3u) {
      for (;;) {
        auto const element = node.children().find(std::to_string(elements.size()));
        if (element == node.children().end() || !element->second) break;
        elements.push_back(element->second);
      }
    }
    if ((flags & 1u) != 0) visit(key, node, elements);
    if (!node.children().empty()) {
      key += '.';
      work.push_back({node.children().begin(), node.children().end(), key.size(), elements.size()});
    }
  }
}

}  // namespace _private

}  // namespace config
}  // namespace VEXA_2_10
