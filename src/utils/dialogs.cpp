#include "dialogs.h"

namespace Dialogs {

void ask(QMessageBox* box, const std::function<void(QAbstractButton*)>& answered)
{
    box->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(box, &QMessageBox::finished, box, [box, answered] {
        if (answered)
            answered(box->clickedButton());
    });
    box->open();
}

void tell(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text)
{
    // A window that was closed meanwhile may be on its way out, and its
    // children with it: the message then stands on its own.
    ask(new QMessageBox(icon, title, text, QMessageBox::Ok, parent && parent->isVisible() ? parent : nullptr));
}

} // namespace Dialogs
