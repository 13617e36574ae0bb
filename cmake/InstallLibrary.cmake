# Installs the library for people who write programs on it or a host for it: the headers with the
# platform contract, a CMake package (find_package(EventSystem)) and pkg-config files. The reference
# host adds its library and headers, in host/: it is the component Host of the package.

include(CMakePackageConfigHelpers)

set(EVENTSYSTEM_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/EventSystem)

install(TARGETS EventSystem EXPORT EventSystemTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/EventSystem
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT EventSystemTargets NAMESPACE EventSystem:: DESTINATION ${EVENTSYSTEM_CMAKE_DIR})

configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/packaging/EventSystemConfig.cmake.in
  ${PROJECT_BINARY_DIR}/EventSystemConfig.cmake
  INSTALL_DESTINATION ${EVENTSYSTEM_CMAKE_DIR})
write_basic_package_version_file(
  ${PROJECT_BINARY_DIR}/EventSystemConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/EventSystemConfig.cmake
              ${PROJECT_BINARY_DIR}/EventSystemConfigVersion.cmake
        DESTINATION ${EVENTSYSTEM_CMAKE_DIR})

# The prefix is told relative to the file, so that an installed tree can be moved.
file(RELATIVE_PATH EVENTSYSTEM_PREFIX_FROM_PC
     ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
set(modules eventsystem)
if(EVENTSYSTEM_HOST)
  list(APPEND modules eventsystem-host)
endif()
foreach(module IN LISTS modules)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/${module}.pc.in
                 ${PROJECT_BINARY_DIR}/${module}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${module}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
