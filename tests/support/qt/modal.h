#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <functional>

namespace vantrel::testing {

// Acts once on the first modal widget of the given type, polling as a person
// would wait for the box to appear; gives up after a few seconds so that a
// missing box fails the test instead of hanging it.
template <typename Box>
void WhenShown(std::function<void(Box*)> act) {
    // The timer asks to go once it has acted or given up; the application
    // takes any that are left when it ends.
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, [timer, waited = 0, act]() mutable {
        if (auto* box = qobject_cast<Box*>(QApplication::activeModalWidget())) {
            timer->stop();
            timer->deleteLater();
            act(box);
        } else if (++waited > 500) {
            timer->stop();
            timer->deleteLater();
            ADD_FAILURE() << "no box appeared";
            if (QWidget* any = QApplication::activeModalWidget()) {
                any->close();
            }
        }
    });
    timer->start(10);
}

}  // namespace vantrel::testing
