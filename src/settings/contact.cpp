#include "contact.h"
#include "ui_contact.h"

#include "sharppixmap.h"

namespace {
Contact* contactWindow = nullptr;
} // namespace

Contact::Contact(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::Contact)
{
    ui->setupUi(this);
    // The form's picture at the size for this screen's scale.
    ui->label->setPixmap(sharpPixmap(QStringLiteral(":/icons/contact")));
}

Contact::~Contact()
{
    delete ui;
}

void Contact::showContact()
{
    if (!contactWindow)
        contactWindow = new Contact;
    contactWindow->show();
}
