// vexa — `generic::varg_list`: an ordered list of arguments with unique names.
//
// Arguments keep the order in which they were added. A name appears at most
// once; unnamed arguments may repeat. The list never looks at the values.
// A list can be written in one expression from up to 26 arguments:
//
//   generic::varg_list args(generic::argument("file", "a.cfg"), generic::argument("line", 12));
//   args["line"].value().as_int();   // 12
//   args.at(5);                      // throws std::out_of_range
#ifndef VEXA_GENERIC_VARG_LIST_HPP
#define VEXA_GENERIC_VARG_LIST_HPP

#include <vector>

#include "vexa/export.hpp"
#include "vexa/generic/argument.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/nil.hpp"
#include "vexa/types/variant.hpp"

namespace VEXA_2_10 {
namespace generic {

class VEXA_API varg_list {
 public:
  using container_type = std::vector<argument>;
  using iterator = container_type::iterator;
  using const_iterator = container_type::const_iterator;

  // The unnamed nil argument that look-ups by name return when nothing matches.
  static argument const nil_argument;

  varg_list();
  varg_list(varg_list const& other);
  // Adds the arguments in order with push_back, up to the first one that
  // equals nil: a nil argument in the middle ends the list there, and a
  // repeated name is dropped after its first occurrence.
  //   varg_list l(argument("a", 1), argument(), argument("b", 2));   // l.count() == 1
  varg_list(argument const& arg1,
            argument const& arg2 = nil_argument,
            argument const& arg3 = nil_argument,
            argument const& arg4 = nil_argument,
            argument const& arg5 = nil_argument,
            argument const& arg6 = nil_argument,
            argument const& arg7 = nil_argument,
            argument const& arg8 = nil_argument,
            argument const& arg9 = nil_argument,
            argument const& arg10 = nil_argument,
            argument const& arg11 = nil_argument,
            argument const& arg12 = nil_argument,
            argument const& arg13 = nil_argument,
            argument const& arg14 = nil_argument,
            argument const& arg15 = nil_argument,
            argument const& arg16 = nil_argument,
            argument const& arg17 = nil_argument,
            argument const& arg18 = nil_argument,
            argument const& arg19 = nil_argument,
            argument const& arg20 = nil_argument,
            argument const& arg21 = nil_argument,
            argument const& arg22 = nil_argument,
            argument const& arg23 = nil_argument,
            argument const& arg24 = nil_argument,
            argument const& arg25 = nil_argument,
            argument const& arg26 = nil_argument);
  ~varg_list();

  iterator begin();
  iterator end();
  const_iterator begin() const;
  const_iterator end() const;

  // The first argument whose name equals `name` byte for byte, or end(). The
  // empty name finds the first unnamed argument.
  //   l.find("a")->value().as_int();   // 1
  //   l.find("A") == l.end();          // true: names are case-sensitive
  iterator find(strings::ustring8 const& name);
  const_iterator find(strings::ustring8 const& name) const;
  bool has_argument(strings::ustring8 const& name) const;

  // The first argument with that name, or nil_argument when there is none;
  // never fails.
  //   l.at("a").value().as_int();     // 1
  //   l["missing"] == types::nil;     // true
  argument const& at(strings::ustring8 const& name) const;
  argument const& operator[](strings::ustring8 const& name) const;

  // The argument at `index`. An index at or beyond count() throws
  // std::out_of_range("vector::_M_range_check").
  //   l.at(0).name();   // "a"
  //   l[1];             // throws when l.count() == 1
  argument& at(unsigned long index);
  argument const& at(unsigned long index) const;
  argument& operator[](unsigned long index);
  argument const& operator[](unsigned long index) const;

  unsigned long count() const;
  bool empty() const;
  // A list equals nil when it is empty.
  bool equal(types::nil_t const& value) const;
  bool operator==(types::nil_t const& value) const;
  bool operator!=(types::nil_t const& value) const;

  // Appends the argument unless it is named and the name is taken already.
  // Returns true when it was appended, false when the name was taken.
  //   l.push_back("x", 1);   // true
  //   l.push_back("x", 2);   // false; "x" still holds 1
  bool push_back(strings::ustring8 const& name, types::variant const& value);
  bool push_back(argument const& arg);

  // Removal keeps the order of what remains.
  iterator erase(iterator position);
  iterator erase(iterator first, iterator last);
  // Both empty the list.
  void erase();
  void clear();
  // Removes the argument at `index` and returns `index` (where the next one
  // now stands); an index at or beyond count() removes nothing and returns
  // count().
  //   l.erase(0);    // 0, the list is one shorter
  //   l.erase(99);   // l.count()
  unsigned long erase(unsigned long index);
  // Removes the first argument of that name; returns the iterator after it,
  // or end() when no argument has the name.
  iterator erase(strings::ustring8 const& name);

  // Element-wise copy. Returns *this.
  varg_list& assign(varg_list const& other);
  varg_list& operator=(varg_list const& other);

  // ---- implementation details ----
 private:
  container_type _arguments;
};

}  // namespace generic
}  // namespace VEXA_2_10

#endif  // VEXA_GENERIC_VARG_LIST_HPP
