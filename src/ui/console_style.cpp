#include "console_style.h"

#include <QApplication>
#include <QIcon>

namespace vantrel {

// Built on the style the platform chose, by its name: QProxyStyle would
// otherwise own, and delete, the application's current style object.
ConsoleStyle::ConsoleStyle()
    : QProxyStyle(QApplication::style()->name()) {}

QIcon ConsoleStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (icon == SP_ToolBarHorizontalExtensionButton) {
        return {};
    }
    return QProxyStyle::standardIcon(icon, option, widget);
}

}  // namespace vantrel
