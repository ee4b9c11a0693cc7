// A file or standard input read in blocks.
#include "io/input_file.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace vexa_cli {

input_file::input_file(std::string const& path) {
  if (path.empty() || path == "-") {
    name_ = "<stdin>";
    fd_ = STDIN_FILENO;
    return;
  }
  name_ = path;
  fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd_ < 0) throw io_error(io_message(name_, "cannot open", errno));
  owns_fd_ = true;
  // The input is read once from start to end.
  ::posix_fadvise(fd_, 0, 0, POSIX_FADV_SEQUENTIAL);
}

input_file::~input_file() {
  if (owns_fd_) ::close(fd_);
}

std::size_t input_file::read(void* data, std::size_t size) {
  for (;;) {
    ssize_t const n = ::read(fd_, data, size);
    if (n >= 0) return static_cast<std::size_t>(n);
    if (errno != EINTR) throw io_error(io_message(name_, "cannot read", errno));
  }
}

std::size_t input_file::read_full(void* data, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    std::size_t const n = read(static_cast<char*>(data) + done, size - done);
    if (n == 0) break;
    done += n;
  }
  return done;
}

}  // namespace vexa_cli
