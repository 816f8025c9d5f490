// Any texts as the stored user and pharmacy data (user_info_json and
// pharmacy_info_json, split at the first NUL byte), as the "Twoje dane" form
// reads them. One form takes every input: building one costs far more than
// filling it, and a fill sets every field.

#include "fuzzsupport.h"

#include "settings/profilejson.h"
#include "settings/usersettingsform.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLineEdit>

namespace {

QJsonObject objectOf(const QString& text)
{
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    return document.isObject() ? document.object() : QJsonObject();
}

UserSettingsForm& form()
{
    static UserSettingsForm* form = new UserSettingsForm;
    return *form;
}

QString field(const UserSettingsForm& form, const char* name)
{
    const auto* edit = form.findChild<QLineEdit*>(QString::fromLatin1(name));
    FUZZ_REQUIRE(edit);
    return edit->text();
}

bool onlyDigitsAndColon(const QString& text, int maxLength)
{
    if (text.size() > maxLength)
        return false;
    for (const QChar c : text) {
        if (!c.isDigit() && c != QLatin1Char(':') && c != QLatin1Char(' '))
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray input = FuzzSupport::bytes(data, size);
    const int split = input.indexOf('\0');
    const QString userText = QString::fromUtf8(split < 0 ? input : input.left(split));
    const QString pharmacyText = split < 0 ? QString() : QString::fromUtf8(input.mid(split + 1));
    const QJsonObject user = objectOf(userText);
    const QJsonObject pharmacy = objectOf(pharmacyText);
    FUZZ_REQUIRE(ProfileJson::parse(userText) == user);
    FUZZ_REQUIRE(ProfileJson::parse(pharmacyText) == pharmacy);
    form().fill(ProfileJson::parse(userText), ProfileJson::parse(pharmacyText));

    // Free-text fields show the stored strings as they are, and nothing for a
    // value that isn't a string or a text that isn't an object.
    FUZZ_REQUIRE(field(form(), "Name") == user.value(QStringLiteral("name")).toString());
    FUZZ_REQUIRE(field(form(), "Surname") == user.value(QStringLiteral("surname")).toString());
    FUZZ_REQUIRE(field(form(), "Login") == user.value(QStringLiteral("login")).toString());
    FUZZ_REQUIRE(field(form(), "PharmacyName") == pharmacy.value(QStringLiteral("name")).toString());
    FUZZ_REQUIRE(field(form(), "Street") == pharmacy.value(QStringLiteral("street")).toString());
    FUZZ_REQUIRE(field(form(), "City") == pharmacy.value(QStringLiteral("city")).toString());
    FUZZ_REQUIRE(field(form(), "Www") == pharmacy.value(QStringLiteral("www")).toString());

    // Masked fields hold only what their masks let in, whatever was stored.
    FUZZ_REQUIRE(onlyDigitsAndColon(field(form(), "Zip"), 2));
    FUZZ_REQUIRE(onlyDigitsAndColon(field(form(), "Zip2"), 3));
    for (const char* hour : {"PonOpen", "PonClose", "WtOpen", "WtClose", "SrOpen", "SrClose", "CzwOpen",
                             "CzwClose", "PtOpen", "PtClose", "SoOpen", "SoClose", "NdOpen", "NdClose"})
        FUZZ_REQUIRE(onlyDigitsAndColon(field(form(), hour), 5));
    return 0;
}
