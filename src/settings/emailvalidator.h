#pragma once

#include <QRegularExpressionValidator>

// The e-mail check of the profile forms: refuses characters that can't lead to
// an address, accepts "name@host.tld" with a top-level domain of 2 to 7 letters.
class EmailValidator : public QRegularExpressionValidator {
    Q_OBJECT
    Q_DISABLE_COPY(EmailValidator)

public:
    explicit EmailValidator(QObject* parent = nullptr);
};
