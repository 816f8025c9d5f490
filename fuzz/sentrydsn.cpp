// Any text as the Sentry DSN that the error client is started with.

#include "fuzzsupport.h"

#include "utils/sentrydsn.h"

#include <QUrl>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(FuzzSupport::bytes(data, size));
    SentryDsn dsn;
    if (!SentryDsn::parse(text, &dsn))
        return 0;

    // An accepted DSN addresses a store on a web server: events go nowhere else.
    const QString store = dsn.storeUrl();
    const QUrl url(store, QUrl::StrictMode);
    FUZZ_REQUIRE(url.isValid());
    FUZZ_REQUIRE(url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https"));
    FUZZ_REQUIRE(!url.host().isEmpty());
    FUZZ_REQUIRE(!dsn.projectId.isEmpty());
    FUZZ_REQUIRE(url.path().endsWith(QStringLiteral("/api/") + dsn.projectId + QStringLiteral("/store/")));
    // The keys travel in a header, never in the address.
    FUZZ_REQUIRE(url.userInfo().isEmpty());
    return 0;
}
