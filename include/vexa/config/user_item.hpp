// vexa — `config::user_item`: values the application sets itself, id
// "user item".
//
// It reads nothing: it holds what `set` and `set_array` put there. `load`
// keeps the values (there is nothing to read), `save` writes nothing, and
// `unload` empties it. In a `module_config_dispatch` it comes last, so it
// gives defaults that the module's files and the environment override.
//
//   config::user_item defaults;
//   defaults.set("window.width", 640);
//   defaults.get_value("Window.Width")->first;   // 1
#ifndef VEXA_CONFIG_USER_ITEM_HPP
#define VEXA_CONFIG_USER_ITEM_HPP

#include "vexa/config/base_config_item.hpp"
#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API user_item : public base_config_item {
 public:
  // user_item
  // An empty source.
  //   config::user_item item;
  //   item.get_value("x");   // nullptr
  user_item();
  user_item(user_item const& other);
  user_item& operator=(user_item const& other);
  ~user_item() override;

  user_item* clone() const override;
  user_item* create() const override;

  // "user item".
  strings::ustring8 get_id() const override;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_USER_ITEM_HPP
