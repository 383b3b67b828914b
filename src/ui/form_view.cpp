#include "form_view.h"

#include "ui/console_style.h"
#include "ui/visible_text.h"

#include <optional>

#include <qdrawutil.h>
#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <QTimer>

#include <limits>

namespace vantrel {

namespace {

int Pixels(int twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }

QColor ToQColor(Color color) {
    return QColor(static_cast<int>(color & 0xFF), static_cast<int>((color >> 8) & 0xFF),
                  static_cast<int>((color >> 16) & 0xFF));
}

// The face a form names, on the platform that has it. Elsewhere a DejaVu
// face (installed with the console) stands in, or Qt's default where even
// that is missing, and is drawn unhinted: every face the system lacks costs
// a font configuration search by name, and hinting costs an analysis of
// every glyph at every size, together a good part of start-up.
void UseFace(QFont& font, const QString& named, const QString& standIn) {
#if defined(Q_OS_WIN)
    Q_UNUSED(standIn);
    font.setFamilies({named});
#else
    Q_UNUSED(named);
    font.setFamilies({standIn});
    font.setHintingPreference(QFont::PreferNoHinting);
#endif
}

}  // namespace

QFont FormFont() {
    // The forms' twips suit a narrow 8-point sans serif font, about 11
    // pixels; wider faces would wrap captions that fit their buttons.
    QFont font = QApplication::font();
    UseFace(font, QStringLiteral("MS Sans Serif"), QStringLiteral("DejaVu Sans Condensed"));
    font.setPixelSize(11);
    return font;
}

namespace {

// A command button whose caption wraps inside the button, as the console's
// narrow square buttons need ("Num Echo No C"). A graphical button is filled
// with its own colour, flat, with a thin dark edge.
class CaptionButton final : public QPushButton {
public:
    using QPushButton::QPushButton;

    void SetFill(std::optional<QColor> fill) {
        if (fill != fill_) {
            fill_ = fill;
            update();
        }
    }

protected:
    // Enter presses the focused button, as Space does: the way buttons work
    // on the workstation.
    void keyPressEvent(QKeyEvent* event) override {
        if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && event->modifiers() == Qt::NoModifier) {
            event->accept();
            animateClick();
            return;
        }
        QPushButton::keyPressEvent(event);
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        const QString caption = text();
        if (fill_) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(QColor(0x40, 0x40, 0x40));
            painter.setBrush(*fill_);
            painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
        } else {
            // The plain raised bevel of the console's own platform. The
            // style's rounded, shaded panel costs a cached picture per button
            // size, and the console window has dozens of sizes to show at once.
            qDrawWinButton(&painter, rect(), palette(), isDown(), &palette().brush(QPalette::Button));
            if (hasFocus()) {
                QStyleOptionFocusRect focus;
                focus.initFrom(this);
                focus.rect = rect().adjusted(3, 3, -3, -3);
                style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, this);
            }
        }
        painter.setPen(palette().color(QPalette::ButtonText));
        painter.drawText(rect().adjusted(2, 1, -2, -1), Qt::AlignCenter | Qt::TextWordWrap, caption);
    }

private:
    std::optional<QColor> fill_;
};

}  // namespace

FormView::FormView(const FormDescription& description, FormState& state, EventDispatcher dispatch, QWidget* parent)
    : QWidget(parent)
    , description_(description)
    , state_(state)
    , dispatch_(std::move(dispatch)) {
    setObjectName(QString::fromStdString(description.name));
    setFixedSize(Pixels(description.clientWidth), Pixels(description.clientHeight));
    setFont(FormFont());
    if (description.backColor) {
        setAutoFillBackground(true);
        QPalette colors = palette();
        colors.setColor(QPalette::Window, ToQColor(*description.backColor));
        setPalette(colors);
    }
    for (const Control& control : description.controls) {
        QWidget* parentWidget = this;
        if (!control.container.empty()) {
            if (QWidget* frame = Widget(control.container)) {
                parentWidget = frame;
            }
        }
        if (QWidget* widget = Create(control, parentWidget)) {
            widgets_.emplace(control.name, widget);
            controlOf_.emplace(widget, &control);
        }
    }
    state_.SetListener([this](const std::string& control, FormState::Property property) { Sync(control, property); });
}

