// vexa — `config::file_item`: the configuration source read from a ".cfg" file.
//
// The file, in the lexer's tokens (config_token.hpp):
//   # a comment          // also a comment; both run to the end of the line
//   [net]                a section: the keys below are stored as net.<key>
//   port = 80            net.port = "80" (values are always text)
//   host = local host    net.host = "localhost": spaces outside quotes are dropped
//   name = "a  b"        net.name = "a  b": quotes keep them (escapes kept as written)
//   list[] = a, b,       an array net.list = a, b, c: after a comma the
//            c           array goes on in the next line
//   []                   an empty section name: back to no prefix
// A key is everything before the first '=' (spaces, tabs and line feeds
// dropped, so a line without '=' runs on into the next line's key); '.', '/'
// and backslash in it nest. An empty value stores nothing. Values are kept as
// text variants. "*/" is ordinary text, not a comment.
//
// Decisions made here:
// - Reading never fails: a missing or unreadable file leaves the item empty.
// - An array cut off by the end of the file after a trailing comma is written
//   with the elements gathered so far; an array with no element at all
//   ("list[] =") is written empty.
// - `load` starts from an empty tree; `load_file` adds to what is there.
// - `save` writes every valued node as one "dotted.key = value" line
//   (arrays as "key[] = a, b"), in name order, with no sections. A value that
//   would not read back unchanged without quotes (empty, or holding a space,
//   tab, line feed, carriage return, '#', "//", a quote, or a ',' in an
//   array) is written in double quotes; a quote inside is written as \" and
//   reads back with its backslash, since the reader keeps escapes as written.
//
//   config::file_item item("app.cfg");
//   item.load_file();
//   item.get_value("net.port")->second.as_int();   // 80
#ifndef VEXA_CONFIG_FILE_ITEM_HPP
#define VEXA_CONFIG_FILE_ITEM_HPP

#include "vexa/config/base_config_item.hpp"
#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API file_item : public base_config_item {
 public:
  // file_item
  // A source for the file `file_name` (may be empty: `load` may find one).
  //   config::file_item item("app.cfg");   // nothing read yet
  //   item.get_file_name();                // "app.cfg"
  explicit file_item(strings::ustring8 const& file_name);
  file_item(file_item const& other);
  file_item& operator=(file_item const& other);
  ~file_item() override;

  file_item* clone() const override;
  // An owned file_item with no name and no values.
  file_item* create() const override;

  // "standard file".
  strings::ustring8 get_id() const override;

  // load
  // Empties the tree, finds the file and reads it; returns true. The file is,
  // in this order: the value of "cfg_file" in the first source of `items`
  // that has that key, if it opens; else the value of "application.name.raw"
  // + ".cfg" in the first source that has that key, if it opens; else the
  // item's own name. The name found becomes the item's name.
  //   items: command line with --cfg_file=site.cfg   ->  site.cfg is read
  //   items without either key                       ->  the constructor's file
  bool load(config_item_list& items) override;

  // save
  // Writes the tree to the item's file (see the header comment). Returns
  // false when the item has no name or the file cannot be written.
  //   item.set("a", "x y"); item.save(items);   // the file holds: a = "x y"
  //   file_item("").save(items);                // false
  bool save(config_item_list& items) override;

  // load_file
  // Reads the item's file and adds its keys to the tree. Does nothing when
  // the name is empty or the file cannot be read.
  //   file_item("net.cfg").load_file();   // keys of net.cfg
  //   file_item("").load_file();          // nothing
  void load_file();

  // parse_comment
  // Skips a comment: reads tokens from `position` until a line feed or the
  // end and leaves `position` at the start of that last token. A '"' in the
  // comment starts a string token that may run over line ends, as anywhere.
  //   text "# x\ny", position 1   ->  position 3 (the line feed)
  //   text "# x", position 1      ->  position 3 (the end)
  void parse_comment(strings::ustring8 const& text, unsigned int& position);

  // The file's name, as given or as found by `load`.
  strings::ustring8 const& get_file_name() const { return _file_name; }

  // ---- implementation details ----
 private:
  void parse(strings::ustring8 const& text);
  strings::ustring8 _file_name;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_FILE_ITEM_HPP
