# eventsystem_console(VARIABLE) builds the console's page (web/console) and sets VARIABLE to the C++
# file that holds it. All presets of a checkout share one build of the page, in build/console.

set(EVENTSYSTEM_CONSOLE_DIR ${PROJECT_BINARY_DIR}/console)
cmake_path(GET PROJECT_BINARY_DIR PARENT_PATH console_above)
if(console_above STREQUAL "${PROJECT_SOURCE_DIR}/build")
  set(EVENTSYSTEM_CONSOLE_DIR ${PROJECT_SOURCE_DIR}/build/console)
endif()

function(eventsystem_console_tools)
  find_program(EVENTSYSTEM_NODE NAMES node nodejs)
  find_program(EVENTSYSTEM_NPM npm)
  mark_as_advanced(EVENTSYSTEM_NODE EVENTSYSTEM_NPM)
  set(advice "Install Node.js 18 or later with npm (tools/install-packages build), or configure "
             "with -DEVENTSYSTEM_CONSOLE=OFF for an eventd without its console.")
  string(CONCAT advice ${advice})
  if(NOT EVENTSYSTEM_NODE OR NOT EVENTSYSTEM_NPM)
    message(FATAL_ERROR "The console's page is built with node and npm, and they are not both here. "
                        ${advice})
  endif()
  execute_process(COMMAND ${EVENTSYSTEM_NODE} --version OUTPUT_VARIABLE version
                  OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX REPLACE "^v" "" version "${version}")
  if(version VERSION_LESS 18)
    message(FATAL_ERROR "${EVENTSYSTEM_NODE} is of version ${version}, too old for the console's "
                        "page. ${advice}")
  endif()
endfunction()

function(eventsystem_console variable)
  eventsystem_console_tools()
  set(source ${PROJECT_SOURCE_DIR}/web/console)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS ${source}/src/*)
  file(GLOB top LIST_DIRECTORIES false CONFIGURE_DEPENDS ${source}/*)
  list(FILTER top EXCLUDE REGEX "/biome.json$")
  list(APPEND files ${top})
  set(script ${PROJECT_SOURCE_DIR}/cmake/BuildConsole.cmake)
  set(output ${PROJECT_BINARY_DIR}/ConsoleAssets.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND}
            -D SOURCE=${source} "-DFILES=${files}" -D WORK=${EVENTSYSTEM_CONSOLE_DIR}
            -D OUTPUT=${output} -D NODE=${EVENTSYSTEM_NODE} -D NPM=${EVENTSYSTEM_NPM} -P ${script}
    DEPENDS ${files} ${script}
    COMMENT "Building the console's page"
    VERBATIM)
  set(${variable} ${output} PARENT_SCOPE)
endfunction()
