#include <dlfcn.h>

#define LOAD(path) dlopen(path, RTLD_NOW)
#define FIND(library, name) dlsym(library, name)
