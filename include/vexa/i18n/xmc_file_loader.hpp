// vexa — `i18n::_private::xmc_file_loader`: reads XMC catalog files (and the
// files they include) into catalogs of messages for one requested language.
//
// An XMC file is an XML document (read through parser::xml_token_stream):
//
//   <?xml version="1.0"?>
//   <xmc version="1.1">
//     <include file="common.xmc"/>
//     <catalog name="app" lang="de">
//       <msg name="saved" meta="status line">Gespeichert: <arg name="size" type="memory"/><br/></msg>
//     </catalog>
//   </xmc>
//
// The language list built from the requested language holds, in rising
// preference, ".", "en" and the parts of the language: for "de_DE" the list
// ".", "en", "de", "de_DE"; a catalog is read only when its `lang` is on the
// list, and of several variants of one message the one whose language stands
// latest wins. Within one load the first of equal weight is kept; across
// loads (combine_data) the later one wins.
//
// Loading never throws: every outcome is a `load_error` (type 0 on success)
// whose message carries the fixed text of its error and the context lines
// appended on the way out, innermost first: message, catalog, then each file
// from the innermost included file outwards. Errors found while reading the
// XML itself (4), and an empty document (14), carry only the frames of the
// files that include the one that failed.
//
// Decisions of this implementation:
//  - Includes are followed with an explicit stack of open files, never by
//    recursion. A file that includes itself, directly or through others (the
//    same file by device and inode, whatever path names it), is error 5
//    naming the attribute "file", with the frames of every file on the way.
//    One load follows at most 10,000 includes (the same error beyond), so a
//    chain of files that include each other twice cannot grow without end.
//  - An argument element without `type` is a string argument. Its options
//    may stand before or after `name`; the data is the name, then the
//    options in document order.
//  - An argument element closed by the end tag of the other name (arg by
//    argument) is accepted, as the parser never lets that happen anyway.
//  - reset() forgets the loaded messages; the language list, the base
//    directory and the catalog id stay.
//  - Error 1 is raised only when nothing follows the root's version.
//
//   xmc_file_loader loader;
//   load_error const e = loader.parse("app.xmc", "de_DE");
//   e.type() == xmc_file_loader::no_error;   // then loader.combine_data(table)
#ifndef VEXA_I18N_XMC_FILE_LOADER_HPP
#define VEXA_I18N_XMC_FILE_LOADER_HPP

#include <iosfwd>
#include <map>
#include <memory>
#include <vector>

#include "vexa/export.hpp"
#include "vexa/i18n/catalog.hpp"
#include "vexa/i18n/message.hpp"
#include "vexa/i18n/message_item.hpp"
#include "vexa/parser/xml_parser.hpp"
#include "vexa/parser/xml_token_stream.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace i18n {
namespace _private {

class VEXA_API xmc_file_loader {
 public:
  using ustring8 = strings::ustring8;
  using message_map = std::map<ustring8, message_t>;
  using catalog_message_map = std::map<ustring8, message_map>;
  using token_iterator = parser::xml_token_stream::const_iterator;

  // The numbers are fixed; the texts are in load_error::format_msg.
  enum error_type : unsigned int {
    no_error = 0,
    no_catalog = 1,
    default_locale_lookup = 2,
    file_not_found = 3,
    xml_parse_error = 4,
    invalid_attribute = 5,
    invalid_element = 6,
    not_xmc_file = 7,
    unsupported_version = 8,
    br_end_missing = 9,
    msg_end_missing = 10,
    arg_end_missing = 11,
    include_end_missing = 12,
    catalog_end_missing = 13,
    unexpected_error = 14
  };

  class VEXA_API load_error {
   public:
    // The context line appended by append_error_stack.
    enum append_type : unsigned int { in_message = 1, in_catalog = 2, in_file = 3, at_line = 4 };

    // load_error
    // The error `type` with the text format_msg(type, s), or for an XML
    // fault the text chosen by the parse error's code.
    //   load_error(xmc_file_loader::invalid_element, "p").message()
    //       // "xmc_file_loader::load_error - Invalid element \"p\""
    //   load_error(xmc_file_loader::xml_parse_error, parse_error{2, 3, "a"}).message()
    //       // "... - Mismatched end element \"a\" was found\n at line: \"3\""
    load_error(error_type type, ustring8 const& s);
    load_error(error_type type, parser::xml_parser::parse_error const& error);
    load_error(load_error const& other);
    load_error& operator=(load_error const& other);

    error_type type() const { return _type; }
    ustring8 const& message() const { return _message; }

    // format_msg
    // The fixed text of an error, of an XML parse fault, or of a context
    // line; unknown numbers give "unknown, or unhandle case happened! " with
    // the number and " str data=" with `s`.
    //   format_msg(xmc_file_loader::file_not_found, "a.xmc")
    //       // "xmc_file_loader::load_error - File \"a.xmc\" was not found on disk"
    //   format_msg(load_error::in_file, "a.xmc")   // "\n in file: \"a.xmc\""
    static ustring8 format_msg(error_type type, ustring8 const& s);
    static ustring8 format_msg(error_type type, parser::xml_parser::parse_error const& error);
    static ustring8 format_msg(append_type type, ustring8 const& s);

