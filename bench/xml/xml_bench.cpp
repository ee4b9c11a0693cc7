// xml_parser and xml_token_stream against expat, libxml2 (SAX2) and pugixml,
// on two generated documents of about 4 MB:
//   catalog  shaped like a message catalog: many short messages with
//            argument elements, line breaks and a comment per module
//   generic  nesting, attributes, the five standard references, numeric
//            references and comments
// Cases:
//   vexa_parse_plain      xml_parser::parse with no callbacks
//   vexa_parse_counting   xml_parser::parse with six counting callbacks
//   vexa_token_stream     a fresh xml_token_stream per document
//   expat_counting        expat with counting handlers (start, end, text, comment)
//   libxml2_sax2_counting libxml2's SAX2 parser with counting handlers
//   pugixml_load_buffer   pugixml's load_buffer (builds the whole tree)
// Before timing, every peer's element count is checked against ours.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>

#include "vexa/functor/member_function.hpp"
#include "vexa/parser/xml_parser.hpp"
#include "vexa/parser/xml_token_stream.hpp"

#if defined(VEXA_BENCH_HAVE_EXPAT)
#include <expat.h>
#endif
#if defined(VEXA_BENCH_HAVE_LIBXML2)
#include <libxml/parser.h>
#endif
#if defined(VEXA_BENCH_HAVE_PUGIXML)
#include <pugixml.hpp>
#endif

namespace {

using vexa::parser::xml_parser;
using vexa::parser::xml_token_stream;
using vexa::strings::ustring8;

constexpr std::size_t target_size = 4u << 20;

char const* const words[] = {"file", "the", "was", "not", "found", "copied", "total", "of", "user",
                             "network", "printer", "settings", "a", "value", "error", "while",
                             "reading", "disk", "space", "left", "on", "device", "connection"};

std::string some_words(std::mt19937& rng, int min, int max) {
  std::uniform_int_distribution<int> count(min, max);
  std::uniform_int_distribution<std::size_t> pick(0, sizeof words / sizeof *words - 1);
  std::string out;
  for (int n = count(rng); n > 0; --n) {
    if (!out.empty()) out += ' ';
    out += words[pick(rng)];
  }
  return out;
}

ustring8 catalog_document() {
  std::mt19937 rng(12345);
  std::string d = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<xmc version=\"1.0\">\n";
  char const* const langs[] = {"en", "de", "fr", "de_DE"};
  char const* const types[] = {"string", "int", "memory", "duration"};
  for (int module = 0; d.size() < target_size; ++module) {
    d += "  <catalog name=\"module" + std::to_string(module) + "\" lang=\"" + langs[module % 4] + "\">\n";
    d += "    <!-- messages of module " + std::to_string(module) + " -->\n";
    for (int m = 0; m < 40; ++m) {
      d += "    <msg name=\"" + some_words(rng, 1, 1) + "_" + std::to_string(m) + "\">";
      d += some_words(rng, 2, 8);
      if (m % 2 == 0) {
        d += " <arg name=\"a\" type=\"" + std::string(types[m % 4]) + "\"/> ";
        d += some_words(rng, 1, 5);
      }
      if (m % 5 == 0) d += "<br/>" + some_words(rng, 1, 4);
      d += ".</msg>\n";
    }
    d += "  </catalog>\n";
  }
  d += "</xmc>\n";
  return ustring8(d);
}

ustring8 generic_document() {
  std::mt19937 rng(67890);
  std::string d = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<root>\n";
  for (int n = 0; d.size() < target_size; ++n) {
    std::string const id = std::to_string(n);
    d += "  <!-- record " + id + " -->\n";
    d += "  <record id=\"" + id + "\" kind=\"" + some_words(rng, 1, 1) + "\" flag='yes'>\n";
    d += "    <name first=\"Ann\" last=\"O&apos;Neil\">Ann &amp; " + some_words(rng, 1, 2) + "</name>\n";
    d += "    <data>\n";
    d += "      <item key=\"k1\" value=\"1 &lt; 2\">" + some_words(rng, 3, 10) + " &gt; here</item>\n";
    d += "      <item key=\"k2\"/>\n";
    d += "      <deep><deeper><deepest level=\"3\">x &#65;&#x42; y</deepest></deeper></deep>\n";
    d += "    </data>\n";
    d += "    <note lang=\"en\">" + some_words(rng, 8, 25) + ", &quot;" + some_words(rng, 1, 3) + "&quot;.</note>\n";
    d += "  </record>\n";
  }
  d += "</root>\n";
  return ustring8(d);
}

ustring8 const& document(int which) {
  static ustring8 const docs[] = {catalog_document(), generic_document()};
  return docs[which];
}
char const* const document_names[] = {"catalog", "generic"};

void fail(char const* what) {
  std::fprintf(stderr, "bench_xml: %s\n", what);
  std::exit(1);
}

template <typename Parse>
void measure(benchmark::State& state, Parse const& parse) {
  ustring8 const& doc = document(static_cast<int>(state.range(0)));
  state.SetLabel(document_names[state.range(0)]);
  for (auto _ : state) benchmark::DoNotOptimize(parse(doc));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(doc.size()));
}

