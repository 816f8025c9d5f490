// Any answer of the desktop API's version service: the file list whose
// [1][0][1][1][1] names the installer, and the version text.

#include "fuzzsupport.h"

#include "update/programupdater.h"
#include "versionnumber.h"

#include <QDir>

namespace {

// The installer lands beside the program under the name from the list: the
// name must stay a plain file of that folder on every system the program runs on.
void checkName(const QString& name)
{
    if (!ProgramUpdater::isPlainFileName(name))
        return;
    FUZZ_REQUIRE(!name.isEmpty());
    FUZZ_REQUIRE(!name.contains(QLatin1Char('/')) && !name.contains(QLatin1Char('\\')));
    FUZZ_REQUIRE(!name.contains(QLatin1String("..")));
    // A drive ("C:x.exe") or a stream ("x.exe:y") on Windows.
    FUZZ_REQUIRE(!name.contains(QLatin1Char(':')));
    FUZZ_REQUIRE(name != QLatin1String("."));
    for (const QChar c : name)
        FUZZ_REQUIRE(c.unicode() >= 0x20);

    const QString folder = QStringLiteral("/opt/quillard");
    const QString path = QDir::cleanPath(folder + QLatin1Char('/') + name);
    FUZZ_REQUIRE(path == folder + QLatin1Char('/') + name);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray body = FuzzSupport::bytes(data, size);
    checkName(ProgramUpdater::fileNameFromList(body));
    // The name check also meets names the list can't easily spell.
    const QString text = FuzzSupport::replyText(body);
    checkName(text);

    // The version text: any text is some version, ordered like every other.
    const VersionNumber online(text);
    const VersionNumber own(QStringLiteral("1.6.5.0"));
    FUZZ_REQUIRE(online >= online);
    FUZZ_REQUIRE(online >= own || own >= online);
    if (online >= own && own >= online)
        FUZZ_REQUIRE(online.parts == own.parts);
    return 0;
}
