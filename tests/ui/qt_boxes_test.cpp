// The real Qt message and input boxes behind the console's prompter, driven
// as a person would: the box opens modally and is answered by its buttons.
#include "server/text.h"
#include "support/qt/modal.h"
#include "ui/qt_ports.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>

namespace vantrel {
namespace {

using testing::WhenShown;

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

// Titles are not cut: each box is at least as wide as its title needs.
TEST(QtBoxes, EveryBoxIsAsWideAsItsTitleNeeds) {
    QtPrompter prompter;
    const QString longTitle = QStringLiteral("Key Pad Configuration Select");
    WhenShown<QMessageBox>([&](QMessageBox* box) {
        EXPECT_GE(box->width(), TitleWidth(longTitle));
        box->button(QMessageBox::Yes)->click();
    });
    EXPECT_EQ(Answer::Yes, prompter.Ask(u"?", u"Key Pad Configuration Select"));
    WhenShown<QMessageBox>([&](QMessageBox* box) {
        EXPECT_GE(box->width(), TitleWidth(QStringLiteral("VantrelTest")));
        box->button(QMessageBox::Ok)->click();
    });
    prompter.Message(u"x", u"VantrelTest");
    WhenShown<QInputDialog>([&](QInputDialog* box) {
        EXPECT_GE(box->width(), TitleWidth(QStringLiteral("Preset amount Input")));
        box->reject();
    });
    prompter.Input(u"Enter", u"Preset amount Input");
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
        EXPECT_EQ(QString::fromUtf8("Hose=0\n«NUL»"), box->text());
        box->button(QMessageBox::Ok)->click();
    });
    prompter.Message(Text(u"Hose=0\r\n\0", 9), u"VantrelTest");
}

}  // namespace
}  // namespace vantrel
