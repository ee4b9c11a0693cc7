// vexa — `config::base_config_item`: what every configuration source is, and
// `config::config_item_list`, the ordered list of sources a manager asks.
//
// A source keeps its values in its own `config_tree`. The manager
// (config_manager.hpp) holds sources by reference-counted pointer, asks them
// in list order and copies them through `clone()`. The sources are:
//   file_item         "standard file"  a .cfg file (file_item.hpp)
//   commandline_item  "command line"   the program's arguments
//   enviroment_item   "enviroment"     the process environment
//   user_item         "user item"      values the application sets itself
//
// Decisions made here:
// - `get_value` is the tree's `get_node`: a node that only a longer key passed
//   through answers with (0, nil), not null.
// - `set_array` replaces: the array node loses its old children, then gets
//   the elements as children "0", "1", ... (flag word 1) and the named
//   attributes as children of their own names; the node itself holds the
//   number of elements (an unsigned int) with the flag word 3.
// - `save` writes nothing and returns true in the base; sources with a store
//   of their own (file_item) override it. `unload` empties the tree.
// - `dump` writes "object : " + id + "\n" and then the tree's dump.
//
//   config::user_item item;
//   item.set("Window.Width", 640);
//   item.get_value("window.width")->second.as_int();   // 640
#ifndef VEXA_CONFIG_BASE_CONFIG_ITEM_HPP
#define VEXA_CONFIG_BASE_CONFIG_ITEM_HPP

#include <iosfwd>
#include <list>
#include <utility>

#include "vexa/config/config_token.hpp"
#include "vexa/config/config_tree.hpp"
#include "vexa/export.hpp"
#include "vexa/generic/abilities/clone_ability.hpp"
#include "vexa/generic/abilities/create_ability.hpp"
#include "vexa/generic/abilities/reference_count_pointer_ability.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/memory/pointers/rc_pointer.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/variant.hpp"

namespace VEXA_2_10 {
namespace config {

class base_config_item;

// The sources of a manager, in precedence order (first entry first).
using config_item_list = std::list<memory::pointers::rc_pointer<base_config_item>>;

class VEXA_API base_config_item : public generic::abilities::clone_ability,
                                  public generic::abilities::create_ability,
                                  public generic::abilities::reference_count_pointer_ability<base_config_item> {
 public:
  using entry_type = config_tree::entry_type;

  base_config_item();
  base_config_item(base_config_item const& other);
  base_config_item& operator=(base_config_item const& other);
  ~base_config_item() override;

  // clone / create
  // A new owned copy (count 0), or a new owned empty source of the same class.
  //   memory::pointers::rc_pointer<base_config_item> p(item.clone());
  //   p->get_id() == item.get_id();   // true
  virtual base_config_item* clone() const = 0;
  virtual base_config_item* create() const = 0;

  // load / save / unload
  // Fill the tree from the source (`items` are the manager's sources, for
  // sources that look up settings in the others), write it back, or empty it.
  // load and save return true on success; the base's load does nothing and
  // returns true.
  //   item.load(items);   // true
  //   item.unload(items); // the tree is empty
  virtual bool load(config_item_list& items);
  virtual bool save(config_item_list& items);
  virtual void unload(config_item_list& items);

  // get_id
  // The source's identifier: "standard file", "command line", "enviroment"
  // or "user item".
  //   file_item("a.cfg").get_id();   // "standard file"
  virtual strings::ustring8 get_id() const = 0;

  // get_value
  // The entry of the node at `key` (flag word, value), or null.
  //   item.get_value("missing");            // nullptr
  //   item.get_value("a")->first;           // 0 when only "a.b" was set
  virtual entry_type const* get_value(strings::ustring8 const& key) const;

  // set
  // Stores `value` at `key` with flag word flags | 1.
  //   item.set("ref", "other.key", 4);   // a reference (config_manager.hpp)
  //   item.set("x", 1);                  // flag word 1
  void set(strings::ustring8 const& key, types::variant const& value, unsigned int flags = 0);

  // set_array
  // Makes `key` an array of the elements' values (names ignored) and adds the
  // named attributes beside them (unnamed ones are skipped).
  //   item.set_array("l", generic::varg_list(generic::argument("a"), generic::argument("b")),
  //                  generic::varg_list());   // l.0 = a, l.1 = b
  void set_array(strings::ustring8 const& key, generic::varg_list const& elements,
                 generic::varg_list const& attributes);

  // dump
  // "object : " + get_id() + "\n", then the tree's dump at depth 0.
  //   user_item().dump(out);   // "object : user item\nend\n"
  virtual std::ostream& dump(std::ostream& os);

  // get_token
  // Reads one token of `text` at `position`, fills `token`, moves `position`
  // past it and returns the kind. At or past the end: T_END, with the value
  // and both positions left as they were. A run of spaces: T_SPACE with the
  // value left as it was. For "*/" the token's type is T_STARFS (24) but the
  // function returns T_FSFS (16). An unterminated string ends one past the
  // text's length, so the next call gives T_END. Never fails.
  //   unsigned int at = 0; config_token t;
  //   get_token("a==b", at, t);   // T_VAR "a", at == 1; then T_EQEQ, then T_VAR "b"
  static config_token::tok_types get_token(strings::ustring8 const& text, unsigned int& position,
                                           config_token& token);

  // make_key_value
  // Splits "key=value" at the first '=' outside a double-quoted string, read
  // with get_token: `key` is the token values before it with spaces and tabs
  // dropped (a quoted part loses its quotes), `value` every byte after the
  // '=' unchanged. Returns false, and leaves both empty, when there is no '='.
  //   make_key_value("net.port = 80", key, value);   // true, "net.port", " 80"
  //   make_key_value("verbose", key, value);         // false
  static bool make_key_value(strings::ustring8 const& text, strings::ustring8& key, strings::ustring8& value);

  // quote_value
  // The value in double quotes when it holds a carriage return, a tab or a
  // line feed (bytes the file reader keeps only inside quotes); otherwise the
  // value unchanged.
  //   quote_value("a\tb");   // "\"a\tb\""
  //   quote_value("plain");  // "plain"
  static strings::ustring8 quote_value(strings::ustring8 const& value);

  // The source's values.
  config_tree const& tree() const { return _tree; }

 protected:
  config_tree _tree;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_BASE_CONFIG_ITEM_HPP
