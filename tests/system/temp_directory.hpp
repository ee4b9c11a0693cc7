// A fresh directory under the system's temporary folder for one test, removed
// with everything in it when the test ends (permissions are restored first,
// so tests may take them away).
#ifndef VEXA_TESTS_SYSTEM_TEMP_DIRECTORY_HPP
#define VEXA_TESTS_SYSTEM_TEMP_DIRECTORY_HPP

#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <system_error>

namespace vexa_test {

class temp_directory {
 public:
  temp_directory() {
    std::string pattern = std::filesystem::temp_directory_path().string() + "/vexa-system-XXXXXX";
    if (::mkdtemp(&pattern[0]) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
  }
  ~temp_directory() {
    namespace fs = std::filesystem;
    std::error_code ec;
    for (auto it = fs::recursive_directory_iterator(path_, ec); !ec && it != fs::end(it);
         it.increment(ec)) {
      if (it->is_directory(ec) && !it->is_symlink(ec))
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
    }
    fs::remove_all(path_, ec);
  }
  temp_directory(temp_directory const&) = delete;
  temp_directory& operator=(temp_directory const&) = delete;

  std::string const& path() const { return path_; }
  std::string operator/(std::string const& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

// Runs the test body with the working directory set to `dir`, restoring it
// afterwards (for the relative-path rules).
class working_directory {
 public:
  explicit working_directory(std::string const& dir) : saved_(std::filesystem::current_path()) {
    std::filesystem::current_path(dir);
  }
  ~working_directory() {
    std::error_code ec;
    std::filesystem::current_path(saved_, ec);
  }
  working_directory(working_directory const&) = delete;
  working_directory& operator=(working_directory const&) = delete;

 private:
  std::filesystem::path saved_;
};

}  // namespace vexa_test

#endif  // VEXA_TESTS_SYSTEM_TEMP_DIRECTORY_HPP
