// Message catalogs: loading a directory of XMC files (1,000 messages in 4
// languages) and rendering a message with a string, an int and a memory size.
//
// Peers, each given its best use:
//  - GNU gettext: the same message in a .mo file compiled by msgfmt, looked up
//    with dgettext, its arguments put in with snprintf (the memory size scaled
//    by hand, as a gettext program would), into a std::string;
//  - ICU MessageFormat: a prepared pattern formatted with three arguments and
//    the result made UTF-8;
//  - pugixml: a DOM parse of the same files, the cost of reading the XML alone.
#include <benchmark/benchmark.h>
#include <libintl.h>
#include <stdlib.h>

#include <clocale>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "vexa/generic/varg_list.hpp"
#include "vexa/i18n/message_catalogs.hpp"

#ifdef VEXA_BENCH_HAVE_ICU
#include <unicode/msgfmt.h>
#include <unicode/unistr.h>
#endif
#ifdef VEXA_BENCH_HAVE_PUGIXML
#include <pugixml.hpp>
#endif

namespace {

using namespace vexa;
namespace fs = std::filesystem;

char const* const languages[] = {"en", "de", "fr", "es"};
int const messages_per_language = 1000;
int const files_per_language = 4;

// The rendered message in German, for the three arguments used throughout.
char const* const expected = "Datei report.txt hat 1234 Zeilen und 1.5 MB.";

struct fixture {
  std::string dir;
  std::vector<std::string> files;
  std::size_t bytes = 0;
  bool gettext_ready = false;

  fixture() {
    char pattern[] = "/tmp/vexa-bench-i18n-XXXXXX";
    dir = ::mkdtemp(pattern);
    write_catalogs();
    write_mo();
  }
  ~fixture() {
    std::error_code ignored;
    fs::remove_all(dir, ignored);
  }

  // 1,000 messages in each of 4 languages, in 16 files, each message with
  // text, a line break and typed arguments like a real catalog.
  void write_catalogs() {
    fs::create_directories(dir + "/xmc");
    for (char const* lang : languages) {
      for (int f = 0; f < files_per_language; ++f) {
        std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmc version=\"1.1\">\n  <catalog name=\"app\" lang=\"";
        text += lang;
        text += "\">\n";
        for (int m = f; m < messages_per_language; m += files_per_language) {
          std::string const n = std::to_string(m);
          text += "    <msg name=\"message_" + n + "\" meta=\"generated " + n + "\">\n      [" + lang + "] Message " +
                  n + " for <arg name=\"user\" type=\"string\"/>: <arg name=\"count\" type=\"int\"/> items of\n"
                  "      <arg name=\"size\" type=\"memory\" precision=\"1\"/> each, done in <arg name=\"ms\" "
                  "type=\"duration\"/>.<br/>Details &amp; more in the log.\n    </msg>\n";
        }
        if (f == 0 && std::string(lang) == "de")
          text += "    <msg name=\"file_info\">Datei <arg name=\"file\" type=\"string\"/> hat <arg name=\"lines\" "
                  "type=\"int\"/> Zeilen und <arg name=\"size\" type=\"memory\"/>.</msg>\n";
        text += "  </catalog>\n</xmc>\n";
        std::string const path = dir + "/xmc/" + lang + "_" + std::to_string(f) + ".xmc";
        std::ofstream(path, std::ios::binary) << text;
        files.push_back(path);
        bytes += text.size();
      }
    }
  }

  void write_mo() {
#ifdef VEXA_BENCH_MSGFMT
    fs::create_directories(dir + "/locale/de/LC_MESSAGES");
    std::ofstream(dir + "/bench.po") << "msgid \"\"\nmsgstr \"Content-Type: text/plain; charset=UTF-8\\n\"\n\n"
                                        "msgid \"File %s has %d lines and %.1f %s.\"\n"
                                        "msgstr \"Datei %s hat %d Zeilen und %.1f %s.\"\n";
    std::string const command = std::string(VEXA_BENCH_MSGFMT) + " -o " + dir + "/locale/de/LC_MESSAGES/bench.mo " +
                                dir + "/bench.po";
    if (std::system(command.c_str()) != 0) return;
    // dgettext honours LANGUAGE in any locale but plain "C".
    if (std::setlocale(LC_ALL, "C.UTF-8") == nullptr) return;
    ::setenv("LANGUAGE", "de", 1);
    bindtextdomain("bench", (dir + "/locale").c_str());
    bind_textdomain_codeset("bench", "UTF-8");
    gettext_ready = std::string(dgettext("bench", "File %s has %d lines and %.1f %s.")).rfind("Datei", 0) == 0;
#endif
  }
};

fixture& data() {
  static fixture f;
  return f;
}

void load_directory(benchmark::State& state) {
  fixture& f = data();
  for (auto _ : state) {
    i18n::message_catalogs catalogs;
    i18n::message_catalogs::result_type const r = catalogs.load(f.dir + "/xmc", "de");
    if (r.type() != 0 || catalogs.count("app") != messages_per_language + 1) state.SkipWithError("load failed");
    benchmark::DoNotOptimize(catalogs);
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * f.bytes));
}
BENCHMARK(load_directory)->Unit(benchmark::kMillisecond);

