// i18n::message_item: a text run or a typed argument of a catalog message.
#include "vexa/i18n/message_item.hpp"

#include <cstring>
#include <typeinfo>

#include "vexa/i18n/format_value.hpp"

namespace VEXA_2_10 {
namespace i18n {

char const* const message_item::invalid_text = "?invalid?";

message_item::message_item(strings::ustring8 const& text) : message_item(text, message_item::text) {}

message_item::message_item(strings::ustring8 const& data, type_t type)
    : _data(data), _type(type), _name_end(data.find('\x01')) {
  if (_name_end == strings::ustring8::npos) _name_end = _data.size();
}

message_item::message_item(strings::ustring8&& data, type_t type)
    : _data(std::move(data)), _type(type), _name_end(_data.find('\x01')) {
  if (_name_end == strings::ustring8::npos) _name_end = _data.size();
}

strings::ustring8 message_item::name() const { return _data.substr(0, _name_end); }

strings::ustring8 message_item::options() const { return _data.substr(_name_end); }

strings::ustring8 message_item::as_string(generic::varg_list const& args) const {
  std::string out;
  append_to(out, args);
  return strings::ustring8(std::move(out));
}

void message_item::append_to(std::string& out, generic::varg_list const& args) const {
  if (_type == text) {
    out += _data;
    return;
  }
  if (_type == string || _type == integer || _type == real || (_type >= memory && _type <= duration)) {
    // Looked up by the name without a copy of it: the list compares whole texts.
    generic::varg_list::const_iterator found = args.end();
    for (auto it = args.begin(); it != args.end(); ++it) {
      strings::ustring8 const& name = it->name();
      if (name.size() == _name_end && std::memcmp(name.data(), _data.data(), _name_end) == 0) {
        found = it;
        break;
      }
    }
    if (found != args.end()) {
      types::variant const& value = found->value();
      if (_type == string) {
        // Text is appended straight from the value object; other types convert.
        std::type_info const& held = value.type();
        if (&held == &typeid(strings::ustring8) || held == typeid(strings::ustring8))
          out += static_cast<types::variant_value_t<strings::ustring8> const*>(value.value_object())->value;
        else
          out += value.as_string();
        return;
      }
      std::size_t const start = out.size();
      if (_private::append_formatted_value(out, _type, value, _data.data() + _name_end, _data.size() - _name_end)) {
        if (out.size() - start != 2 || out.compare(start, 2, "-0") != 0) return;
        out.resize(start);
      }
    }
  }
  out += invalid_text;
}

}  // namespace i18n
}  // namespace VEXA_2_10
