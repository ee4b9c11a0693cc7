// vexa — `config::module_config_dispatch`: a loadable module's sources, its
// configuration files over the environment over the user item.
//
// `setup` appends one `file_item` per file name, in the order given, then an
// `enviroment_item` over envp, then an empty `user_item` for defaults the
// module sets itself (find it with config_manager::get_config_item("user
// item")). Each argument of the list gives one file name: its value as text
// (`variant::as_string`); its name is not used.
//
//   config::config_manager manager;
//   manager.init(config::module_config_dispatch(
//       generic::varg_list(generic::argument("site.cfg"), generic::argument("local.cfg")), envp));
#ifndef VEXA_CONFIG_MODULE_CONFIG_DISPATCH_HPP
#define VEXA_CONFIG_MODULE_CONFIG_DISPATCH_HPP

#include <vector>

#include "vexa/config/config_dispatch.hpp"
#include "vexa/export.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API module_config_dispatch : public config_dispatch {
 public:
  // module_config_dispatch
  // The file names (one per argument, as text) and the environment.
  //   config::module_config_dispatch d(generic::varg_list(generic::argument("m.cfg")), envp);
  //   d.setup(items);   // standard file, enviroment, user item
  module_config_dispatch(generic::varg_list const& files, char const* const* envp);
  module_config_dispatch(module_config_dispatch const& other);
  module_config_dispatch& operator=(module_config_dispatch const& other);
  ~module_config_dispatch() override;

  void setup(config_item_list& items) override;
  module_config_dispatch* clone() const override;

  // ---- implementation details ----
 private:
  std::vector<strings::ustring8> _files;
  char const* const* _envp;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_MODULE_CONFIG_DISPATCH_HPP
