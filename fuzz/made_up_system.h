#ifndef FUZZ_MADE_UP_SYSTEM_H
#define FUZZ_MADE_UP_SYSTEM_H

// The disk, the module, the environment and the child of a launcher that is started in the fuzzer: what the input
// says of them, and what the launcher has asked of them. The services are wrapped in made_up_system.cpp.

#include <cassert>
#include <string>
#include <string_view>
#include <vector>

#include "platform/windows_services.h"

enum part { BITS, CONFIG, OWN_PATH, HOMES, ARGS = HOMES + 3, PARTS };
extern std::vector<std::string> parts;

// The bits, byte by byte. Of the last four, no more than seven bits count, so that each can be 0.
enum { HOW, CHILD, EXIT_CODE, MISSING_QUERY, TURNED_QUERY, FAILED_ALLOCATION, BIT_BYTES };
enum how_bit { IN_BUNDLE = 1, IN_JRE = 4, VALUE_GROWS = 8, NO_CONFIG = 16, NO_LOG = 32, NO_TIME = 64, NO_CTIME = 128 };
enum child_bit {
    NO_JOB = 1,
    NOT_CREATED = 2,
    NOT_ASSIGNED = 4,
    ACCESS_DENIED = 8,
    NOT_RESUMED = 16,
    NO_EXIT_CODE = 32,
    LEFT_SUSPENDED = 64
};

constexpr DWORD NO_EXIT_CODE_ERROR = 31;
constexpr size_t LONGEST_PATH = 32766;

// What the launcher has asked of the system so far.
struct system_calls {
    int paths_asked;
    std::string last_file;     // the path of the last question that was answered with "file"
    std::string home_to_start; // of the launch mode, when that was asked
    bool created;
    std::string command_line;
    bool assigned, resumed, waited, terminated;
    int processes_closed, threads_closed, jobs_closed;
    DWORD last_error;
};
extern system_calls seen;

extern char job; // its address is the handle

inline unsigned bits(int byte) {
    const unsigned value = static_cast<unsigned char>(parts[BITS][static_cast<size_t>(byte)]);
    return byte >= EXIT_CODE ? value % 128 : value;
}

inline bool how(how_bit bit) {
    return (bits(HOW) & bit) != 0;
}

inline bool child(child_bit bit) {
    return (bits(CHILD) & bit) != 0;
}

inline const std::string &own_path() {
    return parts[OWN_PATH];
}

// A view: a string would be lost when the product exits.
inline std::string_view own_folder() {
    return std::string_view(own_path()).substr(0, own_path().rfind('\\'));
}

inline std::string bin_folder() {
    return own_folder().ends_with("\\jre\\bin") ? "\\jre\\bin" : "\\bin";
}

inline std::string own_home() {
    const std::string_view folder = own_folder();
    return std::string(folder.substr(0, folder.size() - (folder.ends_with("\\bin") ? bin_folder().size() : 0)));
}

#endif
