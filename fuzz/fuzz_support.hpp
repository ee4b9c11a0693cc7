// vexa fuzzing — what every target shares.
//
// A target is one `<name>_fuzz.cpp` defining LLVMFuzzerTestOneInput. Built
// with clang and -fsanitize=fuzzer it is a libFuzzer program; built with g++
// beside replay_main.cpp it is a plain program that runs every file of its
// corpus once (the CTest replays). The code must therefore stay portable:
// nothing here depends on libFuzzer's own headers.
//
// Targets take their choices (which function, which radix, which width)
// from the front of the input with `input` and parse the rest. A broken
// property is reported with VEXA_FUZZ_CHECK, which prints both sides and
// aborts, so libFuzzer keeps the input and a replay fails.
//
//   vexa_fuzz::input in(data, size);
//   unsigned const radix = in.pick(41);          // 0..40
//   VEXA_FUZZ_CHECK(got == want, "radix " + std::to_string(radix));
#ifndef VEXA_FUZZ_FUZZ_SUPPORT_HPP
#define VEXA_FUZZ_FUZZ_SUPPORT_HPP

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace vexa_fuzz {

// Reads choices from the front of the fuzz input. Past the end every read
// gives zeros, so a short input is still a valid (small) case.
class input {
 public:
  input(std::uint8_t const* data, std::size_t size) : _data(data), _size(size) {}

  bool empty() const { return _pos >= _size; }
  std::size_t left() const { return _size - _pos; }

  std::uint8_t byte() { return _pos < _size ? _data[_pos++] : 0; }
  bool flag() { return (byte() & 1) != 0; }
  // A number from 0 to n - 1 (n from 1 to 256).
  unsigned pick(unsigned n) { return byte() % n; }
  std::uint16_t word16() {
    unsigned const lo = byte();
    return static_cast<std::uint16_t>(lo | (unsigned{byte()} << 8));
  }
  std::uint32_t word32() {
    std::uint32_t const lo = word16();
    return lo | (std::uint32_t{word16()} << 16);
  }

  // Up to n bytes.
  std::string bytes(std::size_t n) {
    if (n > left()) n = left();
    std::string s(reinterpret_cast<char const*>(_data + _pos), n);
    _pos += n;
    return s;
  }
  // A text of its own length: one length byte, then that many bytes.
  std::string chunk() { return bytes(byte()); }
  // Everything not taken yet.
  std::string rest() { return bytes(left()); }

 private:
  std::uint8_t const* _data;
  std::size_t _size;
  std::size_t _pos = 0;
};

// The bytes read as little-endian units of `Unit` (a partial last unit is
// dropped).
template <typename Unit>
std::basic_string<Unit> units_of(std::string const& bytes) {
  std::basic_string<Unit> out;
  out.reserve(bytes.size() / sizeof(Unit));
  for (std::size_t i = 0; i + sizeof(Unit) <= bytes.size(); i += sizeof(Unit)) {
    std::uint32_t v = 0;
    for (std::size_t k = 0; k < sizeof(Unit); ++k)
      v |= std::uint32_t{static_cast<unsigned char>(bytes[i + k])} << (8 * k);
    out.push_back(static_cast<Unit>(v));
  }
  return out;
}

// Units as hexadecimal numbers, for failure reports.
template <typename String>
std::string hex(String const& s) {
  std::string out;
  char buffer[16];
  for (auto c : s) {
    std::snprintf(buffer, sizeof buffer, "%s%X", out.empty() ? "" : " ",
                  static_cast<unsigned>(static_cast<std::uint32_t>(
                      sizeof(c) == 1 ? static_cast<unsigned char>(c) : static_cast<std::uint32_t>(c))));
    out += buffer;
  }
  return "{" + out + "}";
}

[[noreturn]] inline void fail(char const* file, int line, char const* condition,
                              std::string const& detail) {
  std::fprintf(stderr, "%s:%d: check failed: %s\n%s\n", file, line, condition, detail.c_str());
  std::fflush(stderr);
  std::abort();
}

}  // namespace vexa_fuzz

#define VEXA_FUZZ_CHECK(condition, detail)                                   \
  do {                                                                       \
    if (!(condition)) ::vexa_fuzz::fail(__FILE__, __LINE__, #condition, detail); \
  } while (0)

#endif  // VEXA_FUZZ_FUZZ_SUPPORT_HPP
