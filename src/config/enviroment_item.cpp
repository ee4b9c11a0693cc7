#include "vexa/config/enviroment_item.hpp"

#include <cstring>

namespace VEXA_2_10 {
namespace config {

using strings::ustring8;

enviroment_item::enviroment_item(char const* const* envp) : _envp(envp) { read_environment(); }
enviroment_item::enviroment_item(enviroment_item const& other) : base_config_item(other), _envp(other._envp) {}
enviroment_item& enviroment_item::operator=(enviroment_item const& other) {
  base_config_item::operator=(other);
  _envp = other._envp;
  return *this;
}
enviroment_item::~enviroment_item() = default;

enviroment_item* enviroment_item::clone() const {
  auto* copy = new enviroment_item(*this);
  copy->set_owned(true);
  return copy;
}

enviroment_item* enviroment_item::create() const {
  auto* fresh = new enviroment_item(nullptr);
  fresh->set_owned(true);
  return fresh;
}

ustring8 enviroment_item::get_id() const { return "enviroment"; }

bool enviroment_item::load(config_item_list&) {
  _tree.erase();
  read_environment();
  return true;
}

void enviroment_item::read_environment() {
  if (_envp == nullptr) return;
  for (char const* const* entry = _envp; *entry != nullptr; ++entry) {
    char const* const eq = std::strchr(*entry, '=');
    if (eq == nullptr) continue;
    set(ustring8(*entry, static_cast<std::size_t>(eq - *entry)), types::variant(ustring8(eq + 1)));
  }
}

}  // namespace config
}  // namespace VEXA_2_10
