// vexa — `serialization::labeled_serialize_buffer`: the abstract base of the
// labeled buffers, as `serialize_buffer` is of the flat ones.
//
// It holds nothing and declares only its virtual destructor; a labeled buffer
// handled through it is deleted correctly, and `labeled_text_buffer::assign`
// accepts it (copying when it is a labeled_text_buffer).
//
//   std::unique_ptr<serialization::labeled_serialize_buffer> p(new serialization::labeled_text_buffer);
//   target.assign(*p);   // target becomes an empty labeled text buffer
#ifndef VEXA_SERIALIZATION_LABELED_SERIALIZE_BUFFER_HPP
#define VEXA_SERIALIZATION_LABELED_SERIALIZE_BUFFER_HPP

#include "vexa/export.hpp"

namespace VEXA_2_10 {
namespace serialization {

class VEXA_API labeled_serialize_buffer {
 public:
  virtual ~labeled_serialize_buffer() = 0;

 protected:
  labeled_serialize_buffer() = default;
  labeled_serialize_buffer(labeled_serialize_buffer const&) = default;
  labeled_serialize_buffer& operator=(labeled_serialize_buffer const&) = default;
};

}  // namespace serialization
}  // namespace VEXA_2_10

#endif  // VEXA_SERIALIZATION_LABELED_SERIALIZE_BUFFER_HPP
