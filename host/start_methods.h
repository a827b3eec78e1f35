#pragma once

#include <QString>
#include <QStringList>
#include <memory>
#include <span>
#include <stdexcept>

class QWidget;

namespace orvo {
class EditingScreen;
class GIC;
class LookUpList;
class LookUpListEvents;
}  // namespace orvo

namespace orvo::host {

class ComponentLoader;

// A start method that cannot be run as asked: an unknown name, too few or too many arguments,
// a number that is not one.
struct StartMethodError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The component's instances a start method runs on, each made on first use through the loader,
// bound to the host and kept for the calls that follow.
class StartInstances {
public:
    StartInstances(ComponentLoader& component, GIC& gic, QWidget* startForm = nullptr);
    ~StartInstances();
    StartInstances(const StartInstances&) = delete;
    StartInstances& operator=(const StartInstances&) = delete;

    EditingScreen& editing();
    LookUpList& list();
    // The handler of the list's events (not owned), now and for a list made later.
    void SetListEvents(LookUpListEvents* events);

private:
    ComponentLoader& component_;
    GIC& gic_;
    QWidget* startForm_;
    std::unique_ptr<EditingScreen> editing_;
    std::unique_ptr<LookUpList> list_;
    LookUpListEvents* listEvents_ = nullptr;
};

// A list type by its number or its name, with or without the "lul" in front ("5", "lulFamilyHead",
// "FamilyHead"); throws StartMethodError for anything else.
int ListTypeOf(const QString& text);

// One start method of the component, as a host calls it with its arguments written as text
// (orvo-desk's menus and --open, orvo-scenario's "call"). A new start method is one entry in the
// table (start_methods.cpp).
struct StartMethod {
    const char* name;
    const char* usage;  // the arguments, for errors: "TEXT [ID]"
    int minArgs;
    int maxArgs;
    // Which of the values given back is the method's result, the one a person is told of.
    int resultIndex;
    // Runs the method with args (missing optional ones take their defaults) and gives back the
    // arguments as the method left them, then whatever else it answers in.
    QStringList (*run)(StartInstances& on, const QStringList& args);
};

std::span<const StartMethod> StartMethods();
// The start method of that name; nullptr for none.
const StartMethod* FindStartMethod(const QString& name);

// Runs the start method `name` with args and gives back what it gave back. An unknown method or
// arguments it does not take throw StartMethodError before anything is shown.
QStringList RunStartMethod(StartInstances& on, const QString& name, const QStringList& args);

}  // namespace orvo::host
