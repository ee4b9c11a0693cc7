// vexa — `types::nil_t` and `types::nil`: the marker for "no value".
//
// A default-constructed variant holds a nil_t value; callers compare against
// the one exported instance:
//
//   types::variant v;
//   v == types::nil;   // true
#ifndef VEXA_TYPES_NIL_HPP
#define VEXA_TYPES_NIL_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace types {

struct VEXA_API nil_t {};

// The library's one nil instance. Not const: the variant's nil_t& constructor
// takes it as it stands.
extern VEXA_API nil_t nil;

}  // namespace types
}  // namespace VEXA_2_10

#endif  // VEXA_TYPES_NIL_HPP
