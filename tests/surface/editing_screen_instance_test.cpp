#include "component/surface/editing_screen_instance.h"

#include <gtest/gtest.h>

#include <QDialog>
#include <QTimer>

#include "component/session.h"
#include "component/start_sequence.h"
#include "tests/support/main_form_gic.h"
#include "tests/support/scripted_prompts.h"

namespace orvo::component {
namespace {

// A screen that closes itself once its event loop runs.
class SelfClosingScreen : public QDialog {
public:
    void SetObjParent(PrintEvents* parent) { objParent = parent; }
    PrintEvents* objParent = nullptr;

protected:
    void showEvent(QShowEvent* event) override {
        QDialog::showEvent(event);
        QTimer::singleShot(0, this, &QDialog::accept);
    }
};

class CancellingSink : public EditingScreenEvents {
public:
    void BeforePrint(bool& bCancel) override { bCancel = true; }
    void AfterPrint() override { ++afterPrints; }
    int afterPrints = 0;
};

TEST(EditingScreenInstanceTest, AScreenPrintsThroughTheEventsOfTheInstanceThatStartedIt) {
    test::MainFormGIC gic;
    session().gic = &gic;
    test::ScriptedPrompts prompts;
    SetPrompts(&prompts);
    EditingScreenInstance instance;
    CancellingSink sink;
    bool cancel = false;

    StartScreen<SelfClosingScreen>(instance.StartContextFor("Test_Start"), {},
                                   [&](SelfClosingScreen& screen) {
                                       instance.SetEventSink(&sink);
                                       screen.objParent->BeforePrint(cancel);
                                       screen.objParent->AfterPrint();
                                       instance.SetEventSink(nullptr);
                                       screen.objParent->AfterPrint();
                                   },
                                   {});

    EXPECT_TRUE(cancel);
    EXPECT_EQ(sink.afterPrints, 1);
    SetPrompts(nullptr);
    session().gic = nullptr;
}

}  // namespace
}  // namespace orvo::component
