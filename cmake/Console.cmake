# eventsystem_console(VARIABLE) makes the C++ file that holds the console's page, out of the built page
# that is kept in web/console/dist (see tools/console-page), and sets VARIABLE to it.
function(eventsystem_console variable)
  find_program(EVENTSYSTEM_GZIP gzip REQUIRED)
  mark_as_advanced(EVENTSYSTEM_GZIP)
  set(page ${PROJECT_SOURCE_DIR}/web/console/dist)
  file(GLOB assets CONFIGURE_DEPENDS ${page}/assets/*)
  set(files ${page}/index.html ${assets})
  set(script ${PROJECT_SOURCE_DIR}/cmake/EmbedConsole.cmake)
  set(output ${PROJECT_BINARY_DIR}/ConsoleAssets.cpp)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} "-DFILES=${files}" -D PAGE=${page} -D OUTPUT=${output}
            -D GZIP=${EVENTSYSTEM_GZIP} -P ${script}
    DEPENDS ${files} ${script}
    COMMENT "Embedding the console's page"
    VERBATIM)
  set(${variable} ${output} PARENT_SCOPE)
endfunction()
