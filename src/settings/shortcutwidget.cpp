#include "shortcutwidget.h"
#include "ui_shortcutwidget.h"

#include <QStyleFactory>

ShortcutWidget::ShortcutWidget(const QString& description, const QKeySequence& sequence, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::ShortcutWidget)
{
    ui->setupUi(this);
    ui->label->setText(description);
    ui->sequence->setKeySequence(sequence);
    setColor(QStringLiteral("white"));
}

ShortcutWidget::~ShortcutWidget()
{
    delete ui;
}

void ShortcutWidget::setColor(const QString& colour)
{
    // There is no style of that name: the edit keeps the application's style.
    ui->sequence->setStyle(QStyleFactory::create(QStringLiteral("QLineEdit")));
    ui->sequence->setStyleSheet(QStringLiteral("background-color: ") + colour + QStringLiteral(";"));
}

void ShortcutWidget::markDuplicate()
{
    if (duplicate)
        return;
    duplicate = true;
    setColor(QStringLiteral("red"));
}

void ShortcutWidget::clearDuplicate()
{
    if (!duplicate)
        return;
    duplicate = false;
    setColor(QStringLiteral("white"));
}

QString ShortcutWidget::description() const
{
    return ui->label->text();
}

QKeySequence ShortcutWidget::keySequence() const
{
    return ui->sequence->keySequence();
}

void ShortcutWidget::on_sequence_keySequenceChanged(const QKeySequence& keySequence)
{
    // A shortcut is one chord: the key stream never gives a sequence of several.
    if (keySequence.count() > 0)
        ui->sequence->setKeySequence(QKeySequence(keySequence[0]));
}
