// vexa — `memory::pointers::rc_pointer<T>`: an owning pointer to an object
// that carries its own count (`generic::abilities::reference_count_pointer_ability`).
//
// Copying shares the object and increments its count; destruction, reset and
// reassignment decrement it, and an owned object is deleted when the count
// reaches zero. An object whose owned flag is clear is never deleted: it
// belongs to someone else (a member, a static).
//
//   auto p = memory::pointers::make_rc<my_value>(42);   // owned, count 1
//   auto q = p;                                          // count 2, same object
#ifndef VEXA_MEMORY_POINTERS_RC_POINTER_HPP
#define VEXA_MEMORY_POINTERS_RC_POINTER_HPP

#include <cstdint>
#include <type_traits>
#include <utility>

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace memory {
namespace pointers {

template <class T>
class rc_pointer {
 public:
  using element_type = T;

  rc_pointer() noexcept : _object(nullptr) {}

  // Takes one counted reference to `object` (null is allowed). The owned flag
  // is left as the creator set it.
  explicit rc_pointer(T* object) : _object(object) { acquire(); }

  rc_pointer(rc_pointer const& other) : _object(other._object) { acquire(); }
  rc_pointer(rc_pointer&& other) noexcept : _object(other._object) { other._object = nullptr; }

  template <class U, class = std::enable_if_t<std::is_convertible<U*, T*>::value>>
  rc_pointer(rc_pointer<U> const& other) : _object(other.get()) {
    acquire();
  }

  ~rc_pointer() { release(); }

  // Shares first and releases after, so assigning a pointer to itself (or to
  // another holder of the same object) never deletes the object.
  rc_pointer& operator=(rc_pointer const& other) {
    reset(other._object);
    return *this;
  }
  rc_pointer& operator=(rc_pointer&& other) noexcept {
    if (this != &other) {
      release();
      _object = other._object;
      other._object = nullptr;
    }
    return *this;
  }

  // Holds `object` instead (null empties the pointer).
  void reset(T* object = nullptr) {
    T* previous = _object;
    _object = object;
    acquire();
    release_object(previous);
  }

  T* get() const noexcept { return _object; }
  T& operator*() const noexcept { return *_object; }
  T* operator->() const noexcept { return _object; }
  explicit operator bool() const noexcept { return _object != nullptr; }

  // The object's count; 0 for an empty pointer.
  std::uint32_t use_count() const noexcept {
    return _object == nullptr ? 0 : _object->reference_count();
  }

  void swap(rc_pointer& other) noexcept { std::swap(_object, other._object); }

 private:
  void acquire() {
    if (_object != nullptr) _object->add_reference();
  }
  void release() {
    T* previous = _object;
    _object = nullptr;
    release_object(previous);
  }
  static void release_object(T* object) {
    if (object != nullptr && object->release_reference() == 0 && object->owned()) delete object;
  }

  T* _object;
};

template <class T, class U>
bool operator==(rc_pointer<T> const& a, rc_pointer<U> const& b) noexcept {
  return a.get() == b.get();
}
template <class T, class U>
bool operator!=(rc_pointer<T> const& a, rc_pointer<U> const& b) noexcept {
  return a.get() != b.get();
}

// Creates a T with `new`, marks it owned and returns the first holder.
template <class T, class... Args>
rc_pointer<T> make_rc(Args&&... args) {
  T* object = new T(std::forward<Args>(args)...);
  object->set_owned(true);
  return rc_pointer<T>(object);
}

}  // namespace pointers
}  // namespace memory
}  // namespace VEXA_2_10

#endif  // VEXA_MEMORY_POINTERS_RC_POINTER_HPP
