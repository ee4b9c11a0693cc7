// vexa — file-system tests and small operations (`system::io`).
//
// Thin wrappers over POSIX `stat`, `remove`, `rmdir` and `rename`, each for
// paths of type ustring8 (bytes passed as they are), ustring16 and ustring32
// (converted to UTF-8 first). They never throw and report nothing beyond
// their result.
//
// Decisions:
//   - The kind tests look at ONE bit of st_mode, not at the file-type field:
//     `is_directory` tests 040000 (so block devices and sockets count too),
//     `is_file` tests 0100000 (so sockets count too). `stat` follows symbolic
//     links. The file services rely on these tests exactly as they are.
//   - `move(to, from)` takes the destination FIRST: move(b, a) renames a to b.
//   - A path that holds a NUL byte names no file: the predicates answer
//     false and the operations do nothing, so a crafted name never reaches
//     the shorter path the C library would see.
//   - A ustring16 or ustring32 path that cannot be converted to UTF-8 (an
//     unpaired surrogate) names no file either; the conversion's "-1" is
//     never taken as a path.
//
//   io::exists(ustring8("/tmp"))          // true
//   io::move(ustring8("b"), ustring8("a"))  // renames a to b
#ifndef VEXA_SYSTEM_IO_HPP
#define VEXA_SYSTEM_IO_HPP

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace system {
namespace io {

// exists
// True when `stat` on the path succeeds (a symbolic link counts when its
// target exists); false otherwise, and for a path that names no file.
//   exists(ustring8("/"))          // true
//   exists(ustring8("/no/such"))   // false
VEXA_API bool exists(strings::ustring8 const& path);
VEXA_API bool exists(strings::ustring16 const& path);
VEXA_API bool exists(strings::ustring32 const& path);

// is_directory
// True when `stat` succeeds and st_mode has the bit 040000 (directories,
// block devices, sockets); false otherwise.
//   is_directory(ustring8("/tmp"))          // true
//   is_directory(ustring8("/etc/passwd"))   // false
VEXA_API bool is_directory(strings::ustring8 const& path);
VEXA_API bool is_directory(strings::ustring16 const& path);
VEXA_API bool is_directory(strings::ustring32 const& path);

// is_file
// True when `stat` succeeds and st_mode has the bit 0100000 (regular files,
// sockets); false otherwise.
//   is_file(ustring8("/etc/passwd"))   // true
//   is_file(ustring8("/tmp"))          // false
VEXA_API bool is_file(strings::ustring8 const& path);
VEXA_API bool is_file(strings::ustring16 const& path);
VEXA_API bool is_file(strings::ustring32 const& path);

// remove_file
// Calls `remove` on the path (a file, or an empty directory); the outcome is
// discarded.
//   remove_file(ustring8("out.txt"))   // out.txt is gone
//   remove_file(ustring8("missing"))   // nothing happens, nothing reported
VEXA_API void remove_file(strings::ustring8 const& path);
VEXA_API void remove_file(strings::ustring16 const& path);
VEXA_API void remove_file(strings::ustring32 const& path);

// remove_dir
// Calls `rmdir` on the path: only an empty directory goes; the outcome is
// discarded.
//   remove_dir(ustring8("empty"))      // gone
//   remove_dir(ustring8("non_empty"))  // stays, nothing reported
VEXA_API void remove_dir(strings::ustring8 const& path);
VEXA_API void remove_dir(strings::ustring16 const& path);
VEXA_API void remove_dir(strings::ustring32 const& path);

// move
// Calls rename(from, to): the FIRST argument is the new path, the second the
// existing one. The outcome is discarded; nothing happens when either path
// names no file.
//   move(ustring8("b"), ustring8("a"))   // a is now called b
//   move(ustring8("b"), ustring8("x"))   // x missing: nothing happens
VEXA_API void move(strings::ustring8 const& to, strings::ustring8 const& from);
VEXA_API void move(strings::ustring16 const& to, strings::ustring16 const& from);
VEXA_API void move(strings::ustring32 const& to, strings::ustring32 const& from);

}  // namespace io
}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_IO_HPP
