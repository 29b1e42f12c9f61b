#ifndef CORE_CONFIGURATION_H
#define CORE_CONFIGURATION_H

#ifdef __cplusplus
extern "C" {
#endif

/* Reads launcher.cfg from launcher_home, which is taken from executable_dir and bin_dir while it is
 * null: these two, or that one, must be set (start_up.h, native_invocation.h). Every setting
 * (jlp_vars.h) is allocated and preset first, so that a missing file leaves the defaults; what an
 * earlier call has left of them is not released, and the option lists are appended to. Takes a slot
 * of processedArg. Switches tracing on and opens the trace log where the
 * file says so, and traces the banner and what was loaded. Reads is_native_invocation and os_name.
 * A log that cannot be opened ends the process with status -1 and a message on standard error. */
void load_config_file(void);

/* Gives launcher_path_arg the form that processArg gives now; load_config_file does so already. */
void set_launcher_path_arg(void);

#ifdef __cplusplus
}
#endif

#endif
