// The bytes a system call receives for a path of any of the string types.
//
// A ustring8 is passed as it is (no copy). A ustring16 or ustring32 is
// converted to UTF-8. `get()` is null when the path names no file: it holds a
// NUL byte (the C library would see a shorter path), or its conversion failed
// (the transforms answer "-1" for an unpaired surrogate; a path that really is
// "-1" still converts to "-1").
#ifndef VEXA_SRC_SYSTEM_NATIVE_PATH_HPP
#define VEXA_SRC_SYSTEM_NATIVE_PATH_HPP

#include <cstring>
#include <string>

#include "vexa/generic/convert/to_utf8.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace system {
namespace _private {

class native_path {
 public:
  explicit native_path(strings::ustring8 const& path)
      : bytes_(path.find('\0') == std::string::npos ? path.c_str() : nullptr), size_(path.size()) {}

  template <typename String>
  explicit native_path(String const& path) : storage_(generic::convert::to_utf8(path)) {
    bool const failed = storage_ == "-1" && !(path.size() == 2 && path[0] == '-' && path[1] == '1');
    if (!failed && storage_.find('\0') == std::string::npos) bytes_ = storage_.c_str();
    size_ = storage_.size();
  }

  native_path(native_path const&) = delete;
  native_path& operator=(native_path const&) = delete;

  // The 0-terminated bytes, or null when the path names no file.
  char const* get() const { return bytes_; }
  std::size_t size() const { return size_; }

 private:
  strings::ustring8 storage_;
  char const* bytes_ = nullptr;
  std::size_t size_ = 0;
};

}  // namespace _private
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SRC_SYSTEM_NATIVE_PATH_HPP
