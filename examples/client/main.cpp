// A client of the installed library: catches a library exception across the
// library boundary and prints what the core types do.
#include <iostream>

#include <vexa/vexa.hpp>

int main() {
  vexa::exceptions::exception::state where(1, "client", "main");
  try {
    throw vexa::exceptions::overflow_error("Number value is to large", where);
  } catch (vexa::exceptions::runtime_error const& e) {
    std::cout << "caught: " << e.get_message() << " (" << e.get_state().function << ")\n";
  }
  return 0;
}
