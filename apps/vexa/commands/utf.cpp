// vexa utf — transcodes a file or standard input between UTF-8, UTF-16 and
// UTF-32 with the library's transforms.
//
// The input is streamed: read in blocks, checked strictly (utf/checker.hpp),
// converted (utf/transcoder.hpp) and written, a character cut by a block's
// end carried into the next block, so memory stays bounded for any input
// size. The first fault ends the run with status 1 and one line naming the
// place (line, column, byte offset) and the fault. Output goes through
// io/output_file.hpp: a file target is replaced only when the whole input
// converted; standard output, devices and FIFOs have by then received the
// text before the fault.
#include <malloc.h>

#include <cstring>
#include <exception>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "command.hpp"
#include "io/input_file.hpp"
#include "io/output_file.hpp"
#include "options.hpp"
#include "utf/checker.hpp"
#include "utf/encoding.hpp"
#include "utf/transcoder.hpp"

namespace {

using namespace vexa_cli::utf;

// Bytes read at a time: large enough for the transforms' fast paths, small
// enough to stay in the caches.
constexpr std::size_t block_size = 64 * 1024;

vexa_cli::syntax const utf_syntax{
    "utf",
    "[FILE]",
    "Transcodes FILE (or standard input, also for '-') between Unicode encodings.",
    {
        {"from", 'f', "ENC", "encoding of the input; without it a byte-order mark decides,\n"
                             "else the input is UTF-8. A leading byte-order mark of the\n"
                             "input encoding is dropped."},
        {"to", 't', "ENC", "encoding of the output (default UTF-8)"},
        {"bom", 0, "", "start the output with a byte-order mark"},
        {"output", 'o', "FILE", "write to FILE instead of standard output; a regular file\n"
                                "is replaced only when the whole input converts", true},
    },
    0,
    1,
    true,
    "ENC is one of UTF-8, UTF-16LE, UTF-16BE, UTF-32LE, UTF-32BE (any case,\n"
    "'-' optional). The input is checked strictly: the first fault ends the\n"
    "run with status 1 and a line 'FILE:LINE:COLUMN: malformed ENC at byte N:\n"
    "FAULT', where FAULT is one of: truncated sequence, unexpected continuation\n"
    "byte, overlong form, encoded surrogate, above U+10FFFF, invalid byte,\n"
    "lone surrogate, truncated code unit. Columns count characters from 1.",
};

std::optional<form> form_option(vexa_cli::parsed_options const& opts, char const* which, bool& bad) {
  if (!opts.has(which)) return std::nullopt;
  std::string const text = opts.value(which);
  std::optional<form> const f = parse_form(text);
  if (!f) {
    vexa_cli::usage_error(utf_syntax, "unknown encoding '" + text +
                                          "' (UTF-8, UTF-16LE, UTF-16BE, UTF-32LE, UTF-32BE)");
    bad = true;
  }
  return f;
}

std::string describe(std::string const& input, form source, fault const& f) {
  return input + ":" + std::to_string(f.line) + ":" + std::to_string(f.column) + ": malformed " +
         name(source) + " at byte " + std::to_string(f.byte) + ": " + f.what;
}

// Streams `in` to `out`; returns the fault's description, or nothing.
std::optional<std::string> transcode(vexa_cli::input_file& in, std::optional<form> from, form to,
                                     bool mark, vexa_cli::output_file& out) {
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
  transcoder convert(source, to);
  if (mark) {
    std::string const m = mark_of(to);
    out.write(m.data(), m.size());
  }
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

int run(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(utf_syntax, args, opts)) return *status;
  bool bad = false;
  std::optional<form> const from = form_option(opts, "from", bad);
  std::optional<form> const to = form_option(opts, "to", bad);
  if (bad) return 2;
  try {
    vexa_cli::input_file in(opts.operands().empty() ? std::string("-") : opts.operands()[0]);
    vexa_cli::output_file out(opts.value("output", "-"));
    if (std::optional<std::string> const fault = transcode(in, from, to.value_or(form::utf8), opts.has("bom"), out)) {
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
  }
  return 0;
}

vexa_cli::registrar const utf_command({"utf", "[--from ENC] [--to ENC] [--bom] [-o FILE] [FILE]",
                                       "transcode text between UTF-8, UTF-16 and UTF-32", run});

}  // namespace
