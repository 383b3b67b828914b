#pragma once

#include "script/front_end.h"
#include "win32/win32_console.h"

#include <windows.h>

#include <deque>
#include <functional>

namespace vantrel::win32 {

// The Win32 windows as a script drives them: clicks as the system's own
// mouse messages to the control (focus moves as a click moves it), typing
// through the edit box, the menu bar's own entries, pictures of the window
// as it is on the screen.
class ScriptFrontEnd final : public vantrel::ScriptFrontEnd {
public:
    explicit ScriptFrontEnd(ConsoleApp& app);
    ~ScriptFrontEnd() override;
    ScriptFrontEnd(const ScriptFrontEnd&) = delete;
    ScriptFrontEnd& operator=(const ScriptFrontEnd&) = delete;

    std::string ActiveForm() override;
    bool Click(const std::string& control, bool twice) override;
    void Type(const std::string& control, const Text& text) override;
    bool Menu(const std::string& menu, const Text& entry) override;
    void Tick() override;
    Picture Shot(const std::string& window, const std::string& file) override;
    void Later(std::function<void()> step) override;
    void Quit(int code) override;

private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    ConsoleApp& app_;
    HWND messages_ = nullptr;  // a message-only window that runs the steps
    std::deque<std::function<void()>> steps_;
};

// Writes a PNG of the window as it is on the screen, frame included, with
// Windows Imaging Component. False when it cannot be written.
bool WriteWindowPicture(HWND window, const std::wstring& file);

}  // namespace vantrel::win32
