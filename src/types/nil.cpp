#include "vexa/types/nil.hpp"

namespace VEXA_2_10 {
namespace types {

nil_t nil;

}  // namespace types
}  // namespace VEXA_2_10
