// Fuzz target: config::file_item reading the input as a ".cfg" file.
//
// The input is written to a fresh scratch folder and read with load_file.
// Properties: reading never throws and the values dump; a clone dumps the
// same; save writes the file again (true) and what it wrote reads back
// without error. (The written file need not give the same tree: a quoted key
// may hold bytes that start a comment once the quotes are gone.)
#include <memory>
#include <sstream>
#include <string>

#include "fuzz_support.hpp"
#include "scratch_dir.hpp"
#include "vexa/config/file_item.hpp"

namespace {

namespace config = vexa::config;
using vexa::strings::ustring8;

std::string dump(config::base_config_item& item) {
  std::ostringstream out;
  item.dump(out);
  return out.str();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  vexa_fuzz::scratch_dir dir;
  ustring8 const path(dir.write("input.cfg", in.rest()));

  config::file_item item(path);
  item.load_file();
  std::string const first = dump(item);

  std::unique_ptr<config::file_item> clone(item.clone());
  VEXA_FUZZ_CHECK(dump(*clone) == first, "a clone dumps other values");

  config::config_item_list items;
  VEXA_FUZZ_CHECK(item.save(items), "save failed in a writable folder");
  config::file_item again(path);
  again.load_file();
  dump(again);
  return 0;
}
