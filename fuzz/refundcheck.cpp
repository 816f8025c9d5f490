// Any answer of the file service to the refund-list check ("1#yyyy-MM-dd").

#include "fuzzsupport.h"

#include "update/databaseupdater.h"

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString answer = FuzzSupport::replyText(FuzzSupport::bytes(data, size));
    const QDateTime date = DatabaseUpdater::refundListDate(answer);
    if (!date.isValid())
        return 0;

    // A date is only read from one "#" and the day after it, written out in
    // full; line breaks and tabs around it are the only noise allowed.
    FUZZ_REQUIRE(answer.count(QLatin1Char('#')) == 1);
    QString written = answer.section(QLatin1Char('#'), 1);
    written.remove(QLatin1Char('\n')).remove(QLatin1Char('\t')).remove(QLatin1Char('\r'));
    FUZZ_REQUIRE(written == date.toString(QStringLiteral("yyyy-MM-dd")));
    FUZZ_REQUIRE(date.time() == QTime(0, 0));
    return 0;
}