    // append_error_stack
    // Appends format_msg(type, s) to the message.
    //   e.append_error_stack(load_error::in_catalog, "main");   // + "\n in catalog element: \"main\""
    //   e.append_error_stack(load_error::in_file, "/x/a.xmc");  // + "\n in file: \"/x/a.xmc\""
    void append_error_stack(append_type type, ustring8 const& s);

   private:
    error_type _type;
    ustring8 _message;
  };

  // Empty tables, no catalog id, base directory "./".
  xmc_file_loader();
  ~xmc_file_loader();

  // reset
  // Forgets the loaded messages for another load (see the top).
  //   loader.reset(); loader.messages().empty()   // true
  void reset();

  // parse
  // Reads `file` for the neutral language (".", "en"); for `lang`, which
  // must not be empty (error 2, nothing read); or for `lang` and only the
  // catalog named `catalog`. Returns the outcome, type 0 on success.
  //   loader.parse("app.xmc", "de_DE").type()   // no_error
  //   loader.parse("app.xmc", "").type()        // default_locale_lookup
  load_error parse(ustring8 const& file);
  load_error parse(ustring8 const& file, ustring8 const& lang);
  load_error parse(ustring8 const& file, ustring8 const& lang, ustring8 const& catalog);

  // parse_file
  // Reads one file and everything it includes: error 3 when it does not
  // exist or cannot be read; the base directory becomes the file's.
  //   loader.parse_file("/x/app.xmc");   // base_directory() == "/x/"
  //   loader.parse_file("missing.xmc").type()   // file_not_found
  load_error parse_file(ustring8 const& path);

  // parse_string
  // Reads the XMC document `text`; `path` names it in the error frames.
  // Includes are resolved against the base directory.
  //   loader.parse_string("<?xml?><xmc version='1.0'/>", "t.xmc").type()   // no_error
  //   loader.parse_string("", "t.xmc").type()                               // xml_parse_error
  load_error parse_string(ustring8 const& text, ustring8 const& path);

  // combine_data
  // Merges the loaded catalogs into `catalogs` (new catalogs are created);
  // an existing message is replaced when its weight is not above the new
  // one's. The messages are moved, not copied: afterwards the loader holds
  // its catalog and message names with empty messages (reset() before
  // reuse). An empty pointer in `catalogs` throws the text
  // "unreferanced object".
  //   loader.combine_data(table);   // table["app"]->message("saved")
  //   table["x"].reset(); loader.combine_data(table)   // throws when "x" was loaded
  void combine_data(catalog_map& catalogs);

  // What the loader holds, for tools and tests.
  strings::ustring8_vector const& languages() const { return _languages; }
  catalog_message_map const& messages() const { return _messages; }
  ustring8 const& base_directory() const { return _base_directory; }
  ustring8 const& catalog_id() const { return _catalog_id; }

  // get_locale_weight
  // The 1-based place of the normalised `lang` in the language list (the
  // first match), 0 when it is not there; larger is better.
  //   after parse(f, "de_DE"): get_locale_weight("de-DE") == 4, ("fr") == 0
  unsigned int get_locale_weight(ustring8 const& lang) const;
  bool is_lang_id_good(ustring8 const& lang) const { return get_locale_weight(lang) != 0; }

  // ---- implementation details ----
 private:
  struct open_file;

  xmc_file_loader(xmc_file_loader const&) = delete;
  xmc_file_loader& operator=(xmc_file_loader const&) = delete;

  void handle_language(ustring8 const& lang);
  bool is_cat_id_set() const { return !_catalog_id.empty(); }
  bool is_catalog_matched(ustring8 const& name) const;
  void set_message(message_t&& message, ustring8 const& catalog);

  // The walk; each step takes the position and the end and throws load_error.
  void read_files(ustring8 const& text, ustring8 const& path);
  std::unique_ptr<open_file> open(ustring8 const& text, ustring8 const& path) const;
  void parse_ignorable(token_iterator& pos, token_iterator const& end) const;
  void parse_xmc_header(token_iterator& pos, token_iterator const& end) const;
  ustring8 parse_include(token_iterator& pos, token_iterator const& end) const;
  void parse_catalog(token_iterator& pos, token_iterator const& end);
  message_t parse_message(token_iterator& pos, token_iterator const& end) const;
  message_item parse_message_arg(token_iterator& pos, token_iterator const& end) const;
  static message_item::type_t parse_message_type(ustring8 const& type);

  strings::ustring8_vector _languages;
  catalog_message_map _messages;
  ustring8 _base_directory;
  ustring8 _catalog_id;
};

// Both enumerations print as their numbers.
VEXA_API std::ostream& operator<<(std::ostream& os, xmc_file_loader::error_type type);
VEXA_API std::ostream& operator<<(std::ostream& os, xmc_file_loader::load_error::append_type type);

}  // namespace _private
}  // namespace i18n
}  // namespace VEXA_2_10

#endif  // VEXA_I18N_XMC_FILE_LOADER_HPP
