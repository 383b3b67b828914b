// The windows on a real X server under a window manager (scripts/test-desktop
// runs these under Xvfb and openbox): where a window comes back, and whether
// the tool windows fit the screen. The offscreen platform has no frames and
// no window manager, so it cannot show either.
#include "devices/devices.h"
#include "graphics/graphics.h"
#include "monitor/call_monitor_model.h"
#include "simulator/simulator.h"
#include "support/qt/console.h"
#include "ui/call_monitor_window.h"
#include "ui/simulator_window.h"
#include "ui/window_places.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QScreen>
#include <QSettings>
#include <QTest>
#include <QTimer>

#include <string>
#include <vector>

namespace vantrel {
namespace {

// Long enough for the window manager to frame and place a window.
void Settle() { QTest::qWait(300); }

class WindowPlacesTest : public testing::QtConsoleTest {
protected:
    void SetUp() override {
        ASSERT_EQ(QStringLiteral("xcb"), QGuiApplication::platformName())
            << "these tests need a real X server with a window manager";
        QSettings().clear();
        Start();
        Settle();
    }

    // Shows a console window modally, lets `whileUp` act on it once the
    // window manager has placed it, then hides it; gives its frame's place.
    QPoint ShowAndHide(const char* form, const std::function<void(QDialog&)>& whileUp = {}) {
        QPoint place(-1, -1);
        QTimer::singleShot(0, [&] {
            Settle();
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog) {
                ADD_FAILURE() << form << " is not shown";
                return;
            }
            if (whileUp) {
                whileUp(*dialog);
                Settle();
            }
            place = dialog->frameGeometry().topLeft();
            app_->console().Hide(form);
        });
        app_->console().ShowModal(form);
        return place;
    }
};

// Each console window comes back where it was, however often it is shown,
// and where the technician moved it.
TEST_F(WindowPlacesTest, ConsoleWindowsComeBackWhereTheyWere) {
    for (const char* form :
         {kOtherDevicesForm, kGraphicsDisplayForm, kTestFunctionForm, "GetDebugSelect", "SerialPortPara"}) {
        SCOPED_TRACE(form);
        const QPoint first = ShowAndHide(form);
        EXPECT_EQ(first, ShowAndHide(form));
        EXPECT_EQ(first, ShowAndHide(form));
        const QPoint moved = ShowAndHide(form, [](QDialog& dialog) { dialog.move(dialog.pos() + QPoint(37, 23)); });
        EXPECT_EQ(first + QPoint(37, 23), moved);
        EXPECT_EQ(moved, ShowAndHide(form));
    }
}

// Every button of a tool window lies on the screen at its first size.
void ExpectOnScreen(QWidget& window) {
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    Settle();
    const QRect screen = window.screen()->availableGeometry();
    EXPECT_TRUE(screen.contains(window.frameGeometry()))
        << "frame " << window.frameGeometry().x() << "," << window.frameGeometry().y() << " "
        << window.frameGeometry().width() << "x" << window.frameGeometry().height() << " on a screen of "
        << screen.width() << "x" << screen.height();
    for (QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
        if (button->isVisibleTo(&window)) {
            const QRect where(button->mapToGlobal(QPoint(0, 0)), button->size());
            EXPECT_TRUE(screen.contains(where))
                << button->objectName().toStdString() << " " << button->text().toStdString();
        }
    }
}

TEST_F(WindowPlacesTest, TheCallMonitorFitsTheScreen) {
    CallMonitorFeed feed;
    CallMonitorWindow monitor(feed, MonitorLimits{}, nullptr);
    ExpectOnScreen(monitor);
}

TEST_F(WindowPlacesTest, TheSimulatorWindowFitsTheScreen) {
    Simulator simulator;
    SimulatorWindow window(simulator);
    ExpectOnScreen(window);
}

// Moved and sized by the technician, a tool window opens there next time.
TEST_F(WindowPlacesTest, TheCallMonitorComesBackWhereItWasLeft) {
    CallMonitorFeed feed;
    QRect left;
    {
        CallMonitorWindow monitor(feed, MonitorLimits{}, nullptr);
        monitor.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&monitor));
        Settle();
        monitor.move(monitor.pos() + QPoint(40, 30));
        monitor.resize(monitor.width() - 60, monitor.height() - 50);
        Settle();
        left = monitor.frameGeometry();
        monitor.hide();
    }
    CallMonitorWindow again(feed, MonitorLimits{}, nullptr);
    again.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&again));
    Settle();
    EXPECT_EQ(left, again.frameGeometry());
}

}  // namespace
}  // namespace vantrel
