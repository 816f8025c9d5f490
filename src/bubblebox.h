#pragma once

#include <QWidget>

struct Drug;
class QListWidgetItem;
class QTimer;

namespace Ui {
class BubbleBox;
}

// The panel at the top right corner of the screen that names a scanned drug
// and its description sections with their chords. It never takes the focus
// and goes by itself after ten seconds, or later while the mouse rests on it.
class BubbleBox : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(BubbleBox)

public:
    explicit BubbleBox(QWidget* parent = nullptr);
    ~BubbleBox() override;

    // `gifDecisions`: the bubbles the main window stacks below the box for the drug.
    void display(const Drug& drug, int gifDecisions);

signals:
    void mousePressed();
    void sectionClicked(const QString& section);

public slots:
    void remove();
    void display();
    // Fits a box already shown to the rows of the drug it now shows.
    void refresh();
    void clear();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void enterEvent(QEvent* event) override;
    void leaveEvent(QEvent* event) override;

private slots:
    void on_listWidget_2_itemClicked(QListWidgetItem* item);

private:
    // Moves the box to the top right corner of the primary screen's available area; false when
    // the system has no screen.
    bool placeOnScreen();
    void fitDrugName();
    void fitToRows();

    Ui::BubbleBox* ui = nullptr;
    QTimer* timer = nullptr;
    // GIF bubbles of the drug shown, which take the screen's corner below the box.
    int gifBubbles = 0;
    // The rows of the drug shown; those past them are hidden, kept for a later drug.
    int shownRows = 0;
    // The pixel size of the name's type last set; none yet at first.
    int nameSize = -1;
};
