// Appending and reading back one million mixed values (integers of each
// width, doubles, short strings) in the binary and the text format, each
// beside its baseline: a memcpy into a std::string for the binary format,
// std::to_chars / std::from_chars with a 0x01 separator for the text format.
// The baselines lay out the very same bytes (the text baseline writes the
// doubles with the same 17 significant digits), so only the work differs.
// Then a labeled buffer written and parsed at 10,000 to 1,000,000 entries.
//
//   bench_serialization --benchmark_repetitions=5 --benchmark_report_aggregates_only=true
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "vexa/serialization/labeled_text_buffer.hpp"
#include "vexa/serialization/serialize_binary_buf.hpp"
#include "vexa/serialization/serialize_text_buf.hpp"

namespace {

using vexa::serialization::labeled_text_buffer;
using vexa::serialization::serialize_binary_buf;
using vexa::serialization::serialize_buffer;
using vexa::serialization::serialize_text_buf;

constexpr std::size_t value_count = 1000000;
constexpr unsigned int precision = 17;

enum kind : unsigned char { i8, i16, i32, i64, u8, u16, u32, u64, f64, str, kind_count };

struct value {
  kind type;
  std::uint64_t bits;  // the integer, or the double's bits
  std::string text;
};

// Ten kinds in equal shares, in random order; integers of random magnitude
// (so their decimal texts have all lengths), strings of 0 to 15 letters.
std::vector<value> const& mix() {
  static std::vector<value> const values = [] {
    std::mt19937_64 rng(2026);
    std::vector<value> out(value_count);
    for (value& v : out) {
      v.type = static_cast<kind>(rng() % kind_count);
      v.bits = rng() >> (rng() % 64);
      if (v.type == f64) {
        double const d = static_cast<double>(static_cast<std::int64_t>(rng())) / static_cast<double>(1 + rng() % 1000000);
        std::memcpy(&v.bits, &d, sizeof d);
      } else if (v.type == str) {
        v.text.assign(rng() % 16, 'a');
        for (char& c : v.text) c = static_cast<char>('a' + rng() % 26);
      }
    }
    return out;
  }();
  return values;
}

double as_double(std::uint64_t bits) {
  double d;
  std::memcpy(&d, &bits, sizeof d);
  return d;
}

void append_all(serialize_buffer& buf) {
  for (value const& v : mix()) {
    switch (v.type) {
      case i8: buf.append_int8(static_cast<signed char>(v.bits)); break;
      case i16: buf.append_int16(static_cast<short>(v.bits)); break;
      case i32: buf.append_int32(static_cast<int>(v.bits)); break;
      case i64: buf.append_int64(static_cast<long>(v.bits)); break;
      case u8: buf.append_uint8(static_cast<unsigned char>(v.bits)); break;
      case u16: buf.append_uint16(static_cast<unsigned short>(v.bits)); break;
      case u32: buf.append_uint32(static_cast<unsigned int>(v.bits)); break;
      case u64: buf.append_uint64(v.bits); break;
      case f64: buf.append_double(as_double(v.bits), precision); break;
      default: buf.append_string(v.text); break;
    }
  }
}

// A checksum of everything read, so that no read can be left out.
std::uint64_t read_all(serialize_buffer const& buf) {
  buf.reset_read();
  std::uint64_t sum = 0;
  for (value const& v : mix()) {
    switch (v.type) {
      case i8: sum += static_cast<std::uint64_t>(buf.read_int8()); break;
      case i16: sum += static_cast<std::uint64_t>(buf.read_int16()); break;
      case i32: sum += static_cast<std::uint64_t>(buf.read_int32()); break;
      case i64: sum += static_cast<std::uint64_t>(buf.read_int64()); break;
      case u8: sum += buf.read_uint8(); break;
      case u16: sum += buf.read_uint16(); break;
      case u32: sum += buf.read_uint32(); break;
      case u64: sum += buf.read_uint64(); break;
      case f64: sum += static_cast<std::uint64_t>(static_cast<std::int64_t>(buf.read_double())); break;
      default: sum += buf.read_string().size(); break;
    }
  }
  return sum;
}

// ---- binary -----------------------------------------------------------------

template <typename T>
void put(std::string& out, T v) {
  char bytes[sizeof(T)];
  std::memcpy(bytes, &v, sizeof(T));
  out.append(bytes, sizeof(T));
}

std::string memcpy_write() {
  std::string out;
  for (value const& v : mix()) {
    switch (v.type) {
      case i8: case u8: put(out, static_cast<std::uint8_t>(v.bits)); break;
      case i16: case u16: put(out, static_cast<std::uint16_t>(v.bits)); break;
      case i32: case u32: put(out, static_cast<std::uint32_t>(v.bits)); break;
      case i64: case u64: case f64: put(out, v.bits); break;
      default:
        put(out, static_cast<std::uint32_t>(v.text.size()));
        out += v.text;
        break;
    }
  }
  return out;
}

template <typename T>
T take(std::string const& in, std::size_t& at) {
  T v;
  std::memcpy(&v, in.data() + at, sizeof(T));
  at += sizeof(T);
  return v;
}

std::uint64_t memcpy_read(std::string const& in) {
  std::size_t at = 0;
  std::uint64_t sum = 0;
  for (value const& v : mix()) {
    switch (v.type) {
      case i8: sum += static_cast<std::uint64_t>(take<std::int8_t>(in, at)); break;
      case i16: sum += static_cast<std::uint64_t>(take<std::int16_t>(in, at)); break;
      case i32: sum += static_cast<std::uint64_t>(take<std::int32_t>(in, at)); break;
      case i64: sum += static_cast<std::uint64_t>(take<std::int64_t>(in, at)); break;
      case u8: sum += take<std::uint8_t>(in, at); break;
      case u16: sum += take<std::uint16_t>(in, at); break;
      case u32: sum += take<std::uint32_t>(in, at); break;
      case u64: sum += take<std::uint64_t>(in, at); break;
      case f64: sum += static_cast<std::uint64_t>(static_cast<std::int64_t>(take<double>(in, at))); break;
      default: {
        std::uint32_t const n = take<std::uint32_t>(in, at);
        sum += std::string(in, at, n).size();
        at += n;
        break;
      }
    }
  }
  return sum;
}

void binary_write_vexa(benchmark::State& state) {
  for (auto _ : state) {
    serialize_binary_buf buf;
    append_all(buf);
    benchmark::DoNotOptimize(buf.as_str().data());
  }
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

void binary_write_memcpy(benchmark::State& state) {
  for (auto _ : state) {
    std::string const out = memcpy_write();
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

void binary_read_vexa(benchmark::State& state) {
  serialize_binary_buf buf;
  append_all(buf);
  if (buf.as_str() != memcpy_write()) state.SkipWithError("the layouts differ");
  for (auto _ : state) benchmark::DoNotOptimize(read_all(buf));
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

void binary_read_memcpy(benchmark::State& state) {
  std::string const in = memcpy_write();
  for (auto _ : state) benchmark::DoNotOptimize(memcpy_read(in));
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

// ---- text -------------------------------------------------------------------

template <typename T>
void put_digits(std::string& out, T v) {
  char digits[32];
  char* const end = std::to_chars(digits, digits + sizeof digits, v).ptr;
  *end = '\x01';
  out.append(digits, static_cast<std::size_t>(end - digits) + 1);
}

std::string to_chars_write() {
  std::string out;
  for (value const& v : mix()) {
    switch (v.type) {
      case i8: put_digits(out, static_cast<signed char>(v.bits)); break;
      case i16: put_digits(out, static_cast<short>(v.bits)); break;
      case i32: put_digits(out, static_cast<int>(v.bits)); break;
      case i64: put_digits(out, static_cast<long>(v.bits)); break;
      case u8: put_digits(out, static_cast<unsigned char>(v.bits)); break;
      case u16: put_digits(out, static_cast<unsigned short>(v.bits)); break;
      case u32: put_digits(out, static_cast<unsigned int>(v.bits)); break;
      case u64: put_digits(out, v.bits); break;
      case f64: {
        char digits[32];
        char* const end =
            std::to_chars(digits, digits + sizeof digits, as_double(v.bits), std::chars_format::general, precision).ptr;
        *end = '\x01';
        out.append(digits, static_cast<std::size_t>(end - digits) + 1);
        break;
      }
      default:
        put_digits(out, v.text.size());
        out += v.text;
        out += '\x01';
        break;
    }
  }
  return out;
}

template <typename T>
T parse(std::string const& in, std::size_t& at) {
  char const* const begin = in.data() + at;
  char const* const sep = static_cast<char const*>(std::memchr(begin, '\x01', in.size() - at));
  T v{};
  std::from_chars(begin, sep, v);
  at = static_cast<std::size_t>(sep - in.data()) + 1;
  return v;
}

std::uint64_t from_chars_read(std::string const& in) {
  std::size_t at = 0;
  std::uint64_t sum = 0;
  for (value const& v : mix()) {
    switch (v.type) {
      case i8: sum += static_cast<std::uint64_t>(parse<signed char>(in, at)); break;
      case i16: sum += static_cast<std::uint64_t>(parse<short>(in, at)); break;
      case i32: sum += static_cast<std::uint64_t>(parse<int>(in, at)); break;
      case i64: sum += static_cast<std::uint64_t>(parse<long>(in, at)); break;
      case u8: sum += parse<unsigned char>(in, at); break;
      case u16: sum += parse<unsigned short>(in, at); break;
      case u32: sum += parse<unsigned int>(in, at); break;
      case u64: sum += parse<unsigned long>(in, at); break;
      case f64: sum += static_cast<std::uint64_t>(static_cast<std::int64_t>(parse<double>(in, at))); break;
      default: {
        std::size_t const n = parse<std::size_t>(in, at);
        sum += std::string(in, at, n).size();
        at += n + 1;
        break;
      }
    }
  }
  return sum;
}

void text_write_vexa(benchmark::State& state) {
  for (auto _ : state) {
    serialize_text_buf buf;
    append_all(buf);
    benchmark::DoNotOptimize(buf.as_str().data());
  }
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

void text_write_to_chars(benchmark::State& state) {
  for (auto _ : state) {
    std::string const out = to_chars_write();
    benchmark::DoNotOptimize(out.data());
  }
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

void text_read_vexa(benchmark::State& state) {
  serialize_text_buf buf;
  append_all(buf);
  std::string const peer = to_chars_write();
  if (buf.as_str() != peer) state.SkipWithError("the layouts differ");
  if (read_all(buf) != from_chars_read(peer)) state.SkipWithError("the values read differ");
  for (auto _ : state) benchmark::DoNotOptimize(read_all(buf));
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

void text_read_from_chars(benchmark::State& state) {
  std::string const in = to_chars_write();
  for (auto _ : state) benchmark::DoNotOptimize(from_chars_read(in));
  state.SetItemsProcessed(static_cast<long>(state.iterations() * value_count));
}

// ---- labeled ----------------------------------------------------------------

// `n` values: one in ten directly at the top, the rest in groups of nine
// (one group per ten values), the values cycling through int, double and text.
labeled_text_buffer make_labeled(std::size_t n) {
  labeled_text_buffer buf;
  std::mt19937_64 rng(n);
  for (std::size_t i = 0; i < n; i += 10) {
    std::string const name = "item" + std::to_string(i);
    buf.add_value(name, static_cast<int>(rng() % 100000));
    labeled_text_buffer& group = buf.create_group(name + ".detail");
    for (std::size_t k = 1; k < 10 && i + k < n; ++k) {
      std::string const label = "field" + std::to_string(k);
      switch (k % 3) {
        case 0: group.add_value(label, static_cast<long>(rng())); break;
        case 1: group.add_value(label, static_cast<double>(rng() % 1000000) / 7.0); break;
        default: group.add_value(label, "text " + std::to_string(rng() % 1000)); break;
      }
    }
  }
  return buf;
}

void labeled_write(benchmark::State& state) {
  labeled_text_buffer const buf = make_labeled(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) benchmark::DoNotOptimize(buf.as_str().data());
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetBytesProcessed(static_cast<long>(state.iterations() * buf.as_str().size()));
  state.SetComplexityN(state.range(0));
}

void labeled_parse(benchmark::State& state) {
  std::string const text = make_labeled(static_cast<std::size_t>(state.range(0))).as_str();
  for (auto _ : state) {  // parsed into a fresh buffer and destroyed, at every size alike
    labeled_text_buffer const buf(text);
    benchmark::DoNotOptimize(buf.is_empty());
  }
  state.SetItemsProcessed(state.iterations() * state.range(0));
  state.SetBytesProcessed(static_cast<long>(state.iterations() * text.size()));
  state.SetComplexityN(state.range(0));
}

BENCHMARK(binary_write_vexa)->Unit(benchmark::kMillisecond);
BENCHMARK(binary_write_memcpy)->Unit(benchmark::kMillisecond);
BENCHMARK(binary_read_vexa)->Unit(benchmark::kMillisecond);
BENCHMARK(binary_read_memcpy)->Unit(benchmark::kMillisecond);
BENCHMARK(text_write_vexa)->Unit(benchmark::kMillisecond);
BENCHMARK(text_write_to_chars)->Unit(benchmark::kMillisecond);
BENCHMARK(text_read_vexa)->Unit(benchmark::kMillisecond);
BENCHMARK(text_read_from_chars)->Unit(benchmark::kMillisecond);
BENCHMARK(labeled_write)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);
BENCHMARK(labeled_parse)->RangeMultiplier(10)->Range(10000, 1000000)->Unit(benchmark::kMillisecond)->Complexity(benchmark::oN);

}  // namespace
