#include "gifbubble.h"
#include "ui_gifbubble.h"

#include "screenlayout.h"
#include "sharppixmap.h"
#include "urls.h"
#include "utils/statisticssender.h"

#include <QFontMetrics>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>

namespace {
constexpr int lifetimeMs = 10000;
constexpr int maxButtonLines = 3;

// A push button doesn't wrap its text: the words are broken into lines that fit
// its width, and what doesn't fit in the last line is elided.
QString wrapped(const QString& text, const QFontMetrics& metrics, int width)
{
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QStringList lines;
    QString line;
    for (int w = 0; w < words.size(); ++w) {
        const QString candidate = line.isEmpty() ? words.at(w) : line + QLatin1Char(' ') + words.at(w);
        if (line.isEmpty() || metrics.horizontalAdvance(candidate) <= width) {
            line = candidate;
            continue;
        }
        lines << line;
        if (lines.size() == maxButtonLines - 1) {
            line = words.mid(w).join(QLatin1Char(' '));
            break;
        }
        line = words.at(w);
    }
    if (!line.isEmpty())
        lines << line;
    for (QString& each : lines)
        each = metrics.elidedText(each, Qt::ElideRight, width);
    return lines.join(QLatin1Char('\n'));
}

// The database often holds descriptions all in capitals.
QString displayedDescription(const QString& descr)
{
    QString text = descr.toLower();
    if (!text.isEmpty())
        text[0] = text.at(0).toUpper();
    return text;
}
} // namespace

GifBubble::GifBubble(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::GifBubble)
{
    ui->setupUi(this);
    // The form's picture at the size for this screen's scale.
    ui->label->setPixmap(sharpPixmap(QStringLiteral(":/icons/notification_icon")));
    setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground);

    timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &GifBubble::Hide);
}

GifBubble::~GifBubble()
{
    delete ui;
}

void GifBubble::Show(const QString& name, const QString& pdfPath, const QString& date, const QString& desc, int i,
                     const QString& vid)
{
    this->name = name;
    this->pdfPath = pdfPath;
    this->date = date;
    this->desc = displayedDescription(desc);
    this->vid = vid;

    ui->drug_name->setText(QStringLiteral("Komunikat GIF"));
    ui->pushButton->setToolTip(this->desc);

    timer->start(lifetimeMs);
    // With no screen (a monitor switched off, a remote session between two
    // connections) the bubble stays unseen and goes at its time like a shown one.
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen)
        return;
    move(ScreenLayout::gifBubblePosition(screen->availableGeometry(), i));
    show();
    // The button's width is known only once the bubble is laid out on show().
    ui->pushButton->setText(wrapped(this->desc, ui->pushButton->fontMetrics(), ui->pushButton->contentsRect().width()));
}

void GifBubble::Hide()
{
    // Kept for the next drug's decisions.
    timer->stop();
    hide();
}

void GifBubble::enterEvent(QEvent* event)
{
    // A bubble under the mouse stays while the pharmacist reads it.
    timer->stop();
    QWidget::enterEvent(event);
}

void GifBubble::leaveEvent(QEvent* event)
{
    timer->start(lifetimeMs);
    QWidget::leaveEvent(event);
}

void GifBubble::on_pushButton_clicked()
{
    StatisticsSender::sendClick(vid, name, QStringLiteral("gif"));
    emit gifClicked(imagesUrl + pdfPath);
}
