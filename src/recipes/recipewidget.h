#pragma once

#include "utils/advertprovider.h"

#include <QWidget>

class QListWidget;

namespace Ui {
class RecipeWidget;
}

// The second page: a reference of compounding recipes. A category, then a
// recipe drug of it, then all the recipes of that drug one under the other.
class RecipeWidget : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(RecipeWidget)

public:
    explicit RecipeWidget(QWidget* parent = nullptr);
    ~RecipeWidget() override;

    // Rebuilds the page from the drug database, which an update may have replaced.
    void loadGroups();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    // The main window shows the drug page.
    void drugPageRequested();

public slots:
    void changeAd(AdvertType advertType);

private slots:
    void on_recipeGroups_itemSelectionChanged();
    void on_recipeDrugs_itemSelectionChanged();
    void on_drugBaseButton_clicked();
    void on_searchLineEdit_textChanged(const QString& text);

private:
    void clearRecipes();
    void showGroupDrugs();
    void filterGroupDrugs(const QString& text);
    void fillGroupDrugs(const QList<RecipeDrug>& drugs);
    void showRecipes();

    Ui::RecipeWidget* ui = nullptr;
};
