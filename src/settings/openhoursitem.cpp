#include "openhoursitem.h"
#include "ui_openhoursitem.h"

#include <QRegularExpressionValidator>

OpenHoursItem::OpenHoursItem(const QString& text, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::OpenHoursItem)
{
    ui->setupUi(this);
    ui->lineEdit->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("(([0-1]?\\d|2[0-3]):[0-5]\\d)")), ui->lineEdit));
    ui->lineEdit->setText(text);
}

OpenHoursItem::~OpenHoursItem()
{
    delete ui;
}

void OpenHoursItem::on_lineEdit_textChanged(const QString& arg1)
{
    QString text = arg1;
    int position = 0;
    const bool whole = ui->lineEdit->validator()->validate(text, position) == QValidator::Acceptable;
    ui->lineEdit->setStyleSheet(whole ? QStringLiteral("QLineEdit {background-color: white;}")
                                      : QStringLiteral("QLineEdit {background-color: red;}"));
    currentHours = arg1;
}
