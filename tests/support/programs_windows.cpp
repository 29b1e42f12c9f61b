#include "tests/support/programs.h"

#include <cstdlib>
#include <cstring>
#include <map>

#include "platform/windows_services.h"

#include <tlhelp32.h>
#include <winternl.h>

const uint32_t STATUS_MINUS_1 = 0xFFFFFFFF;

namespace {

std::map<uint32_t, HANDLE> started;

HANDLE open_stream(const fs::path &file, DWORD access, DWORD creation) {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE stream = CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, creation,
                                FILE_ATTRIBUTE_NORMAL, nullptr);
    return stream != INVALID_HANDLE_VALUE ? stream
                                          : CreateFileW(L"NUL", access, 0, &inherited, OPEN_EXISTING, 0, nullptr);
}

HANDLE open_closed_pipe() {
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    HANDLE reader = nullptr, writer = nullptr;
    CreatePipe(&reader, &writer, &inherited, 0);
    CloseHandle(reader);
    return writer;
}

std::vector<char> ask_system(int information) {
    constexpr auto too_small = static_cast<NTSTATUS>(0xC0000004);
    std::vector<char> answer(1 << 20);
    while (NtQuerySystemInformation(static_cast<SYSTEM_INFORMATION_CLASS>(information), answer.data(),
                                    static_cast<ULONG>(answer.size()), nullptr) == too_small) {
        answer.resize(answer.size() * 2);
    }
    return answer;
}

std::string quoted(const std::string &text) {
    return text.empty() || text.find(' ') != std::string::npos ? '"' + text + '"' : text;
}

} // namespace

uint32_t start(const program &what) {
    std::string line = quoted(to_text(what.file));
    for (const std::string &argument : what.arguments) {
        line += ' ' + quoted(argument);
    }
    STARTUPINFOA info = {};
    info.cb = sizeof info;
    info.dwFlags = STARTF_USESTDHANDLES;
    info.hStdInput = open_stream(what.folder / "in", GENERIC_READ, OPEN_EXISTING);
    info.hStdOutput =
        what.into_closed_pipe ? open_closed_pipe() : open_stream(what.folder / "out", GENERIC_WRITE, CREATE_ALWAYS);
    info.hStdError = open_stream(what.folder / "err", GENERIC_WRITE, CREATE_ALWAYS);
    PROCESS_INFORMATION process = {};
    // Under load Wine fails one start in some thousand with error 1359.
    for (int tries = 0; tries < 3; tries++) {
        if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, to_text(what.folder).c_str(),
                           &info, &process) ||
            GetLastError() != ERROR_INTERNAL_ERROR) {
            break;
        }
    }
    for (HANDLE stream : {info.hStdInput, info.hStdOutput, info.hStdError}) {
        CloseHandle(stream);
    }
    if (process.hThread != nullptr) {
        CloseHandle(process.hThread);
        started[process.dwProcessId] = process.hProcess;
    }
    return process.dwProcessId;
}

uint32_t wait_for_end(uint32_t process_id) {
    HANDLE process = started[process_id];
    DWORD code = 0;
    WaitForSingleObject(process, INFINITE);
    GetExitCodeProcess(process, &code);
    CloseHandle(process);
    started.erase(process_id);
    return code;
}

void end_by_force(uint32_t process_id) {
    HANDLE process = OpenProcess(PROCESS_TERMINATE, FALSE, process_id);
    TerminateProcess(process, 9);
    CloseHandle(process);
}

bool is_running(uint32_t process_id) {
    HANDLE process = OpenProcess(SYNCHRONIZE, FALSE, process_id);
    const bool running = process != nullptr && WaitForSingleObject(process, 0) == WAIT_TIMEOUT;
    CloseHandle(process);
    return running;
}

// Counted in the list of all handles: of another process, Wine knows no count.
size_t handle_count(uint32_t process_id) {
    struct entry {
        void *object;
        ULONG_PTR owner, handle;
        ULONG access;
        USHORT trace, type;
        ULONG attributes, reserved;
    };
    constexpr int extended_handles = 64;
    constexpr size_t head = 2 * sizeof(ULONG_PTR);
    const std::vector<char> list = ask_system(extended_handles);
    ULONG_PTR length = 0;
    memcpy(&length, list.data(), sizeof length);
    size_t count = 0;
    for (ULONG_PTR i = 0; i < length; i++) {
        entry one;
        memcpy(&one, list.data() + head + i * sizeof one, sizeof one);
        count += one.owner == process_id;
    }
    return count;
}

// The sum over its threads: of another process, Wine knows no times.
uint64_t processor_time(uint32_t process_id) {
    uint64_t hundreds = 0;
    HANDLE threads = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry = {};
    entry.dwSize = sizeof entry;
    for (BOOL more = Thread32First(threads, &entry); more; more = Thread32Next(threads, &entry)) {
        if (entry.th32OwnerProcessID == process_id) {
            HANDLE thread = OpenThread(THREAD_QUERY_INFORMATION, FALSE, entry.th32ThreadID);
            FILETIME created = {}, ended = {}, times[2] = {};
            GetThreadTimes(thread, &created, &ended, &times[0], &times[1]);
            CloseHandle(thread);
            for (const FILETIME &time : times) {
                hundreds += static_cast<uint64_t>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
            }
        }
    }
    CloseHandle(threads);
    return hundreds * 100;
}

bool job_exists(const std::string &name) {
    HANDLE job = OpenJobObjectA(JOB_OBJECT_QUERY, FALSE, name.c_str());
    return job != nullptr && CloseHandle(job);
}

void set_environment(const std::string &name, const std::string &value) {
    SetEnvironmentVariableA(name.c_str(), value.empty() ? nullptr : value.c_str());
}

uint32_t own_process_id() {
    return GetCurrentProcessId();
}

fs::path own_file() {
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), 32768));
    return file;
}

std::string own_command_line() {
    return GetCommandLineA();
}
