// vexa — `serialization::labeled_text_buffer`: a tree of labeled values that
// serializes itself in the text format.
//
// Each label names one entry holding a value (a `types::variant`), a nested
// group (another labeled_text_buffer), or both. Entries are kept in label
// order (byte-wise). The text written by `as_str()` and read by `assign` is a
// sequence of length-prefixed strings of the text format (decimal length,
// 0x01, the bytes, 0x01), for each entry in label order:
//   - no group (or an empty one): the label, then `value.as_string()`;
//   - a group: first label and value as above when the value is not nil,
//     then the label followed by one space (the group marker), then the
//     group's own text as one string.
//
//   serialization::labeled_text_buffer buf;
//   buf.add_value("b", 5); buf.create_group("a").add_value("c", "x");
//   buf.as_str();   // "2\x01" "a \x01"  "8\x01" "1\x01" "c\x01" "1\x01" "x\x01" "\x01"
//                   //  "1\x01" "b\x01"  "1\x01" "5\x01"
//
// Decisions:
//   - Labels are normalised by `add_value` and `create_group`: trailing,
//     then leading newline, carriage return and tab characters are removed
//     (spaces are kept). The look-ups (`retrieve_*`, `has_*`) normalise their
//     label the same way, so "a\t" finds "a".
//   - Parsing gives every value back as a `std::string` variant, whatever it
//     held when written (read it with the variant's `as_...` accessors). The
//     marker space is stripped from a group's label, so labels round-trip
//     exactly; labels read from the text are normalised like any other.
//   - A label given to `add_value` that ends in a space is stored as it is,
//     but in the text it looks like a group marker: parsing then reads its
//     value as a nested group. Avoid such labels.
//   - An empty label (also one that normalises to nothing) is stored as it
//     is. It sorts first, and an empty label ends parsing, so the text of a
//     buffer holding one reads back empty.
//   - An empty group counts as no group: `has_group` is false for it, and
//     it is written (and read back) as a value, "" when the value is nil.
//   - There is no depth limit. Parsing, writing, copying, overlaying and
//     destroying walk the tree with explicit stacks on the heap, and nested
//     groups are parsed in place, so a text nested 100,000 groups deep costs
//     time and memory in proportion to its size and nothing on the call stack.
//   - Errors of the text format propagate from `assign` (a crafted length
//     that starts beyond the text raises `std::out_of_range`); the entries
//     read before the error are kept.
#ifndef VEXA_SERIALIZATION_LABELED_TEXT_BUFFER_HPP
#define VEXA_SERIALIZATION_LABELED_TEXT_BUFFER_HPP

#include <map>
#include <string>
#include <utility>

#include "vexa/export.hpp"
#include "vexa/serialization/labeled_serialize_buffer.hpp"
#include "vexa/serialization/serialize_text_buf.hpp"
#include "vexa/types/variant.hpp"

namespace VEXA_2_10 {
namespace serialization {

class VEXA_API labeled_text_buffer : public labeled_serialize_buffer {
 public:
  // No entries.
  labeled_text_buffer();
  // A deep copy of the other buffer's entries.
  labeled_text_buffer(labeled_text_buffer const& other);
  // The entries parsed from `text`, as `assign(text)`.
  explicit labeled_text_buffer(std::string const& text);
  labeled_text_buffer& operator=(labeled_text_buffer const& other);
  ~labeled_text_buffer() override;

  // create
  // A new buffer without entries, owned by the caller.
  //   std::unique_ptr<labeled_text_buffer> fresh(buf.create());   // fresh->is_empty()
  virtual labeled_text_buffer* create() const;

  // clone
  // A new deep copy, owned by the caller.
  //   std::unique_ptr<labeled_text_buffer> copy(buf.clone());
  virtual labeled_text_buffer* clone() const;

  // add_value
  // Stores `value` under the normalised label, creating the entry if needed
  // (its group is kept).
  //   buf.add_value("width\n", 80);
  //   buf.retrieve_value("width").as_int();   // 80
  void add_value(std::string const& label, types::variant const& value);

  // create_group
  // The group of the normalised label, created empty (with a nil value) if
  // the label is new. The reference stays valid until the entry is removed
  // (by `assign`) or the buffer is destroyed.
  //   buf.create_group("window").add_value("x", 10);
  //   buf.has_group("window");   // true
  labeled_text_buffer& create_group(std::string const& label);

  // retrieve_group
  // The group of the label (empty when the entry holds only a value); null
  // when there is no such label.
  //   buf.retrieve_group("window")->retrieve_value("x").as_int();   // 10
  //   buf.retrieve_group("nothing");                                // nullptr
  labeled_text_buffer* retrieve_group(std::string const& label);
  labeled_text_buffer const* retrieve_group(std::string const& label) const;

  // retrieve_value
  // The label's value; a nil variant when the label is absent or holds only
  // a group.
  //   buf.retrieve_value("width").as_string();   // "80"
  //   buf.retrieve_value("height") == types::nil;   // true
  types::variant retrieve_value(std::string const& label) const;

  // has_label, has_value, has_group
  // Whether the label has an entry; one whose value is not nil; one whose
  // group is not empty.
  //   buf.has_label("window");   // true
  //   buf.has_value("window");   // false (only a group)
  bool has_label(std::string const& label) const;
  bool has_value(std::string const& label) const;
  bool has_group(std::string const& label) const;

  // is_empty
  // True when the buffer has no entries.
  //   labeled_text_buffer().is_empty();   // true
  bool is_empty() const;

  // overlay
  // For every entry of `other`: a value that is not nil replaces this
  // buffer's value under the same label, and a group that is not empty is
  // overlaid onto this buffer's group of that label, level by level. Entries
  // of this buffer that `other` does not mention are kept.
  //   defaults.overlay(user_settings);
  //   defaults.retrieve_value("width");   // the user's width, if set
  void overlay(labeled_text_buffer const& other);

  // as_str
  // The entries written in the text format (see the top of this header). The
  // reference is valid until the next call of `as_str` or `assign`.
  //   labeled_text_buffer().as_str();   // ""
  std::string const& as_str() const;

  // assign
  // Replaces the entries by those parsed from the text (values come back as
  // std::string variants), or by a deep copy of another buffer. A null text
  // or a negative length gives no entries; so does a base that is not a
  // labeled_text_buffer.
  //   labeled_text_buffer copy; copy.assign(buf.as_str());
  //   copy.retrieve_value("width").type() == typeid(std::string);   // true
  void assign(std::string const& text);
  void assign(char const* text, int length);
  void assign(labeled_text_buffer const& other);
  void assign(labeled_serialize_buffer const& other);

  // ---- implementation details ----
 private:
  // An entry: its group and its value.
  using entry = std::pair<labeled_text_buffer, types::variant>;
  using entry_map = std::map<std::string, entry>;

  // The entry of the normalised label, made if needed.
  entry& slot(std::string label);
  entry* find(std::string const& label);
  entry const* find(std::string const& label) const;
  // Copies the other tree's entries into this empty buffer.
  void copy_entries(labeled_text_buffer const& other);
  // Parses the working buffer's text into the (cleared) entries.
  void parse();

  // The working text: written by as_str, read by assign.
  mutable serialize_text_buf _buffer;
  entry_map _entries;
};

}  // namespace serialization
}  // namespace VEXA_2_10

#endif  // VEXA_SERIALIZATION_LABELED_TEXT_BUFFER_HPP
