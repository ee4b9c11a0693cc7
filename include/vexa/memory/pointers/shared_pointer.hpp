// vexa — `memory::pointers::shared_pointer<T>`: a shared owning pointer for
// objects without a count of their own.
//
// All copies share one object and one count kept beside it; the object is
// deleted with the last copy. The count is a plain integer (no atomics): a
// pointer and its copies belong to one thread.
//
//   memory::pointers::shared_pointer<catalog_t> a(new catalog_t);
//   auto b = a;   // a.use_count() == 2; the catalog goes with the last copy
#ifndef VEXA_MEMORY_POINTERS_SHARED_POINTER_HPP
#define VEXA_MEMORY_POINTERS_SHARED_POINTER_HPP

#include <cstddef>
#include <utility>

#include "vexa/export.hpp"

// g++ 12 cannot see that a count above one is never freed and warns of a use
// after free at every later read of a shared count; the warning is silenced
// for this header only.
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 12
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wuse-after-free"
#define VEXA_SHARED_POINTER_DIAGNOSTIC_PUSHED
#endif

namespace VEXA_2_10 {
namespace memory {
namespace pointers {

template <class T>
class shared_pointer {
 public:
  using element_type = T;

  shared_pointer() noexcept : _object(nullptr), _count(nullptr) {}

  // Takes ownership of `object` (null makes an empty pointer). If the count
  // cannot be allocated the object is deleted and the allocation error passes on.
  explicit shared_pointer(T* object) : _object(object), _count(nullptr) {
    if (_object == nullptr) return;
    try {
      _count = new std::size_t(1);
    } catch (...) {
      delete object;
      throw;
    }
  }

  shared_pointer(shared_pointer const& other) noexcept
      : _object(other._object), _count(other._count) {
    if (_count != nullptr) ++*_count;
  }
  shared_pointer(shared_pointer&& other) noexcept
      : _object(other._object), _count(other._count) {
    other._object = nullptr;
    other._count = nullptr;
  }

  ~shared_pointer() { release(); }

  shared_pointer& operator=(shared_pointer const& other) noexcept {
    if (_count != other._count) {
      if (other._count != nullptr) ++*other._count;
      release();
      _object = other._object;
      _count = other._count;
    }
    return *this;
  }
  shared_pointer& operator=(shared_pointer&& other) noexcept {
    if (this != &other) {
      release();
      _object = other._object;
      _count = other._count;
      other._object = nullptr;
      other._count = nullptr;
    }
    return *this;
  }

  // Owns `object` instead; the previous object goes if this was its last copy.
  void reset(T* object = nullptr) { *this = shared_pointer(object); }

  T* get() const noexcept { return _object; }
  T& operator*() const noexcept { return *_object; }
  T* operator->() const noexcept { return _object; }
  explicit operator bool() const noexcept { return _object != nullptr; }

  // The number of pointers sharing the object; 0 for an empty pointer.
  std::size_t use_count() const noexcept { return _count == nullptr ? 0 : *_count; }

  void swap(shared_pointer& other) noexcept {
    std::swap(_object, other._object);
    std::swap(_count, other._count);
  }

 private:
  void release() noexcept {
    if (_count != nullptr && --*_count == 0) {
      delete _object;
      delete _count;
    }
    _object = nullptr;
    _count = nullptr;
  }

  T* _object;
  std::size_t* _count;
};

template <class T, class U>
bool operator==(shared_pointer<T> const& a, shared_pointer<U> const& b) noexcept {
  return a.get() == b.get();
}
template <class T, class U>
bool operator!=(shared_pointer<T> const& a, shared_pointer<U> const& b) noexcept {
  return a.get() != b.get();
}

}  // namespace pointers
}  // namespace memory
}  // namespace VEXA_2_10

#ifdef VEXA_SHARED_POINTER_DIAGNOSTIC_PUSHED
#pragma GCC diagnostic pop
#undef VEXA_SHARED_POINTER_DIAGNOSTIC_PUSHED
#endif

#endif  // VEXA_MEMORY_POINTERS_SHARED_POINTER_HPP
