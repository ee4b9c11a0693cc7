// vexa — `config::commandline_item`: the program's arguments as a
// configuration source, id "command line".
//
// argv[0] is stored under "application.name.raw" as given and under
// "application.name" without its directory. Each later argument:
//   --key=value, -key=value, key=value   sets key (dots nest) to the text value
//   key[]=a,b,c (any of the forms)       sets the array key to a, b, c
//   --flag, -flag (no '=')               sets flag to the text "true"
//   --                                   ends the options: every later
//                                        argument is kept as it is
//   anything else ("-", "file.txt", "--=x")  is kept
// The kept arguments form the array "arguments", in order (written only when
// there is at least one). The key is what stands before the first '=' outside
// double quotes (base_config_item::make_key_value); the value is everything
// after it, spaces included. Array elements are cut at every comma; an empty
// last element is dropped, like a trailing comma in a file.
//
// The vector is read when the item is made, so the values are there before
// any `load`; `load` reads it again into an empty tree and `unload` empties
// the tree. The item keeps the pointer, not a copy: the vector must outlive
// the item and its clones (main's argv does). A null vector, a negative count
// and null entries are read as no arguments.
//
//   char const* argv[] = {"/usr/bin/tool", "--net.port=8080", "-v", "in.txt"};
//   config::commandline_item item(4, argv);
//   // application.name = "tool", net.port = "8080", v = "true", arguments = [in.txt]
#ifndef VEXA_CONFIG_COMMANDLINE_ITEM_HPP
#define VEXA_CONFIG_COMMANDLINE_ITEM_HPP

#include "vexa/config/base_config_item.hpp"
#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API commandline_item : public base_config_item {
 public:
  // commandline_item
  // Reads the first `argc` entries of `argv` into the tree.
  //   config::commandline_item item(argc, argv);
  //   item.get_value("application.name")->second.as_string();   // "tool"
  commandline_item(int argc, char const* const* argv);
  commandline_item(commandline_item const& other);
  commandline_item& operator=(commandline_item const& other);
  ~commandline_item() override;

  commandline_item* clone() const override;
  // An owned item over no arguments.
  commandline_item* create() const override;

  // "command line".
  strings::ustring8 get_id() const override;

  // load
  // Empties the tree and reads the arguments again; returns true.
  //   item.set("x", 1); item.load(items);   // x is gone again
  bool load(config_item_list& items) override;

  // ---- implementation details ----
 private:
  void read_arguments();
  int _argc;
  char const* const* _argv;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_COMMANDLINE_ITEM_HPP
