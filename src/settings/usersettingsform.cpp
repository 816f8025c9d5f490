#include "usersettingsform.h"
#include "ui_usersettingsform.h"

#include "settings/emailvalidator.h"
#include "settings/profilejson.h"
#include "settingskeys.h"
#include "urls.h"
#include "utils/appkey.h"
#include "utils/responseenvelope.h"
#include "utils/dialogs.h"

#include <QCloseEvent>
#include <QDebug>
#include <QJsonArray>
#include <QMessageBox>
#include <QTabBar>

namespace {
const QString missingStyle = QStringLiteral("background-color: red;");
const QString reachedStyle = QStringLiteral("background-color: #e3502a; color: white; border: none; padding: 4px 10px;");
const QString aheadStyle = QStringLiteral("background-color: lightgray; color: black; border: none; padding: 4px 10px;");

// The masks leave blank positions: typing starts at the left, not where the click fell.
void keepCursorInText(QLineEdit* field, int newPosition)
{
    const int length = field->text().length();
    if (length == 0 && newPosition != 0)
        field->setCursorPosition(0);
    else if (newPosition > length)
        field->setCursorPosition(length);
}
} // namespace

UserSettingsForm::UserSettingsForm(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::MSWindowsFixedSizeDialogHint)
    , ui(new Ui::UserSettingsForm)
{
    ui->setupUi(this);
    ui->tabWidget->tabBar()->hide();
    ui->tabWidget->setCurrentIndex(0);
    ui->FinnishButton->hide();
    ui->PrevButton->hide();

    // Children by name, so that their requests can be followed from outside.
    userGet.setParent(this);
    userGet.setObjectName(QStringLiteral("userGet"));
    pharmacyGet.setParent(this);
    pharmacyGet.setObjectName(QStringLiteral("pharmacyGet"));
    connect(&userGet, &QtHttpGet::result, this, &UserSettingsForm::onUserResult);
    connect(&pharmacyGet, &QtHttpGet::result, this, &UserSettingsForm::onPharmacyResult);
    connect(ui->Phone, &QLineEdit::cursorPositionChanged, this, &UserSettingsForm::phoneCursorPositionChanged);
    connect(ui->Zip, &QLineEdit::cursorPositionChanged, this, &UserSettingsForm::zipCursorPositionChanged);
    connect(ui->Zip2, &QLineEdit::cursorPositionChanged, this, &UserSettingsForm::zip2CursorPositionChanged);
    connect(ui->Zip, &QLineEdit::textChanged, this, [this] {
        if (ui->Zip->hasAcceptableInput())
            ui->Zip2->setFocus(Qt::OtherFocusReason);
    });

    paintStrip(0);
    ui->titleLabel->setText(QStringLiteral("Twoje dane"));
    ui->FinnishButton->setText(QStringLiteral("Zapisz"));
    fillFromSettings();
    ui->Email->setValidator(new EmailValidator(ui->Email));
}

UserSettingsForm::~UserSettingsForm()
{
    delete ui;
}

void UserSettingsForm::closeEvent(QCloseEvent* event)
{
    QWidget::closeEvent(event);
    closed = true;
    // A new form comes with each menu command, so a closed one goes; closed
    // while saving, it only hides until the pharmacy is stored and sent.
    if (!saving)
        deleteLater();
}

void UserSettingsForm::fillFromSettings()
{
    fill(ProfileJson::read(SettingsKeys::userInfoJson), ProfileJson::read(SettingsKeys::pharmacyInfoJson));
}

