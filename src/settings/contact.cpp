#include "contact.h"
#include "ui_contact.h"

namespace {
Contact* contactWindow = nullptr;
} // namespace

Contact::Contact(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::Contact)
{
    ui->setupUi(this);
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
