#include "vexa/serialization/labeled_serialize_buffer.hpp"

namespace VEXA_2_10 {
namespace serialization {

labeled_serialize_buffer::~labeled_serialize_buffer() = default;

}  // namespace serialization
}  // namespace VEXA_2_10
