# Compiler flags that every target of the project shares.

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()

set(BRIMWICK_SANITIZE "" CACHE STRING "Sanitizers to build with, as for -fsanitize=")

add_library(brimwick_options INTERFACE)
target_compile_options(brimwick_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies inside std::string's own operator+ (its bug 105651).
  target_compile_options(brimwick_options INTERFACE -Wno-restrict)
endif()
target_include_directories(brimwick_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(BRIMWICK_SANITIZE)
  add_compile_options(-fsanitize=${BRIMWICK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${BRIMWICK_SANITIZE})
endif()