// ---- vexa ----------------------------------------------------------------------

struct counters {
  std::size_t starts = 0, ends = 0, attributes = 0, texts = 0, spaces = 0, comments = 0;
  void on_start(ustring8 const&) { ++starts; }
  void on_end(ustring8 const&) { ++ends; }
  void on_attribute(ustring8 const&, ustring8 const&) { ++attributes; }
  void on_text(ustring8 const&) { ++texts; }
  void on_space(ustring8 const&) { ++spaces; }
  void on_comment(ustring8 const&) { ++comments; }
};

std::size_t vexa_plain(ustring8 const& doc) {
  xml_parser p;
  if (p.parse(doc).type != xml_parser::parse_error::no_error) fail("vexa: parse failed");
  return 1;
}

std::size_t vexa_counting(ustring8 const& doc) {
  using vexa::functor::member_function;
  counters c;
  xml_parser p;
  p.set_element_start_handler(member_function(&c, &counters::on_start));
  p.set_element_end_handler(member_function(&c, &counters::on_end));
  p.set_attribute_handler(member_function(&c, &counters::on_attribute));
  p.set_character_handler(member_function(&c, &counters::on_text));
  p.set_whitespace_handler(member_function(&c, &counters::on_space));
  p.set_comment_handler(member_function(&c, &counters::on_comment));
  if (p.parse(doc).type != xml_parser::parse_error::no_error) fail("vexa: parse failed");
  return c.starts;
}

std::size_t vexa_tokens(ustring8 const& doc) {
  xml_token_stream s;
  if (s.parse(doc).type != xml_parser::parse_error::no_error) fail("vexa: token stream failed");
  return 1;
}

std::size_t count_starts(xml_token_stream const& s) {
  std::size_t starts = 0;
  for (auto const& t : s) starts += t.type() == xml_token_stream::token::element_start;
  return starts;
}

void vexa_parse_plain(benchmark::State& state) { measure(state, vexa_plain); }
void vexa_parse_counting(benchmark::State& state) { measure(state, vexa_counting); }
void vexa_token_stream(benchmark::State& state) { measure(state, vexa_tokens); }
BENCHMARK(vexa_parse_plain)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(vexa_parse_counting)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
BENCHMARK(vexa_token_stream)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// ---- expat ---------------------------------------------------------------------

