// vexa — umbrella header: every public header of the library.
#ifndef VEXA_VEXA_HPP
#define VEXA_VEXA_HPP

#include "vexa/export.hpp"

#include "vexa/exceptions/exception.hpp"
#include "vexa/exceptions/logic_error.hpp"
#include "vexa/exceptions/runtime_error.hpp"

#include "vexa/functor/function_type_interface.hpp"
#include "vexa/functor/member_function.hpp"
#include "vexa/generic/abilities/clone_ability.hpp"
#include "vexa/generic/abilities/create_ability.hpp"
#include "vexa/generic/abilities/reference_count_pointer_ability.hpp"
#include "vexa/generic/argument.hpp"
#include "vexa/generic/clone_interface.hpp"
#include "vexa/generic/convert/bin_str.hpp"
#include "vexa/generic/convert/str_to_x.hpp"
#include "vexa/generic/convert/to_utf8.hpp"
#include "vexa/generic/convert/x_to_str.hpp"
#include "vexa/generic/varg_list.hpp"
#include "vexa/memory/pointers/rc_pointer.hpp"
#include "vexa/memory/pointers/shared_pointer.hpp"
#include "vexa/traits/function_traits.hpp"

#include "vexa/strings/ustring.hpp"
#include "vexa/strings/unicode.hpp"
#include "vexa/strings/string_algorithms.hpp"
#include "vexa/strings/code_page.hpp"

#include "vexa/parser/xml_parser.hpp"
#include "vexa/parser/xml_token_stream.hpp"

#include "vexa/types/nil.hpp"
#include "vexa/types/radix.hpp"
#include "vexa/types/stream.hpp"
#include "vexa/types/variant.hpp"

#include "vexa/system/date_time/arithmetic.hpp"
#include "vexa/system/date_time/date.hpp"
#include "vexa/system/date_time/date_duration.hpp"
#include "vexa/system/date_time/date_time.hpp"
#include "vexa/system/date_time/time.hpp"
#include "vexa/system/date_time/time_duration.hpp"
#include "vexa/system/file.hpp"
#include "vexa/system/io.hpp"

#include "vexa/serialization/serialize_buffer.hpp"
#include "vexa/serialization/serialize_binary_buf.hpp"
#include "vexa/serialization/serialize_text_buf.hpp"
#include "vexa/serialization/labeled_serialize_buffer.hpp"
#include "vexa/serialization/labeled_text_buffer.hpp"

#include "vexa/i18n/catalog.hpp"
#include "vexa/i18n/format_value.hpp"
#include "vexa/i18n/message.hpp"
#include "vexa/i18n/message_catalogs.hpp"
#include "vexa/i18n/message_item.hpp"
#include "vexa/i18n/xmc_file_loader.hpp"

#include "vexa/config/base_config_item.hpp"
#include "vexa/config/commandline_item.hpp"
#include "vexa/config/config_dispatch.hpp"
#include "vexa/config/config_manager.hpp"
#include "vexa/config/config_token.hpp"
#include "vexa/config/config_tree.hpp"
#include "vexa/config/enviroment_item.hpp"
#include "vexa/config/file_item.hpp"
#include "vexa/config/module_config_dispatch.hpp"
#include "vexa/config/std_config_dispatch.hpp"
#include "vexa/config/user_item.hpp"

#endif  // VEXA_VEXA_HPP
