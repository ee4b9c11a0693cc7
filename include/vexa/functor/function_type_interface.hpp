// vexa — `functor::function_type_interface<Sig>`: an abstract, clonable
// callable with the signature `Sig`.
//
// Holders of a callback (the XML parser, the token stream) keep a clone of the
// interface they are given, so the caller's object may go out of scope.
//
//   functor::function_type_interface<void(int)> const& f = functor::member_function(&obj, &type::on_int);
//   f(3);   // calls obj.on_int(3)
#ifndef VEXA_FUNCTOR_FUNCTION_TYPE_INTERFACE_HPP
#define VEXA_FUNCTOR_FUNCTION_TYPE_INTERFACE_HPP

#include "vexa/export.hpp"
#include "vexa/generic/clone_interface.hpp"
#include "vexa/traits/function_traits.hpp"

namespace VEXA_2_10 {
namespace functor {

template <class Sig>
class function_type_interface;

template <class R, class... Args>
class function_type_interface<R(Args...)> : public generic::clone_interface {
 public:
  using signature = R(Args...);
  using traits_type = traits::function_traits<R(Args...)>;
  using result_type = typename traits_type::result_type;

  // Calls the bound function with `args`; returns its result.
  virtual R operator()(Args... args) const = 0;

  // A new copy of the most derived callable; the caller owns it.
  function_type_interface* clone() const override = 0;
};

}  // namespace functor
}  // namespace VEXA_2_10

#endif  // VEXA_FUNCTOR_FUNCTION_TYPE_INTERFACE_HPP
