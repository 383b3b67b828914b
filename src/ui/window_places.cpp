#include "window_places.h"

#include <QPointer>
#include <QSettings>
#include <QWidget>

namespace vantrel {

void KeepBeside(QWidget& tool, QWidget& console) {
    QObject::connect(&console, &QObject::destroyed, [tool = QPointer<QWidget>(&tool)] { delete tool.data(); });
}

void SaveGeometry(const QWidget* window, const char* key) {
    QSettings().setValue(QLatin1String(key), window->saveGeometry());
}

bool RestoreGeometry(QWidget* window, const char* key) {
    const QByteArray kept = QSettings().value(QLatin1String(key)).toByteArray();
    return !kept.isEmpty() && window->restoreGeometry(kept);
}

}  // namespace vantrel
