#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "platform/qt/QtMessageBox.h"

namespace {

// Each style number of the program gives its buttons and icon, and the answers are the
// platform's numbers; an empty title shows the program's name.
TEST(QtMessageBox, StylesGiveTheirButtonsIconsAndAnswers) {
    const struct {
        std::uint32_t style;
        QMessageBox::StandardButtons buttons;
        QMessageBox::Icon icon;
        QMessageBox::StandardButton press;
        int answer;
        std::u16string caption = u"Title";
    } cases[] = {
        {0, QMessageBox::Ok, QMessageBox::NoIcon, QMessageBox::Ok, 1},
        {0, QMessageBox::Ok, QMessageBox::NoIcon, QMessageBox::Ok, 1, u""},
        {4, QMessageBox::Yes | QMessageBox::No, QMessageBox::NoIcon, QMessageBox::Yes, 6},
        {16, QMessageBox::Ok, QMessageBox::Critical, QMessageBox::Ok, 1},
        {36, QMessageBox::Yes | QMessageBox::No, QMessageBox::Question, QMessageBox::Yes, 6},
        {36, QMessageBox::Yes | QMessageBox::No, QMessageBox::Question, QMessageBox::No, 7},
        {48, QMessageBox::Ok, QMessageBox::Warning, QMessageBox::Ok, 1},
        {52, QMessageBox::Yes | QMessageBox::No, QMessageBox::Warning, QMessageBox::Yes, 6},
        {64, QMessageBox::Ok, QMessageBox::Information, QMessageBox::Ok, 1},
        {68, QMessageBox::Yes | QMessageBox::No, QMessageBox::Information, QMessageBox::Yes, 6},
    };
    for (const auto& c : cases) {
        // Once the box is up, note what it shows and press the button.
        QMessageBox::StandardButtons buttons;
        QString title, text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            std::tie(buttons, title, text, icon) =
                std::tuple(box->standardButtons(), box->windowTitle(), box->text(), box->icon());
            box->button(c.press)->click();
        });
        EXPECT_EQ(platform::qt::QtMessageBox().show(u"Line one\r\nLine two", c.caption, c.style),
                  c.answer)
            << c.style;
        EXPECT_EQ(buttons, c.buttons) << c.style;
        EXPECT_EQ(icon, c.icon) << c.style;
        EXPECT_EQ(title.toStdU16String(), c.caption.empty() ? u"Tallowick" : c.caption);
        EXPECT_EQ(text, "Line one\r\nLine two");
    }
}

}  // namespace
