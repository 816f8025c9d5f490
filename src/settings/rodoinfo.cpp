#include "rodoinfo.h"
#include "ui_rodoinfo.h"

RODOInfo::RODOInfo(QWidget* parent)
    : QDialog(parent)
    , ui(new Ui::RODOInfo)
{
    ui->setupUi(this);
}

RODOInfo::~RODOInfo()
{
    delete ui;
}

void RODOInfo::on_pushButton_2_clicked()
{
    accept();
}
