#pragma once

#include "script/front_end.h"

class QWidget;

namespace vantrel {

class ConsoleApp;

// The Qt windows as a script drives them: real mouse events, focus moved as
// a click would move it, the menu bar's own actions, pictures by grab().
class QtScriptFrontEnd final : public ScriptFrontEnd {
public:
    explicit QtScriptFrontEnd(ConsoleApp& app);

    std::string ActiveForm() override;
    bool Click(const std::string& control, bool twice) override;
    void Type(const std::string& control, const Text& text) override;
    bool Menu(const std::string& menu, const Text& entry) override;
    void Tick() override;
    Picture Shot(const std::string& window, const std::string& file) override;
    void Later(std::function<void()> step) override;
    void Quit(int code) override;

private:
    QWidget* Window(const std::string& name);

    ConsoleApp& app_;
};

}  // namespace vantrel
