// vexa — `generic::clone_interface`: the pure interface form of cloning.
//
// Implementations return a new copy of the most derived object; the caller
// owns it. Interfaces that must be copied through a base pointer (the
// callbacks of `functor`) derive from it and narrow the result type.
//
//   generic::clone_interface* copy = callback.clone();   // caller deletes it
#ifndef VEXA_GENERIC_CLONE_INTERFACE_HPP
#define VEXA_GENERIC_CLONE_INTERFACE_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace generic {

class clone_interface {
 public:
  virtual ~clone_interface() = default;
  virtual clone_interface* clone() const = 0;
};

}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_CLONE_INTERFACE_HPP
