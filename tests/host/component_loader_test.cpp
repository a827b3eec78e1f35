// The component as a host reaches it: loaded at run time, registered in the registry file,
// instances made through its factories.
#include "host/component_loader.h"

#include <gtest/gtest.h>

#include <dlfcn.h>

#include <QFileInfo>
#include <QSettings>
#include <QTemporaryDir>

#include "component/public/component_error.h"
#include "component/public/entry_points.h"
#include "component/public/registry.h"
#include "platform/image_list.h"
#include "platform/schema/schema.h"
#include "tests/support/main_form_gic.h"

namespace orvo {
namespace {

QString BuiltLibrary() {
    const QString buildDir = qEnvironmentVariable("ORVO_BUILD_DIR");
    if (buildDir.isEmpty())
        return host::DefaultComponentPath();
    return buildDir + QStringLiteral("/lib/liborvoedit.so");
}

// The library as a host holds it: opened by path, entry points looked up by name. It stays
// loaded as long as the object lives.
class Library {
public:
    Library() : handle_(dlopen(QFile::encodeName(BuiltLibrary()).constData(), RTLD_NOW)) {}
    ~Library() {
        if (handle_)
            dlclose(handle_);
    }
    template <class Fn>
    Fn Entry(const char* name) const {
        void* symbol = handle_ ? dlsym(handle_, name) : nullptr;
        if (!symbol)
            throw std::runtime_error(std::string("no entry point ") + name);
        return reinterpret_cast<Fn>(symbol);
    }
    int DllRegisterServer() const { return Entry<DllRegisterServerFn>("DllRegisterServer")(); }
    int DllUnregisterServer() const {
        return Entry<DllUnregisterServerFn>("DllUnregisterServer")();
    }
    int DllGetClassObject(const char* classId, ClassFactory** factory) const {
        return Entry<DllGetClassObjectFn>("DllGetClassObject")(classId, factory);
    }

private:
    void* handle_;
};

QString Canonical(const QString& path) {
    return QFileInfo(path).canonicalFilePath();
}

QString RegisteredValue(const QString& registryFile, const char* classId, const char* key) {
    const QSettings settings(registryFile, QSettings::IniFormat);
    return settings.value(registry::ClassGroup(QString::fromLatin1(classId)) + u'/' + key)
        .toString();
}

class ComponentLoaderTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(dir_.isValid());
        savedRegistry_ = qgetenv("ORVO_REGISTRY");
        hadRegistry_ = qEnvironmentVariableIsSet("ORVO_REGISTRY");
        qputenv("ORVO_REGISTRY", QFile::encodeName(registryFile()));
    }
    void TearDown() override {
        // The host objects of a test live on its stack: none may outlast it in the component,
        // which keeps them for the whole process.
        ClassFactory* factory = nullptr;
        if (library_.DllGetClassObject(kEditingScreenClassId, &factory) == kEntrySuccess) {
            auto screen = factory->CreateEditingScreen();
            screen->SetIGlobal_GIC(nullptr);
            screen->SetIGlobal_DAC(nullptr);
            screen->SetIGlobal_GC(nullptr);
            screen->SetIGlobal_PV(nullptr);
            screen->SetStartForm(nullptr);
        }
        if (hadRegistry_) {
            qputenv("ORVO_REGISTRY", savedRegistry_);
        } else {
            qunsetenv("ORVO_REGISTRY");
        }
    }

    QString registryFile() const { return dir_.filePath(QStringLiteral("components.ini")); }

    QTemporaryDir dir_;
    Library library_;
    QByteArray savedRegistry_;
    bool hadRegistry_ = false;
};

TEST_F(ComponentLoaderTest, RegistersTheLibraryAndMakesBothClasses) {
    host::ComponentLoader loader(BuiltLibrary());

    const QString library = Canonical(BuiltLibrary());
    EXPECT_EQ(loader.libraryPath(), library);
    for (const char* classId : {kEditingScreenClassId, kLookUpListClassId}) {
        EXPECT_EQ(RegisteredValue(registryFile(), classId, registry::kLibraryKey), library);
    }
    EXPECT_EQ(RegisteredValue(registryFile(), kEditingScreenClassId, registry::kNameKey),
              QStringLiteral("EditingScreen"));
    EXPECT_EQ(RegisteredValue(registryFile(), kLookUpListClassId, registry::kNameKey),
              QStringLiteral("LookUpList"));

    auto screen = loader.CreateEditingScreen();
    auto list = loader.CreateLookUpList();
    ASSERT_NE(screen, nullptr);
    ASSERT_NE(list, nullptr);

    // A method whose screen is still to come says so, in an error the host can catch by type.
    QString tmp = QStringLiteral("NEW");
    int id = 0;
    try {
        screen->Employer_Start(tmp, id, id, tmp, id, id);
        FAIL() << "Employer_Start returned";
    } catch (const NotImplemented& error) {
        EXPECT_STREQ(error.what(), "EditingScreen.Employer_Start is not implemented yet");
    }
    // A start method called before the host object is handed in is refused in words.
    EXPECT_THROW(screen->Ins_Company_Start(tmp, id), ComponentError);
    EXPECT_THROW(list->ShowList(), ComponentError);
}

