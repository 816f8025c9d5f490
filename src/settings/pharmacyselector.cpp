#include "pharmacyselector.h"
#include "ui_pharmacyselector.h"

#include "db/drugdatabase.h"
#include "settings/emailvalidator.h"
#include "settings/openhoursitem.h"
#include "settings/pharmacyitem.h"
#include "settings/profilejson.h"
#include "settingskeys.h"
#include "urls.h"
#include "utils/appkey.h"
#include "utils/responseenvelope.h"
#include "utils/dialogs.h"

#include <QCloseEvent>
#include <QDebug>
#include <QListWidgetItem>
#include <QMessageBox>

namespace {
// Fewer letters than this would list half the country.
constexpr int shortestSearch = 4;
constexpr int resultLimit = 100;
} // namespace

PharmacySelector::PharmacySelector(QWidget* parent)
    : QWidget(parent, Qt::Tool)
    , ui(new Ui::PharmacySelector)
{
    ui->setupUi(this);
    ui->EmailLineEdit->setValidator(new EmailValidator(ui->EmailLineEdit));
    // A child by name, so that its request can be followed from outside.
    pharmacyGet.setParent(this);
    pharmacyGet.setObjectName(QStringLiteral("pharmacyGet"));
    connect(&pharmacyGet, &QtHttpGet::result, this, &PharmacySelector::onPharmacyResult);
    clearDetails();
}

PharmacySelector::~PharmacySelector()
{
    delete ui;
}

void PharmacySelector::closeEvent(QCloseEvent* event)
{
    emit closed(true);
    QWidget::closeEvent(event);
    closedByUser = true;
    // A new window comes with each menu command, so a closed one goes; closed
    // while the pharmacy is sent, it only hides until the service has answered.
    if (!sending)
        deleteLater();
}

void PharmacySelector::onPharmacyResult(QNetworkReply* result)
{
    sending = false;
    bool taken = false;
    if (result->error() == QNetworkReply::NoError) {
        const QString text = QtHttpGet::replyText(result);
        qDebug().noquote() << "Response" << text;
        const ResponseEnvelope envelope = ResponseEnvelope::parse(text);
        taken = envelope.success;
        if (!taken)
            Dialogs::tell(this, QMessageBox::Information, QString(), envelope.message);
    }
    if (closedByUser)
        deleteLater();
    else if (taken)
        close();
}

void PharmacySelector::on_SearchLineEdit_textChanged(const QString& arg1)
{
    if (arg1.length() < shortestSearch)
        return;
    pharmacies = DrugDatabase::searchPharmacies(arg1, resultLimit);
    QListWidget* list = ui->SearchResultsListWidget;
    list->clear();
    list->setUpdatesEnabled(false);
    for (int index = pharmacies.size() - 1; index >= 0; --index) {
        auto* row = new PharmacyItem(pharmacies.at(index));
        auto* item = new QListWidgetItem;
        item->setData(Qt::SizeHintRole, row->size());
        list->insertItem(0, item);
        list->setItemWidget(item, row);
    }
    list->setUpdatesEnabled(true);
    list->update();
}

void PharmacySelector::clearDetails()
{
    QTableWidget* table = ui->OpenHoursTable;
    table->clearSelection();
    table->clearContents();
    ui->CityLineEdit->clear();
    ui->EmailLineEdit->clear();
    ui->NameLineEdit->clear();
    ui->PhoneListWidget->clear();
    ui->StreetLineEdit->clear();
    ui->WwwLineEdit->clear();
    ui->ZipLineEdit->clear();

    const QList<PharmacyOpenHoursType> types = DrugDatabase::pharmacyOpenHoursTypes();
    QStringList days;
    for (const PharmacyOpenHoursType& type : types)
        days << type.namePl;
    table->setColumnCount(2);
    table->setRowCount(days.size());
    table->setVerticalHeaderLabels(days);
    table->setHorizontalHeaderLabels({QStringLiteral("Od"), QStringLiteral("Do")});
    for (int row = 0; row < table->rowCount(); ++row) {
        for (int column = 0; column < 2; ++column) {
            table->setItem(row, column, new QTableWidgetItem);
            table->setCellWidget(row, column, new OpenHoursItem(QString(), table));
        }
    }
    ui->InfoGroupBox->setEnabled(false);
}

