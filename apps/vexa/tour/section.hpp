// Sections of `vexa tour`. Each subsystem adds its own section in a file of
// its own under tour/, registering it with a static `tour::registrar`:
//
//   namespace {
//   void show(std::ostream& out) { out << "..."; }
//   vexa_cli::tour::registrar const section(20, "Conversions", show);
//   }
//
// Sections are shown by increasing order number (strings 10, conversions 20,
// the variant 30, ...).
#ifndef VEXA_APPS_TOUR_SECTION_HPP
#define VEXA_APPS_TOUR_SECTION_HPP

#include <iosfwd>
#include <string>
#include <vector>

namespace vexa_cli {
namespace tour {

struct section {
  int order;
  std::string title;
  void (*show)(std::ostream& out);
};

// Every registered section, by order number.
std::vector<section> const& sections();

struct registrar {
  registrar(int order, std::string title, void (*show)(std::ostream& out));
};

}  // namespace tour
}  // namespace vexa_cli

#endif  // VEXA_APPS_TOUR_SECTION_HPP
