#include "vexa/strings/code_page.hpp"

#include <errno.h>
#include <iconv.h>
#include <langinfo.h>

#include <cstddef>

#include "vexa/exceptions/logic_error.hpp"
#include "vexa/exceptions/runtime_error.hpp"
#include "vexa/strings/unicode.hpp"

namespace VEXA_2_10 {
namespace strings {
namespace {

char const raise_file[] = "strings/code_page";
iconv_t const no_descriptor = reinterpret_cast<iconv_t>(-1);
std::size_t const iconv_failed = static_cast<std::size_t>(-1);

// Room asked for when the closing flush finds the output full: the input is
// gone by then, so "twice the remaining input" would be nothing. A converter
// holds back at most one character plus its combining marks.
std::size_t const flush_growth = 16;

// The input offered to one iconv call after a rejected byte, doubled after
// every call that succeeds. glibc converts through an intermediate buffer and,
// when the second stage rejects a character, converts the first stage again
// to find where it stopped: each rejection costs time in proportion to the
// input offered, so a text full of characters a page lacks would take time
// quadratic in its length. A small window keeps the cost per rejected byte
// constant; the result is the same, since only where iconv is told the input
// ends changes, and a sequence the window cuts is offered again in full.
std::size_t const small_window = 16;

// One iconv descriptor. The destructor closes it on the throwing paths;
// the normal path closes it through close(), which reports a failure.
class descriptor {
 public:
  descriptor(char const* to, char const* from, char const* function)
      : _cd(iconv_open(to, from)) {
    if (_cd == no_descriptor) {
      if (errno == EINVAL) {
        throw exceptions::runtime_error("convertions not supported", __LINE__, raise_file,
                                        function);
      }
      throw exceptions::runtime_error("Unknown failure on iconv open", __LINE__, raise_file,
                                      function);
    }
  }
  ~descriptor() {
    if (_cd != no_descriptor) iconv_close(_cd);
  }
  descriptor(descriptor const&) = delete;
  descriptor& operator=(descriptor const&) = delete;

  iconv_t get() const { return _cd; }

  void close(char const* function) {
    iconv_t const cd = _cd;
    _cd = no_descriptor;
    if (iconv_close(cd) != 0) {
      throw exceptions::runtime_error("iconv failed to close", __LINE__, raise_file, function);
    }
  }

 private:
  iconv_t _cd;
};

// The output buffer with its write position and the room left after it.
struct output {
  std::string bytes;
  std::size_t position;
  std::size_t space;

  explicit output(std::size_t size) : bytes(size, '\0'), position(0), space(size) {}

