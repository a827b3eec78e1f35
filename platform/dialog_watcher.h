#pragma once

#include <QObject>
#include <functional>

class QDialog;

namespace orvo {

// Watches every dialog window the program shows, for whatever acts on a modal screen from
// outside it: a host announcing or picturing the screen a start method brought up, a scenario
// run stepping into it, a test driving it. A modal dialog's exec() does not return until it is
// closed, so the work on it must run inside its own event loop: when a dialog is shown, `claim`
// is asked at once (it may note the dialog), and if it claims it, `act` runs on it from the
// dialog's loop, as long as the dialog still exists.
class DialogWatcher : public QObject {
    Q_OBJECT
public:
    using Claim = std::function<bool(QDialog&)>;
    using Act = std::function<void(QDialog&)>;

    DialogWatcher(Claim claim, Act act);
    ~DialogWatcher() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Claim claim_;
    Act act_;
};

}  // namespace orvo
