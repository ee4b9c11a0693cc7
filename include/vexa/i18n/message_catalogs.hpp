// vexa — `i18n::message_catalogs`: the catalogs an application has loaded,
// by name, and the messages in them.
//
// Loading reads XMC files (xmc_file_loader.hpp) for one language and merges
// what they hold; it never throws for missing files or bad content, and
// reports the outcome as a `result_type` with a number and a printable text.
// Every operation that takes text exists for ustring8, ustring16 and
// ustring32; the wider forms convert to UTF-8 and forward.
//
//   i18n::message_catalogs catalogs;
//   auto const r = catalogs.load("share/catalogs", "de_DE");
//   if (r.type() != i18n::message_catalogs::no_error) std::cerr << r.message() << '\n';
//   catalogs.message("app", "saved").as_string(generic::varg_list(generic::argument("size", 1536)));
//
// Decisions of this implementation:
//  - A file that fails to load contributes nothing: its catalogs are merged
//    only when the whole file (with its includes) was read without error.
//  - load_directory loads every file it can, depth first, each directory's
//    entries in the order the system lists them (a subdirectory is walked
//    where it is met), and reports the first failure.
//    It walks with an explicit stack and visits each directory once, so
//    deep trees and symbolic-link loops are safe.
//  - A result built from a loader error carries the loader's number
//    unchanged (0 success, 1 no catalog, 3 file not found, 4 XML, ...).
//  - Copies share the catalogs (the catalog objects themselves).
#ifndef VEXA_I18N_MESSAGE_CATALOGS_HPP
#define VEXA_I18N_MESSAGE_CATALOGS_HPP

#include <iosfwd>

#include "vexa/export.hpp"
#include "vexa/i18n/catalog.hpp"
#include "vexa/i18n/message.hpp"
#include "vexa/i18n/xmc_file_loader.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/nil.hpp"

namespace VEXA_2_10 {
namespace i18n {

class VEXA_API message_catalogs {
 public:
  using ustring8 = strings::ustring8;
  using ustring16 = strings::ustring16;
  using ustring32 = strings::ustring32;
  using iterator = catalog_map::iterator;
  using const_iterator = catalog_map::const_iterator;
  using message_iterator = catalog_t::const_iterator;

  // The numbers are fixed. Results made from a loader error carry the
  // loader's numbers (up to 14) instead.
  enum error_type : unsigned int {
    no_error = 0,
    no_catalog = 1,
    file_not_found = 3,
    directory_not_found = 4,
    entity_not_found = 5
  };

  class VEXA_API result_type {
   public:
    // result_type
    // The result `type` for the path `s`, or the result of a loader error:
    // a headline chosen by the loader's number, a line break and a space,
    // then the loader's whole message.
    //   result_type(message_catalogs::directory_not_found, "cat").message()
    //       // "message_catalogs::result_type - Directory \"cat\" was not found on disk"
    //   result_type(load_error(xmc_file_loader::invalid_element, "p")).message()
    //       // "message_catalogs::result_type - XMC file is not valid\n xmc_file_loader::load_error - Invalid element \"p\""
    result_type(error_type type, ustring8 const& s);
    result_type(_private::xmc_file_loader::load_error const& error);

    error_type type() const { return _type; }
    ustring8 const& message() const { return _message; }

    // format_msg
    // The text of `type` for the path `s`.
    //   format_msg(message_catalogs::no_error, "")   // "message_catalogs::result_type - No Error"
    //   format_msg(error_type(2), "x")               // "unknown, or unhandle case happened! 2 str data=x"
    static ustring8 format_msg(error_type type, ustring8 const& s);

   private:
    error_type _type;
    ustring8 _message;
  };

  message_catalogs();
  message_catalogs(message_catalogs const& other);
  ~message_catalogs();
  message_catalogs& operator=(message_catalogs const& other);
  // Empties the set.
  message_catalogs& operator=(types::nil_t const&);

  // True when no catalog is loaded.
  bool operator==(types::nil_t const&) const { return _catalogs.empty(); }
  bool operator!=(types::nil_t const&) const { return !_catalogs.empty(); }

  // load
  // A file is read by load_file, a directory by load_directory; anything
  // else is result 5. After a successful load that leaves the set without
  // any catalog, result 1 with `path`.
  //   catalogs.load("app.xmc", "de").type()     // no_error
  //   catalogs.load("nowhere", "de").type()     // entity_not_found
  result_type load(ustring8 const& path, ustring8 const& lang);
  result_type load(ustring8 const& path, ustring8 const& lang, ustring8 const& catalog);
  result_type load(ustring16 const& path, ustring16 const& lang);
  result_type load(ustring16 const& path, ustring16 const& lang, ustring16 const& catalog);
  result_type load(ustring32 const& path, ustring32 const& lang);
  result_type load(ustring32 const& path, ustring32 const& lang, ustring32 const& catalog);

  // load_file
  // Reads one XMC file (and its includes) for `lang`, optionally only the
  // catalog named `catalog`, and merges it; the result is the loader's.
  //   catalogs.load_file("app.xmc", "fr").type()   // no_error
  //   catalogs.load_file("app.xmc", "").type()     // 2, default locale lookup
  result_type load_file(ustring8 const& file, ustring8 const& lang);
  result_type load_file(ustring8 const& file, ustring8 const& lang, ustring8 const& catalog);
  result_type load_file(ustring16 const& file, ustring16 const& lang);
  result_type load_file(ustring16 const& file, ustring16 const& lang, ustring16 const& catalog);
  result_type load_file(ustring32 const& file, ustring32 const& lang);
  result_type load_file(ustring32 const& file, ustring32 const& lang, ustring32 const& catalog);