  // Adds `extra` zero bytes; the room becomes everything from the position
  // to the new end, so every retry has more room than the failed attempt.
  void grow(std::size_t extra) {
    bytes.resize(bytes.size() + extra, '\0');
    space = bytes.size() - position;
  }
};

[[noreturn]] void raise_iconv_error(unsigned int line, char const* function) {
  throw exceptions::runtime_error("Unknown iconv error", line, raise_file, function);
}

// One iconv call from the current positions; returns iconv's result and
// moves `out.position` past what was written.
std::size_t step(iconv_t cd, char** in, std::size_t* in_left, output& out) {
  char* const start = &out.bytes[0];
  char* at = start + out.position;
  std::size_t const result = iconv(cd, in, in_left, &at, &out.space);
  out.position = static_cast<std::size_t>(at - start);
  return result;
}

// Writes what the converter holds back (a base letter waiting for a
// combining mark) and returns it to its initial state, growing the output
// until it fits.
void flush(iconv_t cd, output& out, char const* function) {
  while (step(cd, nullptr, nullptr, out) == iconv_failed) {
    if (errno != E2BIG) raise_iconv_error(__LINE__, function);
    out.grow(flush_growth);
  }
}

// The whole conversion of `n` bytes at `text` from `from` to `to`.
std::string convert(char const* to, char const* from, char const* text, std::size_t n,
                    char const* function) {
  descriptor cd(to, from, function);
  output out(n);
  iconv(cd.get(), nullptr, nullptr, nullptr, nullptr);  // initial shift state

  // iconv does not write through its input pointer; the C interface is
  // merely older than const.
  char* in = const_cast<char*>(text);
  std::size_t in_left = n;
  std::size_t window = n;
  while (in_left > 0) {
    // iconv sees at most `window` bytes of the input (see small_window).
    std::size_t const before = in_left;
    std::size_t const offered = window < in_left ? window : in_left;
    std::size_t offered_left = offered;
    std::size_t const result = step(cd.get(), &in, &offered_left, out);
    in_left -= offered - offered_left;
    if (result != iconv_failed) {
      window = window > in_left ? window : 2 * window;
      continue;
    }
    switch (errno) {
      case E2BIG:
        out.grow(2 * in_left);
        break;
      case EILSEQ:
        // One "?" per rejected byte, then iconv tries again one byte on. A
        // letter held back before the byte comes out first, so the "?" keeps
        // its place and no mark after the byte combines with that letter.
        flush(cd.get(), out, function);
        if (out.space == 0) out.grow(2 * in_left);
        out.bytes[out.position++] = '?';
        --out.space;
        ++in;
        --in_left;
        window = small_window;
        break;
      case EINVAL:
        if (offered < before) {
          // Only the window cut the sequence: offer more of the input.
          window = 2 * window;
          break;
        }
        // A sequence cut off by the end of the input: the "?" goes past the
        // written part, so the incomplete tail simply disappears.
        if (out.space > 0) out.bytes[out.position] = '?';
        in_left = 0;
        break;
      default:
        raise_iconv_error(__LINE__, function);
    }
  }

  // What the converter still holds back (a base letter waiting for a
  // combining mark, a pending shift sequence) comes out now.
  flush(cd.get(), out, function);

  out.bytes.resize(out.position);
  cd.close(function);
  return std::move(out.bytes);
}

}  // namespace

// ---- construction and assignment ------------------------------------------------

code_page::code_page() : _encoding(none) {}
code_page::code_page(types::nil_t const&) : _encoding(none) {}
code_page::code_page(encoding_type const& encoding) : _encoding(encoding) {}
code_page::code_page(code_page const& other) : _encoding(other._encoding) {}
code_page::~code_page() {}

code_page::encoding_type code_page::type() const { return _encoding; }
void code_page::type(encoding_type const& encoding) { _encoding = encoding; }

code_page& code_page::assign(code_page const& other) {
  _encoding = other._encoding;
  return *this;
}
code_page& code_page::assign(encoding_type const& encoding) {
  _encoding = encoding;
  return *this;
}
code_page& code_page::assign(types::nil_t const&) {
  _encoding = none;
  return *this;
}
code_page& code_page::operator=(code_page const& other) { return assign(other); }
code_page& code_page::operator=(encoding_type const& encoding) { return assign(encoding); }
code_page& code_page::operator=(types::nil_t const& nil) { return assign(nil); }

// ---- comparison -------------------------------------------------------------------

bool code_page::equal(code_page const& other) const { return _encoding == other._encoding; }
bool code_page::equal(encoding_type const& encoding) const { return _encoding == encoding; }
bool code_page::operator==(code_page const& other) const { return equal(other); }
bool code_page::operator==(encoding_type const& encoding) const { return equal(encoding); }
bool code_page::operator!=(code_page const& other) const { return !equal(other); }
bool code_page::operator!=(encoding_type const& encoding) const { return !equal(encoding); }

// Only a negative number counts as nil; 0 (what nil construction stores) does
// not. Kept so for compatibility.
bool code_page::equal(types::nil_t const&) const { return _encoding < 0; }
bool code_page::operator==(types::nil_t const& nil) const { return equal(nil); }

// ---- names ------------------------------------------------------------------------

std::string code_page::to_system_type(encoding_type encoding) const {
  switch (encoding) {
    case system_code_set:
    case system_code_set_2:
    case system_code_set_3:
      return nl_langinfo(CODESET);
    case utf8: return "UTF-8";
    case cp932: return "WINDOWS-31J";
    case cp936: return "GBK";
    case cp949: return "CP949";
    case cp950: return "BIG5";
    case cp1250: return "CP1250";
    case cp1251: return "CP1251";
    case cp1252: return "CP1252";
    case cp1253: return "CP1253";
    case cp1254: return "CP1254";
    case cp1255: return "CP1255";
    case cp1256: return "CP1256";
    case cp1257: return "CP1257";
    case cp1258: return "CP1258";
    case koi8_r: return "KOI8-R";
    case koi8_u: return "KOI8-U";
    case iso_8859_1: return "ISO-8859-1";
    case iso_8859_2: return "ISO-8859-2";
    case iso_8859_3: return "ISO-8859-3";
    case iso_8859_4: return "ISO-8859-4";
    case iso_8859_5: return "ISO-8859-5";
    case iso_8859_6: return "ISO-8859-6";
    case iso_8859_7: return "ISO-8859-7";
    case iso_8859_8: return "ISO-8859-8";
    case iso_8859_9: return "ISO-8859-9";
    case iso_8859_15: return "ISO-8859-15";
    case ascii: return "ANSI_X3.4-1968";
    case none: break;
  }
  throw exceptions::invalid_argument_value("Not valid code_page type", __LINE__, raise_file,
                                           "to_system_type");
}

// ---- conversions --------------------------------------------------------------------

std::string code_page::encode(ustring8 const& text) const {
  std::string const target = to_system_type(_encoding);
  return convert(target.c_str(), "UTF-8", text.data(), text.size(), "encode");
}

std::string code_page::encode(ustring16 const& text) const {
  return encode(utf16_to_utf8(text));
}

std::string code_page::encode(ustring32 const& text) const {
  return encode(utf32_to_utf8(text));
}

ustring8 code_page::as_utf8(std::string const& bytes) const {
  std::string const source = to_system_type(_encoding);
  return ustring8(convert("UTF-8", source.c_str(), bytes.data(), bytes.size(), "as_utf8"));
}

ustring8 code_page::as_ustring(std::string const& bytes) const { return as_utf8(bytes); }

ustring16 code_page::as_utf16(std::string const& bytes) const {
  return utf8_to_utf16(as_utf8(bytes));
}

ustring32 code_page::as_utf32(std::string const& bytes) const {
  return utf8_to_utf32(as_utf8(bytes));
}

}  // namespace strings
}  // namespace VEXA_2_10
