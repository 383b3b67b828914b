#include "simulator_window.h"

#include "simulator/answer_text.h"
#include "simulator/simulator.h"
#include "ui/window_places.h"
#include "ui/console_window.h"
#include "script/script_line.h"
#include "ui/visible_text.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPointer>
#include <QPushButton>
#include <QSpinBox>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <functional>

namespace vantrel {

namespace {

enum class Fault {
    Fail,
    EmptyText,
    NotANumber,
    HugeText,
    OutOfRange,
    Late,
};

constexpr int kColumns = 5;

template <typename Widget>
Widget* Named(Widget* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

QPushButton* Button(const QString& caption, const char* name, QWidget* parent, std::function<void()> action) {
    auto* button = Named(new QPushButton(caption, parent), name);
    QObject::connect(button, &QPushButton::clicked, parent, std::move(action));
    return button;
}

}  // namespace

SimulatorWindow::SimulatorWindow(Simulator& simulator, QWidget* parent)
    : QWidget(parent, Qt::Window)
    , simulator_(simulator) {
    setObjectName(QStringLiteral("Simulator"));
    setWindowTitle(tr("Simulator"));

    positions_ = Named(new QTableWidget(simulation::kPositions, kColumns, this), "Positions");
    positions_->setHorizontalHeaderLabels({tr("State"), tr("Nozzle"), tr("Hose"), tr("Volume"), tr("Amount")});
    positions_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    positions_->setSelectionMode(QAbstractItemView::NoSelection);
    positions_->verticalHeader()->setDefaultSectionSize(18);
    positions_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    for (int row = 0; row < simulation::kPositions; ++row) {
        for (int column = 0; column < kColumns; ++column) {
            auto* item = new QTableWidgetItem();
            item->setTextAlignment(column >= 3 ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignCenter);
            positions_->setItem(row, column, item);
        }
    }
    summary_ = Named(new QLabel(this), "Summary");
    summary_->setTextFormat(Qt::PlainText);
    summary_->setWordWrap(true);  // one long line would hold the window wide
    errors_ = Named(new QListWidget(this), "ErrorQueue");
    status_ = Named(new QLabel(this), "Status");
    status_->setTextFormat(Qt::PlainText);
    status_->setWordWrap(true);

    auto* left = new QVBoxLayout();
    left->addWidget(MakeForecourtBox());
    left->addWidget(MakeFaultBox(), 1);
    auto* right = new QVBoxLayout();
    right->addWidget(positions_, 3);
    right->addWidget(summary_);
    right->addWidget(new QLabel(tr("Error queue"), this));
    right->addWidget(errors_, 1);
    auto* columns = new QHBoxLayout();
    columns->addLayout(left);
    columns->addLayout(right, 1);
    auto* outer = new QVBoxLayout(this);
    outer->addLayout(columns, 1);
    outer->addWidget(status_);
    // Within a screen of 1024 by 768, and of 1280 by 1024 at 150 %; where
    // the technician left it last time when that is known.
    resize(820, 620);
    RestoreGeometry(this, kSimulatorGeometryKey);

    timer_ = new QTimer(this);
    timer_->setInterval(500);
    connect(timer_, &QTimer::timeout, this, &SimulatorWindow::Refresh);
    Refresh();
}

QWidget* SimulatorWindow::MakeForecourtBox() {
    auto* box = new QGroupBox(tr("Forecourt"), this);
    auto* grid = new QGridLayout(box);
    position_ = Named(new QSpinBox(box), "Position");
    position_->setRange(1, simulation::kPositions);
    hose_ = Named(new QSpinBox(box), "Hose");
    hose_->setRange(1, simulation::kMaxHoses);
    auto* where = new QHBoxLayout();
    where->addWidget(new QLabel(tr("Position"), box));
    where->addWidget(position_);
    where->addWidget(new QLabel(tr("Hose"), box));
    where->addWidget(hose_);
    where->addWidget(Button(tr("Lift nozzle"), "Lift", this, [this] {
        Done(simulator_.forecourt().Lift(position_->value(), hose_->value()),
             tr("Hose %1 lifted at position %2").arg(hose_->value()).arg(position_->value()));
    }));
    where->addWidget(Button(tr("Hang up"), "Hang", this, [this] {
        Done(simulator_.forecourt().Hang(position_->value()),
             tr("Nozzle hung up at position %1").arg(position_->value()));
    }));
    grid->addLayout(where, 0, 0, 1, 3);

    // One row per terminal event: a box for its text and the button that
    // sends it from the chosen position. The boxes take escapes: \x10, \r ...
    int row = 1;
    const auto addEvent = [&](const QString& label, QLineEdit*& edit, const char* editName, const QString& caption,
                              const char* buttonName, std::string (simulation::Forecourt::*event)(int, TextView)) {
        edit = Named(new QLineEdit(box), editName);
        grid->addWidget(new QLabel(label, box), row, 0);
        grid->addWidget(edit, row, 1);
        QLineEdit* source = edit;
        grid->addWidget(Button(caption, buttonName, this,
                               [this, source, event, caption] {
                                   std::u16string text;
                                   if (Escaped(source, text)) {
                                       Done((simulator_.forecourt().*event)(position_->value(), text),
                                            tr("%1 at position %2").arg(caption).arg(position_->value()));
                                   }
                               }),
                        row, 2);
        ++row;
    };
    addEvent(tr("Card"), card_, "CardData", tr("Swipe card"), "SwipeCard", &simulation::Forecourt::SwipeCard);
    addEvent(tr("Keys"), keys_, "Keys", tr("Press keys"), "PressKeys", &simulation::Forecourt::PressKeys);
    addEvent(tr("Cash"), cash_, "Cash", tr("Insert cash"), "InsertCash", &simulation::Forecourt::InsertCash);
    addEvent(tr("Packet"), packet_, "Packet", tr("Send packet"), "SendPacket", &simulation::Forecourt::SendPacket);
    card_->setText(QStringLiteral(";4000001234567899=2512?"));
    keys_->setText(QStringLiteral("1234"));
    cash_->setText(QStringLiteral("20.00"));
    packet_->setText(QStringLiteral("C\\x10\\x07"));

    washCode_ = Named(new QLineEdit(box), "WashCode");
    grid->addWidget(new QLabel(tr("Wash code"), box), row, 0);
    grid->addWidget(washCode_, row, 1);
    grid->addWidget(Button(tr("Enter at wash"), "EnterWashCode", this,
                           [this] {
                               const QString code = washCode_->text();
                               Done(simulator_.forecourt().EnterWashCode(FromQString(code)),
                                    tr("Code %1 entered at the wash").arg(code));
                           }),
                    row++, 2);

    automatic_ = Named(new QCheckBox(tr("Automatic traffic"), box), "Automatic");
    connect(automatic_, &QCheckBox::toggled, this, [this](bool on) {
        simulator_.SetAutomatic(on);
        Refresh();
    });
    grid->addWidget(automatic_, row, 0, 1, 3);
    return box;
}

QWidget* SimulatorWindow::MakeFaultBox() {
    auto* box = new QGroupBox(tr("Faults for the next call"), this);
    auto* grid = new QGridLayout(box);
    member_ = Named(new QComboBox(box), "FaultMember");
    for (const simulation::Member& member : simulation::Members()) {
        member_->addItem(QString::fromLatin1(member.name.data(), static_cast<int>(member.name.size())));
    }
    outcome_ = Named(new QComboBox(box), "FaultOutcome");
    outcome_->addItems({tr("fail with error"), tr("answer an empty text"), tr("answer a text that is no number"),
                        tr("answer a huge text"), tr("answer a number out of the 16-bit range"), tr("answer late")});
    number_ = Named(new QSpinBox(box), "FaultNumber");
    description_ = Named(new QLineEdit(tr("Invalid procedure call or argument"), box), "FaultText");
    pending_ = Named(new QListWidget(box), "PendingFaults");
    connect(outcome_, &QComboBox::currentIndexChanged, this, &SimulatorWindow::UpdateFaultFields);
    // The longest outcome and member names would widen the window past a
    // small screen; the open list still shows them whole.
    for (QComboBox* combo : {member_, outcome_}) {
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(18);
    }

    grid->addWidget(new QLabel(tr("Member"), box), 0, 0);
    grid->addWidget(member_, 0, 1);
    grid->addWidget(new QLabel(tr("Outcome"), box), 1, 0);
    grid->addWidget(outcome_, 1, 1);
    grid->addWidget(new QLabel(tr("Number"), box), 2, 0);
    grid->addWidget(number_, 2, 1);
    grid->addWidget(new QLabel(tr("Text"), box), 3, 0);
    grid->addWidget(description_, 3, 1);
    grid->addWidget(Button(tr("Queue fault"), "QueueFault", this, [this] { QueueFault(); }), 4, 1);
    grid->addWidget(pending_, 5, 0, 1, 2);
    UpdateFaultFields();
    return box;
}

void SimulatorWindow::UpdateFaultFields() {
    const auto fault = static_cast<Fault>(outcome_->currentIndex());
    number_->setEnabled(fault == Fault::Fail || fault == Fault::HugeText || fault == Fault::Late);
    description_->setEnabled(fault == Fault::Fail);
    switch (fault) {
    case Fault::Fail:
        number_->setRange(1, 65535);
        number_->setValue(5);
        number_->setSuffix(QString());
        break;
    case Fault::HugeText:
        number_->setRange(0, 64 << 20);
        number_->setValue(16 << 20);
        number_->setSuffix(tr(" characters"));
        break;
    case Fault::Late:
        number_->setRange(0, 600000);
        number_->setValue(3000);
        number_->setSuffix(tr(" ms"));
        break;
    default: number_->setSuffix(QString()); break;
    }
}

void SimulatorWindow::QueueFault() {
    const std::string member = member_->currentText().toStdString();
    const auto fault = static_cast<Fault>(outcome_->currentIndex());
    const bool answers = simulator_.StyleOf(member) != Simulator::Style::Assignment;
    switch (fault) {
    case Fault::Fail:
        simulator_.QueueFailure(member, RuntimeError(number_->value(), description_->text().toStdString()));
        break;
    case Fault::Late: simulator_.QueueDelay(member, std::chrono::milliseconds(number_->value())); break;
    default:
        if (!answers) {
            Done(member + " is assigned and answers nothing; it can only fail or be late", QString());
            return;
        }
        if (fault == Fault::EmptyText) {
            simulator_.QueueAnswer(member, Variant::OfText({}));
        } else if (fault == Fault::NotANumber) {
            simulator_.QueueAnswer(member, Variant::OfText(u"Status=Busy\r\n"));
        } else if (fault == Fault::HugeText) {
            simulator_.QueueAnswer(member,
                                   Variant::OfText(simulation::HugeText(static_cast<std::size_t>(number_->value()))));
        } else {
            simulator_.QueueAnswer(member, Variant::OfInt32(70000));
        }
    }
    queuedNote_ = tr("Queued for the next call of %1").arg(QString::fromStdString(member));
    Done({}, queuedNote_);
}

bool SimulatorWindow::Escaped(QLineEdit* box, std::u16string& text) {
    auto parsed = ParseEscapedText(box->text().toStdString());
    if (const auto* error = std::get_if<ScriptError>(&parsed)) {
        Done(error->message, QString());
        return false;
    }
    text = std::get<Text>(std::move(parsed));
    return true;
}

void SimulatorWindow::Done(const std::string& refusal, const QString& what) {
    status_->setText(refusal.empty() ? what : QString::fromStdString(refusal));
    status_->setProperty("refused", !refusal.empty());
    Refresh();
}

void SimulatorWindow::Refresh() {
    const simulation::Forecourt& site = simulator_.forecourt();
    for (int number = 1; number <= simulation::kPositions; ++number) {
        const simulation::FuelingPosition& position = site.position(number);
        const QString cells[kColumns] = {
            QString::fromLatin1(simulation::StateName(position.state()).data(),
                                static_cast<int>(simulation::StateName(position.state()).size())),
            position.nozzleUp() ? tr("Up") : tr("Down"),
            position.nozzleUp() ? QString::number(position.liftedHose()) : QString(),
            ToQString(simulation::Litres(position.saleMicrolitres())),
            ToQString(simulation::Money(position.saleCents())),
        };
        for (int column = 0; column < kColumns; ++column) {
            positions_->item(number - 1, column)->setText(cells[column]);
        }
    }
    const simulation::EventQueues& queues = site.queues;
    QString tanks;
    for (int tank = 0; tank < simulation::kTanks; ++tank) {
        const std::string_view product = simulation::ProductOfTank(tank);
        tanks += tr("%1 %2 %3 L")
                     .arg(tanks.isEmpty() ? QString() : QStringLiteral(","))
                     .arg(QString::fromLatin1(product.data(), static_cast<int>(product.size())))
                     .arg(ToQString(simulation::Litres(site.tanks.microlitres(tank))));
    }
    const auto now = simulator_.now().count();
    summary_->setText(tr("Time %1.%2 s on the %3\n"
                         "Queues: card %4, key %5, cash %6, packet %7, error %8\n"
                         "Tanks:%9")
                          .arg(now / 1000)
                          .arg(now % 1000, 3, 10, QLatin1Char('0'))
                          .arg(simulator_.manualClock() ? tr("script clock") : tr("wall clock"))
                          .arg(queues.cards())
                          .arg(queues.keys())
                          .arg(queues.cash())
                          .arg(queues.packets())
                          .arg(queues.errors())
                          .arg(tanks));
    errors_->clear();
    for (const Text& entry : queues.errorEntries()) {
        errors_->addItem(ToQString(entry));
    }
    pending_->clear();
    const std::vector<std::string> faults = simulator_.PendingFaults();
    for (const std::string& line : faults) {
        pending_->addItem(QString::fromStdString(line));
    }
    // The note of a queued fault goes once every queued fault has been used.
    if (faults.empty() && !queuedNote_.isEmpty() && status_->text() == queuedNote_) {
        status_->clear();
        queuedNote_.clear();
    }
    const QSignalBlocker blocker(automatic_);
    automatic_->setChecked(simulator_.automatic());
}

void SimulatorWindow::showEvent(QShowEvent* event) {
    Refresh();
    timer_->start();
    QWidget::showEvent(event);
}

void SimulatorWindow::hideEvent(QHideEvent* event) {
    timer_->stop();
    SaveGeometry(this, kSimulatorGeometryKey);
    QWidget::hideEvent(event);
}

void AddSimulatorTool(ConsoleWindow& console, Simulator& simulator) {
    QAction* action = console.toolsMenu().addAction(QObject::tr("&Simulator..."));
    action->setObjectName(QStringLiteral("SimulatorAction"));
    auto window = std::make_shared<QPointer<SimulatorWindow>>();
    QObject::connect(action, &QAction::triggered, &console, [&console, &simulator, window] {
        if (!*window) {
            *window = new SimulatorWindow(simulator);
            KeepBeside(**window, console);
        }
        (*window)->show();
        (*window)->raise();
        (*window)->activateWindow();
    });
}

}  // namespace vantrel
