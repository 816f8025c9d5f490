#pragma once

#include "db/records.h"
#include "settings/pharmacyrequest.h"
#include "utils/qthttpget.h"

#include <QList>
#include <QWidget>

class QListWidgetItem;
class QNetworkReply;

namespace Ui {
class PharmacySelector;
}

// "Apteki": finds the user's pharmacy in the local database by town or street,
// or takes a new one, lets the user correct its data and sends it to the
// desktop API.
class PharmacySelector : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(PharmacySelector)

public:
    explicit PharmacySelector(QWidget* parent = nullptr);
    ~PharmacySelector() override;

signals:
    void closed(bool completed);

protected:
    void closeEvent(QCloseEvent* event) override;

private slots:
    void onPharmacyResult(QNetworkReply* result);
    void on_SearchLineEdit_textChanged(const QString& arg1);
    void on_SearchResultsListWidget_currentRowChanged(int currentRow);
    void on_SubmitButton_clicked();
    void on_pushButton_clicked();
    void on_checkBox_toggled(bool checked);
    void on_PhoneListWidget_currentItemChanged(QListWidgetItem* current, QListWidgetItem* previous);

private:
    void clearDetails();
    bool validate() const;
    PharmacyRequest request() const;
    void submit(const PharmacyRequest& request);

    Ui::PharmacySelector* ui = nullptr;
    QList<Pharmacy> pharmacies;
    QtHttpGet pharmacyGet;
    // The pharmacy is on its way to the service.
    bool sending = false;
    bool closedByUser = false;
};
