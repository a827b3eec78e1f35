#pragma once

#include <QWidget>

#include "host/host_gic.h"
#include "host/host_session.h"

namespace orvo::test {

// The session a host object answers from; a base of its own so that it is made first.
struct BareSession {
    host::HostSession session;
};

// The reference host object with no database behind it, counting how often it was handed a
// main window. The component's session code asks it for nothing else.
class MainFormGIC : private BareSession, public host::HostGIC {
public:
    MainFormGIC() : host::HostGIC(session) {}
    void SetMainForm(QWidget* form) override {
        host::HostGIC::SetMainForm(form);
        ++setMainFormCalls_;
    }
    int setMainFormCalls() const { return setMainFormCalls_; }

private:
    int setMainFormCalls_ = 0;
};

}  // namespace orvo::test
