// Fuzz target: config::commandline_item on the input split into arguments.
//
// The input is cut at every zero byte; the first piece is argv[0]. The item
// reads the arguments when it is made and again on load; both readings must
// dump the same values, and so must a clone. Nothing may throw.
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "fuzz_support.hpp"
#include "vexa/config/commandline_item.hpp"

namespace {

namespace config = vexa::config;

std::string dump(config::base_config_item& item) {
  std::ostringstream out;
  item.dump(out);
  return out.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  std::string const bytes = in.rest();
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (std::size_t i = 0; i <= bytes.size(); ++i) {
    if (i == bytes.size() || bytes[i] == '\0') {
      pieces.push_back(bytes.substr(start, i - start));
      start = i + 1;
    }
  }
  std::vector<char const*> argv;
  for (std::string const& piece : pieces) argv.push_back(piece.c_str());
  argv.push_back(nullptr);

  config::commandline_item item(static_cast<int>(pieces.size()), argv.data());
  std::string const first = dump(item);
  config::config_item_list items;
  item.load(items);
  VEXA_FUZZ_CHECK(dump(item) == first, "load read other values than the constructor:\n" + first);
  std::unique_ptr<config::commandline_item> clone(item.clone());
  VEXA_FUZZ_CHECK(dump(*clone) == first, "a clone dumps other values");
  return 0;
}
