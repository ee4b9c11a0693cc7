// vexa utf — transcodes a file or standard input between UTF-8, UTF-16 and
// UTF-32 with the library's transforms.
//
// The transforms are lenient by design (they turn some bad input into '?' or
// into the text "-1"), so the input is checked strictly first and the exact
// byte offset of the first fault is reported. Output is written to a
// temporary file beside the target and renamed only on success: a failed run
// leaves no output file.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "command.hpp"
#include "options.hpp"
#include "vexa/strings/unicode.hpp"

namespace {

using namespace vexa::strings;

enum class form { utf8, utf16le, utf16be, utf32le, utf32be };

char const* const form_names[] = {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"};

char const* name(form f) { return form_names[static_cast<int>(f)]; }
unsigned unit_size(form f) { return f == form::utf8 ? 1 : (f == form::utf16le || f == form::utf16be) ? 2 : 4; }
bool big_endian(form f) { return f == form::utf16be || f == form::utf32be; }

// "utf-16le", "UTF16LE" and "Utf-16LE" all name UTF-16LE.
std::optional<form> parse_form(std::string const& text) {
  std::string key;
  for (char c : text) {
    if (c != '-' && c != '_') key += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
  }
  for (int i = 0; i < 5; ++i) {
    std::string known;
    for (char const* p = form_names[i]; *p != 0; ++p) {
      if (*p != '-') known += *p;
    }
    if (key == known) return static_cast<form>(i);
  }
  return std::nullopt;
}

// A failure already reported in the one-line form the command promises.
struct failure {
  int status;
  std::string message;
};

struct malformed {
  std::size_t byte;
};

// ---- reading ---------------------------------------------------------------------

std::string read_all(std::FILE* in) {
  std::string data;
  char chunk[65536];
  std::size_t n;
  while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0) data.append(chunk, n);
  return data;
}

// The length of the byte-order mark of `f` at the start of the data, or 0.
std::size_t mark_length(std::string const& d, form f) {
  static char const* const marks[] = {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", "\xFF\xFE\0\0", "\0\0\xFE\xFF"};
  std::size_t const n = f == form::utf8 ? 3 : unit_size(f);
  return d.size() >= n && d.compare(0, n, marks[static_cast<int>(f)], n) == 0 ? n : 0;
}

// The encoding announced by a byte-order mark; UTF-32LE's mark begins with
// UTF-16LE's, so it is tried first.
std::optional<form> detect_mark(std::string const& d) {
  for (form f : {form::utf32le, form::utf32be, form::utf8, form::utf16le, form::utf16be}) {
    if (mark_length(d, f) != 0) return f;
  }
  return std::nullopt;
}

std::uint32_t unit_at(std::string const& d, std::size_t at, unsigned size, bool big) {
  std::uint32_t u = 0;
  for (unsigned i = 0; i < size; ++i) {
    unsigned const shift = 8 * (big ? size - 1 - i : i);
    u |= std::uint32_t(static_cast<unsigned char>(d[at + i])) << shift;
  }
  return u;
}

// Well-formed UTF-8: gh2::validate_utf8 checks each sequence's shape; the
// decoded value must then be the shortest form of a scalar value.
void check_utf8(std::string const& d, std::size_t offset) {
  for (std::size_t p = offset; p < d.size();) {
    if (!gh2::validate_utf8(d.data() + p, d.size() - p)) throw malformed{p};
    unsigned long used = 0;
    unsigned const c = unichar(d.data(), d.size(), p, used);
    unsigned const shortest = c < 0x80 ? 1 : c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    if (used != shortest || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF)) throw malformed{p};
    p += used;
  }
}

ustring16 read_utf16(std::string const& d, std::size_t offset, bool big) {
  if ((d.size() - offset) % 2 != 0) throw malformed{d.size() - 1};
  ustring16 units;
  units.reserve((d.size() - offset) / 2);
  for (std::size_t p = offset; p < d.size(); p += 2) units.push_back(static_cast<unsigned short>(unit_at(d, p, 2, big)));
  for (unsigned long i = 0, used = 0; i < units.size(); i += used) {
    unichar(units.data(), units.size(), i, used);
    if (used == ~0ul) throw malformed{offset + 2 * i};
  }
  return units;
}

ustring32 read_utf32(std::string const& d, std::size_t offset, bool big) {
  if ((d.size() - offset) % 4 != 0) throw malformed{d.size() - (d.size() - offset) % 4};
  ustring32 units;
  units.reserve((d.size() - offset) / 4);
  for (std::size_t p = offset; p < d.size(); p += 4) {
    std::uint32_t const u = unit_at(d, p, 4, big);
    if (u > 0x10FFFF || (u >= 0xD800 && u <= 0xDFFF)) throw malformed{p};
    units.push_back(static_cast<wchar_t>(u));
  }
  return units;
}

// ---- converting --------------------------------------------------------------------

// A transform's "-1" means failure unless the input itself was "-1".
template <typename Result, typename Input>
Result checked(Result result, Input const& input) {
  if (result.size() == 2 && result[0] == '-' && result[1] == '1' &&
      !(input.size() == 2 && input[0] == '-' && input[1] == '1')) {
    throw malformed{0};
  }
  return result;
}

template <typename String>
void append_units(std::string& out, String const& units, unsigned size, bool big) {
  out.reserve(out.size() + units.size() * size);
  for (auto unit : units) {
    auto const u = static_cast<std::uint32_t>(unit);
    for (unsigned i = 0; i < size; ++i) {
      unsigned const shift = 8 * (big ? size - 1 - i : i);
      out += static_cast<char>((u >> shift) & 0xFFu);
    }
  }
}

std::string transcode(std::string const& data, form from, std::size_t offset, form to, bool mark) {
  // The input as units of its own form, checked.
  ustring8 u8;
  ustring16 u16;
  ustring32 u32;
  unsigned const from_size = unit_size(from);
  if (from_size == 1) {
    check_utf8(data, offset);
    u8.assign(data, offset, std::string::npos);
  } else if (from_size == 2) {
    u16 = read_utf16(data, offset, big_endian(from));
  } else {
    u32 = read_utf32(data, offset, big_endian(from));
  }

  std::string out;
  unsigned const to_size = unit_size(to);
  if (mark && to_size == 1) out += "\xEF\xBB\xBF";
  if (mark && to_size != 1) append_units(out, ustring32(1, wchar_t(0xFEFF)), to_size, big_endian(to));
  if (to_size == 1) {
    if (from_size == 2) u8 = checked(utf16_to_utf8(u16), u16);
    if (from_size == 4) u8 = checked(utf32_to_utf8(u32), u32);
    out += u8;
  } else if (to_size == 2) {
    // From UTF-32 by way of UTF-8: utf32_to_utf16 keeps its historical pair
    // form, which is not standard UTF-16 above U+FFFF.
    if (from_size == 4) u8 = checked(utf32_to_utf8(u32), u32);
    if (from_size != 2) u16 = checked(utf8_to_utf16(u8), u8);
    append_units(out, u16, 2, big_endian(to));
  } else {
    if (from_size == 1) u32 = utf8_to_utf32(u8);
    if (from_size == 2) u32 = checked(utf16_to_utf32(u16), u16);
    append_units(out, u32, 4, big_endian(to));
  }
  return out;
}

// ---- writing -----------------------------------------------------------------------

// Writes through a temporary file in the target's directory and renames it.
void write_file(std::string const& path, std::string const& data) {
  std::string temp = path + ".XXXXXX";
  int const fd = mkstemp(&temp[0]);
  if (fd < 0) throw failure{1, path + ": cannot create (" + std::strerror(errno) + ")"};
  mode_t const mask = umask(0);
  umask(mask);
  fchmod(fd, 0666 & ~mask);
  std::size_t done = 0;
  while (done < data.size()) {
    ssize_t const n = ::write(fd, data.data() + done, data.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    done += static_cast<std::size_t>(n);
  }
  int const error = done < data.size() ? errno : 0;
  if (::close(fd) != 0 || error != 0 || std::rename(temp.c_str(), path.c_str()) != 0) {
    std::string const reason = std::strerror(error != 0 ? error : errno);
    std::remove(temp.c_str());
    throw failure{1, path + ": cannot write (" + reason + ")"};
  }
}

vexa_cli::syntax const utf_syntax{
    "utf",
    "[FILE]",
    "Transcodes FILE (or standard input, also for '-') between Unicode encodings.",
    {
        {"from", 0, "ENC", "encoding of the input; without it a byte-order mark decides,\n"
                           "else the input is UTF-8. A leading byte-order mark of the\n"
                           "input encoding is dropped."},
        {"to", 0, "ENC", "encoding of the output (default UTF-8)"},
        {"bom", 0, "", "start the output with a byte-order mark"},
        {"output", 'o', "FILE", "write to FILE instead of standard output; it is only\n"
                                "created when the whole input converts", true},
    },
    0,
    1,
    true,
    "ENC is one of UTF-8, UTF-16LE, UTF-16BE, UTF-32LE, UTF-32BE (any case).\n"
    "Malformed input (bad sequences, unpaired surrogates, values above\n"
    "U+10FFFF, a cut-off last unit) is reported with its byte offset and the\n"
    "command exits with status 1.",
};

int run(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(utf_syntax, args, opts)) return *status;
  std::optional<form> from;
  form to = form::utf8;
  bool const mark = opts.has("bom");
  std::string const output = opts.value("output");
  std::string const input = opts.operands().empty() ? std::string("-") : opts.operands()[0];
  try {
    for (char const* which : {"from", "to"}) {
      if (!opts.has(which)) continue;
      std::string const text = opts.value(which);
      std::optional<form> const f = parse_form(text);
      if (!f) {
        return vexa_cli::usage_error(utf_syntax, "unknown encoding '" + text +
                                                     "' (UTF-8, UTF-16LE, UTF-16BE, UTF-32LE, UTF-32BE)");
      }
      if (which[0] == 'f') {
        from = f;
      } else {
        to = *f;
      }
    }

    std::string const shown = input == "-" ? "<stdin>" : input;
    std::string data;
    if (shown == "<stdin>") {
      data = read_all(stdin);
    } else {
      std::FILE* const in = std::fopen(input.c_str(), "rb");
      if (in == nullptr) throw failure{1, input + ": cannot open (" + std::strerror(errno) + ")"};
      data = read_all(in);
      bool const bad = std::ferror(in) != 0;
      std::fclose(in);
      if (bad) throw failure{1, input + ": cannot read"};
    }

    // A byte-order mark is dropped when it belongs to the input encoding.
    form const source = from ? *from : detect_mark(data).value_or(form::utf8);
    std::size_t const offset = mark_length(data, source);

    std::string converted;
    try {
      converted = transcode(data, source, offset, to, mark);
    } catch (malformed const& m) {
      throw failure{1, shown + ": malformed " + name(source) + " at byte " + std::to_string(m.byte)};
    }
    if (output.empty() || output == "-") {
      std::fwrite(converted.data(), 1, converted.size(), stdout);
      if (std::fflush(stdout) != 0) throw failure{1, "<stdout>: cannot write"};
    } else {
      write_file(output, converted);
    }
  } catch (failure const& f) {
    std::cerr << "vexa utf: " << f.message << "\n";
    return f.status;
  }
  return 0;
}

vexa_cli::registrar const utf_command({"utf", "[--from ENC] [--to ENC] [--bom] [-o FILE] [FILE]",
                                       "transcode text between UTF-8, UTF-16 and UTF-32", run});

}  // namespace
