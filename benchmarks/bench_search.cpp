// Times the look-ups that run while a pharmacist types or scans, on a
// market-size database: the search behind the search line (limit 20, once per
// typed prefix), the scan look-up by EAN code, and the substitutes of a
// scanned drug. Prints median, 95th percentile and maximum per kind.
//
//   bench_search [database] [rounds]
//
// The database defaults to the one of the target demodb-market; it is copied
// into a temporary folder that stands in for the program's folder.

#include "appdir.h"
#include "db/drugdatabase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStringList>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <functional>
#include <vector>

namespace {

// What a pharmacist types: names, substances, code fragments, two words, a
// quote, and text that finds nothing.
const QStringList typedTexts = {
    QStringLiteral("paracetamol"), QStringLiteral("ibuprofen"),      QStringLiteral("amlodypina"),
    QStringLiteral("atorwastatyna"), QStringLiteral("metformina"),   QStringLiteral("omeprazol"),
    QStringLiteral("kwas acetylo"),  QStringLiteral("Demofarm"),     QStringLiteral("żelaza"),
    QStringLiteral("Sirop d'Anis"),  QStringLiteral("5909990000"),   QStringLiteral("59012"),
    QStringLiteral("amlodypina vistula"), QStringLiteral("zzqx"),
};

void dropDebugLines(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type != QtDebugMsg && type != QtInfoMsg)
        QTextStream(stderr) << message << '\n';
}

struct Timings {
    QString name;
    std::vector<double> milliseconds;
    int results = 0;

    void time(const std::function<int()>& work)
    {
        QElapsedTimer timer;
        timer.start();
        results += work();
        milliseconds.push_back(timer.nsecsElapsed() / 1e6);
    }

    void print(QTextStream& out)
    {
        if (milliseconds.empty())
            return;
        std::sort(milliseconds.begin(), milliseconds.end());
        const auto at = [this](double fraction) {
            return milliseconds.at(std::min(milliseconds.size() - 1, size_t(fraction * milliseconds.size())));
        };
        out << qSetFieldWidth(28) << Qt::left << name << qSetFieldWidth(0) << " calls " << milliseconds.size()
            << "  median " << QString::number(at(0.5), 'f', 3) << " ms  p95 " << QString::number(at(0.95), 'f', 3)
            << " ms  max " << QString::number(milliseconds.back(), 'f', 3) << " ms  rows " << results << '\n';
    }
};

// EAN codes of the database, every n-th of them, read on a connection of our own.
QStringList sampleCodes(const QString& path, int wanted)
{
    QStringList codes;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("bench-codes"));
        db.setDatabaseName(path);
        if (db.open()) {
            QSqlQuery query(db);
            query.exec(QStringLiteral("SELECT ekd FROM ve ORDER BY rowid"));
            QStringList all;
            while (query.next())
                all.append(query.value(0).toString());
            const int step = std::max(1, int(all.size() / std::max(1, wanted)));
            for (int i = 0; i < all.size(); i += step)
                codes.append(all.at(i));
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("bench-codes"));
    return codes;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    const QStringList args = app.arguments();
    const QString source = args.size() > 1 ? args.at(1) : QStringLiteral(QUILLARD_MARKET_DATABASE);
    const int rounds = args.size() > 2 ? std::max(1, args.at(2).toInt()) : 5;

    QTemporaryDir programFolder;
    const QString target = programFolder.filePath(DrugDatabase::drugDatabaseName);
    if (!programFolder.isValid() || !QFile::copy(source, target)) {
        QTextStream(stderr) << "bench_search: cannot copy " << source
                            << " (build it with: cmake --build build --target demodb-market)\n";
        return 1;
    }
    setProgramDir(programFolder.path());
    qInstallMessageHandler(dropDebugLines);

    const QStringList codes = sampleCodes(target, 2000);
    out << "Database " << source << ", " << codes.size() << " sampled codes, " << rounds << " rounds\n";
    DrugDatabase::dataVersion(); // opens the connection outside the timings

    Timings search{QStringLiteral("searchDrugs (typed prefix)"), {}, 0};
    Timings byEan{QStringLiteral("drugByEan (known code)"), {}, 0};
    Timings missing{QStringLiteral("drugByEan (unknown code)"), {}, 0};
    Timings substitutes{QStringLiteral("substitutesOf (scanned)"), {}, 0};

    for (int round = 0; round < rounds; ++round) {
        // The search runs after each pause in typing: here after every letter.
        for (const QString& text : typedTexts) {
            for (int length = 1; length <= text.size(); ++length) {
                const QStringList words = text.left(length).split(QLatin1Char(' '), Qt::SkipEmptyParts);
                if (!words.isEmpty())
                    search.time([&words] { return DrugDatabase::searchDrugs(words, 20).size(); });
            }
        }
        for (const QString& code : codes) {
            Drug drug;
            byEan.time([&] {
                drug = DrugDatabase::drugByEan(code);
                return drug.gid.isEmpty() ? 0 : 1;
            });
            if (round == 0 && substitutes.milliseconds.size() < 300)
                substitutes.time([&drug] { return DrugDatabase::substitutesOf(drug).size(); });
        }
        for (int i = 0; i < 200; ++i) {
            const QString code = QStringLiteral("5800000%1").arg(i * 7919 % 1000000, 6, 10, QLatin1Char('0'));
            missing.time([&code] { return DrugDatabase::drugByEan(code).gid.isEmpty() ? 0 : 1; });
        }
    }

    search.print(out);
    byEan.print(out);
    missing.print(out);
    substitutes.print(out);
    DrugDatabase::closeDatabase();
    return 0;
}
