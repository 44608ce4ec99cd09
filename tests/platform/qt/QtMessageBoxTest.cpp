#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include "platform/qt/QtMessageBox.h"

namespace {

struct Seen {
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QStringList buttons;
};

// Shows a box of the style and, once it is up, notes what it shows and presses the button
// with the given text; the box's answer.
int answer(std::uint32_t style, const QString& press, Seen* seen,
           const std::u16string& caption = u"Title") {
    QTimer::singleShot(0, [=] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        *seen = {box->windowTitle(), box->text(), box->icon(), {}};
        for (QAbstractButton* button : box->buttons()) {
            const auto which = box->standardButton(button);
            seen->buttons << (which == QMessageBox::Yes  ? "Yes"
                              : which == QMessageBox::No ? "No"
                                                         : "OK");
        }
        seen->buttons.sort();
        box->button(press == "Yes"  ? QMessageBox::Yes
                    : press == "No" ? QMessageBox::No
                                    : QMessageBox::Ok)
            ->click();
    });
    return platform::qt::QtMessageBox().show(u"Line one\r\nLine two", caption, style);
}

// Each style number of the program gives its buttons and icon, and the answers are the
// platform's numbers.
TEST(QtMessageBox, StylesGiveTheirButtonsIconsAndAnswers) {
    struct Case {
        std::uint32_t style;
        QStringList buttons;
        QMessageBox::Icon icon;
    };
    const Case cases[] = {
        {0, {"OK"}, QMessageBox::NoIcon},       {4, {"No", "Yes"}, QMessageBox::NoIcon},
        {16, {"OK"}, QMessageBox::Critical},    {36, {"No", "Yes"}, QMessageBox::Question},
        {48, {"OK"}, QMessageBox::Warning},     {52, {"No", "Yes"}, QMessageBox::Warning},
        {64, {"OK"}, QMessageBox::Information}, {68, {"No", "Yes"}, QMessageBox::Information},
    };
    for (const Case& wanted : cases) {
        Seen seen;
        const bool question = wanted.buttons.size() == 2;
        EXPECT_EQ(answer(wanted.style, question ? "Yes" : "OK", &seen), question ? 6 : 1)
            << wanted.style;
        EXPECT_EQ(seen.buttons, wanted.buttons) << wanted.style;
        EXPECT_EQ(seen.icon, wanted.icon) << wanted.style;
        EXPECT_EQ(seen.title, "Title");
        EXPECT_EQ(seen.text, "Line one\r\nLine two");
    }
    Seen seen;
    EXPECT_EQ(answer(36, "No", &seen), 7);
}

TEST(QtMessageBox, AnEmptyTitleShowsTheProgramsName) {
    Seen seen;
    answer(0, "OK", &seen, u"");
    EXPECT_EQ(seen.title, "Tallowick");
}

}  // namespace
