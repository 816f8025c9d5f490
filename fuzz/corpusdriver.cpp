// Runs a fuzz target once over every file of its corpus folder, without
// libFuzzer: the tests' guard that no input which ever broke a target breaks it
// again, in any build.

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdint>
#include <cstdio>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s CORPUS_FOLDER\n", argv[0]);
        return 2;
    }
    LLVMFuzzerInitialize(&argc, &argv);

    const QDir corpus(QString::fromLocal8Bit(argv[1]));
    const QStringList names = corpus.entryList(QDir::Files, QDir::Name);
    if (names.isEmpty()) {
        std::fprintf(stderr, "no inputs in %s\n", argv[1]);
        return 1;
    }
    for (const QString& name : names) {
        QFile file(corpus.filePath(name));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "can't read %s\n", qPrintable(file.fileName()));
            return 1;
        }
        const QByteArray input = file.readAll();
        // A failing input names itself before the target aborts.
        std::fprintf(stderr, "%s\n", qPrintable(name));
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.constData()), size_t(input.size()));
    }
    std::printf("%d inputs\n", int(names.size()));
    // The targets make their application once and keep it, as libFuzzer never
    // ends the process in order; here it goes, with the font caches it holds.
    delete QCoreApplication::instance();
    return 0;
}
