#pragma once

#include <QWidget>

// The left column of the drug page. It keeps the round button "clearDrugs"
// floating at its lower right, over the list of selected drugs.
class SelectedDrugsWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(SelectedDrugsWidget)

public:
    explicit SelectedDrugsWidget(QWidget* parent = nullptr);

protected:
    void resizeEvent(QResizeEvent* event) override;
};
