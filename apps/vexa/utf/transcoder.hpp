// The conversion step of `vexa utf`: checked text, block by block, through
// the library's transforms.
//
// Blocks hold whole characters only (the checker sees to that), so each is
// converted on its own. UTF-32 goes to UTF-16 by way of UTF-8:
// utf32_to_utf16 keeps its historical pair form, which is not standard UTF-16
// above U+FFFF. A transform that answers "-1" for text that is not "-1"
// would mean the check and the library disagree: that throws
// std::logic_error rather than writing the "-1".
// With a target code page the output form must be UTF-8, and each block's
// UTF-8 is encoded into the page (letters it lacks become '?') on its way out.
//
//   transcoder t(form::utf8, form::utf16le);
//   t.convert(block, size, out);   // writes the block's text as UTF-16LE
#ifndef VEXA_APPS_UTF_TRANSCODER_HPP
#define VEXA_APPS_UTF_TRANSCODER_HPP

#include <cstddef>
#include <optional>
#include <string>

#include "io/output_file.hpp"
#include "vexa/strings/code_page.hpp"
#include "vexa/strings/ustring.hpp"
#include "utf/encoding.hpp"

namespace vexa_cli {
namespace utf {

class transcoder {
 public:
  transcoder(form from, form to,
             std::optional<vexa::strings::code_page> page = std::nullopt)
      : from_(from), to_(to), page_(page) {}

  // The input form, once a byte-order mark has decided it.
  void source(form from) { from_ = from; }

  // convert
  // Converts `size` bytes of whole, checked characters of the input form
  // and writes them in the output form; throws io_error when the write fails.
  //   t.convert(reinterpret_cast<unsigned char const*>("h\xC3\xA9"), 3, out)   // 68 00 E9 00
  //   t.convert(data, 0, out)                                               // writes nothing
  void convert(unsigned char const* data, std::size_t size, output_file& out);
  // The same for UTF-8 input already held in a ustring8, which saves a copy.
  void convert(vexa::strings::ustring8 const& text, output_file& out);

  // ---- implementation details --------------------------------------------------
 private:
  template <typename Units>
  void write_units(Units const& units, output_file& out);
  void write_utf8(char const* data, std::size_t size, output_file& out);

  form from_;
  form to_;
  std::optional<vexa::strings::code_page> page_;  // encodes the UTF-8 output
  std::string scratch_;  // byte-swapped output
};

}  // namespace utf
}  // namespace vexa_cli

#endif  // VEXA_APPS_UTF_TRANSCODER_HPP
