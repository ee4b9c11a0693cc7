// Unicode encoding forms and their byte-order marks.
#include "utf/encoding.hpp"

#include <cstring>

namespace vexa_cli {
namespace utf {
namespace {

char const* const form_names[] = {"UTF-8", "UTF-16LE", "UTF-16BE", "UTF-32LE", "UTF-32BE"};

// Names compared without case, '-' and '_'.
std::string folded(std::string const& text) {
  std::string key;
  for (char c : text) {
    if (c == '-' || c == '_') continue;
    key += static_cast<char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c);
  }
  return key;
}

}  // namespace

char const* name(form f) { return form_names[static_cast<int>(f)]; }

unsigned unit_size(form f) {
  switch (f) {
    case form::utf8: return 1;
    case form::utf16le:
    case form::utf16be: return 2;
    default: return 4;
  }
}

bool big_endian(form f) { return f == form::utf16be || f == form::utf32be; }

std::optional<form> parse_form(std::string const& text) {
  std::string const key = folded(text);
  for (int i = 0; i < 5; ++i) {
    if (key == folded(form_names[i])) return static_cast<form>(i);
  }
  return std::nullopt;
}

std::string mark_of(form f) {
  switch (f) {
    case form::utf8: return "\xEF\xBB\xBF";
    case form::utf16le: return std::string("\xFF\xFE", 2);
    case form::utf16be: return std::string("\xFE\xFF", 2);
    case form::utf32le: return std::string("\xFF\xFE\0\0", 4);
    default: return std::string("\0\0\xFE\xFF", 4);
  }
}

std::size_t mark_length(char const* data, std::size_t size, form f) {
  std::string const mark = mark_of(f);
  return size >= mark.size() && std::memcmp(data, mark.data(), mark.size()) == 0 ? mark.size() : 0;
}

std::optional<form> detect_mark(char const* data, std::size_t size) {
  for (form f : {form::utf32le, form::utf32be, form::utf8, form::utf16le, form::utf16be}) {
    if (mark_length(data, size, f) != 0) return f;
  }
  return std::nullopt;
}

}  // namespace utf
}  // namespace vexa_cli
