#include "platform/prompts.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace orvo {
namespace {

struct ButtonSet {
    QList<QMessageBox::StandardButton> buttons;
    QList<int> answers;
};

ButtonSet ButtonsOf(Buttons buttons) {
    using B = QMessageBox;
    switch (buttons) {
        case Buttons::Ok:
            return {{B::Ok}, {AnswerOk}};
        case Buttons::OkCancel:
            return {{B::Ok, B::Cancel}, {AnswerOk, AnswerCancel}};
        case Buttons::YesNo:
            return {{B::Yes, B::No}, {AnswerYes, AnswerNo}};
        case Buttons::YesNoCancel:
            return {{B::Yes, B::No, B::Cancel}, {AnswerYes, AnswerNo, AnswerCancel}};
        case Buttons::RetryCancel:
            return {{B::Retry, B::Cancel}, {AnswerRetry, AnswerCancel}};
        case Buttons::AbortRetryIgnore:
            return {{B::Abort, B::Retry, B::Ignore}, {AnswerAbort, AnswerRetry, AnswerIgnore}};
    }
    return {{B::Ok}, {AnswerOk}};
}

QMessageBox::Icon IconOf(Icon icon) {
    switch (icon) {
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::Warning:
            return QMessageBox::Warning;
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::Question:
            return QMessageBox::Question;
        case Icon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

// The suite's texts break lines with CR, LF or both; a Qt label breaks them at LF alone.
QString Shown(const QString& text) {
    QString shown = text;
    shown.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    shown.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return shown;
}

// The Qt dialogs, owned by the active window so that they nest above modal screens.
class QtPrompts : public Prompts {
public:
    int Message(const QString& text, Buttons buttons, Icon icon, const QString& title,
                int defaultButton) override {
        const ButtonSet set = ButtonsOf(buttons);
        QMessageBox box(IconOf(icon), title, Shown(text), QMessageBox::NoButton, PromptParent());
        QList<QAbstractButton*> made;
        for (auto b : set.buttons)
            made << box.addButton(b);
        const int index = std::clamp(defaultButton, 1, int(made.size())) - 1;
        box.setDefaultButton(static_cast<QPushButton*>(made[index]));
        const int closed = ClosedAnswer(buttons);
        box.setEscapeButton(made[set.answers.indexOf(closed)]);
        box.exec();
        const int clicked = made.indexOf(box.clickedButton());
        return clicked >= 0 ? set.answers[clicked] : closed;
    }

    int Choose(const QString& text, const QString& title, const QStringList& captions,
               int defaultButton, Icon icon) override {
        QMessageBox box(IconOf(icon), title, Shown(text), QMessageBox::NoButton, PromptParent());
        QList<QPushButton*> made;
        for (const QString& caption : captions)
            made << box.addButton(caption, QMessageBox::ActionRole);
        if (!made.isEmpty())
            box.setDefaultButton(made[std::clamp(defaultButton, 1, int(made.size())) - 1]);
        box.exec();
        return int(made.indexOf(static_cast<QPushButton*>(box.clickedButton()))) + 1;
    }

    std::optional<QString> Input(const QString& prompt, const QString& title,
                                 const QString& defaultText, bool password) override {
        bool ok = false;
        const QString text = QInputDialog::getText(
            PromptParent(), title, Shown(prompt),
            password ? QLineEdit::Password : QLineEdit::Normal, defaultText, &ok);
        if (!ok)
            return std::nullopt;
        return text;
    }

    void ShowBanner(const QString& text) override {
        if (!banner_) {
            banner_ = new QLabel;
            banner_->setWindowFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
            banner_->setAttribute(Qt::WA_ShowWithoutActivating);
            banner_->setObjectName(QStringLiteral("WaitBanner"));
            banner_->setStyleSheet(QStringLiteral(
                "QLabel { background: #fff8d0; color: #202020; border: 1px solid #808080; "
                "padding: 10px 18px; font-weight: bold; }"));
        }
        banner_->setText(text);
        banner_->adjustSize();
        if (QScreen* screen = QGuiApplication::primaryScreen()) {
            banner_->move(screen->availableGeometry().center() - banner_->rect().center());
        }
        banner_->show();
        banner_->repaint();
    }

    void HideBanner() override {
        if (banner_)
            banner_->hide();
    }

    void Beep() override { QApplication::beep(); }

private:
    QPointer<QLabel> banner_;
};

Prompts* installed = nullptr;

}  // namespace

int ClosedAnswer(Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            return AnswerOk;
        case Buttons::YesNo:
            return AnswerNo;
        case Buttons::AbortRetryIgnore:
            return AnswerAbort;
        case Buttons::OkCancel:
        case Buttons::YesNoCancel:
        case Buttons::RetryCancel:
            break;
    }
    return AnswerCancel;
}

Prompts& prompts() {
    static QtPrompts qtPrompts;
    return installed ? *installed : qtPrompts;
}

void SetPrompts(Prompts* service) {
    installed = service;
}

QWidget* PromptParent() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    return QApplication::activeWindow();
}

}  // namespace orvo
