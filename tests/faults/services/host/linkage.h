#ifndef TESTS_FAULTS_LINKAGE_H
#define TESTS_FAULTS_LINKAGE_H

// How the linker's --wrap reaches the services of the system: by their names.

#define TIME time
#define CTIME ctime
#define GET_ENVIRONMENT_VALUE _Z21get_environment_valuePKcPcm
#define FORMAT_BY_RUNTIME _Z17format_by_runtimePcmPKcP13__va_list_tag

#define REAL_SERVICE REAL
#define SERVICE FUNCTION

#endif
