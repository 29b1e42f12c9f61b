# Builds EXECUTABLE's product (SOURCE, preset windows) once more from nothing and compares the bytes.
set(second ${CMAKE_CURRENT_BINARY_DIR}/second_build)
file(REMOVE_RECURSE ${second})
foreach(step "--preset;windows;-B;${second};-D;QVL_TESTS=OFF" "--build;${second};--target;java")
  execute_process(COMMAND ${CMAKE_COMMAND} ${step} WORKING_DIRECTORY ${SOURCE}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endforeach()
execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${EXECUTABLE} ${second}/bin/java.exe
  COMMAND_ERROR_IS_FATAL ANY)
