// The six Unicode transforms on every sample text, side by side with ICU and
// glibc's iconv. Throughput is counted on the UTF-8 size of each text, so the
// numbers of one text compare across directions.
//
// Every peer returns a fresh string sized as ours is (worst case, then cut),
// so allocation is part of every case.
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

// ---- iconv ---------------------------------------------------------------------

template <typename To>
struct iconv_peer {
  iconv_t cd;
  std::size_t worst;  // output units per input byte, worst case
  iconv_peer(char const* to, char const* from, std::size_t worst_units) : cd(iconv_open(to, from)), worst(worst_units) {}
  ~iconv_peer() { iconv_close(cd); }
  iconv_peer(iconv_peer const&) = delete;
  iconv_peer& operator=(iconv_peer const&) = delete;

  template <typename From>
  To operator()(From const& in) const {
    To out;
    out.resize(in.size() * sizeof(typename From::value_type) * worst + 4);
    char* src = const_cast<char*>(reinterpret_cast<char const*>(in.data()));
    std::size_t src_left = in.size() * sizeof(typename From::value_type);
    char* dst = reinterpret_cast<char*>(&out[0]);
    std::size_t dst_left = out.size() * sizeof(typename To::value_type);
    iconv(cd, nullptr, nullptr, nullptr, nullptr);
    iconv(cd, &src, &src_left, &dst, &dst_left);
    out.resize(out.size() - dst_left / sizeof(typename To::value_type));
    return out;
  }
};

// ---- ICU -------------------------------------------------------------------------

#if defined(VEXA_BENCH_HAVE_ICU)
ustring16 icu_8_to_16(ustring8 const& in) {
  ustring16 out;
  out.resize(in.size() + 1);
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strFromUTF8(reinterpret_cast<UChar*>(&out[0]), int32_t(out.size()), &len, in.data(), int32_t(in.size()), &err);
  out.resize(std::size_t(len));
  return out;
}
ustring8 icu_16_to_8(ustring16 const& in) {
  ustring8 out;
  out.resize(3 * in.size() + 1);
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strToUTF8(&out[0], int32_t(out.size()), &len, reinterpret_cast<UChar const*>(in.data()), int32_t(in.size()), &err);
  out.resize(std::size_t(len));
  return out;
}
ustring16 icu_32_to_16(ustring32 const& in) {
  ustring16 out;
  out.resize(2 * in.size() + 1);
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strFromUTF32(reinterpret_cast<UChar*>(&out[0]), int32_t(out.size()), &len,
                 reinterpret_cast<UChar32 const*>(in.data()), int32_t(in.size()), &err);
  out.resize(std::size_t(len));
  return out;
}
ustring32 icu_16_to_32(ustring16 const& in) {
  ustring32 out;
  out.resize(in.size() + 1);
  int32_t len = 0;
  UErrorCode err = U_ZERO_ERROR;
  u_strToUTF32(reinterpret_cast<UChar32*>(&out[0]), int32_t(out.size()), &len,
               reinterpret_cast<UChar const*>(in.data()), int32_t(in.size()), &err);
  out.resize(std::size_t(len));
  return out;
}
// ICU has no direct UTF-8 <-> UTF-32 entry points; it goes through UTF-16.
ustring32 icu_8_to_32(ustring8 const& in) { return icu_16_to_32(icu_8_to_16(in)); }
ustring8 icu_32_to_8(ustring32 const& in) { return icu_16_to_8(icu_32_to_16(in)); }
#endif

// The peers must produce what we produce, or the comparison means nothing.
bool same_results() {
  bool same = true;
#if defined(VEXA_BENCH_HAVE_ICU)
  for (sample const& s : samples()) {
    if (icu_8_to_16(s.u8) != s.u16 || icu_16_to_8(s.u16) != utf16_to_utf8(s.u16) ||
        icu_16_to_32(s.u16) != s.u32 || icu_32_to_8(s.u32) != utf32_to_utf8(s.u32)) {
      std::fprintf(stderr, "bench_unicode: %s: ICU and vexa differ\n", s.name.c_str());
      same = false;
    }
  }
#endif
  return same;
}

