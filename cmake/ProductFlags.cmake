# How the product's own targets are compiled and linked.

# In another project the warnings are its own affair, and so is the common name.
add_library(qvl_strict_warnings INTERFACE)
if(PROJECT_IS_TOP_LEVEL)
  add_library(strict_warnings ALIAS qvl_strict_warnings)
  target_compile_options(qvl_strict_warnings INTERFACE
    -Wall -Wextra -Werror -Wconversion -Wshadow -Wformat=2 -Wno-format-nonliteral)
endif()

# Product code throws nothing and asks no type at run time: without the two flags the exception
# machinery alone would be larger than the launcher.
function(product_flags target)
  target_compile_options(${target} PRIVATE
    $<TARGET_PROPERTY:qvl_strict_warnings,INTERFACE_COMPILE_OPTIONS>)
  target_compile_options(${target} PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti>
    -ffunction-sections)
  target_compile_definitions(${target} PRIVATE QVL_VERSION="${PROJECT_VERSION}")
  # No -fdata-sections: for Windows GCC then stores the zeros of every empty array in the file.
  # No -fstack-protector: the launcher copies no text from outside onto its stack, and the library
  # behind it imports ADVAPI32.dll, which costs each start a fifth more.
endfunction()

# Stripped, the same bytes each time, and nothing but the system's libraries.
function(small_windows_file target)
  target_link_options(${target} PRIVATE -static -s -Wl,--no-insert-timestamp
    -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va)
endfunction()

# just_to_add_version_to_binary has no caller; it is kept for the strings that it holds.
function(small_executable target)
  target_link_options(${target} PRIVATE -Wl,--gc-sections -Wl,-u,just_to_add_version_to_binary)
  if(WIN32)
    small_windows_file(${target})
  else()
    target_link_options(${target} PRIVATE -Wl,--as-needed)
  endif()
endfunction()

# All sources are compiled as one, of which only `entry` is seen from outside: what is not called is
# left out, and what is called once is no function. So no two files may give the same name to
# different things of their own. (Link-time optimization would link in the compiler's own printf.)
# The linker script leaves out the tables for unwinding; the libraries for hosts keep theirs.
# What follows -Oz was found by trying: each is worth 30 to 400 bytes. Functions whose frames grow
# large are not put into one another, as what lies far in a frame takes longer instructions.
function(smallest_windows_program target entry)
  set(script ${PROJECT_SOURCE_DIR}/cmake/smallest_program.ld)
  set_target_properties(${target} PROPERTIES
    UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 0 LINK_DEPENDS ${script})
  target_compile_options(${target} PRIVATE $<$<COMPILE_LANGUAGE:CXX>:-fwhole-program
    -fno-function-sections -Oz -fno-expensive-optimizations -fno-move-loop-invariants
    -fno-caller-saves -fno-gcse -fno-tree-tail-merge -malign-data=abi
    --param=large-stack-frame=100 --param=large-stack-frame-growth=50>)
  # The relocations that are disabled are those that the compiler's start-up code would make.
  target_link_options(${target} PRIVATE -nostartfiles -Wl,--entry,${entry} -Wl,-T,${script}
    -Wl,--disable-auto-import,--disable-runtime-pseudo-reloc)
endfunction()

# Gives a program the launcher's manifest: UTF-8 as its code page, and long paths; and a version
# resource that names the program's own file.
function(utf8_program target)
  if(WIN32)
    get_target_property(name ${target} OUTPUT_NAME)
    if(NOT name)
      set(name ${target})
    endif()
    set(resource ${PROJECT_BINARY_DIR}/launcher/${name}.rc)
    configure_file(${PROJECT_SOURCE_DIR}/launcher/java.rc.in ${resource} @ONLY)
    set_source_files_properties(${resource} PROPERTIES
      OBJECT_DEPENDS ${PROJECT_BINARY_DIR}/launcher/java.manifest)
    target_sources(${target} PRIVATE ${resource})
    target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/launcher)
    target_link_options(${target} PRIVATE -static)
  endif()
endfunction()
