#pragma once

#include "db/drug.h"

#include <QList>
#include <QModelIndex>
#include <QObject>

class QLineEdit;
class QListWidget;
class QTimer;

// Turns what the user types into the search line into a pop-up list of at most
// twenty drugs under the line. A click on a row adds the drug to the selection.
class SearchLookup : public QObject {
    Q_OBJECT
    Q_DISABLE_COPY(SearchLookup)

public:
    explicit SearchLookup(QLineEdit* editor);

    bool eventFilter(QObject* object, QEvent* event) override;

    void showCompletion();
    void hidePopup();
    void showPopup();

public slots:
    void autoSuggest();
    void doneCompletion(const QModelIndex& index);

private:
    QLineEdit* editor = nullptr;
    QListWidget* popup = nullptr;
    QTimer* timer = nullptr;
    QList<Drug> list;
};
