#include "console_style.h"

#include <QIcon>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace vantrel {

// With no style given, QProxyStyle builds on the one the platform (or
// -style) chooses, made only when first needed.
ConsoleStyle::ConsoleStyle() = default;

QIcon ConsoleStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (icon == SP_ToolBarHorizontalExtensionButton) {
        return {};
    }
    return QProxyStyle::standardIcon(icon, option, widget);
}

namespace {

class PlainScrollBarStyle final : public QProxyStyle {
public:
    // QStyleFactory returns nothing where the classic style is left out;
    // the application's style then draws the rest.
    PlainScrollBarStyle()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Windows"))) {}

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        // The groove either side of the slider, and the whole groove of a
        // scroll bar with nothing to scroll, which has no slider.
        const bool groove = element == CE_ScrollBarAddPage || element == CE_ScrollBarSubPage ||
                            (element == CE_ScrollBarSlider && !(option->state & State_Enabled));
        if (groove) {
            const bool pressed = option->state & State_Sunken;
            painter->fillRect(option->rect, option->palette.color(pressed ? QPalette::Dark : QPalette::Midlight));
            return;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }
};

}  // namespace

QStyle* NewPlainScrollBarStyle(QObject* owner) {
    auto* style = new PlainScrollBarStyle;
    style->setParent(owner);
    return style;
}

}  // namespace vantrel
