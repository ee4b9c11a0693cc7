// vexa fuzzing — the replay driver that turns a fuzz target into a plain
// program (g++ builds, the CTest replays).
//
// Every argument is a file or a folder; folders are walked recursively and
// their files run in name order, so a failure names the same input on every
// machine. Each file is read whole and handed to LLVMFuzzerTestOneInput
// once. A broken property aborts inside the target; the driver itself fails
// only when an argument cannot be read or no input was found at all.
//
//   bin/str_to_x_fuzz fuzz/corpus/str_to_x        // "str_to_x_fuzz: 42 inputs replayed"
//   bin/str_to_x_fuzz crash-0a1b2c                // one finding
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

#include "fuzz_support.hpp"

namespace {

namespace fs = std::filesystem;

bool collect(fs::path const& where, std::vector<fs::path>& files) {
  std::error_code error;
  if (fs::is_regular_file(where, error)) {
    files.push_back(where);
    return true;
  }
  if (!fs::is_directory(where, error)) return false;
  for (fs::recursive_directory_iterator it(where, error), end; !error && it != end;
       it.increment(error)) {
    if (it->is_regular_file(error)) files.push_back(it->path());
  }
  return !error;
}

bool replay(fs::path const& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) return false;
  std::vector<char> const bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  // A copy of exactly the file's size, so that the sanitizers see a read
  // past the input as what it is.
  std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(data.empty() ? nullptr : data.data(), data.size());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  std::string const name = argc > 0 ? fs::path(argv[0]).filename().string() : "replay";
  std::vector<fs::path> files;
  for (int i = 1; i < argc; ++i) {
    std::vector<fs::path> found;
    if (!collect(argv[i], found)) {
      std::fprintf(stderr, "%s: cannot read %s\n", name.c_str(), argv[i]);
      return 1;
    }
    std::sort(found.begin(), found.end());
    files.insert(files.end(), found.begin(), found.end());
  }
  if (files.empty()) {
    std::fprintf(stderr, "usage: %s FILE|FOLDER... (no input found)\n", name.c_str());
    return 1;
  }
  for (fs::path const& file : files) {
    if (!replay(file)) {
      std::fprintf(stderr, "%s: cannot read %s\n", name.c_str(), file.c_str());
      return 1;
    }
  }
  std::printf("%s: %zu inputs replayed\n", name.c_str(), files.size());
  return 0;
}
