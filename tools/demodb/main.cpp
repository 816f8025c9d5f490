#include "demodatabasebuilder.h"
#include "showcasedrugs.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QTextStream>

namespace {

// Fixed defaults: a build without options always gives the same file.
const char* const defaultSeed = "20240501";
const char* const defaultDataVersion = "1764547200"; // 2025-12-01 00:00:00 UTC

} // namespace

int main(int argc, char* argv[])
{
    // Banners are drawn with fonts, which need a GUI application; builds run
    // without a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("quillard-demodb"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Generates the demo drug database of Quillard."));
    parser.addHelpOption();
    const QCommandLineOption output(QStringLiteral("output"), QStringLiteral("Database file to write."),
                                    QStringLiteral("file"), QStringLiteral("corvane_quillard_desktop.sqlite3"));
    const QCommandLineOption seed(QStringLiteral("seed"), QStringLiteral("Seed of the generated part."),
                                  QStringLiteral("n"), QString::fromLatin1(defaultSeed));
    const QCommandLineOption size(QStringLiteral("size"), QStringLiteral("demo (about 300 packages), market "
                                                                         "(about 15,000) or market10 (about 150,000)."),
                                  QStringLiteral("demo|market|market10"), QStringLiteral("demo"));
    const QCommandLineOption dataVersion(QStringLiteral("data-version"),
                                         QStringLiteral("Version of the data, as a Unix time."),
                                         QStringLiteral("unix time"), QString::fromLatin1(defaultDataVersion));
    parser.addOptions({output, seed, size, dataVersion});
    parser.process(app);

    QTextStream err(stderr);
    DemoDatabaseBuilder::Options options;
    options.output = parser.value(output);
    bool ok = false;
    options.seed = parser.value(seed).toULongLong(&ok);
    if (!ok) {
        err << "quillard-demodb: --seed wants a non-negative integer\n";
        return 2;
    }
    options.dataVersion = parser.value(dataVersion).toLongLong(&ok);
    if (!ok || options.dataVersion < 0) {
        err << "quillard-demodb: --data-version wants a Unix time in seconds\n";
        return 2;
    }
    if (parser.value(size) == QLatin1String("market"))
        options.size = DemoDatabaseBuilder::Size::Market;
    else if (parser.value(size) == QLatin1String("market10"))
        options.size = DemoDatabaseBuilder::Size::Market10;
    else if (parser.value(size) != QLatin1String("demo")) {
        err << "quillard-demodb: --size is demo, market or market10\n";
        return 2;
    }

    DemoDatabaseBuilder builder(options);
    if (!builder.build()) {
        err << "quillard-demodb: " << builder.error() << '\n';
        return 1;
    }

    QTextStream out(stdout);
    out << "Wrote " << options.output << " (data_version " << options.dataVersion << ", seed " << options.seed
        << ")\n";
    const QMap<QString, int> counts = builder.counts();
    for (auto it = counts.constBegin(); it != counts.constEnd(); ++it)
        out << "  " << it.key().leftJustified(26) << it.value() << '\n';
    out << "Well-known codes:\n";
    for (const ShowcaseDrugs::Fact& fact : ShowcaseDrugs::facts())
        out << "  " << fact.ean << "  vid " << fact.vid << "  " << fact.text << '\n';
    return 0;
}
