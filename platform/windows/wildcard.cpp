// Read by the runtime's start-up code: arguments with * or ? arrive as the names of matching files.
extern "C" int _dowildcard;
int _dowildcard = -1;
