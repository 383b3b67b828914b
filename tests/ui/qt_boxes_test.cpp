// The real Qt message and input boxes behind the console's prompter, driven
// as a person would: the box opens modally and is answered by its buttons.
#include "server/text.h"
#include "ui/qt_ports.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <functional>

namespace vantrel {
namespace {

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

TEST(QtBoxes, AnInputBoxReturnsTheTypedTextExactlyAndCancelGivesEmpty) {
    QtPrompter prompter;
    WhenShown<QInputDialog>([](QInputDialog* box) {
        EXPECT_EQ(QStringLiteral("MOP Input"), box->windowTitle());
        EXPECT_EQ(QStringLiteral("Enter MOP (1, 2, F)"), box->labelText());
        EXPECT_TRUE(box->textValue().isEmpty());  // no default text
        box->setTextValue(QStringLiteral(" f "));
        box->accept();
    });
    EXPECT_EQ(Text(u" f "), prompter.Input(u"Enter MOP (1, 2, F)", u"MOP Input"));

    WhenShown<QInputDialog>([](QInputDialog* box) {
        box->setTextValue(QStringLiteral("typed then cancelled"));
        box->reject();
    });
    EXPECT_EQ(Text(), prompter.Input(u"Enter Limit - Must be 6 digits", u"Preset amount Input"));
}

TEST(QtBoxes, AQuestionHasYesAndNoOnly) {
    QtPrompter prompter;
    WhenShown<QMessageBox>([](QMessageBox* box) {
        EXPECT_EQ(QStringLiteral("WindowControl Select"), box->windowTitle());
        EXPECT_EQ(QMessageBox::Question, box->icon());
        EXPECT_EQ(QMessageBox::Yes | QMessageBox::No, box->standardButtons());
        box->button(QMessageBox::No)->click();
    });
    EXPECT_EQ(Answer::No, prompter.Ask(u"Do you want Vantrel visible?", u"WindowControl Select"));
}

TEST(QtBoxes, AMessageBoxShowsControlCharactersVisibly) {
    QtPrompter prompter;
    WhenShown<QMessageBox>([](QMessageBox* box) {
        EXPECT_EQ(QStringLiteral("VantrelTest"), box->windowTitle());
        EXPECT_EQ(QMessageBox::Ok, box->standardButtons());
        EXPECT_EQ(QString::fromUtf8("Hose=0\n\u2400"), box->text());
        box->button(QMessageBox::Ok)->click();
    });
    prompter.Message(Text(u"Hose=0\r\n\0", 9), u"VantrelTest");
}

}  // namespace
}  // namespace vantrel
