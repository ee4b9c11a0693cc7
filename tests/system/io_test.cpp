#include "vexa/system/io.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>

#include "system/temp_directory.hpp"

namespace io = vexa::system::io;
namespace strings = vexa::strings;

namespace {

void touch(std::string const& path) {
  std::FILE* f = std::fopen(path.c_str(), "w");
  ASSERT_NE(f, nullptr) << path;
  std::fclose(f);
}

bool on_disk(std::string const& path) {
  struct stat info;
  return ::lstat(path.c_str(), &info) == 0;
}

strings::ustring16 u16(std::string const& ascii) { return strings::ustring16(ascii.begin(), ascii.end()); }
strings::ustring32 u32(std::string const& ascii) { return strings::ustring32(ascii.begin(), ascii.end()); }

struct kind_case {
  char const* name;
  std::string path;
  bool exists, is_directory, is_file;
};

// The three answers for one path, the same through every string type.
void expect_kind(kind_case const& c) {
  SCOPED_TRACE(c.name);
  strings::ustring8 const p8(c.path);
  EXPECT_EQ(io::exists(p8), c.exists);
  EXPECT_EQ(io::is_directory(p8), c.is_directory);
  EXPECT_EQ(io::is_file(p8), c.is_file);
  EXPECT_EQ(io::exists(u16(c.path)), c.exists);
  EXPECT_EQ(io::is_directory(u16(c.path)), c.is_directory);
  EXPECT_EQ(io::is_file(u32(c.path)), c.is_file);
}

TEST(SystemIo, KindTestsLookAtOneModeBitAndFollowLinks) {
  vexa_test::temp_directory tmp;
  touch(tmp / "file");
  ASSERT_EQ(::mkdir((tmp / "dir").c_str(), 0700), 0);
  ASSERT_EQ(::symlink("file", (tmp / "link").c_str()), 0);
  ASSERT_EQ(::symlink("gone", (tmp / "dangling").c_str()), 0);
  // A socket's type code 0140000 holds both bits.
  int const sock = ::socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_GE(sock, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::string const socket_path = tmp / "sock";
  ASSERT_LT(socket_path.size(), sizeof address.sun_path);
  std::memcpy(address.sun_path, socket_path.c_str(), socket_path.size() + 1);
  ASSERT_EQ(::bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

  kind_case const cases[] = {
      {"directory", tmp / "dir", true, true, false},
      {"regular file", tmp / "file", true, false, true},
      {"link to a file", tmp / "link", true, false, true},
      {"dangling link", tmp / "dangling", false, false, false},
      {"missing", tmp / "missing", false, false, false},
      {"socket", socket_path, true, true, true},
      {"character device", "/dev/null", true, false, false},
      {"empty path", "", false, false, false},
      {"5000-byte path", std::string(5000, 'a'), false, false, false},
  };
  for (kind_case const& c : cases) expect_kind(c);
  ::close(sock);
}

TEST(SystemIo, MoveTakesTheDestinationFirst) {
  vexa_test::temp_directory tmp;
  touch(tmp / "a");
  io::move(strings::ustring8(tmp / "b"), strings::ustring8(tmp / "a"));
  EXPECT_FALSE(on_disk(tmp / "a"));
  EXPECT_TRUE(on_disk(tmp / "b"));
  io::move(u16(tmp / "c"), u16(tmp / "b"));
  io::move(u32(tmp / "d"), u32(tmp / "c"));
  EXPECT_FALSE(on_disk(tmp / "c"));
  EXPECT_TRUE(on_disk(tmp / "d"));
  io::move(strings::ustring8(tmp / "e"), strings::ustring8(tmp / "missing"));  // silent
  EXPECT_FALSE(on_disk(tmp / "e"));
}

TEST(SystemIo, RemovalsDiscardTheirOutcome) {
  vexa_test::temp_directory tmp;
  touch(tmp / "f");
  ASSERT_EQ(::mkdir((tmp / "full").c_str(), 0700), 0);
  touch(tmp / "full/inside");
  ASSERT_EQ(::mkdir((tmp / "empty").c_str(), 0700), 0);

  io::remove_file(strings::ustring8(tmp / "f"));
  io::remove_dir(u16(tmp / "full"));  // not empty: stays
  io::remove_dir(u32(tmp / "empty"));
  io::remove_file(strings::ustring8(tmp / "missing"));
  io::remove_dir(strings::ustring8(tmp / "missing"));
  EXPECT_FALSE(on_disk(tmp / "f"));
  EXPECT_TRUE(on_disk(tmp / "full/inside"));
  EXPECT_FALSE(on_disk(tmp / "empty"));
}

// A NUL byte, or a surrogate the conversion cannot take, makes a path that
// names no file; the shorter path before the NUL and the conversion's "-1"
// are never touched.
TEST(SystemIo, PathsThatNameNoFile) {
  vexa_test::temp_directory tmp;
  vexa_test::working_directory here(tmp.path());
  touch("f");
  touch("-1");
  ASSERT_EQ(::mkdir("d", 0700), 0);
  strings::ustring8 const nul_file("f\0x", 3);
  strings::ustring8 const nul_dir("d\0", 2);
  strings::ustring16 const lone16{'-', 0xD800};
  strings::ustring32 const lone32{0xDC00};

  EXPECT_FALSE(io::exists(nul_file));
  EXPECT_FALSE(io::is_file(nul_file));
  EXPECT_FALSE(io::is_directory(nul_dir));
  EXPECT_FALSE(io::exists(lone16));
  EXPECT_FALSE(io::is_file(lone32));
  EXPECT_TRUE(io::exists(u16("-1")));  // a real "-1" is still a name

  io::remove_file(nul_file);
  io::remove_dir(nul_dir);
  io::remove_file(lone16);
  io::remove_file(lone32);
  io::move(strings::ustring8("g"), nul_file);
  io::move(strings::ustring16{'g'}, lone16);
  io::move(strings::ustring8("g\0", 2), strings::ustring8("f"));
  EXPECT_TRUE(on_disk("f"));
  EXPECT_TRUE(on_disk("-1"));
  EXPECT_TRUE(on_disk("d"));
  EXPECT_FALSE(on_disk("g"));
}

TEST(SystemIo, NonAsciiNamesThroughEveryStringType) {
  vexa_test::temp_directory tmp;
  touch(tmp / "caf\xC3\xA9\xF0\x9F\x98\x80");
  std::string const dir = tmp.path() + "/";
  strings::ustring16 p16 = u16(dir);
  p16 += strings::ustring16{'c', 'a', 'f', 0xE9, 0xD83D, 0xDE00};
  strings::ustring32 p32 = u32(dir);
  p32 += strings::ustring32{L'c', L'a', L'f', 0xE9, 0x1F600};
  EXPECT_TRUE(io::is_file(p16));
  EXPECT_TRUE(io::is_file(p32));
}

}  // namespace
