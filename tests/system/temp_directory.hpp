// Fresh directories for file-system tests, removed with everything in them
// (permissions restored first, so tests may take them away), and small
// helpers around them.
#ifndef VEXA_TESTS_SYSTEM_TEMP_DIRECTORY_HPP
#define VEXA_TESTS_SYSTEM_TEMP_DIRECTORY_HPP

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "vexa/strings/ustring.hpp"

namespace vexa_test {

class temp_directory {
 public:
  temp_directory() {
    std::string pattern = std::filesystem::temp_directory_path().string() + "/vexa-system-XXXXXX";
    if (::mkdtemp(&pattern[0]) != nullptr) path_ = pattern;
  }
  ~temp_directory() {
    namespace fs = std::filesystem;
    std::error_code ec;
    for (auto it = fs::recursive_directory_iterator(path_, ec); !ec && it != fs::end(it); it.increment(ec))
      if (it->is_directory(ec) && !it->is_symlink(ec))
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(path_, ec);
  }
  temp_directory(temp_directory const&) = delete;
  temp_directory& operator=(temp_directory const&) = delete;

  std::string const& path() const { return path_; }
  std::string operator/(std::string const& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// The working directory set to `dir` for one scope (for the relative rules).
class working_directory {
 public:
  explicit working_directory(std::string const& dir) : saved_(std::filesystem::current_path()) {
    std::filesystem::current_path(dir);
  }
  ~working_directory() {
    std::error_code ec;
    std::filesystem::current_path(saved_, ec);
  }

 private:
  std::filesystem::path saved_;
};

inline void touch(std::string const& path) {
  std::FILE* f = std::fopen(path.c_str(), "w");
  ASSERT_NE(f, nullptr) << path;
  std::fclose(f);
}

inline bool on_disk(std::string const& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0;
}

inline vexa::strings::ustring16 u16(std::string const& ascii) {
  return vexa::strings::ustring16(ascii.begin(), ascii.end());
}
inline vexa::strings::ustring32 u32(std::string const& ascii) {
  return vexa::strings::ustring32(ascii.begin(), ascii.end());
}

}  // namespace vexa_test

#endif  // VEXA_TESTS_SYSTEM_TEMP_DIRECTORY_HPP
