// Fuzz target: serialize_binary_buf and serialize_text_buf.
//
// Byte 0: bit 0 picks the format (0 binary, 1 text), bit 1 the mode.
//
// Read mode: byte 1 is the number of reads n; the next n bytes name the reads
// (the low four bits: int8 ... uint64, float, double, string, buffer,
// at_end, reset_read); the rest of the input is the buffer's content. A read
// of `buffer` continues with the buffer it returned, so nested content is
// walked too, without recursion. Reads must never fail, except the documented
// std::out_of_range of a crafted length; once a buffer is at its end it stays
// there until reset_read.
//
// Write mode: the rest of the input is a list of values (a type byte and its
// bytes; strings take a length byte). They are appended, then read back in
// the same order and must come back equal (floating values bit for bit in
// the binary format; in the text format doubles exactly at 17 significant
// digits, floats at 9 within one unit of the last place);
// copies, clones and assign() carry the same content.
#include <cmath>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz_support.hpp"
#include "vexa/serialization/serialize_binary_buf.hpp"
#include "vexa/serialization/serialize_text_buf.hpp"

namespace {

namespace serialization = vexa::serialization;
using buffer = serialization::serialize_buffer;

std::unique_ptr<buffer> make(bool text, std::string const& content) {
  if (text) return std::make_unique<serialization::serialize_text_buf>(content);
  return std::make_unique<serialization::serialize_binary_buf>(content);
}

void read_sequence(vexa_fuzz::input& in, bool text) {
  unsigned const count = in.byte();
  std::string const reads = in.bytes(count);
  std::unique_ptr<buffer> current = make(text, in.rest());
  for (unsigned char r : reads) {
    bool const was_at_end = current->at_end();
    unsigned const what = r & 15;
    try {
      switch (what) {
        case 0: current->read_int8(); break;
        case 1: current->read_int16(); break;
        case 2: current->read_int32(); break;
        case 3: current->read_int64(); break;
        case 4: current->read_uint8(); break;
        case 5: current->read_uint16(); break;
        case 6: current->read_uint32(); break;
        case 7: current->read_uint64(); break;
        case 8: current->read_float(); break;
        case 9: current->read_double(); break;
        case 10: {
          std::string const s = current->read_string();
          VEXA_FUZZ_CHECK(s.size() <= current->as_str().size(), "a string longer than the content");
          break;
        }
        case 11: {
          std::unique_ptr<buffer> inner(current->read_buffer());
          VEXA_FUZZ_CHECK(inner != nullptr, "read_buffer gave null");
          VEXA_FUZZ_CHECK(inner->as_str().size() <= current->as_str().size(),
                          "a nested buffer larger than its parent");
          current = std::move(inner);  // go on inside it
          continue;
        }
        case 12: current->reset_read(); continue;
        default: continue;
      }
    } catch (std::out_of_range const&) {
      // A crafted length that starts beyond the content (documented).
    }
    if (was_at_end) VEXA_FUZZ_CHECK(current->at_end(), "a read moved back from the end");
  }
}

// ---- write, then read back ---------------------------------------------------------

struct value {
  unsigned type;
  std::uint64_t bits;
  std::string text;
};

template <typename T>
T from_bits(std::uint64_t bits) {
  T v;
  std::memcpy(&v, &bits, sizeof v);
  return v;
}

template <typename T>
std::uint64_t to_bits(T v) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &v, sizeof v);
  return bits;
}

void append(buffer& b, value const& v) {
  switch (v.type) {
    case 0: b.append_int8(from_bits<signed char>(v.bits)); break;
    case 1: b.append_int16(from_bits<short>(v.bits)); break;
    case 2: b.append_int32(from_bits<int>(v.bits)); break;
    case 3: b.append_int64(from_bits<long>(v.bits)); break;
    case 4: b.append_uint8(from_bits<unsigned char>(v.bits)); break;
    case 5: b.append_uint16(from_bits<unsigned short>(v.bits)); break;
    case 6: b.append_uint32(from_bits<unsigned int>(v.bits)); break;
    case 7: b.append_uint64(from_bits<unsigned long>(v.bits)); break;
    case 8: b.append_float(from_bits<float>(v.bits), 9); break;
    case 9: b.append_double(from_bits<double>(v.bits), 17); break;
    default: b.append_string(v.text); break;
  }
}

