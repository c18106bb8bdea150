# Every target of ours links screenweaver_warnings; third-party code built in the tree does not.
# The installed libraries link it as $<BUILD_INTERFACE:screenweaver_warnings>: the flags are how we
# build, not something a program that uses the package inherits.
add_library(screenweaver_warnings INTERFACE)
target_compile_options(screenweaver_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  # clang's -Wconversion includes sign conversion; GCC's does not, so keep both toolchains alike.
  target_compile_options(screenweaver_warnings INTERFACE -Wno-sign-conversion)
endif()
