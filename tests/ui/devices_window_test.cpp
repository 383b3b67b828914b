// The other-devices window as real widgets on the offscreen platform: real
// key presses in the code box and mouse clicks on its buttons.
#include "devices/device_commands.h"
#include "support/test_support.h"
#include "ui/form_view.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace vantrel {
namespace {

using namespace std::string_literals;
using testing::TestConsole;

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

    TestConsole test_;
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
