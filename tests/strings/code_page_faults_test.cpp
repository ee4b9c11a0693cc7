// strings::code_page when iconv itself fails, and the work it asks of iconv.
// The test program defines iconv_open, iconv and iconv_close: the library's
// calls bind to these, which forward to the C library's unless a fault is
// armed. Every failure must raise its error and still close the descriptor.
#include <dlfcn.h>
#include <errno.h>
#include <iconv.h>

#include <gtest/gtest.h>

#include <string>

#include "vexa/exceptions/runtime_error.hpp"
#include "vexa/strings/code_page.hpp"

namespace {

enum class fault { none, open_unsupported, open_other, convert, flush, close };
fault armed = fault::none;
long open_descriptors = 0;             // opened minus closed
unsigned long long offered_bytes = 0;  // input offered to conversion calls

template <typename F>
F next(char const* name) { return reinterpret_cast<F>(dlsym(RTLD_NEXT, name)); }

}  // namespace

extern "C" iconv_t iconv_open(char const* to, char const* from) {
  static auto const real = next<iconv_t (*)(char const*, char const*)>("iconv_open");
  if (armed == fault::open_unsupported || armed == fault::open_other) {
    errno = armed == fault::open_unsupported ? EINVAL : ENOMEM;
    return reinterpret_cast<iconv_t>(-1);
  }
  iconv_t const cd = real(to, from);
  open_descriptors += cd != reinterpret_cast<iconv_t>(-1);
  return cd;
}

extern "C" size_t iconv(iconv_t cd, char** in, size_t* in_left, char** out, size_t* out_left) {
  static auto const real = next<size_t (*)(iconv_t, char**, size_t*, char**, size_t*)>("iconv");
  bool const converting = in != nullptr && *in != nullptr;
  if ((armed == fault::convert && converting) || (armed == fault::flush && !converting && out)) {
    errno = EBADF;
    return static_cast<size_t>(-1);
  }
  if (converting) offered_bytes += *in_left;
  return real(cd, in, in_left, out, out_left);
}

extern "C" int iconv_close(iconv_t cd) {
  static auto const real = next<int (*)(iconv_t)>("iconv_close");
  int const result = real(cd);
  open_descriptors -= result == 0;
  if (armed != fault::close) return result;
  errno = EBADF;
  return -1;
}

namespace {

using namespace vexa::strings;

// "message @ file/function" of the runtime_error raised, or "nothing".
template <typename F>
std::string raised(F&& call) {
  try {
    call();
    return "nothing";
  } catch (vexa::exceptions::runtime_error const& e) {
    return std::string(e.get_message()) + " @ " + e.get_state().file + "/" + e.get_state().function;
  }
}

}  // namespace

TEST(CodePageFaults, EachIconvFailureRaisesAndReleasesTheDescriptor) {
  struct Case { fault f; std::string message; };
  Case const cases[] = {
      {fault::open_unsupported, "convertions not supported"},
      {fault::open_other, "Unknown failure on iconv open"},
      {fault::convert, "Unknown iconv error"},
      {fault::flush, "Unknown iconv error"},
      {fault::close, "iconv failed to close"},
  };
  code_page const page(code_page::cp1252);
  for (Case const& c : cases) {
    long const before = open_descriptors;
    armed = c.f;
    EXPECT_EQ(c.message + " @ strings/code_page/encode", raised([&] { page.encode("caf\xC3\xA9"); }));
    EXPECT_EQ(c.message + " @ strings/code_page/encode", raised([&] { page.encode(ustring32(L"x")); }));
    EXPECT_EQ(c.message + " @ strings/code_page/as_utf8", raised([&] { page.as_utf16("caf\xE9"); }));
    armed = fault::none;
    EXPECT_EQ(before, open_descriptors) << c.message;
  }
  // An empty text makes no conversion call, but is still flushed and closed.
  armed = fault::convert;
  EXPECT_EQ("nothing", raised([&] { page.encode(""); }));
  armed = fault::close;
  EXPECT_EQ("iconv failed to close @ strings/code_page/as_utf8", raised([&] { page.as_utf8(""); }));
  armed = fault::none;
}

// Each iconv call that rejects a character costs glibc time in proportion to
// the input offered; a text full of characters the page lacks must not be
// offered whole again after every rejection.
TEST(CodePageFaults, RejectedCharactersDoNotMakeTheWorkQuadratic) {
  std::string cyrillic;
  for (int i = 0; i < 32768; ++i) cyrillic += "\xD0\xAF";
  unsigned long long const before = offered_bytes;
  EXPECT_EQ(std::string(cyrillic.size(), '?'), code_page(code_page::cp1252).encode(cyrillic));
  EXPECT_LT(offered_bytes - before, 64ull * cyrillic.size());  // quadratic would be ~2^31
}
