#include "window_places.h"

#include <QSettings>
#include <QWidget>

namespace vantrel {

void SaveGeometry(const QWidget* window, const char* key) {
    QSettings().setValue(QLatin1String(key), window->saveGeometry());
}

bool RestoreGeometry(QWidget* window, const char* key) {
    const QByteArray kept = QSettings().value(QLatin1String(key)).toByteArray();
    return !kept.isEmpty() && window->restoreGeometry(kept);
}

}  // namespace vantrel
