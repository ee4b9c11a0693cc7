#include "vexa/config/user_item.hpp"

namespace VEXA_2_10 {
namespace config {

user_item::user_item() = default;
user_item::user_item(user_item const& other) = default;
user_item& user_item::operator=(user_item const& other) = default;
user_item::~user_item() = default;

user_item* user_item::clone() const {
  auto* copy = new user_item(*this);
  copy->set_owned(true);
  return copy;
}

user_item* user_item::create() const {
  auto* fresh = new user_item();
  fresh->set_owned(true);
  return fresh;
}

strings::ustring8 user_item::get_id() const { return "user item"; }

}  // namespace config
}  // namespace VEXA_2_10
