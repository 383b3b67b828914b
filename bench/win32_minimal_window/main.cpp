// The yardstick for the Windows console's start-up and memory: the smallest
// Win32 program that shows a window a person can read (one push button as
// the window, "Hello world!"), reporting "shown" the way the console does.

#include "win32/win32_process.h"

#include <windows.h>

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int) {
    vantrel::win32::UseStartingConsole();
    HWND hello = CreateWindowExW(0, L"BUTTON", L"Hello world!", WS_OVERLAPPEDWINDOW | BS_PUSHBUTTON, CW_USEDEFAULT,
                                 CW_USEDEFAULT, 240, 120, nullptr, nullptr, instance, nullptr);
    if (!hello) {
        return 1;
    }
    ShowWindow(hello, SW_SHOW);
    UpdateWindow(hello);
    return vantrel::win32::ReportShown();
}
