// vexa — whole-file reading and writing, directory creation and listings
// (`system`).
//
// Every function has one overload per path type: ustring8 (bytes passed as
// they are), ustring16 and ustring32 (converted to UTF-8; names read back from
// the system are converted from UTF-8 to the overload's type, and the listings
// return that type). "/" is the only separator. Nothing here throws on a
// system failure: results are 0/1 codes, booleans or empty results.
//
// Decisions:
//   - `have_read_access` looks at the owner-read bit (0400) of `stat` only:
//     neither the caller's identity nor the group and other bits count.
//   - `create_directory` creates only the prefixes that end before a "/":
//     "a/b" creates a alone, "a/b/" creates a and a/b; see its comment for the
//     leading "." and "/" rules.
//   - The listings are in the order the system gives; nothing is sorted.
//   - `load_file` reads regular files by their size and other seekable files
//     (devices) by the size a seek to the end reports. A directory, or a file
//     whose size cannot be found (a pipe), cannot be loaded: 1, content
//     untouched. A file that shrinks while it is read gives what was there.
//   - A path that holds a NUL byte names no file, and so does a ustring16 or
//     ustring32 path with an unpaired surrogate (its conversion fails): the
//     predicates answer false, load_file/store_file 1, create_directory false,
//     the listings are empty.
//   - `get_directory_files` walks with a list of pending directories instead
//     of recursion, and makes one `stat` per entry. Symbolic links are
//     followed; a link cycle ends where the system refuses the path (too many
//     links, or too long).
//
//   system::store_file(ustring8("out.txt"), ustring8("x"))    // 0
//   system::load_file(ustring8("missing"), content)         // 1
#ifndef VEXA_SYSTEM_FILE_HPP
#define VEXA_SYSTEM_FILE_HPP

#include <string>
#include <vector>

#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace system {

// have_read_access
// True when `stat` on the path succeeds and the owner-read bit (0400) of its
// mode is set; false otherwise. `access` is not used.
//   have_read_access(ustring8("/etc/passwd"))   // true (mode 0644)
//   have_read_access(ustring8("secret"))        // false for mode 0200
VEXA_API bool have_read_access(strings::ustring8 const& path);
VEXA_API bool have_read_access(strings::ustring16 const& path);
VEXA_API bool have_read_access(strings::ustring32 const& path);

// store_file
// Writes the content's bytes as the whole file (created with mode 0666 less
// the umask, or truncated): no byte-order mark, no newline translation.
// Returns 0 once the file is open, 1 when it cannot be opened (missing
// directory, a directory, no permission). A failed write is not reported.
//   store_file(ustring8("t/x.txt"), ustring8("x"))   // 0
//   store_file(ustring8("no/dir/x"), ustring8("x"))  // 1
VEXA_API int store_file(strings::ustring8 const& path, strings::ustring8 const& content);
VEXA_API int store_file(strings::ustring16 const& path, strings::ustring8 const& content);
VEXA_API int store_file(strings::ustring32 const& path, strings::ustring8 const& content);

// load_file
// Replaces `content` with the file's bytes as they are (no byte-order-mark
// detection, no conversion) and returns 0; returns 1 with `content`
// untouched when the file cannot be opened or is a directory.
//   load_file(ustring8("t/x.txt"), content)   // 0, content == "x"
//   load_file(ustring8("missing"), content)   // 1, content as before
VEXA_API int load_file(strings::ustring8 const& path, std::string& content);
VEXA_API int load_file(strings::ustring8 const& path, strings::ustring8& content);
VEXA_API int load_file(strings::ustring16 const& path, std::string& content);
VEXA_API int load_file(strings::ustring16 const& path, strings::ustring8& content);
VEXA_API int load_file(strings::ustring32 const& path, std::string& content);
VEXA_API int load_file(strings::ustring32 const& path, strings::ustring8& content);

// create_directory
// Creates directories along the path with mode 0775 and reports whether the
// LAST `mkdir` succeeded (earlier failures, typically prefixes that exist,
// are ignored). An existing directory gives true at once, without `mkdir`.
// The separator search starts at 0, or just after the first "/" when the
// path begins with "." or "/". Each "/" found ends a prefix that is made;
// when no "/" is left the whole path is made. So "a/b" creates only a,
// "a/b/" creates a and a/b, and "x" creates x. After a leading "./" with no
// further "/" ("./x"), the whole path is made and the search restarts at 0,
// trying "." once more: the result is false although ./x was created.
//   create_directory(ustring8("a/b/"))   // true, a and a/b exist
//   create_directory(ustring8("./x"))    // false, yet ./x exists
VEXA_API bool create_directory(strings::ustring8 const& path);
VEXA_API bool create_directory(strings::ustring16 const& path);
VEXA_API bool create_directory(strings::ustring32 const& path);

// list_directory
// dir + "/" + name for every entry of `dir` (of any kind) except "." and
// "..", in the system's order. Empty when the directory cannot be opened.
//   list_directory(ustring8("t"))         // {"t/f", "t/d"} in system order
//   list_directory(ustring8("missing"))   // {}
VEXA_API strings::ustring8_vector list_directory(strings::ustring8 const& dir);
VEXA_API strings::ustring16_vector list_directory(strings::ustring16 const& dir);
VEXA_API strings::ustring32_vector list_directory(strings::ustring32 const& dir);

// get_directory_files
// Appends to `out` (never cleared) dir + "/" + name for every entry below
// `dir` that is a file (io::is_file) with the owner-read bit set. Each
// directory's own files come first, in system order, then the files below
// each of its readable subdirectories, one subdirectory after the other in
// the order they were met. Nothing is appended when `dir` cannot be opened.
//   get_directory_files(ustring8("t"), out)   // out += {"t/f", "t/d/g"}
//   get_directory_files(ustring8("no"), out)  // out unchanged
VEXA_API void get_directory_files(strings::ustring8 const& dir, strings::ustring8_vector& out);
VEXA_API void get_directory_files(strings::ustring16 const& dir, strings::ustring16_vector& out);
VEXA_API void get_directory_files(strings::ustring32 const& dir, strings::ustring32_vector& out);

}  // namespace system
}  // namespace VEXA_2_10

#endif  // VEXA_SYSTEM_FILE_HPP
