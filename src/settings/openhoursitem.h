#pragma once

#include <QString>
#include <QWidget>

class QValidator;

namespace Ui {
class OpenHoursItem;
}

// One cell of the pharmacy's opening hours: a time such as "8:00" or "08:00".
// A text that isn't a whole time turns the cell red, as a warning only.
class OpenHoursItem : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(OpenHoursItem)

public:
    OpenHoursItem(const QString& text, QWidget* parent);
    ~OpenHoursItem() override;

    QString hours() const { return currentHours; }

private slots:
    void on_lineEdit_textChanged(const QString& arg1);

private:
    Ui::OpenHoursItem* ui = nullptr;
    QString currentHours;
};