  // load_directory
  // Loads every file below `dir` whose lower-cased name ends in ".xmc" or
  // ".xml"; result 4 when `dir` does not exist, else the first failure or 0.
  //   catalogs.load_directory("share/catalogs", "de").type()   // no_error
  //   catalogs.load_directory("missing", "de").type()          // directory_not_found
  result_type load_directory(ustring8 const& dir, ustring8 const& lang);
  result_type load_directory(ustring8 const& dir, ustring8 const& lang, ustring8 const& catalog);
  result_type load_directory(ustring16 const& dir, ustring16 const& lang);
  result_type load_directory(ustring16 const& dir, ustring16 const& lang, ustring16 const& catalog);
  result_type load_directory(ustring32 const& dir, ustring32 const& lang);
  result_type load_directory(ustring32 const& dir, ustring32 const& lang, ustring32 const& catalog);

  // has_catalog
  // True when the catalog is loaded (and, with `lang`, holds a message read
  // in that language).
  //   catalogs.has_catalog("app")         // true
  //   catalogs.has_catalog("app", "ja")   // false
  bool has_catalog(ustring8 const& name) const;
  bool has_catalog(ustring16 const& name) const;
  bool has_catalog(ustring32 const& name) const;
  bool has_catalog(ustring8 const& name, ustring8 const& lang) const;
  bool has_catalog(ustring16 const& name, ustring16 const& lang) const;
  bool has_catalog(ustring32 const& name, ustring32 const& lang) const;

  // catalog
  // The catalog, shared; an empty pointer (== types::nil) when it is not loaded.
  //   catalogs.catalog("app")->count()          // its messages
  //   catalogs.catalog("none") == types::nil    // true
  memory::pointers::shared_pointer<catalog_t> catalog(ustring8 const& name) const;
  memory::pointers::shared_pointer<catalog_t> catalog(ustring16 const& name) const;
  memory::pointers::shared_pointer<catalog_t> catalog(ustring32 const& name) const;

  // count, size (of one catalog)
  // The number of messages in the catalog; 0 when it is not loaded.
  //   catalogs.count("app")    // 12
  //   catalogs.size("none")    // 0
  unsigned long count(ustring8 const& name) const;
  unsigned long count(ustring16 const& name) const;
  unsigned long count(ustring32 const& name) const;
  unsigned long size(ustring8 const& name) const;
  unsigned long size(ustring16 const& name) const;
  unsigned long size(ustring32 const& name) const;

  // begin, end (of one catalog)
  // Its messages by name; an empty range when it is not loaded.
  //   for (auto it = c.begin("app"); it != c.end("app"); ++it) std::cout << it->first;
  //   c.begin("none") == c.end("none")   // true
  message_iterator begin(ustring8 const& name) const;
  message_iterator begin(ustring16 const& name) const;
  message_iterator begin(ustring32 const& name) const;
  message_iterator end(ustring8 const& name) const;
  message_iterator end(ustring16 const& name) const;
  message_iterator end(ustring32 const& name) const;

  // message, has_message
  // The message, or the nil message (== types::nil) when the catalog or the
  // message is missing.
  //   catalogs.message("app", "saved").as_string(args)
  //   catalogs.has_message("app", "nope")   // false
  message_t const& message(ustring8 const& catalog, ustring8 const& name) const;
  message_t const& message(ustring16 const& catalog, ustring16 const& name) const;
  message_t const& message(ustring32 const& catalog, ustring32 const& name) const;
  bool has_message(ustring8 const& catalog, ustring8 const& name) const;
  bool has_message(ustring16 const& catalog, ustring16 const& name) const;
  bool has_message(ustring32 const& catalog, ustring32 const& name) const;

  // erase
  // Removes one catalog (nothing when it is not loaded), or all of them.
  //   catalogs.erase("app"); catalogs.has_catalog("app")   // false
  //   catalogs.erase(); catalogs.count()                   // 0
  void erase(ustring8 const& name);
  void erase(ustring16 const& name);
  void erase(ustring32 const& name);
  void erase();

  // count, size, begin, end (of the set)
  //   catalogs.count()   // the number of catalogs
  //   for (auto const& entry : catalogs) std::cout << entry.first << '\n';
  unsigned long count() const { return _catalogs.size(); }
  unsigned long size() const { return _catalogs.size(); }
  iterator begin() { return _catalogs.begin(); }
  iterator end() { return _catalogs.end(); }
  const_iterator begin() const { return _catalogs.begin(); }
  const_iterator end() const { return _catalogs.end(); }

  // ---- implementation details ----
 private:
  // The work of load, load_file and load_directory; `catalog` null when
  // every catalog is read.
  result_type load_any(ustring8 const& path, ustring8 const& lang, ustring8 const* catalog);
  result_type load_one(ustring8 const& file, ustring8 const& lang, ustring8 const* catalog);
  result_type load_tree(ustring8 const& dir, ustring8 const& lang, ustring8 const* catalog);

  catalog_map _catalogs;
};

// Prints the number.
VEXA_API std::ostream& operator<<(std::ostream& os, message_catalogs::error_type type);

}  // namespace i18n
}  // namespace VEXA_2_10

#endif  // VEXA_I18N_MESSAGE_CATALOGS_HPP
