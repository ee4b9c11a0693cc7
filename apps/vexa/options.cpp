// The shared command-line parser of the vexa subcommands.
#include "options.hpp"

#include <iostream>
#include <ostream>

namespace vexa_cli {
namespace {

option const* find_long(syntax const& s, std::string const& name) {
  for (option const& o : s.options) {
    if (o.name == name) return &o;
  }
  return nullptr;
}

option const* find_short(syntax const& s, char name) {
  for (option const& o : s.options) {
    if (o.short_name != 0 && o.short_name == name) return &o;
  }
  return nullptr;
}

// "xml check" points to 'vexa help xml'.
std::string top_command(syntax const& s) { return s.command.substr(0, s.command.find(' ')); }

}  // namespace

bool parsed_options::has(std::string const& name) const { return given_.count(name) != 0; }

std::string parsed_options::value(std::string const& name, std::string const& fallback) const {
  auto const it = given_.find(name);
  return it == given_.end() || it->second.empty() ? fallback : it->second.back();
}

std::vector<std::string> parsed_options::values(std::string const& name) const {
  auto const it = given_.find(name);
  return it == given_.end() ? std::vector<std::string>() : it->second;
}

int usage_error(syntax const& s, std::string const& message) {
  std::cerr << "vexa " << s.command << ": " << message << " (see 'vexa help " << top_command(s)
            << "')\n";
  return 2;
}

void print_help(syntax const& s, std::ostream& out) {
  out << "usage: vexa " << s.command;
  if (!s.options.empty()) out << " [options]";
  if (!s.operands.empty()) out << " " << s.operands;
  out << "\n";
  if (!s.description.empty()) out << "\n" << s.description << "\n";
  out << "\noptions:\n";
  std::vector<std::pair<std::string, std::string>> rows;
  for (option const& o : s.options) {
    std::string head = o.short_name != 0 ? std::string("-") + o.short_name + ", " : "    ";
    head += "--" + o.name;
    if (!o.value_name.empty()) head += " " + o.value_name;
    rows.emplace_back(head, o.help);
  }
  rows.emplace_back("-h, --help", "show this text");
  std::size_t width = 0;
  for (auto const& r : rows) width = std::max(width, r.first.size());
  for (auto const& r : rows) {
    out << "  " << r.first << std::string(width - r.first.size() + 3, ' ');
    for (char c : r.second) {
      out << c;
      if (c == '\n') out << std::string(width + 5, ' ');
    }
    out << "\n";
  }
  if (!s.epilog.empty()) out << "\n" << s.epilog << "\n";
}

std::optional<int> parse_options(syntax const& s, std::vector<std::string> const& args,
                                 parsed_options& out) {
  out = parsed_options();
  bool dashes = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    std::string const& a = args[i];
    if (dashes || a.size() < 2 || a[0] != '-') {
      if (a.empty() && s.operands_are_files) return usage_error(s, "an empty file name was given");
      out.operands_.push_back(a);
      continue;
    }
    if (a == "--") {
      dashes = true;
      out.before_dashes_ = out.operands_.size();
      continue;
    }
    if (a == "-h" || a == "--help") {
      print_help(s, std::cout);
      return 0;
    }
    option const* o = nullptr;
    std::optional<std::string> inline_value;
    // Messages name the option as it was typed ("--to", not "-t").
    std::string const typed = a.substr(0, a[1] == '-' ? a.find('=') : 2);
    if (a[1] == '-') {
      std::size_t const eq = a.find('=');
      o = find_long(s, a.substr(2, eq == std::string::npos ? std::string::npos : eq - 2));
      if (eq != std::string::npos) inline_value = a.substr(eq + 1);
      if (o == nullptr) return usage_error(s, "unknown option '" + a.substr(0, eq) + "'");
    } else {
      o = find_short(s, a[1]);
      if (o == nullptr) return usage_error(s, "unknown option '" + a.substr(0, 2) + "'");
      if (a.size() > 2) {
        if (o->value_name.empty()) return usage_error(s, "option '" + a.substr(0, 2) + "' takes no value");
        inline_value = a.substr(2);
      }
    }
    std::string value;
    if (o->value_name.empty()) {
      if (inline_value) return usage_error(s, "option '--" + o->name + "' takes no value");
    } else if (inline_value) {
      value = *inline_value;
    } else if (i + 1 < args.size()) {
      value = args[++i];
    } else {
      return usage_error(s, "option '" + typed + "' needs a value " + o->value_name);
    }
    if (o->file && value.empty()) {
      return usage_error(s, "option '" + typed + "' was given an empty file name");
    }
    out.given_[o->name].push_back(value);
  }
  if (!dashes) out.before_dashes_ = out.operands_.size();
  std::size_t const n = out.operands_.size();
  if (n < s.min_operands) {
    return usage_error(s, n == 0 ? "missing operand" : "too few operands");
  }
  if (n > s.max_operands) {
    return usage_error(s, "unexpected argument '" + out.operands_[s.max_operands] + "'");
  }
  return std::nullopt;
}

}  // namespace vexa_cli