#if defined(VEXA_BENCH_HAVE_EXPAT)
std::size_t run_expat(ustring8 const& doc) {
  counters c;
  XML_Parser p = XML_ParserCreate(nullptr);
  XML_SetUserData(p, &c);
  XML_SetElementHandler(
      p,
      [](void* u, XML_Char const*, XML_Char const** attributes) {
        auto& k = *static_cast<counters*>(u);
        ++k.starts;
        for (; *attributes != nullptr; attributes += 2) ++k.attributes;
      },
      [](void* u, XML_Char const*) { ++static_cast<counters*>(u)->ends; });
  XML_SetCharacterDataHandler(p, [](void* u, XML_Char const*, int) { ++static_cast<counters*>(u)->texts; });
  XML_SetCommentHandler(p, [](void* u, XML_Char const*) { ++static_cast<counters*>(u)->comments; });
  if (XML_Parse(p, doc.data(), static_cast<int>(doc.size()), 1) != XML_STATUS_OK) fail("expat: parse failed");
  XML_ParserFree(p);
  return c.starts;
}
void expat_counting(benchmark::State& state) { measure(state, run_expat); }
BENCHMARK(expat_counting)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
#endif

// ---- libxml2 -------------------------------------------------------------------

#if defined(VEXA_BENCH_HAVE_LIBXML2)
std::size_t run_libxml2(ustring8 const& doc) {
  counters c;
  xmlSAXHandler h{};
  h.initialized = XML_SAX2_MAGIC;
  h.startElementNs = [](void* u, xmlChar const*, xmlChar const*, xmlChar const*, int, xmlChar const**,
                        int attributes, int, xmlChar const**) {
    auto& k = *static_cast<counters*>(u);
    ++k.starts;
    k.attributes += static_cast<std::size_t>(attributes);
  };
  h.endElementNs = [](void* u, xmlChar const*, xmlChar const*, xmlChar const*) { ++static_cast<counters*>(u)->ends; };
  h.characters = [](void* u, xmlChar const*, int) { ++static_cast<counters*>(u)->texts; };
  h.comment = [](void* u, xmlChar const*) { ++static_cast<counters*>(u)->comments; };
  if (xmlSAXUserParseMemory(&h, &c, doc.data(), static_cast<int>(doc.size())) != 0) fail("libxml2: parse failed");
  return c.starts;
}
void libxml2_sax2_counting(benchmark::State& state) { measure(state, run_libxml2); }
BENCHMARK(libxml2_sax2_counting)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
#endif

// ---- pugixml -------------------------------------------------------------------

#if defined(VEXA_BENCH_HAVE_PUGIXML)
std::size_t pugixml_count(pugi::xml_node n) {
  std::size_t count = 0;
  for (pugi::xml_node c = n.first_child(); c; c = c.next_sibling()) {
    if (c.type() == pugi::node_element) count += 1 + pugixml_count(c);
  }
  return count;
}
std::size_t pugixml_load(ustring8 const& doc) {
  pugi::xml_document d;
  if (!d.load_buffer(doc.data(), doc.size())) fail("pugixml: parse failed");
  return d.first_child() ? 1 : 0;
}
void pugixml_load_buffer(benchmark::State& state) { measure(state, pugixml_load); }
BENCHMARK(pugixml_load_buffer)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);
#endif

// Every peer must see the documents as we do before any timing is trusted.
struct check_peers {
  check_peers() {
    for (int which = 0; which < 2; ++which) {
      ustring8 const& doc = document(which);
      std::size_t const ours = vexa_counting(doc);
      xml_token_stream s;
      s.parse(doc);
      if (count_starts(s) != ours) fail("token stream and parser differ");
#if defined(VEXA_BENCH_HAVE_EXPAT)
      if (run_expat(doc) != ours) fail("expat counts other elements");
#endif
#if defined(VEXA_BENCH_HAVE_LIBXML2)
      if (run_libxml2(doc) != ours) fail("libxml2 counts other elements");
#endif
#if defined(VEXA_BENCH_HAVE_PUGIXML)
      pugi::xml_document d;
      d.load_buffer(doc.data(), doc.size());
      if (pugixml_count(d) != ours) fail("pugixml counts other elements");
#endif
    }
  }
} const checked;

}  // namespace
