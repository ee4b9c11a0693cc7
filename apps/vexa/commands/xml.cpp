// vexa xml — checks documents with the library's XML parser and shows the
// token stream that the message-catalog loader sees.
//
//   vexa xml check FILE...   one line per file: "FILE: ok" or
//                            "FILE:LINE: error NAME (N): TEXT"; exit 1 if any failed
//   vexa xml tokens FILE     one token per line: its type name, a space and
//                            its value with control bytes escaped
//
// LINE is the parser's own count (line feeds seen in white space between
// markup, the first line being 0), shown as the library reports it. "-"
// reads standard input, shown as "<stdin>".
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "command.hpp"
#include "options.hpp"
#include "vexa/exceptions/exception.hpp"
#include "vexa/parser/xml_token_stream.hpp"

namespace {

using vexa::parser::xml_parser;
using vexa::parser::xml_token_stream;
using vexa::strings::ustring8;
using parse_error = xml_parser::parse_error;

vexa_cli::syntax const xml_syntax{
    "xml",
    "check FILE... | tokens FILE",
    "Checks XML documents with the library's parser, or lists their tokens.",
    {},
    1,
    static_cast<std::size_t>(-1),
    false,
    "Run 'vexa xml check --help' or 'vexa xml tokens --help' for details.",
};

vexa_cli::syntax const check_syntax{
    "xml check",
    "FILE...",
    "Parses each FILE ('-' for standard input) and prints one line for it:\n"
    "  FILE: ok\n"
    "  FILE:LINE: error NAME (N): TEXT\n"
    "NAME and N are the parser's error name and number, TEXT the offending\n"
    "character or name (control bytes escaped). LINE is the parser's count of\n"
    "line feeds in white space between markup, from 0; line feeds inside text,\n"
    "values and comments are not counted, so it can lag behind the true line.",
    {},
    1,
    static_cast<std::size_t>(-1),
    true,
    "Exits with status 1 when any file failed or could not be read.",
};

vexa_cli::syntax const tokens_syntax{
    "xml tokens",
    "FILE",
    "Prints the token stream of FILE ('-' for standard input), one token per\n"
    "line: the type name (element_start, element_end, attribute_name,\n"
    "attribute_value, start_tag_end, comment, space, character), then a space\n"
    "and the value with \\n, \\t, \\r, \\\\ and \\xHH for other control bytes.",
    {},
    1,
    1,
    true,
    "When the document is malformed, the tokens made before the fault are\n"
    "printed, the error follows on standard error in the form of 'vexa xml\n"
    "check', and the status is 1.",
};

char const* const error_names[] = {
    "no_error",          "unexpected_end", "tag_mismatch",   "declaration_incomplete",
    "missing_declaration", "unexpected_character", "missing_quote", "unknown_entity",
    "missing_equals",    "duplicate_attribute", "multiple_roots",
};

char const* const token_names[] = {
    "element_start", "element_end", "attribute_name", "attribute_value",
    "start_tag_end", "comment",     "space",          "character",
};

template <std::size_t N>
char const* name_of(char const* const (&names)[N], unsigned int value) {
  return value < N ? names[value] : "unknown";
}

// Control bytes shown as escapes; every other byte (UTF-8 included) as it is.
std::string escaped(std::string const& s) {
  static char const hex[] = "0123456789abcdef";
  std::string out;
  out.reserve(s.size());
  for (char ch : s) {
    unsigned char const c = static_cast<unsigned char>(ch);
    if (c == '\n') {
      out += "\\n";
    } else if (c == '\t') {
      out += "\\t";
    } else if (c == '\r') {
      out += "\\r";
    } else if (c == '\\') {
      out += "\\\\";
    } else if (c < 0x20 || c == 0x7F) {
      out += "\\x";
      out += hex[c >> 4];
      out += hex[c & 15];
    } else {
      out += ch;
    }
  }
  return out;
}

std::string shown_name(std::string const& path) { return path == "-" ? "<stdin>" : path; }

// Reads the whole file (or standard input for "-"); false with `reason` set
// when it cannot be read.
bool read_file(std::string const& path, std::string& data, std::string& reason) {
  std::FILE* const in = path == "-" ? stdin : std::fopen(path.c_str(), "rb");
  if (in == nullptr) {
    reason = std::string("cannot open (") + std::strerror(errno) + ")";
    return false;
  }
  char chunk[65536];
  std::size_t n;
  while ((n = std::fread(chunk, 1, sizeof chunk, in)) > 0) data.append(chunk, n);
  bool const bad = std::ferror(in) != 0;
  if (in != stdin) std::fclose(in);
  if (bad) reason = "cannot read";
  return !bad;
}

std::string error_line(std::string const& file, parse_error const& e) {
  return shown_name(file) + ":" + std::to_string(e.line) + ": error " + name_of(error_names, e.type) + " (" +
         std::to_string(e.type) + "): " + escaped(e.text);
}

// Runs `parse` on the text; a library exception (a numeric reference above
// 255) becomes a line of its own. Returns the line to print for a failure,
// or empty when the document is fine.
template <typename Parse>
std::string checked(std::string const& file, Parse const& parse) {
  try {
    parse_error const e = parse();
    return e.type == parse_error::no_error ? std::string() : error_line(file, e);
  } catch (vexa::exceptions::exception const& x) {
    return shown_name(file) + ": error: " + x.get_message() + " (a numeric reference above 255)";
  }
}

int check(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(check_syntax, args, opts)) return *status;
  int status = 0;
  for (std::string const& file : opts.operands()) {
    std::string data, reason;
    if (!read_file(file, data, reason)) {
      std::cout << shown_name(file) << ": " << reason << "\n";
      status = 1;
      continue;
    }
    xml_parser parser;
    std::string const failure = checked(file, [&] { return parser.parse(ustring8(std::move(data))); });
    std::cout << (failure.empty() ? shown_name(file) + ": ok" : failure) << "\n";
    if (!failure.empty()) status = 1;
  }
  return status;
}

int tokens(std::vector<std::string> const& args) {
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(tokens_syntax, args, opts)) return *status;
  std::string const& file = opts.operands()[0];
  std::string data, reason;
  if (!read_file(file, data, reason)) {
    std::cerr << "vexa xml tokens: " << shown_name(file) << ": " << reason << "\n";
    return 1;
  }
  xml_token_stream stream;
  std::string const failure = checked(file, [&] { return stream.parse(ustring8(std::move(data))); });
  std::string out;
  for (xml_token_stream::token const& t : stream) {
    out += name_of(token_names, t.type());
    if (!t.value().empty()) {
      out += ' ';
      out += escaped(t.value());
    }
    out += '\n';
  }
  std::fwrite(out.data(), 1, out.size(), stdout);
  std::fflush(stdout);
  if (!failure.empty()) {
    std::cerr << failure << "\n";
    return 1;
  }
  return 0;
}

int run(std::vector<std::string> const& args) {
  std::string const what = args.empty() ? std::string() : args[0];
  std::vector<std::string> const rest(args.empty() ? args.end() : args.begin() + 1, args.end());
  if (what == "check") return check(rest);
  if (what == "tokens") return tokens(rest);
  vexa_cli::parsed_options opts;
  if (auto status = vexa_cli::parse_options(xml_syntax, args, opts)) return *status;
  return vexa_cli::usage_error(xml_syntax, "unknown action '" + what + "' (check or tokens)");
}

vexa_cli::registrar const xml_command({"xml", "check FILE... | tokens FILE",
                                       "check XML documents or list their tokens", run});

}  // namespace
