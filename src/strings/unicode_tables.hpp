// Shuffle tables the Unicode block kernels share, built at compile time.
#ifndef VEXA_SRC_STRINGS_UNICODE_TABLES_HPP
#define VEXA_SRC_STRINGS_UNICODE_TABLES_HPP

#include <cstdint>

namespace VEXA_2_10 {
namespace strings {
namespace _private {

struct keep_tables {
  // keep16[m] moves the 16-bit lanes (of eight) whose bit is set in m to the
  // front of a 128-bit register; count[m] is the number of such lanes.
  std::uint8_t keep16[256][16];
  std::uint8_t count[256];
  // keep32[m] moves the 32-bit lanes (of eight) whose bit is set in m to the
  // front of a 256-bit register.
  std::int32_t keep32[256][8];

  constexpr keep_tables() : keep16{}, count{}, keep32{} {
    for (unsigned m = 0; m < 256; ++m) {
      unsigned n = 0;
      for (unsigned lane = 0; lane < 8; ++lane) {
        if ((m >> lane) & 1u) {
          keep16[m][2 * n] = static_cast<std::uint8_t>(2 * lane);
          keep16[m][2 * n + 1] = static_cast<std::uint8_t>(2 * lane + 1);
          keep32[m][n] = static_cast<std::int32_t>(lane);
          ++n;
        }
      }
      count[m] = static_cast<std::uint8_t>(n);
      for (unsigned i = 2 * n; i < 16; ++i) keep16[m][i] = 0x80;
    }
  }
};

alignas(64) inline constexpr keep_tables unicode_tables{};

}  // namespace _private
}  // namespace strings
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_STRINGS_UNICODE_TABLES_HPP
