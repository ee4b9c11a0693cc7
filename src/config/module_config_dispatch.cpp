#include "vexa/config/module_config_dispatch.hpp"

#include "vexa/config/enviroment_item.hpp"
#include "vexa/config/file_item.hpp"
#include "vexa/config/user_item.hpp"

namespace VEXA_2_10 {
namespace config {

using memory::pointers::rc_pointer;

module_config_dispatch::module_config_dispatch(generic::varg_list const& files, char const* const* envp)
    : _envp(envp) {
  for (generic::argument const& file : files) _files.push_back(file.value().as_string());
}
module_config_dispatch::module_config_dispatch(module_config_dispatch const&) = default;
module_config_dispatch& module_config_dispatch::operator=(module_config_dispatch const&) = default;
module_config_dispatch::~module_config_dispatch() = default;

void module_config_dispatch::setup(config_item_list& items) {
  for (strings::ustring8 const& name : _files) items.push_back(rc_pointer<base_config_item>(file_item(name).clone()));
  items.push_back(rc_pointer<base_config_item>(enviroment_item(_envp).clone()));
  items.push_back(rc_pointer<base_config_item>(user_item().clone()));
}

module_config_dispatch* module_config_dispatch::clone() const { return new module_config_dispatch(*this); }

}  // namespace config
}  // namespace VEXA_2_10
