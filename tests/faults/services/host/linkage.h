#ifndef TESTS_FAULTS_LINKAGE_H
#define TESTS_FAULTS_LINKAGE_H

// How the linker's --wrap reaches the services of the system: by their names.

#define TIME time
#define CTIME ctime
#define GET_ENVIRONMENT_VALUE _Z21get_environment_valuePKcPcm
#define FORMAT_BY_RUNTIME _Z17format_by_runtimePcmPKcP13__va_list_tag

#define REAL(name) REAL_(name)
#define REAL_(name) __real_##name
#define REAL_SERVICE(name) REAL(name)
#define SERVICE(type, name, parameters) SERVICE_(type, name, parameters)
#define SERVICE_(type, name, parameters)                                                                               \
    extern "C" type __real_##name parameters;                                                                          \
    extern "C" type __wrap_##name parameters;                                                                          \
    type __wrap_##name parameters

#endif
