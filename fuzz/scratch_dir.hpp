// vexa fuzzing — a scratch folder made fresh for one input and removed with
// everything in it afterwards, for targets that must read their input as a
// file.
//
//   vexa_fuzz::scratch_dir dir;
//   std::string const path = dir.write("a.cfg", text);   // "/tmp/vexa-fuzz-XXXXXX/a.cfg"
#ifndef VEXA_FUZZ_SCRATCH_DIR_HPP
#define VEXA_FUZZ_SCRATCH_DIR_HPP

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "fuzz_support.hpp"

namespace vexa_fuzz {

class scratch_dir {
 public:
  scratch_dir() {
    std::error_code error;
    std::string pattern = (std::filesystem::temp_directory_path(error) / "vexa-fuzz-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) fail(__FILE__, __LINE__, "mkdtemp", pattern);
    _path = pattern;
  }
  ~scratch_dir() {
    std::error_code error;
    std::filesystem::remove_all(_path, error);
  }
  scratch_dir(scratch_dir const&) = delete;
  scratch_dir& operator=(scratch_dir const&) = delete;

  std::string const& path() const { return _path; }

  // Writes `bytes` to the file `name` inside the folder; returns its path.
  std::string write(std::string const& name, std::string const& bytes) const {
    std::string const file = _path + "/" + name;
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return file;
  }

 private:
  std::string _path;
};

}  // namespace vexa_fuzz

#endif  // VEXA_FUZZ_SCRATCH_DIR_HPP
