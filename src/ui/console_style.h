#pragma once

#include <QProxyStyle>

namespace vantrel {

// The platform's style, less one icon nobody sees: the menu bar's overflow
// button (two menus never overflow). Its icon is the only image the console
// needs at start-up, and loading it first makes Qt load every image format
// plugin, which took about a tenth of the start-up time.
class ConsoleStyle final : public QProxyStyle {
public:
    ConsoleStyle();

    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option = nullptr,
                       const QWidget* widget = nullptr) const override;
};

// A style for the scroll bars of the forms' text boxes: the classic platform
// scroll bar with a plain groove, owned by `owner`. The shaded scroll bar, and
// the classic one's dithered groove, are filled by Qt's painter in parallel
// pieces on a thread pool, which the console window's first painting had to
// start for them alone.
QStyle* NewPlainScrollBarStyle(QObject* owner);

}  // namespace vantrel