void register_all() {
  static iconv_peer<ustring16> const iconv_8_16("UTF-16LE", "UTF-8", 1);
  static iconv_peer<ustring8> const iconv_16_8("UTF-8", "UTF-16LE", 2);
  static iconv_peer<ustring32> const iconv_8_32("UTF-32LE", "UTF-8", 1);
  static iconv_peer<ustring8> const iconv_32_8("UTF-8", "UTF-32LE", 1);
  static iconv_peer<ustring32> const iconv_16_32("UTF-32LE", "UTF-16LE", 1);
  static iconv_peer<ustring16> const iconv_32_16("UTF-16LE", "UTF-32LE", 1);

  for (sample const& s : samples()) {
    auto add = [&](std::string const& what, std::string const& who, auto fn) {
      benchmark::RegisterBenchmark((what + "/" + s.name + "/" + who).c_str(), fn)->Unit(benchmark::kMicrosecond);
    };
    sample const* p = &s;
    add("utf8_to_utf16", "vexa", [p](benchmark::State& st) { run<ustring8, ustring16>(st, *p, p->u8, utf8_to_utf16); });
    add("utf8_to_utf16", "iconv", [p](benchmark::State& st) { run<ustring8, ustring16>(st, *p, p->u8, iconv_8_16); });
    add("utf16_to_utf8", "vexa", [p](benchmark::State& st) { run<ustring16, ustring8>(st, *p, p->u16, utf16_to_utf8); });
    add("utf16_to_utf8", "iconv", [p](benchmark::State& st) { run<ustring16, ustring8>(st, *p, p->u16, iconv_16_8); });
    add("utf8_to_utf32", "vexa", [p](benchmark::State& st) { run<ustring8, ustring32>(st, *p, p->u8, utf8_to_utf32); });
    add("utf8_to_utf32", "iconv", [p](benchmark::State& st) { run<ustring8, ustring32>(st, *p, p->u8, iconv_8_32); });
    add("utf32_to_utf8", "vexa", [p](benchmark::State& st) { run<ustring32, ustring8>(st, *p, p->u32, utf32_to_utf8); });
    add("utf32_to_utf8", "iconv", [p](benchmark::State& st) { run<ustring32, ustring8>(st, *p, p->u32, iconv_32_8); });
    add("utf16_to_utf32", "vexa", [p](benchmark::State& st) { run<ustring16, ustring32>(st, *p, p->u16, utf16_to_utf32); });
    add("utf16_to_utf32", "iconv", [p](benchmark::State& st) { run<ustring16, ustring32>(st, *p, p->u16, iconv_16_32); });
    add("utf32_to_utf16", "vexa", [p](benchmark::State& st) { run<ustring32, ustring16>(st, *p, p->u32, utf32_to_utf16); });
    add("utf32_to_utf16", "iconv", [p](benchmark::State& st) { run<ustring32, ustring16>(st, *p, p->u32, iconv_32_16); });
#if defined(VEXA_BENCH_HAVE_ICU)
    add("utf8_to_utf16", "icu", [p](benchmark::State& st) { run<ustring8, ustring16>(st, *p, p->u8, icu_8_to_16); });
    add("utf16_to_utf8", "icu", [p](benchmark::State& st) { run<ustring16, ustring8>(st, *p, p->u16, icu_16_to_8); });
    add("utf8_to_utf32", "icu", [p](benchmark::State& st) { run<ustring8, ustring32>(st, *p, p->u8, icu_8_to_32); });
    add("utf32_to_utf8", "icu", [p](benchmark::State& st) { run<ustring32, ustring8>(st, *p, p->u32, icu_32_to_8); });
    add("utf16_to_utf32", "icu", [p](benchmark::State& st) { run<ustring16, ustring32>(st, *p, p->u16, icu_16_to_32); });
    add("utf32_to_utf16", "icu", [p](benchmark::State& st) { run<ustring32, ustring16>(st, *p, p->u32, icu_32_to_16); });
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
