#pragma once

#include <QString>
#include <QWidget>

namespace Ui {
class BubbleboxListItem;
}

// One row of the notification box: a description section and its chord.
class BubbleboxListItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(BubbleboxListItem)

public:
    BubbleboxListItem(const QString& section, const QString& shortcut, QWidget* parent = nullptr);
    ~BubbleboxListItem() override;

    QString text() const;
    // Shows another section in this row, as a freshly made row would.
    void setSection(const QString& section, const QString& shortcut);

protected:
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setTextColour(const QString& colour);
    // A long title takes smaller type rather than losing its end.
    void fitTitle();

    Ui::BubbleboxListItem* ui = nullptr;
    bool hovered = false;
    // The pixel size of the title's type last set; none yet at first.
    int titleSize = -1;
};
