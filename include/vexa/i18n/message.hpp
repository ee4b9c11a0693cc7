// vexa — `i18n::message_t`: one catalog message, ready to render.
//
// A message is its name, a free `meta` text, the language it was read in
// (`_orginal_locale`, the catalog's `lang` attribute as written) and its
// items in order (message_item.hpp). Rendering concatenates the items'
// renderings; a missing argument shows as "?invalid?" in its place and the
// rest of the message still renders.
//
//   message_t m("disk_full", {message_item("Only "), message_item("free", message_item::memory),
//                             message_item(" left.")}, "");
//   m.as_string(varg_list(argument("free", 1536)));   // "Only 1.5 KB left."
//
// A default-constructed message is nil: no name and no items. Look-ups of a
// message that does not exist return a nil message (== types::nil).
#ifndef VEXA_I18N_MESSAGE_HPP
#define VEXA_I18N_MESSAGE_HPP

#include <string>
#include <vector>

#include "vexa/export.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/i18n/message_item.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/nil.hpp"

namespace VEXA_2_10 {
namespace i18n {

class VEXA_API message_t {
 public:
  using item_list = std::vector<message_item>;

  // The nil message.
  message_t();
  message_t(types::nil_t const&);
  message_t(strings::ustring8 const& name, item_list const& items, strings::ustring8 const& meta);
  // The same, taking the texts and the items over.
  message_t(strings::ustring8 name, item_list&& items, strings::ustring8 meta);

  strings::ustring8 const& name() const { return _name; }
  strings::ustring8 const& meta() const { return _meta; }
  item_list const& items() const { return _items; }

  // The language the message was read in; set by the loader to its
  // catalog's `lang`.
  //   m._orginal_locale("de_DE");
  //   m._orginal_locale();   // "de_DE"
  strings::ustring8 const& _orginal_locale() const { return _locale; }
  void _orginal_locale(strings::ustring8 const& locale) { _locale = locale; }

  // argument_count
  // The number of items whose type is not 0 (text); a name used twice
  // counts twice.
  //   message "Hi <arg name="who"/>, bye <arg name="who"/>": 2
  //   nil message: 0
  unsigned long argument_count() const;

  // arguments
  // The names of the argument items, in order (repeats kept).
  //   message "<arg name="a"/> and <arg name="b"/>": {"a", "b"}
  //   a message of text only: {}
  strings::ustring8_vector arguments() const;

  // has_valid_args
  // True when every argument item's name is in `args` (extra arguments are
  // fine). A message without arguments accepts any list.
  //   m.has_valid_args(varg_list(argument("free", 1)))   // true
  //   m.has_valid_args(varg_list())                      // false
  bool has_valid_args(generic::varg_list const& args) const;

  // as_string and the other encodings
  // The rendered message: every item rendered in order. Never fails; items
  // that cannot be rendered show "?invalid?". as_ustring and as_utf8 give
  // the same bytes; as_utf16, as_utf32 and as_wstring transform them.
  //   m.as_string(varg_list(argument("free", 1536)))   // "Only 1.5 KB left."
  //   m.as_string(varg_list())                         // "Only ?invalid? left."
  strings::ustring8 as_string(generic::varg_list const& args) const;
  strings::ustring as_ustring(generic::varg_list const& args) const;
  std::string as_utf8(generic::varg_list const& args) const;
  strings::ustring16 as_utf16(generic::varg_list const& args) const;
  strings::ustring32 as_utf32(generic::varg_list const& args) const;
  std::wstring as_wstring(generic::varg_list const& args) const;

  // True for the nil message (no name and no items).
  bool equal(types::nil_t const&) const { return _name.empty() && _items.empty(); }
  bool operator==(types::nil_t const& n) const { return equal(n); }
  bool operator!=(types::nil_t const& n) const { return !equal(n); }

  // ---- implementation details ----
 private:
  strings::ustring8 _name;
  strings::ustring8 _meta;
  strings::ustring8 _locale;
  item_list _items;
};

}  // namespace i18n
}  // namespace VEXA_2_10

#endif  // VEXA_I18N_MESSAGE_HPP
