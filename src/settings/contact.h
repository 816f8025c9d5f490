#pragma once

#include <QWidget>

namespace Ui {
class Contact;
}

// The maker's contact card. One window for the whole run: closing it only
// hides it, and the menu shows the same window again.
class Contact : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(Contact)

public:
    static void showContact();

private:
    explicit Contact(QWidget* parent = nullptr);
    ~Contact() override;

    Ui::Contact* ui = nullptr;
};
