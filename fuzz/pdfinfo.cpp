// Any standard output of pdfinfo, from which the page count of a document is read.

#include "fuzzsupport.h"

#include "utils/pdfdownloader.h"

#include <QRegularExpression>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    FuzzSupport::setUp();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString output = QString::fromLocal8Bit(FuzzSupport::bytes(data, size));
    const int pages = PDFDownloader::pageCountOf(output);

    // A count of pages is never below zero: the pages are loaded and printed
    // by index up to it.
    FUZZ_REQUIRE(pages >= 0);

    // Where the first line that mentions the pages is "Pages: n" as pdfinfo
    // writes it, n is the count.
    static const QRegularExpression pagesLine(QStringLiteral("^[ \\t]*Pages:[ \\t]+([0-9]{1,6})[ \\t]*$"));
    static const QRegularExpression lineBreak(QStringLiteral("[\\r\\n]"));
    for (const QString& line : output.split(lineBreak, Qt::SkipEmptyParts)) {
        if (!line.contains(QLatin1String("Pages")))
            continue;
        const QRegularExpressionMatch match = pagesLine.match(line);
        if (match.hasMatch())
            FUZZ_REQUIRE(pages == match.captured(1).toInt());
        break;
    }
    return 0;
}
