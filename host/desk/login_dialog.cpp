#include "host/desk/login_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include "host/host_gic.h"
#include "host/login.h"
#include "platform/prompts.h"

namespace orvo::host {

LoginDialog::LoginDialog(HostGIC& gic, QWidget* parent)
    : QDialog(parent), gic_(gic), name_(new QLineEdit), password_(new QLineEdit) {
    setWindowTitle(tr("ORVO Windows - Login"));
    name_->setObjectName(QStringLiteral("txtLoginName"));
    password_->setObjectName(QStringLiteral("txtPassword"));
    password_->setEchoMode(QLineEdit::Password);
    auto* form = new QFormLayout;
    form->addRow(tr("Login Name :"), name_);
    form->addRow(tr("Password :"), password_);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &LoginDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &LoginDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addWidget(buttons);
    setMinimumWidth(320);
}

QString LoginDialog::loginName() const {
    return name_->text().trimmed().toUpper();
}

void LoginDialog::accept() {
    if (VerifyLogin(gic_.GetConnection(), gic_, name_->text().trimmed(), password_->text())) {
        QDialog::accept();
        return;
    }
    ++failures_;
    prompts().Message(tr("The login name or password is not correct."), Buttons::Ok, Icon::Warning,
                      windowTitle());
    password_->clear();
    password_->setFocus();
    if (failures_ >= 3)
        reject();
}

}  // namespace orvo::host
