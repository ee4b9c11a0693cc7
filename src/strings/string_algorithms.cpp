// Case mapping, replacing and splitting, written once over the string type.
#include "vexa/strings/string_algorithms.hpp"

#include <cctype>
#include <cstddef>
#include <type_traits>

namespace VEXA_2_10 {
namespace strings {
namespace _private {

// The C library's mapping for the one value range it accepts: 8-bit units
// as signed char values (negative ones are kept), wider units up to 255.
template <int (*Map)(int), typename Unit>
inline Unit map_unit(Unit c) {
  if constexpr (sizeof(Unit) == 1) {
    int const value = static_cast<signed char>(c);
    return value < 0 ? c : static_cast<Unit>(Map(value));
  } else {
    auto const value = static_cast<std::make_unsigned_t<Unit>>(c);
    return value > 255 ? c : static_cast<Unit>(Map(static_cast<int>(value)));
  }
}

template <int (*Map)(int), typename String>
String map_units(String const& text, std::size_t first, std::size_t last) {
  String result(text);
  if (last > result.size()) last = result.size();
  for (std::size_t i = first; i < last; ++i) result[i] = map_unit<Map>(result[i]);
  return result;
}

inline int upper(int c) { return std::toupper(c); }
inline int lower(int c) { return std::tolower(c); }

template <typename String>
std::uint32_t replace_all(String& text, String const& what, String const& with) {
  if (what.empty()) return 0;
  std::size_t found = text.find(what);
  if (found == String::npos) return 0;
  // Built anew rather than replaced in place, so that many replacements in a
  // long text cost one pass instead of one move of the tail each.
  String result;
  std::uint32_t count = 0;
  std::size_t from = 0;
  do {
    result.append(text, from, found - from);
    result.append(with);
    ++count;
    from = found + what.size();
    found = text.find(what, from);
  } while (found != String::npos);
  result.append(text, from, String::npos);
  text.swap(result);
  return count;
}

template <typename String>
std::vector<String> split(String const& text, String const& delimiter, int limit) {
  std::vector<String> pieces;
  if (delimiter.empty()) {
    pieces.push_back(text);
    return pieces;
  }
  std::size_t from = 0;
  int count = 0;
  while (limit <= 0 || count < limit) {
    std::size_t const found = text.find(delimiter, from);
    if (found == String::npos) break;
    pieces.push_back(String(text, from, found - from));
    from = found + delimiter.size();
    ++count;
  }
  // A trailing delimiter leaves no empty last piece.
  if (from < text.size()) pieces.push_back(String(text, from, String::npos));
  return pieces;
}

}  // namespace _private

namespace {
constexpr std::size_t whole = ~std::size_t(0);
}

ustring8 to_upper(ustring8 const& text) { return _private::map_units<_private::upper>(text, 0, whole); }
ustring16 to_upper(ustring16 const& text) { return _private::map_units<_private::upper>(text, 0, whole); }
ustring32 to_upper(ustring32 const& text) { return _private::map_units<_private::upper>(text, 0, whole); }
ustring8 to_lower(ustring8 const& text) { return _private::map_units<_private::lower>(text, 0, whole); }
ustring16 to_lower(ustring16 const& text) { return _private::map_units<_private::lower>(text, 0, whole); }
ustring32 to_lower(ustring32 const& text) { return _private::map_units<_private::lower>(text, 0, whole); }

std::string lower_case(std::string const& text, unsigned long first, unsigned long last) {
  return _private::map_units<_private::lower>(text, first, last);
}
ustring8 lower_case(ustring8 const& text, unsigned long first, unsigned long last) {
  return _private::map_units<_private::lower>(text, first, last);
}
ustring16 lower_case(ustring16 const& text, unsigned long first, unsigned long last) {
  return _private::map_units<_private::lower>(text, first, last);
}
ustring32 lower_case(ustring32 const& text, unsigned long first, unsigned long last) {
  return _private::map_units<_private::lower>(text, first, last);
}

std::uint32_t replace_all(std::string& text, std::string const& what, std::string const& with) {
  return _private::replace_all(text, what, with);
}
std::uint32_t replace_all(std::wstring& text, std::wstring const& what, std::wstring const& with) {
  return _private::replace_all(text, what, with);
}
std::uint32_t replace_all(ustring8& text, ustring8 const& what, ustring8 const& with) {
  return _private::replace_all(text, what, with);
}
std::uint32_t replace_all(ustring16& text, ustring16 const& what, ustring16 const& with) {
  return _private::replace_all(text, what, with);
}
std::uint32_t replace_all(ustring32& text, ustring32 const& what, ustring32 const& with) {
  return _private::replace_all(text, what, with);
}

std::vector<std::string> split_string(std::string const& text, std::string const& delimiter, int limit) {
  return _private::split(text, delimiter, limit);
}
std::vector<std::wstring> split_string(std::wstring const& text, std::wstring const& delimiter, int limit) {
  return _private::split(text, delimiter, limit);
}
std::vector<ustring8> split_string(ustring8 const& text, ustring8 const& delimiter, int limit) {
  return _private::split(text, delimiter, limit);
}
std::vector<ustring16> split_string(ustring16 const& text, ustring16 const& delimiter, int limit) {
  return _private::split(text, delimiter, limit);
}
std::vector<ustring32> split_string(ustring32 const& text, ustring32 const& delimiter, int limit) {
  return _private::split(text, delimiter, limit);
}

namespace gh2 {

std::string toupper(std::string const& text) { return to_upper(ustring8(text)); }
std::string tolower(std::string const& text) { return to_lower(ustring8(text)); }

std::uint32_t replace_all(std::string& text, std::string const& what, std::string const& with) {
  return _private::replace_all(text, what, with);
}

}  // namespace gh2

}  // namespace strings
}  // namespace VEXA_2_10
