#ifndef TESTS_FAULTS_LINKAGE_H
#define TESTS_FAULTS_LINKAGE_H

// How the linker's --wrap reaches the services of the system: a call goes through the pointer in the
// import table, and it is the pointer that gets replaced.

#define TIME _time64
#define CTIME _ctime64

#define REAL_SERVICE(name) REAL_SERVICE_(name)
#define REAL_SERVICE_(name) __real___imp_##name
#define SERVICE(type, name, parameters) SERVICE_(type, name, parameters)
#define SERVICE_(type, name, parameters)                                                                               \
    extern "C" type(WINAPI *__real___imp_##name) parameters;                                                           \
    static type WINAPI faulty_##name parameters;                                                                       \
    extern "C" type(WINAPI *__wrap___imp_##name) parameters;                                                           \
    type(WINAPI *__wrap___imp_##name) parameters = faulty_##name;                                                      \
    type WINAPI faulty_##name parameters

#endif
