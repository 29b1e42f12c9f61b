#ifndef CORE_LAUNCH_MODE_H
#define CORE_LAUNCH_MODE_H

// Questions about the launch mode. Every reader compares the beginning of `launch_mode`, so that a
// mode written as "rich" acts as "ri".

#include <string_view>

#include "core/jlp_vars.h"

inline bool launch_mode_begins_with(std::string_view name) {
    return launch_mode != nullptr && std::string_view(launch_mode).starts_with(name);
}

// In these modes the runtime of the container home runs, in the others that of the JVM home.
inline bool launch_mode_uses_container() {
    return launch_mode_begins_with("legacy") || launch_mode_begins_with("advanced");
}

#endif
