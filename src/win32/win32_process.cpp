#include "win32/win32_process.h"

#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <psapi.h>

#include <cstdio>

namespace vantrel::win32 {

void UseStartingConsole() {
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    if ((output == nullptr || output == INVALID_HANDLE_VALUE) && AttachConsole(ATTACH_PARENT_PROCESS)) {
        std::freopen("CONOUT$", "w", stdout);
        std::freopen("CONOUT$", "w", stderr);
    }
    _setmode(_fileno(stdout), _O_BINARY);
    _setmode(_fileno(stderr), _O_BINARY);
}

int ReportShown() {
    PROCESS_MEMORY_COUNTERS memory{};
    memory.cb = sizeof(memory);
    if (K32GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof(memory))) {
        std::printf("shown %llu KiB\n", static_cast<unsigned long long>(memory.WorkingSetSize / 1024));
    } else {
        std::printf("shown\n");
    }
    std::fflush(stdout);
    return 0;
}

}  // namespace vantrel::win32
