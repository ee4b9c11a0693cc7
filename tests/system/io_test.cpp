#include "vexa/system/io.hpp"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <string>

#include "system/temp_directory.hpp"

namespace io = vexa::system::io;
namespace strings = vexa::strings;
using strings::ustring8;
using vexa_test::on_disk;
using vexa_test::touch;
using vexa_test::u16;
using vexa_test::u32;

namespace {

TEST(SystemIo, KindTestsLookAtOneModeBitAndFollowLinks) {
  vexa_test::temp_directory tmp;
  touch(tmp / "file");
  ASSERT_EQ(::mkdir((tmp / "dir").c_str(), 0700), 0);
  ASSERT_EQ(::symlink("file", (tmp / "link").c_str()), 0);
  ASSERT_EQ(::symlink("gone", (tmp / "dangling").c_str()), 0);
  int const sock = ::socket(AF_UNIX, SOCK_STREAM, 0);  // type 0140000 holds both bits
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::string const socket_path = tmp / "sock";
  std::memcpy(address.sun_path, socket_path.c_str(), socket_path.size() + 1);
  ASSERT_EQ(::bind(sock, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

  struct {
    char const* name;
    std::string path;
    bool exists, is_directory, is_file;
  } const cases[] = {
      {"directory", tmp / "dir", true, true, false},
      {"regular file", tmp / "file", true, false, true},
      {"link to a file", tmp / "link", true, false, true},
      {"dangling link", tmp / "dangling", false, false, false},
      {"socket", socket_path, true, true, true},
      {"character device", "/dev/null", true, false, false},
      {"empty path", "", false, false, false},
      {"5000-byte path", std::string(5000, 'a'), false, false, false},
  };
  for (auto const& c : cases) {
    SCOPED_TRACE(c.name);
    EXPECT_EQ(io::exists(ustring8(c.path)), c.exists);
    EXPECT_EQ(io::is_directory(u16(c.path)), c.is_directory);
    EXPECT_EQ(io::is_file(u32(c.path)), c.is_file);
  }
  ::close(sock);
}

TEST(SystemIo, MoveTakesTheDestinationFirstAndRemovalsAreSilent) {
  vexa_test::temp_directory tmp;
  touch(tmp / "a");
  io::move(ustring8(tmp / "b"), ustring8(tmp / "a"));
  io::move(u16(tmp / "c"), u16(tmp / "b"));
  io::move(u32(tmp / "d"), u32(tmp / "c"));
  EXPECT_FALSE(on_disk(tmp / "a") || on_disk(tmp / "b") || on_disk(tmp / "c"));
  EXPECT_TRUE(on_disk(tmp / "d"));

  ASSERT_EQ(::mkdir((tmp / "full").c_str(), 0700), 0);
  touch(tmp / "full/inside");
  ASSERT_EQ(::mkdir((tmp / "empty").c_str(), 0700), 0);
  io::remove_file(ustring8(tmp / "d"));
  io::remove_dir(u16(tmp / "full"));  // not empty: stays, nothing reported
  io::remove_dir(u32(tmp / "empty"));
  io::remove_file(ustring8(tmp / "missing"));
  EXPECT_FALSE(on_disk(tmp / "d"));
  EXPECT_TRUE(on_disk(tmp / "full/inside"));
  EXPECT_FALSE(on_disk(tmp / "empty"));
}

// A NUL byte, or a surrogate the conversion cannot take, makes a path that
// names no file: neither the shorter path before the NUL nor the
// conversion's "-1" is ever touched.
TEST(SystemIo, PathsThatNameNoFile) {
  vexa_test::temp_directory tmp;
  vexa_test::working_directory here(tmp.path());
  touch("f");
  touch("-1");
  ustring8 const nul_file("f\0x", 3);
  strings::ustring16 const lone16{'-', 0xD800};
  strings::ustring32 const lone32{0xDC00};

  EXPECT_FALSE(io::exists(nul_file) || io::is_file(nul_file));
  EXPECT_FALSE(io::exists(lone16) || io::is_file(lone32));
  EXPECT_TRUE(io::exists(u16("-1")));  // a real "-1" is still a name
  io::remove_file(nul_file);
  io::remove_file(lone16);
  io::remove_dir(lone32);
  io::move(ustring8("g"), nul_file);
  io::move(strings::ustring16{'g'}, lone16);
  io::move(ustring8("g\0", 2), ustring8("f"));
  EXPECT_TRUE(on_disk("f") && on_disk("-1"));
  EXPECT_FALSE(on_disk("g"));

  strings::ustring32 const cafe = u32(tmp / "caf") + strings::ustring32{0xE9, 0x1F600};
  touch(tmp / "caf\xC3\xA9\xF0\x9F\x98\x80");
  EXPECT_TRUE(io::is_file(cafe));
}

}  // namespace
