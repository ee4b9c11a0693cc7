#include "vexa/system/file.hpp"

#include <dirent.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "system/native_path.hpp"
#include "vexa/strings/unicode.hpp"
#include "vexa/system/io.hpp"

namespace VEXA_2_10 {
namespace system {

namespace {

using _private::native_path;

// ---- names read back from the system ---------------------------------------

template <typename String>
String from_utf8(char const* name);

template <>
strings::ustring8 from_utf8<strings::ustring8>(char const* name) {
  return strings::ustring8(name);
}
template <>
strings::ustring16 from_utf8<strings::ustring16>(char const* name) {
  return strings::utf8_to_utf16(strings::ustring8(name));
}
template <>
strings::ustring32 from_utf8<strings::ustring32>(char const* name) {
  return strings::utf8_to_utf32(strings::ustring8(name));
}

template <typename String>
String joined(String const& dir, char const* name) {
  String full(dir);
  full += static_cast<typename String::value_type>('/');
  full += from_utf8<String>(name);
  return full;
}

bool is_dot_or_dot_dot(char const* name) {
  return name[0] == '.' && (name[1] == '\0' || (name[1] == '.' && name[2] == '\0'));
}

// An open directory stream, rewound, closed on every way out.
class directory_reader {
 public:
  explicit directory_reader(native_path const& path)
      : stream_(path.get() != nullptr ? ::opendir(path.get()) : nullptr) {
    if (stream_ != nullptr) ::rewinddir(stream_);
  }
  ~directory_reader() {
    if (stream_ != nullptr) ::closedir(stream_);
  }
  directory_reader(directory_reader const&) = delete;
  directory_reader& operator=(directory_reader const&) = delete;

  bool is_open() const { return stream_ != nullptr; }

  // The next name other than "." and "..", or null at the end.
  char const* next() {
    while (dirent const* entry = ::readdir(stream_)) {
      if (!is_dot_or_dot_dot(entry->d_name)) return entry->d_name;
    }
    return nullptr;
  }

 private:
  DIR* stream_;
};

// A file descriptor closed on every way out.
class descriptor {
 public:
  explicit descriptor(int fd) : fd_(fd) {}
  ~descriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  descriptor(descriptor const&) = delete;
  descriptor& operator=(descriptor const&) = delete;
  int get() const { return fd_; }

