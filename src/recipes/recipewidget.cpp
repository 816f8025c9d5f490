#include "recipewidget.h"
#include "ui_recipewidget.h"

#include "db/drugdatabase.h"
#include "drugs/advertbanner.h"
#include "recipes/drugrecipeitem.h"
#include "recipes/recipedrugitem.h"
#include "recipes/recipegroupitem.h"
#include "sharppixmap.h"
#include "utils/statisticssender.h"

#include <QBoxLayout>
#include <QDebug>
#include <QListWidgetItem>
#include <QMouseEvent>

namespace {

// The record of a list's first selected row, read from its row widget.
template <typename Item>
Item* firstSelected(const QListWidget* list)
{
    const QList<QListWidgetItem*> selected = list->selectedItems();
    if (selected.isEmpty())
        return nullptr;
    return qobject_cast<Item*>(list->itemWidget(selected.first()));
}

// Appends a row widget; the row then spans `width`, the list's own width, at its own height.
void appendRow(QListWidget* list, QWidget* row, int width)
{
    auto* item = new QListWidgetItem(list);
    item->setData(Qt::SizeHintRole, row->size());
    list->addItem(item);
    list->setItemWidget(item, row);
    item->setSizeHint(QSize(width, item->sizeHint().height()));
}

// Word-wrapped rows are as tall as their text needs at the list's present
// width; their first height was measured before the row had that width.
void fitRowHeights(QListWidget* list)
{
    const int width = list->viewport()->width();
    for (int i = 0; i < list->count(); ++i) {
        QListWidgetItem* item = list->item(i);
        const QWidget* row = list->itemWidget(item);
        if (row && row->hasHeightForWidth())
            item->setSizeHint(QSize(item->sizeHint().width(), row->heightForWidth(width)));
    }
}

} // namespace

RecipeWidget::RecipeWidget(QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::RecipeWidget)
{
    ui->setupUi(this);
    // The form's picture at the size for this screen's scale.
    ui->advert->setPixmap(sharpPixmap(QStringLiteral(":/icons/banner_corvane")));
    ui->advert->installEventFilter(this);
    ui->recipeDrugs->viewport()->installEventFilter(this);
    connect(AdvertProvider::instance(), &AdvertProvider::newAdd, this, &RecipeWidget::changeAd);
    loadGroups();
}

RecipeWidget::~RecipeWidget()
{
    delete ui;
}

void RecipeWidget::loadGroups()
{
    clearRecipes();
    ui->recipeGroups->clear();

    const QList<RecipeGroup> groups = DrugDatabase::recipeGroups();
    for (const RecipeGroup& group : groups)
        appendRow(ui->recipeGroups, new RecipeGroupItem(group, ui->recipeGroups),
                  ui->recipeGroups->sizeHint().width());

    // Selecting the first group fills the rest of the page.
    if (ui->recipeGroups->count() > 0)
        ui->recipeGroups->setCurrentRow(0);
}

void RecipeWidget::clearRecipes()
{
    QLayout* layout = ui->scrollAreaWidgetContents->layout();
    while (QLayoutItem* item = layout->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    ui->drugRecipes->hide();
    ui->noRecipesImage->show();
}

void RecipeWidget::on_recipeGroups_itemSelectionChanged()
{
    if (const RecipeGroupItem* group = firstSelected<RecipeGroupItem>(ui->recipeGroups))
        StatisticsSender::sendRecipeGroup(group->getGroup().id);

    if (ui->searchLineEdit->text().isEmpty())
        showGroupDrugs();
    else
        filterGroupDrugs(ui->searchLineEdit->text());
}

void RecipeWidget::showGroupDrugs()
{
    ui->recipeDrugs->clear();
    const RecipeGroupItem* groupItem = firstSelected<RecipeGroupItem>(ui->recipeGroups);
    if (!groupItem)
        return;
    const RecipeGroup group = groupItem->getGroup();
    ui->groupName->setText(group.name);
    fillGroupDrugs(DrugDatabase::recipeDrugsOfGroup(group.id));
}

void RecipeWidget::on_searchLineEdit_textChanged(const QString& text)
{
    filterGroupDrugs(text);
}

void RecipeWidget::filterGroupDrugs(const QString& text)
{
    if (text.isEmpty()) {
        showGroupDrugs();
        return;
    }
    // A line of blanks leaves the list as it stands.
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        return;
    const RecipeGroupItem* groupItem = firstSelected<RecipeGroupItem>(ui->recipeGroups);
    if (!groupItem)
        return;

    const RecipeGroup group = groupItem->getGroup();
    ui->recipeDrugs->clear();
    ui->groupName->setText(group.name);
    fillGroupDrugs(DrugDatabase::searchRecipeDrugs(group.id, trimmed.toLower()));
}

void RecipeWidget::fillGroupDrugs(const QList<RecipeDrug>& drugs)
{
    const int width = ui->recipeDrugs->sizeHint().width();
    ui->recipeDrugs->setUpdatesEnabled(false);
    for (const RecipeDrug& drug : drugs)
        appendRow(ui->recipeDrugs, new RecipeDrugItem(drug, ui->recipeDrugs), width);
    fitRowHeights(ui->recipeDrugs);
    ui->recipeDrugs->setUpdatesEnabled(true);
}

void RecipeWidget::on_recipeDrugs_itemSelectionChanged()
{
    if (const RecipeDrugItem* drug = firstSelected<RecipeDrugItem>(ui->recipeDrugs))
        StatisticsSender::sendRecipeDrug(drug->getDrug().id);
    showRecipes();
}

void RecipeWidget::showRecipes()
{
    clearRecipes();
    ui->drugName->clear();
    const RecipeDrugItem* drugItem = firstSelected<RecipeDrugItem>(ui->recipeDrugs);
    if (!drugItem)
        return;

    ui->drugRecipes->show();
    ui->noRecipesImage->hide();
    const RecipeDrug drug = drugItem->getDrug();
    ui->drugName->setText(drug.name);

    QLayout* layout = ui->scrollAreaWidgetContents->layout();
    const QList<Recipe> recipes = DrugDatabase::recipesOfDrug(drug.id);
    int number = 0;
    for (const Recipe& recipe : recipes) {
        auto* item = new DrugRecipeItem(recipe, ++number, ui->scrollAreaWidgetContents);
        item->adjustSize();
        layout->addWidget(item);
    }
    // Short recipes stand at the top of the column instead of being spread over it.
    static_cast<QBoxLayout*>(layout)->addStretch();
    ui->scrollAreaWidgetContents->adjustSize();
}

void RecipeWidget::on_drugBaseButton_clicked()
{
    AdvertProvider::instance()->changeAd();
    emit drugPageRequested();
}

void RecipeWidget::changeAd(AdvertType advertType)
{
    AdvertBanner::show(this, ui->advert, advertType);
}

bool RecipeWidget::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == ui->recipeDrugs->viewport() && event->type() == QEvent::Resize)
        fitRowHeights(ui->recipeDrugs);
    if (watched == ui->advert && event->type() == QEvent::MouseButtonPress
        && AdvertBanner::handlePress(ui->advert, static_cast<QMouseEvent*>(event)))
        return true;
    return QWidget::eventFilter(watched, event);
}
