#include "vexa/system/io.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>

#include "system/native_path.hpp"

namespace VEXA_2_10 {
namespace system {
namespace io {

namespace {

using _private::native_path;

// The mode `stat` reports, or 0 when it fails (no kind bit is set in 0).
unsigned int mode_of(native_path const& path) {
  struct stat info;
  if (path.get() == nullptr || ::stat(path.get(), &info) != 0) return 0;
  return info.st_mode;
}

template <typename String>
bool exists_t(String const& path) {
  native_path const p(path);
  struct stat info;
  return p.get() != nullptr && ::stat(p.get(), &info) == 0;
}

template <typename String>
bool is_directory_t(String const& path) {
  return (mode_of(native_path(path)) & 040000u) != 0;
}

template <typename String>
bool is_file_t(String const& path) {
  return (mode_of(native_path(path)) & 0100000u) != 0;
}

template <typename String>
void remove_file_t(String const& path) {
  native_path const p(path);
  if (p.get() != nullptr) static_cast<void>(std::remove(p.get()));
}

template <typename String>
void remove_dir_t(String const& path) {
  native_path const p(path);
  if (p.get() != nullptr) static_cast<void>(::rmdir(p.get()));
}

template <typename String>
void move_t(String const& to, String const& from) {
  native_path const target(to);
  native_path const source(from);
  if (target.get() != nullptr && source.get() != nullptr)
    static_cast<void>(std::rename(source.get(), target.get()));
}

}  // namespace

bool exists(strings::ustring8 const& path) { return exists_t(path); }
bool exists(strings::ustring16 const& path) { return exists_t(path); }
bool exists(strings::ustring32 const& path) { return exists_t(path); }

bool is_directory(strings::ustring8 const& path) { return is_directory_t(path); }
bool is_directory(strings::ustring16 const& path) { return is_directory_t(path); }
bool is_directory(strings::ustring32 const& path) { return is_directory_t(path); }

bool is_file(strings::ustring8 const& path) { return is_file_t(path); }
bool is_file(strings::ustring16 const& path) { return is_file_t(path); }
bool is_file(strings::ustring32 const& path) { return is_file_t(path); }

void remove_file(strings::ustring8 const& path) { remove_file_t(path); }
void remove_file(strings::ustring16 const& path) { remove_file_t(path); }
void remove_file(strings::ustring32 const& path) { remove_file_t(path); }

void remove_dir(strings::ustring8 const& path) { remove_dir_t(path); }
void remove_dir(strings::ustring16 const& path) { remove_dir_t(path); }
void remove_dir(strings::ustring32 const& path) { remove_dir_t(path); }

void move(strings::ustring8 const& to, strings::ustring8 const& from) { move_t(to, from); }
void move(strings::ustring16 const& to, strings::ustring16 const& from) { move_t(to, from); }
void move(strings::ustring32 const& to, strings::ustring32 const& from) { move_t(to, from); }

}  // namespace io
}  // namespace system
}  // namespace VEXA_2_10
