# Writes the archive TO: the objects of the archive FROM and the objects MORE, with "qvl_" in front of
# every global name that they define and that is not one of KEPT.
get_filename_component(folder ${TO} DIRECTORY)
set(work ${folder}/hide_names)
file(MAKE_DIRECTORY ${work})
file(COPY_FILE ${FROM} ${work}/all.a)
foreach(step
    "${AR};qD;${work}/all.a;${MORE}"
    "${NM};-g;-P;--defined-only;${work}/all.a")
  execute_process(COMMAND ${step} OUTPUT_FILE ${work}/names COMMAND_ERROR_IS_FATAL ANY)
endforeach()
# A line is a name, its kind, and where it stands.
file(STRINGS ${work}/names names REGEX "^[^ ]+ [A-Za-z] ")
list(TRANSFORM names REPLACE " .*" "")
list(REMOVE_DUPLICATES names)
list(REMOVE_ITEM names ${KEPT})
list(TRANSFORM names REPLACE ".+" "\\0 qvl_\\0")
list(JOIN names "\n" names)
file(WRITE ${work}/renamed "${names}\n")
execute_process(COMMAND ${OBJCOPY} --redefine-syms=${work}/renamed ${work}/all.a ${TO}
  COMMAND_ERROR_IS_FATAL ANY)
file(REMOVE_RECURSE ${work})
