#include "vexa/serialization/serialize_buffer.hpp"

namespace VEXA_2_10 {
namespace serialization {

serialize_buffer::serialize_buffer() = default;
serialize_buffer::serialize_buffer(serialize_buffer const& other) = default;
serialize_buffer& serialize_buffer::operator=(serialize_buffer const& other) = default;
serialize_buffer::~serialize_buffer() = default;

}  // namespace serialization
}  // namespace VEXA_2_10
