#include <windows.h>

#define LOAD(path) LoadLibraryA(path)
#define FIND(library, name) ((void *)(size_t)GetProcAddress(library, name))
