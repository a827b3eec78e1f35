#pragma once

#include <QString>
#include <memory>

#include "component/public/entry_points.h"

namespace orvo::schema {
class Catalog;
}

namespace orvo::host {

// Where the editing component sits beside the running program: <program dir>/../lib.
QString DefaultComponentPath();

// Reaches the editing component through its entry points, never by linking it. On
// construction the library at libraryPath registers itself when the registry names no library
// or another one for its classes; the library the registry then names is loaded. Every failure
// to find the library, its registration or an entry point throws std::runtime_error with the
// path and the name concerned.
class ComponentLoader {
public:
    explicit ComponentLoader(const QString& libraryPath = DefaultComponentPath());
    // Unloads the library when no instance of it lives any more; otherwise it stays loaded.
    ~ComponentLoader();
    ComponentLoader(const ComponentLoader&) = delete;
    ComponentLoader& operator=(const ComponentLoader&) = delete;

    // The library loaded, as the registry names it.
    const QString& libraryPath() const { return path_; }

    std::unique_ptr<EditingScreen> CreateEditingScreen();
    std::unique_ptr<LookUpList> CreateLookUpList();
    // True when no instance of either class lives.
    bool CanUnloadNow();
    // Adds the tables the component owns.
    void DeclareTables(schema::Catalog& catalog);

private:
    void Load(const QString& libraryPath);
    ClassFactory& Factory(const char* classId);

    QString path_;
    void* handle_ = nullptr;
    DllGetClassObjectFn getClassObject_ = nullptr;
    DllCanUnloadNowFn canUnloadNow_ = nullptr;
    OrvoDeclareTablesFn declareTables_ = nullptr;
};

}  // namespace orvo::host
