// vexa — `generic::abilities::create_ability`: marks a class as able to make empty siblings.
//
// The class that carries it declares a virtual `create() const` returning a new, empty
// object of the same most derived class (the caller owns it). The ability's own
// virtual table holds only the destructor.
//
//   config::base_config_item* fresh = item->create();   // same class, no values
#ifndef VEXA_GENERIC_ABILITIES_CREATE_ABILITY_HPP
#define VEXA_GENERIC_ABILITIES_CREATE_ABILITY_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace abilities {

class create_ability {
 public:
  virtual ~create_ability() = default;
};

}  // namespace abilities
}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_ABILITIES_CREATE_ABILITY_HPP
