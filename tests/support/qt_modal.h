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
    auto* timer = new QTimer;
    auto* waited = new int(0);
    QObject::connect(timer, &QTimer::timeout, [timer, waited, act] {
        if (auto* box = qobject_cast<Box*>(QApplication::activeModalWidget())) {
            timer->stop();
            act(box);
        } else if (++*waited > 500) {
            timer->stop();
            ADD_FAILURE() << "no box appeared";
            if (QWidget* any = QApplication::activeModalWidget()) {
                any->close();
            }
        }
    });
    timer->start(10);
}

}  // namespace vantrel::testing
