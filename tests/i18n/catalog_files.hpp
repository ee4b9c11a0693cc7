// Test helpers for the catalog suites: a fresh directory per test, XMC
// documents written into it, and an item list printed for comparisons.
#ifndef VEXA_TESTS_I18N_CATALOG_FILES_HPP
#define VEXA_TESTS_I18N_CATALOG_FILES_HPP

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "vexa/i18n/message.hpp"

namespace catalog_test {

// An XMC document: the XML declaration and the root around `body`.
inline std::string xmc(std::string const& body) {
  return "<?xml version=\"1.0\"?>\n<xmc version=\"1.0\">\n" + body + "\n</xmc>\n";
}

// A catalog of one language holding `messages` (msg elements).
inline std::string catalog(std::string const& name, std::string const& lang, std::string const& messages) {
  return "<catalog name=\"" + name + "\" lang=\"" + lang + "\">" + messages + "</catalog>";
}

inline std::string msg(std::string const& name, std::string const& content) {
  return "<msg name=\"" + name + "\">" + content + "</msg>";
}

// The items of a message, one per line as "type:data", with 0x01 shown as '|'.
inline std::string items(vexa::i18n::message_t const& m) {
  std::string all;
  for (auto const& item : m.items()) {
    std::string data = item.data();
    for (char& c : data)
      if (c == '\x01') c = '|';
    all += std::to_string(item.type()) + ":" + data + "\n";
  }
  return all;
}

// A fixture with a fresh temporary directory, removed afterwards.
class temp_dir_test : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/vexa-i18n-XXXXXX";
    char* made = ::mkdtemp(pattern);
    ASSERT_NE(made, nullptr);
    dir = made;
  }
  void TearDown() override {
    std::error_code ignored;
    std::filesystem::remove_all(dir, ignored);
  }

  // Writes `content` to dir/relative (creating directories) and returns the full path.
  std::string write(std::string const& relative, std::string const& content) {
    std::filesystem::path const path = std::filesystem::path(dir) / relative;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
  }

  std::string dir;
};

}  // namespace catalog_test

#endif  // VEXA_TESTS_I18N_CATALOG_FILES_HPP
