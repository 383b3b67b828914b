// The real console window on the offscreen platform: real mouse and focus
// events on the position buttons, the data box's view of control characters,
// the small buttons that lie on larger ones; and the other-devices window.
#include "console/position_selector.h"
#include "devices/devices.h"
#include "support/qt/console.h"
#include "ui/visible_text.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <memory>

namespace vantrel {
namespace {

using namespace std::string_literals;
using testing::RecordedCall;

class ConsoleWindowTest : public testing::QtConsoleTest {
protected:
    void SetUp() override { Start(); }

    // A person's click at a point of the window: whatever is drawn on top
    // there gets it.
    QWidget* ClickAt(QPoint point) {
        QWidget* target = view().childAt(point);
        if (target) {
            QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, target->mapFrom(&view(), point));
        }
        return target;
    }
};

TEST_F(ConsoleWindowTest, StartsWithPositionOneSelectedAndNoServerCall) {
    EXPECT_TRUE(Find<QRadioButton>("Button1")->isChecked());
    EXPECT_FALSE(Find<QRadioButton>("Button1")->hasFocus());
    EXPECT_TRUE(server_->calls.empty());
    EXPECT_EQ(QStringLiteral("Vantrel Test Utility    (Test 10/29/10)"), app_->window().windowTitle());
    // 8655 x 7860 twips at 15 twips a pixel.
    EXPECT_EQ(QSize(577, 524), view().size());
    EXPECT_EQ(QRect(456, 88, 17, 17), Find<QRadioButton>("Button1")->geometry());
    EXPECT_EQ(QStringLiteral("  Auth "), Find<QPushButton>("Preset")->text());  // the padding is kept
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

// Enter presses the focused command button, as Space does.
TEST_F(ConsoleWindowTest, EnterPressesTheFocusedButton) {
    auto* button = Find<QPushButton>("SystemVersions");
    button->setFocus(Qt::TabFocusReason);
    server_->calls.clear();
    QTest::keyClick(button, Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return server_->calls.size() == 1; }, 2000));
    EXPECT_EQ("SystemVersions", server_->calls[0].member);
    QTest::keyClick(button, Qt::Key_Enter);
    EXPECT_TRUE(QTest::qWaitFor([&] { return server_->calls.size() == 2; }, 2000));
}

// While the server works, every window shows the busy cursor; it is gone
// once the answer is in, and after a failed call too.
TEST_F(ConsoleWindowTest, TheBusyCursorShowsWhileTheServerWorks) {
    std::vector<int> shapes;
    server_->during = [&] {
        const QCursor* cursor = QGuiApplication::overrideCursor();
        shapes.push_back(cursor ? static_cast<int>(cursor->shape()) : -1);
    };
    QTest::mouseClick(Find<QPushButton>("SystemVersions"), Qt::LeftButton);
    EXPECT_EQ(std::vector<int>{Qt::WaitCursor}, shapes);
    EXPECT_EQ(nullptr, QGuiApplication::overrideCursor());

    server_->QueueFailure("SystemVersions", RuntimeError(5, "Invalid procedure call or argument"));
    QTest::mouseClick(Find<QPushButton>("SystemVersions"), Qt::LeftButton);
    EXPECT_EQ(2u, shapes.size());
    EXPECT_EQ(nullptr, QGuiApplication::overrideCursor());
}

TEST_F(ConsoleWindowTest, ControlCharactersAreDrawnAsSymbols) {
    app_->console().SetDataBox(Text(u"A\0\x1b\n\r\nB", 7));
    EXPECT_EQ(QString::fromUtf8("A«NUL»«ESC»«LF»\n\nB"), Find<QPlainTextEdit>("InBox")->toPlainText());
    EXPECT_EQ(QString::fromUtf8("A«NUL»«CR»"), VisibleText(Text(u"A\0\r", 3), LineBreaks::None));
}