TEST_F(ComponentLoaderTest, RegistersAgainWhenTheRegistryNamesAnotherLibrary) {
    {
        QSettings settings(registryFile(), QSettings::IniFormat);
        for (const char* classId : {kEditingScreenClassId, kLookUpListClassId}) {
            settings.setValue(
                registry::ClassGroup(QString::fromLatin1(classId)) + u'/' + registry::kLibraryKey,
                QStringLiteral("/nowhere/liborvoedit.so"));
        }
    }
    host::ComponentLoader loader(BuiltLibrary());

    EXPECT_EQ(loader.libraryPath(), Canonical(BuiltLibrary()));
    EXPECT_EQ(RegisteredValue(registryFile(), kLookUpListClassId, registry::kLibraryKey),
              Canonical(BuiltLibrary()));
    EXPECT_NE(loader.CreateEditingScreen(), nullptr);
}

TEST_F(ComponentLoaderTest, UnregisterRemovesBothClassesAndRegisterWritesThemBack) {
    host::ComponentLoader loader(BuiltLibrary());

    ASSERT_EQ(library_.DllUnregisterServer(), kEntrySuccess);
    for (const char* classId : {kEditingScreenClassId, kLookUpListClassId}) {
        EXPECT_TRUE(RegisteredValue(registryFile(), classId, registry::kLibraryKey).isEmpty());
    }

    ASSERT_EQ(library_.DllRegisterServer(), kEntrySuccess);
    EXPECT_EQ(RegisteredValue(registryFile(), kEditingScreenClassId, registry::kLibraryKey),
              Canonical(BuiltLibrary()));
}

TEST_F(ComponentLoaderTest, RegisteringIntoAFolderThatCannotBeMadeFails) {
    // A plain file where the registry's folder would have to be.
    const QString blocker = dir_.filePath(QStringLiteral("blocker"));
    QFile file(blocker);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    qputenv("ORVO_REGISTRY", QFile::encodeName(blocker + QStringLiteral("/components.ini")));

    EXPECT_EQ(library_.DllRegisterServer(), kEntryRegistryError);
    EXPECT_THROW(host::ComponentLoader loader(BuiltLibrary()), std::runtime_error);
}

TEST_F(ComponentLoaderTest, HandsOutFactoriesOnlyForItsOwnClassIds) {
    ClassFactory* factory = reinterpret_cast<ClassFactory*>(this);
    EXPECT_EQ(library_.DllGetClassObject("{00000000-0000-0000-0000-000000000000}", &factory),
              kEntryUnknownClass);
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(library_.DllGetClassObject(nullptr, &factory), kEntryInvalidArgument);
    EXPECT_EQ(library_.DllGetClassObject(kEditingScreenClassId, nullptr), kEntryInvalidArgument);

    // Class ids compare without regard to case, and each factory makes only its own class.
    const QByteArray lower = QByteArray(kLookUpListClassId).toLower();
    ASSERT_EQ(library_.DllGetClassObject(lower.constData(), &factory), kEntrySuccess);
    ASSERT_NE(factory, nullptr);
    EXPECT_EQ(factory->CreateEditingScreen(), nullptr);
    EXPECT_NE(factory->CreateLookUpList(), nullptr);
}

TEST_F(ComponentLoaderTest, MissingLibraryOrEntryPointIsAClearError) {
    try {
        host::ComponentLoader loader(QStringLiteral("/nowhere/liborvoedit.so"));
        FAIL() << "a missing library loaded";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("/nowhere/liborvoedit.so"), std::string::npos)
            << error.what();
    }

    // A real library that is not the component.
    const QString other =
        QFileInfo(BuiltLibrary()).absolutePath() + QStringLiteral("/liborvo_platform.so");
    ASSERT_TRUE(QFileInfo::exists(other));
    try {
        host::ComponentLoader loader(other);
        FAIL() << "a library without entry points loaded";
    } catch (const std::runtime_error& error) {
        EXPECT_NE(std::string(error.what()).find("has no entry point DllRegisterServer"),
                  std::string::npos)
            << error.what();
    }
}

