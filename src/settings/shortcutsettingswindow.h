#pragma once

#include <QKeySequence>
#include <QList>
#include <QPair>
#include <QString>
#include <QWidget>

namespace Ui {
class ShortcutSettingsWindow;
}

// Lets the user give each description section its chord. The first opening
// writes the defaults: until then no shortcut works.
class ShortcutSettingsWindow : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(ShortcutSettingsWindow)

public:
    explicit ShortcutSettingsWindow(QWidget* parent = nullptr);
    ~ShortcutSettingsWindow() override;

    // The section titles as the drug data deliver them, each with Ctrl and a letter.
    static QList<QPair<QString, QKeySequence>> defaultShortcuts();

private slots:
    void on_ok_clicked();
    void on_defaultValues_clicked();

private:
    void addRow(const QString& description, const QKeySequence& sequence);
    bool checkDuplicates();
    void save();

    Ui::ShortcutSettingsWindow* ui = nullptr;
};
