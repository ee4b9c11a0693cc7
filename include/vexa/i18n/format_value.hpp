// vexa — `i18n::format_value`: typed message arguments turned into text.
//
// A catalog argument such as
//
//   <arg name="size" type="memory" precision="2"/>
//
// reaches this function as its type (message_item::memory), the argument's
// variant and the option text "\x01precision\x01" "2": every option is the
// byte 0x01, its name, 0x01 and its value. Option names are matched exactly;
// unknown options are ignored, and so is an option whose value does not read
// as the option expects (a translator's slip keeps the value visible rather
// than hiding it). Word values ("yes", "true", "on", "1" and "no", "false",
// "off", "0") are matched in any case.
//
// Values. Integers, bool (0 or 1), floating values and text holding a number
// are accepted; text is a number when, after white space and an optional
// sign, it is decimal digits with an optional fraction and exponent, or "0x"
// and hexadecimal digits, and nothing but white space follows. Nil, any other
// text, and NaN or an infinity cannot be formatted: the result is then
// exactly "-0", the mark the message renderer shows as "?invalid?", unless
// the option `default` supplies a text for that case.
//
// All output is independent of the C library's locale: the decimal point is
// always ".", and no grouping is applied unless asked for.
//
// Options shared by every kind:
//   default     text used instead of "-0" when the value cannot be formatted
//                 default="n/a", nil                   -> "n/a"
//   fieldsize   minimum width in characters (UTF-8 code points); the text is
//               right-aligned with spaces; a negative size left-aligns; a
//               size written with a leading 0 pads numbers with zeros after
//               the sign (text results are padded with spaces). Capped at 256.
//                 fieldsize="6",  42                   -> "    42"
//                 fieldsize="-6", 42                   -> "42    "
//                 fieldsize="06", -42                  -> "-00042"
//   spaced_dec  yes: the whole part of a decimal number is grouped by threes
//               with a space
//                 spaced_dec="yes", 1234567            -> "1 234 567"
//   dec_point   the text written for the decimal point
//                 dec_point=",", type real, 2.5        -> "2,5"
//
// integer (3): whole numbers; a fraction is cut off toward zero.
//   base        2..36, digits in lower case, negative values as "-" and the
//               magnitude
//                 base="16", 255                       -> "ff"
//                 base="2", fieldsize="08", 5          -> "00000101"
//
// real (4): floating values.
//   precision   digits after the decimal point (0..40), trailing zeros kept;
//   prec        the same. Without it: up to ten significant digits, written
//               the short way ("2.5", "0.3333333333", "1e+20").
//                 precision="2", 2.5                   -> "2.50"
//                 prec="0", 2.5                        -> "2" (ties to even)
//
// memory (7): a byte count, scaled by 1024 to the largest unit in which it is
// at least 1, with the prefix letters of "KMGTPEZY" and the letter B.
//   precision   digits after the point (0..40), trailing zeros kept; without
//               it one digit, dropped when it is 0
//                 1536                                 -> "1.5 KB"
//                 1048576                              -> "1 MB"
//                 precision="2", 1536                  -> "1.50 KB"
//                 500                                  -> "500 B"
//   short_form  yes: the letter alone, no space and no B ("B" for bytes)
//                 short_form="yes", 1572864            -> "1.5M"
//   base_unit   the unit the value counts in: "B" (the default) or a prefix
//               letter of "KMGTPEZY", alone or followed by "B" or "iB", in
//               any case
//                 base_unit="K", 2048                  -> "2 MB"
//   target_unit the unit to show, fixed instead of the scaling (same forms)
//                 target_unit="K", 1572864             -> "1536 KB"
//
// memory_unit (8): the count converted from `base_unit` to `target_unit`
// (both default to bytes), written as a number only, so that the message
// names the unit in its own language. precision as for memory.
//   base_unit="K", target_unit="M", 1536               -> "1.5"
//
// metric (9): a count of `base_unit` (a unit word such as "meter"; default
// none), scaled by 1000 to the prefix words "atto", "femto", "pico", "nano",
// "micro", "milli", (none), "kilo", "mega", "giga", "tera", "peta", "exa",
// "zetta", "yotta". A base or target unit that begins with a prefix word
// counts in that prefix. precision as for memory; short_form is not used.
//   base_unit="meter", 2300                            -> "2.3 kilometer"
//   base_unit="gram", 0.0042                           -> "4.2 milligram"
//   base_unit="kilometer", 0.5                         -> "500 meter"
//   base_unit="Meter", 2300                            -> "2.3 Kilometer"
//     (a capitalised unit moves its capital to the prefix)
//   target_unit="kilometer", base_unit="meter", 300    -> "0.3 kilometer"
//     (the target's text is written as given)
//
// metric_unit (10): the count converted from `base_unit` to `target_unit`
// by their prefixes, as a number only. precision as for memory.
//   base_unit="meter", target_unit="kilometer", 2300   -> "2.3"
//
// duration (11): milliseconds, as days, hours, minutes and seconds from the
// largest part down; parts that are 0 are left out, and a duration of 0
// shows "0 sec". Each of `dy`, `hr`, `min`, `sec` names or switches its part:
// a word value of yes shows the part even when it is 0, no hides it (its
// amount goes to the next smaller part shown; below the smallest shown part
// the rest is cut off), any other value is the part's name. `precision` gives
// the seconds a fraction (0..3 digits).
//   90061000                                           -> "1 dy 1 hr 1 min 1 sec"
//   dy="no", 93784000                                  -> "26 hr 3 min 4 sec"
//   hr="h", min="m", sec="no", 3723000                 -> "1 h 2 m"
//   precision="1", 1500                                -> "1.5 sec"
//   -61000                                             -> "-1 min 1 sec"
//
// Types 2 (number), 5 (time), 6 (date), 0, 1 and unknown numbers are not
// formatted here: "-0" (or the default text).
#ifndef VEXA_I18N_FORMAT_VALUE_HPP
#define VEXA_I18N_FORMAT_VALUE_HPP

#include <string>

#include "vexa/export.hpp"
#include "vexa/i18n/message_item.hpp"
#include "vexa/strings/ustring.hpp"
#include "vexa/types/variant.hpp"

namespace VEXA_2_10 {
namespace i18n {

// format_value
// The argument `value` of kind `type` written as the options ask (see above).
// On failure exactly "-0" (or the `default` option's text).
//   format_value(message_item::memory, types::variant(1536), "")                 // "1.5 KB"
//   format_value(message_item::integer, types::variant("x"), "\x01" "base\x01" "2")   // "-0"
VEXA_API strings::ustring8 format_value(message_item::type_t type, types::variant const& value,
                                        strings::ustring8 const& options);

// ---- implementation details ----
namespace _private {

// The same, appended to `out`. Returns false, appending nothing, when the
// value cannot be formatted and no `default` is given (where format_value
// returns "-0"). The options are the `length` bytes at `options`.
VEXA_API bool append_formatted_value(std::string& out, message_item::type_t type,
                                     types::variant const& value, char const* options,
                                     unsigned long length);

}  // namespace _private
}  // namespace i18n
}  // namespace VEXA_2_10

#endif  // VEXA_I18N_FORMAT_VALUE_HPP
