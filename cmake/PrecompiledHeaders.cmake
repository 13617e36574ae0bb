# The headers that most files of a part of the tree include are most of what its compilation costs,
# so they are parsed once. Every file still includes what it uses: CMAKE_DISABLE_PRECOMPILE_HEADERS
# compiles without this.

set(EVENTSYSTEM_STANDARD_HEADERS
  <algorithm> <array> <atomic> <chrono> <condition_variable> <cstdint> <cstring> <filesystem>
  <functional> <map> <memory> <mutex> <optional> <set> <stdexcept> <string> <string_view> <thread>
  <utility> <vector>)

# eventsystem_precompiled_headers(NAME name HEADERS header... [LIBRARIES library...])
# Compiles the headers for the libraries that name them in eventsystem_precompile().
function(eventsystem_precompiled_headers)
  cmake_parse_arguments(PCH "" "NAME" "HEADERS;LIBRARIES" ${ARGN})
  set(source ${PROJECT_BINARY_DIR}/${PCH_NAME}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(${PCH_NAME} STATIC ${source})
  target_link_libraries(${PCH_NAME} PRIVATE ${PCH_LIBRARIES} eventsystem_settings)
  target_precompile_headers(${PCH_NAME} PRIVATE ${PCH_HEADERS})
endfunction()

eventsystem_precompiled_headers(NAME eventsystem_standard_headers
  HEADERS ${EVENTSYSTEM_STANDARD_HEADERS})

# eventsystem_precompile(NAME library...): the libraries use the headers compiled as NAME.
function(eventsystem_precompile name)
  foreach(library IN LISTS ARGN)
    target_precompile_headers(${library} REUSE_FROM ${name})
  endforeach()
endfunction()
