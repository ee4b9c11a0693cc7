// i18n::format_value: numbers, memory sizes, metric values and durations for
// catalog messages. The behaviour and every option are described in
// include/vexa/i18n/format_value.hpp.
#include "vexa/i18n/format_value.hpp"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <string_view>
#include <typeinfo>

namespace VEXA_2_10 {
namespace i18n {

namespace {

using std::string_view;
using namespace std::string_view_literals;

// ---- options -------------------------------------------------------------------

struct options_t {
  string_view default_text, fieldsize, spaced_dec, dec_point, base, precision, short_form;
  string_view base_unit, target_unit;
  string_view parts[4];  // dy, hr, min, sec
  bool has_default = false;
};

options_t read_options(char const* text, unsigned long length) {
  options_t o;
  string_view const all(text, length);
  std::size_t pos = 0;
  while (pos < all.size()) {
    if (all[pos] == '\x01') {
      ++pos;
      continue;
    }
    std::size_t const name_end = std::min(all.find('\x01', pos), all.size());
    string_view const name = all.substr(pos, name_end - pos);
    string_view value;
    pos = name_end;
    if (pos < all.size()) {
      std::size_t const value_end = std::min(all.find('\x01', pos + 1), all.size());
      value = all.substr(pos + 1, value_end - pos - 1);
      pos = value_end;
    }
    if (name == "default"sv) {
      o.default_text = value;
      o.has_default = true;
    } else if (name == "fieldsize"sv) {
      o.fieldsize = value;
    } else if (name == "spaced_dec"sv) {
      o.spaced_dec = value;
    } else if (name == "dec_point"sv) {
      o.dec_point = value;
    } else if (name == "base"sv) {
      o.base = value;
    } else if (name == "precision"sv || name == "prec"sv) {
      o.precision = value;
    } else if (name == "short_form"sv) {
      o.short_form = value;
    } else if (name == "base_unit"sv) {
      o.base_unit = value;
    } else if (name == "target_unit"sv) {
      o.target_unit = value;
    } else if (name == "dy"sv) {
      o.parts[0] = value;
    } else if (name == "hr"sv) {
      o.parts[1] = value;
    } else if (name == "min"sv) {
      o.parts[2] = value;
    } else if (name == "sec"sv) {
      o.parts[3] = value;
    }
  }
  return o;
}

bool is_blank(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == '\v' || c == '\f'; }

string_view trim(string_view s) {
  while (!s.empty() && is_blank(s.front())) s.remove_prefix(1);
  while (!s.empty() && is_blank(s.back())) s.remove_suffix(1);
  return s;
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

bool equal_nocase(string_view a, string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (lower(a[i]) != lower(b[i])) return false;
  return true;
}

bool starts_nocase(string_view text, string_view prefix) {
  return text.size() >= prefix.size() && equal_nocase(text.substr(0, prefix.size()), prefix);
}

enum class word { none, yes, no };

word read_word(string_view value) {
  value = trim(value);
  if (value.empty()) return word::none;
  for (string_view w : {"yes"sv, "true"sv, "on"sv, "1"sv})
    if (equal_nocase(value, w)) return word::yes;
  for (string_view w : {"no"sv, "false"sv, "off"sv, "0"sv})
    if (equal_nocase(value, w)) return word::no;
  return word::none;
}

// A small decimal integer with an optional sign; false when the text is not one.
bool read_small_int(string_view text, int& result) {
  text = trim(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.empty() || text.size() > 6) return false;
  int value = 0;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + (c - '0');
  }
  result = negative ? -value : value;
  return true;
}

// precision in 0..limit, or -1 when not given (or not readable).
int read_precision(options_t const& o, int limit) {
  int p = -1;
  if (o.precision.empty() || !read_small_int(o.precision, p) || p < 0) return -1;
  return p > limit ? limit : p;
}

// ---- values ----------------------------------------------------------------------

struct number_t {
  bool is_integer = false;
  bool negative = false;
  std::uint64_t magnitude = 0;  // for integers
  double real = 0.0;            // for floating values (sign included)

