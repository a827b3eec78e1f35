#include "host/component_loader.h"

#include <dlfcn.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <stdexcept>

#include "component/public/registry.h"

namespace orvo::host {
namespace {

[[noreturn]] void Fail(const QString& message) {
    throw std::runtime_error(message.toStdString());
}

QString RegisteredLibrary(const char* classId) {
    const QSettings settings(registry::RegistryFile(), QSettings::IniFormat);
    return settings
        .value(registry::ClassGroup(QString::fromLatin1(classId)) + u'/' + registry::kLibraryKey)
        .toString();
}

bool RegistryNames(const QString& canonicalPath) {
    for (const char* classId : {kEditingScreenClassId, kLookUpListClassId}) {
        if (QFileInfo(RegisteredLibrary(classId)).canonicalFilePath() != canonicalPath) {
            return false;
        }
    }
    return true;
}

void* Open(const QString& path) {
    void* handle = dlopen(QFile::encodeName(path).constData(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) {
        Fail(QStringLiteral("Cannot load the editing component %1: %2")
                 .arg(path, QString::fromLocal8Bit(dlerror())));
    }
    return handle;
}

template <class Function>
Function Resolve(void* handle, const char* name, const QString& path) {
    void* symbol = dlsym(handle, name);
    if (!symbol) {
        Fail(QStringLiteral("The editing component %1 has no entry point %2")
                 .arg(path, QString::fromLatin1(name)));
    }
    return reinterpret_cast<Function>(symbol);
}

}  // namespace

QString DefaultComponentPath() {
    const QString programDir = QCoreApplication::instance()
                                   ? QCoreApplication::applicationDirPath()
                                   : QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
    return QDir::cleanPath(programDir + QStringLiteral("/../lib/liborvoedit.so"));
}

ComponentLoader::ComponentLoader(const QString& libraryPath) {
    try {
        Load(libraryPath);
    } catch (...) {
        if (handle_)
            dlclose(handle_);
        throw;
    }
}

void ComponentLoader::Load(const QString& libraryPath) {
    const QString canonical = QFileInfo(libraryPath).canonicalFilePath();
    if (canonical.isEmpty())
        Fail(QStringLiteral("The editing component %1 does not exist").arg(libraryPath));

    if (!RegistryNames(canonical)) {
        handle_ = Open(canonical);
        const int result = Resolve<DllRegisterServerFn>(handle_, "DllRegisterServer", canonical)();
        if (result != kEntrySuccess) {
            Fail(
                QStringLiteral("The editing component %1 could not register itself in %2 (code %3)")
                    .arg(canonical, registry::RegistryFile())
                    .arg(result));
        }
    }

    path_ = RegisteredLibrary(kEditingScreenClassId);
    if (path_.isEmpty()) {
        Fail(QStringLiteral("The component registry %1 names no library for class %2")
                 .arg(registry::RegistryFile(), QString::fromLatin1(kEditingScreenClassId)));
    }
    if (RegisteredLibrary(kLookUpListClassId) != path_) {
        Fail(QStringLiteral("The component registry %1 names another library for class %2")
                 .arg(registry::RegistryFile(), QString::fromLatin1(kLookUpListClassId)));
    }
    // Opening the library that registered itself again only counts one more reference.
    void* named = Open(path_);
    if (handle_)
        dlclose(handle_);
    handle_ = named;

    getClassObject_ = Resolve<DllGetClassObjectFn>(handle_, "DllGetClassObject", path_);
    canUnloadNow_ = Resolve<DllCanUnloadNowFn>(handle_, "DllCanUnloadNow", path_);
    declareTables_ = Resolve<OrvoDeclareTablesFn>(handle_, "OrvoDeclareTables", path_);
    // A library without all of its entry points is not the component.
    Resolve<DllRegisterServerFn>(handle_, "DllRegisterServer", path_);
    Resolve<DllUnregisterServerFn>(handle_, "DllUnregisterServer", path_);
}

ComponentLoader::~ComponentLoader() {
    if (handle_ && canUnloadNow_ && CanUnloadNow())
        dlclose(handle_);
}

ClassFactory& ComponentLoader::Factory(const char* classId) {
    ClassFactory* factory = nullptr;
    const int result = getClassObject_(classId, &factory);
    if (result != kEntrySuccess || !factory) {
        Fail(QStringLiteral("The editing component %1 makes no class %2 (code %3)")
                 .arg(path_, QString::fromLatin1(classId))
                 .arg(result));
    }
    return *factory;
}

std::unique_ptr<EditingScreen> ComponentLoader::CreateEditingScreen() {
    return Factory(kEditingScreenClassId).CreateEditingScreen();
}

std::unique_ptr<LookUpList> ComponentLoader::CreateLookUpList() {
    return Factory(kLookUpListClassId).CreateLookUpList();
}

bool ComponentLoader::CanUnloadNow() {
    return canUnloadNow_() == kEntrySuccess;
}

void ComponentLoader::DeclareTables(schema::Catalog& catalog) {
    declareTables_(&catalog);
}

}  // namespace orvo::host
