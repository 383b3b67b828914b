#include "support/qt/console.h"

#include "app/all_forms.h"

#include <QApplication>
#include <QTest>

namespace vantrel::testing {

void QtConsoleTest::Start(Prompter* prompter, bool runTimers, const std::function<void()>& beforeLoad) {
    servers_.Register(std::string(kServerProgId), [this] {
        auto server = std::make_unique<RecordingServer>();
        server_ = server.get();
        return server;
    });
    app_ = std::make_unique<ConsoleApp>(AllForms(), servers_, events_, prompter ? *prompter : prompter_, report_,
                                        ConsoleOptions{runTimers});
    if (beforeLoad) {
        beforeLoad();
    }
    app_->Load();
    app_->Show();
    QApplication::setActiveWindow(&app_->window());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&app_->window()));
}

}  // namespace vantrel::testing
