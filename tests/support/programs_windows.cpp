#include "tests/support/programs.h"

#include <array>
#include <io.h>
#include <map>

#include "platform/windows_services.h"

namespace {

std::map<uint32_t, HANDLE> started;

SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};

constexpr DWORD STREAMS[] = {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE};

HANDLE open_stream(const fs::path &file, DWORD access, DWORD creation) {
    HANDLE stream =
        CreateFileW(file.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE, &inherited, creation, 0, nullptr);
    return stream != INVALID_HANDLE_VALUE ? stream
                                          : CreateFileW(L"NUL", access, 0, &inherited, OPEN_EXISTING, 0, nullptr);
}

std::string quoted(const std::string &text) {
    return text.empty() || text.find(' ') != std::string::npos ? '"' + text + '"' : text;
}

std::wstring wide(const std::string &text) {
    return to_path(text).wstring();
}

} // namespace

uint32_t start(const program &what) {
    std::string line = quoted(to_text(what.file));
    for (const std::string &argument : what.arguments) {
        line += ' ' + (what.how.quotes ? quoted(argument) : argument);
    }
    std::wstring wide_line = wide(line);
    STARTUPINFOW info = {};
    info.cb = sizeof info;
    info.dwFlags = STARTF_USESTDHANDLES;
    info.hStdInput = open_stream(what.folder / "in", GENERIC_READ, OPEN_EXISTING);
    info.hStdOutput = open_stream(what.folder / "out", GENERIC_WRITE, CREATE_ALWAYS);
    info.hStdError = open_stream(what.folder / "err", GENERIC_WRITE, CREATE_ALWAYS);
    const std::array streams = {info.hStdInput, info.hStdOutput, info.hStdError};
    std::array<HANDLE, 3> own_streams = {};
    if (what.how.window >= 0) {
        info.dwFlags |= STARTF_USESHOWWINDOW;
        info.wShowWindow = static_cast<WORD>(what.how.window);
    }
    wchar_t title[] = L"a title of its own";
    info.lpTitle = title;
    if (!what.how.hands_on_streams) {
        info.dwFlags &= ~static_cast<DWORD>(STARTF_USESTDHANDLES);
        for (size_t i = 0; i < streams.size(); i++) {
            own_streams[i] = GetStdHandle(STREAMS[i]);
            SetHandleInformation(streams[i], HANDLE_FLAG_INHERIT, 0);
            SetStdHandle(STREAMS[i], streams[i]);
        }
    }
    PROCESS_INFORMATION process = {};
    // Under load Wine fails one start in some thousand with error 1359.
    for (int tries = 0; tries < 3; tries++) {
        if (CreateProcessW(nullptr, wide_line.data(), nullptr, nullptr, what.how.hands_on_streams, what.how.flags,
                           nullptr, what.folder.c_str(), &info, &process) ||
            GetLastError() != ERROR_INTERNAL_ERROR) {
            break;
        }
    }
    for (size_t i = 0; i < streams.size(); i++) {
        if (!what.how.hands_on_streams) {
            SetStdHandle(STREAMS[i], own_streams[i]);
        }
        CloseHandle(streams[i]);
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

size_t heap_in_use() {
    size_t bytes = 0;
    _HEAPINFO entry = {};
    while (_heapwalk(&entry) == _HEAPOK) {
        bytes += entry._useflag == _USEDENTRY ? entry._size : 0;
    }
    return bytes;
}

void set_environment(const std::string &name, const std::string &value) {
    SetEnvironmentVariableA(name.c_str(), value.empty() ? nullptr : value.c_str());
}

fs::path own_file() {
    std::wstring file(32768, L'\0');
    file.resize(GetModuleFileNameW(nullptr, file.data(), 32768));
    return file;
}

std::string own_start() {
    STARTUPINFOA info;
    GetStartupInfoA(&info);
    DWORD list;
    return "window " + std::to_string(info.dwFlags & STARTF_USESHOWWINDOW ? info.wShowWindow : -1) + " title " +
           info.lpTitle + (info.dwFlags & STARTF_USESTDHANDLES ? " streams" : "") + " priority " +
           std::to_string(GetPriorityClass(GetCurrentProcess())) +
           (GetConsoleProcessList(&list, 1) == 0 ? " no console" : " console");
}

uintptr_t handle_of(FILE *file) {
    return static_cast<uintptr_t>(_get_osfhandle(_fileno(file)));
}

pipe_ends make_pipe() {
    HANDLE reader = nullptr, writer = nullptr;
    CreatePipe(&reader, &writer, &inherited, 0);
    return {reinterpret_cast<uintptr_t>(reader), reinterpret_cast<uintptr_t>(writer)};
}

bool write_to(uintptr_t handle, const std::string &text) {
    DWORD written = 0;
    return WriteFile(reinterpret_cast<HANDLE>(handle), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

std::string read_and_close(const pipe_ends &pipe) {
    HANDLE reader = reinterpret_cast<HANDLE>(pipe.reader);
    CloseHandle(reinterpret_cast<HANDLE>(pipe.writer));
    std::string text(100, ' ');
    DWORD length = 0;
    ReadFile(reader, text.data(), 100, &length, nullptr);
    text.resize(length);
    CloseHandle(reader);
    return text;
}

void leave_console() {
    FreeConsole();
}
