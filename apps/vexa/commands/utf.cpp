// vexa utf — transcodes a file or standard input between UTF-8, UTF-16,
// UTF-32 and the legacy code pages of strings::code_page, with the library's
// transforms and code_page's as_utf8/encode.
//
// The input is streamed: read in blocks, checked strictly (utf/checker.hpp),
// converted (utf/transcoder.hpp) and written, a character cut by a block's
// end carried into the next block, so memory stays bounded for any input
// size. The first fault ends the run with status 1 and one line naming the
// place (line, column, byte offset) and the fault. Output goes through
// io/output_file.hpp: a file target is replaced only when the whole input
// converted; standard output, devices and FIFOs have by then received the
// text before the fault.
//
// Code-page input goes through as_utf8 block by block, each block cut where
// no character is split (utf/code_page_cut.hpp) and the rest carried. It is
// not checked: a byte the page does not define becomes '?', as the library
// does, and a character the output page lacks one '?' per UTF-8 byte. --bom
// needs a UTF output. Code page 4 (by number or name) is UTF-8 itself, checked strictly.
#include <malloc.h>

#include <cstring>
#include <exception>
#include <iomanip>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "code_page_names.hpp"
#include "command.hpp"
#include "io/input_file.hpp"
#include "io/output_file.hpp"
#include "options.hpp"
#include "utf/checker.hpp"
#include "utf/code_page_cut.hpp"
#include "utf/encoding.hpp"
#include "utf/transcoder.hpp"
#include "vexa/exceptions/exception.hpp"

