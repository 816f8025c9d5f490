#pragma once

#include <QDialog>

namespace Ui {
class RODOInfo;
}

// The notice on the processing of personal data. The button accepts it;
// closing the window rejects it, so the notice comes again.
class RODOInfo : public QDialog {
    Q_OBJECT
    Q_DISABLE_COPY(RODOInfo)

public:
    explicit RODOInfo(QWidget* parent = nullptr);
    ~RODOInfo() override;

private slots:
    void on_pushButton_2_clicked();

private:
    Ui::RODOInfo* ui = nullptr;
};
