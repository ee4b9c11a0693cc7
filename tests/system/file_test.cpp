#include "vexa/system/file.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string>
#include <vector>

#include "system/temp_directory.hpp"
#include "vexa/system/io.hpp"

namespace sys = vexa::system;
namespace strings = vexa::strings;
using strings::ustring8;

namespace {

bool on_disk(std::string const& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0;
}

void put(std::string const& path, std::string const& bytes, unsigned mode = 0644) {
  ASSERT_EQ(sys::store_file(ustring8(path), ustring8(bytes)), 0) << path;
  ASSERT_EQ(::chmod(path.c_str(), mode), 0) << path;
}

void make_dir(std::string const& path, unsigned mode = 0755) {
  ASSERT_EQ(::mkdir(path.c_str(), mode), 0) << path;
}

strings::ustring16 u16(std::string const& ascii) { return strings::ustring16(ascii.begin(), ascii.end()); }
strings::ustring32 u32(std::string const& ascii) { return strings::ustring32(ascii.begin(), ascii.end()); }

std::vector<std::string> sorted(strings::ustring8_vector const& v) {
  std::vector<std::string> out(v.begin(), v.end());
  std::sort(out.begin(), out.end());
  return out;
}

// ---- whole files -------------------------------------------------------------

TEST(SystemFile, StoreIntoANewDirectoryAndLoadBack) {
  vexa_test::temp_directory tmp;
  std::string const file = tmp / "new/x";
  EXPECT_EQ(sys::store_file(ustring8(file), ustring8("x")), 1);
  EXPECT_TRUE(sys::create_directory(ustring8(tmp / "new/")));
  EXPECT_EQ(sys::store_file(ustring8(file), ustring8("x")), 0);
  ustring8 content("previous");
  EXPECT_EQ(sys::load_file(ustring8(file), content), 0);
  EXPECT_EQ(content, "x");
}

TEST(SystemFile, BytesGoThroughUnchangedAndTruncate) {
  vexa_test::temp_directory tmp;
  std::string const bytes("\xEF\xBB\xBF" "a\r\nb\0c\xFF", 10);  // a BOM, CR LF, NUL
  std::string const file = tmp / "f";
  ASSERT_EQ(sys::store_file(u16(file), ustring8(std::string(100, 'z'))), 0);
  ASSERT_EQ(sys::store_file(u32(file), ustring8(bytes)), 0);  // truncates the 100 bytes
  std::string as_std;
  ustring8 as_u8;
  EXPECT_EQ(sys::load_file(u16(file), as_std), 0);
  EXPECT_EQ(sys::load_file(u32(file), as_u8), 0);
  EXPECT_EQ(as_std, bytes);
  EXPECT_EQ(as_u8, bytes);
}

TEST(SystemFile, LoadFailuresLeaveTheContentAlone) {
  vexa_test::temp_directory tmp;
  put(tmp / "empty", "");
  make_dir(tmp / "dir");
  ASSERT_EQ(::mkfifo((tmp / "fifo").c_str(), 0600), 0);
  std::string content = "kept";
  EXPECT_EQ(sys::load_file(ustring8(tmp / "missing"), content), 1);
  EXPECT_EQ(sys::load_file(ustring8(tmp / "dir"), content), 1);
  EXPECT_EQ(sys::load_file(ustring8(tmp / "fifo"), content), 1);  // no size, no hang
  EXPECT_EQ(content, "kept");
  EXPECT_EQ(sys::load_file(ustring8(tmp / "empty"), content), 0);
  EXPECT_EQ(content, "");
  content = "kept";
  EXPECT_EQ(sys::load_file(ustring8("/dev/null"), content), 0);
  EXPECT_EQ(content, "");
  EXPECT_EQ(sys::store_file(ustring8(tmp / "dir"), ustring8("x")), 1);
  EXPECT_EQ(sys::store_file(ustring8(tmp / "fifo"), ustring8("x")), 1);  // no reader, no hang
}

TEST(SystemFile, ReadAccessIsTheOwnerReadBitOnly) {
  vexa_test::temp_directory tmp;
  struct mode_case {
    unsigned mode;
    bool readable;
  } const cases[] = {{0644, true}, {0400, true}, {0200, false}, {0044, false}, {0000, false}};
  for (mode_case const& c : cases) {
    std::string const file = tmp / ("m" + std::to_string(c.mode));
    put(file, "x", c.mode);
    EXPECT_EQ(sys::have_read_access(ustring8(file)), c.readable) << std::oct << c.mode;
    EXPECT_EQ(sys::have_read_access(u32(file)), c.readable) << std::oct << c.mode;
  }
  EXPECT_FALSE(sys::have_read_access(ustring8(tmp / "missing")));
  EXPECT_TRUE(sys::have_read_access(u16(tmp.path())));
}

// ---- create_directory ----------------------------------------------------------

struct create_case {
  char const* path;
  bool result;
  std::vector<char const*> made;     // exist afterwards
  std::vector<char const*> not_made;
};

TEST(SystemFile, CreateDirectoryMakesThePrefixesBeforeEachSlash) {
  create_case const cases[] = {
      {"a/b", true, {"a"}, {"a/b"}},
      {"a/b/", true, {"a", "a/b"}, {}},
      {"x", true, {"x"}, {}},
      {"./x", false, {"x"}, {}},  // made, then "." is tried again and fails
      {"./a/b/", true, {"a", "a/b"}, {}},
      {".hidden", true, {".hidden"}, {}},
      {"a//b/", true, {"a", "a/b"}, {}},
      {"", false, {}, {}},
  };
  for (create_case const& c : cases) {
    SCOPED_TRACE(c.path);
    vexa_test::temp_directory tmp;
    vexa_test::working_directory here(tmp.path());
    EXPECT_EQ(sys::create_directory(ustring8(c.path)), c.result);
    for (char const* p : c.made) EXPECT_TRUE(sys::io::is_directory(ustring8(p))) << p;
    for (char const* p : c.not_made) EXPECT_FALSE(on_disk(p)) << p;
  }
}

TEST(SystemFile, CreateDirectoryWithAbsolutePathsAndOtherTypes) {
  vexa_test::temp_directory tmp;
  // The existing prefixes fail quietly; only the last mkdir counts.
  EXPECT_TRUE(sys::create_directory(ustring8(tmp / "p/q/")));
  EXPECT_TRUE(sys::io::is_directory(ustring8(tmp / "p/q")));
  EXPECT_TRUE(sys::create_directory(ustring8(tmp / "p/q")));  // exists: true at once
  EXPECT_TRUE(sys::create_directory(u16(tmp / "r/s/")));
  EXPECT_TRUE(sys::create_directory(u32(tmp / "t/u/")));
  EXPECT_TRUE(sys::io::is_directory(ustring8(tmp / "r/s")));
  EXPECT_TRUE(sys::io::is_directory(ustring8(tmp / "t/u")));
  put(tmp / "plain", "x");
  EXPECT_FALSE(sys::create_directory(ustring8(tmp / "plain/")));  // a file is in the way
}

// ---- listings -----------------------------------------------------------------

TEST(SystemFile, ListDirectoryGivesFullPathsOfEveryEntry) {
  vexa_test::temp_directory tmp;
  put(tmp / "f", "x");
  make_dir(tmp / "d");
  EXPECT_EQ(sorted(sys::list_directory(ustring8(tmp.path()))),
            (std::vector<std::string>{tmp / "d", tmp / "f"}));
  EXPECT_TRUE(sys::list_directory(ustring8(tmp / "missing")).empty());
  EXPECT_TRUE(sys::list_directory(ustring8(tmp / "f")).empty());

  put(tmp / "d/caf\xC3\xA9", "x");
  strings::ustring16 expected16 = u16(tmp / "d/");
  expected16 += strings::ustring16{'c', 'a', 'f', 0xE9};
  strings::ustring32 expected32 = u32(tmp / "d/");
  expected32 += strings::ustring32{L'c', L'a', L'f', 0xE9};
  EXPECT_EQ(sys::list_directory(u16(tmp / "d")), strings::ustring16_vector{expected16});
  EXPECT_EQ(sys::list_directory(u32(tmp / "d")), strings::ustring32_vector{expected32});
}

// The order a recursion over list_directory gives: a directory's own files,
// then each subdirectory's, in listing order.
void reference_walk(std::string const& dir, std::vector<std::string>& out) {
  std::vector<std::string> subdirectories;
  for (ustring8 const& entry : sys::list_directory(ustring8(dir))) {
    struct stat info;
    if (::stat(entry.c_str(), &info) != 0 || (info.st_mode & 0400) == 0) continue;
    if (S_ISREG(info.st_mode)) out.push_back(entry);
    if (S_ISDIR(info.st_mode)) subdirectories.push_back(entry);
  }
  for (std::string const& d : subdirectories) reference_walk(d, out);
}

TEST(SystemFile, DirectoryFilesComeBeforeTheirSubdirectoriesFiles) {
  vexa_test::temp_directory tmp;
  for (char const* d : {"d1", "d1/e", "d1/e/z", "d2", "d3", "locked"}) make_dir(tmp / d);
  for (char const* f : {"f1", "f2", "d1/g", "d1/e/h", "d1/e/z/i", "d2/k", "locked/no"})
    put(tmp / f, f);
  put(tmp / "write_only", "x", 0200);
  put(tmp / "d2/write_only", "x", 0200);
  ASSERT_EQ(::chmod((tmp / "locked").c_str(), 0300), 0);  // no owner-read bit: skipped
  ASSERT_EQ(::symlink("d1/g", (tmp / "link_to_g").c_str()), 0);

  std::vector<std::string> expected{"before"};
  reference_walk(tmp.path(), expected);
  strings::ustring8_vector out{ustring8("before")};  // never cleared
  sys::get_directory_files(ustring8(tmp.path()), out);
  EXPECT_EQ(std::vector<std::string>(out.begin(), out.end()), expected);
  EXPECT_EQ(out.size(), 8u);  // before, f1, f2, link_to_g, g, k, h, i

  strings::ustring16_vector out16;
  sys::get_directory_files(u16(tmp.path()), out16);
  ASSERT_EQ(out16.size(), expected.size() - 1);
  for (std::size_t i = 0; i < out16.size(); ++i) EXPECT_EQ(out16[i], u16(expected[i + 1]));
  strings::ustring32_vector out32;
  sys::get_directory_files(u32(tmp / "missing"), out32);
  EXPECT_TRUE(out32.empty());
}

TEST(SystemFile, DeepTreesAndLinkCyclesEnd) {
  vexa_test::temp_directory tmp;
  std::string deep = tmp.path();
  for (int i = 0; i < 1000; ++i) deep += "/d";
  ASSERT_TRUE(sys::create_directory(ustring8(deep + "/")));
  put(deep + "/leaf", "x");
  strings::ustring8_vector out;
  sys::get_directory_files(ustring8(tmp.path()), out);
  EXPECT_EQ(out, strings::ustring8_vector{ustring8(deep + "/leaf")});

  vexa_test::temp_directory cycle;
  put(cycle / "f", "x");
  ASSERT_EQ(::symlink(".", (cycle / "loop").c_str()), 0);
  out.clear();
  sys::get_directory_files(ustring8(cycle.path()), out);  // ends where the system stops
  EXPECT_GT(out.size(), 1u);
  for (ustring8 const& f : out) EXPECT_EQ(f.substr(f.size() - 2), "/f");
}

// ---- paths that name no file ----------------------------------------------------

TEST(SystemFile, OddPathsGiveTheFailureResults) {
  vexa_test::temp_directory tmp;
  vexa_test::working_directory here(tmp.path());
  put("f", "x");
  make_dir("d");
  put("d/inner", "x");
  put("-1", "minus one");
  struct odd_path {
    char const* name;
    ustring8 path;
  } const paths[] = {
      {"NUL after a file name", ustring8("f\0tail", 6)},
      {"NUL after a directory name", ustring8("d\0", 2)},
      {"empty", ustring8()},
      {"5000 bytes", ustring8(5000, 'n')},
      {"missing", ustring8("no/such/file")},
  };
  for (odd_path const& p : paths) {
    SCOPED_TRACE(p.name);
    std::string content = "kept";
    EXPECT_EQ(sys::load_file(p.path, content), 1);
    EXPECT_EQ(content, "kept");
    EXPECT_FALSE(sys::have_read_access(p.path));
    EXPECT_TRUE(sys::list_directory(p.path).empty());
    strings::ustring8_vector out;
    sys::get_directory_files(p.path, out);
    EXPECT_TRUE(out.empty());
  }
  EXPECT_EQ(sys::store_file(ustring8("g\0", 2), ustring8("x")), 1);
  EXPECT_FALSE(on_disk("g"));
  EXPECT_FALSE(sys::create_directory(ustring8("n\0/m/", 5)));
  EXPECT_FALSE(on_disk("n"));
  EXPECT_EQ(sys::store_file(ustring8(5000, 'n'), ustring8("x")), 1);
  EXPECT_FALSE(sys::create_directory(ustring8(5000, 'n')));

  // An unpaired surrogate: the conversion's "-1" is not taken as a name.
  strings::ustring16 const lone16{0xD800};
  strings::ustring32 const lone32{'d', 0xDFFF};
  std::string content = "kept";
  EXPECT_EQ(sys::load_file(lone16, content), 1);
  EXPECT_EQ(sys::load_file(lone32, content), 1);
  EXPECT_EQ(content, "kept");
  EXPECT_EQ(sys::store_file(lone16, ustring8("x")), 1);
  EXPECT_FALSE(sys::create_directory(lone32));
  EXPECT_FALSE(sys::have_read_access(lone16));
  EXPECT_TRUE(sys::list_directory(lone32).empty());
  EXPECT_EQ(sys::load_file(u16("-1"), content), 0);  // the real name still works
  EXPECT_EQ(content, "minus one");
}

}  // namespace
