// i18n::_private::xmc_file_loader: XMC files to catalogs of messages. The
// format, the language rules and the decisions taken here are described in
// include/vexa/i18n/xmc_file_loader.hpp.
#include "vexa/i18n/xmc_file_loader.hpp"

#include <sys/stat.h>

#include <cstring>
#include <ostream>
#include <string>

#include "vexa/system/file.hpp"
#include "vexa/system/io.hpp"

namespace VEXA_2_10 {
namespace i18n {
namespace _private {

using strings::ustring8;
using token = parser::xml_token_stream::token;

namespace {

char const* const prefix = "xmc_file_loader::load_error - ";
char const* const nothing_of_interest = "Nothing of interest in the file.";
unsigned const include_budget = 10000;

ustring8 quoted(char const* before, ustring8 const& s, char const* after) {
  ustring8 text(prefix);
  text += before;
  text += s;
  text += after;
  return text;
}

ustring8 unknown_case(char const* lead, unsigned int value, ustring8 const& s) {
  ustring8 text(lead);
  text += std::to_string(value);
  text += " str data=";
  text += s;
  return text;
}

// Compares a token's text with a literal, length first.
template <std::size_t N>
bool value_is(token const& t, char const (&literal)[N]) {
  return t.value().size() == N - 1 && std::memcmp(t.value().data(), literal, N - 1) == 0;
}
template <std::size_t N>
bool is_start(token const& t, char const (&name)[N]) {
  return t.type() == token::element_start && value_is(t, name);
}
template <std::size_t N>
bool is_end(token const& t, char const (&name)[N]) {
  return t.type() == token::element_end && value_is(t, name);
}
bool is_ignorable(token const& t) {
  return t.type() == token::comment || t.type() == token::space || t.type() == token::character;
}

// The directory part of a path with its separator, or "./".
ustring8 directory_of(ustring8 const& path) {
  std::size_t const last = path.find_last_of("/\\");
  return last == ustring8::npos ? ustring8("./") : ustring8(path.substr(0, last + 1));
}

char ascii_lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

// Reads the attributes of the start tag at `pos` (already past the element
// name) up to and including its start_tag_end; comments that stand before
// the close are skipped. The end of the list is error 14.
template <class OnAttribute>
void read_attributes(xmc_file_loader::token_iterator& pos, xmc_file_loader::token_iterator const& end,
                     OnAttribute on_attribute) {
  for (;;) {
    if (pos == end) throw xmc_file_loader::load_error(xmc_file_loader::unexpected_error, nothing_of_interest);
    token const& t = *pos;
    if (t.type() == token::start_tag_end) {
      ++pos;
      return;
    }
    if (t.type() == token::attribute_name) {
      ++pos;
      if (pos == end) throw xmc_file_loader::load_error(xmc_file_loader::unexpected_error, nothing_of_interest);
      on_attribute(t.value(), pos->value());
      ++pos;
    } else if (t.type() == token::comment) {
      ++pos;
    } else {
      return;  // the token stream closes every start tag first; nothing else comes here
    }
  }
}

// A file's identity, to find a file that includes itself under any name.
struct identity_t {
  bool known = false;
  dev_t device = 0;
  ino_t inode = 0;
};

identity_t identity_of(ustring8 const& path) {
  identity_t id;
  struct stat info;
  if (path.find('\0') == ustring8::npos && ::stat(path.c_str(), &info) == 0) {
    id.known = true;
    id.device = info.st_dev;
    id.inode = info.st_ino;
  }
  return id;
}

}  // namespace

// ---- load_error -----------------------------------------------------------------

xmc_file_loader::load_error::load_error(error_type type, ustring8 const& s)
    : _type(type), _message(format_msg(type, s)) {}

xmc_file_loader::load_error::load_error(error_type type, parser::xml_parser::parse_error const& error)
    : _type(type), _message(format_msg(type, error)) {}

xmc_file_loader::load_error::load_error(load_error const& other) = default;

xmc_file_loader::load_error& xmc_file_loader::load_error::operator=(load_error const& other) = default;

ustring8 xmc_file_loader::load_error::format_msg(error_type type, ustring8 const& s) {
  switch (type) {
    case no_error: return quoted("No Error", "", "");
    case no_catalog: return quoted("No catalog was loaded in file: \"", s, "\"");
    case default_locale_lookup: return quoted("Default locale lookup not supported yet", "", "");
    case file_not_found: return quoted("File \"", s, "\" was not found on disk");
    case xml_parse_error: return format_msg(type, parser::xml_parser::parse_error(
                                                      parser::xml_parser::parse_error::no_error, 0, s));
    case invalid_attribute: return quoted("Invalid attibute \"", s, "\"");
    case invalid_element: return quoted("Invalid element \"", s, "\"");
    case not_xmc_file: return quoted("Not XMC file, root element is not XMC but \"", s, "\"");
    case unsupported_version: return quoted("XMC version \"", s, "\" is not supported");
    case br_end_missing: return quoted("Expected BR end tag not found", "", "");
    case msg_end_missing: return quoted("Expected msg (message) end tag not found for message \"", s, "\"");
    case arg_end_missing: return quoted("Expected arg (argument) end tag not found for argument \"", s, "\"");
    case include_end_missing: return quoted("Expected \"include\" end tag not found", "", "");
    case catalog_end_missing: return quoted("Expected catalog end tag not found for catalog \"", s, "\"");
    case unexpected_error: return quoted("Unexpected parse error happen!", "", "");
  }
  return unknown_case("unknown, or unhandle case happened! ", type, s);
}

ustring8 xmc_file_loader::load_error::format_msg(error_type, parser::xml_parser::parse_error const& error) {
  using pe = parser::xml_parser::parse_error;
  ustring8 text;
  switch (error.type) {
    case pe::unexpected_end: text = quoted("Unexpected end of file during XML parsing", "", ""); break;
    case pe::tag_mismatch: text = quoted("Mismatched end element \"", error.text, "\" was found"); break;
    case pe::declaration_incomplete: text = quoted("No root element was found", "", ""); break;
    case pe::missing_declaration: text = quoted("Valid XML header not found", "", ""); break;
    case pe::unexpected_character:
      text = quoted("Unexpected character \"", error.text, "\" found while parsing");
      break;
    case pe::missing_quote: text = quoted("Missing \" while parsing attribute \"", error.text, "\""); break;
    case pe::unknown_entity: text = quoted("Unknown enity being parsed", "", ""); break;
    case pe::missing_equals: text = quoted("Missing = sign for attribute \"", error.text, "\""); break;
    case pe::duplicate_attribute: text = quoted("attribute \"", error.text, "\" is being redefined"); break;
    case pe::multiple_roots: text = quoted("Data found after root element", "", ""); break;
    default: return quoted("Unknown Parse error", "", "");
  }
  text += "\n at line: \"";
  text += std::to_string(error.line);
  text += "\"";
  return text;
}

ustring8 xmc_file_loader::load_error::format_msg(append_type type, ustring8 const& s) {
  char const* lead = nullptr;
  switch (type) {
    case in_message: lead = "\n in message element: \""; break;
    case in_catalog: lead = "\n in catalog element: \""; break;
    case in_file: lead = "\n in file: \""; break;
    case at_line: lead = "\n at line: \""; break;
  }
  if (lead == nullptr) return unknown_case("\n unknown, or unhandle case happened! ", type, s);
  ustring8 text(lead);
  text += s;
  text += "\"";
  return text;
}

void xmc_file_loader::load_error::append_error_stack(append_type type, ustring8 const& s) {
  _message += format_msg(type, s);
}

std::ostream& operator<<(std::ostream& os, xmc_file_loader::error_type type) {
  return os << static_cast<unsigned int>(type);
}

std::ostream& operator<<(std::ostream& os, xmc_file_loader::load_error::append_type type) {
  return os << static_cast<unsigned int>(type);
}

// ---- the loader -------------------------------------------------------------------

// One file being read: its tokens, where the walk stands, and what to restore
// when it is done.
struct xmc_file_loader::open_file {
  parser::xml_token_stream tokens;
  token_iterator pos;
  token_iterator end;
  ustring8 path;
  ustring8 includer_base;  // the base directory to restore when the file is done
  identity_t identity;
};

xmc_file_loader::xmc_file_loader() : _base_directory("./") {}

xmc_file_loader::~xmc_file_loader() = default;

void xmc_file_loader::reset() { _messages.clear(); }

xmc_file_loader::load_error xmc_file_loader::parse(ustring8 const& file) {
  handle_language(ustring8());
  return parse_file(file);
}

xmc_file_loader::load_error xmc_file_loader::parse(ustring8 const& file, ustring8 const& lang) {
  if (lang.empty()) return load_error(default_locale_lookup, ustring8());
  handle_language(lang);
  return parse_file(file);
}

xmc_file_loader::load_error xmc_file_loader::parse(ustring8 const& file, ustring8 const& lang,
                                                   ustring8 const& catalog) {
  _catalog_id = catalog;
  handle_language(lang);
  return parse(file);
}

xmc_file_loader::load_error xmc_file_loader::parse_file(ustring8 const& path) {
  if (!system::io::exists(path)) return load_error(file_not_found, path);
  ustring8 text;
  if (system::load_file(path, text) != 0) return load_error(file_not_found, path);
  _base_directory = directory_of(path);
  return parse_string(text, path);
}

xmc_file_loader::load_error xmc_file_loader::parse_string(ustring8 const& text, ustring8 const& path) {
  try {
    read_files(text, path);
  } catch (load_error const& e) {
    return e;
  } catch (...) {
    // Out of memory, or a character reference the XML reader's conversion
    // refuses: the load fails without an exception.
    return load_error(unexpected_error, nothing_of_interest);
  }
  return load_error(no_error, ustring8());
}

void xmc_file_loader::handle_language(ustring8 const& lang) {
  ustring8 const normal = normalise_language(lang);
  _languages.push_back(".");
  _languages.push_back("en");
  if (normal.empty()) return;
  ustring8 running;
  std::size_t start = 0;
  for (bool first = true;; first = false) {
    std::size_t const stop = normal.find('_', start);
    ustring8 const part = normal.substr(start, stop == ustring8::npos ? ustring8::npos : stop - start);
    if (first) {
      running = part;
      if (part != "en") _languages.push_back(running);
    } else {
      running += "_";
      running += part;
      _languages.push_back(running);
    }
    if (stop == ustring8::npos) break;
    start = stop + 1;
  }
}

unsigned int xmc_file_loader::get_locale_weight(ustring8 const& lang) const {
  ustring8 const normal = normalise_language(lang);
  for (std::size_t i = 0; i < _languages.size(); ++i)
    if (_languages[i] == normal) return static_cast<unsigned int>(i + 1);
  return 0;
}

bool xmc_file_loader::is_catalog_matched(ustring8 const& name) const {
  return !is_cat_id_set() || _catalog_id == name;
}

void xmc_file_loader::set_message(message_t&& message, ustring8 const& catalog) {
  message_t& stored = _messages[catalog][message.name()];
  if (stored == types::nil ||
      get_locale_weight(message._orginal_locale()) > get_locale_weight(stored._orginal_locale()))
    stored = std::move(message);
}

void xmc_file_loader::combine_data(catalog_map& catalogs) {
  for (auto& loaded : _messages) {
    auto found = catalogs.find(loaded.first);
    if (found == catalogs.end())
      found = catalogs.emplace(loaded.first, memory::pointers::shared_pointer<catalog_t>(new catalog_t(loaded.first))).first;
    if (!found->second) throw "unreferanced object";
    catalog_t& target = *found->second;
    for (auto& entry : loaded.second) {
      message_t& incoming = entry.second;
      if (!target.has_message(entry.first) ||
          get_locale_weight(target.message(entry.first)._orginal_locale()) <=
              get_locale_weight(incoming._orginal_locale()))
        target.message(entry.first, std::move(incoming));
    }
  }
}

// ---- the walk ---------------------------------------------------------------------

std::unique_ptr<xmc_file_loader::open_file> xmc_file_loader::open(ustring8 const& text,
                                                                   ustring8 const& path) const {
  std::unique_ptr<open_file> file(new open_file);
  parser::xml_parser::parse_error const result = file->tokens.parse(text);
  if (result.type != parser::xml_parser::parse_error::no_error) throw load_error(xml_parse_error, result);
  file->pos = file->tokens.begin();
  file->end = file->tokens.end();
  if (file->pos == file->end) throw load_error(unexpected_error, nothing_of_interest);
  file->path = path;
  return file;
}

void xmc_file_loader::read_files(ustring8 const& text, ustring8 const& path) {
  std::vector<std::unique_ptr<open_file>> files;
  unsigned includes = 0;
  // Reads the header of the file just opened; its errors carry its frame.
  auto begin_file = [&](open_file& f) {
    parse_ignorable(f.pos, f.end);
    parse_xmc_header(f.pos, f.end);
    parse_ignorable(f.pos, f.end);
    if (f.pos == f.end) throw load_error(no_catalog, f.path);
  };
  try {
    files.push_back(open(text, path));
    files.back()->identity = identity_of(path);
    begin_file(*files.back());
    while (!files.empty()) {
      open_file& f = *files.back();
      bool done = false;
      while (f.pos != f.end && !done) {
        token const& t = *f.pos;
        if (t.type() == token::element_start) {
          if (t.value() == "catalog") {
            parse_catalog(f.pos, f.end);
          } else if (t.value() == "include") {
            ustring8 const included = parse_include(f.pos, f.end);
            if (!system::io::exists(included)) throw load_error(file_not_found, included);
            identity_t const id = identity_of(included);
            bool const cycle = id.known && [&] {
              for (auto const& open_one : files)
                if (open_one->identity.known && open_one->identity.device == id.device &&
                    open_one->identity.inode == id.inode)
                  return true;
              return false;
            }();
            if (cycle || ++includes > include_budget) throw load_error(invalid_attribute, "file");
            ustring8 content;
            if (system::load_file(included, content) != 0) throw load_error(file_not_found, included);
            std::unique_ptr<open_file> child = open(content, included);
            child->identity = id;
            child->includer_base = _base_directory;
            _base_directory = directory_of(included);
            files.push_back(std::move(child));
            begin_file(*files.back());
            break;  // continue with the included file
          } else {
            throw load_error(invalid_element, t.value());
          }
        } else {
          done = t.type() == token::element_end && t.value() == "xmc";
          ++f.pos;  // ignorable text, the root's other attributes, the close of its start tag
        }
      }
      if (&f != files.back().get()) continue;  // an include was opened
      if (!done && f.pos != f.end) continue;
      // This file is done: back to the one that included it, whose include
      // element must end right here.
      ustring8 const restore = f.includer_base;
      files.pop_back();
      if (files.empty()) break;
      _base_directory = restore;
      open_file& parent = *files.back();
      if (parent.pos == parent.end || !is_end(*parent.pos, "include")) throw load_error(include_end_missing, "");
      ++parent.pos;
    }
  } catch (load_error& e) {
    for (auto it = files.rbegin(); it != files.rend(); ++it) e.append_error_stack(load_error::in_file, (*it)->path);
    throw;
  }
}

void xmc_file_loader::parse_ignorable(token_iterator& pos, token_iterator const& end) const {
  while (pos != end && is_ignorable(*pos)) ++pos;
}

void xmc_file_loader::parse_xmc_header(token_iterator& pos, token_iterator const& end) const {
  if (pos == end) throw load_error(not_xmc_file, "Value Not Defined");
  if (!is_start(*pos, "xmc")) throw load_error(not_xmc_file, pos->value());
  ++pos;
  if (pos == end) throw load_error(unexpected_error, nothing_of_interest);
  if (pos->type() != token::attribute_name || pos->value() != "version")
    throw load_error(invalid_attribute, pos->value());
  ++pos;
  if (pos == end) throw load_error(unexpected_error, nothing_of_interest);
  if (pos->value() != "1.0" && pos->value() != "1.1") throw load_error(unsupported_version, pos->value());
  ++pos;
}

ustring8 xmc_file_loader::parse_include(token_iterator& pos, token_iterator const& end) const {
  ++pos;
  ustring8 file;
  read_attributes(pos, end, [&](ustring8 const& name, ustring8 const& value) {
    if (name != "file") throw load_error(invalid_attribute, name);
    file = value;
  });
  if (file.empty()) throw load_error(file_not_found, file);
  bool const absolute = file[0] == '/' || file[0] == '\\' || (file.size() > 2 && file[1] == ':');
  return absolute ? file : ustring8(_base_directory + file);
}

void xmc_file_loader::parse_catalog(token_iterator& pos, token_iterator const& end) {
  if (!is_start(*pos, "catalog")) throw load_error(invalid_element, pos->value());
  ++pos;
  ustring8 name, lang;
  read_attributes(pos, end, [&](ustring8 const& attribute, ustring8 const& value) {
    if (attribute == "name")
      name = value;
    else if (attribute == "lang")
      lang = value;
    else
      throw load_error(invalid_attribute, attribute);
  });
  try {
    if (!is_catalog_matched(name) || !is_lang_id_good(lang)) {
      for (; pos != end; ++pos) {
        if (is_end(*pos, "catalog")) {
          ++pos;
          return;
        }
      }
      throw load_error(catalog_end_missing, name);
    }
    for (;;) {
      if (pos == end) throw load_error(catalog_end_missing, name);
      token const& t = *pos;
      if (is_ignorable(t)) {
        ++pos;
      } else if (is_start(t, "msg")) {
        message_t message = parse_message(pos, end);
        message._orginal_locale(lang);
        set_message(std::move(message), name);
      } else if (is_end(t, "catalog")) {
        ++pos;
        return;
      } else {
        throw load_error(catalog_end_missing, name);
      }
    }
  } catch (load_error& e) {
    e.append_error_stack(load_error::in_catalog, name);
    throw;
  }
}

message_t xmc_file_loader::parse_message(token_iterator& pos, token_iterator const& end) const {
  ++pos;
  ustring8 name, meta;
  read_attributes(pos, end, [&](ustring8 const& attribute, ustring8 const& value) {
    if (attribute == "name")
      name = value;
    else if (attribute == "meta")
      meta = value;
    else
      throw load_error(invalid_attribute, attribute);
  });
  try {
    message_t::item_list items;
    items.reserve(4);
    std::string text;
    bool after_argument = false;
    auto close_text = [&] {
      if (!text.empty()) items.emplace_back(ustring8(std::move(text)));
      text.clear();
    };
    for (;;) {
      if (pos == end) throw load_error(msg_end_missing, name);
      token const& t = *pos;
      switch (t.type()) {
        case token::character:
          text += t.value();
          after_argument = false;
          ++pos;
          break;
        case token::space:
          // Runs of white space fold to one space; leading white space goes,
          // but the spaces on both sides of an argument stay.
          if (text.empty() ? after_argument : text.back() != ' ') text += ' ';
          after_argument = false;
          ++pos;
          break;
        case token::element_start:
          if (t.value() == "br") {
            ++pos;
            read_attributes(pos, end, [](ustring8 const& attribute, ustring8 const&) {
              throw load_error(invalid_attribute, attribute);
            });
            if (pos == end || !is_end(*pos, "br")) throw load_error(br_end_missing, "");
            ++pos;
            text += '\n';
            after_argument = false;
          } else if (t.value() == "arg" || t.value() == "argument") {
            close_text();
            items.push_back(parse_message_arg(pos, end));
            after_argument = true;
          } else {
            throw load_error(invalid_element, t.value());
          }
          break;
        case token::element_end:
          if (t.value() == "msg") {
            ++pos;
            close_text();
            return message_t(std::move(name), std::move(items), std::move(meta));
          }
          ++pos;
          break;
        default:  // comments, and nothing else comes here
          ++pos;
          break;
      }
    }
  } catch (load_error& e) {
    e.append_error_stack(load_error::in_message, name);
    throw;
  }
}

message_item xmc_file_loader::parse_message_arg(token_iterator& pos, token_iterator const& end) const {
  ++pos;
  ustring8 name, options;
  message_item::type_t type = message_item::string;
  read_attributes(pos, end, [&](ustring8 const& attribute, ustring8 const& value) {
    if (attribute == "name") {
      name = value;
    } else if (attribute == "type") {
      type = parse_message_type(value);
    } else {
      options += '\x01';
      options += attribute;
      options += '\x01';
      options += value;
    }
  });
  if (pos == end) throw load_error(unexpected_error, nothing_of_interest);
  if (!is_end(*pos, "arg") && !is_end(*pos, "argument")) throw load_error(arg_end_missing, name);
  ++pos;
  name += options;
  return message_item(std::move(name), type);
}

message_item::type_t xmc_file_loader::parse_message_type(ustring8 const& type) {
  ustring8 name(type);
  for (char& c : name) c = ascii_lower(c);
  struct entry {
    char const* name;
    message_item::type_t type;
  };
  static entry const table[] = {
      {"value", message_item::text},         {"string", message_item::string},
      {"number", message_item::number},      {"int", message_item::integer},
      {"double", message_item::real},        {"time", message_item::time},
      {"date", message_item::date},          {"memory", message_item::memory},
      {"mem", message_item::memory},         {"mem_unit", message_item::memory_unit},
      {"memory_unit", message_item::memory_unit}, {"metric", message_item::metric},
      {"metric_unit", message_item::metric_unit}, {"duration", message_item::duration},
  };
  for (entry const& e : table)
    if (name == e.name) return e.type;
  return message_item::string;  // unknown names are strings, on purpose
}

}  // namespace _private
}  // namespace i18n
}  // namespace VEXA_2_10
