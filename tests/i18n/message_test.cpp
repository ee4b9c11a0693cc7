#include "vexa/i18n/message.hpp"

#include <gtest/gtest.h>

#include "vexa/i18n/catalog.hpp"

namespace {

using namespace vexa;
using generic::argument;
using generic::varg_list;
using i18n::message_item;
using i18n::message_t;

message_t disk_message() {
  return message_t("disk", {message_item("Only "), message_item("free\x01" "precision\x01" "1", message_item::memory),
                            message_item(" left on "), message_item("drive", message_item::string),
                            message_item(".\n")},
                   "shown when saving");
}

TEST(message_item, renders_each_kind_or_invalid) {
  varg_list const args(argument("who", "Ada"), argument("n", 255), argument("when", 3), argument("ms", 61000),
                       argument("empty", types::nil));
  struct row {
    message_item item;
    char const* expected;
  } const rows[] = {
      {message_item("plain \x01 text"), "plain \x01 text"},
      {message_item("who", message_item::string), "Ada"},
      {message_item("n", message_item::string), "255"},
      {message_item("empty", message_item::string), ""},
      {message_item("n\x01" "base\x01" "16", message_item::integer), "ff"},
      {message_item("ms", message_item::duration), "1 min 1 sec"},
      {message_item("who", message_item::integer), "?invalid?"},   // the formatter's "-0"
      {message_item("empty", message_item::real), "?invalid?"},
      {message_item("missing", message_item::string), "?invalid?"},
      {message_item("when", message_item::number), "?invalid?"},   // not rendered on purpose
      {message_item("when", message_item::time), "?invalid?"},
      {message_item("when", message_item::date), "?invalid?"},
      {message_item("n", static_cast<message_item::type_t>(12)), "?invalid?"},
      {message_item("wh", message_item::string), "?invalid?"},     // names match whole
      {message_item("who\x01" "x\x01" "y", message_item::string), "Ada"},
  };
  for (row const& r : rows)
    EXPECT_EQ(r.item.as_string(args), r.expected) << "data \"" << r.item.data() << "\" type " << r.item.type();

  // The formatter's default text stands in for a value it cannot format, unless it is "-0" itself;
  // a missing argument never reaches the formatter.
  varg_list const nil_n(argument("n", types::nil));
  EXPECT_EQ(message_item("n\x01" "default\x01" "-0", message_item::integer).as_string(nil_n), "?invalid?");
  EXPECT_EQ(message_item("n\x01" "default\x01" "-", message_item::integer).as_string(nil_n), "-");
  EXPECT_EQ(message_item("n\x01" "default\x01" "-", message_item::integer).as_string(varg_list()), "?invalid?");
}

TEST(message_item, name_and_options_split_at_the_first_separator) {
  message_item const item("size\x01" "precision\x01" "2", message_item::memory);
  EXPECT_EQ(item.name(), "size");
  EXPECT_EQ(item.options(), "\x01" "precision\x01" "2");
  EXPECT_TRUE(item.is_argument());
  message_item const text("words");
  EXPECT_EQ(text.type(), message_item::text);
  EXPECT_EQ(text.name(), "words");
  EXPECT_EQ(text.options(), "");
  EXPECT_FALSE(text.is_argument());
}

TEST(message_t, renders_all_items_and_counts_arguments) {
  message_t const m = disk_message();
  varg_list const args(argument("free", 1536), argument("drive", "C"));
  EXPECT_EQ(m.as_string(args), "Only 1.5 KB left on C.\n");
  EXPECT_EQ(m.as_string(varg_list(argument("drive", "C"))), "Only ?invalid? left on C.\n");
  EXPECT_EQ(m.argument_count(), 2u);
  EXPECT_EQ(m.arguments(), (strings::ustring8_vector{"free", "drive"}));
  EXPECT_TRUE(m.has_valid_args(args));
  EXPECT_TRUE(m.has_valid_args(varg_list(argument("drive", 1), argument("free", 1), argument("extra", 1))));
  EXPECT_FALSE(m.has_valid_args(varg_list(argument("drive", 1))));
  EXPECT_EQ(m.name(), "disk");
  EXPECT_EQ(m.meta(), "shown when saving");

  // An argument element of type "value" is a text item: not counted, shown as its data.
  message_t const odd("odd", {message_item("v", message_item::text), message_item("d", message_item::date)}, "");
  EXPECT_EQ(odd.argument_count(), 1u);
  EXPECT_EQ(odd.as_string(varg_list(argument("d", 1))), "v?invalid?");
}

TEST(message_t, encodings_and_nil) {
  message_t const m("e", {message_item("gr\xC3\xBC\xC3\x9F "), message_item("x", message_item::string)}, "");
  varg_list const args(argument("x", L"\x20AC"));
  EXPECT_EQ(m.as_utf8(args), "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC");
  EXPECT_EQ(m.as_ustring(args), m.as_string(args));
  EXPECT_EQ(m.as_utf16(args), (strings::ustring16{'g', 'r', 0xFC, 0xDF, ' ', 0x20AC}));
  EXPECT_EQ(m.as_utf32(args), strings::ustring32(L"gr\xFC\xDF \x20AC"));
  EXPECT_EQ(m.as_wstring(args), std::wstring(L"gr\xFC\xDF \x20AC"));

  EXPECT_TRUE(message_t() == types::nil);
  EXPECT_TRUE(m != types::nil);
  EXPECT_EQ(message_t().as_string(args), "");
}

TEST(catalog_t, messages_and_their_languages) {
  i18n::catalog_t c("app");
  message_t german = disk_message();
  german._orginal_locale("de-DE");
  c.message("disk", german);
  message_t english("bye", {message_item("Bye")}, "");
  english._orginal_locale("en");
  c.message("bye", english);

  EXPECT_EQ(c.name(), "app");
  EXPECT_EQ(c.count(), 2u);
  EXPECT_EQ(c.message("bye").as_string(varg_list()), "Bye");
  EXPECT_TRUE(c.message("nope") == types::nil);
  EXPECT_TRUE(c.has_message("disk") && !c.has_message("Disk"));
  EXPECT_TRUE(c.is_language_loaded("de_DE") && c.is_language_loaded("de.DE") && c.is_language_loaded("en"));
  EXPECT_FALSE(c.is_language_loaded("de"));
  EXPECT_EQ(std::distance(c.languages_begin(), c.languages_end()), 2);

  english._orginal_locale("fr");
  c.message("bye", english);  // the replaced message's language stays until the set is rebuilt
  EXPECT_TRUE(c.is_language_loaded("en"));
  c.gen_lang_set();
  EXPECT_FALSE(c.is_language_loaded("en"));
  EXPECT_TRUE(c.is_language_loaded("fr"));
}

TEST(catalog_t, language_normalisation_keeps_single_characters) {
  EXPECT_EQ(i18n::_private::normalise_language("de-DE.utf8"), "de_DE_utf8");
  EXPECT_EQ(i18n::_private::normalise_language("."), ".");
  EXPECT_EQ(i18n::_private::normalise_language("-"), "-");
  EXPECT_EQ(i18n::_private::normalise_language(""), "");
}

}  // namespace
