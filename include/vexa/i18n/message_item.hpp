// vexa — `i18n::message_item`: one piece of a catalog message, a run of text
// or a typed argument.
//
// A text item's data is the text itself. An argument item's data is the
// argument's name followed by its formatting options, each as the separator
// byte 0x01, the option's name, 0x01 and its value:
//
//   "size" "\x01" "precision" "\x01" "2" "\x01" "short_form" "\x01" "yes"
//
// Rendering looks the name up in a `generic::varg_list`. Text items render as
// they are, string arguments through `variant::as_string`, the numeric kinds
// through `i18n::format_value` (format_value.hpp). Number, time and date
// arguments are kept in the catalog but deliberately not rendered; they, a
// missing argument and a value the formatter rejects show as "?invalid?".
//
//   message_item size("size\x01" "precision\x01" "1", message_item::memory);
//   size.as_string(generic::varg_list(generic::argument("size", 1536)));   // "1.5 KB"
#ifndef VEXA_I18N_MESSAGE_ITEM_HPP
#define VEXA_I18N_MESSAGE_ITEM_HPP

#include <string>

#include "vexa/export.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace i18n {

class VEXA_API message_item {
 public:
  // The kinds of item; the numbers are what catalog files and callers rely on.
  // The `type` attribute names that select them, matched in lower case:
  //   "value" 0, "string" (and any unknown name) 1, "number" 2, "int" 3,
  //   "double" 4, "time" 5, "date" 6, "memory"/"mem" 7,
  //   "mem_unit"/"memory_unit" 8, "metric" 9, "metric_unit" 10, "duration" 11.
  enum type_t : unsigned int {
    text = 0,          // plain text (also an argument element of type "value")
    string = 1,        // the argument's variant::as_string()
    number = 2,        // not rendered
    integer = 3,       // format_value: whole numbers in any base
    real = 4,          // format_value: floating values
    time = 5,          // not rendered
    date = 6,          // not rendered
    memory = 7,        // format_value: byte counts, "1.5 MB"
    memory_unit = 8,   // format_value: a count converted between two memory units
    metric = 9,        // format_value: "2.3 kilometer"
    metric_unit = 10,  // format_value: a count converted between two metric prefixes
    duration = 11      // format_value: milliseconds as "1 dy 2 hr 3 min"
  };

  // The text returned for anything that cannot be rendered.
  static char const* const invalid_text;  // "?invalid?"

  // A text item (type 0) holding `text`.
  //   message_item("Hello, ").as_string(generic::varg_list());   // "Hello, "
  //   message_item("").data();                                   // ""
  message_item(strings::ustring8 const& text = strings::ustring8());

  // An item of any type; `data` is the text, or the name with its options.
  //   message_item("who", message_item::string).name();                 // "who"
  //   message_item("n\x01" "base\x01" "16", message_item::integer).options();   // "\x01" "base\x01" "16"
  message_item(strings::ustring8 const& data, type_t type);
  message_item(strings::ustring8&& data, type_t type);

  type_t type() const { return _type; }
  strings::ustring8 const& data() const { return _data; }

  // name
  // The data up to the first 0x01 (all of it when there is none): for an
  // argument item its argument's name. Never fails.
  //   message_item("n\x01" "fieldsize\x01" "4", message_item::integer).name()   // "n"
  //   message_item("plain text").name()                                         // "plain text"
  strings::ustring8 name() const;

  // options
  // The data from the first 0x01 on (empty when there is none): the option
  // text that format_value reads.
  //   message_item("n\x01" "base\x01" "2", message_item::integer).options()   // "\x01" "base\x01" "2"
  //   message_item("n", message_item::integer).options()                     // ""
  strings::ustring8 options() const;

  // is_argument
  // True for every type but 0 (text).
  //   message_item("x", message_item::date).is_argument()   // true
  //   message_item("x").is_argument()                       // false
  bool is_argument() const { return _type != text; }

  // as_string
  // The rendered item (see the top of this header); "?invalid?" when the
  // argument is missing, its kind is not rendered, or the formatter gives up.
  //   message_item("who", message_item::string).as_string(varg_list(argument("who", "Ada")))   // "Ada"
  //   message_item("who", message_item::date).as_string(varg_list(argument("who", 1)))        // "?invalid?"
  strings::ustring8 as_string(generic::varg_list const& args) const;

  // append_to
  // Appends what as_string returns to `out`, without a temporary text. The
  // form used by message_t's renderings.
  //   std::string s("n = "); item.append_to(s, args);   // "n = 42"
  //   message_item("x", message_item::time).append_to(s, args);   // appends "?invalid?"
  void append_to(std::string& out, generic::varg_list const& args) const;

  // ---- implementation details ----
 private:
  strings::ustring8 _data;
  type_t _type;
  // Where the name ends inside _data (its size when there is no 0x01).
  unsigned long _name_end;
};

}  // namespace i18n
}  // namespace VEXA_2_10

#endif  // VEXA_I18N_MESSAGE_ITEM_HPP