namespace {

using namespace vexa_cli::utf;
using vexa::strings::code_page;

// Bytes read at a time: large enough for the transforms' fast paths, small
// enough to stay in the caches.
constexpr std::size_t block_size = 64 * 1024;

vexa_cli::syntax const utf_syntax{
    "utf",
    "[FILE]",
    "Transcodes FILE (or standard input, also for '-') between Unicode encodings\n"
    "and legacy code pages.",
    {
        {"from", 'f', "ENC", "encoding of the input; without it a byte-order mark decides,\n"
                             "else the input is UTF-8. A leading byte-order mark of a\n"
                             "UTF input encoding is dropped."},
        {"to", 't', "ENC", "encoding of the output (default UTF-8)"},
        {"bom", 0, "", "start the output with a byte-order mark (UTF output only)"},
        {"list", 0, "", "list the code pages: number, names, description"},
        {"output", 'o', "FILE", "write to FILE instead of standard output; a regular file\n"
                                "is replaced only when the whole input converts", true},
    },
    0,
    1,
    true,
    "ENC is one of UTF-8, UTF-16LE, UTF-16BE, UTF-32LE, UTF-32BE (any case,\n"
    "'-' optional) or a code page by number or name (1252, cp1252, koi8-r,\n"
    "latin1, shift_jis, ...; see --list). UTF input is checked strictly: the\n"
    "first fault ends the run with status 1 and a line 'FILE:LINE:COLUMN:\n"
    "malformed ENC at byte N: FAULT', where FAULT is one of: truncated sequence,\n"
    "unexpected continuation byte, overlong form, encoded surrogate, above\n"
    "U+10FFFF, invalid byte, lone surrogate, truncated code unit. Columns count\n"
    "characters from 1. Code-page input is not checked: a byte the page does\n"
    "not define becomes '?'; a character an output page lacks becomes one '?'\n"
    "per UTF-8 byte.",
};

// An encoding named on the command line: a UTF form or a code page.
struct encoding {
  form utf = form::utf8;                  // the form read or written as such
  std::optional<code_page> page{};        // set for a code page other than UTF-8
};

std::optional<encoding> encoding_option(vexa_cli::parsed_options const& opts, char const* which,
                                        bool& bad) {
  if (!opts.has(which)) return std::nullopt;
  std::string const text = opts.value(which);
  if (std::optional<form> const f = parse_form(text)) return encoding{*f, std::nullopt};
  if (vexa_cli::code_page_name const* entry = vexa_cli::find_code_page(text)) {
    // Code page 4 is UTF-8: read strictly like any UTF form.
    if (entry->number == code_page::utf8) return encoding{};
    return encoding{form::utf8, code_page(entry->number)};
  }
  vexa_cli::usage_error(utf_syntax, "unknown encoding '" + text +
                                        "' (a UTF form or a code page, see 'vexa utf --list')");
  bad = true;
  return std::nullopt;
}

void list_code_pages(std::ostream& out) {
  for (vexa_cli::code_page_name const& entry : vexa_cli::code_page_names()) {
    std::string names;
    for (std::string const& n : entry.names) names += (names.empty() ? "" : ", ") + n;
    if (names.empty()) names = "-";
    out << std::setw(6) << entry.number << "  " << std::left << std::setw(46) << names
        << std::right << "  " << entry.description << "\n";
  }
}

std::string describe(std::string const& input, form source, fault const& f) {
  return input + ":" + std::to_string(f.line) + ":" + std::to_string(f.column) + ": malformed " +
         name(source) + " at byte " + std::to_string(f.byte) + ": " + f.what;
}

// Streams `in` to `out`; returns the fault's description, or nothing.
std::optional<std::string> transcode(vexa_cli::input_file& in, std::optional<form> from,
                                     transcoder& convert, std::string const& mark,
                                     vexa_cli::output_file& out) {
  // The transforms allocate their results per block: keep that memory in the
  // heap between blocks instead of mapping fresh pages each time.
  mallopt(M_MMAP_THRESHOLD, 16 * 1024 * 1024);
  mallopt(M_TRIM_THRESHOLD, 64 * 1024 * 1024);
  // UTF-8 blocks are read straight into the string handed to the transforms:
  // it is cut to the checked prefix for the call, then grown back.
  vexa::strings::ustring8 buffer(block_size + 4, '\0');
  auto bytes = [&buffer](std::size_t at) { return reinterpret_cast<unsigned char*>(&buffer[at]); };
  // The first bytes decide the form when no --from names it.
  std::size_t have = in.read_full(bytes(0), 4);
  form const source = from ? *from : detect_mark(buffer.data(), have).value_or(form::utf8);
  std::size_t start = mark_length(buffer.data(), have, source);
  checker check(source, start);
  convert.source(source);
  out.write(mark.data(), mark.size());
  for (;;) {
    std::size_t const got = in.read(bytes(have), buffer.size() - have);
    have += got;
    std::size_t const text = have - start;
    if (got == 0 && text == 0) return std::nullopt;
    std::size_t const ok = check.check(bytes(start), text);
    unsigned char carried[4];
    std::size_t const carry = check.failed() ? 0 : text - ok;
    std::memcpy(carried, bytes(start + ok), carry);
    if (source == form::utf8 && start == 0) {
      buffer.resize(ok);
      convert.convert(buffer, out);
      buffer.resize(block_size + 4, '\0');
    } else {
      convert.convert(bytes(start), ok, out);
    }
    if (check.failed()) return describe(in.name(), source, check.failure());
    if (got == 0) {
      // The input ended inside a character.
      if (carry != 0) return describe(in.name(), source, check.finish(carried, carry));
      return std::nullopt;
    }
    std::memcpy(bytes(0), carried, carry);
    have = carry;
    start = 0;
  }
}

// Streams code-page text from `in` through UTF-8 to `convert`. Nothing is
// checked, so nothing fails here but reading and writing.
void transcode_code_page(vexa_cli::input_file& in, code_page const& page, transcoder& convert,
                         std::string const& mark, vexa_cli::output_file& out) {
  out.write(mark.data(), mark.size());
  // A carry never exceeds one block (see complete_prefix), so two blocks hold
  // it and the next read.
  std::string buffer(2 * block_size, '\0');
  auto bytes = reinterpret_cast<unsigned char*>(&buffer[0]);
  std::size_t have = 0;
  for (;;) {
    std::size_t const got = in.read(bytes + have, block_size);
    have += got;
    // At the end everything goes, an incomplete last character included
    // (as_utf8 drops it).
    std::size_t const cut = got == 0 ? have : complete_prefix(page.type(), bytes, have);
    if (cut != 0) convert.convert(page.as_utf8(buffer.substr(0, cut)), out);
    if (got == 0) return;
    std::memmove(bytes, bytes + cut, have - cut);
    have -= cut;
  }
}

int run(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(utf_syntax, args, opts)) return *status;
  if (opts.has("list")) {
    list_code_pages(std::cout);
    return 0;
  }
  bool bad = false;
  std::optional<encoding> const from = encoding_option(opts, "from", bad);
  encoding const to = encoding_option(opts, "to", bad).value_or(encoding{});
  if (bad) return 2;
  if (to.page && opts.has("bom")) {
    return vexa_cli::usage_error(utf_syntax, "--bom needs a UTF output encoding");
  }
  std::string const mark = opts.has("bom") ? mark_of(to.utf) : std::string();
  try {
    vexa_cli::input_file in(opts.operands().empty() ? std::string("-") : opts.operands()[0]);
    vexa_cli::output_file out(opts.value("output", "-"));
    transcoder convert(form::utf8, to.utf, to.page);
    if (from && from->page) {
      transcode_code_page(in, *from->page, convert, mark, out);
      out.commit();
      return 0;
    }
    std::optional<form> const source = from ? std::optional<form>(from->utf) : std::nullopt;
    if (std::optional<std::string> const fault = transcode(in, source, convert, mark, out)) {
      std::cerr << "vexa utf: " << *fault << "\n";
      // A stream gets the text before the fault; a file is left as it was.
      if (!out.replaces_file()) {
        try {
          out.commit();
        } catch (vexa_cli::io_error const&) {
          // The fault is the one message of this run.
        }
      }
      return 1;
    }
    out.commit();
  } catch (std::exception const& e) {
    std::cerr << "vexa utf: " << e.what() << "\n";
    return 1;
  } catch (vexa::exceptions::exception const& e) {
    // A code page iconv cannot open here (the system's code set, say).
    std::cerr << "vexa utf: " << e.get_message() << "\n";
    return 1;
  }
  return 0;
}

vexa_cli::registrar const utf_command({"utf", "[--from ENC] [--to ENC] [--bom] [--list] [-o FILE] [FILE]",
                                       "transcode text between UTF-8, UTF-16, UTF-32 and code pages",
                                       run});

}  // namespace
