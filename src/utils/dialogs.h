#pragma once

#include <QMessageBox>
#include <QString>

#include <functional>

class QAbstractButton;
class QWidget;

// Message boxes that never stop the GUI thread: each is opened window-modal
// and answers through a callback, so the scanner, the timers and the network
// go on while it waits for a click. No nested event loop.
namespace Dialogs {

// Opens `box` (it deletes itself when closed) and calls `answered` with the
// button clicked, or null when the box was closed another way.
void ask(QMessageBox* box, const std::function<void(QAbstractButton*)>& answered = {});

// A box with one "OK" button, over `parent` while that is shown, else on its own.
void tell(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text);

} // namespace Dialogs
