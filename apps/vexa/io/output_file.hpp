// Where a subcommand's output goes, written so that nothing is lost silently.
//
// A target is standard output ("-" or the empty name) or a path:
//  - a regular file, or a name that does not exist yet, is written to a
//    temporary file in the same directory and renamed over the target by
//    commit(): a run that fails leaves the old file (or no file) in place. An
//    existing file keeps its permission bits and, where the system allows it,
//    its owner and group. A file we may not write is refused, as '>' would.
//    Hard links to the old file keep the old text (the name gets a new file).
//  - a symbolic link is followed (through chains of links, relative ones
//    against the link's own directory) and the file it finally names is
//    replaced as above, so the link stays a link.
//  - anything else (a character device such as /dev/null, a FIFO) is opened
//    and written directly, without a temporary file; a directory is refused.
// Every failed open, write, close or rename throws io_error with one line of
// text ("out.txt: cannot write (No space left on device)"); the subcommand
// prints it and exits with status 1. While a temporary file exists, SIGINT,
// SIGTERM and SIGHUP remove it before the program ends.
//
//   vexa_cli::output_file out(opts.value("output"));   // "-" or "" for stdout
//   out.write(text.data(), text.size());
//   out.commit();
#ifndef VEXA_APPS_IO_OUTPUT_FILE_HPP
#define VEXA_APPS_IO_OUTPUT_FILE_HPP

#include <cstddef>
#include <string>

#include "io/io_error.hpp"

namespace vexa_cli {

class output_file {
 public:
  // output_file
  // Opens the target; throws io_error when it cannot be written.
  //   output_file out("-");          // standard output
  //   output_file out("dir/x.txt");  // dir/.x.txt.XXXXXX until commit()
  explicit output_file(std::string const& path);
  // Removes the temporary file unless commit() succeeded.
  ~output_file();
  output_file(output_file const&) = delete;
  output_file& operator=(output_file const&) = delete;

  // write
  // Writes `size` bytes (small writes are gathered first); throws io_error.
  //   out.write("abc", 3);
  //   out.write(big.data(), big.size());   // written at once, not copied
  void write(void const* data, std::size_t size);

  // commit
  // Writes what is gathered, closes the file and renames the temporary file
  // over the target; throws io_error. Nothing is renamed when it throws.
  //   out.commit();
  //   out.commit();   // a second call does nothing
  void commit();

  // Whether commit() replaces a file by renaming; false for standard output,
  // devices and FIFOs, which receive the text as it is written.
  bool replaces_file() const { return !temp_path_.empty(); }

  // The name used in messages: the path as given, or "<stdout>".
  std::string const& name() const { return name_; }

  // ---- implementation details --------------------------------------------------
 private:
  void flush_buffer();
  void write_through(char const* data, std::size_t size);
  void discard();

  std::string name_;
  std::string final_path_;  // the file renamed over (links resolved)
  std::string temp_path_;   // empty when written directly
  int fd_ = -1;
  bool owns_fd_ = false;    // false for standard output
  bool committed_ = false;
  std::string buffer_;
};

}  // namespace vexa_cli

#endif  // VEXA_APPS_IO_OUTPUT_FILE_HPP