  double as_double() const {
    if (!is_integer) return real;
    double const m = static_cast<double>(magnitude);
    return negative ? -m : m;
  }
};

int hex_value(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  c = lower(c);
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

bool read_text_number(string_view text, number_t& n) {
  text = trim(text);
  bool negative = false;
  if (!text.empty() && (text.front() == '-' || text.front() == '+')) {
    negative = text.front() == '-';
    text.remove_prefix(1);
  }
  if (text.empty()) return false;
  n.negative = negative;
  if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) {
    std::uint64_t value = 0;
    for (char c : text.substr(2)) {
      int const d = hex_value(c);
      if (d < 0) return false;
      value = value > (~std::uint64_t(0) >> 4) ? ~std::uint64_t(0) : (value << 4) | static_cast<unsigned>(d);
    }
    n.is_integer = true;
    n.magnitude = value;
    return true;
  }
  bool const starts_well = (text[0] >= '0' && text[0] <= '9') ||
                           (text[0] == '.' && text.size() > 1 && text[1] >= '0' && text[1] <= '9');
  if (!starts_well) return false;
  bool all_digits = text.size() <= 19;
  for (char c : text)
    if (c < '0' || c > '9') all_digits = false;
  if (all_digits) {
    std::uint64_t value = 0;
    for (char c : text) value = value * 10 + static_cast<unsigned>(c - '0');
    n.is_integer = true;
    n.magnitude = value;
    return true;
  }
  double value = 0.0;
  auto const r = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::general);
  if (r.ec == std::errc::invalid_argument || r.ptr != text.data() + text.size()) return false;
  if (r.ec == std::errc::result_out_of_range) return false;
  n.is_integer = false;
  n.real = negative ? -value : value;
  return std::isfinite(n.real);
}

// What a variant holds, as far as formatting cares.
enum class held { unsigned_integer, signed_integer, floating, utf8_text, other_text, nothing };

struct held_type {
  std::type_info const* type;
  held kind;
};

held_type const held_types[] = {
    {&typeid(int), held::signed_integer},           {&typeid(strings::ustring8), held::utf8_text},
    {&typeid(unsigned long), held::unsigned_integer}, {&typeid(double), held::floating},
    {&typeid(long), held::signed_integer},          {&typeid(unsigned int), held::unsigned_integer},
    {&typeid(bool), held::unsigned_integer},        {&typeid(float), held::floating},
    {&typeid(long double), held::floating},         {&typeid(short), held::signed_integer},
    {&typeid(unsigned short), held::unsigned_integer}, {&typeid(signed char), held::signed_integer},
    {&typeid(unsigned char), held::unsigned_integer}, {&typeid(std::string), held::other_text},
    {&typeid(std::wstring), held::other_text},      {&typeid(strings::ustring16), held::other_text},
    {&typeid(strings::ustring32), held::other_text},
};

held classify(types::variant const& v) {
  std::type_info const& type = v.type();
  // The type information objects are unique in practice: compare addresses
  // first, and by name (what type_info equality does) only when none matches.
  for (held_type const& h : held_types)
    if (h.type == &type) return h.kind;
  for (held_type const& h : held_types)
    if (*h.type == type) return h.kind;
  return held::nothing;
}

bool read_number(types::variant const& v, number_t& n) {
  switch (classify(v)) {
    case held::unsigned_integer:
      n.is_integer = true;
      n.magnitude = v.as_uint64();
      return true;
    case held::signed_integer: {
      long const value = v.as_int64();
      n.is_integer = true;
      n.negative = value < 0;
      // The magnitude in the unsigned type, so the smallest long is exact.
      n.magnitude = n.negative ? 0 - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
      return true;
    }
    case held::floating:
      n.real = static_cast<double>(v.as_long_double());
      n.negative = std::signbit(n.real);
      return std::isfinite(n.real);
    case held::utf8_text: {
      auto const& text = static_cast<types::variant_value_t<strings::ustring8> const*>(v.value_object())->value;
      return read_text_number(string_view(text.data(), text.size()), n);
    }
    case held::other_text: {
      strings::ustring8 const text = v.as_string();
      return read_text_number(string_view(text.data(), text.size()), n);
    }
    case held::nothing: break;
  }
  return false;  // nil, and anything else
}

// ---- writing numbers -------------------------------------------------------------

void append_unsigned(std::string& out, std::uint64_t value, unsigned base) {
  char digits[64];
  int count = 0;
  do {
    unsigned const d = static_cast<unsigned>(value % base);
    digits[count++] = static_cast<char>(d < 10 ? '0' + d : 'a' + d - 10);
    value /= base;
  } while (value != 0);
  while (count > 0) out += digits[--count];
}

// Writes `value` with `precision` digits after the point; a value that rounds
// to zero loses its sign, so no number is ever written as "-0".
void append_fixed(std::string& out, double value, int precision) {
  char buffer[400];
  auto const r = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, precision);
  char const* first = buffer;
  if (r.ec != std::errc()) return;
  if (*first == '-') {
    bool zero = true;
    for (char const* p = first + 1; p != r.ptr; ++p)
      if (*p >= '1' && *p <= '9') zero = false;
    if (zero) ++first;
  }
  out.append(first, static_cast<std::size_t>(r.ptr - first));
}

void append_general(std::string& out, double value) {
  char buffer[64];
  if (value == 0.0) value = 0.0;  // -0.0 becomes 0.0
  auto const r = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 10);
  if (r.ec == std::errc()) out.append(buffer, static_cast<std::size_t>(r.ptr - buffer));
}