FormView::~FormView() { state_.SetListener({}); }

QWidget* FormView::Widget(std::string_view control) const {
    const auto found = widgets_.find(control);
    return found == widgets_.end() ? nullptr : found->second;
}

QWidget* FormView::Create(const Control& control, QWidget* parent) {
    QWidget* widget = nullptr;
    switch (control.kind) {
    case ControlKind::CommandButton: {
        auto* button = new CaptionButton(ToQString(control.caption), parent);
        connect(button, &QPushButton::clicked, this, [this, &control] { dispatch_(control.click); });
        widget = button;
        break;
    }
    case ControlKind::OptionButton: {
        auto* option = new QRadioButton(ToQString(control.caption), parent);
        option->setChecked(state_.Checked(control.name));
        connect(option, &QRadioButton::toggled, this, [this, &control](bool checked) {
            if (!syncing_) {
                state_.SetChecked(control.name, checked);
            }
        });
        connect(option, &QRadioButton::clicked, this, [this, &control] { dispatch_(control.click); });
        widget = option;
        break;
    }
    case ControlKind::Label: {
        auto* label = new QLabel(parent);
        label->setWordWrap(true);
        label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
        widget = label;
        break;
    }
    case ControlKind::TextBox: {
        if (control.multiLine) {
            auto* box = new QPlainTextEdit(parent);
            box->setReadOnly(control.readOnly);
            box->setLineWrapMode(control.scrollBars == ScrollBars::Horizontal || control.scrollBars == ScrollBars::Both
                                     ? QPlainTextEdit::NoWrap
                                     : QPlainTextEdit::WidgetWidth);
            box->setVerticalScrollBarPolicy(control.scrollBars == ScrollBars::Vertical ||
                                                    control.scrollBars == ScrollBars::Both
                                                ? Qt::ScrollBarAlwaysOn
                                                : Qt::ScrollBarAsNeeded);
            box->setHorizontalScrollBarPolicy(control.scrollBars == ScrollBars::Horizontal ||
                                                      control.scrollBars == ScrollBars::Both
                                                  ? Qt::ScrollBarAlwaysOn
                                                  : Qt::ScrollBarAsNeeded);
            QStyle* bars = NewPlainScrollBarStyle(box);
            box->verticalScrollBar()->setStyle(bars);
            box->horizontalScrollBar()->setStyle(bars);
            widget = box;
        } else {
            auto* box = new QLineEdit(parent);
            box->setReadOnly(control.readOnly);
            // What is typed is what is sent: no limit of the toolkit's own
            // (32,767 characters by default) cuts an entry.
            box->setMaxLength(std::numeric_limits<int>::max());
            if (control.centred) {
                box->setAlignment(Qt::AlignCenter);
            }
            if (!control.readOnly) {
                // A typed change updates the exact text, then the change
                // handler runs.
                connect(box, &QLineEdit::textChanged, this, [this, &control](const QString& text) {
                    if (syncing_) {
                        return;
                    }
                    state_.SetText(control.name, FromQString(text));
                    dispatch_(control.change);
                });
            }
            widget = box;
        }
        break;
    }
    case ControlKind::Frame: {
        auto* frame = new QGroupBox(ToQString(control.caption), parent);
        widget = frame;
        break;
    }
    case ControlKind::Timer: {
        auto* timer = new QTimer(this);
        timer->setObjectName(QString::fromStdString(control.name));
        timer->setInterval(control.intervalMs);
        connect(timer, &QTimer::timeout, this, [this, &control] { dispatch_(control.tick); });
        timers_.emplace(control.name, timer);
        return nullptr;
    }
    }
    widget->setObjectName(QString::fromStdString(control.name));
    widget->setGeometry(Pixels(control.left), Pixels(control.top), Pixels(control.width), Pixels(control.height));
    if (control.font) {
        QFont font = widget->font();
        UseFace(font, QString::fromStdString(control.font->family), QStringLiteral("DejaVu Sans"));
        font.setPointSizeF(control.font->points);
        font.setBold(control.font->bold);
        widget->setFont(font);
    }
    if (control.gotFocus || control.lostFocus || control.dblClick) {
        widget->installEventFilter(this);
    }
    SyncText(control, widget);
    SyncColors(control, widget);
    return widget;
}

