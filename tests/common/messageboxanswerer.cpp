#include "messageboxanswerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

MessageBoxAnswerer::MessageBoxAnswerer(const QString& button)
{
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [this, button] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        texts << box->text();
        title = box->windowTitle();
        for (QAbstractButton* candidate : box->buttons()) {
            if (candidate->text() == button) {
                candidate->click();
                return;
            }
        }
    });
    timer->start(20);
}
