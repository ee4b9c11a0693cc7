// Private to src/exceptions: the leaf classes differ from their bases only in
// their dynamic type, so their constructors are written once here.
#ifndef VEXA_SRC_EXCEPTIONS_LEAF_CONSTRUCTORS_HPP
#define VEXA_SRC_EXCEPTIONS_LEAF_CONSTRUCTORS_HPP

#define VEXA_EXCEPTION_LEAF(leaf, base)                                                     \
  leaf::leaf(std::string const& message, unsigned int line, char const* file,               \
             char const* function)                                                          \
      : base(message, line, file, function) {}                                              \
  leaf::leaf(std::string const& message, exception::state const& where)                     \
      : base(message, where) {}                                                             \
  leaf::leaf(leaf const& other) : base(other) {}                                            \
  leaf::~leaf() = default;

#endif  // VEXA_SRC_EXCEPTIONS_LEAF_CONSTRUCTORS_HPP
