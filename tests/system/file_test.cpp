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
using vexa_test::on_disk;
using vexa_test::u16;
using vexa_test::u32;

namespace {

void put(std::string const& path, std::string const& bytes, unsigned mode = 0644) {
  ASSERT_EQ(sys::store_file(ustring8(path), ustring8(bytes)), 0) << path;
  ASSERT_EQ(::chmod(path.c_str(), mode), 0) << path;
}

void make_dir(std::string const& path) { ASSERT_EQ(::mkdir(path.c_str(), 0755), 0) << path; }

TEST(SystemFile, StoreIntoANewDirectoryAndLoadBackUnchanged) {
  vexa_test::temp_directory tmp;
  EXPECT_EQ(sys::store_file(ustring8(tmp / "new/x"), ustring8("x")), 1);
  EXPECT_TRUE(sys::create_directory(ustring8(tmp / "new/")));
  EXPECT_EQ(sys::store_file(ustring8(tmp / "new/x"), ustring8("x")), 0);
  ustring8 content("previous");
  EXPECT_EQ(sys::load_file(ustring8(tmp / "new/x"), content), 0);
  EXPECT_EQ(content, "x");

  // A byte-order mark, CR LF and NUL go through as they are; a longer file is truncated.
  std::string const bytes("\xEF\xBB\xBF" "a\r\nb\0c\xFF", 10);
  ASSERT_EQ(sys::store_file(u16(tmp / "f"), ustring8(std::string(100, 'z'))), 0);
  ASSERT_EQ(sys::store_file(u32(tmp / "f"), ustring8(bytes)), 0);
  std::string as_std;
  EXPECT_EQ(sys::load_file(u16(tmp / "f"), as_std), 0);
  EXPECT_EQ(sys::load_file(u32(tmp / "f"), content), 0);
  EXPECT_EQ(as_std, bytes);
  EXPECT_EQ(content, bytes);

  std::string big(9u << 20, '\0');  // large enough to take the huge-page way
  for (std::size_t i = 0; i < big.size(); ++i) big[i] = static_cast<char>(i * 2654435761u >> 24);
  ASSERT_EQ(sys::store_file(ustring8(tmp / "big"), ustring8(big)), 0);
  EXPECT_EQ(sys::load_file(ustring8(tmp / "big"), as_std), 0);
  EXPECT_TRUE(as_std == big) << "sizes " << as_std.size() << " and " << big.size();
}

TEST(SystemFile, LoadFailuresLeaveTheContentAlone) {
  vexa_test::temp_directory tmp;
  put(tmp / "empty", "");
  make_dir(tmp / "dir");
  ASSERT_EQ(::mkfifo((tmp / "fifo").c_str(), 0600), 0);
  std::string content = "kept";
  EXPECT_EQ(sys::load_file(ustring8(tmp / "missing"), content), 1);
  EXPECT_EQ(sys::load_file(ustring8(tmp / "dir"), content), 1);
  EXPECT_EQ(sys::load_file(ustring8(tmp / "fifo"), content), 1);  // no size, and no hang
  EXPECT_EQ(content, "kept");
  EXPECT_EQ(sys::load_file(ustring8(tmp / "empty"), content), 0);
  EXPECT_EQ(content, "");
  EXPECT_EQ(sys::store_file(ustring8(tmp / "dir"), ustring8("x")), 1);
  EXPECT_EQ(sys::store_file(ustring8(tmp / "fifo"), ustring8("x")), 1);  // no reader, no hang
}

TEST(SystemFile, ReadAccessIsTheOwnerReadBitOnly) {
  vexa_test::temp_directory tmp;
  for (unsigned mode : {0644u, 0400u, 0200u, 0044u}) {
    std::string const file = tmp / ("m" + std::to_string(mode));
    put(file, "x", mode);
    EXPECT_EQ(sys::have_read_access(u32(file)), (mode & 0400) != 0) << std::oct << mode;
  }
  EXPECT_FALSE(sys::have_read_access(ustring8(tmp / "missing")));
}

TEST(SystemFile, CreateDirectoryMakesThePrefixesBeforeEachSlash) {
  struct {
    char const* path;
    bool result;
    std::vector<char const*> made, not_made;
  } const cases[] = {
      {"a/b", true, {"a"}, {"a/b"}},
      {"a/b/", true, {"a", "a/b"}, {}},
      {"x", true, {"x"}, {}},
      {"./x", false, {"x"}, {}},  // made, then "." is tried once more and fails
      {"./a/b/", true, {"a", "a/b"}, {}},
      {"a//b/", true, {"a", "a/b"}, {}},
      {"", false, {}, {}},
  };
  for (auto const& c : cases) {
    SCOPED_TRACE(c.path);
    vexa_test::temp_directory tmp;
    vexa_test::working_directory here(tmp.path());
    EXPECT_EQ(sys::create_directory(ustring8(c.path)), c.result);
    for (char const* p : c.made) EXPECT_TRUE(sys::io::is_directory(ustring8(p))) << p;
    for (char const* p : c.not_made) EXPECT_FALSE(on_disk(p)) << p;
  }
  {  // a run of separators: "q" is made, then each longer prefix exists already
    vexa_test::temp_directory tmp;
    vexa_test::working_directory here(tmp.path());
    EXPECT_FALSE(sys::create_directory(ustring8("q" + std::string(100000, '/'))));
    EXPECT_TRUE(sys::io::is_directory(ustring8("q")));
  }
  vexa_test::temp_directory tmp;  // absolute paths: the existing prefixes fail quietly
  EXPECT_TRUE(sys::create_directory(u16(tmp / "p/q/")));
  EXPECT_TRUE(sys::create_directory(u32(tmp / "p/q")));  // exists: true at once
  put(tmp / "plain", "x");
  EXPECT_FALSE(sys::create_directory(ustring8(tmp / "plain/")));
}

TEST(SystemFile, ListDirectoryGivesFullPathsOfEveryEntry) {
  vexa_test::temp_directory tmp;
  put(tmp / "f", "x");
  make_dir(tmp / "d");
  strings::ustring8_vector listed = sys::list_directory(ustring8(tmp.path()));
  std::sort(listed.begin(), listed.end());
  EXPECT_EQ(listed, (strings::ustring8_vector{ustring8(tmp / "d"), ustring8(tmp / "f")}));
  EXPECT_TRUE(sys::list_directory(ustring8(tmp / "f")).empty());

  put(tmp / "d/caf\xC3\xA9", "x");
  strings::ustring16 const expected = u16(tmp / "d/caf") + strings::ustring16{0xE9};
  EXPECT_EQ(sys::list_directory(u16(tmp / "d")), strings::ustring16_vector{expected});
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
  for (char const* d : {"d1", "d1/e", "d1/e/z", "d2", "locked"}) make_dir(tmp / d);
  for (char const* f : {"f1", "f2", "d1/g", "d1/e/h", "d1/e/z/i", "d2/k", "locked/no"}) put(tmp / f, f);
  put(tmp / "d2/write_only", "x", 0200);
  ASSERT_EQ(::chmod((tmp / "locked").c_str(), 0300), 0);  // no owner-read bit: skipped
  ASSERT_EQ(::symlink("d1/g", (tmp / "link_to_g").c_str()), 0);

  std::vector<std::string> expected{"before"};
  reference_walk(tmp.path(), expected);
  ASSERT_EQ(expected.size(), 8u);  // before, f1, f2, link_to_g, g, h, i, k
  strings::ustring8_vector out{ustring8("before")};  // never cleared
  sys::get_directory_files(ustring8(tmp.path()), out);
  EXPECT_EQ(std::vector<std::string>(out.begin(), out.end()), expected);
  strings::ustring32_vector out32;
  sys::get_directory_files(u32(tmp.path()), out32);
  ASSERT_EQ(out32.size(), 7u);
  EXPECT_EQ(out32.back(), u32(expected.back()));
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
  sys::get_directory_files(ustring8(cycle.path()), out);  // ends where the system refuses the path
  EXPECT_GT(out.size(), 1u);
  for (ustring8 const& f : out) EXPECT_EQ(f.substr(f.size() - 2), "/f");
}

TEST(SystemFile, OddPathsGiveTheFailureResults) {
  vexa_test::temp_directory tmp;
  vexa_test::working_directory here(tmp.path());
  put("f", "x");
  make_dir("d");
  put("d/inner", "x");
  put("-1", "minus one");
  strings::ustring16 const lone16{0xD800};  // the conversion's "-1" is not taken as a name
  strings::ustring32 const lone32{'d', 0xDFFF};
  ustring8 const paths[] = {ustring8("f\0tail", 6), ustring8("d\0", 2), ustring8(), ustring8(5000, 'n')};
  for (ustring8 const& p : paths) {
    SCOPED_TRACE(p.size());
    std::string content = "kept";
    EXPECT_EQ(sys::load_file(p, content), 1);
    EXPECT_EQ(content, "kept");
    EXPECT_FALSE(sys::have_read_access(p));
    EXPECT_TRUE(sys::list_directory(p).empty());
    strings::ustring8_vector out;
    sys::get_directory_files(p, out);
    EXPECT_TRUE(out.empty());
  }
  std::string content = "kept";
  EXPECT_EQ(sys::load_file(lone16, content), 1);
  EXPECT_EQ(sys::load_file(lone32, content), 1);
  EXPECT_EQ(content, "kept");
  EXPECT_TRUE(sys::list_directory(lone32).empty());
  EXPECT_EQ(sys::store_file(ustring8("g\0", 2), ustring8("x")), 1);
  EXPECT_EQ(sys::store_file(lone16, ustring8("x")), 1);
  EXPECT_EQ(sys::store_file(ustring8(5000, 'n'), ustring8("x")), 1);
  EXPECT_FALSE(sys::create_directory(ustring8("n\0/m/", 5)));
  EXPECT_FALSE(sys::create_directory(lone32));
  // A NUL that appears only in the UTF-8 form (U+0000, or a negative unit whose low byte is 0).
  EXPECT_EQ(sys::store_file(strings::ustring16{'g', 0, 'x'}, ustring8("x")), 1);
  EXPECT_EQ(sys::store_file(strings::ustring32{'g', static_cast<wchar_t>(0xFFFFFF00u)}, ustring8("x")), 1);
  EXPECT_FALSE(sys::create_directory(strings::ustring16{'n', 0, '/', 'm', '/'}));
  EXPECT_FALSE(on_disk("g") || on_disk("n"));
  EXPECT_EQ(sys::load_file(u16("-1"), content), 0);  // the real name still works
  EXPECT_EQ(content, "minus one");
}

}  // namespace
