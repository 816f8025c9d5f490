#include "collapsiblesection.h"

#include "drugs/drugviewmodel.h"
#include "utils/statisticssender.h"

#include <QDebug>
#include <QFileInfo>
#include <QFrame>
#include <QGridLayout>
#include <QParallelAnimationGroup>
#include <QPixmap>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QScrollArea>
#include <QToolButton>

namespace {
constexpr int iconSide = 28;
} // namespace

QString CollapsibleSection::containerStyleSheet()
{
    return QStringLiteral(
        "CollapsibleSection QToolButton#toggleButton {border: none; color: #295c99;}\n"
        "CollapsibleSection QPushButton#titleButton {border: none; color: #082e56; font-weight: bold; font-size: 14px;}\n");
}

CollapsibleSection::CollapsibleSection(int iconId, const QString& title, int animationDuration, QWidget* parent)
    : QWidget(parent)
    , mainLayout(new QGridLayout(this))
    , toggleButton(new QToolButton(this))
    , headerLine(new QFrame(this))
    , toggleAnimation(new QParallelAnimationGroup(this))
    , content(new QScrollArea(this))
    , titleButton(new QPushButton(title, this))
    , animationDuration(animationDuration)
    , iconId(iconId)
{
    toggleButton->setObjectName(QStringLiteral("toggleButton"));
    toggleButton->setArrowType(Qt::DownArrow);
    toggleButton->setCheckable(true);
    toggleButton->setChecked(false);
    toggleButton->setAutoRaise(false);
    toggleButton->setCursor(Qt::PointingHandCursor);

    titleButton->setObjectName(QStringLiteral("titleButton"));
    titleButton->setCursor(Qt::PointingHandCursor);
    if (iconId > 0) {
        const QString iconName = QStringLiteral(":/icons/") + QString::number(iconId) + QStringLiteral(".png");
        const QFileInfo iconFile(iconName);
        // A warning the resources have no pictogram for still shows, with an empty icon.
        if (!iconFile.exists() || !iconFile.isFile())
            qDebug().noquote().nospace() << "Ikona " << " " << iconName << " nie istnieje; ostrzeżenie: " << title;
        titleButton->setIconSize(QSize(iconSide, iconSide));
        titleButton->setIcon(QPixmap(iconName));
    }

    headerLine->setFrameShape(QFrame::NoFrame);

    content->setFrameShape(QFrame::NoFrame);
    content->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    content->setWidgetResizable(true);
    content->setMinimumHeight(0);
    content->setMaximumHeight(0);

    toggleAnimation->addAnimation(new QPropertyAnimation(this, "minimumHeight"));
    toggleAnimation->addAnimation(new QPropertyAnimation(this, "maximumHeight"));
    toggleAnimation->addAnimation(new QPropertyAnimation(content, "maximumHeight"));

    mainLayout->setVerticalSpacing(0);
    mainLayout->setContentsMargins(0, 0, 0, 0);
    mainLayout->addWidget(titleButton, 0, 1, Qt::AlignLeft);
    mainLayout->addWidget(toggleButton, 0, 3, 1, 3, Qt::AlignRight);
    mainLayout->addWidget(headerLine, 0, 2);
    mainLayout->addWidget(content, 1, 0, 1, 3);
    // The filler takes the spare width, so the title stands at the left and the arrow at the right.
    mainLayout->setColumnStretch(2, 1);

    connect(titleButton, &QPushButton::clicked, toggleButton, &QToolButton::click);
    connect(toggleButton, &QToolButton::clicked, this, &CollapsibleSection::onToggleClicked);
}

void CollapsibleSection::onToggleClicked(bool checked)
{
    // Only opening a description section (iconId below 1) counts as a click on
    // it; closing never does, nor opening a warning.
    if (checked && iconId < 1) {
        const Drug* selected = DrugViewModel::instance()->selectedDrug();
        StatisticsSender::sendClick(selected ? selected->vid : QStringLiteral("-1"), title(),
                                    QStringLiteral("click_big_window"));
    }
    if (checked) {
        toggleButton->setArrowType(Qt::UpArrow);
        toggleAnimation->setDirection(QAbstractAnimation::Forward);
    } else {
        toggleButton->setArrowType(Qt::DownArrow);
        toggleAnimation->setDirection(QAbstractAnimation::Backward);
    }
    toggleAnimation->start();
}

void CollapsibleSection::setContentLayout(QLayout* layout)
{
    delete content->layout();
    content->setLayout(layout);
    setOpenHeights(layout->sizeHint().height());
}

void CollapsibleSection::reuse(const QString& title)
{
    toggleAnimation->stop();
    toggleButton->setChecked(false);
    toggleButton->setArrowType(Qt::DownArrow);
    titleButton->setText(title);
    content->setMaximumHeight(0);
    setMinimumHeight(0);
    setMaximumHeight(QWIDGETSIZE_MAX);
    if (QLayout* layout = content->layout()) {
        layout->invalidate();
        setOpenHeights(layout->sizeHint().height());
    }
}

void CollapsibleSection::setOpenHeights(int contentHeight)
{
    const int collapsedHeight = sizeHint().height() - content->maximumHeight();
    const int last = toggleAnimation->animationCount() - 1;
    for (int i = 0; i < last; ++i) {
        auto* animation = static_cast<QPropertyAnimation*>(toggleAnimation->animationAt(i));
        animation->setDuration(animationDuration);
        animation->setStartValue(collapsedHeight);
        animation->setEndValue(collapsedHeight + contentHeight);
    }
    auto* contentAnimation = static_cast<QPropertyAnimation*>(toggleAnimation->animationAt(last));
    contentAnimation->setDuration(animationDuration);
    contentAnimation->setStartValue(0);
    contentAnimation->setEndValue(contentHeight);

    // Closed, the section is as high as closing would leave it, so that a column
    // of closed sections doesn't spread them over its height.
    if (!isExpanded())
        setMaximumHeight(collapsedHeight);
}

QScrollArea* CollapsibleSection::contentArea() const
{
    return content;
}

QString CollapsibleSection::title() const
{
    return titleButton->text();
}

bool CollapsibleSection::isExpanded() const
{
    return toggleButton->isChecked();
}

void CollapsibleSection::collapse()
{
    if (toggleButton->isChecked())
        toggleButton->click();
}

void CollapsibleSection::expand()
{
    if (!toggleButton->isChecked())
        toggleButton->click();
}
