#include "vexa/config/commandline_item.hpp"

#include <cstring>

namespace VEXA_2_10 {
namespace config {

using strings::ustring8;

namespace {

// The elements of an array argument: cut at every comma, an empty last
// element dropped (as after a trailing comma in a file).
generic::varg_list split_elements(ustring8 const& text) {
  generic::varg_list elements;
  std::size_t from = 0;
  for (std::size_t comma; (comma = text.find(',', from)) != ustring8::npos; from = comma + 1) {
    elements.push_back(generic::argument(types::variant(ustring8(text, from, comma - from))));
  }
  if (from < text.size()) elements.push_back(generic::argument(types::variant(ustring8(text, from, ustring8::npos))));
  return elements;
}

}  // namespace

commandline_item::commandline_item(int argc, char const* const* argv) : _argc(argc), _argv(argv) {
  read_arguments();
}
commandline_item::commandline_item(commandline_item const& other)
    : base_config_item(other), _argc(other._argc), _argv(other._argv) {}
commandline_item& commandline_item::operator=(commandline_item const& other) {
  base_config_item::operator=(other);
  _argc = other._argc;
  _argv = other._argv;
  return *this;
}
commandline_item::~commandline_item() = default;

commandline_item* commandline_item::clone() const {
  auto* copy = new commandline_item(*this);
  copy->set_owned(true);
  return copy;
}

commandline_item* commandline_item::create() const {
  auto* fresh = new commandline_item(0, nullptr);
  fresh->set_owned(true);
  return fresh;
}

ustring8 commandline_item::get_id() const { return "command line"; }

bool commandline_item::load(config_item_list&) {
  _tree.erase();
  read_arguments();
  return true;
}

void commandline_item::read_arguments() {
  if (_argv == nullptr || _argc <= 0) return;
  if (_argv[0] != nullptr) {
    ustring8 const raw(_argv[0]);
    std::size_t const slash = raw.rfind('/');
    set("application.name.raw", types::variant(raw));
    set("application.name", types::variant(slash == ustring8::npos ? raw : ustring8(raw, slash + 1, ustring8::npos)));
  }
  generic::varg_list kept;
  bool options = true;
  ustring8 key;
  ustring8 value;
  for (int i = 1; i < _argc; ++i) {
    if (_argv[i] == nullptr) continue;
    ustring8 const argument(_argv[i]);
    if (options && argument == "--") {
      options = false;
      continue;
    }
    std::size_t const dashes = !options ? 0 : argument.compare(0, 2, "--") == 0 ? 2 : argument.compare(0, 1, "-") == 0 ? 1 : 0;
    ustring8 const body(argument, dashes, ustring8::npos);
    if (options && make_key_value(body, key, value) && !key.empty()) {
      if (key.size() > 2 && key.compare(key.size() - 2, 2, "[]") == 0) {
        set_array(ustring8(key, 0, key.size() - 2), split_elements(value), generic::varg_list());
      } else {
        set(key, types::variant(value));
      }
    } else if (options && dashes != 0 && !body.empty() && body.find('=') == ustring8::npos) {
      set(body, types::variant(ustring8("true")));
    } else {
      kept.push_back(generic::argument(types::variant(argument)));
    }
  }
  if (kept.count() != 0) set_array("arguments", kept, generic::varg_list());
}

}  // namespace config
}  // namespace VEXA_2_10
