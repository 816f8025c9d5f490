#include "emailvalidator.h"

namespace {
// The hyphen stands last in the classes: PCRE reads "[\w-+]" as a range and refuses it.
const QString emailPattern = QStringLiteral("([\\w+-]+(?:\\.[\\w+-]+)*@(?:[\\w-]+\\.)+[a-zA-Z]{2,7})");
} // namespace

EmailValidator::EmailValidator(QObject* parent)
    : QRegularExpressionValidator(
        // \w covers Polish letters, as the old QRegExp's did.
        QRegularExpression(emailPattern, QRegularExpression::UseUnicodePropertiesOption), parent)
{
}