void UserSettingsForm::fill(const QJsonObject& user, const QJsonObject& pharmacy)
{
    ui->Name->setText(user.value(QStringLiteral("name")).toString());
    ui->Surname->setText(user.value(QStringLiteral("surname")).toString());
    ui->Login->setText(user.value(QStringLiteral("login")).toString());

    ui->PharmacyName->setText(pharmacy.value(QStringLiteral("name")).toString());
    ui->Street->setText(pharmacy.value(QStringLiteral("street")).toString());
    ui->City->setText(pharmacy.value(QStringLiteral("city")).toString());
    const QStringList zip = ProfileJson::zipParts(pharmacy.value(QStringLiteral("zip")).toString());
    ui->Zip->setText(zip.value(0));
    ui->Zip2->setText(zip.value(1));
    ui->Phone->setText(pharmacy.value(QStringLiteral("phone")).toString());
    ui->Email->setText(pharmacy.value(QStringLiteral("email")).toString());
    ui->Www->setText(pharmacy.value(QStringLiteral("www")).toString());

    // The stored hours replace the form's defaults, blank ones included.
    const QJsonArray hours = pharmacy.value(QStringLiteral("open_hours")).toArray();
    const auto fields = hourFields();
    for (int day = 0; day < fields.size(); ++day) {
        const QJsonObject hour = hours.at(day).toObject();
        fields.at(day).first->setText(hour.value(QStringLiteral("start_hour")).toString());
        fields.at(day).second->setText(hour.value(QStringLiteral("end_hour")).toString());
    }
}

QList<QLineEdit*> UserSettingsForm::requiredFields(int stageIndex) const
{
    if (stageIndex == 0)
        return {ui->Name, ui->Surname, ui->Login};
    if (stageIndex == 1)
        return {ui->City, ui->PharmacyName, ui->Street, ui->Zip, ui->Zip2};
    return {};
}

QList<QPair<QLineEdit*, QLineEdit*>> UserSettingsForm::hourFields() const
{
    return {{ui->PonOpen, ui->PonClose}, {ui->WtOpen, ui->WtClose}, {ui->SrOpen, ui->SrClose},
            {ui->CzwOpen, ui->CzwClose}, {ui->PtOpen, ui->PtClose}, {ui->SoOpen, ui->SoClose},
            {ui->NdOpen, ui->NdClose}};
}

bool UserSettingsForm::validateStage()
{
    const QList<QLineEdit*> fields = requiredFields(stage);
    bool valid = true;
    for (QLineEdit* field : fields)
        valid = valid && !field->text().isEmpty();
    if (valid)
        return true;
    for (QLineEdit* field : fields)
        field->setStyleSheet(field->text().isEmpty() ? missingStyle : QString());
    return false;
}

void UserSettingsForm::warnMissingData()
{
    Dialogs::tell(this, QMessageBox::Warning, QStringLiteral("Brakujące dane!"),
                  QStringLiteral("Proszę uzupełnić brakujące dane!"));
}

void UserSettingsForm::goToStage(int newStage)
{
    stage = newStage;
    ui->tabWidget->setCurrentIndex(stage);
}

void UserSettingsForm::paintStrip(int reached)
{
    // reached: 0 all gray, 1 up to the pharmacy part, 2 all orange.
    ui->userButton->setStyleSheet(reached >= 1 ? reachedStyle : aheadStyle);
    ui->stage2->setStyleSheet(reached >= 1 ? reachedStyle : aheadStyle);
    ui->pharmacyButton->setStyleSheet(reached >= 1 ? reachedStyle : aheadStyle);
    ui->stage3->setStyleSheet(reached >= 2 ? reachedStyle : aheadStyle);
    ui->hoursButton->setStyleSheet(reached >= 2 ? reachedStyle : aheadStyle);
}

void UserSettingsForm::on_NextButton_clicked()
{
    if (!validateStage()) {
        warnMissingData();
        return;
    }
    if (stage < 2)
        goToStage(stage + 1);
}

void UserSettingsForm::on_tabWidget_currentChanged(int)
{
    const bool last = stage == 2;
    ui->NextButton->setVisible(!last);
    ui->FinnishButton->setVisible(last);
    for (QLineEdit* field : requiredFields(stage))
        field->setStyleSheet(QString());
    paintStrip(stage);
}

void UserSettingsForm::on_PrevButton_clicked()
{
    if (stage > 0)
        goToStage(stage - 1);
}

