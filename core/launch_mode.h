#ifndef CORE_LAUNCH_MODE_H
#define CORE_LAUNCH_MODE_H

// The launch modes, and what follows from each: the one place that knows a mode by its name.

#include "core/jlp_vars.h"

// The mode of every native host, and of a configuration that names none.
inline constexpr char DEFAULT_LAUNCH_MODE[] = "advanced";

// The function of core/rewriting that places the arguments of a mode.
enum class argument_rules : char { advanced, legacy, ri };

// A row says where its mode differs from these.
struct launch_mode_row {
    const char *name;             // a mode's text begins with it
    char **java_home = &jvm_home; // whose Java runs; only the container home's has native agents
    char **paths_move_to = &jvm_home; // from the launcher home
    argument_rules rules = argument_rules::legacy;
    bool has_agents = true; // needs the Quorvel home, adds its Java agent and properties
    bool opens_internal_packages = false;  // to the agents, on a Java 9 or later host
    const char *process = "QUORVEL AGENT"; // in the trace of a start
    // In the trace, above arguments that make up one list.
    const char *arguments_title = "LEGACY LAUNCH MODE ARGS:\n------------------------\n";
    const char *agent_environment = nullptr; // the property that names it, where there is one

    bool runs_container() const { return java_home == &container_home; }

    // Whether the mode goes by one of the homes.
    bool needs(char *const *home) const {
        return home == java_home || home == &jvm_home || (home == &quorvel_home && has_agents);
    }
};

// The last, with an empty name, is the row of null and of each text that is no mode's.
extern const launch_mode_row launch_modes[];

// The row that `text` begins with, so that a mode written as "rich" acts as "ri".
const launch_mode_row &launch_mode_of(const char *text);

// Asked anew each time: a host may change launch_mode between two calls.
inline const launch_mode_row &current_launch_mode() {
    return launch_mode_of(launch_mode);
}

// The names as messages list them: "advanced, legacy, ...".
extern const char *const launch_mode_names;

#endif
