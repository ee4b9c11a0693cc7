// A client of the installed library: Unicode transforms, a conversion whose
// exception is caught across the library boundary, and a variant whose type
// is compared with the client's own type information.
#include <iostream>
#include <typeinfo>

#include <vexa/vexa.hpp>

int main() {
  namespace strings = vexa::strings;
  namespace convert = vexa::generic::convert;
  namespace types = vexa::types;

  strings::ustring16 text = strings::utf8_to_utf16("gr\xC3\xBC\xC3\x9F dich \xF0\x9F\x98\x80");
  std::cout << "UTF-16 units: " << text.size() << ", back to UTF-8: "
            << strings::utf16_to_utf8(text) << "\n";

  try {
    convert::str_to_int("99999999999", 11, types::radix_t::decimal, true);
    std::cout << "no exception?\n";
    return 1;
  } catch (vexa::exceptions::overflow_error const& e) {
    std::cout << "caught: " << e.get_message() << " (" << e.get_state().file << ", "
              << e.get_state().function << ")\n";
  }

  types::variant wide(L"x");
  if (wide.type() != typeid(strings::ustring32)) {
    std::cout << "variant(L\"x\") should hold a ustring32\n";
    return 1;
  }
  vexa::generic::varg_list args(vexa::generic::argument("count", 3),
                                vexa::generic::argument("name", "vexa"));
  std::cout << "variant(L\"x\") holds a ustring32; " << args["name"].value() << " has "
            << args["count"].value().as_int() << " arguments of interest\n";
  return 0;
}
