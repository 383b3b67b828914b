// The simulator window on the offscreen platform: real clicks on its buttons
// change the model, and the table follows the model.
#include "simulator/simulator.h"
#include "support/test_support.h"
#include "ui/window_places.h"
#include "ui/simulator_window.h"

#include <gtest/gtest.h>

#include <QSettings>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTest>

#include <memory>

namespace vantrel {
namespace {

using namespace std::chrono_literals;

const Text kFillup07 = Text(u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n") + Text(1, u'\0');

class SimulatorWindowTest : public ::testing::Test {
protected:
    void SetUp() override {
        window_ = std::make_unique<SimulatorWindow>(simulator_);
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }

    template <typename Widget>
    Widget* Find(const char* name) {
        auto* widget = window_->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    void Press(const char* button) { QTest::mouseClick(Find<QPushButton>(button), Qt::LeftButton); }
    void Choose(const char* combo, const QString& text) {
        auto* box = Find<QComboBox>(combo);
        box->setCurrentIndex(box->findText(text));
        ASSERT_EQ(text, box->currentText());
    }
    void Enter(const char* edit, const QString& text) {
        auto* box = Find<QLineEdit>(edit);
        box->clear();
        QTest::keyClicks(box, text);
    }
    QString Cell(int position, int column) {
        return Find<QTableWidget>("Positions")->item(position - 1, column)->text();
    }
    QString Status() { return Find<QLabel>("Status")->text(); }
    Text Call(std::string_view member) { return ToText(simulator_.Call(member)); }

    Simulator simulator_{std::make_unique<simulation::ManualClock>()};
    std::unique_ptr<SimulatorWindow> window_;
};

// At its first size the window fits a screen of 1024 by 768, and one of
// 1280 by 1024 at 150 %, frame included; it comes back where it was left,
// in this run or the next.
TEST_F(SimulatorWindowTest, FitsSmallScreensAndComesBackWhereItWasLeft) {
    QSettings().remove(QLatin1String(kSimulatorGeometryKey));
    SimulatorWindow fresh(simulator_);
    for (const QSize screen : {QSize(1024, 768), QSize(1280 * 2 / 3, 1024 * 2 / 3)}) {
        EXPECT_LE(fresh.width() + 16, screen.width());
        EXPECT_LE(fresh.height() + 48, screen.height());
    }
    EXPECT_LE(fresh.minimumSizeHint().width(), fresh.width());
    EXPECT_LE(fresh.minimumSizeHint().height(), fresh.height());
    fresh.show();
    fresh.setGeometry(40, 50, 1000, 700);
    fresh.hide();
    SimulatorWindow again(simulator_);
    EXPECT_EQ(QSize(1000, 700), again.size());
    QSettings().remove(QLatin1String(kSimulatorGeometryKey));
}

TEST_F(SimulatorWindowTest, LiftAndHangUpFollowTheChosenPosition) {
    Find<QSpinBox>("Position")->setValue(7);
    Find<QSpinBox>("Hose")->setValue(2);
    Press("Lift");
    EXPECT_EQ(QStringLiteral("Up"), Cell(7, 1));
    EXPECT_EQ(QStringLiteral("2"), Cell(7, 2));
    EXPECT_EQ(QStringLiteral("Hose 2 lifted at position 7"), Status());
    Press("Lift");
    EXPECT_EQ(QStringLiteral("hose 2 is already lifted at position 07; hang it up first"), Status());
    Press("Hang");
    EXPECT_EQ(QStringLiteral("Down"), Cell(7, 1));
    EXPECT_EQ(QStringLiteral("Down"), Cell(8, 1));
}

TEST_F(SimulatorWindowTest, TheTableShowsASaleAsItFlows) {
    simulator_.Put("Authorize", Variant::OfText(kFillup07));
    Find<QSpinBox>("Position")->setValue(7);
    Press("Lift");
    EXPECT_EQ(QStringLiteral("Fueling"), Cell(7, 0));
    simulator_.AdvanceTime(10s);
    window_->Refresh();
    EXPECT_EQ(QStringLiteral("6.000"), Cell(7, 3));
    EXPECT_EQ(QStringLiteral("8.75"), Cell(7, 4));
    EXPECT_TRUE(Find<QLabel>("Summary")->text().startsWith(QStringLiteral("Time 10.000 s on the script clock")));
}

TEST_F(SimulatorWindowTest, TerminalEventsGoIntoTheQueuesWithTheirEscapesResolved) {
    Find<QSpinBox>("Position")->setValue(5);
    Enter("Keys", QStringLiteral("9876"));
    Press("PressKeys");
    EXPECT_TEXT(u"ReaderPosition=05\r\nEntryMode=\r\nKeyData=9876\r\n", Call("KeyQue"));
    Press("SendPacket");  // the box starts with the test packet C \x10 \x07
    EXPECT_TEXT(Text(u"ReaderPosition=05\r\nPacketCount=003\r\nPacketData=C\x10\x07\r\n") + Text(1, u'\0'),
                Call("PacketQueInput"));
    Enter("Packet", QStringLiteral("\\x1"));
    Press("SendPacket");
    EXPECT_EQ(QStringLiteral("\\x needs 2 hexadecimal digits"), Status());
    Enter("Cash", QStringLiteral("twenty"));
    Press("InsertCash");
    EXPECT_EQ(QStringLiteral("\"twenty\" is no amount of cash (20.00, 5, 0.50)"), Status());
    Press("SwipeCard");
    EXPECT_TEXT(u"CardQue=1\r\nKeyQue=1\r\nCashInQue=0\r\nErrorQue=0\r\nPacketQue=1\r\n", Call("QueCountQuery"));
}

TEST_F(SimulatorWindowTest, QueuedFaultsAreListedAndReachTheNextCall) {
    Choose("FaultMember", QStringLiteral("CardQue"));
    Choose("FaultOutcome", QStringLiteral("fail with error"));
    Find<QSpinBox>("FaultNumber")->setValue(438);
    Enter("FaultText", QStringLiteral("Object doesn't support this property or method"));
    Press("QueueFault");
    Choose("FaultMember", QStringLiteral("TankMonitorReport"));
    Choose("FaultOutcome", QStringLiteral("answer a huge text"));
    Find<QSpinBox>("FaultNumber")->setValue(1000);
    Press("QueueFault");
    auto* pending = Find<QListWidget>("PendingFaults");
    ASSERT_EQ(2, pending->count());
    EXPECT_EQ(QStringLiteral("CardQue: fails with 438 \"Object doesn't support this property or method\""),
              pending->item(0)->text());
    EXPECT_EQ(QStringLiteral("TankMonitorReport: answers a text of 1000 characters"), pending->item(1)->text());
    EXPECT_EQ(QStringLiteral("Queued for the next call of TankMonitorReport"), Status());

    EXPECT_THROW(simulator_.Call("CardQue"), RuntimeError);
    window_->Refresh();
    EXPECT_EQ(QStringLiteral("Queued for the next call of TankMonitorReport"), Status());  // one still queued
    EXPECT_EQ(1000u, Call("TankMonitorReport").size());
    window_->Refresh();
    EXPECT_EQ(0, pending->count());
    EXPECT_EQ(QString(), Status());
}

TEST_F(SimulatorWindowTest, AnAssignedMemberCanOnlyFailOrBeLate) {
    Choose("FaultMember", QStringLiteral("Authorize"));
    Choose("FaultOutcome", QStringLiteral("answer a number out of the 16-bit range"));
    EXPECT_FALSE(Find<QSpinBox>("FaultNumber")->isEnabled());
    Press("QueueFault");
    EXPECT_EQ(QStringLiteral("Authorize is assigned and answers nothing; it can only fail or be late"), Status());
    EXPECT_TRUE(simulator_.PendingFaults().empty());
    Choose("FaultOutcome", QStringLiteral("answer late"));
    EXPECT_EQ(3000, Find<QSpinBox>("FaultNumber")->value());
    Press("QueueFault");
    EXPECT_EQ(std::vector<std::string>{"Authorize: late by 3000 ms"}, simulator_.PendingFaults());
}

TEST_F(SimulatorWindowTest, TheErrorQueueAndTheAutomaticSwitchFollowTheModel) {
    simulator_.Put("Stop", Variant::OfText(u"7"));
    window_->Refresh();
    auto* errors = Find<QListWidget>("ErrorQueue");
    ASSERT_EQ(1, errors->count());
    EXPECT_EQ(QStringLiteral("Stop: \"7\" is not a fueling position (01 to 32, or 0 for all)"),
              errors->item(0)->text());
    auto* automatic = Find<QCheckBox>("Automatic");
    QTest::mouseClick(automatic, Qt::LeftButton, {}, QPoint(8, automatic->height() / 2));  // on the box itself
    EXPECT_TRUE(simulator_.automatic());
    simulator_.SetAutomatic(false);
    window_->Refresh();
    EXPECT_FALSE(Find<QCheckBox>("Automatic")->isChecked());
}

}  // namespace
}  // namespace vantrel
