#include "vexa/config/config_dispatch.hpp"

namespace VEXA_2_10 {
namespace config {

config_dispatch::config_dispatch() = default;
config_dispatch::config_dispatch(config_dispatch const&) = default;
config_dispatch& config_dispatch::operator=(config_dispatch const&) = default;
config_dispatch::~config_dispatch() = default;

bool config_dispatch::load(config_item_list& items) {
  bool all = true;
  for (auto& item : items) {
    if (item && !item->load(items)) all = false;
  }
  return all;
}

bool config_dispatch::save(config_item_list& items) {
  bool all = true;
  for (auto& item : items) {
    if (item && !item->save(items)) all = false;
  }
  return all;
}

void config_dispatch::unload(config_item_list& items) {
  for (auto& item : items) {
    if (item) item->unload(items);
  }
}

}  // namespace config
}  // namespace VEXA_2_10