// Appends the scaled value: fixed digits when a precision is given, else one
// digit that is dropped when it is 0; `whole` asks for no fraction at all.
void append_scaled(std::string& out, double value, int precision, bool whole) {
  if (whole) {
    append_fixed(out, value, 0);
  } else if (precision >= 0) {
    append_fixed(out, value, precision);
  } else {
    std::size_t const start = out.size();
    append_fixed(out, value, 1);
    if (out.size() >= start + 2 && out.compare(out.size() - 2, 2, ".0") == 0) out.resize(out.size() - 2);
  }
}

// The whole part of the number written from `start` on, without its sign
// (capped far above what the callers compare with).
double written_magnitude(std::string const& out, std::size_t start) {
  std::size_t i = start;
  if (i < out.size() && out[i] == '-') ++i;
  double value = 0.0;
  for (; i < out.size() && out[i] >= '0' && out[i] <= '9' && value < 1e9; ++i) value = value * 10 + (out[i] - '0');
  return value;
}

// Groups the decimal digits of the whole part written from `start` on by threes.
void group_digits(std::string& out, std::size_t start) {
  std::size_t first = start;
  if (first < out.size() && out[first] == '-') ++first;
  std::size_t last = first;
  while (last < out.size() && out[last] >= '0' && out[last] <= '9') ++last;
  if (last - first <= 3) return;
  std::string grouped;
  for (std::size_t i = first; i < last; ++i) {
    if (i != first && (last - i) % 3 == 0) grouped += ' ';
    grouped += out[i];
  }
  out.replace(first, last - first, grouped);
}

// Groups the whole part when asked (spaced_dec) and writes the decimal point
// as asked (dec_point), for the number written from `start` on.
void shape_number(std::string& out, std::size_t start, options_t const& o) {
  if (read_word(o.spaced_dec) == word::yes) group_digits(out, start);
  if (o.dec_point.empty()) return;
  std::size_t const point = out.find('.', start);
  if (point != std::string::npos) out.replace(point, 1, o.dec_point.data(), o.dec_point.size());
}

// ---- the kinds -------------------------------------------------------------------

