// The configuration store against INI readers: loading one generated file of
// 10,000 lines (100 sections of 99 keys "subJ.keyK"), and 100,000 look-ups of
// three-level keys ("secI.subJ.keyK") per iteration, through
// config_manager::get_value for the library (command line, file and
// environment sources, so a look-up passes the command line first).
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "vexa/config/config_manager.hpp"
#include "vexa/config/file_item.hpp"
#include "vexa/config/std_config_dispatch.hpp"

#if VEXA_BENCH_HAVE_INIH
#include <INIReader.h>
#include <ini.h>
#endif
#if VEXA_BENCH_HAVE_BOOST
#include <boost/property_tree/ini_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#endif

namespace {

using namespace vexa;

constexpr int sections = 100;
constexpr int keys_per_section = 99;
constexpr int subs = 9;
constexpr int lookups = 100000;

struct key_parts {
  std::string section, name, full;
};

// The file, written once into a temporary directory, and the keys to look up.
struct fixture {
  fixture() {
    char dir_template[] = "/tmp/vexa-config-bench-XXXXXX";
    dir = mkdtemp(dir_template);
    path = dir + "/bench.cfg";
    std::string text;
    for (int s = 0; s < sections; ++s) {
      text += "[sec" + std::to_string(s) + "]\n";
      for (int k = 0; k < keys_per_section; ++k) {
        text += "sub" + std::to_string(k % subs) + ".key" + std::to_string(k) + " = value" +
                std::to_string(s * 1000 + k) + "\n";
      }
    }
    std::FILE* f = std::fopen(path.c_str(), "wb");
    std::fwrite(text.data(), 1, text.size(), f);
    std::fclose(f);

    std::mt19937 random(7);
    for (int i = 0; i < lookups; ++i) {
      int const s = static_cast<int>(random() % sections), k = static_cast<int>(random() % keys_per_section);
      std::string const section = "sec" + std::to_string(s);
      std::string const name = "sub" + std::to_string(k % subs) + ".key" + std::to_string(k);
      keys.push_back({section, name, section + "." + name});
    }
  }
  ~fixture() {
    std::remove(path.c_str());
    rmdir(dir.c_str());
  }
  std::string dir, path;
  std::vector<key_parts> keys;
};

fixture const& data() {
  static fixture const f;
  return f;
}

char const* const bench_argv[] = {"bench", "--verbose", "--net.port=80"};
char const* const bench_envp[] = {"HOME=/home/bench", "PATH=/usr/bin:/bin", "LANG=C.UTF-8", "TERM=xterm", nullptr};

// ---- loading -------------------------------------------------------------------

void load_vexa(benchmark::State& state) {
  for (auto _ : state) {
    config::file_item item(data().path);
    item.load_file();
    benchmark::DoNotOptimize(item.tree().children().size());
  }
}
BENCHMARK(load_vexa)->Unit(benchmark::kMicrosecond);

#if VEXA_BENCH_HAVE_INIH
void load_inih_inireader(benchmark::State& state) {
  for (auto _ : state) {
    INIReader reader(data().path);
    benchmark::DoNotOptimize(reader.ParseError());
  }
}
BENCHMARK(load_inih_inireader)->Unit(benchmark::kMicrosecond);

// The C parser with the fastest storage at hand: an unordered map of
// "section.name" to value (no case folding).
int store_pair(void* user, char const* section, char const* name, char const* value) {
  auto& map = *static_cast<std::unordered_map<std::string, std::string>*>(user);
  std::string key(section);
  key += '.';
  key += name;
  map[std::move(key)] = value;
  return 1;
}

void load_inih_c_unordered_map(benchmark::State& state) {
  for (auto _ : state) {
    std::unordered_map<std::string, std::string> map;
    ini_parse(data().path.c_str(), store_pair, &map);
    benchmark::DoNotOptimize(map.size());
  }
}
BENCHMARK(load_inih_c_unordered_map)->Unit(benchmark::kMicrosecond);
#endif

#if VEXA_BENCH_HAVE_BOOST
void load_boost_ptree(benchmark::State& state) {
  for (auto _ : state) {
    boost::property_tree::ptree tree;
    boost::property_tree::read_ini(data().path, tree);
    benchmark::DoNotOptimize(tree.size());
  }
}
BENCHMARK(load_boost_ptree)->Unit(benchmark::kMicrosecond);
#endif

// ---- look-ups ------------------------------------------------------------------

void lookup_vexa_manager(benchmark::State& state) {
  config::config_manager manager;
  manager.init(config::std_config_dispatch(3, bench_argv, bench_envp, data().path, ""));
  manager.load();
  std::vector<strings::ustring8> keys;
  for (auto const& k : data().keys) keys.emplace_back(k.full);
  for (auto _ : state) {
    for (auto const& key : keys) {
      types::variant value = manager.get_value(key);
      benchmark::DoNotOptimize(value);
    }
  }
  state.SetItemsProcessed(state.iterations() * lookups);
}
BENCHMARK(lookup_vexa_manager)->Unit(benchmark::kMicrosecond);

#if VEXA_BENCH_HAVE_INIH
void lookup_inih_inireader(benchmark::State& state) {
  INIReader reader(data().path);
  for (auto _ : state) {
    for (auto const& key : data().keys) {
      std::string value = reader.Get(key.section, key.name, "");
      benchmark::DoNotOptimize(value);
    }
  }
  state.SetItemsProcessed(state.iterations() * lookups);
}
BENCHMARK(lookup_inih_inireader)->Unit(benchmark::kMicrosecond);

void lookup_inih_c_unordered_map(benchmark::State& state) {
  std::unordered_map<std::string, std::string> map;
  ini_parse(data().path.c_str(), store_pair, &map);
  for (auto _ : state) {
    for (auto const& key : data().keys) {
      auto const found = map.find(key.full);
      std::string value = found == map.end() ? std::string() : found->second;
      benchmark::DoNotOptimize(value);
    }
  }
  state.SetItemsProcessed(state.iterations() * lookups);
}
BENCHMARK(lookup_inih_c_unordered_map)->Unit(benchmark::kMicrosecond);
#endif

#if VEXA_BENCH_HAVE_BOOST
void lookup_boost_ptree(benchmark::State& state) {
  boost::property_tree::ptree tree;
  boost::property_tree::read_ini(data().path, tree);
  using path = boost::property_tree::ptree::path_type;
  std::vector<path> paths;
  for (auto const& key : data().keys) paths.emplace_back(key.section + "/" + key.name, '/');
  for (auto _ : state) {
    for (auto const& p : paths) {
      auto const value = tree.get_optional<std::string>(p);
      benchmark::DoNotOptimize(value);
    }
  }
  state.SetItemsProcessed(state.iterations() * lookups);
}
BENCHMARK(lookup_boost_ptree)->Unit(benchmark::kMicrosecond);
#endif

}  // namespace

BENCHMARK_MAIN();
