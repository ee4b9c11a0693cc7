// vexa — `config::config_manager`: the application's one point of access to
// its configuration.
//
// A manager holds a dispatch (a clone of the one given to `init`) and the
// list of sources the dispatch set up, in precedence order. A look-up asks
// the sources in that order and the first that has the key answers; a value
// whose flag word has bit 4 is a reference: its text names another key, which
// is looked up in turn from the first source again.
//
// Decisions made here:
// - "Has the key" means the source returns an entry, and a node that only a
//   longer key passed through returns (0, nil): it answers nil and hides the
//   same key in later sources (base_config_item.hpp).
// - `get_value` gives nil when the chase stops at an array (flag bits 1 and
//   2) or at a key already visited (a loop of references).
// - `is_array` is true when any source has an array at the key, even behind a
//   plain value of an earlier source. `get_array` and `get_key_value_array`
//   read the first source that has the key at all: a plain value there hides
//   a later source's array (ask `is_array` first when that matters).
// - `get_key_value_array` gives every valued node below the key (flag bit 1),
//   depth first in name order, named relative to the key ("port", "sub.x").
// - `init` a second time replaces the dispatch and the sources. A manager is
//   not copyable.
// - `get_value` remembers its answers while no source changes: every tree
//   counts its changes (config_tree::generation), and the answers are dropped
//   as soon as one count moves. This is done only while every source is one
//   of the library's own classes (a source of another class may answer
//   get_value from elsewhere than its tree); keys over 256 bytes are never
//   remembered.
//
//   config::config_manager manager;
//   manager.init(config::std_config_dispatch(argc, argv, envp, "tool.cfg", ""));
//   manager.load();
//   manager.get_value("net.port").as_int();   // the command line's, else the file's, ...
#ifndef VEXA_CONFIG_CONFIG_MANAGER_HPP
#define VEXA_CONFIG_CONFIG_MANAGER_HPP

#include <iosfwd>
#include <memory>
#include <utility>
#include <vector>

#include "vexa/config/base_config_item.hpp"
#include "vexa/config/config_dispatch.hpp"
#include "vexa/export.hpp"
#include "vexa/memory/pointers/rc_pointer.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/variant.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API config_manager {
 public:
  // An empty manager: no dispatch, no sources; every look-up gives nil.
  config_manager();
  config_manager(config_manager const&) = delete;
  config_manager& operator=(config_manager const&) = delete;
  ~config_manager();

  // init
  // Keeps a clone of `dispatch` and lets it set up the sources (the previous
  // ones, if any, are dropped first).
  //   manager.init(config::module_config_dispatch(files, envp));
  //   manager.get_config_item("user item");   // not empty
  void init(config_dispatch const& dispatch);

  // load / save / unload
  // Forwarded to the dispatch with the sources. load and save return true
  // when every source did; false without a dispatch.
  //   manager.load();     // true
  //   manager.unload();   // every source empty
  bool load();
  bool save();
  void unload();

  // get_value
  // The value of `key`, references followed; nil when no source has the key,
  // at an array, and when the references loop.
  //   manager.get_value("net.port").as_string();   // "80"
  //   manager.get_value("missing") == types::nil;  // true
  types::variant get_value(strings::ustring8 const& key);

  // value_exist
  // get_value(key) is not nil.
  //   manager.value_exist("net.port");   // true
  //   manager.value_exist("net");        // false: only passed through
  bool value_exist(strings::ustring8 const& key);

  // is_array
  // Some source has an array (flag bits 1 and 2) at `key`.
  //   manager.is_array("arguments");   // true when the command line kept any
  //   manager.is_array("net.port");    // false
  bool is_array(strings::ustring8 const& key);

  // get_array
  // Appends the element values of the array at `key` in the first source
  // that has the key; nothing when that node is no array or no source has it.
  //   manager.get_array("list", values);   // values gains a, b, c
  void get_array(strings::ustring8 const& key, std::vector<types::variant>& result);

  // get_key_value_array
  // Appends (relative name, value) for every valued node below `key` in the
  // first source that has the key; nothing when that node has no children.
  //   manager.get_key_value_array("net", pairs);   // ("host", ...), ("port", ...)
  void get_key_value_array(strings::ustring8 const& key,
                           std::vector<std::pair<strings::ustring8, types::variant>>& result);

  // get_config_item
  // The first source whose get_id() equals `id`, or an empty pointer.
  //   manager.get_config_item("command line")->get_value("application.name");
  //   manager.get_config_item("nope");   // empty
  memory::pointers::rc_pointer<base_config_item> get_config_item(strings::ustring8 const& id);

  // dump
  // "config_manager:\n", then "\nconfig_item:\n" and the source's dump for
  // each source, then "\nno more config_items!\n\nending output\n".
  //   config::config_manager().dump(out);
  //   // "config_manager:\n\nno more config_items!\n\nending output\n"
  std::ostream& dump(std::ostream& os);

  // ---- implementation details ----
 private:
  struct answers;
  types::variant resolve(strings::ustring8 const& key);
  bool answers_valid();

  std::unique_ptr<config_dispatch> _dispatch;
  config_item_list _items;
  std::unique_ptr<answers> _answers;
};

// Dumps the manager.
//   std::cout << manager;
VEXA_API std::ostream& operator<<(std::ostream& os, config_manager& manager);

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_CONFIG_MANAGER_HPP
