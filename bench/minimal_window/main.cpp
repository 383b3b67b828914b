// The yardstick for the console's start-up and memory: the smallest Qt
// Widgets program that shows a window a person can read, Qt's own "Hello
// world!" (one push button as the window), measured with the same probe.

#include "app/shown_probe.h"

#include <QApplication>
#include <QPushButton>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QPushButton hello(QStringLiteral("Hello world!"));
    const vantrel::ShownProbe probe(hello);
    hello.show();
    return QApplication::exec();
}
