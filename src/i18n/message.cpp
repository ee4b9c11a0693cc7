// i18n::message_t: a catalog message and its renderings.
#include "vexa/i18n/message.hpp"

#include "vexa/strings/unicode.hpp"

namespace VEXA_2_10 {
namespace i18n {

message_t::message_t() = default;

message_t::message_t(types::nil_t const&) {}

message_t::message_t(strings::ustring8 const& name, item_list const& items, strings::ustring8 const& meta)
    : _name(name), _meta(meta), _items(items) {}

message_t::message_t(strings::ustring8 name, item_list&& items, strings::ustring8 meta)
    : _name(std::move(name)), _meta(std::move(meta)), _items(std::move(items)) {}

unsigned long message_t::argument_count() const {
  unsigned long count = 0;
  for (message_item const& item : _items)
    if (item.is_argument()) ++count;
  return count;
}

strings::ustring8_vector message_t::arguments() const {
  strings::ustring8_vector names;
  for (message_item const& item : _items)
    if (item.is_argument()) names.push_back(item.name());
  return names;
}

bool message_t::has_valid_args(generic::varg_list const& args) const {
  for (message_item const& item : _items)
    if (item.is_argument() && !args.has_argument(item.name())) return false;
  return true;
}

strings::ustring8 message_t::as_string(generic::varg_list const& args) const {
  std::string out;
  out.reserve(64);
  for (message_item const& item : _items) item.append_to(out, args);
  return strings::ustring8(std::move(out));
}

strings::ustring message_t::as_ustring(generic::varg_list const& args) const { return as_string(args); }

std::string message_t::as_utf8(generic::varg_list const& args) const { return as_string(args); }

strings::ustring16 message_t::as_utf16(generic::varg_list const& args) const {
  return strings::utf8_to_utf16(as_string(args));
}

strings::ustring32 message_t::as_utf32(generic::varg_list const& args) const {
  return strings::utf8_to_utf32(as_string(args));
}

std::wstring message_t::as_wstring(generic::varg_list const& args) const {
  strings::ustring32 const wide = as_utf32(args);
  return std::wstring(wide.begin(), wide.end());
}

}  // namespace i18n
}  // namespace VEXA_2_10
