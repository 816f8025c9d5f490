#pragma once

#include "utils/qthttpget.h"

#include <QJsonObject>
#include <QList>
#include <QWidget>

class QLineEdit;
class QNetworkReply;

namespace Ui {
class UserSettingsForm;
}

// "Twoje dane": the user's and the pharmacy's data in three stages, kept in the
// settings as JSON and sent to the desktop API on saving, the user first and the
// pharmacy only once the service has taken the user.
class UserSettingsForm : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(UserSettingsForm)

public:
    explicit UserSettingsForm(QWidget* parent = nullptr);

    // Shows the stored user and pharmacy; fields the objects lack go blank.
    void fill(const QJsonObject& user, const QJsonObject& pharmacy);
    ~UserSettingsForm() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private slots:
    void on_NextButton_clicked();
    void on_tabWidget_currentChanged(int index);
    void on_PrevButton_clicked();
    void on_FinnishButton_clicked();
    void onUserResult(QNetworkReply* reply);
    void onPharmacyResult(QNetworkReply* reply);
    void phoneCursorPositionChanged(int oldPosition, int newPosition);
    void zipCursorPositionChanged(int oldPosition, int newPosition);
    void zip2CursorPositionChanged(int oldPosition, int newPosition);
    void on_userButton_clicked();
    void on_pharmacyButton_clicked();
    void on_hoursButton_clicked();

private:
    void fillFromSettings();
    QList<QLineEdit*> requiredFields(int stageIndex) const;
    // Opening and closing field of each day, Monday first.
    QList<QPair<QLineEdit*, QLineEdit*>> hourFields() const;
    bool validateStage();
    void warnMissingData();
    void goToStage(int newStage);
    void paintStrip(int reached);
    QJsonObject userObject() const;
    QJsonObject pharmacyObject() const;
    // The service's envelope of a finished request; false, after telling the
    // user the service's message, unless it took the data.
    bool accepted(QNetworkReply* reply);
    // The chain of the two requests is over; `taken` when the service took both.
    void endSaving(bool taken);

    Ui::UserSettingsForm* ui = nullptr;
    QtHttpGet userGet;
    QtHttpGet pharmacyGet;
    int stage = 0;
    // The user's and the pharmacy's requests are on their way.
    bool saving = false;
    bool closed = false;
};
