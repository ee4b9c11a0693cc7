// member_function: an object bound to a method, called through the interface.
#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "vexa/functor/member_function.hpp"
#include "vexa/traits/function_traits.hpp"

namespace functor = vexa::functor;
namespace traits = vexa::traits;

namespace {

struct collector {
  std::string seen;
  void add(char const* text, int times) {
    for (int i = 0; i < times; ++i) seen += text;
  }
  std::size_t size() const { return seen.size(); }
};

}  // namespace

static_assert(traits::function_traits<void (collector::*)(char const*, int)>::arity == 2);
static_assert(std::is_same_v<traits::function_traits<int(char, long)>::argument<1>::type, long>);
static_assert(std::is_same_v<traits::function_traits<int (*)(char)>::result_type, int>);
static_assert(std::is_same_v<traits::function_traits<std::size_t (collector::*)() const>::class_type,
                             collector const>);

TEST(MemberFunction, CallsTheBoundMethodOnTheBoundObject) {
  collector c;
  auto bound = functor::member_function(&c, &collector::add);
  static_assert(std::is_same_v<decltype(bound), functor::member_function_t<collector, void(char const*, int)>>);
  functor::function_type_interface<void(char const*, int)> const& callback = bound;
  callback("ab", 2);
  EXPECT_EQ(c.seen, "abab");
}

TEST(MemberFunction, AClonedCallbackOutlivesTheOriginalBinding) {
  collector c;
  std::unique_ptr<functor::function_type_interface<void(char const*, int)>> kept;
  {
    auto bound = functor::member_function(&c, &collector::add);
    kept.reset(bound.clone());
  }
  (*kept)("x", 3);
  EXPECT_EQ(c.seen, "xxx");
}

TEST(MemberFunction, ConstMethodsBindToConstObjects) {
  collector c;
  c.seen = "four";
  collector const& view = c;
  auto size = functor::member_function(&view, &collector::size);
  EXPECT_EQ(size(), 4u);
}
