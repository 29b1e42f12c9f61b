#ifndef TESTS_FAULTS_LINKAGE_H
#define TESTS_FAULTS_LINKAGE_H

// How the linker's --wrap reaches the services of the system: by their names.

#define TIME time
#define CTIME ctime

#define REAL_SERVICE REAL
#define SERVICE FUNCTION

#endif
