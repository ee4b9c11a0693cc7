// The six transforms between UTF-8, UTF-16 and UTF-32, on the kernel set in
// use (unicode_kernels.cpp); the walks are in unicode_walk.hpp.
#include "vexa/strings/unicode.hpp"
#include "strings/unicode_walk.hpp"

namespace VEXA_2_10 {
namespace strings {

using _private::active_kernels;
namespace walk = _private::walk;

ustring16 utf8_to_utf16(ustring8 const& text) { return walk::from_utf8<ustring16>(text, false, active_kernels()); }

ustring32 utf8_to_utf32(ustring8 const& text) { return walk::from_utf8<ustring32>(text, true, active_kernels()); }

ustring8 utf16_to_utf8(ustring16 const& text) { return walk::to_utf8<unsigned short>(text, active_kernels()); }

ustring8 utf32_to_utf8(ustring32 const& text) { return walk::to_utf8<wchar_t>(text, active_kernels()); }

ustring32 utf16_to_utf32(ustring16 const& text) { return walk::utf16_to_utf32(text, active_kernels()); }

ustring16 utf32_to_utf16(ustring32 const& text) { return walk::utf32_to_utf16(text, active_kernels()); }

}  // namespace strings
}  // namespace VEXA_2_10
