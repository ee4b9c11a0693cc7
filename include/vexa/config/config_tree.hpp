// vexa — `config::config_tree`: the store behind every configuration source.
//
// A tree of named nodes addressed by keys such as "net.port". Each node holds
// an entry, a pair of a flag word and a `types::variant`, and any number of
// named children kept in byte order of their names. Keys are case-insensitive:
// every component is lower-cased with the C library's `tolower` when it is
// looked up or stored. Components are separated by '.', '/' or backslash, so
// "Net.Port", "net/port" and "net\port" name one node. An empty key names the
// child called "" (not the node itself), and a key ending in one separator
// ("a.") names the same node as the key without it ("a").
//
// The flag word: 0 on a node that exists only because a longer key passed
// through it; bit 1 is added to whatever the caller gave `set_node`; bit 2
// marks an array, whose elements are the children "0", "1", ...; bit 4 is a
// reference (config_manager.hpp). Other bits are stored as given.
//
// Copies are deep: copying or cloning a tree clones every node (variant
// values are immutable, so they are shared, not copied). Copying, looking up,
// setting, dumping and destroying walk the tree with explicit stacks, so a key
// of a million components or a tree that deep never exhausts the call stack.
//
// Only the deep copy throws: a child pointer that is empty (a tree built
// through `set_node` never has one) throws the bare text "unreferanced object"
// (a `char const*`, not an exception object).
//
//   config::config_tree t;
//   t.set_node("Net.Port", types::variant(80), 0);
//   t.get_node("net.port")->first;   // 1
//   t.get_node("net")->first;        // 0: only passed through
#ifndef VEXA_CONFIG_CONFIG_TREE_HPP
#define VEXA_CONFIG_CONFIG_TREE_HPP

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include "vexa/export.hpp"
#include "vexa/generic/abilities/clone_ability.hpp"
#include "vexa/generic/abilities/reference_count_pointer_ability.hpp"
#include "vexa/memory/pointers/rc_pointer.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/variant.hpp"

namespace VEXA_2_10 {
namespace config {
namespace _private {

// name_less
// Byte order of names (as unsigned bytes, like std::string's compare), taking
// any mix of strings and string views; written out so that the short names of
// a configuration compare without a call.
struct name_less {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const {
    std::size_t const n = a.size() < b.size() ? a.size() : b.size();
    for (std::size_t i = 0; i < n; ++i) {
      if (a[i] != b[i]) return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[i]);
    }
    return a.size() < b.size();
  }
};

// deep_copy_map<K, P>
// An ordered map (byte order of the keys; look-ups may pass any text that
// compares with K, such as a std::string_view) whose copies clone what the
// pointers point to. Assignment first empties the map, then inserts, for each
// element of the source in order, the same key with a pointer to a clone of
// the pointee (`clone()` returns a new owned object). An empty pointer stops
// the copy by throwing the text "unreferanced object".
//   deep_copy_map<ustring8, rc_pointer<config_tree>> copy = tree_children;  // new nodes
//   copy.begin()->second != tree_children.begin()->second;                 // true
template <class K, class P>
class deep_copy_map : public std::map<K, P, name_less> {
 public:
  using base_type = std::map<K, P, name_less>;

  deep_copy_map() = default;
  deep_copy_map(deep_copy_map const& other) : base_type() { copy_from(other); }
  deep_copy_map(deep_copy_map&&) = default;
  deep_copy_map& operator=(deep_copy_map const& other) {
    if (this != &other) {
      this->clear();
      copy_from(other);
    }
    return *this;
  }
  deep_copy_map& operator=(deep_copy_map&&) = default;
  ~deep_copy_map() = default;

