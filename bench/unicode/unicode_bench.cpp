// The six Unicode transforms on every sample text, side by side with ICU and
// glibc's iconv. Throughput is counted on the UTF-8 size of each text, so the
// numbers of one text compare across directions.
//
// Ours return a fresh string, so allocation is part of every vexa case; the
// peers write into a buffer made once, their best use. Ours run once per
// kernel set the processor has ("vexa-avx2", "vexa-ssse3", "vexa-portable").
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "vexa/strings/unicode.hpp"

#if defined(VEXA_BENCH_HAVE_ICU)
#include <unicode/ustring.h>
#endif

namespace {

using namespace vexa::strings;

struct sample {
  std::string name;
  ustring8 u8;
  ustring16 u16;
  ustring32 u32;
};

std::vector<sample>& samples() {
  static std::vector<sample> all;
  return all;
}

void load_samples() {
  std::vector<std::filesystem::path> files;
  for (auto const& entry : std::filesystem::directory_iterator(VEXA_BENCH_UNICODE_DIR)) {
    if (entry.path().extension() == ".txt") files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  for (auto const& path : files) {
    std::ifstream in(path, std::ios::binary);
    sample s;
    s.name = path.filename().string();
    s.name = s.name.substr(0, s.name.find('.'));
    s.u8.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    s.u16 = utf8_to_utf16(s.u8);
    s.u32 = utf8_to_utf32(s.u8);
    samples().push_back(std::move(s));
  }
}

template <typename From, typename To, typename Convert>
void run(benchmark::State& state, sample const& s, From const& input, Convert const& convert) {
  for (auto _ : state) {
    To out = convert(input);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(s.u8.size()));
}

// A peer writes into a buffer made once, as its API allows: `worst` output
// units per input unit. `convert(in, out, room)` returns the units written.
template <typename Unit, typename From, typename Convert>
void run_into(benchmark::State& state, sample const& s, From const& input, std::size_t worst, Convert const& convert) {
  std::vector<Unit> buffer(worst * input.size() + 4);
  for (auto _ : state) {
    std::size_t const n = convert(input, buffer.data(), buffer.size());
    benchmark::DoNotOptimize(n);
    benchmark::DoNotOptimize(buffer.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(s.u8.size()));
}

// ---- iconv ---------------------------------------------------------------------

struct iconv_peer {
  iconv_t cd;
  iconv_peer(char const* to, char const* from) : cd(iconv_open(to, from)) {}
  ~iconv_peer() { iconv_close(cd); }
  iconv_peer(iconv_peer const&) = delete;
  iconv_peer& operator=(iconv_peer const&) = delete;

  template <typename From, typename Unit>
  std::size_t operator()(From const& in, Unit* out, std::size_t room) const {
    char* src = const_cast<char*>(reinterpret_cast<char const*>(in.data()));
    std::size_t src_left = in.size() * sizeof(typename From::value_type);
    char* dst = reinterpret_cast<char*>(out);
    std::size_t dst_left = room * sizeof(Unit);
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    iconv(cd, &src, &src_left, &dst, &dst_left);
    return room - dst_left / sizeof(Unit);
  }
};

// ---- ICU -------------------------------------------------------------------------

#if defined(VEXA_BENCH_HAVE_ICU)
std::size_t icu_8_to_16(ustring8 const& in, unsigned short* out, std::size_t room) {
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strFromUTF8(reinterpret_cast<UChar*>(out), int32_t(room), &len, in.data(), int32_t(in.size()), &err);
  return std::size_t(len);
}
std::size_t icu_16_to_8(ustring16 const& in, char* out, std::size_t room) {
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strToUTF8(out, int32_t(room), &len, reinterpret_cast<UChar const*>(in.data()), int32_t(in.size()), &err);
  return std::size_t(len);
}
std::size_t icu_32_to_16(ustring32 const& in, unsigned short* out, std::size_t room) {
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strFromUTF32(reinterpret_cast<UChar*>(out), int32_t(room), &len, reinterpret_cast<UChar32 const*>(in.data()),
                 int32_t(in.size()), &err);
  return std::size_t(len);
}
std::size_t icu_16_to_32(ustring16 const& in, wchar_t* out, std::size_t room) {
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strToUTF32(reinterpret_cast<UChar32*>(out), int32_t(room), &len, reinterpret_cast<UChar const*>(in.data()),
               int32_t(in.size()), &err);
  return std::size_t(len);
}
// ICU has no direct UTF-8 <-> UTF-32 entry points; it goes through UTF-16,
// in a second buffer made once.
std::size_t icu_8_to_32(ustring8 const& in, wchar_t* out, std::size_t room) {
  thread_local ustring16 middle;
  middle.resize(in.size() + 1);
  middle.resize(icu_8_to_16(in, &middle[0], middle.size()));
  return icu_16_to_32(middle, out, room);
}
std::size_t icu_32_to_8(ustring32 const& in, char* out, std::size_t room) {
  thread_local ustring16 middle;
  middle.resize(2 * in.size() + 1);
  middle.resize(icu_32_to_16(in, &middle[0], middle.size()));
  return icu_16_to_8(middle, out, room);
}

// A peer's result as a string, for the check below.
template <typename To, typename From, typename Convert>
To result_of(From const& in, std::size_t worst, Convert const& convert) {
  To out;
  out.resize(worst * in.size() + 4);
  out.resize(convert(in, &out[0], out.size()));
  return out;
}
#endif

// The peers must produce what we produce, or the comparison means nothing.
bool same_results() {
  bool same = true;
#if defined(VEXA_BENCH_HAVE_ICU)
  for (sample const& s : samples()) {
    if (result_of<ustring16>(s.u8, 1, icu_8_to_16) != s.u16 ||
        result_of<ustring8>(s.u16, 3, icu_16_to_8) != utf16_to_utf8(s.u16) ||
        result_of<ustring32>(s.u16, 1, icu_16_to_32) != s.u32 ||
        result_of<ustring8>(s.u32, 4, icu_32_to_8) != utf32_to_utf8(s.u32)) {
      std::fprintf(stderr, "bench_unicode: %s: ICU and vexa differ\n", s.name.c_str());
      same = false;
    }
  }
#endif
  return same;
}

using _private::unicode_kernel;

void register_all() {
  static iconv_peer const iconv_8_16("UTF-16LE", "UTF-8");
  static iconv_peer const iconv_16_8("UTF-8", "UTF-16LE");
  static iconv_peer const iconv_8_32("UTF-32LE", "UTF-8");
  static iconv_peer const iconv_32_8("UTF-8", "UTF-32LE");
  static iconv_peer const iconv_16_32("UTF-32LE", "UTF-16LE");
  static iconv_peer const iconv_32_16("UTF-16LE", "UTF-32LE");

  for (sample const& s : samples()) {
    auto add = [&](std::string const& what, std::string const& who, auto fn) {
      benchmark::RegisterBenchmark((what + "/" + s.name + "/" + who).c_str(), fn)->Unit(benchmark::kMicrosecond);
    };
    sample const* p = &s;
    // Ours once per kernel set this processor has, "vexa-avx2" and so on.
    for (unicode_kernel kernel :
         {unicode_kernel::avx512, unicode_kernel::avx2, unicode_kernel::ssse3, unicode_kernel::portable}) {
      if (!_private::unicode_kernel_available(kernel)) continue;
      std::string const who = std::string("vexa-") + _private::unicode_kernel_name(kernel);
      auto with = [kernel](auto body) {
        return [kernel, body](benchmark::State& st) {
          _private::force_unicode_kernel(kernel);
          body(st);
        };
      };
      add("utf8_to_utf16", who, with([p](benchmark::State& st) { run<ustring8, ustring16>(st, *p, p->u8, utf8_to_utf16); }));
      add("utf16_to_utf8", who, with([p](benchmark::State& st) { run<ustring16, ustring8>(st, *p, p->u16, utf16_to_utf8); }));
      add("utf8_to_utf32", who, with([p](benchmark::State& st) { run<ustring8, ustring32>(st, *p, p->u8, utf8_to_utf32); }));
      add("utf32_to_utf8", who, with([p](benchmark::State& st) { run<ustring32, ustring8>(st, *p, p->u32, utf32_to_utf8); }));
      add("utf16_to_utf32", who, with([p](benchmark::State& st) { run<ustring16, ustring32>(st, *p, p->u16, utf16_to_utf32); }));
      add("utf32_to_utf16", who, with([p](benchmark::State& st) { run<ustring32, ustring16>(st, *p, p->u32, utf32_to_utf16); }));
    }
    add("utf8_to_utf16", "iconv", [p](benchmark::State& st) { run_into<unsigned short>(st, *p, p->u8, 1, iconv_8_16); });
    add("utf16_to_utf8", "iconv", [p](benchmark::State& st) { run_into<char>(st, *p, p->u16, 3, iconv_16_8); });
    add("utf8_to_utf32", "iconv", [p](benchmark::State& st) { run_into<wchar_t>(st, *p, p->u8, 1, iconv_8_32); });
    add("utf32_to_utf8", "iconv", [p](benchmark::State& st) { run_into<char>(st, *p, p->u32, 4, iconv_32_8); });
    add("utf16_to_utf32", "iconv", [p](benchmark::State& st) { run_into<wchar_t>(st, *p, p->u16, 1, iconv_16_32); });
    add("utf32_to_utf16", "iconv", [p](benchmark::State& st) { run_into<unsigned short>(st, *p, p->u32, 2, iconv_32_16); });
#if defined(VEXA_BENCH_HAVE_ICU)
    add("utf8_to_utf16", "icu", [p](benchmark::State& st) { run_into<unsigned short>(st, *p, p->u8, 1, icu_8_to_16); });
    add("utf16_to_utf8", "icu", [p](benchmark::State& st) { run_into<char>(st, *p, p->u16, 3, icu_16_to_8); });
    add("utf8_to_utf32", "icu", [p](benchmark::State& st) { run_into<wchar_t>(st, *p, p->u8, 1, icu_8_to_32); });
    add("utf32_to_utf8", "icu", [p](benchmark::State& st) { run_into<char>(st, *p, p->u32, 4, icu_32_to_8); });
    add("utf16_to_utf32", "icu", [p](benchmark::State& st) { run_into<wchar_t>(st, *p, p->u16, 1, icu_16_to_32); });
    add("utf32_to_utf16", "icu", [p](benchmark::State& st) { run_into<unsigned short>(st, *p, p->u32, 2, icu_32_to_16); });
#endif
  }
}

}  // namespace

int main(int argc, char** argv) {
  load_samples();
  if (samples().empty()) {
    std::fprintf(stderr, "bench_unicode: no texts in %s\n", VEXA_BENCH_UNICODE_DIR);
    return 1;
  }
  if (!same_results()) return 1;
  register_all();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
