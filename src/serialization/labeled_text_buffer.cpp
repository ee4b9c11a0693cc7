#include "vexa/serialization/labeled_text_buffer.hpp"

#include <tuple>
#include <vector>

#include "serialization/text_format.hpp"

namespace VEXA_2_10 {
namespace serialization {

namespace format = _private;

namespace {

// Newline, carriage return and tab are cut from both ends; spaces are kept,
// since a trailing space marks a group in the text.
std::string normalised(std::string label) {
  static char const cut[] = "\n\r\t";
  std::string::size_type const last = label.find_last_not_of(cut);
  if (last == std::string::npos) return std::string();
  label.erase(last + 1);
  label.erase(0, label.find_first_not_of(cut));
  return label;
}

// Bytes that one string takes in the text format: length, 0x01, bytes, 0x01.
unsigned long block_size(unsigned long length) {
  unsigned long digits = 1;
  for (unsigned long rest = length; rest >= 10; rest /= 10) ++digits;
  return digits + 1 + length + 1;
}

}  // namespace

labeled_text_buffer::labeled_text_buffer() = default;

labeled_text_buffer::labeled_text_buffer(labeled_text_buffer const& other) : labeled_serialize_buffer(other) {
  copy_entries(other);
}

labeled_text_buffer::labeled_text_buffer(std::string const& text) { assign(text); }

labeled_text_buffer& labeled_text_buffer::operator=(labeled_text_buffer const& other) {
  assign(other);
  return *this;
}

// The default destructor would nest one call per level. Instead every
// group's entries are detached onto a list first, so each map is destroyed
// while the groups in it are already empty.
labeled_text_buffer::~labeled_text_buffer() {
  if (_entries.empty()) return;
  std::vector<entry_map> pending;
  pending.emplace_back();
  pending.back().swap(_entries);
  while (!pending.empty()) {
    entry_map level;
    level.swap(pending.back());
    pending.pop_back();
    for (auto& e : level) {
      if (e.second.first._entries.empty()) continue;
      pending.emplace_back();
      pending.back().swap(e.second.first._entries);
    }
  }
}

labeled_text_buffer* labeled_text_buffer::create() const { return new labeled_text_buffer(); }
labeled_text_buffer* labeled_text_buffer::clone() const { return new labeled_text_buffer(*this); }

// Level by level with an explicit stack; map nodes keep their addresses.
void labeled_text_buffer::copy_entries(labeled_text_buffer const& other) {
  std::vector<std::pair<labeled_text_buffer*, labeled_text_buffer const*>> work{{this, &other}};
  while (!work.empty()) {
    auto const [target, source] = work.back();
    work.pop_back();
    for (auto const& e : source->_entries) {
      auto const made = target->_entries.emplace_hint(
          target->_entries.end(), std::piecewise_construct, std::forward_as_tuple(e.first),
          std::forward_as_tuple(std::piecewise_construct, std::forward_as_tuple(),
                                std::forward_as_tuple(e.second.second)));
      if (!e.second.first._entries.empty()) work.emplace_back(&made->second.first, &e.second.first);
    }
  }
}

labeled_text_buffer::entry* labeled_text_buffer::find(std::string const& label) {
  auto const it = _entries.find(normalised(label));
  return it == _entries.end() ? nullptr : &it->second;
}

labeled_text_buffer::entry const* labeled_text_buffer::find(std::string const& label) const {
  auto const it = _entries.find(normalised(label));
  return it == _entries.end() ? nullptr : &it->second;
}

// Labels usually arrive in order (parsing, writers walking sorted data), so
// the end of the map is tried first: appending there costs no search.
labeled_text_buffer::entry& labeled_text_buffer::slot(std::string label) {
  label = normalised(std::move(label));
  if (_entries.empty() || _entries.rbegin()->first < label)
    return _entries
        .emplace_hint(_entries.end(), std::piecewise_construct, std::forward_as_tuple(std::move(label)),
                      std::forward_as_tuple())
        ->second;
  return _entries[label];
}

void labeled_text_buffer::add_value(std::string const& label, types::variant const& value) {
  slot(label).second = value;
}

labeled_text_buffer& labeled_text_buffer::create_group(std::string const& label) { return slot(label).first; }

labeled_text_buffer* labeled_text_buffer::retrieve_group(std::string const& label) {
  entry* const e = find(label);
  return e == nullptr ? nullptr : &e->first;
}

labeled_text_buffer const* labeled_text_buffer::retrieve_group(std::string const& label) const {
  entry const* const e = find(label);
  return e == nullptr ? nullptr : &e->first;
}

types::variant labeled_text_buffer::retrieve_value(std::string const& label) const {
  entry const* const e = find(label);
  return e == nullptr ? types::variant() : e->second;
}

bool labeled_text_buffer::has_label(std::string const& label) const { return find(label) != nullptr; }

bool labeled_text_buffer::has_value(std::string const& label) const {
  entry const* const e = find(label);
  return e != nullptr && e->second != types::nil;
}

bool labeled_text_buffer::has_group(std::string const& label) const {
  entry const* const e = find(label);
  return e != nullptr && !e->first._entries.empty();
}

bool labeled_text_buffer::is_empty() const { return _entries.empty(); }

// Overlays a snapshot of `other`, so that overlaying a buffer with one of
// its own groups (or the other way round) reads a tree that does not change.
void labeled_text_buffer::overlay(labeled_text_buffer const& other) {
  if (&other == this) return;
  labeled_text_buffer const snapshot(other);
  std::vector<std::pair<labeled_text_buffer*, labeled_text_buffer const*>> work{{this, &snapshot}};
  while (!work.empty()) {
    auto const [target, source] = work.back();
    work.pop_back();
    for (auto const& e : source->_entries) {
      bool const has_value = e.second.second != types::nil;
      bool const has_group = !e.second.first._entries.empty();
      if (!has_value && !has_group) continue;
      entry& mine = target->_entries[e.first];
      if (has_value) mine.second = e.second.second;
      if (has_group) work.emplace_back(&mine.first, &e.second.first);
    }
  }
}

// Two walks over the tree in the same order. The first computes the size of
// every group's text (a group's length prefix must be written before its
// text) and converts the values once; the second writes. Both keep their
// path on explicit stacks.
std::string const& labeled_text_buffer::as_str() const {
  using iterator = entry_map::const_iterator;
  std::vector<unsigned long> group_sizes;  // in the order the groups are entered
  std::vector<std::string> values;         // in the order they are written

  struct measure_frame {
    labeled_text_buffer const* group;
    iterator next;
    unsigned long size;
    unsigned long label_size;  // of the label naming this group in its parent
    unsigned long index;       // into group_sizes
  };
  unsigned long total = 0;
  std::vector<measure_frame> measure{{this, _entries.begin(), 0, 0, 0}};
  while (!measure.empty()) {
    measure_frame& f = measure.back();
    if (f.next == f.group->_entries.end()) {
      measure_frame const done = f;
      measure.pop_back();
      if (measure.empty()) {
        total = done.size;
      } else {
        group_sizes[done.index] = done.size;
        measure.back().size += block_size(done.label_size + 1) + block_size(done.size);
      }
      continue;
    }
    std::string const& label = f.next->first;
    entry const& e = f.next->second;
    ++f.next;
    bool const nested = !e.first._entries.empty();
    if (!nested || e.second != types::nil) {
      values.push_back(e.second.as_string());
      f.size += block_size(label.size()) + block_size(values.back().size());
    }
    if (nested) {
      group_sizes.push_back(0);
      measure.push_back({&e.first, e.first._entries.begin(), 0, label.size(), group_sizes.size() - 1});
    }
  }

  std::string out;
  out.reserve(total);
  std::vector<std::pair<labeled_text_buffer const*, iterator>> write{{this, _entries.begin()}};
  unsigned long next_value = 0, next_group = 0;
  while (!write.empty()) {
    auto& [group, next] = write.back();
    if (next == group->_entries.end()) {
      write.pop_back();
      if (!write.empty()) out += format::separator;  // closes the group's string
      continue;
    }
    std::string const& label = next->first;
    entry const& e = next->second;
    ++next;
    bool const nested = !e.first._entries.empty();
    if (!nested || e.second != types::nil) {
      std::string const& text = values[next_value++];
      format::append_bytes(out, label.data(), label.size());
      format::append_bytes(out, text.data(), text.size());
    }
    if (nested) {
      format::append_unsigned(out, label.size() + 1);
      out += label;
      out += ' ';
      out += format::separator;
      format::append_unsigned(out, group_sizes[next_group++]);
      write.emplace_back(&e.first, e.first._entries.begin());
    }
  }
  _buffer.data = std::move(out);
  return _buffer.data;
}

void labeled_text_buffer::assign(std::string const& text) {
  _buffer.assign(text);  // first: `text` may belong to one of the entries about to go
  _buffer.reset_read();
  _entries.clear();
  parse();
}

void labeled_text_buffer::assign(char const* text, int length) {
  _buffer.assign(text, length);
  _buffer.reset_read();
  _entries.clear();
  parse();
}

void labeled_text_buffer::assign(labeled_text_buffer const& other) {
  if (&other == this) return;
  labeled_text_buffer copy(other);  // `other` may be one of this buffer's groups
  _entries.swap(copy._entries);
}

void labeled_text_buffer::assign(labeled_serialize_buffer const& other) {
  if (auto const* labeled = dynamic_cast<labeled_text_buffer const*>(&other)) {
    assign(*labeled);
  } else {
    _entries.clear();
  }
}

// A group's text is one string inside its parent's text; it is parsed where
// it lies, as a range of the working text, so no level copies the levels
// below it and no level costs a call.
void labeled_text_buffer::parse() {
  struct frame {
    labeled_text_buffer* target;
    unsigned long base, size, position;  // the group's range of the text; position within it
  };
  char const* const text = _buffer.data.data();
  std::vector<frame> stack{{this, 0, _buffer.data.size(), 0}};
  while (!stack.empty()) {
    frame& f = stack.back();
    if (f.position == format::npos || f.position >= f.size) {
      stack.pop_back();
      continue;
    }
    char const* const range = text + f.base;
    unsigned long start, count;
    format::read_block(range, f.size, f.position, start, count);
    if (count == 0) {  // an empty label ends the group
      stack.pop_back();
      continue;
    }
    std::string label(range + start, count);
    if (label.back() == ' ') {
      label.pop_back();
      labeled_text_buffer& group = f.target->slot(std::move(label)).first;
      format::read_block(range, f.size, f.position, start, count);
      group._entries.clear();
      unsigned long const base = f.base + start;
      stack.push_back({&group, base, count, 0});  // `f` is not used past this point
    } else {
      format::read_block(range, f.size, f.position, start, count);
      f.target->slot(std::move(label)).second = types::variant(std::string(range + start, count));
    }
  }
}

}  // namespace serialization
}  // namespace VEXA_2_10