void PharmacySelector::on_SearchResultsListWidget_currentRowChanged(int currentRow)
{
    clearDetails();
    if (currentRow < 0 || currentRow >= pharmacies.size())
        return;
    const Pharmacy pharmacy = pharmacies.at(currentRow);

    QTableWidget* table = ui->OpenHoursTable;
    for (const PharmacyOpenHours& hours : DrugDatabase::pharmacyOpenHours(pharmacy.id)) {
        const int row = hours.typeId - 1;
        // A day the table doesn't list has no cell to show it in.
        if (row < 0 || row >= table->rowCount())
            continue;
        table->setItem(row, 0, new QTableWidgetItem);
        table->setItem(row, 1, new QTableWidgetItem);
        table->setCellWidget(row, 0, new OpenHoursItem(hours.startHour, table));
        table->setCellWidget(row, 1, new OpenHoursItem(hours.endHour, table));
    }

    ui->NameLineEdit->setText(pharmacy.name);
    ui->StreetLineEdit->setText(pharmacy.street);
    ui->ZipLineEdit->setText(pharmacy.zip);
    ui->CityLineEdit->setText(pharmacy.city);
    ui->EmailLineEdit->setText(pharmacy.email);
    ui->WwwLineEdit->setText(pharmacy.www);
    ui->PhoneListWidget->addItems(PharmacyRequest::splitPhones(pharmacy.phone));
    ui->InfoGroupBox->setEnabled(true);
}

bool PharmacySelector::validate() const
{
    return !ui->CityLineEdit->text().isEmpty() && !ui->NameLineEdit->text().isEmpty()
        && !ui->StreetLineEdit->text().isEmpty() && !ui->ZipLineEdit->text().isEmpty();
}

PharmacyRequest PharmacySelector::request() const
{
    PharmacyRequest request;
    request.name = ui->NameLineEdit->text();
    request.city = ui->CityLineEdit->text();
    request.street = ui->StreetLineEdit->text();
    request.zip = ui->ZipLineEdit->text();
    request.email = ui->EmailLineEdit->text();
    request.www = ui->WwwLineEdit->text();
    for (int row = 0; row < ui->PhoneListWidget->count(); ++row)
        request.phones << ui->PhoneListWidget->item(row)->text();
    const QTableWidget* table = ui->OpenHoursTable;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column) {
            if (const auto* cell = qobject_cast<OpenHoursItem*>(table->cellWidget(row, column)))
                cells << cell->hours();
        }
        request.hours << cells;
    }
    return request;
}

void PharmacySelector::submit(const PharmacyRequest& request)
{
    const QJsonObject body = request.toJson(ensureAppKey());
    ProfileJson::write(SettingsKeys::pharmacyInfoJson, body);
    sending = true;
    pharmacyGet.post(userPharmacyUrl, ProfileJson::compact(body));
}

void PharmacySelector::on_SubmitButton_clicked()
{
    if (ui->checkBox->isChecked()) {
        if (validate())
            submit(request());
        return;
    }
    const int row = ui->SearchResultsListWidget->currentRow();
    if (row < 0 || row >= pharmacies.size()) {
        close();
        return;
    }
    if (!validate())
        return;
    PharmacyRequest chosen = request();
    chosen.pharmacyId = pharmacies.at(row).id;
    submit(chosen);
}

void PharmacySelector::on_pushButton_clicked()
{
    QListWidget* list = ui->PhoneListWidget;
    if (list->count() > 0 && list->item(list->count() - 1)->text().isEmpty())
        return;
    auto* item = new QListWidgetItem(list);
    list->setCurrentItem(item);
    list->setFocus(Qt::OtherFocusReason);
    // The new row opens for typing at once.
    list->editItem(item);
}

void PharmacySelector::on_checkBox_toggled(bool checked)
{
    clearDetails();
    if (checked) {
        ui->InfoGroupBox->setEnabled(true);
        ui->SearchGroupBox->setEnabled(false);
        return;
    }
    ui->SearchLineEdit->clear();
    ui->SearchResultsListWidget->clear();
    ui->SearchGroupBox->setEnabled(true);
}

void PharmacySelector::on_PhoneListWidget_currentItemChanged(QListWidgetItem* current, QListWidgetItem*)
{
    if (current)
        current->setFlags(current->flags() | Qt::ItemIsEditable);
}