void UserSettingsForm::on_FinnishButton_clicked()
{
    if (!validateStage())
        return;
    const QJsonObject user = userObject();
    ProfileJson::write(SettingsKeys::userInfoJson, user);
    saving = true;
    userGet.post(updateUserAdditionalUrl, ProfileJson::compact(user));
}

bool UserSettingsForm::accepted(QNetworkReply* reply)
{
    if (reply->error() != QNetworkReply::NoError)
        return false;
    const QString text = QtHttpGet::replyText(reply);
    qDebug().noquote() << "Response" << text;
    const ResponseEnvelope envelope = ResponseEnvelope::parse(text);
    if (!envelope.success)
        Dialogs::tell(this, QMessageBox::Information, QString(), envelope.message);
    return envelope.success;
}

void UserSettingsForm::onUserResult(QNetworkReply* reply)
{
    if (!accepted(reply)) {
        endSaving(false);
        return;
    }
    const QJsonObject pharmacy = pharmacyObject();
    ProfileJson::write(SettingsKeys::pharmacyInfoJson, pharmacy);
    pharmacyGet.post(updateUserPharmacyUrl, ProfileJson::compact(pharmacy));
}

void UserSettingsForm::onPharmacyResult(QNetworkReply* reply)
{
    endSaving(accepted(reply));
}

void UserSettingsForm::endSaving(bool taken)
{
    saving = false;
    if (closed)
        deleteLater();
    else if (taken)
        close();
}

void UserSettingsForm::phoneCursorPositionChanged(int, int newPosition)
{
    keepCursorInText(ui->Phone, newPosition);
}

void UserSettingsForm::zipCursorPositionChanged(int, int newPosition)
{
    keepCursorInText(ui->Zip, newPosition);
}

void UserSettingsForm::zip2CursorPositionChanged(int, int newPosition)
{
    keepCursorInText(ui->Zip2, newPosition);
}

void UserSettingsForm::on_userButton_clicked()
{
    goToStage(0);
}

void UserSettingsForm::on_pharmacyButton_clicked()
{
    if (stage < 1 && !validateStage()) {
        warnMissingData();
        return;
    }
    goToStage(1);
}

void UserSettingsForm::on_hoursButton_clicked()
{
    if (stage < 2 && !validateStage()) {
        warnMissingData();
        return;
    }
    goToStage(2);
}

QJsonObject UserSettingsForm::userObject() const
{
    QJsonObject user;
    user.insert(QStringLiteral("app_key"), ensureAppKey());
    user.insert(QStringLiteral("name"), ui->Name->text());
    user.insert(QStringLiteral("surname"), ui->Surname->text());
    user.insert(QStringLiteral("login"), ui->Login->text());
    return user;
}

QJsonObject UserSettingsForm::pharmacyObject() const
{
    QJsonArray openHours;
    const auto fields = hourFields();
    for (int day = 0; day < fields.size(); ++day) {
        QJsonObject hour;
        hour.insert(QStringLiteral("type_id"), QString::number(day + 1));
        hour.insert(QStringLiteral("start_hour"), fields.at(day).first->text());
        hour.insert(QStringLiteral("end_hour"), fields.at(day).second->text());
        openHours.append(hour);
    }

    QJsonObject pharmacy;
    pharmacy.insert(QStringLiteral("app_key"), ensureAppKey());
    pharmacy.insert(QStringLiteral("name"), ui->PharmacyName->text());
    pharmacy.insert(QStringLiteral("city"), ui->City->text());
    pharmacy.insert(QStringLiteral("street"), ui->Street->text());
    pharmacy.insert(QStringLiteral("zip"), QString(ui->Zip->text() + QLatin1Char('-') + ui->Zip2->text()));
    pharmacy.insert(QStringLiteral("phone"), ui->Phone->text());
    pharmacy.insert(QStringLiteral("email"), ui->Email->text());
    pharmacy.insert(QStringLiteral("www"), ui->Www->text());
    pharmacy.insert(QStringLiteral("open_hours"), openHours);
    return pharmacy;
}