bool format_integer(std::string& out, number_t const& n, options_t const& o) {
  unsigned base = 10;
  int b = 0;
  if (!o.base.empty() && read_small_int(o.base, b) && b >= 2 && b <= 36) base = static_cast<unsigned>(b);
  std::uint64_t magnitude = n.magnitude;
  bool negative = n.negative;
  if (!n.is_integer) {
    double const t = std::trunc(std::fabs(n.real));
    if (!(t < 18446744073709551616.0)) return false;  // beyond 64 bits
    magnitude = static_cast<std::uint64_t>(t);
    negative = n.real < 0;
  }
  std::size_t const start = out.size();
  if (negative && magnitude != 0) out += '-';
  append_unsigned(out, magnitude, base);
  if (base == 10) shape_number(out, start, o);
  return true;
}

bool format_real(std::string& out, number_t const& n, options_t const& o) {
  std::size_t const start = out.size();
  int const precision = read_precision(o, 40);
  if (precision >= 0)
    append_fixed(out, n.as_double(), precision);
  else
    append_general(out, n.as_double());
  shape_number(out, start, o);
  return true;
}

// ---- memory ----------

char const memory_letters[] = "KMGTPEZY";

// Unit index: 0 bytes, 1 K ... 8 Y; -1 when the text names no unit.
int read_memory_unit(string_view text) {
  text = trim(text);
  if (text.empty()) return -1;
  char const c = static_cast<char>(text[0] >= 'a' && text[0] <= 'z' ? text[0] - 'a' + 'A' : text[0]);
  if (c == 'B') return 0;
  for (int i = 0; i < 8; ++i)
    if (memory_letters[i] == c) return i + 1;
  return -1;
}

double const powers_1024[] = {1.0, 0x1p10, 0x1p20, 0x1p30, 0x1p40, 0x1p50, 0x1p60, 0x1p70, 0x1p80};

double power_1024(int k) { return powers_1024[k]; }

bool format_memory(std::string& out, number_t const& n, options_t const& o, bool number_only) {
  int const base_unit = read_memory_unit(o.base_unit);
  int const target_unit = read_memory_unit(o.target_unit);
  int const precision = read_precision(o, 40);
  double const value = n.as_double() * power_1024(base_unit < 0 ? 0 : base_unit);
  int k = 0;
  if (target_unit >= 0) {
    k = target_unit;
  } else if (number_only) {
    k = 0;
  } else {
    while (k < 8 && std::fabs(value) >= power_1024(k + 1)) ++k;
  }
  std::size_t const start = out.size();
  append_scaled(out, value / power_1024(k), precision, k == 0);
  // 1023.96 KB shown with one digit is "1 MB", not "1024 KB".
  if (target_unit < 0 && !number_only && k < 8 && written_magnitude(out, start) >= 1024.0) {
    out.resize(start);
    ++k;
    append_scaled(out, value / power_1024(k), precision, false);
  }
  shape_number(out, start, o);
  if (number_only) return true;
  bool const short_form = read_word(o.short_form) == word::yes;
  if (!short_form) out += ' ';
  if (k == 0) {
    out += 'B';
  } else {
    out += memory_letters[k - 1];
    if (!short_form) out += 'B';
  }
  return true;
}

// ---- metric ----------

char const* const metric_prefixes[] = {"atto", "femto", "pico", "nano", "micro", "milli", "",     "kilo",
                                       "mega", "giga",  "tera", "peta", "exa",   "zetta", "yotta"};
int const metric_none = 6;
int const metric_count = 15;
double const powers_1000[] = {1e-18, 1e-15, 1e-12, 1e-9, 1e-6, 1e-3, 1e0, 1e3,
                              1e6,   1e9,   1e12,  1e15, 1e18, 1e21, 1e24};

