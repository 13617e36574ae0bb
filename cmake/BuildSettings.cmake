# Settings of every target of the project: the language, warnings as errors, sanitizers, ccache.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_CURRENT_SOURCE_DIR}/tools/compile-cached)
endif()

add_library(eventsystem_settings INTERFACE)
target_compile_options(eventsystem_settings INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2 -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies, and copies past the end, in std::string::insert() and operator+
  # where there are none; with precompiled headers also where it would not look at a header's code.
  target_compile_options(eventsystem_settings INTERFACE
    -Wno-restrict -Wno-array-bounds -Wno-stringop-overflow)
endif()
# What makes a memory error harder to use. A sanitizer takes another kind of care, and would not
# see the functions that FORTIFY puts in place of those that it watches.
include(CheckPIESupported)
check_pie_supported()
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
if(CMAKE_BUILD_TYPE MATCHES "Rel" AND NOT EVENTSYSTEM_SANITIZE)
  add_compile_options(-fstack-protector-strong -fstack-clash-protection)
  # Not -fcf-protection: Debian 12 starts no program with it in force, and it costs 3 % of the time
  # that reading and writing an event's text takes.
  add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
endif()
if(EVENTSYSTEM_SANITIZE)
  add_compile_options(-fsanitize=${EVENTSYSTEM_SANITIZE} -fno-omit-frame-pointer
                      -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${EVENTSYSTEM_SANITIZE})
endif()
if(EVENTSYSTEM_FUZZ)
  # The fuzzers are steered by the branches that the product takes.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
