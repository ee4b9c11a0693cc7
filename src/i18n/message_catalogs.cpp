// i18n::message_catalogs: loading catalog files and directories, look-ups.
#include "vexa/i18n/message_catalogs.hpp"

#include <sys/stat.h>

#include <algorithm>
#include <ostream>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "vexa/generic/convert/to_utf8.hpp"
#include "vexa/system/file.hpp"
#include "vexa/system/io.hpp"

namespace VEXA_2_10 {
namespace i18n {

using strings::ustring8;
using loader_type = _private::xmc_file_loader;

namespace {

char const* const prefix = "message_catalogs::result_type - ";

ustring8 text(char const* before, ustring8 const& s = ustring8(), char const* after = "") {
  ustring8 result(prefix);
  result += before;
  result += s;
  result += after;
  return result;
}

ustring8 headline(loader_type::error_type type) {
  switch (type) {
    case loader_type::no_error: return text("No Error\n ");
    case loader_type::no_catalog: return text("No catalog was loaded\n ");
    case loader_type::default_locale_lookup: return text("Default locale lookup not supported yet\n ");
    case loader_type::file_not_found: return text("File was not found on disk\n ");
    case loader_type::xml_parse_error: return text("XML parse error, XML file not well formed\n ");
    case loader_type::invalid_attribute:
    case loader_type::invalid_element:
    case loader_type::not_xmc_file:
    case loader_type::unsupported_version:
    case loader_type::br_end_missing:
    case loader_type::msg_end_missing:
    case loader_type::arg_end_missing:
    case loader_type::include_end_missing:
    case loader_type::catalog_end_missing: return text("XMC file is not valid\n ");
    case loader_type::unexpected_error: return text("Unexpected error happened during loading\n ");
  }
  return text("Unhandled case\n ");
}

bool has_catalog_extension(ustring8 const& path) {
  if (path.size() < 4) return false;
  std::string tail = path.substr(path.size() - 4);
  for (char& c : tail)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return tail == ".xmc" || tail == ".xml";
}

memory::pointers::shared_pointer<catalog_t> const absent_catalog;
catalog_t const empty_catalog;
message_t const nil_message;

}  // namespace

// ---- result_type ------------------------------------------------------------------

message_catalogs::result_type::result_type(error_type type, ustring8 const& s)
    : _type(type), _message(format_msg(type, s)) {}

message_catalogs::result_type::result_type(loader_type::load_error const& error)
    : _type(static_cast<error_type>(error.type())), _message(headline(error.type()) + error.message()) {}

ustring8 message_catalogs::result_type::format_msg(error_type type, ustring8 const& s) {
  switch (type) {
    case no_error: return text("No Error");
    case no_catalog: return text("No catalog was loaded in file: \"", s, "\"");
    case file_not_found: return text("File \"", s, "\" was not found on disk");
    case directory_not_found: return text("Directory \"", s, "\" was not found on disk");
    case entity_not_found: return text("Entity (file or directory) \"", s, "\" was not found on disk");
  }
  ustring8 result("unknown, or unhandle case happened! ");
  result += std::to_string(static_cast<unsigned int>(type));
  result += " str data=";
  result += s;
  return result;
}

std::ostream& operator<<(std::ostream& os, message_catalogs::error_type type) {
  return os << static_cast<unsigned int>(type);
}

// ---- the set --------------------------------------------------------------------

message_catalogs::message_catalogs() = default;
message_catalogs::message_catalogs(message_catalogs const& other) = default;
message_catalogs::~message_catalogs() = default;
message_catalogs& message_catalogs::operator=(message_catalogs const& other) = default;

message_catalogs& message_catalogs::operator=(types::nil_t const&) {
  _catalogs.clear();
  return *this;
}

// ---- loading ----------------------------------------------------------------------

message_catalogs::result_type message_catalogs::load_one(ustring8 const& file, ustring8 const& lang,
                                                         ustring8 const* catalog) {
  loader_type loader;
  loader_type::load_error const outcome = catalog ? loader.parse(file, lang, *catalog) : loader.parse(file, lang);
  if (outcome.type() == loader_type::no_error) loader.combine_data(_catalogs);  // the set holds no empty pointer
  return result_type(outcome);
}

message_catalogs::result_type message_catalogs::load_tree(ustring8 const& dir, ustring8 const& lang,
                                                          ustring8 const* catalog) {
  if (!system::io::exists(dir)) return result_type(directory_not_found, dir);
  struct level {
    strings::ustring8_vector entries;
    std::size_t next;
  };
  auto listing = [](ustring8 const& path) {
    return level{system::list_directory(path), 0};  // the system's order, as listed
  };
  // Directories already walked, by device and inode: a link loop is walked once.
  std::set<std::pair<dev_t, ino_t>> seen;
  auto first_visit = [&seen](ustring8 const& path) {
    struct stat info;
    if (path.find('\0') != ustring8::npos || ::stat(path.c_str(), &info) != 0) return false;
    return seen.emplace(info.st_dev, info.st_ino).second;
  };
  result_type first_failure(no_error, dir);
  bool failed = false;
  std::vector<level> stack;
  first_visit(dir);
  stack.push_back(listing(dir));
  while (!stack.empty()) {
    level& top = stack.back();
    if (top.next == top.entries.size()) {
      stack.pop_back();
      continue;
    }
    ustring8 const entry = top.entries[top.next++];
    if (system::io::is_directory(entry)) {
      if (first_visit(entry)) stack.push_back(listing(entry));  // `top` is not used after this
    } else if (has_catalog_extension(entry) && system::io::is_file(entry)) {
      result_type const r = load_one(entry, lang, catalog);
      if (r.type() != no_error && !failed) {
        first_failure = r;
        failed = true;
      }
    }
  }
  return first_failure;
}

message_catalogs::result_type message_catalogs::load_any(ustring8 const& path, ustring8 const& lang,
                                                         ustring8 const* catalog) {
  result_type result(no_error, path);
  if (system::io::is_file(path))
    result = load_one(path, lang, catalog);
  else if (system::io::is_directory(path))
    result = load_tree(path, lang, catalog);
  else
    return result_type(entity_not_found, path);
  if (result.type() == no_error && count() == 0) return result_type(no_catalog, path);
  return result;
}

using generic::convert::to_utf8;

message_catalogs::result_type message_catalogs::load(ustring8 const& path, ustring8 const& lang) {
  return load_any(path, lang, nullptr);
}
message_catalogs::result_type message_catalogs::load(ustring8 const& path, ustring8 const& lang,
                                                     ustring8 const& catalog) {
  return load_any(path, lang, &catalog);
}
message_catalogs::result_type message_catalogs::load(ustring16 const& path, ustring16 const& lang) {
  return load(to_utf8(path), to_utf8(lang));
}
message_catalogs::result_type message_catalogs::load(ustring16 const& path, ustring16 const& lang,
                                                     ustring16 const& catalog) {
  return load(to_utf8(path), to_utf8(lang), to_utf8(catalog));
}
message_catalogs::result_type message_catalogs::load(ustring32 const& path, ustring32 const& lang) {
  return load(to_utf8(path), to_utf8(lang));
}
message_catalogs::result_type message_catalogs::load(ustring32 const& path, ustring32 const& lang,
                                                     ustring32 const& catalog) {
  return load(to_utf8(path), to_utf8(lang), to_utf8(catalog));
}

message_catalogs::result_type message_catalogs::load_file(ustring8 const& file, ustring8 const& lang) {
  return load_one(file, lang, nullptr);
}
message_catalogs::result_type message_catalogs::load_file(ustring8 const& file, ustring8 const& lang,
                                                          ustring8 const& catalog) {
  return load_one(file, lang, &catalog);
}
message_catalogs::result_type message_catalogs::load_file(ustring16 const& file, ustring16 const& lang) {
  return load_file(to_utf8(file), to_utf8(lang));
}
message_catalogs::result_type message_catalogs::load_file(ustring16 const& file, ustring16 const& lang,
                                                          ustring16 const& catalog) {
  return load_file(to_utf8(file), to_utf8(lang), to_utf8(catalog));
}
message_catalogs::result_type message_catalogs::load_file(ustring32 const& file, ustring32 const& lang) {
  return load_file(to_utf8(file), to_utf8(lang));
}
message_catalogs::result_type message_catalogs::load_file(ustring32 const& file, ustring32 const& lang,
                                                          ustring32 const& catalog) {
  return load_file(to_utf8(file), to_utf8(lang), to_utf8(catalog));
}

message_catalogs::result_type message_catalogs::load_directory(ustring8 const& dir, ustring8 const& lang) {
  return load_tree(dir, lang, nullptr);
}
message_catalogs::result_type message_catalogs::load_directory(ustring8 const& dir, ustring8 const& lang,
                                                               ustring8 const& catalog) {
  return load_tree(dir, lang, &catalog);
}
message_catalogs::result_type message_catalogs::load_directory(ustring16 const& dir, ustring16 const& lang) {
  return load_directory(to_utf8(dir), to_utf8(lang));
}
message_catalogs::result_type message_catalogs::load_directory(ustring16 const& dir, ustring16 const& lang,
                                                               ustring16 const& catalog) {
  return load_directory(to_utf8(dir), to_utf8(lang), to_utf8(catalog));
}
message_catalogs::result_type message_catalogs::load_directory(ustring32 const& dir, ustring32 const& lang) {
  return load_directory(to_utf8(dir), to_utf8(lang));
}
message_catalogs::result_type message_catalogs::load_directory(ustring32 const& dir, ustring32 const& lang,
                                                               ustring32 const& catalog) {
  return load_directory(to_utf8(dir), to_utf8(lang), to_utf8(catalog));
}

// ---- look-ups -----------------------------------------------------------------------

bool message_catalogs::has_catalog(ustring8 const& name) const { return _catalogs.count(name) != 0; }
bool message_catalogs::has_catalog(ustring16 const& name) const { return has_catalog(to_utf8(name)); }
bool message_catalogs::has_catalog(ustring32 const& name) const { return has_catalog(to_utf8(name)); }

bool message_catalogs::has_catalog(ustring8 const& name, ustring8 const& lang) const {
  auto const found = _catalogs.find(name);
  return found != _catalogs.end() && found->second && found->second->is_language_loaded(lang);
}
bool message_catalogs::has_catalog(ustring16 const& name, ustring16 const& lang) const {
  return has_catalog(to_utf8(name), to_utf8(lang));
}
bool message_catalogs::has_catalog(ustring32 const& name, ustring32 const& lang) const {
  return has_catalog(to_utf8(name), to_utf8(lang));
}

memory::pointers::shared_pointer<catalog_t> message_catalogs::catalog(ustring8 const& name) const {
  auto const found = _catalogs.find(name);
  return found == _catalogs.end() ? absent_catalog : found->second;
}
memory::pointers::shared_pointer<catalog_t> message_catalogs::catalog(ustring16 const& name) const {
  return catalog(to_utf8(name));
}
memory::pointers::shared_pointer<catalog_t> message_catalogs::catalog(ustring32 const& name) const {
  return catalog(to_utf8(name));
}

namespace {
catalog_t const& find_or_empty(catalog_map const& catalogs, ustring8 const& name) {
  auto const found = catalogs.find(name);
  return found == catalogs.end() || !found->second ? empty_catalog : *found->second;
}
}  // namespace

unsigned long message_catalogs::count(ustring8 const& name) const { return find_or_empty(_catalogs, name).count(); }
unsigned long message_catalogs::count(ustring16 const& name) const { return count(to_utf8(name)); }
unsigned long message_catalogs::count(ustring32 const& name) const { return count(to_utf8(name)); }
unsigned long message_catalogs::size(ustring8 const& name) const { return count(name); }
unsigned long message_catalogs::size(ustring16 const& name) const { return count(to_utf8(name)); }
unsigned long message_catalogs::size(ustring32 const& name) const { return count(to_utf8(name)); }

message_catalogs::message_iterator message_catalogs::begin(ustring8 const& name) const {
  return find_or_empty(_catalogs, name).begin();
}
message_catalogs::message_iterator message_catalogs::begin(ustring16 const& name) const {
  return begin(to_utf8(name));
}
message_catalogs::message_iterator message_catalogs::begin(ustring32 const& name) const {
  return begin(to_utf8(name));
}
message_catalogs::message_iterator message_catalogs::end(ustring8 const& name) const {
  return find_or_empty(_catalogs, name).end();
}
message_catalogs::message_iterator message_catalogs::end(ustring16 const& name) const { return end(to_utf8(name)); }
message_catalogs::message_iterator message_catalogs::end(ustring32 const& name) const { return end(to_utf8(name)); }

message_t const& message_catalogs::message(ustring8 const& catalog, ustring8 const& name) const {
  auto const found = _catalogs.find(catalog);
  return found == _catalogs.end() || !found->second ? nil_message : found->second->message(name);
}
message_t const& message_catalogs::message(ustring16 const& catalog, ustring16 const& name) const {
  return message(to_utf8(catalog), to_utf8(name));
}
message_t const& message_catalogs::message(ustring32 const& catalog, ustring32 const& name) const {
  return message(to_utf8(catalog), to_utf8(name));
}

bool message_catalogs::has_message(ustring8 const& catalog, ustring8 const& name) const {
  return find_or_empty(_catalogs, catalog).has_message(name);
}
bool message_catalogs::has_message(ustring16 const& catalog, ustring16 const& name) const {
  return has_message(to_utf8(catalog), to_utf8(name));
}
bool message_catalogs::has_message(ustring32 const& catalog, ustring32 const& name) const {
  return has_message(to_utf8(catalog), to_utf8(name));
}

void message_catalogs::erase(ustring8 const& name) { _catalogs.erase(name); }
void message_catalogs::erase(ustring16 const& name) { erase(to_utf8(name)); }
void message_catalogs::erase(ustring32 const& name) { erase(to_utf8(name)); }
void message_catalogs::erase() { _catalogs.clear(); }

}  // namespace i18n
}  // namespace VEXA_2_10
