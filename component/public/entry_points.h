#pragma once

// The entry points through which a host reaches the component. A host loads the library,
// resolves these by name and never links it.

#include <cstring>
#include <memory>

#include "component/public/editing_screen.h"
#include "component/public/lookup_list.h"

namespace orvo {

namespace schema {
class Catalog;
}

// The class ids under which the two public classes are registered.
inline constexpr const char* kEditingScreenClassId = "{424909E0-2B47-4DC6-9E59-A03760D4EB23}";
inline constexpr const char* kLookUpListClassId = "{A671A4A1-F808-4AF1-8248-725EF19E3CFD}";

// What the entry points answer.
inline constexpr int kEntrySuccess = 0;
inline constexpr int kEntryFalse = 1;  // DllCanUnloadNow: an instance still lives
inline constexpr int kEntryUnknownClass = -1;
inline constexpr int kEntryInvalidArgument = -2;
inline constexpr int kEntryRegistryError = -3;
inline constexpr int kEntryUnexpected = -4;

// Makes instances of one class. A factory belongs to the library and lives as long as it is
// loaded; the caller never deletes it.
class ClassFactory {
public:
    // The class this factory makes.
    virtual const char* ClassId() const = 0;
    // A new instance, owned by the caller: an EditingScreen* or a LookUpList* as ClassId says,
    // passed as void*. Prefer the typed helpers.
    virtual void* CreateInstance() = 0;

    // Null when this factory makes the other class.
    std::unique_ptr<EditingScreen> CreateEditingScreen() {
        if (std::strcmp(ClassId(), kEditingScreenClassId) != 0)
            return nullptr;
        return std::unique_ptr<EditingScreen>(static_cast<EditingScreen*>(CreateInstance()));
    }
    std::unique_ptr<LookUpList> CreateLookUpList() {
        if (std::strcmp(ClassId(), kLookUpListClassId) != 0)
            return nullptr;
        return std::unique_ptr<LookUpList>(static_cast<LookUpList*>(CreateInstance()));
    }

protected:
    ~ClassFactory() = default;
};

}  // namespace orvo

#define ORVO_ENTRY_POINT extern "C" __attribute__((visibility("default")))

// Writes the registration (the library's own path under both class ids) to the registry file.
ORVO_ENTRY_POINT int DllRegisterServer();
// Removes both class ids from the registry file.
ORVO_ENTRY_POINT int DllUnregisterServer();
// Sets *factory to the factory of the class, or to null with kEntryUnknownClass.
ORVO_ENTRY_POINT int DllGetClassObject(const char* classId, orvo::ClassFactory** factory);
// kEntrySuccess when no instance of either class lives, kEntryFalse otherwise.
ORVO_ENTRY_POINT int DllCanUnloadNow();
// Adds the tables the component owns, so that a host can create a practice database without
// linking the component.
ORVO_ENTRY_POINT void OrvoDeclareTables(orvo::schema::Catalog* catalog);

// The entry points' types, for a host that resolves them by name.
using DllRegisterServerFn = int (*)();
using DllUnregisterServerFn = int (*)();
using DllGetClassObjectFn = int (*)(const char*, orvo::ClassFactory**);
using DllCanUnloadNowFn = int (*)();
using OrvoDeclareTablesFn = void (*)(orvo::schema::Catalog*);
