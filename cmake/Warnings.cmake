# Linked by every target of ours, never by a dependency.
add_library(marnock_warnings INTERFACE)
target_compile_options(marnock_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