// The value read back, as bits (numbers) or text.
value read_back(buffer const& b, unsigned type) {
  value v{type, 0, {}};
  switch (type) {
    case 0: v.bits = to_bits(b.read_int8()); break;
    case 1: v.bits = to_bits(b.read_int16()); break;
    case 2: v.bits = to_bits(b.read_int32()); break;
    case 3: v.bits = to_bits(b.read_int64()); break;
    case 4: v.bits = to_bits(b.read_uint8()); break;
    case 5: v.bits = to_bits(b.read_uint16()); break;
    case 6: v.bits = to_bits(b.read_uint32()); break;
    case 7: v.bits = to_bits(b.read_uint64()); break;
    case 8: v.bits = to_bits(b.read_float()); break;
    case 9: v.bits = to_bits(b.read_double()); break;
    default: v.text = b.read_string(); break;
  }
  return v;
}

bool same(value const& wrote, value const& got, bool text) {
  if (wrote.type >= 10) return wrote.text == got.text;
  if (wrote.type == 8) {
    float const a = from_bits<float>(wrote.bits), b = from_bits<float>(got.bits);
    if (std::isnan(a)) return std::isnan(b);
    // Nine digits go through a double on the way back: allow the one-ulp
    // step that double rounding may take.
    return text ? (a == b || std::nextafter(a, HUGE_VALF) == b || std::nextafter(a, -HUGE_VALF) == b)
                : (wrote.bits & 0xFFFFFFFFu) == got.bits;
  }
  if (wrote.type == 9) {
    double const a = from_bits<double>(wrote.bits), b = from_bits<double>(got.bits);
    if (std::isnan(a)) return std::isnan(b);
    return text ? a == b : wrote.bits == got.bits;
  }
  static unsigned const widths[] = {1, 2, 4, 8, 1, 2, 4, 8};
  unsigned const width = widths[wrote.type];
  std::uint64_t const mask = width == 8 ? ~0ull : ((1ull << (8 * width)) - 1);
  return (wrote.bits & mask) == (got.bits & mask);
}

void write_and_read(vexa_fuzz::input& in, bool text) {
  std::vector<value> values;
  while (!in.empty() && values.size() < 256) {
    value v{in.pick(11), 0, {}};
    if (v.type == 10) v.text = in.chunk();
    else v.bits = static_cast<std::uint64_t>(in.word32()) | (static_cast<std::uint64_t>(in.word32()) << 32);
    values.push_back(v);
  }
  std::unique_ptr<buffer> written = make(text, "");
  for (value const& v : values) append(*written, v);

  std::unique_ptr<buffer> copy(written->clone());
  std::unique_ptr<buffer> other = make(text, "");
  other->assign(*written);
  for (buffer const* b : {written.get(), copy.get(), other.get()}) {
    VEXA_FUZZ_CHECK(b->as_str() == written->as_str(), "a copy holds other content");
    b->reset_read();
    for (value const& v : values) {
      value const got = read_back(*b, v.type);
      VEXA_FUZZ_CHECK(same(v, got, text), "type " + std::to_string(v.type) + " wrote " +
                                              std::to_string(v.bits) + " '" + v.text + "', read " +
                                              std::to_string(got.bits) + " '" + got.text + "'");
    }
    VEXA_FUZZ_CHECK(b->at_end(), "content left after the last value");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  unsigned const choice = in.byte();
  bool const text = (choice & 1) != 0;
  if (choice & 2) write_and_read(in, text);
  else read_sequence(in, text);
  return 0;
}
