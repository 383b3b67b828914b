// The dispenser buttons in the real console window: the small buttons that
// sit on larger ones are drawn on top, in their colour, and take the click.
#include "support/test_support.h"
#include "ui/console_window.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QImage>
#include <QPushButton>
#include <QTest>

namespace vantrel {
namespace {

using testing::RecordingReport;
using testing::RecordingServer;
using testing::ScriptedPrompter;

class DispenserWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        servers_.Register(std::string(kServerProgId), [this] {
            auto server = std::make_unique<RecordingServer>();
            server_ = server.get();
            return server;
        });
        app_ = std::make_unique<ConsoleApp>(servers_, events_, prompter_, report_);
        app_->Load();
        app_->Show();
        QApplication::setActiveWindow(&app_->window());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&app_->window()));
    }

    // A person's click at a point of the window: whatever is drawn on top
    // there gets it.
    QWidget* ClickAt(QPoint point) {
        QWidget* target = view().childAt(point);
        if (target) {
            QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, target->mapFrom(&view(), point));
        }
        return target;
    }

    FormView& view() { return app_->window().view(); }
    QWidget* Widget(const char* name) { return view().Widget(name); }

    ServerRegistry servers_;
    CallEvents events_;
    ScriptedPrompter prompter_;
    RecordingReport report_;
    RecordingServer* server_ = nullptr;
    std::unique_ptr<ConsoleApp> app_;
};

struct Overlap {
    const char* small;
    const char* large;
    QRect geometry;      // in pixels: twips over 15
    QRgb colour;         // its own background, painted
    const char* member;  // what a click on it assigns
    QPoint largeOnly;    // a point of the large button outside the small one
};

TEST_F(DispenserWindowTest, SmallButtonsAreOnTopPaintedAndTakeTheClick) {
    for (const Overlap& o : {
             Overlap{"Price3Blend", "Price3", QRect(288, 392, 9, 9), qRgb(0x00, 0x80, 0x00), "Price", QPoint(270, 405)},
             Overlap{"STOP_ALL", "Stop", QRect(408, 424, 33, 25), qRgb(0xFF, 0x00, 0x00), "Stop", QPoint(360, 436)},
         }) {
        QWidget* small = Widget(o.small);
        ASSERT_NE(small, nullptr) << o.small;
        EXPECT_EQ(o.geometry, small->geometry()) << o.small;
        const QPoint centre = small->geometry().center();
        // Away from the caption, which is drawn over the colour.
        EXPECT_EQ(o.colour, view().grab().toImage().pixel(small->geometry().topLeft() + QPoint(2, 2))) << o.small;

        server_->calls.clear();
        EXPECT_EQ(small, ClickAt(centre)) << o.small;
        ASSERT_EQ(1u, server_->calls.size()) << o.small;
        EXPECT_EQ(o.member, server_->calls[0].member);

        // The rest of the large button is still its own.
        server_->calls.clear();
        EXPECT_EQ(Widget(o.large), ClickAt(o.largeOnly)) << o.large;
        ASSERT_EQ(1u, server_->calls.size()) << o.large;
    }
    EXPECT_TRUE(report_.errors.empty());
}

TEST_F(DispenserWindowTest, ThePaddedAuthCaptionIsKept) {
    auto* preset = qobject_cast<QPushButton*>(Widget("Preset"));
    ASSERT_NE(preset, nullptr);
    EXPECT_EQ(QStringLiteral("  Auth "), preset->text());
    auto* blend = qobject_cast<QPushButton*>(Widget("Price3Blend"));
    ASSERT_NE(blend, nullptr);
    EXPECT_TRUE(blend->text().isEmpty());
}

}  // namespace
}  // namespace vantrel
