#include "tour/section.hpp"

#include <algorithm>

namespace vexa_cli {
namespace tour {
namespace {

std::vector<section>& registry() {
  static std::vector<section> all;
  return all;
}

}  // namespace

std::vector<section> const& sections() {
  std::stable_sort(registry().begin(), registry().end(),
                   [](section const& a, section const& b) { return a.order < b.order; });
  return registry();
}

registrar::registrar(int order, std::string title, void (*show)(std::ostream& out)) {
  registry().push_back(section{order, std::move(title), show});
}

}  // namespace tour
}  // namespace vexa_cli