// A line of many megabytes would cost the toolkit gigabytes to lay out: the
// box shows its start and says so, while the model keeps every character.
TEST_F(ConsoleWindowTest, AVeryLongTextIsShownInPartAndKeptWhole) {
    const Text line(40'000, u'x');
    app_->console().SetDataBox(line + u"\r\nend");
    const QString shown = Find<QPlainTextEdit>("InBox")->toPlainText();
    EXPECT_EQ(QString(16 * 1024, QLatin1Char('x')) + QString::fromUtf8(" … (a longer line, shown in part)\nend"),
              shown);
    EXPECT_EQ(40'005u, app_->console().DataBox().size());

    const Text lines = [] {
        Text text;
        for (int n = 0; n < 200'000; ++n) {
            text += u"0123456789\r\n";
        }
        return text;
    }();
    const QString many = VisibleText(lines, LineBreaks::AtCrLf);
    EXPECT_TRUE(many.endsWith(QStringLiteral("\n… shown in part: 2400000 characters in all")))
        << many.right(60).toStdString();
    EXPECT_LT(many.size(), 1024 * 1024 + 64);
}

TEST_F(ConsoleWindowTest, SmallButtonsAreOnTopPaintedAndTakeTheClick) {
    struct Overlap {
        const char* small;
        const char* large;
        QRect geometry;      // in pixels: twips over 15
        QRgb colour;         // its own background, painted
        const char* member;  // what a click on it assigns
        QPoint largeOnly;    // a point of the large button outside the small one
    };
    for (const Overlap& o : {
             Overlap{"Price3Blend", "Price3", QRect(288, 392, 9, 9), qRgb(0x00, 0x80, 0x00), "Price", QPoint(270, 405)},
             Overlap{"STOP_ALL", "Stop", QRect(408, 424, 33, 25), qRgb(0xFF, 0x00, 0x00), "Stop", QPoint(360, 436)},
         }) {
        QWidget* small = view().Widget(o.small);
        ASSERT_NE(small, nullptr) << o.small;
        EXPECT_EQ(o.geometry, small->geometry()) << o.small;
        // Away from the caption, which is drawn over the colour.
        EXPECT_EQ(o.colour, view().grab().toImage().pixel(small->geometry().topLeft() + QPoint(2, 2))) << o.small;

        server_->calls.clear();
        EXPECT_EQ(small, ClickAt(small->geometry().center())) << o.small;
        ASSERT_EQ(1u, server_->calls.size()) << o.small;
        EXPECT_EQ(o.member, server_->calls[0].member);

        // The rest of the large button is still its own.
        server_->calls.clear();
        EXPECT_EQ(view().Widget(o.large), ClickAt(o.largeOnly)) << o.large;
        ASSERT_EQ(1u, server_->calls.size()) << o.large;
    }
    EXPECT_TRUE(report_.errors.empty());
}

// The other-devices window as real widgets: real key presses in the code box.
class OtherDevicesWidgets : public ::testing::Test {
protected:
    void SetUp() override {
        test_.Click("OTHERDEVICESBUTTON");
        Console& console = test_.console();
        view_ = std::make_unique<FormView>(
            console.Description(kOtherDevicesForm), console.Form(kOtherDevicesForm),
            [this](const Handler& handler) { Dispatch(test_.console(), handler, test_.report()); });
        view_->show();
        QApplication::setActiveWindow(view_.get());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(view_.get()));
    }

    template <typename Widget>
    Widget* Find(const char* name) {
        auto* widget = qobject_cast<Widget*>(view_->Widget(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    testing::TestConsole test_;
    std::unique_ptr<FormView> view_;
};

TEST_F(OtherDevicesWidgets, TypingAnywhereInTheCodeBoxKeepsTheCursorWhereItWas) {
    QLineEdit* codeBox = Find<QLineEdit>("CodeBox");
    ASSERT_NE(codeBox, nullptr);
    EXPECT_FALSE(codeBox->isReadOnly());
    QTest::keyClicks(codeBox, "12345");
    EXPECT_TEXT(u"12345", test_.console().CodeNumber);
    QTest::keyClick(codeBox, Qt::Key_Home);
    QTest::keyClicks(codeBox, "98");
    EXPECT_EQ(QStringLiteral("9812345"), codeBox->text());
    EXPECT_TEXT(u"9812345", test_.console().CodeNumber);
    QTest::keyClick(codeBox, Qt::Key_End);
    QTest::keyClick(codeBox, Qt::Key_Backspace);
    EXPECT_TEXT(u"981234", test_.console().CodeNumber);

    QTest::mouseClick(Find<QPushButton>("CANCELCODEBUTTON"), Qt::LeftButton);
    ASSERT_EQ(1u, test_.calls().size());
    EXPECT_TEXT(u"CancelCarWashCode\r\nCarWashCode=981234\r\n\0"s, test_.calls()[0].text());
}

TEST_F(OtherDevicesWidgets, TheDeviceDataBoxShowsTheLinesOfAClickedCommand) {
    QPlainTextEdit* deviceData = Find<QPlainTextEdit>("DeviceData");
    ASSERT_NE(deviceData, nullptr);
    EXPECT_EQ(Qt::ScrollBarAlwaysOn, deviceData->horizontalScrollBarPolicy());
    EXPECT_EQ(Qt::ScrollBarAlwaysOn, deviceData->verticalScrollBarPolicy());
    QTest::mouseClick(Find<QPushButton>("CWGETCODEBUTTON"), Qt::LeftButton);
    EXPECT_EQ(QStringLiteral("ProgramNumber=01\nPriceLevel=01\nOptionCount=2\nOptionNumber=01\nPriceLevel=01\n"
                             "OptionNumber=03\nPriceLevel=01\n"),
              deviceData->toPlainText());
    EXPECT_TEXT(u"<Object>.CarWashInformationRequest = <data>", test_.console().FunctionBox());
    // 10920 x 6480 twips at 15 twips a pixel; the code box at 3360, 5160.
    EXPECT_EQ(QSize(728, 432), view_->size());
    EXPECT_EQ(QRect(224, 344, 97, 25), Find<QLineEdit>("CodeBox")->geometry());
}

}  // namespace
}  // namespace vantrel
