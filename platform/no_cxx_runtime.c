/* Lets a host in C link the core without the C++ runtime. Without optimisation the compiler keeps
 * the call with which a string view refuses a position beyond its end; no code of the core gets
 * there. It goes into the libraries for hosts alone, where its name is not seen. */

#include <stdlib.h>

_Noreturn void _ZSt24__throw_out_of_range_fmtPKcz(const char *format, ...);

_Noreturn void _ZSt24__throw_out_of_range_fmtPKcz(const char *format, ...) {
    (void)format;
    abort();
}
