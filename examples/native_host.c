/* native_host: how to embed the launcher core.
 *
 *     native_host LIBRARY ARGUMENTS [-- ARGUMENTS]
 *
 * starts Java once for each command line, as a process that was asked to run Java would do it after
 * it has loaded the core from LIBRARY, <launcher home>\jni\qvljni.dll. A real host would hand the
 * two lists to the Java runtime that it has in its own process; starting a java.exe shows the same.
 *
 * The core keeps its state in globals (core/jlp_vars.h) and ends the process where it cannot go on:
 * each header says with which status, and a listener is told why. It must be called from one thread
 * at a time. What is used
 * here both libraries have, the static one and the shared one. */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "core/jlp_vars.h"
#include "core/native_invocation.h"
#include "core/rewriting/parse_arguments.h"
#include "platform/windows_services.h"

/* Appends one argument to the command line of a process by the Windows rules: in double quotes,
 * with a backslash before each double quote, and backslashes doubled in front of one. The core
 * leaves this to the host: in a native invocation it quotes nothing but the path of a configured
 * native agent, -agentpath:"...", whose quotes are none of the path's. Returns the new end. */
static char *append_argument(char *end, const char *argument) {
    const int is_quoted_agent = strncmp(argument, "-agentpath:\"", 12) == 0;
    size_t backslashes = 0;
    *end++ = ' ';
    *end++ = '"';
    for (; *argument != '\0'; argument++) {
        if (is_quoted_agent && *argument == '"') {
            continue;
        }
        if (*argument == '\\') {
            backslashes++;
        } else {
            if (*argument == '"') {
                memset(end, '\\', backslashes + 1);
                end += backslashes + 1;
            }
            backslashes = 0;
        }
        *end++ = *argument;
    }
    memset(end, '\\', backslashes);
    end += backslashes;
    *end++ = '"';
    *end = '\0';
    return end;
}

/* The java.exe of the host JVM with the host arguments and then the guest's: lhs, then rhs. */
static char *make_command_line(void) {
    static const char java[] = "\\bin\\java.exe";
    size_t size = strlen(jvm_home) + sizeof java + 3;
    for (int i = 0; i < lhs_count; i++) {
        size += 2 * strlen(lhs[i]) + 3;
    }
    for (int i = 0; i < rhs_count; i++) {
        size += 2 * strlen(rhs[i]) + 3;
    }
    char *command_line = malloc(size);
    if (command_line == NULL) {
        perror("native_host");
        exit(1);
    }
    char *end = command_line + sprintf(command_line, "\"%s%s\"", jvm_home, java);
    for (int i = 0; i < lhs_count; i++) {
        end = append_argument(end, lhs[i]);
    }
    for (int i = 0; i < rhs_count; i++) {
        end = append_argument(end, rhs[i]);
    }
    return command_line;
}

/* Starts Java with the rewritten command line, waits for it and returns its exit code. */
static int start_java(void) {
    STARTUPINFOA start_up = {0};
    PROCESS_INFORMATION process = {0};
    DWORD exit_code = 1;
    char *command_line = make_command_line();
    start_up.cb = sizeof start_up;
    printf("starting %s\n", command_line);
    fflush(stdout);
    if (CreateProcessA(NULL, command_line, NULL, NULL, FALSE, 0, NULL, NULL, &start_up, &process)) {
        WaitForSingleObject(process.hProcess, INFINITE);
        GetExitCodeProcess(process.hProcess, &exit_code);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    } else {
        fprintf(stderr, "native_host: cannot start Java, error %u\n", (unsigned)GetLastError());
    }
    free(command_line);
    return (int)exit_code;
}

static int run(int argc, char **argv) {
    parse_arguments(argc, argv); /* the result is in lhs and rhs */
    const int exit_code = start_java();
    printf("Java ended with %d\n", exit_code);
    release_jlp_for_native_invocation(); /* ready for the next command line */
    return exit_code;
}

/* The core is about to end this process: the last chance to say so in the host's own way. */
static void tell_end(const char *message, int status) {
    fprintf(stderr, "native_host: the core ends with %d: %s\n", status, message);
}

int main(int argc, char **argv) {
    if (argc < 2) {
        fprintf(stderr, "usage: native_host LIBRARY ARGUMENTS [-- ARGUMENTS]\n");
        return 2;
    }
    set_jlp_end_listener(tell_end);
    /* Once per process: the launcher home comes from the library's path, the settings from its
     * launcher.cfg, and the launch mode is "advanced". */
    initialize_jlp_for_native_invocation(argv[1], 0);

    int second = 2;
    while (second < argc && strcmp(argv[second], "--") != 0) {
        second++;
    }
    int exit_code = run(second - 2, argv + 2);
    if (second < argc) {
        exit_code = run(argc - second - 1, argv + second + 1);
    }
    return exit_code;
}
