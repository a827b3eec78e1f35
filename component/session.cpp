#include "component/session.h"

#include "component/public/gic.h"

namespace orvo::component {

Session& session() {
    static Session state;
    return state;
}

QWidget* GetMainWindow() {
    Session& state = session();
    if (!state.MainForm && state.gic)
        state.MainForm = state.gic->GetMainForm();
    return state.MainForm;
}

void BindMainWindow(QWidget* startForm) {
    if (GetMainWindow() || !startForm)
        return;
    if (GIC* gic = session().gic)
        gic->SetMainForm(startForm);
}

}  // namespace orvo::component
