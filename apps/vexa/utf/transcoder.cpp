// Checked text converted block by block with the library's transforms.
#include "utf/transcoder.hpp"

#include <cstdint>
#include <cstring>
#include <stdexcept>

#include "vexa/strings/unicode.hpp"

namespace vexa_cli {
namespace utf {
namespace {

using vexa::strings::ustring16;
using vexa::strings::ustring32;
using vexa::strings::ustring8;

static_assert(sizeof(unsigned short) == 2 && sizeof(wchar_t) == 4, "UTF-16 and UTF-32 unit sizes");
constexpr bool host_big_endian = __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__;

// A transform's "-1" is a refusal unless the input itself was "-1".
template <typename Result, typename Input>
Result const& accepted(Result const& result, Input const& input) {
  auto is_minus_one = [](auto const& s) { return s.size() == 2 && s[0] == '-' && s[1] == '1'; };
  if (is_minus_one(result) && !is_minus_one(input)) {
    throw std::logic_error("the library refused text that passed the check");
  }
  return result;
}

// Units of `Units`' width read from bytes in the given order.
template <typename Units>
Units read_units(unsigned char const* data, std::size_t size, bool big) {
  using unit = typename Units::value_type;
  Units units(size / sizeof(unit), unit(0));
  if (big == host_big_endian) {
    std::memcpy(&units[0], data, size);
    return units;
  }
  for (std::size_t i = 0; i < units.size(); ++i) {
    std::uint32_t u = 0;
    for (std::size_t b = 0; b < sizeof(unit); ++b) {
      u = u << 8 | data[i * sizeof(unit) + (big ? b : sizeof(unit) - 1 - b)];
    }
    units[i] = static_cast<unit>(u);
  }
  return units;
}

}  // namespace

template <typename Units>
void transcoder::write_units(Units const& units, output_file& out) {
  using unit = typename Units::value_type;
  std::size_t const bytes = units.size() * sizeof(unit);
  if (sizeof(unit) == 1) {
    write_utf8(reinterpret_cast<char const*>(units.data()), bytes, out);
    return;
  }
  if (big_endian(to_) == host_big_endian) {
    out.write(units.data(), bytes);
    return;
  }
  scratch_.resize(bytes);
  for (std::size_t i = 0; i < units.size(); ++i) {
    auto const u = static_cast<std::uint32_t>(units[i]);
    for (std::size_t b = 0; b < sizeof(unit); ++b) {
      scratch_[i * sizeof(unit) + b] = static_cast<char>(u >> (8 * (sizeof(unit) - 1 - b)) & 0xFFu);
    }
  }
  out.write(scratch_.data(), bytes);
}

void transcoder::write_utf8(char const* data, std::size_t size, output_file& out) {
  if (!page_) {
    out.write(data, size);
    return;
  }
  std::string const encoded = page_->encode(ustring8(data, size));
  out.write(encoded.data(), encoded.size());
}

void transcoder::convert(unsigned char const* data, std::size_t size, output_file& out) {
  if (size == 0) return;
  using namespace vexa::strings;
  unsigned const from_size = unit_size(from_);
  unsigned const to_size = unit_size(to_);
  if (from_size == 1 && to_size == 1) {
    write_utf8(reinterpret_cast<char const*>(data), size, out);
  } else if (from_size == 1) {
    convert(ustring8(reinterpret_cast<char const*>(data), size), out);
  } else if (from_size == 2) {
    ustring16 const text = read_units<ustring16>(data, size, big_endian(from_));
    if (to_size == 1) write_units(accepted(utf16_to_utf8(text), text), out);
    if (to_size == 2) write_units(text, out);
    if (to_size == 4) write_units(accepted(utf16_to_utf32(text), text), out);
  } else {
    ustring32 const text = read_units<ustring32>(data, size, big_endian(from_));
    if (to_size == 1) write_units(accepted(utf32_to_utf8(text), text), out);
    if (to_size == 2) {
      ustring8 const utf8 = accepted(utf32_to_utf8(text), text);
      write_units(accepted(utf8_to_utf16(utf8), utf8), out);
    }
    if (to_size == 4) write_units(text, out);
  }
}

void transcoder::convert(ustring8 const& text, output_file& out) {
  using namespace vexa::strings;
  if (text.empty()) return;
  switch (unit_size(to_)) {
    case 1: write_units(text, out); break;
    case 2: write_units(accepted(utf8_to_utf16(text), text), out); break;
    default: write_units(utf8_to_utf32(text), out); break;
  }
}

}  // namespace utf
}  // namespace vexa_cli
