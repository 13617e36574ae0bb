# Installs what belongs to the programs beside their files: manuals, completion, and for the daemon
# its units and what monitoring needs. Not its configuration: an administrator's would be lost.

set(EVENTSYSTEM_UNIT_DIR lib/systemd/system CACHE PATH "Where systemd looks for units")

# install_program_files(NAME name MANUALS file...): of the program `name`.
function(install_program_files)
  cmake_parse_arguments(FILES "" "NAME" "MANUALS" ${ARGN})
  foreach(manual IN LISTS FILES_MANUALS)
    string(REGEX MATCH "[0-9]$" section ${manual})
    install(FILES ${PROJECT_SOURCE_DIR}/docs/man/${manual}
            DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section})
  endforeach()
  # One file serves both; a completion is looked for by the program's name.
  set(completion ${PROJECT_SOURCE_DIR}/packaging/completion)
  install(FILES ${completion}/eventctl.bash RENAME ${FILES_NAME}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
  install(FILES ${completion}/eventctl.fish RENAME ${FILES_NAME}.fish
          DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
endfunction()

# The reader of OrbCentral.ini's manual is led to that of host.ini.
file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/OrbCentral.ini.5 CONTENT ".so man5/host.ini.5\n")
install(FILES ${PROJECT_SOURCE_DIR}/docs/man/host.ini.5 ${PROJECT_BINARY_DIR}/OrbCentral.ini.5
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man5)
install_program_files(NAME eventctl MANUALS eventctl.1)

set(units ${PROJECT_BINARY_DIR}/systemd)
configure_file(packaging/systemd/eventd.service.in ${units}/eventd.service @ONLY)
configure_file(packaging/systemd/tmpfiles.conf.in ${units}/tmpfiles.conf @ONLY)
if(NOT TARGET eventd)
  return()
endif()

install_program_files(NAME eventd MANUALS eventd.8 eventd.ini.5)
install(FILES ${units}/eventd.service packaging/systemd/eventd.socket
        DESTINATION ${EVENTSYSTEM_UNIT_DIR})
install(FILES packaging/systemd/sysusers.conf RENAME eventd.conf DESTINATION lib/sysusers.d)
install(FILES ${units}/tmpfiles.conf RENAME eventd.conf DESTINATION lib/tmpfiles.d)
install(DIRECTORY monitoring DESTINATION ${CMAKE_INSTALL_DATADIR}/eventsystem)
