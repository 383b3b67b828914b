#include "shown_probe.h"

#include <QApplication>
#include <QEvent>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <fstream>
#include <string>

namespace vantrel {

namespace {

// The line, with the resident size where the system tells it.
std::string ShownLine() {
    std::string line = "shown";
#if defined(__linux__)
    std::ifstream status("/proc/self/status");
    for (std::string entry; std::getline(status, entry);) {
        unsigned long long kibibytes = 0;
        if (std::sscanf(entry.c_str(), "VmRSS: %llu kB", &kibibytes) == 1) {
            char size[32];
            std::snprintf(size, sizeof size, " %llu KiB", kibibytes);
            line += size;
            break;
        }
    }
#endif
    return line + "\n";
}

}  // namespace

ShownProbe::ShownProbe(const QWidget& window)
    : window_(window) {
    // Application-wide: the first paint may reach a child before the window.
    qApp->installEventFilter(this);
}

ShownProbe::~ShownProbe() { qApp->removeEventFilter(this); }

bool ShownProbe::eventFilter(QObject* watched, QEvent* event) {
    if (!painted_ && event->type() == QEvent::Paint && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->window() == &window_) {
        painted_ = true;
        qApp->removeEventFilter(this);
        // A painting pass runs to its end before posted events: report after it.
        QTimer::singleShot(0, qApp, [] {
            std::fputs(ShownLine().c_str(), stdout);
            std::fflush(stdout);
            QCoreApplication::exit(0);
        });
    }
    return QObject::eventFilter(watched, event);
}

}  // namespace vantrel
