#include "testsupport.h"

#include <QDebug>
#include <QRegularExpression>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace TestSupport {

bool buildDatabase(const QString& path, const QString& sql)
{
    static int serial = 0;
    const QString connectionName = QStringLiteral("fixture-%1").arg(++serial);
    bool ok = true;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
        db.setDatabaseName(path);
        ok = db.open();
        const QStringList statements = sql.split(QRegularExpression(QStringLiteral(";\\s*\\n")));
        for (const QString& statement : statements) {
            if (!ok || statement.trimmed().isEmpty())
                continue;
            QSqlQuery query(db);
            if (!query.exec(statement)) {
                qWarning() << query.lastError().text() << statement;
                ok = false;
            }
        }
        db.close();
    }
    QSqlDatabase::removeDatabase(connectionName);
    return ok;
}

} // namespace TestSupport
