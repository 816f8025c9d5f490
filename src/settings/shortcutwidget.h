#pragma once

#include <QKeySequence>
#include <QString>
#include <QWidget>

namespace Ui {
class ShortcutWidget;
}

// One row of the shortcuts window: a section's title and its chord.
class ShortcutWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(ShortcutWidget)

public:
    ShortcutWidget(const QString& description, const QKeySequence& sequence, QWidget* parent = nullptr);
    ~ShortcutWidget() override;

    void markDuplicate();
    void clearDuplicate();
    bool isDuplicate() const { return duplicate; }

    QString description() const;
    QKeySequence keySequence() const;

private slots:
    void on_sequence_keySequenceChanged(const QKeySequence& keySequence);

private:
    void setColor(const QString& colour);

    Ui::ShortcutWidget* ui = nullptr;
    bool duplicate = false;
};