// Splits a unit word into its prefix index and the rest ("kilometer": kilo, "meter").
int split_metric_unit(string_view unit, string_view& rest) {
  unit = trim(unit);
  for (int i = 0; i < metric_count; ++i) {
    if (i == metric_none) continue;
    if (starts_nocase(unit, metric_prefixes[i])) {
      rest = unit.substr(std::char_traits<char>::length(metric_prefixes[i]));
      return i;
    }
  }
  rest = unit;
  return metric_none;
}

bool format_metric(std::string& out, number_t const& n, options_t const& o, bool number_only) {
  string_view base_rest, target_rest;
  int const base_prefix = split_metric_unit(o.base_unit, base_rest);
  bool const has_target = !trim(o.target_unit).empty();
  int const target_prefix = has_target ? split_metric_unit(o.target_unit, target_rest) : metric_none;
  int const precision = read_precision(o, 40);
  double const value = n.as_double() * powers_1000[base_prefix];
  int k = metric_none;
  if (has_target) {
    k = target_prefix;
  } else if (number_only) {
    k = base_prefix;
  } else if (value != 0.0) {
    k = 0;
    while (k + 1 < metric_count && std::fabs(value) >= powers_1000[k + 1]) ++k;
  }
  std::size_t const start = out.size();
  append_scaled(out, value / powers_1000[k], precision, false);
  if (!has_target && !number_only && k + 1 < metric_count && written_magnitude(out, start) >= 1000.0) {
    out.resize(start);
    ++k;
    append_scaled(out, value / powers_1000[k], precision, false);
  }
  shape_number(out, start, o);
  if (number_only) return true;
  if (has_target) {
    out += ' ';
    string_view const target = trim(o.target_unit);
    out.append(target.data(), target.size());
  } else if (k != metric_none || !base_rest.empty()) {
    out += ' ';
    std::string word = metric_prefixes[k];
    if (!word.empty() && !base_rest.empty() && base_rest[0] >= 'A' && base_rest[0] <= 'Z') {
      // A capitalised unit keeps its capital in front: "Meter" becomes "Kilometer".
      word[0] = static_cast<char>(word[0] - 'a' + 'A');
      word += lower(base_rest[0]);
      word.append(base_rest.data() + 1, base_rest.size() - 1);
    } else {
      word.append(base_rest.data(), base_rest.size());
    }
    out += word;
  }
  return true;
}

// ---- duration ----------

bool format_duration(std::string& out, number_t const& n, options_t const& o) {
  static char const* const default_names[] = {"dy", "hr", "min", "sec"};
  static std::uint64_t const unit_ms[] = {86400000, 3600000, 60000, 1000};
  std::uint64_t ms = n.magnitude;
  bool const negative = n.is_integer ? n.negative : n.real < 0;
  if (!n.is_integer) {
    double const t = std::trunc(std::fabs(n.real));
    if (!(t < 18446744073709551616.0)) return false;
    ms = static_cast<std::uint64_t>(t);
  }
  word modes[4];
  bool any_shown = false;
  for (int i = 0; i < 4; ++i) {
    modes[i] = read_word(o.parts[i]);
    if (modes[i] != word::no) any_shown = true;
  }
  string_view names[4];
  for (int i = 0; i < 4; ++i) {
    if (!any_shown) modes[i] = word::none;  // everything switched off: the plain form
    string_view const given = trim(o.parts[i]);
    names[i] = any_shown && modes[i] == word::none && !given.empty() ? given : string_view(default_names[i]);
  }
  int smallest = 3;
  while (modes[smallest] == word::no) --smallest;
  int const precision = modes[3] == word::no ? 0 : std::max(0, read_precision(o, 3));

  std::string body;
  std::uint64_t rest = ms;
  int last_written = -1;
  for (int i = 0; i < 4; ++i) {
    if (modes[i] == word::no) continue;
    std::uint64_t const amount = rest / unit_ms[i];
    rest -= amount * unit_ms[i];
    unsigned fraction = 0;
    if (i == 3 && precision > 0) fraction = static_cast<unsigned>(rest / (precision == 1 ? 100 : precision == 2 ? 10 : 1));
    bool const show = amount != 0 || fraction != 0 || modes[i] == word::yes ||
                      (i == smallest && last_written < 0);
    if (!show) continue;
    if (!body.empty()) body += ' ';
    std::size_t const start = body.size();
    append_unsigned(body, amount, 10);
    if (read_word(o.spaced_dec) == word::yes) group_digits(body, start);
    if (i == 3 && precision > 0) {
      if (o.dec_point.empty())
        body += '.';
      else
        body.append(o.dec_point.data(), o.dec_point.size());
      std::size_t const digits = body.size();
      append_unsigned(body, fraction, 10);
      body.insert(digits, static_cast<std::size_t>(precision) - (body.size() - digits), '0');
    }
    body += ' ';
    body.append(names[i].data(), names[i].size());
    last_written = i;
  }
  bool nonzero = false;
  for (char c : body)
    if (c >= '1' && c <= '9') nonzero = true;
  if (negative && nonzero) out += '-';
  out += body;
  return true;
}

