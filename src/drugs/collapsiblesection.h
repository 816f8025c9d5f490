#pragma once

#include <QWidget>

class QFrame;
class QGridLayout;
class QLayout;
class QParallelAnimationGroup;
class QPushButton;
class QScrollArea;
class QToolButton;

// A title with an arrow that opens a scroll area below it, as the description
// sections and the warnings show. Closed at first.
class CollapsibleSection : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(CollapsibleSection)

public:
    // An iconId above 0 puts the pictogram :/icons/<iconId>.png before the title.
    CollapsibleSection(int iconId, const QString& title, int animationDuration, QWidget* parent = nullptr);

    // Takes the layout over. Call it once the content's size is known: the open
    // height is fixed here.
    void setContentLayout(QLayout* layout);
    QScrollArea* contentArea() const;
    QString title() const;
    // Shows another section in this one: closed at once, under `title`, its
    // open height taken again from the content's present size.
    void reuse(const QString& title);

    bool isExpanded() const;
    void collapse();
    void expand();

    // The sections' style, set once on the frame that holds them: a sheet per
    // button would be parsed and polished for each of a drug's sections.
    static QString containerStyleSheet();

private:
    void onToggleClicked(bool checked);
    void setOpenHeights(int contentHeight);

    QGridLayout* mainLayout = nullptr;
    QToolButton* toggleButton = nullptr;
    QFrame* headerLine = nullptr;
    QParallelAnimationGroup* toggleAnimation = nullptr;
    QScrollArea* content = nullptr;
    QPushButton* titleButton = nullptr;
    int animationDuration = 0;
    int iconId = 0;
};
