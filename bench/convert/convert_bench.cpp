// Parsing, digit writing and byte strings of generic::convert, side by side
// with the standard and C libraries. Every case handles the same inputs and
// reports items (texts or values) per second.
//
//   bench_convert --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "vexa/generic/convert/bin_str.hpp"
#include "vexa/generic/convert/str_to_x.hpp"
#include "vexa/generic/convert/x_to_str.hpp"

namespace convert = vexa::generic::convert;
using radix = vexa::types::radix_t;

namespace {

constexpr std::size_t text_count = 4096;

// Texts laid out one after another, each followed by a 0 for the C library.
struct text_set {
  std::string bytes;
  std::vector<std::size_t> start, length;

  void add(std::string const& t) {
    start.push_back(bytes.size());
    length.push_back(t.size());
    bytes += t;
    bytes += '\0';
  }
  char const* at(std::size_t i) const { return bytes.data() + start[i]; }
};

enum class form { decimal, hex, automatic };

// The mix: digit counts drawn evenly from 1 to `max_digits` (decimal
// digits of the value), values drawn evenly within each count and kept in
// range of the type except where a count is beyond it (20 digits for int64);
// a quarter negative for signed types. Hexadecimal texts carry the same
// values; the automatic mix is one third each decimal, "0x" hex and "0" octal.
text_set make_texts(int max_digits, bool is_signed, unsigned long max, form f, unsigned seed) {
  std::mt19937_64 rng(seed);
  text_set set;
  for (std::size_t i = 0; i < text_count; ++i) {
    int const digits = 1 + static_cast<int>(rng() % max_digits);
    unsigned long low = 1, high = 9;
    for (int d = 1; d < digits && d < 20; ++d) {
      low *= 10;
      high = high * 10 + 9;
    }
    if (digits == 1) low = 0;
    if (high > max && low <= max) high = max;
    unsigned long const value = low + rng() % (high - low + 1);
    std::string text;
    if (digits == 20) {
      text = std::to_string(value) + std::to_string(rng() % 10);  // beyond int64
    } else {
      char buf[32];
      form const which = f == form::automatic ? static_cast<form>(i % 3) : f;
      int const base = which == form::decimal ? 10 : which == form::hex ? 16 : 8;
      *std::to_chars(buf, buf + 32, value, base).ptr = 0;
      text = f == form::automatic && base == 16  ? std::string("0x") + buf
             : f == form::automatic && base == 8 ? std::string("0") + buf
                                                 : std::string(buf);
    }
    if (is_signed && rng() % 4 == 0) text = "-" + text;
    set.add(text);
  }
  return set;
}

text_set const& int64_texts(form f) {
  static text_set const d = make_texts(20, true, 9223372036854775807ul, form::decimal, 1);
  static text_set const h = make_texts(19, true, 9223372036854775807ul, form::hex, 2);
  static text_set const a = make_texts(19, true, 9223372036854775807ul, form::automatic, 3);
  return f == form::decimal ? d : f == form::hex ? h : a;
}
text_set const& int32_texts(form f) {
  static text_set const d = make_texts(10, true, 2147483647ul, form::decimal, 4);
  static text_set const h = make_texts(10, true, 2147483647ul, form::hex, 5);
  static text_set const a = make_texts(10, true, 2147483647ul, form::automatic, 6);
  return f == form::decimal ? d : f == form::hex ? h : a;
}
text_set const& uint32_texts(form f) {
  static text_set const d = make_texts(10, false, 4294967295ul, form::decimal, 7);
  static text_set const h = make_texts(10, false, 4294967295ul, form::hex, 8);
  static text_set const a = make_texts(10, false, 4294967295ul, form::automatic, 9);
  return f == form::decimal ? d : f == form::hex ? h : a;
}

int base_of(form f) { return f == form::decimal ? 10 : f == form::hex ? 16 : 0; }

// Runs `parse(text, length)` over the whole set per iteration.
template <typename F>
void run_parse(benchmark::State& state, text_set const& set, F parse) {
  for (auto _ : state) {
    unsigned long sum = 0;
    for (std::size_t i = 0; i < text_count; ++i) {
      sum += static_cast<unsigned long>(parse(set.at(i), set.length[i]));
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<long>(state.iterations() * text_count));
}

// ---- parsing --------------------------------------------------------------------

template <form F>
void vexa_int64(benchmark::State& s) {
  run_parse(s, int64_texts(F), [](char const* t, std::size_t n) {
    return convert::str_to_int64(t, n, static_cast<radix::base>(base_of(F)), false);
  });
}
template <form F>
void from_chars_int64(benchmark::State& s) {
  run_parse(s, int64_texts(F), [](char const* t, std::size_t n) {
    long v = 0;
    std::from_chars(t, t + n, v, base_of(F));
    return v;
  });
}
template <form F>
void strtol_int64(benchmark::State& s) {
  run_parse(s, int64_texts(F),
            [](char const* t, std::size_t) { return std::strtol(t, nullptr, base_of(F)); });
}

template <form F>
void vexa_int32(benchmark::State& s) {
  run_parse(s, int32_texts(F), [](char const* t, std::size_t n) {
    return convert::str_to_int32(t, n, static_cast<radix::base>(base_of(F)), false);
  });
}
template <form F>
void from_chars_int32(benchmark::State& s) {
  run_parse(s, int32_texts(F), [](char const* t, std::size_t n) {
    int v = 0;
    std::from_chars(t, t + n, v, base_of(F));
    return v;
  });
}
template <form F>
void strtol_int32(benchmark::State& s) {
  run_parse(s, int32_texts(F), [](char const* t, std::size_t) {
    return static_cast<int>(std::strtol(t, nullptr, base_of(F)));
  });
}

template <form F>
void vexa_uint32(benchmark::State& s) {
  run_parse(s, uint32_texts(F), [](char const* t, std::size_t n) {
    return convert::str_to_uint32(t, n, static_cast<radix::base>(base_of(F)), false);
  });
}
template <form F>
void from_chars_uint32(benchmark::State& s) {
  run_parse(s, uint32_texts(F), [](char const* t, std::size_t n) {
    unsigned int v = 0;
    std::from_chars(t, t + n, v, base_of(F));
    return v;
  });
}
template <form F>
void strtoul_uint32(benchmark::State& s) {
  run_parse(s, uint32_texts(F), [](char const* t, std::size_t) {
    return static_cast<unsigned int>(std::strtoul(t, nullptr, base_of(F)));
  });
}

// std::from_chars reads no prefix, so the automatic-radix mix has only the
// C library beside it.
BENCHMARK(vexa_int64<form::decimal>);
BENCHMARK(from_chars_int64<form::decimal>);
BENCHMARK(strtol_int64<form::decimal>);
BENCHMARK(vexa_int64<form::hex>);
BENCHMARK(from_chars_int64<form::hex>);
BENCHMARK(strtol_int64<form::hex>);
BENCHMARK(vexa_int64<form::automatic>);
BENCHMARK(strtol_int64<form::automatic>);
BENCHMARK(vexa_int32<form::decimal>);
BENCHMARK(from_chars_int32<form::decimal>);
BENCHMARK(strtol_int32<form::decimal>);
BENCHMARK(vexa_int32<form::hex>);
BENCHMARK(from_chars_int32<form::hex>);
BENCHMARK(strtol_int32<form::hex>);
BENCHMARK(vexa_int32<form::automatic>);
BENCHMARK(strtol_int32<form::automatic>);
BENCHMARK(vexa_uint32<form::decimal>);
BENCHMARK(from_chars_uint32<form::decimal>);
BENCHMARK(strtoul_uint32<form::decimal>);
BENCHMARK(vexa_uint32<form::hex>);
BENCHMARK(from_chars_uint32<form::hex>);
BENCHMARK(strtoul_uint32<form::hex>);
BENCHMARK(vexa_uint32<form::automatic>);
BENCHMARK(strtoul_uint32<form::automatic>);

// ---- digit writing ------------------------------------------------------------------

// Values of every magnitude: random 64 bits shifted right by 0..63, a
// quarter of the signed ones negative.
template <typename T>
std::vector<T> const& values() {
  static std::vector<T> const v = [] {
    std::mt19937_64 rng(11);
    std::vector<T> out;
    for (std::size_t i = 0; i < text_count; ++i) {
      unsigned long bits = rng() >> (rng() % 64);
      T x = static_cast<T>(bits);
      if constexpr (std::is_signed_v<T>) {
        if (rng() % 4 == 0) x = static_cast<T>(0 - static_cast<std::make_unsigned_t<T>>(x));
      }
      out.push_back(x);
    }
    return out;
  }();
  return v;
}

template <typename T, typename F>
void run_write(benchmark::State& state, F write) {
  std::vector<T> const& v = values<T>();
  char buf[80];
  for (auto _ : state) {
    unsigned long sum = 0;
    for (T x : v) {
      write(x, buf);
      sum += static_cast<unsigned char>(buf[1]);
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(static_cast<long>(state.iterations() * v.size()));
}

template <unsigned Radix>
void vexa_lltoa(benchmark::State& s) {
  run_write<long>(s, [](long x, char* b) { convert::lltoa(x, b, Radix); });
}
template <unsigned Radix>
void to_chars_long(benchmark::State& s) {
  run_write<long>(s, [](long x, char* b) { *std::to_chars(b, b + 80, x, Radix).ptr = 0; });
}
template <unsigned Radix>
void snprintf_long(benchmark::State& s) {
  run_write<long>(s, [](long x, char* b) {
    if (Radix == 10) {
      std::snprintf(b, 80, "%ld", x);
    } else {  // %lx has no sign: written as the digit writers do
      unsigned long const m = x < 0 ? 0ul - static_cast<unsigned long>(x) : x;
      std::snprintf(b, 80, x < 0 ? "-%lx" : "%lx", m);
    }
  });
}
template <unsigned Radix>
void vexa_ultoa(benchmark::State& s) {
  run_write<unsigned int>(s, [](unsigned int x, char* b) { convert::ultoa(x, b, Radix); });
}
template <unsigned Radix>
void to_chars_unsigned(benchmark::State& s) {
  run_write<unsigned int>(
      s, [](unsigned int x, char* b) { *std::to_chars(b, b + 80, x, Radix).ptr = 0; });
}
template <unsigned Radix>
void snprintf_unsigned(benchmark::State& s) {
  run_write<unsigned int>(
      s, [](unsigned int x, char* b) { std::snprintf(b, 80, Radix == 10 ? "%u" : "%x", x); });
}

BENCHMARK(vexa_lltoa<10>);
BENCHMARK(to_chars_long<10>);
BENCHMARK(snprintf_long<10>);
BENCHMARK(vexa_lltoa<16>);
BENCHMARK(to_chars_long<16>);
BENCHMARK(snprintf_long<16>);
BENCHMARK(vexa_ultoa<10>);
BENCHMARK(to_chars_unsigned<10>);
BENCHMARK(snprintf_unsigned<10>);
BENCHMARK(vexa_ultoa<16>);
BENCHMARK(to_chars_unsigned<16>);
BENCHMARK(snprintf_unsigned<16>);

// ---- byte strings -----------------------------------------------------------------

void vexa_uint64_to_bin_str(benchmark::State& s) {
  for (auto _ : s) {
    unsigned long sum = 0;
    for (unsigned long x : values<unsigned long>()) {
      sum += static_cast<unsigned char>(convert::uint64_to_bin_str(x)[3]);
    }
    benchmark::DoNotOptimize(sum);
  }
  s.SetItemsProcessed(static_cast<long>(s.iterations() * text_count));
}
void vexa_big_endian_uint64_to_bin_str(benchmark::State& s) {
  for (auto _ : s) {
    unsigned long sum = 0;
    for (unsigned long x : values<unsigned long>()) {
      sum += static_cast<unsigned char>(convert::big_endian::uint64_to_bin_str(x)[3]);
    }
    benchmark::DoNotOptimize(sum);
  }
  s.SetItemsProcessed(static_cast<long>(s.iterations() * text_count));
}
void memcpy_uint64_to_string(benchmark::State& s) {
  for (auto _ : s) {
    unsigned long sum = 0;
    for (unsigned long x : values<unsigned long>()) {
      std::string b(8, '\0');
      std::memcpy(&b[0], &x, 8);
      benchmark::DoNotOptimize(b);
      sum += static_cast<unsigned char>(b[3]);
    }
    benchmark::DoNotOptimize(sum);
  }
  s.SetItemsProcessed(static_cast<long>(s.iterations() * text_count));
}

std::vector<std::string> const& byte_strings() {
  static std::vector<std::string> const b = [] {
    std::vector<std::string> out;
    for (unsigned long x : values<unsigned long>()) out.push_back(convert::uint64_to_bin_str(x));
    return out;
  }();
  return b;
}

void vexa_bin_str_to_uint64(benchmark::State& s) {
  for (auto _ : s) {
    unsigned long sum = 0;
    for (std::string const& b : byte_strings()) sum += convert::bin_str_to_uint64(b);
    benchmark::DoNotOptimize(sum);
  }
  s.SetItemsProcessed(static_cast<long>(s.iterations() * text_count));
}
void vexa_big_endian_bin_str_to_uint64(benchmark::State& s) {
  for (auto _ : s) {
    unsigned long sum = 0;
    for (std::string const& b : byte_strings()) sum += convert::big_endian::bin_str_to_uint64(b);
    benchmark::DoNotOptimize(sum);
  }
  s.SetItemsProcessed(static_cast<long>(s.iterations() * text_count));
}
void memcpy_string_to_uint64(benchmark::State& s) {
  for (auto _ : s) {
    unsigned long sum = 0;
    for (std::string const& b : byte_strings()) {
      unsigned long x = 0;
      if (b.size() >= 8) std::memcpy(&x, b.data(), 8);
      sum += x;
    }
    benchmark::DoNotOptimize(sum);
  }
  s.SetItemsProcessed(static_cast<long>(s.iterations() * text_count));
}

BENCHMARK(vexa_uint64_to_bin_str);
BENCHMARK(vexa_big_endian_uint64_to_bin_str);
BENCHMARK(memcpy_uint64_to_string);
BENCHMARK(vexa_bin_str_to_uint64);
BENCHMARK(vexa_big_endian_bin_str_to_uint64);
BENCHMARK(memcpy_string_to_uint64);

}  // namespace