void FormView::SyncText(const Control& control, QWidget* widget) {
    if (control.kind == ControlKind::OptionButton || control.kind == ControlKind::CommandButton ||
        control.kind == ControlKind::Frame) {
        return;  // captions do not change at run time
    }
    const Text& text = state_.TextOf(control.name);
    syncing_ = true;
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(VisibleText(text, LineBreaks::AtCrLf));
    } else if (auto* box = qobject_cast<QPlainTextEdit*>(widget)) {
        box->setPlainText(VisibleText(text, LineBreaks::AtCrLf));
    } else if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        // An editable box shows what was typed; a read-only box shows control
        // characters as symbols.
        const QString shown = control.readOnly ? VisibleText(text, LineBreaks::None) : ToQString(text);
        // Writing back what was just typed would move the cursor to the end.
        if (line->text() != shown) {
            line->setText(shown);
            if (control.readOnly) {
                line->setCursorPosition(0);
            }
        }
    }
    syncing_ = false;
}

// Colours go through the palette and the buttons' own fill: a style sheet
// per control made start-up a third slower and the console a megabyte
// larger. A command button shows its colour only in the graphical style.
void FormView::SyncColors(const Control& control, QWidget* widget) {
    const std::optional<Color> back = state_.BackColorOf(control.name);
    const bool textBox = control.kind == ControlKind::TextBox;
    if (auto* button = dynamic_cast<CaptionButton*>(widget)) {
        button->SetFill(back && control.style == ButtonStyle::Graphical ? std::optional(ToQColor(*back))
                                                                        : std::nullopt);
    } else if (back) {
        QPalette colors = widget->palette();
        colors.setColor(textBox ? QPalette::Base : QPalette::Window, ToQColor(*back));
        widget->setPalette(colors);
        widget->setAutoFillBackground(!textBox);
    }
    if (control.foreColor) {
        QPalette colors = widget->palette();
        colors.setColor(textBox                                      ? QPalette::Text
                        : control.kind == ControlKind::CommandButton ? QPalette::ButtonText
                                                                     : QPalette::WindowText,
                        ToQColor(*control.foreColor));
        widget->setPalette(colors);
    }
}

void FormView::Sync(const std::string& control, FormState::Property property) {
    QWidget* widget = Widget(control);
    const Control* row = description_.Find(control);
    if (!widget || !row) {
        return;
    }
    switch (property) {
    case FormState::Property::Text: SyncText(*row, widget); break;
    case FormState::Property::BackColor: SyncColors(*row, widget); break;
    case FormState::Property::Checked:
        if (auto* option = qobject_cast<QRadioButton*>(widget)) {
            syncing_ = true;
            option->setChecked(state_.Checked(control));
            syncing_ = false;
        }
        break;
    }
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
    const auto found = controlOf_.find(watched);
    if (found == controlOf_.end()) {
        return QWidget::eventFilter(watched, event);
    }
    const Control& control = *found->second;
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut: {
        // Focus that comes and goes with the window's activation (a message
        // box opening and closing) is no focus change of the console's.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) {
            break;
        }
        dispatch_(event->type() == QEvent::FocusIn ? control.gotFocus : control.lostFocus);
        break;
    }
    case QEvent::MouseButtonDblClick:
        if (control.dblClick) {
            dispatch_(control.dblClick);
            return true;
        }
        break;
    default: break;
    }
    return QWidget::eventFilter(watched, event);
}

bool FormView::FireTimer(std::string_view control) {
    const auto found = timers_.find(control);
    if (found == timers_.end()) {
        return false;
    }
    const Control* row = description_.Find(control);
    dispatch_(row->tick);
    return true;
}

void FormView::SetTimersRunning(bool running) {
    for (auto& [name, timer] : timers_) {
        if (running) {
            timer->start();
        } else {
            timer->stop();
        }
    }
}

}  // namespace vantrel
