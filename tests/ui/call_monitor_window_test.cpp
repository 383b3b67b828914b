// The call monitor window on the offscreen platform, opened from the console
// as the technician opens it, fed by real clicks and by events on the hub.
#include "devices/devices.h"
#include "support/call_events.h"
#include "support/qt/modal.h"
#include "support/qt/console.h"
#include "ui/call_monitor_window.h"
#include "ui/comparison_window.h"
#include "ui/qt_ports.h"
#include "ui/window_places.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QSettings>
#include <QListView>
#include <QMenu>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QTableView>
#include <QTableWidget>
#include <QTextBlock>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <fstream>
#include <functional>
#include <sstream>

namespace vantrel {
namespace {

using namespace std::chrono_literals;
using testing::RecordedCall;

const Text kFillup = Text(u"FuelingPosition=07\r\nHose=0\r\nMOP=F\r\nLimit=999999\r\n") + u'\0';

bool WaitFor(const std::function<bool()>& done) {
    for (int waited = 0; waited < 500 && !done(); ++waited) {
        QTest::qWait(10);
    }
    return done();
}

CallEvent Put(std::string member, Text value) {
    return testing::PutEvent(std::move(member), Variant::OfText(std::move(value)),
                             {std::chrono::system_clock::now(), 180us});
}

CallEvent Call(std::string member, std::optional<Variant> argument, Text answer, bool byRef = false) {
    return testing::CallEventOf(std::move(member), std::move(argument), Variant::OfText(std::move(answer)), byRef,
                                {std::chrono::system_clock::now(), 2300us});
}

// The console built as the program builds it, with the monitor listening
// from before the load.
class CallMonitorWindowTest : public testing::QtConsoleTest {
protected:
    void Build(MonitorLimits limits = {}) {
        Start(nullptr, true, [&] { monitor_ = std::make_unique<CallMonitor>(events_, app_->window(), limits); });
    }
    void SetUp() override { Build(); }

    CallMonitorWindow& Open() {
        CallMonitorWindow& window = monitor_->Open();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        return window;
    }

