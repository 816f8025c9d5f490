#pragma once

#include <QString>
#include <QWidget>

class QTimer;

namespace Ui {
class GifBubble;
}

// A small window at the screen's lower right that tells of one GIF decision of
// a scanned drug. It goes by itself after 10 seconds, unless the mouse rests on it.
class GifBubble : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(GifBubble)

public:
    explicit GifBubble(QWidget* parent = nullptr);
    ~GifBubble() override;

signals:
    void gifClicked(QString pdfPath);

public slots:
    // i counts the bubbles of a scan from the bottom of the screen, 1 the lowest.
    void Show(const QString& name, const QString& pdfPath, const QString& date, const QString& desc, int i,
              const QString& vid);
    void Hide();

private slots:
    void on_pushButton_clicked();

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    Ui::GifBubble* ui = nullptr;
    QTimer* timer = nullptr;
    QString date;
    QString pdfPath;
    QString name;
    QString desc;
    QString vid;
};
