// Fuzz target: the XMC loader on the input as catalog files.
//
// Byte 0 picks the language (0: none, the neutral load; 1-5: "de_DE",
// "en", "de", ".", "fr_CA"), byte 1 whether only the catalog "app" is read.
// The rest is cut at its first three zero bytes into up to four files, 0.xmc
// to 3.xmc, written to a fresh scratch folder; 0.xmc is loaded, and its
// includes (file="1.xmc" ...) are resolved inside that folder. Inputs that
// could name a device or a system folder ("dev", "proc", "sys") are skipped,
// so an include can never read an endless file.
//
// Properties: loading never throws and returns a known error number with a
// message that starts "xmc_file_loader::load_error - "; parse_string of the
// same text agrees on success; after a successful load the catalogs merge
// (combine_data) and every message renders without arguments; the whole
// file loaded through message_catalogs gives the loader's number.
#include <string>
#include <vector>

#include "fuzz_support.hpp"
#include "scratch_dir.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/i18n/message_catalogs.hpp"
#include "vexa/i18n/xmc_file_loader.hpp"

namespace {

namespace i18n = vexa::i18n;
using loader_type = i18n::_private::xmc_file_loader;
using vexa::strings::ustring8;

bool names_a_system_place(std::string const& bytes) {
  for (char const* word : {"dev", "proc", "sys"})
    if (bytes.find(word) != std::string::npos) return true;
  return false;
}

loader_type::load_error load(loader_type& loader, ustring8 const& file, int lang, bool only_app) {
  static char const* const languages[] = {"de_DE", "en", "de", ".", "fr_CA"};
  if (lang < 0) return loader.parse(file);
  if (only_app) return loader.parse(file, ustring8(languages[lang]), ustring8("app"));
  return loader.parse(file, ustring8(languages[lang]));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  int const lang = static_cast<int>(in.pick(6)) - 1;
  bool const only_app = in.flag();
  std::string const bytes = in.rest();
  if (names_a_system_place(bytes)) return 0;

  vexa_fuzz::scratch_dir dir;
  // Cut at the zero bytes; a fourth file takes everything that is left.
  std::vector<std::string> files(1);
  for (char c : bytes) {
    if (c == '\0' && files.size() < 4) files.emplace_back();
    else files.back().push_back(c);
  }
  for (std::size_t k = 0; k < files.size(); ++k) dir.write(std::to_string(k) + ".xmc", files[k]);
  ustring8 const first(dir.path() + "/0.xmc");

  loader_type loader;
  loader_type::load_error const e = load(loader, first, lang, only_app);
  VEXA_FUZZ_CHECK(e.type() <= loader_type::unexpected_error, "error number " + std::to_string(e.type()));
  VEXA_FUZZ_CHECK(e.message().rfind("xmc_file_loader::load_error - ", 0) == 0,
                  "message '" + e.message() + "'");
  if (e.type() != loader_type::no_error) return 0;

  i18n::catalog_map catalogs;
  loader.combine_data(catalogs);
  vexa::generic::varg_list const none;
  for (auto const& entry : catalogs)
    for (auto const& message : *entry.second) message.second.as_string(none);

  // The same text handed over as a string (includes still resolve in the
  // folder, the base directory being the file's).
  loader_type again;
  load(again, first, lang, only_app);
  again.reset();
  loader_type::load_error const s = again.parse_string(ustring8(files[0]), first);
  VEXA_FUZZ_CHECK(s.type() == loader_type::no_error, "parse_string failed where parse did: " + s.message());

  if (lang >= 0 && !only_app) {
    static char const* const languages[] = {"de_DE", "en", "de", ".", "fr_CA"};
    i18n::message_catalogs set;
    i18n::message_catalogs::result_type const r = set.load_file(first, ustring8(languages[lang]));
    VEXA_FUZZ_CHECK(r.type() == 0, "message_catalogs::load_file failed where the loader did not: " + r.message());
  }
  return 0;
}
