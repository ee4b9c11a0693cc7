// Whole files in and out, and a walk over 10,000 files, each beside the
// plainest standard way to do the same work. Inputs are generated under a
// fresh directory in memory (/dev/shm when there is one, so that disk
// write-back does not blur the figures), removed at the end.
#include <benchmark/benchmark.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "vexa/system/file.hpp"

namespace {

namespace fs = std::filesystem;
using vexa::strings::ustring8;

// ---- inputs ------------------------------------------------------------------

struct workspace {
  std::string root;
  std::string small_file, large_file, tree;
  ustring8 small_content, large_content;

  workspace() {
    std::error_code ec;
    std::string const base = fs::is_directory("/dev/shm", ec) && ::access("/dev/shm", W_OK) == 0
                                 ? std::string("/dev/shm")
                                 : fs::temp_directory_path().string();
    std::string pattern = base + "/vexa-bench-system-XXXXXX";
    if (::mkdtemp(&pattern[0]) == nullptr) throw std::runtime_error("mkdtemp failed");
    root = pattern;
    small_file = root + "/small.bin";
    large_file = root + "/large.bin";
    small_content = bytes(1u << 20);
    large_content = bytes(100u << 20);
    vexa::system::store_file(ustring8(small_file), small_content);
    vexa::system::store_file(ustring8(large_file), large_content);
    // 10 x 10 directories of 100 files each: 10,000 files, 111 directories.
    tree = root + "/tree";
    for (int a = 0; a < 10; ++a) {
      for (int b = 0; b < 10; ++b) {
        std::string const dir = tree + "/d" + std::to_string(a) + "/e" + std::to_string(b) + "/";
        vexa::system::create_directory(ustring8(dir));
        for (int f = 0; f < 100; ++f)
          vexa::system::store_file(ustring8(dir + "file" + std::to_string(f) + ".txt"), ustring8("x"));
      }
    }
  }
  ~workspace() {
    std::error_code ec;
    fs::remove_all(root, ec);
  }

  static ustring8 bytes(std::size_t n) {
    ustring8 out(n, '\0');
    std::uint32_t x = 2463534242u;
    for (char& c : out) {
      x ^= x << 13;
      x ^= x >> 17;
      x ^= x << 5;
      c = static_cast<char>(x);
    }
    return out;
  }
};

workspace& inputs() {
  static workspace w;
  return w;
}

std::string const& file_for(benchmark::State const& state) {
  return state.range(0) == 1 ? inputs().small_file : inputs().large_file;
}

ustring8 const& content_for(benchmark::State const& state) {
  return state.range(0) == 1 ? inputs().small_content : inputs().large_content;
}

void bytes_processed(benchmark::State& state) {
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * state.range(0) * (1 << 20));
}

// ---- reading a whole file ------------------------------------------------------

void load_file_vexa(benchmark::State& state) {
  ustring8 const path(file_for(state));
  for (auto _ : state) {
    ustring8 content;
    vexa::system::load_file(path, content);
    benchmark::DoNotOptimize(content.data());
  }
  bytes_processed(state);
}
BENCHMARK(load_file_vexa)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

void load_file_ifstream(benchmark::State& state) {
  std::string const& path = file_for(state);
  for (auto _ : state) {
    std::ifstream in(path, std::ios::binary);
    in.seekg(0, std::ios::end);
    std::string content(static_cast<std::size_t>(in.tellg()), '\0');
    in.seekg(0, std::ios::beg);
    in.read(&content[0], static_cast<std::streamsize>(content.size()));
    benchmark::DoNotOptimize(content.data());
  }
  bytes_processed(state);
}
BENCHMARK(load_file_ifstream)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

void load_file_fread(benchmark::State& state) {
  std::string const& path = file_for(state);
  for (auto _ : state) {
    std::FILE* f = std::fopen(path.c_str(), "rb");
    std::fseek(f, 0, SEEK_END);
    std::string content(static_cast<std::size_t>(std::ftell(f)), '\0');
    std::fseek(f, 0, SEEK_SET);
    std::size_t const got = std::fread(&content[0], 1, content.size(), f);
    std::fclose(f);
    benchmark::DoNotOptimize(got);
    benchmark::DoNotOptimize(content.data());
  }
  bytes_processed(state);
}
BENCHMARK(load_file_fread)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

// ---- writing a whole file -------------------------------------------------------

void store_file_vexa(benchmark::State& state) {
  ustring8 const path(inputs().root + "/out_vexa.bin");
  ustring8 const& content = content_for(state);
  for (auto _ : state) benchmark::DoNotOptimize(vexa::system::store_file(path, content));
  bytes_processed(state);
}
BENCHMARK(store_file_vexa)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

void store_file_fwrite(benchmark::State& state) {
  std::string const path = inputs().root + "/out_fwrite.bin";
  ustring8 const& content = content_for(state);
  for (auto _ : state) {
    std::FILE* f = std::fopen(path.c_str(), "wb");
    benchmark::DoNotOptimize(std::fwrite(content.data(), 1, content.size(), f));
    std::fclose(f);
  }
  bytes_processed(state);
}
BENCHMARK(store_file_fwrite)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

void store_file_ofstream(benchmark::State& state) {
  std::string const path = inputs().root + "/out_ofstream.bin";
  ustring8 const& content = content_for(state);
  for (auto _ : state) {
    std::ofstream out(path, std::ios::binary);
    out.write(content.data(), static_cast<std::streamsize>(content.size()));
  }
  bytes_processed(state);
}
BENCHMARK(store_file_ofstream)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

// ---- walking a tree of 10,000 files -----------------------------------------------

void directory_files_vexa(benchmark::State& state) {
  ustring8 const tree(inputs().tree);
  for (auto _ : state) {
    vexa::strings::ustring8_vector files;
    vexa::system::get_directory_files(tree, files);
    if (files.size() != 10000) state.SkipWithError("wrong file count");
    benchmark::DoNotOptimize(files.data());
  }
}
BENCHMARK(directory_files_vexa)->Unit(benchmark::kMillisecond);

// The same answer the standard way: a stat per entry for the kind and the
// owner-read bit, full paths collected.
void directory_files_recursive_iterator(benchmark::State& state) {
  fs::path const tree(inputs().tree);
  for (auto _ : state) {
    std::vector<std::string> files;
    for (fs::recursive_directory_iterator it(tree), end; it != end; ++it) {
      struct stat info;
      if (::stat(it->path().c_str(), &info) != 0 || (info.st_mode & S_IRUSR) == 0) continue;
      if (S_ISREG(info.st_mode)) files.push_back(it->path().string());
    }
    if (files.size() != 10000) state.SkipWithError("wrong file count");
    benchmark::DoNotOptimize(files.data());
  }
}
BENCHMARK(directory_files_recursive_iterator)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