    template <typename Widget>
    Widget* Find(const char* name) {
        auto* widget = monitor_->window()->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    QTableView* Table() { return Find<QTableView>("CallMonitorTable"); }
    QString Cell(int row, CallMonitorModel::Column column) {
        return Table()->model()->index(row, static_cast<int>(column)).data().toString();
    }
    int Rows() { return Table()->model()->rowCount(); }

    void ClickRow(int row) {
        QTableView* table = Table();
        table->scrollTo(table->model()->index(row, 0));
        const QRect cell = table->visualRect(table->model()->index(row, 3));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    }
    QStringList HexLines() {
        QStringList lines;
        QAbstractItemModel* hex = Find<QListView>("CallMonitorHex")->model();
        for (int row = 0; row < hex->rowCount(); ++row) {
            lines << hex->index(row, 0).data().toString();
        }
        return lines;
    }
    void Feed(const std::vector<CallEvent>& events) {
        for (const CallEvent& event : events) {
            events_.OnEvent(event);
        }
        monitor_->window()->Flush();
    }

    std::unique_ptr<CallMonitor> monitor_;
};

TEST_F(CallMonitorWindowTest, OpensFromTheToolsMenuWithTheWholeSessionSoFar) {
    server_->QueueAnswer("FuelingPositionInformation", Variant::OfText(u"FP=07\r\nState=Idle\r\n"));
    QTest::mouseClick(app_->window().findChild<QWidget*>(QStringLiteral("Button7")), Qt::LeftButton);
    EXPECT_EQ(nullptr, monitor_->window());

    QAction* entry = nullptr;
    for (QAction* action : app_->window().toolsMenu().actions()) {
        if (action->text() == QStringLiteral("Call monitor")) {
            entry = action;
        }
    }
    ASSERT_NE(nullptr, entry);
    EXPECT_EQ(QKeySequence(QStringLiteral("Ctrl+M")), entry->shortcut());
    QTest::keyClick(&app_->window(), Qt::Key_M, Qt::ControlModifier);
    ASSERT_NE(nullptr, monitor_->window());
    ASSERT_TRUE(WaitFor([&] { return monitor_->window()->isVisible() && Rows() == 2; }));

    using Column = CallMonitorModel::Column;
    EXPECT_EQ(QStringLiteral("create"), Cell(0, Column::Kind));
    EXPECT_EQ(QStringLiteral("Vantrel.Application"), Cell(0, Column::Member));
    EXPECT_EQ(QStringLiteral("FuelingPositionInformation"), Cell(1, Column::Member));
    EXPECT_EQ(QStringLiteral("i2 7"), Cell(1, Column::Sent));
    EXPECT_EQ(QStringLiteral("FP=07«CR»«LF»State=Idle«CR»«LF»"), Cell(1, Column::Answer));
    EXPECT_TRUE(Cell(1, Column::ServerTime).endsWith(QStringLiteral(" ms")));
    // The console keeps its size: the monitor is a window of its own.
    EXPECT_EQ(QSize(577, 524), app_->window().view().size());

    // Opening it again shows the same window.
    entry->trigger();
    EXPECT_EQ(monitor_->window(), &Open());
}

TEST_F(CallMonitorWindowTest, ShowsNewCallsLiveAndTheSelectedRowAsTextAndHex) {
    Open();
    server_->QueueAnswer("FuelingPositionInformation", Variant::OfText(Text(u"FP=03\r\nMsg=\x1bG\x1a"
                                                                            u"000\r\n") +
                                                                       Text(40, u'\0')));
    // The technician goes back to the console and clicks there.
    QApplication::setActiveWindow(&app_->window());
    QTest::mouseClick(app_->window().findChild<QWidget*>(QStringLiteral("Button3")), Qt::LeftButton);
    // The timer brings the row in; nothing is drawn while the command runs.
    ASSERT_TRUE(WaitFor([&] { return Rows() == 2; })) << Rows() << " " << server_->calls.size();

    ClickRow(1);
    EXPECT_EQ(QStringLiteral("FP=03«CR»«LF»\nMsg=«ESC»G«SUB»000«CR»«LF»\n«NUL × 40»"),
              Find<QPlainTextEdit>("CallMonitorText")->toPlainText());
    const QStringList hex = HexLines();
    ASSERT_EQ(4, hex.size());
    EXPECT_EQ(QStringLiteral("00000000  46 50 3D 30 33 0D 0A 4D  73 67 3D 1B 47 1A 30 30  |FP=03..Msg=.G.00|"), hex[0]);
    EXPECT_TRUE(hex[1].startsWith(QStringLiteral("00000010  30 0D 0A 00 00")));
    EXPECT_TRUE(hex[3].startsWith(QStringLiteral("00000030  00 00 00")));

    // The value sent, a number here, on request.
    QTest::mouseClick(Find<QRadioButton>("CallMonitorShowSent"), Qt::LeftButton);
    EXPECT_EQ(QStringLiteral("i2 3"), Find<QPlainTextEdit>("CallMonitorText")->toPlainText());
    EXPECT_TRUE(HexLines().isEmpty());
    EXPECT_TRUE(Find<QLabel>("CallMonitorDetail")->text().contains(QStringLiteral("sent: i2 3")));
}

TEST_F(CallMonitorWindowTest, FiltersByMemberAndTextCopiesALiteralAndClears) {
    Open();
    Feed({Put("Authorize", kFillup), Call("CardQue", std::nullopt, u"Track2=;4000=1?\r\n"),
          Put("DisplayData", Text(u"ReaderPosition=07\r\nMessage=\x1bG\x1a"
                                  u"000Hello\r\n") +
                                 u'\0'),
          Call("CardQue", std::nullopt, u"")});
    ASSERT_EQ(5, Rows());  // the creation first
    QTest::mouseClick(Find<QToolButton>("CallMonitorErrorsOnly"), Qt::LeftButton);
    EXPECT_EQ(0, Rows());  // nothing failed
    QTest::mouseClick(Find<QToolButton>("CallMonitorErrorsOnly"), Qt::LeftButton);
    EXPECT_EQ(5, Rows());

    auto* member = Find<QComboBox>("CallMonitorMember");
    member->setCurrentIndex(member->findText(QStringLiteral("CardQue")));
    EXPECT_EQ(2, Rows());
    QTest::keyClicks(Find<QLineEdit>("CallMonitorFilter"), QStringLiteral("track2"));
    EXPECT_EQ(1, Rows());
    member->setCurrentIndex(0);
    Find<QLineEdit>("CallMonitorFilter")->clear();
    QTest::keyClicks(Find<QLineEdit>("CallMonitorFilter"), QStringLiteral("\\eG"));
    ASSERT_EQ(1, Rows());
    EXPECT_EQ(QStringLiteral("DisplayData"), Cell(0, CallMonitorModel::Column::Member));

    ClickRow(0);
    EXPECT_FALSE(Find<QPlainTextEdit>("CallMonitorText")->toPlainText().isEmpty());
    // The detail follows the filter: a row it hides is shown no longer.
    QTest::keyClicks(Find<QLineEdit>("CallMonitorFilter"), QStringLiteral("nothing holds this"));
    EXPECT_EQ(0, Rows());
    EXPECT_TRUE(Find<QPlainTextEdit>("CallMonitorText")->toPlainText().isEmpty());
    Find<QLineEdit>("CallMonitorFilter")->clear();
    QTest::keyClicks(Find<QLineEdit>("CallMonitorFilter"), QStringLiteral("\\eG"));
    ClickRow(0);
    QTest::keyClick(Table(), Qt::Key_C, Qt::ControlModifier);
    const QString copied = QApplication::clipboard()->text();
    EXPECT_TRUE(
        copied.endsWith(QStringLiteral(R"vts( put DisplayData "ReaderPosition=07\r\nMessage=\eG\x1A000Hello\r\n\0")vts"
                                       "\n")))
        << copied.toStdString();

    QTest::mouseClick(Find<QToolButton>("CallMonitorClear"), Qt::LeftButton);
    EXPECT_EQ(0, Rows());
    EXPECT_TRUE(Find<QPlainTextEdit>("CallMonitorText")->toPlainText().isEmpty());
    // The filter stays; a new matching row shows.
    Feed({Put("DisplayData", u"\x1bG2")});
    EXPECT_EQ(1, Rows());

    // Box titles are listed apart from the server's members, and filter alike.
    Find<QLineEdit>("CallMonitorFilter")->clear();
    Feed({testing::BoxEvent(CallEvent::Op::InputBox, u"Enter MOP (1, 2, F)", u"MOP Input", u"F", CallEvent::Buttons::Ok,
                            std::chrono::system_clock::now())});
    const int box = member->findText(QStringLiteral("box: MOP Input"));
    ASSERT_GT(box, 1);
    EXPECT_EQ(QStringLiteral("DisplayData"), member->itemText(box - 2));
    EXPECT_TRUE(member->itemText(box - 1).isEmpty());  // the separator
    member->setCurrentIndex(box);
    EXPECT_EQ(1, Rows());
}

TEST_F(CallMonitorWindowTest, SearchSelectsTheNextMatchingRowAndPausesTheFollowing) {
    Open();
    std::vector<CallEvent> events;
    for (int k = 0; k < 300; ++k) {
        events.push_back(
            Put("KeyPadConfiguration", Text(u"ReaderPosition=01\r\nKeyData=123@R456A@789NYL0EHCe\n") + u'\0'));
    }
    events[20] = Put("Stop", u"05");
    Feed(events);
    QScrollBar* bar = Table()->verticalScrollBar();
    EXPECT_EQ(bar->maximum(), bar->value());

    QTest::keyClicks(Find<QLineEdit>("CallMonitorFind"), QStringLiteral("stop"));
    QTest::keyClick(Find<QLineEdit>("CallMonitorFind"), Qt::Key_Return);
    ASSERT_TRUE(Table()->currentIndex().isValid());
    EXPECT_EQ(21, Table()->currentIndex().row());  // after the creation
    EXPECT_FALSE(Find<QToolButton>("CallMonitorFollow")->isChecked());

    // Scrolled back, new rows leave the view where it is.
    bar->setValue(0);
    Feed({Put("Resume", u"05"), Put("Resume", u"06")});
    EXPECT_EQ(0, bar->value());
    EXPECT_TRUE(Find<QLabel>("CallMonitorStatus")->text().contains(QStringLiteral("2 new below")));

    QTest::mouseClick(Find<QToolButton>("CallMonitorFollow"), Qt::LeftButton);
    EXPECT_EQ(bar->maximum(), bar->value());
    Feed({Put("Resume", u"07")});
    EXPECT_EQ(bar->maximum(), bar->value());
    EXPECT_TRUE(Find<QToolButton>("CallMonitorFollow")->isChecked());
}

// At its first size the monitor fits a screen of 1024 by 768, and one of
// 1280 by 1024 at 150 %, frame included; it comes back where it was left.
TEST_F(CallMonitorWindowTest, FitsSmallScreensAndComesBackWhereItWasLeft) {
    QSettings().remove(QLatin1String(kMonitorGeometryKey));
    CallMonitorFeed feed;
    CallMonitorWindow fresh(feed, MonitorLimits{}, nullptr);
    for (const QSize screen : {QSize(1024, 768), QSize(1280 * 2 / 3, 1024 * 2 / 3)}) {
        EXPECT_LE(fresh.width() + 16, screen.width());
        EXPECT_LE(fresh.height() + 48, screen.height());
        EXPECT_LE(fresh.minimumSizeHint().width(), fresh.width());
    }
    fresh.show();
    fresh.setGeometry(30, 40, 800, 500);
    fresh.hide();
    CallMonitorWindow again(feed, MonitorLimits{}, nullptr);
    EXPECT_EQ(QSize(800, 500), again.size());
    QSettings().remove(QLatin1String(kMonitorGeometryKey));
}

// A row with a long member name and a long answer, once selected, must not
// hold the window wider than it was.
TEST_F(CallMonitorWindowTest, SelectingALongRowDoesNotWidenTheWindow) {
    CallMonitorWindow& window = Open();
    Feed({Call(std::string(120, 'M'), Variant::OfInt16(7), Text(5000, u'A'))});
    const int widthBefore = window.width();
    const int minimumBefore = window.minimumSizeHint().width();
    ClickRow(Rows() - 1);
    QTest::qWait(20);
    EXPECT_THAT(Find<QLabel>("CallMonitorDetail")->text().toStdString(), ::testing::HasSubstr("MMMM"));
    EXPECT_EQ(widthBefore, window.width());
    EXPECT_LE(window.minimumSizeHint().width(), minimumBefore);
}

// A click as the window system delivers it: a window that a modal box
// blocks never gets it.
void ClickThroughTheWindowSystem(QWidget* widget) {
    QWidget* top = widget->window();
    QTest::mouseClick(top->windowHandle(), Qt::LeftButton, Qt::NoModifier, widget->mapTo(top, widget->rect().center()));
}

// While the error report is up, and while one of the console's own windows
// is shown modally, the monitor still selects and copies.
TEST_F(CallMonitorWindowTest, StaysUsableWhileTheReportOrAConsoleWindowIsUp) {
    CallMonitorWindow& window = Open();
    Feed({Put("Authorize", kFillup)});
    ClickRow(Rows() - 1);
    QtErrorReport report(events_, ProcessErrorReport::Mode::MessageBox);
    report.SetKeepGoing(true);
    const auto copyWhileUp = [&](const std::function<void()>& showModal) {
        QApplication::clipboard()->clear();
        QString copied;
        testing::WhenShown<QDialog>([&](QDialog* box) {
            ClickThroughTheWindowSystem(Find<QToolButton>("CallMonitorCopy"));
            copied = QApplication::clipboard()->text();
            box->done(0);
        });
        showModal();
        return copied;
    };
    EXPECT_THAT(
        copyWhileUp([&] { report.Report(RuntimeError(5, "Invalid procedure call or argument")); }).toStdString(),
        ::testing::HasSubstr("put Authorize"));
    EXPECT_THAT(copyWhileUp([&] { app_->console().ShowModal(kOtherDevicesForm); }).toStdString(),
                ::testing::HasSubstr("put Authorize"));
    // The console's own windows stay blocked behind the report.
    testing::WhenShown<QDialog>([&](QDialog* box) {
        server_->calls.clear();
        ClickThroughTheWindowSystem(app_->window().view().Widget("SystemVersions"));
        EXPECT_TRUE(server_->calls.empty());
        box->done(0);
    });
    report.Report(RuntimeError(5, "Invalid procedure call or argument"));
    (void)window;
}

// Send again: the selected put or call goes to the server once more, the
// same member, style and value, and shows as a row of its own; boxes, the
// report and the creation are refused with the reason.
TEST_F(CallMonitorWindowTest, SendsASelectedPutOrCallAgainExactly) {
    monitor_->SetServerReach([this] { return &app_->console().KRM(); });
    Open();
    const Text packet = Text(u"ReaderPosition=07\r\nPacketData=\x02") + u'\0' + u"\x03\r\n";
    Feed({Put("PacketQueOutput", packet), Call("DispenserInformation", Variant::OfInt16(7), u"Hoses=4\r\n", true),
          testing::BoxEvent(CallEvent::Op::MessageBox, u"Done", u"Vantrel Test", u"ok", CallEvent::Buttons::Ok,
                            std::chrono::system_clock::now())});
    const int before = Rows();
    const auto sendRow = [&](int row) {
        ClickRow(row);
        QTest::mouseClick(Find<QToolButton>("CallMonitorSendAgain"), Qt::LeftButton);
        return Find<QLabel>("CallMonitorStatus")->text().toStdString();
    };
    server_->calls.clear();
    EXPECT_THAT(sendRow(before - 3), ::testing::HasSubstr("sent again"));
    ASSERT_EQ(1u, server_->calls.size());
    EXPECT_EQ(RecordedCall::Kind::Put, server_->calls[0].kind);
    EXPECT_EQ("PacketQueOutput", server_->calls[0].member);
    EXPECT_EQ(packet, server_->calls[0].text());
    EXPECT_EQ(before + 1, Rows());  // traced as any call
    EXPECT_EQ(QStringLiteral("PacketQueOutput"), Cell(before, CallMonitorModel::Column::Member));

    sendRow(before - 2);
    ASSERT_EQ(2u, server_->calls.size());
    EXPECT_EQ(RecordedCall::Kind::CallByRef, server_->calls[1].kind);
    EXPECT_EQ(Variant::OfInt16(7), server_->calls[1].value);

    server_->QueueFailure("DispenserInformation", RuntimeError(5, "Invalid procedure call or argument"));
    EXPECT_THAT(sendRow(before - 2), ::testing::HasSubstr("error 5"));
    EXPECT_EQ(3u, server_->calls.size());

    EXPECT_THAT(sendRow(before - 1), ::testing::HasSubstr("Not sent: A box is the console's own"));
    EXPECT_THAT(sendRow(0), ::testing::HasSubstr("Not sent: The server is created once per run"));
    EXPECT_EQ(3u, server_->calls.size());
}

TEST_F(CallMonitorWindowTest, ExportsTheShownRowsInTheTraceFormat) {
    Open();
    Feed({Put("Authorize", Text(u"Hose=0\r\n") + u'\0'),
          Call("DispenserInformation", Variant::OfInt16(7), u"FP=07\r\n", true)});
    Find<QComboBox>("CallMonitorMember")->setCurrentText(QStringLiteral("Authorize"));
    ASSERT_EQ(1, Rows());

    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("calls.jsonl"));
    testing::WhenShown<QFileDialog>([&](QFileDialog* dialog) {
        static_cast<QDialog*>(dialog)->accept();  // the name offered, as the Save button takes it
    });
    QTest::mouseClick(Find<QToolButton>("CallMonitorExport"), Qt::LeftButton);
    // The name offered is dated, in the user's documents or home folder, not
    // the working folder.
    const QString status = Find<QLabel>("CallMonitorStatus")->text();
    const QString exported = status.mid(status.indexOf(QStringLiteral("written to ")) + 11);
    EXPECT_TRUE(QFileInfo(exported).fileName().startsWith(QStringLiteral("vantrel-calls-"))) << status.toStdString();
    EXPECT_TRUE(exported.endsWith(QStringLiteral(".jsonl"))) << status.toStdString();
    EXPECT_NE(QDir::currentPath(), QFileInfo(exported).absolutePath());
    QFile::remove(exported);
    ASSERT_TRUE(monitor_->window()->ExportTo(path));

