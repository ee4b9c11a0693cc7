// Fuzz target: labeled_text_buffer parsing the input and writing it again.
//
// The whole input is the text. Parsing may raise only the documented
// std::out_of_range of a crafted length. Whatever was parsed is then written
// with as_str() and parsed again; the buffer's copies (copy constructor,
// clone, assign of the buffer) write the same text, overlaying a buffer with
// its own copy changes nothing, and the pointer form of assign reads the
// same entries.
#include <memory>
#include <stdexcept>
#include <string>

#include "fuzz_support.hpp"
#include "vexa/serialization/labeled_text_buffer.hpp"

namespace {

namespace serialization = vexa::serialization;
using labeled = serialization::labeled_text_buffer;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  vexa_fuzz::input in(data, size);
  std::string const text = in.rest();

  labeled parsed;
  try {
    parsed.assign(text);
  } catch (std::out_of_range const&) {
    // The entries before the crafted length stay.
  }
  std::string const written = parsed.as_str();

  // The written text parses again. It may raise like any crafted text: a
  // label read as "a \t" is normalised to the value label "a ", which the
  // writer then marks as a group, so its value is read as a group's text
  // (the header warns of such labels).
  labeled again;
  try {
    again.assign(written);
  } catch (std::out_of_range const&) {
  }

  labeled const copy(parsed);
  VEXA_FUZZ_CHECK(copy.as_str() == written, "a copy writes other text");
  std::unique_ptr<labeled> clone(parsed.clone());
  VEXA_FUZZ_CHECK(clone->as_str() == written, "a clone writes other text");
  labeled assigned;
  assigned.assign(parsed);
  VEXA_FUZZ_CHECK(assigned.as_str() == written, "an assigned buffer writes other text");
  parsed.overlay(copy);
  VEXA_FUZZ_CHECK(parsed.as_str() == written, "overlaying a buffer with itself changed it");

  // The pointer form reads the same entries.
  labeled third;
  try {
    third.assign(text.data(), static_cast<int>(text.size()));
  } catch (std::out_of_range const&) {
  }
  VEXA_FUZZ_CHECK(third.as_str() == written, "assign(char const*, int) reads other entries");
  return 0;
}
