// Tour section: a labeled buffer written in the text format, its bytes with
// the separator made visible, and the values read back.
#include <ostream>
#include <string>

#include "tour/section.hpp"
#include "vexa/serialization/labeled_text_buffer.hpp"
#include "vexa/serialization/serialize_binary_buf.hpp"

namespace {

using namespace vexa;
using serialization::labeled_text_buffer;

// The separator 0x01 shows as '|', other control bytes as \xNN.
std::string visible(std::string const& bytes) {
  static char const digits[] = "0123456789ABCDEF";
  std::string out;
  for (unsigned char c : bytes) {
    if (c == 0x01)
      out += '|';
    else if (c < 0x20 || c == 0x7F)
      out += std::string("\\x") + digits[c >> 4] + digits[c & 15];
    else
      out += static_cast<char>(c);
  }
  return out;
}

void show(std::ostream& out) {
  labeled_text_buffer settings;
  settings.add_value("title", "Report");
  settings.add_value("copies", 3);
  labeled_text_buffer& page = settings.create_group("page");
  page.add_value("width", 210);
  page.add_value("margin\t", 12.5);  // the tab is cut from the label
  settings.add_value("page", "A4");  // a value beside the group

  std::string const text = settings.as_str();
  out << "A labeled buffer: title, copies, and a group page (width, margin) that also has a value.\n"
      << "Written in label order, every string as length|bytes| (the separator 0x01 shown as |):\n  "
      << visible(text) << "\n  (" << text.size() << " bytes; the group's label carries one space, "
      << "its text is one nested string)\n\n";

  labeled_text_buffer const back(text);
  labeled_text_buffer const* group = back.retrieve_group("page");
  out << "Read back, every value is a string variant to be converted on reading:\n"
      << "  title = \"" << back.retrieve_value("title").as_string() << "\", copies + 1 = "
      << back.retrieve_value("copies").as_int() + 1 << ", page = \"" << back.retrieve_value("page").as_string()
      << "\"\n  page.width = " << group->retrieve_value("width").as_int()
      << ", page.margin * 2 = " << group->retrieve_value("margin").as_double() * 2
      << "\n  the same text again: " << (back.as_str() == text ? "yes" : "no") << "\n\n";

  serialization::serialize_binary_buf binary;
  binary.append_uint32(1);
  binary.append_string("ab");
  out << "The binary format for comparison: uint32 1 and the string ab are\n  ";
  for (unsigned char c : binary.as_str()) out << "0123456789ABCDEF"[c >> 4] << "0123456789ABCDEF"[c & 15] << ' ';
  out << "\n";
}

vexa_cli::tour::registrar const section(50, "Serialization", show);

}  // namespace
