// Starts C:\qvl_test\prog.exe as it was started itself, with its own arguments, and ends as that one does.

#include <cstdio>
#include <cstdlib>

#include "core/child_process.h"
#include "jli/text.h"
#include "platform/system_error.h"

int main() {
    HANDLE job = CreateJobObjectA(nullptr, nullptr);
    PROCESS_INFORMATION process = {};
    DWORD error;
    const char *target = getenv("QVL_TARGET");
    const DWORD status = start_in_job_as_received(job, target != nullptr ? target : "C:\\qvl_test\\prog.exe", nullptr,
                                                  0, &process, &error);
    if (error != 0) {
        printf("%s\n", text_ptr(system_error_text(error, "it")).get());
    }
    return static_cast<int>(status);
}
