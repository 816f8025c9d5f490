#pragma once

#include "appdir.h"
#include "drug.h"
#include "records.h"

#include <QList>
#include <QPair>
#include <QSqlDatabase>
#include <QString>
#include <QStringList>

// Every SQL statement of the program. The operations are free-standing over
// shared named connections, one per file of the program's data; a closed or broken
// database gives empty values, never an error.
namespace DrugDatabase {

inline const QString drugDatabaseName = AppDir::drugDatabaseName;
inline const QString statisticsDatabaseName = AppDir::statisticsDatabaseName;

// The open connection of the named file, opened on first use and after a close.
QSqlDatabase databaseHandle(const QString& name);
void openDatabase(const QString& name);
// Closes the drug database so that its file can be replaced; the next
// operation opens it again.
void closeDatabase();
// Waits until the search runs from memory on the opened drug database; false
// when it can't and the statement serves. For tests and benchmarks.
bool waitForSearchIndex();

Drug drugByVid(const QString& vid);
Drug drugByEan(const QString& ean);
Drug firstDrugOfGroup(const QString& gid);
QString indicationsById(const QString& id);
QString dataVersion();
QString listDate();
QString databaseDateText();
Advert randomAdvert();
QString leafletPath(const QString& vid);
QList<Drug> searchDrugs(const QStringList& words, int limit);
QList<Drug> drugsOfGroup(const QString& gid);
QList<Drug> substitutesOf(const Drug& drug);
QList<DescriptionSection> descriptionsOf(const QString& vid);
QList<DrugWarning> warningsOf(const QString& vid);
QList<Pharmacy> searchPharmacies(const QString& text, int limit);
QList<PharmacyOpenHoursType> pharmacyOpenHoursTypes();
QList<PharmacyOpenHours> pharmacyOpenHours(int pharmacyId);
QList<GifDecision> gifDecisions(const QString& vid);
QList<RecipeGroup> recipeGroups();
QList<RecipeDrug> recipeDrugsOfGroup(int groupId);
QList<RecipeDrug> searchRecipeDrugs(int groupId, const QString& text);
QList<Recipe> recipesOfDrug(int drugId);
QList<RecipeSubstance> substancesOfRecipe(int recipeId);

// The statistics store: records that couldn't be delivered wait here.
void createStatisticsTable();
// False when the record could not be written (a full disk, a read-only file).
bool storeStatistics(const QString& url, const QString& data);
// Takes the first queued record (url, JSON text) out of the store.
QPair<QString, QByteArray> takeOverdueRecord();
bool isStatisticsEmpty();

// The refund rows of a drug's packed refund text (v.prices): groups of level
// id, payment, scope id and off-label id, all joined by "|".
QList<DrugPrice> refundRows(const QString& prices);

// The three look-ups behind a refund row; the id "-1" answers without SQL.
RefundLevel refundLevelById(const QString& id);
RefundScope refundScopeById(const QString& id);
OffLabelIndication offLabelById(const QString& id);

} // namespace DrugDatabase