 private:
  void copy_from(deep_copy_map const& other) {
    for (auto const& element : other) {
      if (!element.second) throw "unreferanced object";
      this->emplace_hint(this->end(), element.first, P(element.second->clone()));
    }
  }
};

}  // namespace _private

class base_config_item;

class VEXA_API config_tree : public generic::abilities::clone_ability,
                             public generic::abilities::reference_count_pointer_ability<config_tree> {
 public:
  // The (flag word, value) pair every node carries.
  using entry_type = std::pair<unsigned int, types::variant>;
  using children_type = _private::deep_copy_map<strings::ustring8, memory::pointers::rc_pointer<config_tree>>;
  // What get_array and get_value_pair_array append to.
  using pair_array = std::vector<std::pair<strings::ustring8, entry_type>>;

  // An empty tree: no children, entry (0, nil).
  config_tree();
  // Deep copies; the copy is a new object (not owned, count 0).
  config_tree(config_tree const& other);
  config_tree& operator=(config_tree const& other);
  ~config_tree() override;

  // clone
  // A new, owned deep copy with count 0; the caller takes the first reference.
  //   memory::pointers::rc_pointer<config_tree> copy(tree.clone());
  //   copy->set_node("x", 1, 0);   // tree is unchanged
  virtual config_tree* clone() const;

  // parse_string
  // Splits `key` at its first '.', '/' or backslash: `head` is the part before
  // it, lower-cased byte by byte with `tolower`; `rest` is everything after
  // it, unchanged. Without a separator `rest` is empty.
  //   parse_string("Net.Sub/X", head, rest);   // head "net", rest "Sub/X"
  //   parse_string("ABC", head, rest);         // head "abc", rest ""
  void parse_string(strings::ustring8 const& key, strings::ustring8& head, strings::ustring8& rest) const;

  // get_node
  // The entry of the node at `key`, or null when there is none. A node that
  // only a longer key passed through answers (0, nil).
  //   t.set_node("a.b", 5, 0); t.get_node("A.B")->second.as_int();   // 5
  //   t.get_node("a.c");                                             // nullptr
  entry_type const* get_node(strings::ustring8 const& key) const;

  // set_node
  // Creates the nodes along `key` as needed and sets the last one's entry to
  // (flags | 1, value); its children stay.
  //   t.set_node("list", 0, 2); t.get_node("list")->first;   // 3
  //   t.set_node("a.", "x", 0);                              // sets "a"
  void set_node(strings::ustring8 const& key, types::variant const& value, unsigned int flags);

  // get_array
  // Appends (name, entry) for the children "0", "1", ... of the node at `key`,
  // up to the first missing index, when that node's flag word has bit 2.
  // Appends nothing for a missing node or one that is no array; children with
  // other names are ignored.
  //   t.set_node("l", 0, 2); t.set_node("l.0", "a", 0); t.set_node("l.2", "c", 0);
  //   t.get_array("l", out);   // out gains ("0", (1, "a")) only
  void get_array(strings::ustring8 const& key, pair_array& result) const;

  // get_value_pair_array
  // Appends (prefix + name, entry) for each child of the node at `key`, in
  // name order. With `recursive`, each child is followed by its own
  // descendants, named prefix + name + "." + ... (depth first). A missing
  // node appends nothing.
  //   t.set_node("s.a", 1, 0); t.set_node("s.a.b", 2, 0);
  //   t.get_value_pair_array("s", out, true, "s.");   // "s.a", then "s.a.b"
  void get_value_pair_array(strings::ustring8 const& key, pair_array& result, bool recursive,
                            strings::ustring8 const& prefix) const;

  // erase
  // Removes every child; the node's own entry stays.
  //   t.erase(); t.children().empty();   // true
  void erase();

  // dump
  // For each child in name order: `depth` times "|\t\t", the name, " : ",
  // then "flags value\n" (flags in decimal, the value's as_string) or, for a
  // flag word 0, "true\n"; then the indent again and either "|\n" or, when the
  // child has children, "|---------------\\\n" followed by the child's dump at
  // depth + 1. Ends with the indent and "end\n". A negative depth indents
  // nothing. Returns the stream.
  //   t.set_node("a", "v", 0); t.dump(out, 0);   // "a : 1 v\n|\nend\n"
  //   config_tree().dump(out, 1);                // "|\t\tend\n"
  std::ostream& dump(std::ostream& os, int depth);

  // child_list
  // A read-only view of a node's children in name order: each element is
  // (name, node), the node reached only as const, so every change to a tree
  // goes through the members of the tree it was made in.
  //   for (auto const& child : tree.children()) std::cout << child.first;
  //   tree.children().find("net") != tree.children().end();
  class child_list {
   public:
    using value_type = std::pair<strings::ustring8 const&, config_tree const*>;
    class const_iterator {
     public:
      struct arrow {
        value_type value;
        value_type const* operator->() const { return &value; }
      };
      const_iterator() = default;
      explicit const_iterator(children_type::const_iterator at) : _at(at) {}
      value_type operator*() const { return value_type(_at->first, _at->second.get()); }
      arrow operator->() const { return arrow{**this}; }
      const_iterator& operator++() {
        ++_at;
        return *this;
      }
      const_iterator operator++(int) {
        const_iterator before = *this;
        ++_at;
        return before;
      }
      bool operator==(const_iterator const& other) const { return _at == other._at; }
      bool operator!=(const_iterator const& other) const { return _at != other._at; }

     private:
      children_type::const_iterator _at{};
    };
    explicit child_list(children_type const& children) : _children(&children) {}
    const_iterator begin() const { return const_iterator(_children->begin()); }
    const_iterator end() const { return const_iterator(_children->end()); }
    const_iterator find(std::string_view name) const { return const_iterator(_children->find(name)); }
    bool empty() const { return _children->empty(); }
    std::size_t size() const { return _children->size(); }

   private:
    children_type const* _children;
  };

  // The node's own entry and its children, for callers that walk the tree.
  entry_type const& entry() const { return _entry; }
  child_list children() const { return child_list(_children); }

  // generation
  // A number that grows with every change made through this object's members
  // (set_node, erase, assignment, and the sources' set_array): two equal
  // readings mean the tree did not change in between. The numbers come from
  // one counter for all trees, so two different trees never read the same,
  // not even one made later at the address of another.
  //   auto g = tree.generation(); tree.set_node("x", 1, 0);
  //   tree.generation() != g;   // true
  std::uint64_t generation() const { return _generation; }

  // ---- implementation details ----
 private:
  friend class base_config_item;  // fills array nodes in place
  explicit config_tree(types::variant const& empty);
  config_tree const* find_node(strings::ustring8 const& key) const;
  config_tree* make_node(strings::ustring8 const& key);
  void copy_children_from(config_tree const& other);
  void release_children();

  children_type _children;
  entry_type _entry;
  std::uint64_t _generation = 0;
};

// Dumps the tree from depth 0.
//   std::cout << tree;
VEXA_API std::ostream& operator<<(std::ostream& os, config_tree& tree);

namespace _private {

// Every valued node below `tree`, depth first in name order, as the file
// source writes them and `vexa config keys` lists them: `visit(key, node,
// elements)` gets the full key ("a.b"), the node and, for an array node
// (flags 3), its elements "0", "1", ... up to the first missing one; those
// are not visited again, while an array's other children are ("a.name").
// The walk keeps its own stack, so keys of any depth are safe.
using value_visitor = std::function<void(strings::ustring8 const& key, config_tree const& node,
                                         std::vector<config_tree const*> const& elements)>;
VEXA_API void for_each_value(config_tree const& tree, value_visitor const& visit);

}  // namespace _private

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_CONFIG_TREE_HPP
