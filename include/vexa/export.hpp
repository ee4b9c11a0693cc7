// vexa — export macro and the namespace alias.
//
// Every public name lives in the versioned namespace VEXA_2_10 so that two
// releases can be loaded into one process side by side. Callers may write
// `vexa::strings::ustring8` through the alias declared here.
//
// The library is built with hidden visibility; VEXA_API marks what leaves the
// shared object: the public functions and every class whose type information
// crosses the boundary (exceptions, string types, nil_t, variant types).
#ifndef VEXA_EXPORT_HPP
#define VEXA_EXPORT_HPP

#define VEXA_API __attribute__((visibility("default")))

namespace VEXA_2_10 {}
namespace vexa = VEXA_2_10;

#endif  // VEXA_EXPORT_HPP
