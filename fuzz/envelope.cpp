// Any answer of the JSON services to a POST.

#include "fuzzsupport.h"

#include "utils/responseenvelope.h"

#include <QJsonDocument>
#include <QJsonObject>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = FuzzSupport::replyText(FuzzSupport::bytes(data, size));
    const ResponseEnvelope envelope = ResponseEnvelope::parse(text);

    // Success is exactly a JSON object whose status is the string "success":
    // no other case, no blank around it, no number or array.
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    const QJsonValue status = document.object().value(QStringLiteral("status"));
    const bool success = document.isObject() && status.isString() && status.toString() == QLatin1String("success");
    FUZZ_REQUIRE(envelope.success == success);
    // Spelled out, or through escapes: "\u0073uccess", and "succ\ess" too, since
    // Qt's reader takes an unknown escape as the letter itself.
    if (envelope.success)
        FUZZ_REQUIRE(text.contains(QLatin1String("success")) || text.contains(QLatin1Char('\\')));
    // The message is the service's text or nothing, never made up.
    const QJsonValue message = document.object().value(QStringLiteral("message"));
    FUZZ_REQUIRE(envelope.message == (message.isString() ? message.toString() : QString()));
    return 0;
}
