#include "console_style.h"

#include <QIcon>

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

}  // namespace vantrel
