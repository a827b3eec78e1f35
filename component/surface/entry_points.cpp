#include "component/public/entry_points.h"

#include <dlfcn.h>
#include <strings.h>

#include <QDir>
#include <QFileInfo>
#include <QSettings>

#include "component/component_log.h"
#include "component/public/registry.h"
#include "component/session.h"
#include "component/surface/editing_screen_instance.h"
#include "component/surface/lookup_list_instance.h"
#include "insurance/insurance_tables.h"
#include "people/people_tables.h"
#include "platform/schema/schema.h"
#include "reminders/reminder_tables.h"
#include "tools/tools_tables.h"

namespace orvo::component {
namespace {

template <class Interface, class Instance>
class Factory final : public ClassFactory {
public:
    explicit Factory(const char* classId) : classId_(classId) {}
    const char* ClassId() const override { return classId_; }
    // The pointer is of the public interface type, so that the host's cast back is exact.
    void* CreateInstance() override { return static_cast<Interface*>(new Instance); }

private:
    const char* classId_;
};

Factory<EditingScreen, EditingScreenInstance> editingScreenFactory(kEditingScreenClassId);
Factory<LookUpList, LookUpListInstance> lookUpListFactory(kLookUpListClassId);

// The file this library was loaded from, as the registry names it.
QString OwnLibraryPath() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<void*>(&DllRegisterServer), &info) == 0 || !info.dli_fname) {
        return {};
    }
    const QFileInfo file(QString::fromLocal8Bit(info.dli_fname));
    const QString canonical = file.canonicalFilePath();
    return canonical.isEmpty() ? file.absoluteFilePath() : canonical;
}

struct RegisteredClass {
    const char* classId;
    const char* name;
};
constexpr RegisteredClass kClasses[] = {
    {kEditingScreenClassId, "EditingScreen"},
    {kLookUpListClassId, "LookUpList"},
};

int Synced(QSettings& settings) {
    settings.sync();
    if (settings.status() == QSettings::NoError)
        return kEntrySuccess;
    qCWarning(lcComponent) << "Cannot write the component registry" << settings.fileName();
    return kEntryRegistryError;
}

}  // namespace
}  // namespace orvo::component

using namespace orvo;
using namespace orvo::component;

int DllRegisterServer() {
    try {
        const QString library = OwnLibraryPath();
        if (library.isEmpty())
            return kEntryUnexpected;
        const QString file = registry::RegistryFile();
        QDir().mkpath(QFileInfo(file).absolutePath());
        QSettings settings(file, QSettings::IniFormat);
        for (const RegisteredClass& cls : kClasses) {
            settings.beginGroup(registry::ClassGroup(QString::fromLatin1(cls.classId)));
            settings.setValue(registry::kNameKey, QString::fromLatin1(cls.name));
            settings.setValue(registry::kLibraryKey, library);
            settings.endGroup();
        }
        return Synced(settings);
    } catch (const std::exception& error) {
        qCWarning(lcComponent) << "DllRegisterServer:" << error.what();
        return kEntryUnexpected;
    }
}

int DllUnregisterServer() {
    try {
        QSettings settings(registry::RegistryFile(), QSettings::IniFormat);
        for (const RegisteredClass& cls : kClasses) {
            settings.remove(registry::ClassGroup(QString::fromLatin1(cls.classId)));
        }
        return Synced(settings);
    } catch (const std::exception& error) {
        qCWarning(lcComponent) << "DllUnregisterServer:" << error.what();
        return kEntryUnexpected;
    }
}

int DllGetClassObject(const char* classId, ClassFactory** factory) {
    if (!factory)
        return kEntryInvalidArgument;
    *factory = nullptr;
    if (!classId)
        return kEntryInvalidArgument;
    if (strcasecmp(classId, kEditingScreenClassId) == 0) {
        *factory = &editingScreenFactory;
    } else if (strcasecmp(classId, kLookUpListClassId) == 0) {
        *factory = &lookUpListFactory;
    } else {
        return kEntryUnknownClass;
    }
    return kEntrySuccess;
}

int DllCanUnloadNow() {
    return session().LiveInstanceCount == 0 ? kEntrySuccess : kEntryFalse;
}

void OrvoDeclareTables(schema::Catalog* catalog) {
    if (!catalog)
        return;
    insurance::DeclareInsuranceTables(*catalog);
    people::DeclarePeopleTables(*catalog);
    tools::DeclareToolsTables(*catalog);
    reminders::DeclareReminderTables(*catalog);
}