 private:
  int fd_;
};

// Opened without blocking, so that a FIFO without a peer fails instead of
// hanging; the flag is cleared again for everything that follows.
int open_nonblocking(char const* path, int flags, mode_t mode = 0) {
  int fd;
  do {
    fd = ::open(path, flags | O_NONBLOCK | O_CLOEXEC, mode);
  } while (fd < 0 && errno == EINTR);
  if (fd >= 0) {
    int const status = ::fcntl(fd, F_GETFL);
    if (status != -1) ::fcntl(fd, F_SETFL, status & ~O_NONBLOCK);
  }
  return fd;
}

// ---- the services, once for every path type --------------------------------

template <typename String>
bool have_read_access_t(String const& path) {
  native_path const p(path);
  struct stat info;
  return p.get() != nullptr && ::stat(p.get(), &info) == 0 && (info.st_mode & 0400) != 0;
}

int store_file_bytes(native_path const& path, strings::ustring8 const& content) {
  if (path.get() == nullptr) return 1;
  descriptor const file(open_nonblocking(path.get(), O_WRONLY | O_CREAT | O_TRUNC, 0666));
  if (file.get() < 0) return 1;
  char const* data = content.data();
  std::size_t left = content.size();
  while (left > 0) {
    ssize_t const written = ::write(file.get(), data, left);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;  // not reported, as a failed stream write is not
    data += written;
    left -= static_cast<std::size_t>(written);
  }
  return 0;
}

// Large contents are backed by huge pages where the system offers them on
// request: filling 100 MB then takes some fifty page faults instead of
// 25,600, the larger part of the cost of a load from the page cache.
void reserve_large(std::string& content, std::size_t size) {
  std::size_t const large = std::size_t(8) << 20;
  if (size < large) return;
  content.reserve(size);
  auto const start = reinterpret_cast<std::uintptr_t>(&content[0]);
  long const page_size = ::sysconf(_SC_PAGESIZE);
  std::uintptr_t const page = page_size > 0 ? static_cast<std::uintptr_t>(page_size) : 4096u;
  std::uintptr_t const aligned = (start + page - 1) & ~(page - 1);
  ::madvise(reinterpret_cast<void*>(aligned), size - (aligned - start), MADV_HUGEPAGE);
}

int load_file_bytes(native_path const& path, std::string& content) {
  if (path.get() == nullptr) return 1;
  descriptor const file(open_nonblocking(path.get(), O_RDONLY));
  if (file.get() < 0) return 1;
  struct stat info;
  if (::fstat(file.get(), &info) != 0 || S_ISDIR(info.st_mode)) return 1;
  off_t size = info.st_size;
  if (!S_ISREG(info.st_mode)) {
    size = ::lseek(file.get(), 0, SEEK_END);
    if (size < 0 || ::lseek(file.get(), 0, SEEK_SET) != 0) return 1;
  }
  content.clear();
  reserve_large(content, static_cast<std::size_t>(size));
  content.resize(static_cast<std::size_t>(size));
  std::size_t got = 0;
  while (got < content.size()) {
    ssize_t const n = ::read(file.get(), &content[got], content.size() - got);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    got += static_cast<std::size_t>(n);
  }
  content.resize(got);
  return 0;
}

template <typename String>
bool create_directory_t(String const& path) {
  if (io::exists(path) && io::is_directory(path)) return true;
  native_path const bytes(path);
  if (bytes.get() == nullptr) return false;
  std::string p(bytes.get(), bytes.size());
  std::size_t const npos = std::string::npos;
  // After a leading "." or "/" the search starts past the first "/"; with no
  // "/" at all, npos + 1 wraps to 0 and the search starts at the beginning.
  std::size_t start = 0;
  if (!p.empty() && (p[0] == '.' || p[0] == '/')) start = p.find('/') + 1;
  std::size_t s = p.find('/', start);
  bool made = false;
  do {
    // The prefix ends where its "/" is cut off for the call: no copy per
    // prefix, so a path of many separators costs no more than its mkdir calls.
    if (s != npos) p[s] = '\0';
    made = ::mkdir(p.c_str(), 0775) == 0;
    if (s != npos) p[s] = '/';
    s = p.find('/', s + 1);  // from npos the next search wraps round to 0
  } while (s != npos);
  return made;
}

template <typename String>
std::vector<String> list_directory_t(String const& dir) {
  std::vector<String> result;
  native_path const p(dir);
  directory_reader reader(p);
  if (!reader.is_open()) return result;
  while (char const* name = reader.next()) result.push_back(joined(dir, name));
  return result;
}

// Appends the readable files of `dir` to `out` and its readable directories
// to `subdirectories`, with one stat per entry.
template <typename String>
void scan_directory(String const& dir, std::vector<String>& out,
                    std::vector<String>& subdirectories) {
  directory_reader reader{native_path(dir)};
  if (!reader.is_open()) return;
  while (char const* name = reader.next()) {
    String full = joined(dir, name);
    native_path const p(full);
    struct stat info;
    if (p.get() == nullptr || ::stat(p.get(), &info) != 0) continue;
    if ((info.st_mode & 0400) == 0) continue;
    if ((info.st_mode & 0100000) != 0) {
      out.push_back(std::move(full));
    } else if ((info.st_mode & 040000) != 0) {
      subdirectories.push_back(std::move(full));
    }
  }
}

template <typename String>
void get_directory_files_t(String const& dir, std::vector<String>& out) {
  // Each level's subdirectories, reversed so that the next is at the back:
  // the walk visits them exactly as a recursion would, at any depth.
  std::vector<std::vector<String>> pending(1);
  scan_directory(dir, out, pending.back());
  std::reverse(pending.back().begin(), pending.back().end());
  while (!pending.empty()) {
    if (pending.back().empty()) {
      pending.pop_back();
      continue;
    }
    String const next = std::move(pending.back().back());
    pending.back().pop_back();
    std::vector<String> below;
    scan_directory(next, out, below);
    if (!below.empty()) {
      std::reverse(below.begin(), below.end());
      pending.push_back(std::move(below));
    }
  }
}

}  // namespace

bool have_read_access(strings::ustring8 const& path) { return have_read_access_t(path); }
bool have_read_access(strings::ustring16 const& path) { return have_read_access_t(path); }
bool have_read_access(strings::ustring32 const& path) { return have_read_access_t(path); }

int store_file(strings::ustring8 const& path, strings::ustring8 const& content) {
  return store_file_bytes(native_path(path), content);
}
int store_file(strings::ustring16 const& path, strings::ustring8 const& content) {
  return store_file_bytes(native_path(path), content);
}
int store_file(strings::ustring32 const& path, strings::ustring8 const& content) {
  return store_file_bytes(native_path(path), content);
}

int load_file(strings::ustring8 const& path, std::string& content) {
  return load_file_bytes(native_path(path), content);
}
int load_file(strings::ustring8 const& path, strings::ustring8& content) {
  return load_file_bytes(native_path(path), content);
}
int load_file(strings::ustring16 const& path, std::string& content) {
  return load_file_bytes(native_path(path), content);
}
int load_file(strings::ustring16 const& path, strings::ustring8& content) {
  return load_file_bytes(native_path(path), content);
}
int load_file(strings::ustring32 const& path, std::string& content) {
  return load_file_bytes(native_path(path), content);
}
int load_file(strings::ustring32 const& path, strings::ustring8& content) {
  return load_file_bytes(native_path(path), content);
}

bool create_directory(strings::ustring8 const& path) { return create_directory_t(path); }
bool create_directory(strings::ustring16 const& path) { return create_directory_t(path); }
bool create_directory(strings::ustring32 const& path) { return create_directory_t(path); }

strings::ustring8_vector list_directory(strings::ustring8 const& dir) {
  return list_directory_t(dir);
}
strings::ustring16_vector list_directory(strings::ustring16 const& dir) {
  return list_directory_t(dir);
}
strings::ustring32_vector list_directory(strings::ustring32 const& dir) {
  return list_directory_t(dir);
}

void get_directory_files(strings::ustring8 const& dir, strings::ustring8_vector& out) {
  get_directory_files_t(dir, out);
}
void get_directory_files(strings::ustring16 const& dir, strings::ustring16_vector& out) {
  get_directory_files_t(dir, out);
}
void get_directory_files(strings::ustring32 const& dir, strings::ustring32_vector& out) {
  get_directory_files_t(dir, out);
}

}  // namespace system
}  // namespace VEXA_2_10
