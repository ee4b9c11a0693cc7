// vexa — `generic::abilities::reference_count_pointer_ability<T>`: an
// intrusive reference count.
//
// Layout after the virtual table: a one-byte owned flag, then an unsigned
// 32-bit count. The owned flag is set by whoever created the object with
// `new`; only owned objects are deleted when the count falls to zero (by
// `memory::pointers::rc_pointer`). The count is a plain integer: an object and
// all its holders belong to one thread.
//
//   auto* value = new my_value; value->set_owned(true);
//   memory::pointers::rc_pointer<my_value> p(value);   // value->reference_count() == 1
#ifndef VEXA_GENERIC_ABILITIES_REFERENCE_COUNT_POINTER_ABILITY_HPP
#define VEXA_GENERIC_ABILITIES_REFERENCE_COUNT_POINTER_ABILITY_HPP

#include <cstdint>

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace generic {
namespace abilities {

template <class T>
class reference_count_pointer_ability {
 public:
  virtual ~reference_count_pointer_ability() = default;

  // Whether the object is deleted when its count reaches zero.
  bool owned() const { return _owned; }
  void set_owned(bool owned) { _owned = owned; }

  // The number of counted holders.
  std::uint32_t reference_count() const { return _count; }

  // Adds one holder; returns the new count. The count wraps like the unsigned
  // 32-bit integer it is.
  std::uint32_t add_reference() { return ++_count; }

  // Removes one holder; returns the new count (zero stays zero).
  std::uint32_t release_reference() { return _count == 0 ? 0 : --_count; }

 protected:
  reference_count_pointer_ability() : _owned(false), _count(0) {}
  // A copy is a new object: it starts with no holders and is not owned.
  reference_count_pointer_ability(reference_count_pointer_ability const&)
      : _owned(false), _count(0) {}
  reference_count_pointer_ability& operator=(reference_count_pointer_ability const&) {
    return *this;
  }

 private:
  bool _owned;
  std::uint32_t _count;
};

}  // namespace abilities
}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_ABILITIES_REFERENCE_COUNT_POINTER_ABILITY_HPP
