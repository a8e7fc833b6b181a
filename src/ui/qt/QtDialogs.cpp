#include "QtDialogs.h"

#include "QtText.h"

#include <QApplication>
#include <QMessageBox>

namespace velmo::qt {

ports::MessageAnswer QtDialogs::MessageBox(const std::string& text,
                                           const std::string& title,
                                           ports::MessageStyle style)
{
    const bool isQuestion = style == ports::MessageStyle::WarningYesNo;
    QMessageBox box(QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MessageBox"));
    box.setTextFormat(Qt::PlainText);
    box.setText(FromBytes(text));
    box.setWindowTitle(FromBytes(title));
    box.setIcon(isQuestion ? QMessageBox::Warning : QMessageBox::Critical);
    box.setStandardButtons(isQuestion ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    box.setDefaultButton(isQuestion ? QMessageBox::Yes : QMessageBox::Ok);
    box.setEscapeButton(isQuestion ? QMessageBox::No : QMessageBox::Ok);
    box.exec();
    if (!isQuestion)
        return ports::MessageAnswer::Ok;
    // A box that is closed by the end of the program has no answer: that is a no, too.
    return box.clickedButton() == box.button(QMessageBox::Yes) ? ports::MessageAnswer::Yes
                                                               : ports::MessageAnswer::No;
}

} // namespace velmo::qt
