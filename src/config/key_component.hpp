// Walking a configuration key one component at a time, without copying the
// rest of the key at every step (a key may have a million components).
#ifndef VEXA_SRC_CONFIG_KEY_COMPONENT_HPP
#define VEXA_SRC_CONFIG_KEY_COMPONENT_HPP

#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>

#include "vexa/config/config_token.hpp"

namespace VEXA_2_10 {
namespace config {
namespace _private {

// The lower-case form of one byte as the C library's tolower gives it.
// Bytes of the portable character set other than 'A'..'Z' map to themselves
// in every locale, so only those and bytes from 0x80 up are asked.
inline char fold_byte(char c) {
  auto const u = static_cast<unsigned char>(c);
  if ((u >= 'A' && u <= 'Z') || u >= 0x80) return static_cast<char>(std::tolower(u));
  return c;
}

// Cuts a key into its components as config_tree::parse_string does, again
// and again: a separator directly before the end of the key ends the walk.
class key_walk {
 public:
  explicit key_walk(std::string_view key) : _key(key), _at(0), _done(false) {}

  // The next component, lower-cased: a view into the key itself when no byte
  // needs folding, else into `buffer` (its storage reused). `last` tells
  // whether it is the final component.
  std::string_view next(std::string& buffer, bool& last) {
    std::size_t const begin = _at;
    std::size_t end = begin;
    bool plain = true;
    for (; end < _key.size(); ++end) {
      char const c = _key[end];
      if (c == '.' || c == '/' || c == '\\') break;
      if (plain && fold_byte(c) != c) plain = false;
    }
    last = end + 1 >= _key.size();
    _at = end + 1;
    _done = last;
    if (plain) return _key.substr(begin, end - begin);
    buffer.assign(_key.data() + begin, end - begin);
    for (char& c : buffer) c = fold_byte(c);
    return std::string_view(buffer.data(), buffer.size());
  }
  bool done() const { return _done; }

 private:
  std::string_view _key;
  std::size_t _at;
  bool _done;
};

}  // namespace _private
}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_CONFIG_KEY_COMPONENT_HPP
