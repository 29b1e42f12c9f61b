#ifndef CORE_CHILD_PROCESS_H
#define CORE_CHILD_PROCESS_H

/* Running the real Java executable in a job object that ends it when the launcher goes away. */

#include "platform/windows_services.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Runs `command` (in its command-line form) with the arguments from argv[1] on, joined with blanks
 * as they stand, and waits for it. Returns the child's exit code, the system's error when that
 * cannot be read or waited for, or 1 when the child could not be started in its job. Reads
 * launch_mode; calls cleanup(), so the state that it releases is gone afterwards; closes the trace
 * log and leaves its pointer, so that nothing may be traced afterwards where there was a log. */
int execute_command(const char *command, char *const *argv, int argc);

/* CreateProcessA's parameters behind the job to put the child into. The child is created suspended;
 * cleanup() is called, child or no child. It then joins the job (a child that may not, access
 * denied, runs outside it), runs and is waited for. Returns its exit code, the system's error when
 * that cannot be read, or 1 when it could not be created, put into the job or resumed: a created
 * child is terminated with exit code 0 then. With CREATE_SUSPENDED among `flags` it returns 0 as
 * soon as the child is in the job: still suspended, the child and its handles are the caller's.
 * Otherwise the handles of a created child are closed and set to null. */
DWORD CreateProcessInJob(HANDLE job, LPCSTR application, LPSTR command_line,
                         LPSECURITY_ATTRIBUTES process_attributes,
                         LPSECURITY_ATTRIBUTES thread_attributes, BOOL inherit_handles, DWORD flags,
                         LPVOID environment, LPCSTR directory, LPSTARTUPINFOA start_up,
                         LPPROCESS_INFORMATION process);

/* The same for a child that is to find what it would have found in the launcher's place: started by
 * start_as_received() (platform/received_start.h), whose `command` and `arguments` these are.
 * `*error` becomes 0, or, where the result is 1 because there is no child, the system's error. */
DWORD start_in_job_as_received(HANDLE job, const char *command, const char *arguments, DWORD flags,
                               LPPROCESS_INFORMATION process, DWORD *error);

/* Releases launch_mode, non_path_options_array, processedArg, newPathList, quorvel_properties_arg,
 * launcher_path_arg, rule_file_arg and new_mem_val_as_str; all but the last become null, the counts
 * 0. Once after each load_config_file: a second call would release new_mem_val_as_str again. Until
 * the configuration is loaded anew nothing may be rewritten, and what lhs and rhs hold is gone. */
void cleanup(void);

/* Leaves Ctrl-C and Ctrl-Break to the child while they reach it too (gets_interrupts() of
 * platform/console.h): this process goes on waiting and returns what the child makes of them.
 * Before there is a child, and with one that is not on the console, they have their default effect.
 */
void leave_interrupts_to_child(void);

#ifdef __cplusplus
}
#endif

#endif