#ifdef VEXA_BENCH_HAVE_PUGIXML
void peer_pugixml_parse(benchmark::State& state) {
  fixture& f = data();
  for (auto _ : state) {
    for (std::string const& path : f.files) {
      pugi::xml_document doc;
      if (!doc.load_file(path.c_str())) state.SkipWithError("parse failed");
      benchmark::DoNotOptimize(doc);
    }
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * f.bytes));
}
BENCHMARK(peer_pugixml_parse)->Unit(benchmark::kMillisecond);
#endif

void render_three_arguments(benchmark::State& state) {
  fixture& f = data();
  i18n::message_catalogs catalogs;
  catalogs.load(f.dir + "/xmc", "de");
  i18n::message_t const& message = catalogs.message("app", "file_info");
  generic::varg_list const args(generic::argument("file", "report.txt"), generic::argument("lines", 1234),
                                generic::argument("size", 1572864ul));
  if (message.as_string(args) != expected) state.SkipWithError(("unexpected: " + message.as_string(args)).c_str());
  for (auto _ : state) {
    strings::ustring8 text = message.as_string(args);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(render_three_arguments);

#ifdef VEXA_BENCH_MSGFMT
// The memory size scaled the way format_value does it, then snprintf.
std::string gettext_render(char const* file, int lines, unsigned long size) {
  static char const units[][3] = {"B", "KB", "MB", "GB", "TB", "PB", "EB"};
  double scaled = static_cast<double>(size);
  int unit = 0;
  while (scaled >= 1024.0 && unit < 6) {
    scaled /= 1024.0;
    ++unit;
  }
  char buffer[256];
  int const n = std::snprintf(buffer, sizeof buffer, dgettext("bench", "File %s has %d lines and %.1f %s."), file,
                              lines, scaled, units[unit]);
  return std::string(buffer, n > 0 ? static_cast<std::size_t>(n) : 0);
}

void peer_gettext_snprintf(benchmark::State& state) {
  if (!data().gettext_ready) {
    state.SkipWithError("no German .mo (msgfmt or the C.UTF-8 locale is missing)");
    return;
  }
  if (gettext_render("report.txt", 1234, 1572864) != expected) state.SkipWithError("unexpected text");
  for (auto _ : state) {
    std::string text = gettext_render("report.txt", 1234, 1572864);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(peer_gettext_snprintf);
#endif

#ifdef VEXA_BENCH_HAVE_ICU
void peer_icu_message_format(benchmark::State& state) {
  UErrorCode status = U_ZERO_ERROR;
  icu::MessageFormat format(icu::UnicodeString::fromUTF8("Datei {0} hat {1,number,0} Zeilen und {2,number,0.0} {3}."),
                            icu::Locale::getUS(), status);
  if (U_FAILURE(status)) {
    state.SkipWithError("pattern refused");
    return;
  }
  auto render = [&format](UErrorCode& s) {
    icu::Formattable const args[] = {icu::UnicodeString::fromUTF8("report.txt"), icu::Formattable(1234),
                                     icu::Formattable(1572864.0 / 1048576.0), icu::UnicodeString::fromUTF8("MB")};
    icu::UnicodeString out;
    icu::FieldPosition pos;
    format.format(args, 4, out, pos, s);
    std::string utf8;
    return out.toUTF8String(utf8);
  };
  std::string const first = render(status);
  if (first != expected) state.SkipWithError(("unexpected: " + first).c_str());
  for (auto _ : state) {
    std::string text = render(status);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(peer_icu_message_format);
#endif

}  // namespace

BENCHMARK_MAIN();
