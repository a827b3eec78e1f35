#include "host/start_methods.h"

#include <QHash>
#include <QList>
#include <algorithm>

#include "component/public/component_types.h"
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
        list_->SetEventSink(listEvents_);
    }
    return *list_;
}

void StartInstances::SetListEvents(LookUpListEvents* events) {
    listEvents_ = events;
    if (list_)
        list_->SetEventSink(events);
}

int ListTypeOf(const QString& text) {
    bool number = false;
    const int value = text.toInt(&number);
    if (number && !LookUpListTitle(static_cast<LookUpListTypes>(value)).isEmpty())
        return value;
    static const char* const kNames[] = {"Provider", "Physician1", "Physician2", "ReferInOut",
                                         "Referral", "FamilyHead", "Employee",   "InsuranceCo",
                                         "Employer", "GroupPlan",  "InsGroup",   "RecallMaster",
                                         "Pharmacy", "CapPlans"};
    QString name = text.trimmed();
    if (name.startsWith(QLatin1String("lul"), Qt::CaseInsensitive))
        name = name.mid(3);
    for (int i = 0; i < static_cast<int>(std::size(kNames)); ++i) {
        if (name.compare(QLatin1String(kNames[i]), Qt::CaseInsensitive) == 0)
            return i;
    }
    throw StartMethodError(QStringLiteral("not a list type: \"%1\"").arg(text).toStdString());
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

bool BoolValue(const QString& text) {
    return text == QLatin1String("1") ||
           text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

// ShowList TYPE [PROPERTY=VALUE...]: every property of the list is set for the call, those not
// given to their defaults; ShowMode is 1 unless given, so the call returns with the choice.
QStringList ShowList(StartInstances& on, const QStringList& args) {
    LookUpList& list = on.list();
    list.SetListType(static_cast<LookUpListTypes>(ListTypeOf(args.value(0))));
    QHash<QString, QString> given;
    for (const QString& arg : args.mid(1)) {
        const qsizetype equals = arg.indexOf(QLatin1Char('='));
        if (equals <= 0)
            throw StartMethodError(
                QStringLiteral("ShowList takes PROPERTY=VALUE, not \"%1\"").arg(arg).toStdString());
        given.insert(arg.left(equals).toLower(), arg.mid(equals + 1));
    }
    // A property's value, taken off what was given; fallback when it was not.
    const auto text = [&](const char* name, const QString& fallback = QString()) {
        const auto it = given.find(QString::fromLatin1(name).toLower());
        if (it == given.end())
            return fallback;
        const QString value = it.value();
        given.erase(it);
        return value;
    };
    const auto number = [&](const char* name, int fallback = 0) {
        const QString value = text(name);
        if (value.isNull())
            return fallback;
        bool ok = false;
        const int n = value.toInt(&ok);
        if (!ok) {
            throw StartMethodError(QStringLiteral("%1 of ShowList is not a number: \"%2\"")
                                       .arg(QLatin1String(name), value)
                                       .toStdString());
        }
        return n;
    };
    const auto flag = [&](const char* name) { return BoolValue(text(name)); };
    list.SetShowMode(static_cast<short>(number("ShowMode", 1)));
    list.SetbSelectMode(flag("bSelectMode"));
    list.SetShowPatientButtons(flag("ShowPatientButtons"));
    list.SetAllowDelete(flag("AllowDelete"));
    list.SetSkip_List_IF_New(flag("Skip_List_IF_New"));
    list.SetNo_Double_Click(flag("No_Double_Click"));
    list.SetShowFacilityOptions(flag("ShowFacilityOptions"));
    list.SetInitField(text("InitField", QString()));
    list.SetListTitle(text("ListTitle", QString()));
    list.SetGroupPlanCompanyID(number("GroupPlanCompanyID"));
    list.SetEmployerPatientID(number("EmployerPatientID"));
    list.SetFamHeadIncPatID(number("FamHeadIncPatID"));
    list.SetNewEmployeePasswordID(number("NewEmployeePasswordID"));
    list.SetSelectedID(number("SelectedID"));
    list.SetSelect_String(QString());
    const bool multi = flag("MultiSel");
    if (!given.isEmpty()) {
        throw StartMethodError(QStringLiteral("ShowList has no property %1")
                                   .arg(given.keys().join(", "))
                                   .toStdString());
    }
    list.ShowList(multi);
    return {args.value(0), QString::number(list.SelectedID()), list.Select_String(),
            list.ListTitle()};
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
    // A person's id (0 for a new one), the start string ("NEW" or "EMERGENCY" with last and
    // first name separated by a line feed; "FIND" for find-or-add), and whether the save-and-
    // book button shows; gives back the id and whether booking an appointment follows.
    {"Load_PatInfo_Small", "ID [TEXT [BOOK]]", 1, 3, 0,
     [](StartInstances& on, const QStringList& args) {
         int id = IntArg("Load_PatInfo_Small", args, 0);
         QString text = args.value(1);
         bool book = BoolValue(args.value(2));
         on.editing().Load_PatInfo_Small(id, text, &book);
         return QStringList{QString::number(id), text,
                            book ? QStringLiteral("True") : QStringLiteral("False")};
     }},
    {"ShowList", "TYPE [PROPERTY=VALUE...]", 1, 20, 1, ShowList},
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
