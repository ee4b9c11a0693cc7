#include "vexa/generic/varg_list.hpp"

#include <stdexcept>

namespace VEXA_2_10 {
namespace generic {
namespace {

// The standard container's own wording, raised here so that it does not
// depend on the standard library's version.
[[noreturn]] void out_of_range() { throw std::out_of_range("vector::_M_range_check"); }

}  // namespace

argument const varg_list::nil_argument;

varg_list::varg_list() = default;
varg_list::varg_list(varg_list const& other) = default;
varg_list::~varg_list() = default;

varg_list::varg_list(argument const& arg1,
                     argument const& arg2,
                     argument const& arg3,
                     argument const& arg4,
                     argument const& arg5,
                     argument const& arg6,
                     argument const& arg7,
                     argument const& arg8,
                     argument const& arg9,
                     argument const& arg10,
                     argument const& arg11,
                     argument const& arg12,
                     argument const& arg13,
                     argument const& arg14,
                     argument const& arg15,
                     argument const& arg16,
                     argument const& arg17,
                     argument const& arg18,
                     argument const& arg19,
                     argument const& arg20,
                     argument const& arg21,
                     argument const& arg22,
                     argument const& arg23,
                     argument const& arg24,
                     argument const& arg25,
                     argument const& arg26) {
  argument const* const given[] = {&arg1, &arg2, &arg3, &arg4, &arg5, &arg6, &arg7, &arg8, &arg9, &arg10, &arg11, &arg12, &arg13, &arg14, &arg15, &arg16, &arg17, &arg18, &arg19, &arg20, &arg21, &arg22, &arg23, &arg24, &arg25, &arg26};
  for (argument const* arg : given) {
    if (*arg == types::nil) break;
    push_back(*arg);
  }
}

varg_list::iterator varg_list::begin() { return _arguments.begin(); }
varg_list::iterator varg_list::end() { return _arguments.end(); }
varg_list::const_iterator varg_list::begin() const { return _arguments.begin(); }
varg_list::const_iterator varg_list::end() const { return _arguments.end(); }

varg_list::iterator varg_list::find(strings::ustring8 const& name) {
  iterator it = _arguments.begin();
  while (it != _arguments.end() && it->name() != name) ++it;
  return it;
}

varg_list::const_iterator varg_list::find(strings::ustring8 const& name) const {
  const_iterator it = _arguments.begin();
  while (it != _arguments.end() && it->name() != name) ++it;
  return it;
}

bool varg_list::has_argument(strings::ustring8 const& name) const { return find(name) != end(); }

argument const& varg_list::at(strings::ustring8 const& name) const {
  const_iterator it = find(name);
  return it == end() ? nil_argument : *it;
}

argument const& varg_list::operator[](strings::ustring8 const& name) const { return at(name); }

argument& varg_list::at(unsigned long index) {
  if (index >= _arguments.size()) out_of_range();
  return _arguments[index];
}

argument const& varg_list::at(unsigned long index) const {
  if (index >= _arguments.size()) out_of_range();
  return _arguments[index];
}

argument& varg_list::operator[](unsigned long index) { return at(index); }
argument const& varg_list::operator[](unsigned long index) const { return at(index); }

unsigned long varg_list::count() const { return _arguments.size(); }
bool varg_list::empty() const { return _arguments.empty(); }
bool varg_list::equal(types::nil_t const&) const { return _arguments.empty(); }
bool varg_list::operator==(types::nil_t const& value) const { return equal(value); }
bool varg_list::operator!=(types::nil_t const& value) const { return !equal(value); }

bool varg_list::push_back(strings::ustring8 const& name, types::variant const& value) {
  return push_back(argument(name, value));
}

bool varg_list::push_back(argument const& arg) {
  if (arg.has_name() && has_argument(arg.name())) return false;
  _arguments.push_back(arg);
  return true;
}

varg_list::iterator varg_list::erase(iterator position) { return _arguments.erase(position); }
varg_list::iterator varg_list::erase(iterator first, iterator last) { return _arguments.erase(first, last); }
void varg_list::erase() { _arguments.clear(); }
void varg_list::clear() { _arguments.clear(); }

unsigned long varg_list::erase(unsigned long index) {
  if (index >= _arguments.size()) return _arguments.size();
  _arguments.erase(_arguments.begin() + static_cast<container_type::difference_type>(index));
  return index;
}

varg_list::iterator varg_list::erase(strings::ustring8 const& name) {
  iterator it = find(name);
  return it == end() ? it : _arguments.erase(it);
}

varg_list& varg_list::assign(varg_list const& other) {
  if (&other != this) _arguments = other._arguments;
  return *this;
}

varg_list& varg_list::operator=(varg_list const& other) { return assign(other); }

}  // namespace generic
}  // namespace VEXA_2_10
