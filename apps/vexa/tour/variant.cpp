// Tour section: the variant (one value, read as any type) and argument lists.
#include <ostream>
#include <string>

#include "tour/section.hpp"
#include "vexa/exceptions/logic_error.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/types/variant.hpp"

namespace {

using namespace vexa;
using types::variant;

std::string truth(variant const& v) {
  try {
    return v.as_bool() ? "true" : "false";
  } catch (exceptions::invalid_argument_value const& e) {
    return std::string("raises \"") + e.get_message() + "\"";
  }
}

void show(std::ostream& out) {
  variant const number(300), text("0x1F"), third(1.0 / 3.0), nothing;
  out << "A variant keeps the type it was made with and converts on reading:\n"
      << "  variant(300):    as_int8() = " << int(number.as_int8()) << ", as_uint16() = " << number.as_uint16()
      << ", as_string() = \"" << number.as_string() << "\"\n"
      << "  variant(\"0x1F\"): as_int() = " << text.as_int() << ", as_double() = " << text.as_double()
      << " (strtod reads hexadecimal too)\n"
      << "  variant(1.0/3):  as_string() = \"" << third.as_string() << "\", as long double \""
      << variant(1.0L / 3.0L).as_string() << "\"\n"
      << "  variant():       == nil is " << (nothing == types::nil ? "true" : "false") << ", as_string() = \""
      << nothing.as_string() << "\", streamed: " << nothing << "\n\n";

  out << "Text as a truth value: only yes, on and true are words, the rest must be a number:\n";
  for (char const* t : {"Yes", "on", "12", "0", "", "false"})
    out << "  variant(\"" << t << "\").as_bool() " << truth(variant(t)) << "\n";
  out << "  variant(L\"false\").as_bool() " << truth(variant(L"false")) << " (wide text never raises)\n\n";

  variant const shared = text;
  out << "Copies share one value object: after `variant shared = text;` the count is "
      << text.value_object()->reference_count() << ".\n\n";

  generic::varg_list const args(generic::argument("file", "a.cfg"), generic::argument("line", 12),
                                generic::argument("line", 99), generic::argument(variant(L"unnamed")));
  out << "An argument list keeps order and unique names (the second \"line\" was dropped):\n";
  for (generic::argument const& a : args)
    out << "  " << (a.has_name() ? a.name() : strings::ustring8("(no name)")) << " = " << a.value() << "\n";
  out << "  args[\"line\"].value().as_int() = " << args["line"].value().as_int()
      << ", args[\"column\"] == nil is " << (args["column"] == types::nil ? "true" : "false") << "\n";
}

vexa_cli::tour::registrar const section(30, "The variant and argument lists", show);

}  // namespace
