// The set-up dialogs as real windows, opened from the console's Set-up menu
// and driven with real mouse clicks on their option buttons.
#include "console/system_commands.h"
#include "support/qt/console.h"
#include "ui/qt_ports.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QColor>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <functional>

namespace vantrel {
namespace {

using testing::RecordedCall;

const Text kNul(1, u'\0');
const Text kLogLine = u"LogFileName=c:\\xfer\\logfile.log\r\n";

class SetupDialogsTest : public testing::QtConsoleTest {
protected:
    // Picks a Set-up menu entry and runs `inside` once the dialog is up. A
    // dialog that `inside` leaves open is closed and fails the test, so a
    // mistake cannot hang the run.
    void OpenFromMenu(const char* entry, const std::function<void(QDialog&)>& inside) {
        auto* action = app_->window().setupMenu().findChild<QAction*>(QString::fromLatin1(entry));
        ASSERT_NE(action, nullptr) << entry;
        QTimer::singleShot(0, &app_->window(), [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog) {
                ADD_FAILURE() << "no dialog came up for " << entry;
                return;
            }
            inside(*dialog);
            if (dialog->isVisible()) {
                ADD_FAILURE() << entry << " was left open";
                dialog->reject();
            }
        });
        action->trigger();
    }

    template <typename Widget>
    static Widget* In(QDialog& dialog, const char* name) {
        auto* widget = dialog.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    // Runs the event loop until `done`; false when it took too long.
    static bool WaitFor(const std::function<bool()>& done) {
        QElapsedTimer waited;
        waited.start();
        while (!done() && waited.elapsed() < 15000) {
            QTest::qWait(10);
        }
        return done();
    }

    static void Click(QDialog& dialog, const char* name) {
        if (auto* button = In<QAbstractButton>(dialog, name)) {
            QTest::mouseClick(button, Qt::LeftButton);
        }
    }
};

TEST_F(SetupDialogsTest, SerialPortOptionsSitInTheirFramesAndTheOkSendsTheBlock) {
    Start();
    Console& console = app_->console();
    prompter_.Ok();
    OpenFromMenu("SerialPortParaEntry", [&](QDialog& dialog) {
        EXPECT_EQ(QStringLiteral("Serial Port Para"), dialog.windowTitle());
        EXPECT_EQ(QSize(374, 176), dialog.size());  // 5610 x 2640 twips
        EXPECT_EQ(In<QGroupBox>(dialog, "fCommPort"), In<QRadioButton>(dialog, "oComm2")->parent());
        EXPECT_EQ(In<QGroupBox>(dialog, "fBaudRate"), In<QRadioButton>(dialog, "oBR9600")->parent());
        EXPECT_EQ(QRect(8, 56, 97, 25), In<QRadioButton>(dialog, "oComm2")->geometry());

        // Port and rate are groups of their own; a repeated click on the
        // selected rate appends its line again.
        Click(dialog, "oComm2");
        Click(dialog, "oBR9600");
        Click(dialog, "oBR9600");
        EXPECT_TRUE(In<QRadioButton>(dialog, "oComm2")->isChecked());
        EXPECT_TRUE(In<QRadioButton>(dialog, "oBR9600")->isChecked());
        EXPECT_TEXT(u"PortNumber=2\r\nBaudRate=9600\r\nBaudRate=9600\r\n", console.DialogSelection);
        Click(dialog, "SPOK");
    });

    ASSERT_EQ(1u, server_->calls.size());
    EXPECT_EQ("SerialPortParameters", server_->calls[0].member);
    EXPECT_TEXT(u"PortNumber=2\r\nBaudRate=9600\r\n" + kLogLine + kNul, server_->calls[0].text());

    // Opened again: the same window, its options as they were left.
    prompter_.Ok();
    OpenFromMenu("SerialPortParaEntry", [&](QDialog& dialog) {
        EXPECT_TRUE(In<QRadioButton>(dialog, "oComm2")->isChecked());
        EXPECT_TRUE(In<QRadioButton>(dialog, "oBR9600")->isChecked());
        Click(dialog, "SPCancel");
    });
    EXPECT_TEXT(u"100", console.DialogSelection);
}

TEST_F(SetupDialogsTest, TheDebugDialogShowsItsTextsAndRecordsTheChoice) {
    Start();
    Console& console = app_->console();
    OpenFromMenu("GetDebugSelectEntry", [&](QDialog& dialog) {
        EXPECT_EQ(QStringLiteral("Get Debug Select"), dialog.windowTitle());
        EXPECT_EQ(QSize(285, 256), dialog.size());  // 4275 x 3840 twips
        EXPECT_EQ(QStringLiteral("Log File - Link & OLE/DDE "), In<QLabel>(dialog, "Label4")->text());
        EXPECT_EQ(QStringLiteral("msgbox - OLE/DDE & Link Data to Log File"), In<QLabel>(dialog, "Label6")->text());
        Click(dialog, "Select4");
        Click(dialog, "cmdOK");
    });
    EXPECT_TEXT(u"4", console.DialogSelection);
}

// The console's own timer and a real message box: the timer goes on ticking
// while the serial-port OK shows its block, and the key pad block that a
// tick leaves in CommandData is what the OK then assigns.
TEST_F(SetupDialogsTest, TheRealTimerTicksUnderTheOkBoxAndReplacesTheBlock) {
    QtPrompter boxes;
    Start(&boxes, true);
    auto* stress = Find<QPushButton>("STRESS_BUTTON");
    ASSERT_NE(stress, nullptr);
    QTest::mouseClick(stress, Qt::LeftButton);
    // Green where the caption does not reach.
    EXPECT_EQ(QColor(0, 255, 0), stress->grab().toImage().pixelColor(stress->width() / 2, 3));

    std::size_t putsWhenBoxCameUp = 0;
    bool boxSeen = false;
    QString boxText;
    QElapsedTimer waited;
    waited.start();
    QTimer answer;
    answer.setInterval(10);
    QObject::connect(&answer, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) {
            return;
        }
        if (!boxSeen) {
            boxSeen = true;
            boxText = box->text();
            putsWhenBoxCameUp = server_->calls.size();
        }
        // Wait for one tick under the box; a safety net closes it anyway.
        if (server_->calls.size() >= putsWhenBoxCameUp + 2 || waited.elapsed() > 10000) {
            box->button(QMessageBox::Ok)->click();
        }
    });
    answer.start();
    OpenFromMenu("SerialPortParaEntry", [&](QDialog& dialog) {
        Click(dialog, "oComm1");
        Click(dialog, "oBR19200");
        // From a fresh event, so that the answering timer is not the one
        // blocked under the box.
        QTimer::singleShot(0, &dialog, [&dialog] { Click(dialog, "SPOK"); });
        EXPECT_TRUE(WaitFor([&dialog] { return !dialog.isVisible(); }));
    });
    EXPECT_TRUE(boxSeen);
    answer.stop();
    app_->window().view().SetTimersRunning(false);

    EXPECT_TRUE(boxText.startsWith(QStringLiteral("PortNumber=1\nBaudRate=19200\n"))) << boxText.toStdString();
    ASSERT_GE(server_->calls.size(), putsWhenBoxCameUp + 3);
    const RecordedCall& sent = server_->calls[putsWhenBoxCameUp + 2];
    EXPECT_EQ("SerialPortParameters", sent.member);
    EXPECT_TEXT(u"ReaderPosition=17\r\nKeyData=123@R456A@789NYL0EHCe\n" + kNul, sent.text());
    EXPECT_TRUE(report_.errors.empty());
}

}  // namespace
}  // namespace vantrel
