#include "databaseinfo.h"
#include "ui_databaseinfo.h"

#include <QDateTime>

namespace {
DatabaseInfo* infoWindow = nullptr;
} // namespace

DatabaseInfo::DatabaseInfo(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DatabaseInfo)
{
    ui->setupUi(this);
    connect(ui->pushButton, &QPushButton::clicked, this, &QWidget::close);
}

DatabaseInfo::~DatabaseInfo()
{
    delete ui;
}

void DatabaseInfo::showInfo(const QString& dataVersion, const QString& listDate)
{
    if (!infoWindow)
        infoWindow = new DatabaseInfo;
    // A missing or unreadable version counts as time 0, as the status bar shows it.
    const uint seconds = dataVersion.toUInt();
    infoWindow->ui->dataVersion->setText(
        QDateTime::fromSecsSinceEpoch(seconds).toString(QStringLiteral("yyyy-MM-dd")));
    infoWindow->ui->listDate->setText(listDate);
    infoWindow->show();
}
