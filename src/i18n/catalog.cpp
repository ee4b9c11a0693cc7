// i18n::catalog_t: the messages of one catalog and the languages they came in.
#include "vexa/i18n/catalog.hpp"

namespace VEXA_2_10 {
namespace i18n {

namespace _private {

strings::ustring8 normalise_language(strings::ustring8 const& lang) {
  strings::ustring8 result(lang);
  if (result.size() != 1)
    for (char& c : result)
      if (c == '.' || c == '-') c = '_';
  return result;
}

}  // namespace _private

namespace {
message_t const nil_message;
}

catalog_t::catalog_t(strings::ustring8 const& name) : _name(name) {}

message_t const& catalog_t::message(strings::ustring8 const& name) const {
  auto const found = _messages.find(name);
  return found == _messages.end() ? nil_message : found->second;
}

void catalog_t::message(strings::ustring8 const& name, message_t const& message) {
  _messages[name] = message;
  _languages.insert(message._orginal_locale());
}

void catalog_t::message(strings::ustring8 const& name, message_t&& message) {
  _languages.insert(message._orginal_locale());
  _messages[name] = std::move(message);
}

bool catalog_t::is_language_loaded(strings::ustring8 const& lang) const {
  strings::ustring8 const wanted = _private::normalise_language(lang);
  for (strings::ustring8 const& loaded : _languages)
    if (_private::normalise_language(loaded) == wanted) return true;
  return false;
}

void catalog_t::gen_lang_set() {
  _languages.clear();
  for (auto const& entry : _messages) _languages.insert(entry.second._orginal_locale());
}

}  // namespace i18n
}  // namespace VEXA_2_10
