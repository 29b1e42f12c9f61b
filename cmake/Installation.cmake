# What cmake --install puts where. The component "dev" is an archive of its own (Packaging.cmake).
include(CMakePackageConfigHelpers)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME dev)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/quorvel_launcher)
install(TARGETS jlp_core_static jlp_core_shared EXPORT quorvel_launcher)
install(EXPORT quorvel_launcher NAMESPACE quorvel_launcher:: DESTINATION ${package_dir}
  FILE quorvel_launcher-targets.cmake)
configure_package_config_file(cmake/quorvel_launcher-config.cmake.in quorvel_launcher-config.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(quorvel_launcher-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/quorvel_launcher-config.cmake
  ${PROJECT_BINARY_DIR}/quorvel_launcher-config-version.cmake DESTINATION ${package_dir})
install(DIRECTORY ${PROJECT_BINARY_DIR}/include/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quorvel_launcher)
if(WIN32)
  install(FILES ${import_library} core/jlp_core.def DESTINATION ${CMAKE_INSTALL_LIBDIR})
endif()

if(programs)
  install(TARGETS ${programs} COMPONENT programs)
endif()
if(QVL_EXAMPLES)
  install(TARGETS native_host)
endif()
file(GLOB pages CONFIGURE_DEPENDS *.md)
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR}
  PATTERN CMakeLists.txt EXCLUDE)
