// code_page::encode and code_page::as_utf8 on 1 MB texts in three code pages
// (1252 western European, 1251 Cyrillic, 932 Japanese), side by side with
// glibc's iconv called directly and ICU's converters.
//
// The texts are the sample texts repeated to at least 1 MiB of UTF-8; the
// 1252 text is the Latin sample with every fifth vowel accented, so that it
// is not plain ASCII. Throughput is counted on the UTF-8 size in both
// directions.
//
// The peers get their best use: one descriptor or converter opened once and
// reset per call, one output string allocated at its worst-case size per
// call (every case returns a fresh string, as ours does), one conversion
// call. vexa opens and closes its descriptor on every call and grows its
// buffer as the conversion needs.
#include <benchmark/benchmark.h>
#include <iconv.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "vexa/strings/code_page.hpp"

#if defined(VEXA_BENCH_HAVE_ICU)
#include <unicode/ucnv.h>
#endif

namespace {

using vexa::strings::code_page;
using vexa::strings::ustring8;

std::size_t const text_size = 1u << 20;

struct sample {
  std::string name;      // "1252", ...
  code_page page;
  char const* iconv_name;
  char const* icu_name;
  ustring8 utf8;         // at least 1 MiB
  std::string bytes;     // the same text in the page
};

std::vector<sample>& samples() {
  static std::vector<sample> all;
  return all;
}

std::string read(std::string const& file) {
  std::ifstream in(std::string(VEXA_BENCH_UNICODE_DIR) + "/" + file, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// Every fifth vowel of an ASCII text gets an accent (two UTF-8 bytes).
std::string accented(std::string const& ascii) {
  static char const* const with_accent[] = {"\xC3\xA0", "\xC3\xA9", "\xC3\xAE", "\xC3\xB6", "\xC3\xBC"};
  std::string const vowels = "aeiou";
  std::string out;
  unsigned count = 0;
  for (char c : ascii) {
    std::size_t const v = vowels.find(c);
    if (v != std::string::npos && ++count % 5 == 0) {
      out += with_accent[v];
    } else {
      out += c;
    }
  }
  return out;
}

std::string repeated(std::string const& text) {
  std::string out;
  if (text.empty()) return out;
  while (out.size() < text_size) out += text;
  return out;
}

// ---- glibc's iconv, called directly ----------------------------------------------

class iconv_peer {
 public:
  iconv_peer(char const* to, char const* from, std::size_t worst)
      : _cd(iconv_open(to, from)), _worst(worst) {}
  ~iconv_peer() {
    if (_cd != reinterpret_cast<iconv_t>(-1)) iconv_close(_cd);
  }
  iconv_peer(iconv_peer const&) = delete;
  iconv_peer& operator=(iconv_peer const&) = delete;

  std::string operator()(std::string const& in) const {
    std::string out(in.size() * _worst, '\0');
    char* src = const_cast<char*>(in.data());
    std::size_t src_left = in.size();
    char* dst = &out[0];
    std::size_t dst_left = out.size();
    iconv(_cd, nullptr, nullptr, nullptr, nullptr);
    iconv(_cd, &src, &src_left, &dst, &dst_left);
    iconv(_cd, nullptr, nullptr, &dst, &dst_left);
    out.resize(out.size() - dst_left);
    return out;
  }

 private:
  iconv_t _cd;
  std::size_t _worst;  // output bytes per input byte, worst case
};

// ---- ICU ---------------------------------------------------------------------------

#if defined(VEXA_BENCH_HAVE_ICU)
// UTF-8 to and from a page in one ucnv_convertEx call, which takes ICU's
// direct paths between UTF-8 and its table-driven converters.
class icu_peer {
 public:
  icu_peer(char const* to, char const* from, std::size_t worst) : _worst(worst) {
    UErrorCode err = U_ZERO_ERROR;
    _to = ucnv_open(to, &err);
    _from = ucnv_open(from, &err);
    _ok = U_SUCCESS(err);
  }
  ~icu_peer() {
    if (_to) ucnv_close(_to);
    if (_from) ucnv_close(_from);
  }
  icu_peer(icu_peer const&) = delete;
  icu_peer& operator=(icu_peer const&) = delete;

  bool ok() const { return _ok; }

  std::string operator()(std::string const& in) const {
    std::string out(in.size() * _worst, '\0');
    char* dst = &out[0];
    char const* src = in.data();
    UErrorCode err = U_ZERO_ERROR;
    ucnv_convertEx(_to, _from, &dst, dst + out.size(), &src, src + in.size(), nullptr, nullptr,
                   nullptr, nullptr, true, true, &err);
    out.resize(static_cast<std::size_t>(dst - out.data()));
    return out;
  }

 private:
  UConverter* _to = nullptr;
  UConverter* _from = nullptr;
  bool _ok = false;
  std::size_t _worst;
};
#endif

// ---- cases -----------------------------------------------------------------------------

template <typename Input, typename Convert>
void run(benchmark::State& state, sample const& s, Input const& input, Convert const& convert) {
  for (auto _ : state) {
    std::string out = convert(input);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations()) *
                          static_cast<std::int64_t>(s.utf8.size()));
}

bool load_samples() {
  struct source { char const* name; code_page::encoding_type page; char const* iconv_name;
                  char const* icu_name; std::string text; };
  source const sources[] = {
      {"1252", code_page::cp1252, "CP1252", "windows-1252", accented(read("latin.utf8.txt"))},
      {"1251", code_page::cp1251, "CP1251", "windows-1251", read("russian.utf8.txt")},
      {"932", code_page::cp932, "WINDOWS-31J", "windows-31j", read("japanese.utf8.txt")},
  };
  for (source const& src : sources) {
    if (src.text.empty()) {
      std::fprintf(stderr, "bench_code_page: no sample text for %s in %s\n", src.name,
                   VEXA_BENCH_UNICODE_DIR);
      return false;
    }
    sample s{src.name, code_page(src.page), src.iconv_name, src.icu_name, repeated(src.text), ""};
    s.bytes = s.page.encode(s.utf8);
    if (s.page.as_utf8(s.bytes) != s.utf8) {
      std::fprintf(stderr, "bench_code_page: the %s text does not round-trip\n", src.name);
      return false;
    }
    samples().push_back(std::move(s));
  }
  return true;
}

// The peers live as long as the program: the registered cases point at them.
template <typename Peer>
Peer* keep(std::unique_ptr<Peer> peer) {
  static std::vector<std::unique_ptr<Peer>> all;
  all.push_back(std::move(peer));
  return all.back().get();
}

void register_all() {
  for (sample const& s : samples()) {
    sample const* p = &s;
    auto add = [&](std::string const& what, std::string const& who, auto fn) {
      benchmark::RegisterBenchmark((what + "/" + s.name + "/" + who).c_str(), fn)
          ->Unit(benchmark::kMicrosecond);
    };
    auto* to_page = keep(std::make_unique<iconv_peer>(s.iconv_name, "UTF-8", 1));
    auto* from_page = keep(std::make_unique<iconv_peer>("UTF-8", s.iconv_name, 3));
    if (to_page->operator()(s.utf8) != s.bytes || from_page->operator()(s.bytes) != s.utf8) {
      std::fprintf(stderr, "bench_code_page: %s: iconv and vexa differ\n", s.name.c_str());
    }
    add("encode", "vexa", [p](benchmark::State& st) {
      run(st, *p, p->utf8, [p](ustring8 const& in) { return p->page.encode(in); });
    });
    add("encode", "iconv", [p, to_page](benchmark::State& st) { run(st, *p, p->utf8, *to_page); });
    add("decode", "vexa", [p](benchmark::State& st) {
      run(st, *p, p->bytes, [p](std::string const& in) -> std::string { return p->page.as_utf8(in); });
    });
    add("decode", "iconv", [p, from_page](benchmark::State& st) { run(st, *p, p->bytes, *from_page); });
#if defined(VEXA_BENCH_HAVE_ICU)
    auto* icu_to = keep(std::make_unique<icu_peer>(s.icu_name, "UTF-8", 1));
    auto* icu_from = keep(std::make_unique<icu_peer>("UTF-8", s.icu_name, 3));
    if (!icu_to->ok() || !icu_from->ok()) {
      std::fprintf(stderr, "bench_code_page: ICU has no converter for %s\n", s.icu_name);
      continue;
    }
    if (icu_to->operator()(s.utf8) != s.bytes || icu_from->operator()(s.bytes) != s.utf8) {
      std::fprintf(stderr, "bench_code_page: %s: ICU and vexa differ (timed all the same)\n",
                   s.name.c_str());
    }
    add("encode", "icu", [p, icu_to](benchmark::State& st) { run(st, *p, p->utf8, *icu_to); });
    add("decode", "icu", [p, icu_from](benchmark::State& st) { run(st, *p, p->bytes, *icu_from); });
#endif
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (!load_samples()) return 1;
  register_all();
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  return 0;
}
