# The archives for Windows, by the target "package": win64 for users, dev for hosts (what Installation.cmake
# installs as well), tests for trying the whole on a machine without tools. The same commit gives the same
# bytes; their times are the commit's.
set(archive quorvel-launcher-${PROJECT_VERSION})

# Files that Windows programs read, with Windows' line ends.
set(files ${PROJECT_BINARY_DIR}/package)
file(GLOB texts RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS
  packaging/*.cmd packaging/*.cfg examples/launcher_cfg/*.cfg)
foreach(text IN LISTS texts)
  string(REGEX REPLACE "^[a-z]+/" "" name ${text})
  configure_file(${text} ${files}/${name} @ONLY NEWLINE_STYLE CRLF)
endforeach()

function(install_in_package component)
  install(${ARGN} COMPONENT ${component} EXCLUDE_FROM_ALL)
endfunction()

install_in_package(win64 TARGETS ${programs} DESTINATION bin)
install_in_package(win64 FILES ${files}/install.cmd ${files}/uninstall.cmd ${files}/launcher.cfg DESTINATION .)
install_in_package(win64 DIRECTORY ${files}/launcher_cfg DESTINATION .)
install_in_package(win64 CODE
  "execute_process(COMMAND \"${PROJECT_SOURCE_DIR}/packaging/pages\" \"${PROJECT_SOURCE_DIR}\"
    \${CMAKE_INSTALL_PREFIX} COMMAND_ERROR_IS_FATAL ANY)")

if(QVL_TESTS)
  get_property(tests GLOBAL PROPERTY qvl_test_kit)
  install_in_package(tests TARGETS ${programs} native_host ${tests} DESTINATION bin)
  install_in_package(tests DIRECTORY ${files}/launcher_cfg DESTINATION bin)
  install_in_package(tests FILES ${files}/run_tests.cmd DESTINATION .)
endif()

# In the form that sha256sum -c reads. Rights are the same whoever packs.
foreach(component win64 dev tests)
  install_in_package(${component} CODE [=[
    file(GLOB_RECURSE files RELATIVE ${CMAKE_INSTALL_PREFIX} ${CMAKE_INSTALL_PREFIX}/*)
    set(sums "")
    foreach(file IN LISTS files)
      file(SHA256 ${CMAKE_INSTALL_PREFIX}/${file} sum)
      string(APPEND sums "${sum} *${file}\n")
    endforeach()
    file(WRITE ${CMAKE_INSTALL_PREFIX}/SHA256SUMS ${sums})
    set(all OWNER_READ GROUP_READ WORLD_READ OWNER_WRITE)
    file(CHMOD_RECURSE ${CMAKE_INSTALL_PREFIX} FILE_PERMISSIONS ${all}
      DIRECTORY_PERMISSIONS ${all} OWNER_EXECUTE GROUP_EXECUTE WORLD_EXECUTE)
  ]=])
  string(TOUPPER CPACK_ARCHIVE_${component}_FILE_NAME name)
  set(${name} ${archive}-${component})
  list(APPEND CPACK_COMPONENTS_ALL ${component})
endforeach()
if(NOT QVL_TESTS)
  list(REMOVE_ITEM CPACK_COMPONENTS_ALL tests)
endif()

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME quorvel-launcher)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_VERBATIM_VARIABLES ON)
file(CONFIGURE OUTPUT package_times.cmake @ONLY CONTENT [=[
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND git -C "@PROJECT_SOURCE_DIR@" log -1 --format=%ct
    OUTPUT_VARIABLE time OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(ENV{SOURCE_DATE_EPOCH} ${time})
endif()
# Archives hold local times as well.
set(ENV{TZ} UTC)
]=])
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_BINARY_DIR}/package_times.cmake)
include(CPack)
