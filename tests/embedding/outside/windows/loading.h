#include "platform/windows_services.h"

#define LOAD(path) LoadLibraryA(path)
#define FIND(library, name) ((void *)(size_t)GetProcAddress(library, name))
