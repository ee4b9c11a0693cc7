// vexa — `config::enviroment_item`: the process environment as a
// configuration source, id "enviroment".
//
// Each "NAME=VALUE" entry sets the key NAME (lower-cased by the tree, and
// nested at '.', '/' and backslash like every key) to the text VALUE, split at
// the first '='. Entries without '=' are skipped. The library never reads the
// environment of its own accord: the caller passes the vector (main's envp or
// `environ`).
//
// The vector is read when the item is made; `load` reads it again into an
// empty tree and `unload` empties the tree. The item keeps the pointer, not a
// copy, so the vector must outlive the item and its clones. A null vector is
// an empty environment.
//
//   char const* envp[] = {"HOME=/home/ann", "Net.Port=81", nullptr};
//   config::enviroment_item item(envp);
//   item.get_value("home")->second.as_string();   // "/home/ann"
#ifndef VEXA_CONFIG_ENVIROMENT_ITEM_HPP
#define VEXA_CONFIG_ENVIROMENT_ITEM_HPP

#include "vexa/config/base_config_item.hpp"
#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API enviroment_item : public base_config_item {
 public:
  // enviroment_item
  // Reads the null-terminated vector `envp` into the tree.
  //   config::enviroment_item item(environ);
  //   item.get_value("path") != nullptr;   // true where PATH is set
  explicit enviroment_item(char const* const* envp);
  enviroment_item(enviroment_item const& other);
  enviroment_item& operator=(enviroment_item const& other);
  ~enviroment_item() override;

  enviroment_item* clone() const override;
  // An owned item over an empty environment.
  enviroment_item* create() const override;

  // "enviroment".
  strings::ustring8 get_id() const override;

  // load
  // Empties the tree and reads the vector again; returns true.
  //   item.unload(items); item.load(items);   // the same values again
  bool load(config_item_list& items) override;

  // ---- implementation details ----
 private:
  void read_environment();
  char const* const* _envp;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_ENVIROMENT_ITEM_HPP
