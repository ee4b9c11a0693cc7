// vexa — `generic::abilities::clone_ability`: marks a class as clonable.
//
// The class that carries it declares a virtual `clone() const` returning a new
// copy of the most derived object (the caller owns it). The ability's own
// virtual table holds only the destructor.
//
//   types::variant_type* copy = value->clone();   // a new object, owned by the caller
#ifndef VEXA_GENERIC_ABILITIES_CLONE_ABILITY_HPP
#define VEXA_GENERIC_ABILITIES_CLONE_ABILITY_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace abilities {

class clone_ability {
 public:
  virtual ~clone_ability() = default;
};

}  // namespace abilities
}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_ABILITIES_CLONE_ABILITY_HPP