TEST_F(ComponentLoaderTest, GlobalObjectsSetOnOneInstanceServeAll) {
    host::ComponentLoader loader(BuiltLibrary());
    test::MainFormGIC gic;
    QObject dac, gc, pv;

    auto list = loader.CreateLookUpList();
    list->SetIGlobal_GIC(&gic);
    list->SetIGlobal_DAC(&dac);
    auto screen = loader.CreateEditingScreen();
    screen->SetIGlobal_GC(&gc);
    screen->SetIGlobal_PV(&pv);

    EXPECT_EQ(screen->IGlobal_GIC(), &gic);
    EXPECT_EQ(screen->IGlobal_DAC(), &dac);
    EXPECT_EQ(list->IGlobal_GC(), &gc);
    EXPECT_EQ(list->IGlobal_PV(), &pv);
    // They outlive the instances that set them.
    list.reset();
    EXPECT_EQ(loader.CreateLookUpList()->IGlobal_GIC(), &gic);
}

TEST_F(ComponentLoaderTest, OnlyTheLastEditingScreenToGoClearsTheMainWindow) {
    host::ComponentLoader loader(BuiltLibrary());
    test::MainFormGIC gic;
    QWidget mainWindow;
    QWidget owner;

    auto first = loader.CreateEditingScreen();
    first->SetIGlobal_GIC(&gic);
    auto second = loader.CreateEditingScreen();
    auto list = loader.CreateLookUpList();
    gic.SetMainForm(&mainWindow);
    first->SetfrmOwner(&owner);

    first.reset();
    EXPECT_EQ(gic.GetMainForm(), &mainWindow);
    // A list still open does not keep the main window: only EditingScreens count.
    second.reset();
    EXPECT_EQ(gic.GetMainForm(), nullptr);
}

TEST_F(ComponentLoaderTest, CanUnloadOnlyWhenNoInstanceLives) {
    host::ComponentLoader loader(BuiltLibrary());
    ASSERT_TRUE(loader.CanUnloadNow());

    auto list = loader.CreateLookUpList();
    EXPECT_FALSE(loader.CanUnloadNow());
    auto screen = loader.CreateEditingScreen();
    list.reset();
    EXPECT_FALSE(loader.CanUnloadNow());
    screen.reset();
    EXPECT_TRUE(loader.CanUnloadNow());
}

// Setting ImaList to anything but an image list fails alike on both classes.
template <class Instance>
void ExpectImaListTakesOnlyAnImageList(Instance& instance) {
    ImageList images;
    QObject notImages;

    instance.SetImaList(&images);
    EXPECT_EQ(instance.ImaList(), &images);
    try {
        instance.SetImaList(&notImages);
        ADD_FAILURE() << "a plain object was taken as image list";
    } catch (const ComponentError& error) {
        EXPECT_STREQ(error.what(),
                     "Incorrect Object Supplied. The ImaList property of the Editor object "
                     "expects a reference to an MSComctlLib.ImageList.");
    }
    EXPECT_EQ(instance.ImaList(), &images);
    instance.SetImaList(nullptr);
    EXPECT_EQ(instance.ImaList(), nullptr);
}

TEST_F(ComponentLoaderTest, ImaListTakesOnlyAnImageList) {
    host::ComponentLoader loader(BuiltLibrary());
    {
        SCOPED_TRACE("EditingScreen");
        ExpectImaListTakesOnlyAnImageList(*loader.CreateEditingScreen());
    }
    {
        SCOPED_TRACE("LookUpList");
        ExpectImaListTakesOnlyAnImageList(*loader.CreateLookUpList());
    }
}

TEST_F(ComponentLoaderTest, DeclaresTheComponentTablesForTheHost) {
    host::ComponentLoader loader(BuiltLibrary());
    schema::Catalog catalog;
    loader.DeclareTables(catalog);
    for (const char* table : {"InsCoTable", "PhaTable", "ELTable", "PatEmpTable", "CovTable"}) {
        EXPECT_NE(catalog.Find(QString::fromLatin1(table)), nullptr) << table;
    }
}

}  // namespace
}  // namespace orvo