    std::ifstream file(path.toStdString(), std::ios::binary);
    std::stringstream written;
    written << file.rdbuf();
    // The trace's line, with the row's time and the time the server took first.
    EXPECT_THAT(written.str(),
                ::testing::MatchesRegex(R"(\{"time":"[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}\.[0-9]{3}",)"
                                        R"("server_ms":0\.180,"op":"put","member":"Authorize",)"
                                        R"("value":\{"text":"Hose=0\\r\\n\\u0000"\}\}
)"));

    // A .txt file gets the plain log: the cells between tabs, the date with
    // the time.
    ASSERT_TRUE(monitor_->window()->ExportTo(folder.filePath(QStringLiteral("calls.txt"))));
    std::ifstream log(folder.filePath(QStringLiteral("calls.txt")).toStdString(), std::ios::binary);
    std::stringstream logged;
    logged << log.rdbuf();
    const std::string line = logged.str();
    EXPECT_THAT(line, ::testing::MatchesRegex(R"([0-9]+.[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:.]{12}.*)"));
    EXPECT_THAT(line, ::testing::HasSubstr("\tAuthorize\tput\t\tHose=0"));  // no position in this block
    EXPECT_THAT(line, ::testing::EndsWith("\t\t0.180 ms\n"));
    EXPECT_EQ(1, std::count(line.begin(), line.end(), '\n'));
    EXPECT_TRUE(Find<QLabel>("CallMonitorStatus")->text().contains(QStringLiteral("1 row written")));

    // A folder that does not exist: said in the status line, nothing else.
    EXPECT_FALSE(monitor_->window()->ExportTo(folder.filePath(QStringLiteral("no/such/folder/calls.jsonl"))));
    EXPECT_TRUE(Find<QLabel>("CallMonitorStatus")->text().contains(QStringLiteral("Cannot write")));
}

class CallMonitorLimitsTest : public CallMonitorWindowTest {
protected:
    void SetUp() override { Build(MonitorLimits{5, 1024}); }
};

TEST_F(CallMonitorLimitsTest, SaysWhenOlderRowsWereDropped) {
    Open();
    EXPECT_FALSE(Find<QLabel>("CallMonitorDropped")->isVisible());
    Feed({Put("Stop", u"01"), Put("Stop", u"02"), Put("Stop", u"03"), Put("Stop", u"04"), Put("Stop", u"05")});
    EXPECT_EQ(5, Rows());
    EXPECT_EQ(QStringLiteral("6"), Cell(4, CallMonitorModel::Column::Number));
    QLabel* dropped = Find<QLabel>("CallMonitorDropped");
    EXPECT_TRUE(dropped->isVisible());
    EXPECT_TRUE(dropped->text().startsWith(QStringLiteral("1 older events dropped"))) << dropped->text().toStdString();
}

TEST_F(CallMonitorWindowTest, ATenMegabyteAnswerIsDrawnInPartsAndShownWholeInHex) {
    Open();
    Text answer = Text(u"ReaderPosition=01\r\nPacketCount=10485760\r\nPacketData=");
    answer += Text(10 * 1024 * 1024, u'x');
    Feed({Call("PacketQueInput", std::nullopt, answer)});
    ASSERT_EQ(2, Rows());
    EXPECT_LT(Cell(1, CallMonitorModel::Column::Answer).size(), 250);
    ClickRow(1);
    EXPECT_LT(Find<QPlainTextEdit>("CallMonitorText")->toPlainText().size(),
              static_cast<qsizetype>(CallMonitorWindow::kDetailLimit + 100));
    EXPECT_EQ(static_cast<int>((answer.size() + 15) / 16), Find<QListView>("CallMonitorHex")->model()->rowCount());
    EXPECT_TRUE(Find<QLabel>("CallMonitorDetail")->text().contains(QStringLiteral("10,485,812 characters")))
        << Find<QLabel>("CallMonitorDetail")->text().toStdString();
}

// A picture with a few calls as a technician makes them, for the README.
TEST_F(CallMonitorWindowTest, Picture) {
    server_->QueueAnswer("FuelingPositionInformation", Variant::OfText(u"FuelingPosition=07\r\nState=Idle\r\n"));
    QTest::mouseClick(app_->window().findChild<QWidget*>(QStringLiteral("Button7")), Qt::LeftButton);
    Open();
    const CallEvent failed =
        testing::FailedEvent(Call("CardQue", std::nullopt, u""), 438, "Object doesn't support this property or method");
    const Text key = Text(u"KeyData=123@R456A@789NYL0EHCe\n") + u'\0';
    std::vector<CallEvent> session = {
        Put("Authorize", kFillup),
        Call("DispenserInformation", Variant::OfInt16(7),
             u"FuelingPosition=07\r\nHoses=4\r\nTier1=1111\r\nTier2=1111\r\nBlend=100\r\n", true),
        Put("DisplayData", Text(u"ReaderPosition=07\r\nMessage=\x1bG\x1a"
                                u"000\x1b=030120Col/Row (30/120)\r\n") +
                               u'\0'),
        Put("KeyPadConfiguration", u"ReaderPosition=01\r\n" + key),
        Put("KeyPadConfiguration", u"ReaderPosition=17\r\n" + key),
        Call("PacketQueInput", std::nullopt,
             Text(u"ReaderPosition=07\r\nPacketCount=040\r\nPacketData=\x02"
                  u"C1") +
                 Text(36, u'\0') + u"\x03\r\n"),
        failed,
    };
    // A technician's pace: a few hundred milliseconds apart.
    for (std::size_t k = 0; k < session.size(); ++k) {
        session[k].when += std::chrono::milliseconds(1200 + 370 * k);
    }
    Feed(session);
    ClickRow(7);
    CallMonitorWindow& window = *monitor_->window();
    QTest::qWait(50);
    const QImage picture = window.grab().toImage();
    ASSERT_FALSE(picture.isNull());
    EXPECT_TRUE(picture.save(QStringLiteral("call-monitor.png"), "PNG"));
}

}  // namespace
}  // namespace vantrel

namespace vantrel {
namespace {

// Characters of a view drawn on a background of their own: the marks.
QString MarkedIn(QPlainTextEdit* view) {
    QString marked;
    for (QTextBlock block = view->document()->begin(); block.isValid(); block = block.next()) {
        for (auto fragment = block.begin(); !fragment.atEnd(); ++fragment) {
            if (fragment.fragment().charFormat().hasProperty(QTextFormat::BackgroundBrush)) {
                marked += fragment.fragment().text();
            }
        }
    }
    return marked;
}

TEST_F(CallMonitorWindowTest, ComparesARecordWithTheServerAndMarksWhatDiffers) {
    CallMonitorWindow& window = Open();
    window.SetServerReach([this] { return &app_->console().KRM(); });
    QTemporaryDir folder;
    const QString record = folder.filePath(QStringLiteral("record.jsonl"));
    std::ofstream(record.toStdString(), std::ios::binary)
        << R"({"op":"create","progid":"Vantrel.Application"})"
           "\n"
        << R"({"op":"call","member":"CardQue","result":{"text":"Card=1\r\n"}})"
           "\n"
        << R"({"op":"msgbox","text":"Sure?","title":"VantrelTest","buttons":"ok","answer":"ok"})"
           "\n"
        << R"({"op":"call","member":"CardQue","result":{"text":"Card=9\r\nReader=\u001b07\r\n"}})"
           "\n";
    server_->QueueAnswer("CardQue", Variant::OfText(u"Card=1\r\n"));
    server_->QueueAnswer("CardQue", Variant::OfText(u"Card=2\r\nReader=\x1b"
                                                    u"07\r\n"));

    ComparisonWindow* comparison = window.CompareWith(record);
    ASSERT_NE(comparison, nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(comparison));
    auto* rows = comparison->findChild<QTableWidget*>(QStringLiteral("ComparisonRows"));
    ASSERT_EQ(rows->rowCount(), 3);  // the box is not sent
    EXPECT_EQ(rows->item(1, 1)->text(), QStringLiteral("CardQue"));
    EXPECT_EQ(rows->item(1, 2)->text(), QStringLiteral("same"));
    EXPECT_EQ(rows->item(2, 0)->text(), QStringLiteral("4"));
    EXPECT_EQ(rows->item(2, 2)->text(), QStringLiteral("changed"));

    comparison->SelectRow(2);
    auto* oldText = comparison->findChild<QPlainTextEdit*>(QStringLiteral("ComparisonOldText"));
    auto* newText = comparison->findChild<QPlainTextEdit*>(QStringLiteral("ComparisonNewText"));
    EXPECT_EQ(oldText->toPlainText(), QStringLiteral("Card=9«CR»«LF»\nReader=«ESC»07«CR»«LF»\n"));
    EXPECT_EQ(MarkedIn(oldText), QStringLiteral("9"));
    EXPECT_EQ(MarkedIn(newText), QStringLiteral("2"));
    EXPECT_EQ(comparison->findChild<QLabel*>(QStringLiteral("ComparisonLines"))->text(),
              QStringLiteral("key Card changed: old \"9\"  |  new \"2\""));
    // The replayed calls are the session's own: traced, and in the monitor.
    window.Flush();
    EXPECT_EQ(Rows(), 3);
    if (const char* pictures = std::getenv("VANTREL_PICTURES")) {
        comparison->grab().save(QString::fromLocal8Bit(pictures) + QStringLiteral("/replay-comparison.png"));
    }

    // No server: the reason, and no window.
    window.SetServerReach([] { return nullptr; });
    EXPECT_EQ(window.CompareWith(record), nullptr);
}

}  // namespace
}  // namespace vantrel
