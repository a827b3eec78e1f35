#pragma once

#include <QDialog>

class QLineEdit;

namespace orvo::host {

class HostGIC;

// Asks for a login name and password and checks them against the practice's logins.
class LoginDialog : public QDialog {
    Q_OBJECT
public:
    LoginDialog(HostGIC& gic, QWidget* parent = nullptr);
    QString loginName() const;

protected:
    void accept() override;

private:
    HostGIC& gic_;
    QLineEdit* name_;
    QLineEdit* password_;
    int failures_ = 0;
};

}  // namespace orvo::host
