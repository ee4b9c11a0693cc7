// Output that is replaced whole or written directly, never lost silently.
#include "io/output_file.hpp"

#include <fcntl.h>
#include <limits.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

namespace vexa_cli {
namespace {

// Small writes are gathered up to this size; larger ones go straight through.
constexpr std::size_t gather_size = 64 * 1024;

// ---- removing the temporary file when the program is stopped ----------------------
// One temporary file at a time; its name is kept where a signal handler may
// read it without allocating.
char pending_temp[PATH_MAX];
volatile sig_atomic_t pending = 0;
struct sigaction previous[3];
int const cleanup_signals[3] = {SIGINT, SIGTERM, SIGHUP};

extern "C" void remove_pending_temp(int signal_number) {
  if (pending != 0) ::unlink(pending_temp);
  ::signal(signal_number, SIG_DFL);
  ::raise(signal_number);
}

void watch_temp(std::string const& path) {
  if (path.size() >= sizeof pending_temp) return;
  std::memcpy(pending_temp, path.c_str(), path.size() + 1);
  pending = 1;
  struct sigaction action {};
  action.sa_handler = remove_pending_temp;
  sigemptyset(&action.sa_mask);
  for (int i = 0; i < 3; ++i) ::sigaction(cleanup_signals[i], &action, &previous[i]);
}

void unwatch_temp() {
  if (pending == 0) return;
  pending = 0;
  for (int i = 0; i < 3; ++i) ::sigaction(cleanup_signals[i], &previous[i], nullptr);
}

// ---- finding the file behind a name -------------------------------------------------

std::string directory_of(std::string const& path) {
  std::size_t const slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// Follows symbolic links until a name that is no link (or does not exist).
std::string resolve_links(std::string const& shown, std::string path) {
  for (int hops = 0; hops < 40; ++hops) {
    struct stat st {};
    if (::lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return path;
    std::vector<char> target(static_cast<std::size_t>(st.st_size > 0 ? st.st_size : PATH_MAX) + 1);
    ssize_t const n = ::readlink(path.c_str(), target.data(), target.size());
    if (n < 0) throw io_error(io_message(shown, "cannot read the link", errno));
    std::string const next(target.data(), static_cast<std::size_t>(n));
    if (next.empty() || next[0] == '/' || path.find('/') == std::string::npos) {
      path = next;
    } else {
      path = path.substr(0, path.rfind('/') + 1) + next;
    }
  }
  throw io_error(io_message(shown, "cannot open", ELOOP));
}

// The temporary file beside `target`: DIR/.NAME.XXXXXX (the name shortened so
// that the whole stays a valid file name).
std::string temp_template(std::string const& target) {
  std::size_t const slash = target.rfind('/');
  std::string base = slash == std::string::npos ? target : target.substr(slash + 1);
  if (base.size() > 200) base.resize(200);
  std::string const dir = slash == std::string::npos ? "" : target.substr(0, slash + 1);
  return dir + "." + base + ".XXXXXX";
}

}  // namespace

output_file::output_file(std::string const& path) {
  if (path.empty() || path == "-") {
    name_ = "<stdout>";
    fd_ = STDOUT_FILENO;
    return;
  }
  name_ = path;
  final_path_ = resolve_links(name_, path);

  struct stat st {};
  bool const exists = ::stat(final_path_.c_str(), &st) == 0;
  if (!exists && errno != ENOENT) throw io_error(io_message(name_, "cannot open", errno));
  if (exists && S_ISDIR(st.st_mode)) throw io_error(io_message(name_, "cannot write", EISDIR));

  if (exists && !S_ISREG(st.st_mode)) {
    // A device, FIFO or socket: renaming over it would replace the node itself.
    fd_ = ::open(final_path_.c_str(), O_WRONLY | O_CLOEXEC);
    if (fd_ < 0) throw io_error(io_message(name_, "cannot open", errno));
    owns_fd_ = true;
    return;
  }
  if (exists && ::access(final_path_.c_str(), W_OK) != 0) {
    throw io_error(io_message(name_, "cannot open", errno));
  }

  temp_path_ = temp_template(final_path_);
  fd_ = ::mkostemp(&temp_path_[0], O_CLOEXEC);
  if (fd_ < 0) {
    int const error = errno;
    temp_path_.clear();
    throw io_error(io_message(name_, "cannot create a file in " + directory_of(final_path_), error));
  }
  owns_fd_ = true;
  watch_temp(temp_path_);
  if (exists) {
    // Owner first: changing it may clear the set-id bits that chmod then restores.
    if (::fchown(fd_, st.st_uid, st.st_gid) != 0) (void)!::fchown(fd_, static_cast<uid_t>(-1), st.st_gid);
    ::fchmod(fd_, st.st_mode & 07777);
  } else {
    mode_t const mask = ::umask(0);
    ::umask(mask);
    ::fchmod(fd_, 0666 & ~mask);
  }
}

output_file::~output_file() { discard(); }

void output_file::discard() {
  if (owns_fd_ && fd_ >= 0) ::close(fd_);
  fd_ = -1;
  owns_fd_ = false;
  if (!temp_path_.empty() && !committed_) ::unlink(temp_path_.c_str());
  unwatch_temp();
  temp_path_.clear();
}

void output_file::write_through(char const* data, std::size_t size) {
  while (size > 0) {
    ssize_t const n = ::write(fd_, data, size);
    if (n < 0) {
      if (errno == EINTR) continue;
      throw io_error(io_message(name_, "cannot write", errno));
    }
    if (n == 0) throw io_error(io_message(name_, "cannot write", ENOSPC));
    data += n;
    size -= static_cast<std::size_t>(n);
  }
}

void output_file::flush_buffer() {
  if (buffer_.empty()) return;
  std::string pending_text;
  pending_text.swap(buffer_);
  write_through(pending_text.data(), pending_text.size());
  pending_text.clear();
  buffer_.swap(pending_text);  // keep the capacity
}

void output_file::write(void const* data, std::size_t size) {
  if (committed_) throw io_error(io_message(name_, "cannot write", EBADF));
  char const* const bytes = static_cast<char const*>(data);
  if (size < gather_size / 4 && buffer_.size() + size <= gather_size) {
    if (buffer_.capacity() < gather_size) buffer_.reserve(gather_size);
    buffer_.append(bytes, size);
    return;
  }
  flush_buffer();
  write_through(bytes, size);
}

void output_file::commit() {
  if (committed_) return;
  flush_buffer();
  if (owns_fd_) {
    int const fd = fd_;
    fd_ = -1;
    owns_fd_ = false;
    if (::close(fd) != 0) throw io_error(io_message(name_, "cannot write", errno));
  }
  if (!temp_path_.empty() && ::rename(temp_path_.c_str(), final_path_.c_str()) != 0) {
    throw io_error(io_message(name_, "cannot replace", errno));
  }
  committed_ = true;
  unwatch_temp();
}

}  // namespace vexa_cli
