#include "host/start_methods.h"

#include <QList>
#include <algorithm>

#include "component/public/editing_screen.h"
#include "component/public/lookup_list.h"
#include "host/component_loader.h"

namespace orvo::host {

StartInstances::StartInstances(ComponentLoader& component, GIC& gic, QWidget* startForm)
    : component_(component), gic_(gic), startForm_(startForm) {}

StartInstances::~StartInstances() = default;

EditingScreen& StartInstances::editing() {
    if (!editing_) {
        editing_ = component_.CreateEditingScreen();
        editing_->SetIGlobal_GIC(&gic_);
        editing_->SetStartForm(startForm_);
    }
    return *editing_;
}

LookUpList& StartInstances::list() {
    if (!list_) {
        list_ = component_.CreateLookUpList();
        list_->SetIGlobal_GIC(&gic_);
        list_->SetStartForm(startForm_);
    }
    return *list_;
}

namespace {

// Argument i as a number; fallback when it was left out.
int IntArg(const char* method, const QStringList& args, int i, int fallback = 0) {
    if (i >= args.size())
        return fallback;
    bool ok = false;
    const int value = args[i].toInt(&ok);
    if (!ok) {
        throw StartMethodError(QStringLiteral("argument %1 of %2 is not a number: \"%3\"")
                                   .arg(i + 1)
                                   .arg(QLatin1String(method), args[i])
                                   .toStdString());
    }
    return value;
}

// The text and id pair of the carrier-like screens: the id comes back written.
template <void (EditingScreen::*Method)(QString&, int&)>
QStringList TextAndId(StartInstances& on, const QStringList& args, const char* name) {
    QString text = args.value(0);
    int id = IntArg(name, args, 1);
    (on.editing().*Method)(text, id);
    return {text, QString::number(id)};
}

const StartMethod kStartMethods[] = {
    {"Ins_Company_Start", "TEXT [ID]", 1, 2, 1,
     [](StartInstances& on, const QStringList& args) {
         return TextAndId<&EditingScreen::Ins_Company_Start>(on, args, "Ins_Company_Start");
     }},
    {"Pharmacy_Start", "TEXT [ID]", 1, 2, 1,
     [](StartInstances& on, const QStringList& args) {
         return TextAndId<&EditingScreen::Pharmacy_Start>(on, args, "Pharmacy_Start");
     }},
    // A person's id and the tab in front (0 home, 1 work); answers whether anything was saved.
    {"Contact_Start", "ID [TAB]", 1, 2, 2,
     [](StartInstances& on, const QStringList& args) {
         const int person = IntArg("Contact_Start", args, 0);
         const int tab = IntArg("Contact_Start", args, 1);
         const bool saved = on.editing().Contact_Start(person, tab);
         return QStringList{QString::number(person), QString::number(tab),
                            saved ? QStringLiteral("True") : QStringLiteral("False")};
     }},
};

}  // namespace

std::span<const StartMethod> StartMethods() {
    return kStartMethods;
}

const StartMethod* FindStartMethod(const QString& name) {
    const auto it =
        std::find_if(std::begin(kStartMethods), std::end(kStartMethods),
                     [&](const StartMethod& m) { return name == QLatin1String(m.name); });
    return it == std::end(kStartMethods) ? nullptr : &*it;
}

QStringList RunStartMethod(StartInstances& on, const QString& name, const QStringList& args) {
    const StartMethod* method = FindStartMethod(name);
    if (!method)
        throw StartMethodError(QStringLiteral("unknown start method %1").arg(name).toStdString());
    if (args.size() < method->minArgs || args.size() > method->maxArgs) {
        throw StartMethodError(
            QStringLiteral("%1 takes %2").arg(name, QLatin1String(method->usage)).toStdString());
    }
    return method->run(on, args);
}

}  // namespace orvo::host
