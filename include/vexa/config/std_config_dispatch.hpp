// vexa — `config::std_config_dispatch`: an application's sources, command
// line over configuration file over environment.
//
// `setup` appends a `commandline_item` over (argc, argv), a `file_item` for
// the configuration file name, and an `enviroment_item` over envp. The file
// item may find another file through "cfg_file" or "application.name.raw"
// (file_item.hpp). The second text is the application's name: when it is not
// empty it replaces "application.name" of the command line, at `setup` and
// after every `load` of that item (a load starts from an empty tree).
//
// The vectors are kept as pointers and must outlive the dispatch, the
// manager and its items (main's argv and envp do).
//
//   config::config_manager manager;
//   manager.init(config::std_config_dispatch(argc, argv, envp, "tool.cfg", "tool"));
//   manager.load();
#ifndef VEXA_CONFIG_STD_CONFIG_DISPATCH_HPP
#define VEXA_CONFIG_STD_CONFIG_DISPATCH_HPP

#include "vexa/config/config_dispatch.hpp"
#include "vexa/export.hpp"
#include "vexa/strings/ustring.hpp"

namespace VEXA_2_10 {
namespace config {

class VEXA_API std_config_dispatch : public config_dispatch {
 public:
  // std_config_dispatch
  // The arguments, the environment, the configuration file's name and the
  // application's name (either text may be empty).
  //   config::std_config_dispatch d(argc, argv, envp, "tool.cfg", "");
  //   d.setup(items);   // command line, standard file, enviroment
  std_config_dispatch(int argc, char const* const* argv, char const* const* envp,
                      strings::ustring8 const& config_file, strings::ustring8 const& application_name);
  std_config_dispatch(std_config_dispatch const& other);
  std_config_dispatch& operator=(std_config_dispatch const& other);
  ~std_config_dispatch() override;

  void setup(config_item_list& items) override;
  // Loads every item in order; the command line's "application.name" is set
  // again after its load when the application's name is not empty.
  bool load(config_item_list& items) override;
  std_config_dispatch* clone() const override;

  // ---- implementation details ----
 private:
  void name_application(base_config_item& item) const;
  int _argc;
  char const* const* _argv;
  char const* const* _envp;
  strings::ustring8 _config_file;
  strings::ustring8 _application_name;
};

}  // namespace config
}  // namespace VEXA_2_10

#endif  // VEXA_CONFIG_STD_CONFIG_DISPATCH_HPP
