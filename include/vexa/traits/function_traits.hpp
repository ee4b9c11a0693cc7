// vexa — `traits::function_traits<Sig>`: the result and argument types of a
// signature, of a function pointer or of a member function pointer.
//
//   using t = traits::function_traits<void (parser::*)(int, char const*)>;
//   t::arity == 2; t::argument<1>::type is char const*; t::class_type is parser
#ifndef VEXA_TRAITS_FUNCTION_TRAITS_HPP
#define VEXA_TRAITS_FUNCTION_TRAITS_HPP

#include <cstddef>
#include <tuple>

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace traits {

template <class Sig>
struct function_traits;

template <class R, class... Args>
struct function_traits<R(Args...)> {
  using result_type = R;
  using signature = R(Args...);
  static constexpr std::size_t arity = sizeof...(Args);

  template <std::size_t N>
  struct argument {
    static_assert(N < sizeof...(Args), "argument index out of range");
    using type = std::tuple_element_t<N, std::tuple<Args...>>;
  };
};

template <class R, class... Args>
struct function_traits<R (*)(Args...)> : function_traits<R(Args...)> {};

template <class C, class R, class... Args>
struct function_traits<R (C::*)(Args...)> : function_traits<R(Args...)> {
  using class_type = C;
};

// A const member function binds to a const object.
template <class C, class R, class... Args>
struct function_traits<R (C::*)(Args...) const> : function_traits<R(Args...)> {
  using class_type = C const;
};

}  // namespace traits
}  // namespace VEXA_2_10

#endif  // VEXA_TRAITS_FUNCTION_TRAITS_HPP
