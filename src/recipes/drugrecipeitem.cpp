#include "drugrecipeitem.h"
#include "ui_drugrecipeitem.h"

#include "db/drugdatabase.h"
#include "recipes/recipesubstanceitem.h"

#include <QListWidgetItem>

DrugRecipeItem::DrugRecipeItem(const Recipe& recipe, int number, QWidget* parent)
    : QWidget(parent)
    , ui(new Ui::DrugRecipeItem)
    , recipe(recipe)
{
    ui->setupUi(this);
    // The white card of the form's style sheet is painted only with this set.
    setAttribute(Qt::WA_StyledBackground);

    ui->recipeNum->setText(QString::number(number));
    if (recipe.name.isEmpty())
        ui->recipeName->hide();
    else
        ui->recipeName->setText(recipe.name);
    if (recipe.realization.isEmpty())
        ui->realization->hide();
    else
        ui->realizationText->setText(recipe.realization);
    if (recipe.use.isEmpty())
        ui->useFrame->hide();
    else
        ui->useText->setText(recipe.use);
    if (recipe.comments.isEmpty())
        ui->commentsFrame->hide();
    else
        ui->commentsText->setText(recipe.comments);

    int rowsHeight = 0;
    const QList<RecipeSubstance> substances = DrugDatabase::substancesOfRecipe(recipe.id);
    for (const RecipeSubstance& substance : substances) {
        auto* row = new RecipeSubstanceItem(substance, ui->substances);
        row->adjustSize();
        auto* item = new QListWidgetItem(ui->substances);
        // No width of its own: the row takes the recipe's width instead of
        // widening the list past it, which would cut the amounts off.
        item->setData(Qt::SizeHintRole, QSize(0, row->height()));
        ui->substances->addItem(item);
        ui->substances->setItemWidget(item, row);
        rowsHeight += row->height();
    }
    // The whole recipe scrolls in the page: the list shows every ingredient
    // rather than a scroll area of its own inside it.
    ui->substances->setFixedHeight(rowsHeight + 2 * ui->substances->frameWidth());
    adjustSize();
}

DrugRecipeItem::~DrugRecipeItem()
{
    delete ui;
}
