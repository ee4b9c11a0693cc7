#include "vexa/config/std_config_dispatch.hpp"

#include "vexa/config/commandline_item.hpp"
#include "vexa/config/enviroment_item.hpp"
#include "vexa/config/file_item.hpp"

namespace VEXA_2_10 {
namespace config {

using memory::pointers::rc_pointer;

std_config_dispatch::std_config_dispatch(int argc, char const* const* argv, char const* const* envp,
                                         strings::ustring8 const& config_file,
                                         strings::ustring8 const& application_name)
    : _argc(argc), _argv(argv), _envp(envp), _config_file(config_file), _application_name(application_name) {}
std_config_dispatch::std_config_dispatch(std_config_dispatch const&) = default;
std_config_dispatch& std_config_dispatch::operator=(std_config_dispatch const&) = default;
std_config_dispatch::~std_config_dispatch() = default;

void std_config_dispatch::setup(config_item_list& items) {
  commandline_item command_line(_argc, _argv);
  name_application(command_line);
  items.push_back(rc_pointer<base_config_item>(command_line.clone()));
  items.push_back(rc_pointer<base_config_item>(file_item(_config_file).clone()));
  items.push_back(rc_pointer<base_config_item>(enviroment_item(_envp).clone()));
}

bool std_config_dispatch::load(config_item_list& items) {
  bool all = true;
  for (auto& item : items) {
    if (!item) continue;
    if (!item->load(items)) all = false;
    if (dynamic_cast<commandline_item*>(item.get()) != nullptr) name_application(*item);
  }
  return all;
}

void std_config_dispatch::name_application(base_config_item& item) const {
  if (!_application_name.empty()) item.set("application.name", types::variant(_application_name));
}

std_config_dispatch* std_config_dispatch::clone() const { return new std_config_dispatch(*this); }

}  // namespace config
}  // namespace VEXA_2_10
