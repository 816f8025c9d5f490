#pragma once

#include <QString>
#include <QWidget>

namespace Ui {
class DatabaseInfo;
}

// The dates of the local drug database: when it was prepared and the refund
// list it holds. One window for the whole run, refilled at each call.
class DatabaseInfo : public QWidget {
    Q_OBJECT
    Q_DISABLE_COPY(DatabaseInfo)

public:
    // dataVersion is the database's Unix time as decimal text; listDate is shown as it stands.
    static void showInfo(const QString& dataVersion, const QString& listDate);

private:
    explicit DatabaseInfo(QWidget* parent = nullptr);
    ~DatabaseInfo() override;

    Ui::DatabaseInfo* ui = nullptr;
};
