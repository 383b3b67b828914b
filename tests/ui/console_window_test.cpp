// The real console window on the offscreen platform: real mouse and focus
// events on the position buttons.
#include "console/position_selector.h"
#include "support/test_support.h"
#include "ui/console_window.h"
#include "ui/visible_text.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

namespace vantrel {
namespace {

using testing::RecordedCall;
using testing::RecordingReport;
using testing::RecordingServer;
using testing::ScriptedPrompter;

// The console built as the program builds it, over a recording server.
class ConsoleWindowTest : public ::testing::Test {
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

    template <typename Widget>
    Widget* Find(const char* name) {
        auto* widget = app_->window().findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    ServerRegistry servers_;
    CallEvents events_;
    ScriptedPrompter prompter_;
    RecordingReport report_;
    RecordingServer* server_ = nullptr;
    std::unique_ptr<ConsoleApp> app_;
};

TEST_F(ConsoleWindowTest, StartsWithPositionOneSelectedAndNoServerCall) {
    EXPECT_TRUE(Find<QRadioButton>("Button1")->isChecked());
    EXPECT_FALSE(Find<QRadioButton>("Button1")->hasFocus());
    EXPECT_TRUE(server_->calls.empty());
    EXPECT_EQ(QStringLiteral("Vantrel Test Utility    (Test 10/29/10)"), app_->window().windowTitle());
    // 8655 x 7860 twips at 15 twips a pixel.
    EXPECT_EQ(QSize(577, 524), app_->window().view().size());
    EXPECT_EQ(QRect(456, 88, 17, 17), Find<QRadioButton>("Button1")->geometry());
}

TEST_F(ConsoleWindowTest, AMouseClickAsksForTheInformationThenSelects) {
    server_->QueueAnswer("FuelingPositionInformation", Variant::OfText(u"FP=07\r\nState=Idle\r\n"));
    QTest::mouseClick(Find<QRadioButton>("Button7"), Qt::LeftButton);
    ASSERT_EQ(1u, server_->calls.size());
    EXPECT_EQ(Variant::OfInt16(7), server_->calls[0].value);
    EXPECT_TRUE(Find<QRadioButton>("Button7")->isChecked());
    EXPECT_FALSE(Find<QRadioButton>("Button1")->isChecked());
    EXPECT_TEXT(u"07", app_->console().SelectedPositionText);
    EXPECT_EQ(kFocusedLabelColor, app_->console().Window().BackColorOf("ButtLab7"));
    // The data box breaks at CR LF; the model keeps the exact text.
    EXPECT_EQ(QStringLiteral("FP=07\nState=Idle\n"), Find<QPlainTextEdit>("InBox")->toPlainText());
    EXPECT_TEXT(u"FP=07\r\nState=Idle\r\n", app_->console().DataBox());

    // Moving on to another position turns the first label back.
    QTest::mouseClick(Find<QRadioButton>("Button8"), Qt::LeftButton);
    EXPECT_EQ(kLabelColor, app_->console().Window().BackColorOf("ButtLab7"));
    EXPECT_EQ(kFocusedLabelColor, app_->console().Window().BackColorOf("ButtLab8"));
    EXPECT_EQ(2u, server_->calls.size());
}

TEST_F(ConsoleWindowTest, ADoubleClickAsksAgain) {
    QTest::mouseDClick(Find<QRadioButton>("Button12"), Qt::LeftButton);
    ASSERT_GE(server_->calls.size(), 2u);
    for (const RecordedCall& call : server_->calls) {
        EXPECT_EQ(Variant::OfInt16(12), call.value);
    }
}

TEST_F(ConsoleWindowTest, ControlCharactersAreDrawnAsSymbols) {
    app_->console().SetDataBox(Text(u"A\0\x1b\n\r\nB", 7));
    EXPECT_EQ(QString::fromUtf8("A«NUL»«ESC»«LF»\n\nB"), Find<QPlainTextEdit>("InBox")->toPlainText());
    EXPECT_EQ(QString::fromUtf8("A«NUL»«CR»"), VisibleText(Text(u"A\0\r", 3), LineBreaks::None));
}

TEST_F(ConsoleWindowTest, AServerErrorOnFocusGoesToTheReport) {
    server_->QueueFailure("FuelingPositionInformation",
                          RuntimeError(438, "Object doesn't support this property or method"));
    QTest::mouseClick(Find<QRadioButton>("Button3"), Qt::LeftButton);
    ASSERT_EQ(1u, report_.errors.size());
    EXPECT_EQ(438, report_.errors[0].number());
}

}  // namespace
}  // namespace vantrel
