// vexa — `config::config_dispatch`: decides which sources a configuration
// manager has and in which order, and drives them.
//
// `config_manager::init` clones the dispatch (clone ability) and calls its
// `setup` with the manager's empty item list; the manager's `load`, `save`
// and `unload` forward here. The ready-made dispatches are
// `std_config_dispatch` (an application) and `module_config_dispatch` (a
// loadable module). `load`, `save` and `unload` call the same operation on
// every item in list order; load and save return true when every item did.
//
//   class my_dispatch : public config::config_dispatch {
//     void setup(config::config_item_list& items) override { items.push_back(...); }
//     my_dispatch* clone() const override { return new my_dispatch(*this); }
//   };
#ifndef VEXA_CONFIG_CONFIG_DISPATCH_HPP
#define VEXA_CONFIG_CONFIG_DISPATCH_HPP

#include "vexa/config/base_config_item.hpp"
#include "vexa/export.hpp"
#include "vexa/generic/abilities/clone_ability.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API config_dispatch : public generic::abilities::clone_ability {
 public:
  config_dispatch();
  config_dispatch(config_dispatch const& other);
  config_dispatch& operator=(config_dispatch const& other);
  ~config_dispatch() override;

  // setup
  // Appends the dispatch's sources to `items`, in precedence order.
  //   dispatch.setup(items);   // items.size() == 3 for std_config_dispatch
  virtual void setup(config_item_list& items) = 0;

  // load / save / unload
  // The operation on every item, in list order (empty pointers skipped).
  // load and save: true when every item returned true.
  //   dispatch.load(items);     // true
  //   dispatch.unload(items);   // every tree empty
  virtual bool load(config_item_list& items);
  virtual bool save(config_item_list& items);
  virtual void unload(config_item_list& items);

  // clone
  // A new copy of the most derived dispatch; the caller owns it.
  //   std::unique_ptr<config_dispatch> copy(dispatch.clone());
  virtual config_dispatch* clone() const = 0;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_CONFIG_DISPATCH_HPP
