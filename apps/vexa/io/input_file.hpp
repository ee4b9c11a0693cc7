// A file or standard input read in blocks, for subcommands that stream.
//
//   vexa_cli::input_file in(path);        // "-" or "" for standard input
//   std::size_t n = in.read(buf, size);   // 0 at the end; throws io_error
#ifndef VEXA_APPS_IO_INPUT_FILE_HPP
#define VEXA_APPS_IO_INPUT_FILE_HPP

#include <cstddef>
#include <string>

#include "io/io_error.hpp"

namespace vexa_cli {

class input_file {
 public:
  // input_file
  // Opens the file for reading; throws io_error ("x: cannot open (...)").
  //   input_file in("-");        // standard input, shown as "<stdin>"
  //   input_file in("in.txt");
  explicit input_file(std::string const& path);
  ~input_file();
  input_file(input_file const&) = delete;
  input_file& operator=(input_file const&) = delete;

  // read
  // Reads at most `size` bytes into `data` with one successful read of the
  // system (a pipe gives what it has); returns 0 only at the end of the
  // input. Throws io_error ("x: cannot read (Is a directory)").
  //   in.read(buf, sizeof buf)   // 65536 from a large file
  //   in.read(buf, sizeof buf)   // 0 at the end
  std::size_t read(void* data, std::size_t size);

  // read_full
  // Like read, but goes on until `size` bytes are read or the input ends.
  //   in.read_full(buf, 4)   // 4, or fewer for a shorter input
  //   in.read_full(buf, 4)   // 0 at the end
  std::size_t read_full(void* data, std::size_t size);

  // The name used in messages: the path as given, or "<stdin>".
  std::string const& name() const { return name_; }

 private:
  std::string name_;
  int fd_ = -1;
  bool owns_fd_ = false;
};

}  // namespace vexa_cli

#endif  // VEXA_APPS_IO_INPUT_FILE_HPP
