// vexa — `i18n::catalog_t`: the messages of one catalog name, and
// `i18n::catalog_map`, the table of catalogs by name.
//
// A catalog holds one message per name (the loader has already chosen the
// language variant that fits best) and remembers the languages its messages
// were read in, as the catalog files wrote them. Language tests normalise
// both sides as the loader does: "de-DE", "de.DE" and "de_DE" are one
// language.
//
//   catalog_t c("app");
//   c.message("hello", message_t("hello", {message_item("Hallo")}, ""));
//   c.message("hello").as_string(generic::varg_list());   // "Hallo"
#ifndef VEXA_I18N_CATALOG_HPP
#define VEXA_I18N_CATALOG_HPP

#include <map>
#include <set>

#include "vexa/export.hpp"
#include "vexa/i18n/message.hpp"
#include "vexa/memory/pointers/shared_pointer.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/nil.hpp"

namespace VEXA_2_10 {
namespace i18n {

class VEXA_API catalog_t {
 public:
  using message_map = std::map<strings::ustring8, message_t>;
  using const_iterator = message_map::const_iterator;
  using language_set = std::set<strings::ustring8>;
  using language_iterator = language_set::const_iterator;

  explicit catalog_t(strings::ustring8 const& name = strings::ustring8());

  strings::ustring8 const& name() const { return _name; }

  // message
  // The message of that name, or the nil message (== types::nil).
  //   c.message("hello").name()         // "hello"
  //   c.message("missing") == types::nil   // true
  message_t const& message(strings::ustring8 const& name) const;

  // message (store)
  // Stores `message` under `name`, replacing what was there, and adds its
  // language to the language set.
  //   c.message("bye", message_t("bye", {message_item("Tschüss")}, ""));
  //   c.count()   // one more
  void message(strings::ustring8 const& name, message_t const& message);
  void message(strings::ustring8 const& name, message_t&& message);

  bool has_message(strings::ustring8 const& name) const { return _messages.count(name) != 0; }
  unsigned long count() const { return _messages.size(); }
  unsigned long size() const { return _messages.size(); }
  const_iterator begin() const { return _messages.begin(); }
  const_iterator end() const { return _messages.end(); }

  // The languages loaded into the catalog, as written in the files.
  language_iterator languages_begin() const { return _languages.begin(); }
  language_iterator languages_end() const { return _languages.end(); }

  // is_language_loaded
  // True when a message of the catalog was read in `lang` (normalised:
  // "." and "-" count as "_").
  //   c.is_language_loaded("de-DE")   // true after a catalog with lang="de_DE"
  //   c.is_language_loaded("fr")      // false when no French message was kept
  bool is_language_loaded(strings::ustring8 const& lang) const;

  // gen_lang_set
  // Rebuilds the language set from the messages held.
  //   c.gen_lang_set();
  //   c.is_language_loaded(c.message("hello")._orginal_locale())   // true
  void gen_lang_set();

  // ---- implementation details ----
 private:
  strings::ustring8 _name;
  message_map _messages;
  language_set _languages;
};

// The catalogs by name, as message_catalogs and the loader's merge keep them.
using catalog_map = std::map<strings::ustring8, memory::pointers::shared_pointer<catalog_t>>;

// An empty catalog pointer (what a look-up of a missing catalog returns)
// equals nil.
//   message_catalogs().catalog("app") == types::nil   // true
inline bool operator==(memory::pointers::shared_pointer<catalog_t> const& c, types::nil_t const&) { return !c; }
inline bool operator!=(memory::pointers::shared_pointer<catalog_t> const& c, types::nil_t const&) {
  return static_cast<bool>(c);
}

// ---- implementation details ----
namespace _private {

// The language identifier as the loader compares it: unless it is one
// character long, every "." and then every "-" becomes "_".
VEXA_API strings::ustring8 normalise_language(strings::ustring8 const& lang);

}  // namespace _private
}  // namespace i18n
}  // namespace VEXA_2_10

#endif  // VEXA_I18N_CATALOG_HPP
