#ifndef CORE_CHILD_ARGUMENTS_H
#define CORE_CHILD_ARGUMENTS_H

// The arguments that the launcher hands to its child, made of those that it was given.

#include "core/child_run.h"

// What the launcher was given behind its own name.
struct given_arguments {
    int count;
    char *const *texts; // as the runtime has split them, wildcards expanded
    const char *line;   // as they stood, the blank in front included; needed while is_transparent
};

// One of three, as the configuration has it:
//   rewritten: lhs and then rhs of the rewriting engine (parse_arguments.h), for which the Java
//     versions are detected; each quoted by the rules of Windows while is_transparent, else in the
//     form that processArg gives;
//   transparent: the line itself;
//   otherwise the texts as they are, joined with blanks.
// The engine needs the homes, and ends the process with status 1 where it cannot go on.
child_arguments arguments_for_child(const given_arguments &given);

#endif
