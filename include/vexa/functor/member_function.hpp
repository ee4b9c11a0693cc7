// vexa — `functor::member_function_t<Object, Sig>` and `functor::member_function`:
// an object bound to one of its member functions, callable through
// `function_type_interface<Sig>`.
//
// The binding holds a plain pointer to the object: the object must outlive
// every copy of the binding. A const member function binds as
// `member_function_t<Object const, Sig>`.
//
//   auto f = functor::member_function(&counter, &counter_type::add);   // member_function_t<counter_type, void(int)>
//   f(2);   // counter.add(2)
#ifndef VEXA_FUNCTOR_MEMBER_FUNCTION_HPP
#define VEXA_FUNCTOR_MEMBER_FUNCTION_HPP

#include <utility>

#include "vexa/functor/function_type_interface.hpp"
#include "vexa/traits/function_traits.hpp"

namespace VEXA_2_10 {
namespace functor {

template <class Object, class Sig>
class member_function_t;

template <class Object, class R, class... Args>
class member_function_t<Object, R(Args...)> : public function_type_interface<R(Args...)> {
 public:
  using object_type = Object;
  using method_type = R (Object::*)(Args...);

  member_function_t(Object* bound_object, method_type bound_method)
      : _object(bound_object), _method(bound_method) {}

  R operator()(Args... args) const override {
    return (_object->*_method)(std::forward<Args>(args)...);
  }
  member_function_t* clone() const override { return new member_function_t(*this); }

  Object* object() const { return _object; }
  method_type method() const { return _method; }

 private:
  Object* _object;
  method_type _method;
};

template <class Object, class R, class... Args>
class member_function_t<Object const, R(Args...)> : public function_type_interface<R(Args...)> {
 public:
  using object_type = Object const;
  using method_type = R (Object::*)(Args...) const;

  member_function_t(Object const* bound_object, method_type bound_method)
      : _object(bound_object), _method(bound_method) {}

  R operator()(Args... args) const override {
    return (_object->*_method)(std::forward<Args>(args)...);
  }
  member_function_t* clone() const override { return new member_function_t(*this); }

  Object const* object() const { return _object; }
  method_type method() const { return _method; }

 private:
  Object const* _object;
  method_type _method;
};

// Binds `object` to `method`; the signature is taken from the method.
template <class Object, class R, class... Args>
member_function_t<Object, R(Args...)> member_function(Object* object, R (Object::*method)(Args...)) {
  return member_function_t<Object, R(Args...)>(object, method);
}

template <class Object, class R, class... Args>
member_function_t<Object const, R(Args...)> member_function(Object const* object,
                                                            R (Object::*method)(Args...) const) {
  return member_function_t<Object const, R(Args...)>(object, method);
}

}  // namespace functor
}  // namespace VEXA_2_10

#endif  // VEXA_FUNCTOR_MEMBER_FUNCTION_HPP
