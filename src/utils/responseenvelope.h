#pragma once

#include <QString>

// The answer of the JSON services to a POST: {"status": ..., "message": ...}.
// Only "success", compared case-sensitively, is success; otherwise `message`
// says what failed. A text that isn't a JSON object is a failure without message.
struct ResponseEnvelope {
    bool success = false;
    QString message;

    static ResponseEnvelope parse(const QString& text);
};
