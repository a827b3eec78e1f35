#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include "component/public/print_events.h"
#include "component/session.h"

namespace orvo::component {

// What a host hands to ImaList: an orvo::ImageList, or null to clear it. Anything else throws
// ComponentError.
QObject* CheckedImaList(QObject* candidate);

// Passes the print events a screen raises on to the host's handler of the instance that
// started it; with no handler set they go nowhere.
class PrintEventsRelay final : public PrintEvents {
public:
    void SetSink(PrintEvents* sink) { sink_ = sink; }
    void BeforePrint(bool& bCancel) override {
        if (sink_)
            sink_->BeforePrint(bCancel);
    }
    void AfterPrint() override {
        if (sink_)
            sink_->AfterPrint();
    }

private:
    PrintEvents* sink_ = nullptr;
};

// The properties both public classes carry alike: the host's windows and image list on the
// instance, the four IGlobal objects in the session. Each instance also counts as live, which
// keeps the library loaded.
template <class Interface>
class CommonProperties : public Interface {
public:
    CommonProperties() { ++session().LiveInstanceCount; }
    ~CommonProperties() override { --session().LiveInstanceCount; }
    CommonProperties(const CommonProperties&) = delete;
    CommonProperties& operator=(const CommonProperties&) = delete;

    QWidget* frmOwner() const override { return frmOwner_; }
    void SetfrmOwner(QWidget* value) override { frmOwner_ = value; }
    QWidget* StartForm() const override { return startForm_; }
    void SetStartForm(QWidget* value) override { startForm_ = value; }
    QObject* ImaList() const override { return imaList_; }
    void SetImaList(QObject* value) override { imaList_ = CheckedImaList(value); }

    QObject* IGlobal_DAC() const override { return session().DAC; }
    void SetIGlobal_DAC(QObject* value) override { session().DAC = value; }
    GIC* IGlobal_GIC() const override { return session().gic; }
    void SetIGlobal_GIC(GIC* value) override { session().gic = value; }
    QObject* IGlobal_GC() const override { return session().GC; }
    void SetIGlobal_GC(QObject* value) override { session().GC = value; }
    QObject* IGlobal_PV() const override { return session().PV; }
    void SetIGlobal_PV(QObject* value) override { session().PV = value; }

protected:
    QPointer<QWidget> frmOwner_;
    QPointer<QWidget> startForm_;
    QPointer<QObject> imaList_;
};

}  // namespace orvo::component
