#include "platform/posix/last_error.h"

#include <cerrno>

namespace {

DWORD last_error = ERROR_SUCCESS;

struct error_row {
    int number;
    DWORD error;
};

constexpr error_row ERRORS[] = {
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {ELOOP, ERROR_PATH_NOT_FOUND},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {ETXTBSY, ERROR_ACCESS_DENIED},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {EAGAIN, ERROR_NOT_ENOUGH_MEMORY},
    {E2BIG, ERROR_FILENAME_EXCED_RANGE},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {ENOEXEC, ERROR_BAD_EXE_FORMAT},
};

} // namespace

DWORD GetLastError(void) {
    return last_error;
}

BOOL fail_with(DWORD error) {
    last_error = error;
    return FALSE;
}

DWORD windows_error(int error_number) {
    for (const error_row &row : ERRORS) {
        if (row.number == error_number) {
            return row.error;
        }
    }
    return ERROR_GEN_FAILURE;
}

int errno_of(DWORD error) {
    for (const error_row &row : ERRORS) {
        if (row.error == error) {
            return row.number;
        }
    }
    return 0;
}
