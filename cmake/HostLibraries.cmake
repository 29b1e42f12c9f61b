# The core for hosts, static and shared. Every global name of theirs is one of core/jlp_core.def or
# begins with "qvl_", they need no C++ runtime, and they come with the public headers alone.

file(STRINGS core/jlp_core.def entries)
if(NOT WIN32)
  file(STRINGS platform/posix/jlp_core.def more_entries)
  list(APPEND entries ${more_entries})
endif()
list(FILTER entries INCLUDE REGEX "^ ")
list(TRANSFORM entries REPLACE "^ +([A-Za-z_]+).*" "\\1" OUTPUT_VARIABLE documented_names)

# Headers are included as "core/...", "jli/..." and so on.
set(public_headers
  core/banner.h core/child_process.h core/config_text.h core/configuration.h core/home_directories.h
  core/java_versions.h core/jlp_utils.h core/jlp_vars.h core/native_invocation.h core/processed_args.h
  core/rewriting/advanced_mode.h core/rewriting/agent_args.h core/rewriting/arg_files.h
  core/rewriting/jvm_env_vars.h core/rewriting/legacy_mode.h core/rewriting/obsolete_options.h
  core/rewriting/option_filters.h core/rewriting/parse_arguments.h core/rewriting/path_rewriting.h
  core/rewriting/ri_mode.h core/rewriting/single_arg.h core/start_up.h
  jli/arg_bookkeeping.h jli/arg_file_tokenizer.h jli/args.h jli/jli_util.h jli/memory.h
  platform/linkage.h platform/windows_services.h)
if(NOT WIN32)
  list(APPEND public_headers platform/posix/windows_services.h)
endif()
foreach(header IN LISTS public_headers)
  configure_file(${header} include/${header} COPYONLY)
endforeach()

# Their own source is in C, so that CMake links a host in C as such. It is compiled anew with every
# change of jlp_core, whose objects the archive and the shared library take up then, or of the names.
set(core_is_new ${PROJECT_BINARY_DIR}/jlp_core_is_new)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  core/jlp_core.def platform/posix/jlp_core.def)
add_custom_command(OUTPUT ${core_is_new}
  DEPENDS jlp_core cmake/hide_names.cmake core/jlp_core.def platform/posix/jlp_core.def
  COMMAND ${CMAKE_COMMAND} -E touch ${core_is_new})
set_source_files_properties(platform/no_cxx_runtime.c PROPERTIES OBJECT_DEPENDS ${core_is_new})
add_library(jlp_core_static STATIC platform/no_cxx_runtime.c)
add_library(jlp_core_shared SHARED platform/no_cxx_runtime.c)
add_dependencies(jlp_core_shared jlp_core_static)

foreach(library jlp_core_static jlp_core_shared)
  add_library(quorvel_launcher::${library} ALIAS ${library})
  product_flags(${library})
  set_target_properties(${library} PROPERTIES
    OUTPUT_NAME jlp_core
    LINKER_LANGUAGE C
    POSITION_INDEPENDENT_CODE ON
    ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib
    LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
  target_include_directories(${library} INTERFACE
    $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/quorvel_launcher>)
endforeach()
if(BUILD_SHARED_LIBS)
  add_library(quorvel_launcher::jlp_core ALIAS jlp_core_shared)
else()
  add_library(quorvel_launcher::jlp_core ALIAS jlp_core_static)
endif()

add_custom_command(TARGET jlp_core_static POST_BUILD
  COMMAND ${CMAKE_COMMAND} -D AR=${CMAKE_AR} -D NM=${CMAKE_NM} -D OBJCOPY=${CMAKE_OBJCOPY}
    -D FROM=$<TARGET_FILE:jlp_core> -D MORE=$<TARGET_OBJECTS:jlp_core_static>
    -D "KEPT=${documented_names}" -D TO=$<TARGET_FILE:jlp_core_static>
    -P ${PROJECT_SOURCE_DIR}/cmake/hide_names.cmake
  VERBATIM)

target_compile_definitions(jlp_core_shared INTERFACE QVL_SHARED)
set_target_properties(jlp_core_shared PROPERTIES
  VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
list(TRANSFORM documented_names PREPEND -Wl,-u, OUTPUT_VARIABLE wanted)
target_link_options(jlp_core_shared PRIVATE -Wl,--gc-sections ${wanted})
target_link_libraries(jlp_core_shared PRIVATE $<TARGET_FILE:jlp_core>)
if(WIN32)
  # The linker takes the file as it is, and so does whoever makes an import library from it.
  target_sources(jlp_core_shared PRIVATE core/jlp_core.def)
  set_target_properties(jlp_core_shared PROPERTIES PREFIX "")
  small_windows_file(jlp_core_shared)
  # An import library for other linkers than GNU's.
  find_program(LLVM_DLLTOOL NAMES llvm-dlltool DOC "Writes jlp_core.lib")
  set(import_library ${PROJECT_BINARY_DIR}/lib/jlp_core.lib)
  add_custom_command(TARGET jlp_core_shared POST_BUILD
    COMMAND $<IF:$<BOOL:${LLVM_DLLTOOL}>,${LLVM_DLLTOOL},${CMAKE_DLLTOOL}> -m i386:x86-64
      -d ${PROJECT_SOURCE_DIR}/core/jlp_core.def -D $<TARGET_FILE_NAME:jlp_core_shared>
      -l ${import_library}
    BYPRODUCTS ${import_library} VERBATIM)
else()
  string(REPLACE ";" "; " exported "${documented_names}")
  file(CONFIGURE OUTPUT lib/jlp_core.map CONTENT "{ global: @exported@; local: *; };\n")
  target_link_options(jlp_core_shared PRIVATE
    -Wl,--version-script=${PROJECT_BINARY_DIR}/lib/jlp_core.map)
  set_target_properties(jlp_core_shared PROPERTIES LINK_DEPENDS ${PROJECT_BINARY_DIR}/lib/jlp_core.map)
endif()
