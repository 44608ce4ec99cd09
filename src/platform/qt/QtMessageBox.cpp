#include "platform/qt/QtMessageBox.h"

#include <QApplication>
#include <QMessageBox>

namespace platform::qt {

namespace {

QMessageBox::Icon iconOf(std::uint32_t style) {
    switch (style & 0xF0) {
        case mbstyle::IconStop:
            return QMessageBox::Critical;
        case mbstyle::IconQuestion:
            return QMessageBox::Question;
        case mbstyle::IconExclamation:
            return QMessageBox::Warning;
        case mbstyle::IconInformation:
            return QMessageBox::Information;
        default:
            return QMessageBox::NoIcon;
    }
}

}  // namespace

int QtMessageBox::show(const std::u16string& text, const std::u16string& caption,
                       std::uint32_t style) {
    const bool question = (style & 0x0F) == mbstyle::YesNo;
    QString title = QString::fromStdU16String(caption);
    if (title.isEmpty()) {
        title = QApplication::applicationDisplayName();
    }
    QMessageBox box(iconOf(style), title, QString::fromStdU16String(text),
                    question ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok,
                    QApplication::activeWindow());
    switch (box.exec()) {
        case QMessageBox::Yes:
            return mbresult::Yes;
        case QMessageBox::No:
            return mbresult::No;
        case QMessageBox::Ok:
            return mbresult::Ok;
        default:
            return mbresult::NotShown;
    }
}

}  // namespace platform::qt