// ---- field size -------------------------------------------------------------------

std::size_t code_points(std::string const& s, std::size_t start) {
  std::size_t count = 0;
  for (std::size_t i = start; i < s.size(); ++i)
    if ((static_cast<unsigned char>(s[i]) & 0xC0) != 0x80) ++count;
  return count;
}

void apply_fieldsize(std::string& out, std::size_t start, options_t const& o, bool numeric) {
  int size = 0;
  if (o.fieldsize.empty() || !read_small_int(o.fieldsize, size)) return;
  string_view const text = trim(o.fieldsize);
  bool const left = size < 0;
  std::size_t width = static_cast<std::size_t>(left ? -size : size);
  if (width > 256) width = 256;
  std::size_t const have = code_points(out, start);
  if (have >= width) return;
  std::size_t const missing = width - have;
  bool const zeros = numeric && !left && !text.empty() && text[0] == '0';
  if (left) {
    out.append(missing, ' ');
  } else if (zeros) {
    std::size_t const at = start + (out.size() > start && out[start] == '-' ? 1 : 0);
    out.insert(at, missing, '0');
  } else {
    out.insert(start, missing, ' ');
  }
}

bool append_with(std::string& out, message_item::type_t type, types::variant const& value, options_t const& o) {
  std::size_t const start = out.size();
  number_t n;
  bool done = false;
  bool numeric = true;
  if (read_number(value, n)) {
    switch (type) {
      case message_item::integer: done = format_integer(out, n, o); break;
      case message_item::real: done = format_real(out, n, o); break;
      case message_item::memory: done = format_memory(out, n, o, false); numeric = false; break;
      case message_item::memory_unit: done = format_memory(out, n, o, true); break;
      case message_item::metric: done = format_metric(out, n, o, false); numeric = false; break;
      case message_item::metric_unit: done = format_metric(out, n, o, true); break;
      case message_item::duration: done = format_duration(out, n, o); numeric = false; break;
      default: break;
    }
  }
  if (!done) {
    out.resize(start);
    if (!o.has_default) return false;
    out.append(o.default_text.data(), o.default_text.size());
    numeric = false;
  }
  apply_fieldsize(out, start, o, numeric);
  return true;
}

options_t const no_options{};

}  // namespace

namespace _private {

bool append_formatted_value(std::string& out, message_item::type_t type, types::variant const& value,
                            char const* options, unsigned long length) {
  // Most arguments have no options: their table is not built at all.
  if (length == 0) return append_with(out, type, value, no_options);
  return append_with(out, type, value, read_options(options, length));
}

}  // namespace _private

strings::ustring8 format_value(message_item::type_t type, types::variant const& value,
                               strings::ustring8 const& options) {
  std::string out;
  if (!_private::append_formatted_value(out, type, value, options.data(), options.size())) return "-0";
  return strings::ustring8(std::move(out));
}

}  // namespace i18n
}  // namespace VEXA_2_10
