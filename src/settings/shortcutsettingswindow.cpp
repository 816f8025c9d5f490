#include "shortcutsettingswindow.h"
#include "ui_shortcutsettingswindow.h"

#include "settings/shortcutwidget.h"
#include "settingskeys.h"
#include "utils/shortcutsdispatcher.h"
#include "utils/dialogs.h"

#include <QListWidgetItem>
#include <QMap>
#include <QMessageBox>
#include <QSettings>

ShortcutSettingsWindow::ShortcutSettingsWindow(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::ShortcutSettingsWindow)
{
    ui->setupUi(this);
    connect(ui->close, &QPushButton::clicked, this, &QWidget::close);
    setWindowModality(Qt::ApplicationModal);

    QSettings settings;
    const auto stored = ShortcutsDispatcher::readStored(settings);
    settings.endArray();
    if (stored.isEmpty()) {
        on_defaultValues_clicked();
        save();
        return;
    }
    for (const auto& row : stored)
        addRow(row.second, row.first);
}

ShortcutSettingsWindow::~ShortcutSettingsWindow()
{
    delete ui;
}

QList<QPair<QString, QKeySequence>> ShortcutSettingsWindow::defaultShortcuts()
{
    const auto ctrl = [](char letter) { return QKeySequence(Qt::CTRL + letter); };
    return {
        {QStringLiteral("Bezpieczeństwo stosowania"), ctrl('B')},
        {QStringLiteral("Ciąża i laktacja"), ctrl('H')},
        {QStringLiteral("Dawkowanie"), ctrl('D')},
        {QStringLiteral("Działanie"), ctrl('J')},
        {QStringLiteral("Działanie i zastosowanie"), ctrl('R')},
        {QStringLiteral("Działania niepożądane"), ctrl('N')},
        {QStringLiteral("Interakcje"), ctrl('I')},
        {QStringLiteral("Opis"), ctrl('Q')},
        {QStringLiteral("Ostrzeżenia specjalne / Środki ostrożności"), ctrl('O')},
        {QStringLiteral("Przeciwwskazania"), ctrl('P')},
        {QStringLiteral("Przedawkowanie"), ctrl('K')},
        {QStringLiteral("Skład"), ctrl('S')},
        {QStringLiteral("Sposób stosowania"), ctrl('T')},
        {QStringLiteral("Uwagi"), ctrl('U')},
        {QStringLiteral("Właściwości"), ctrl('E')},
        {QStringLiteral("Wskazania"), ctrl('W')},
        {QStringLiteral("Zalecenia do stosowania"), ctrl('L')},
        {QStringLiteral("Zastosowanie"), ctrl('A')},
    };
}

void ShortcutSettingsWindow::addRow(const QString& description, const QKeySequence& sequence)
{
    auto* row = new ShortcutWidget(description, sequence, nullptr);
    auto* item = new QListWidgetItem;
    item->setData(Qt::SizeHintRole, row->size());
    ui->listWidget->addItem(item);
    ui->listWidget->setItemWidget(item, row);
}

void ShortcutSettingsWindow::on_defaultValues_clicked()
{
    // Nothing is written until "Zapisz".
    ui->listWidget->clear();
    const auto defaults = defaultShortcuts();
    for (const auto& entry : defaults)
        addRow(entry.first, entry.second);
}

void ShortcutSettingsWindow::on_ok_clicked()
{
    if (checkDuplicates()) {
        auto* message = new QMessageBox(this);
        message->setText(tr("Przypisane skróty nie mogą się powtarzać"));
        message->addButton(tr("Ok"), QMessageBox::YesRole);
        Dialogs::ask(message);
        return;
    }
    save();
    close();
}

bool ShortcutSettingsWindow::checkDuplicates()
{
    // Rows left without a chord share the empty one and count as duplicates too.
    QMap<QKeySequence, QList<int>> rowsOf;
    for (int row = 0; row < ui->listWidget->count(); ++row) {
        auto* widget = static_cast<ShortcutWidget*>(ui->listWidget->itemWidget(ui->listWidget->item(row)));
        rowsOf[widget->keySequence()].append(row);
    }
    bool any = false;
    for (const QList<int>& rows : qAsConst(rowsOf)) {
        for (int row : rows) {
            auto* widget = static_cast<ShortcutWidget*>(ui->listWidget->itemWidget(ui->listWidget->item(row)));
            if (rows.size() > 1) {
                widget->markDuplicate();
                any = true;
            } else {
                widget->clearDuplicate();
            }
        }
    }
    return any;
}

void ShortcutSettingsWindow::save()
{
    QSettings settings;
    settings.remove(SettingsKeys::shortcuts);
    settings.sync();
    settings.beginWriteArray(SettingsKeys::shortcuts, -1);
    for (int row = 0; row < ui->listWidget->count(); ++row) {
        auto* widget = static_cast<ShortcutWidget*>(ui->listWidget->itemWidget(ui->listWidget->item(row)));
        settings.setArrayIndex(row);
        settings.setValue(SettingsKeys::shortcutKey, widget->keySequence());
        settings.setValue(SettingsKeys::shortcutDescription, widget->description());
    }
    settings.endArray();
    settings.sync();
    settings.setValue(SettingsKeys::refreshShortcuts, true);
    settings.sync();
}
