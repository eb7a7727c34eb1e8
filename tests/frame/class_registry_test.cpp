#include "frame/class_registry.h"

#include "frame/entry_points.h"
#include "frame/raised_error.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

namespace {

using namespace Zontara;

TEST(ClassRegistryTest, KnowsTheSixteenClassesInRegistrationOrder) {
    std::vector<std::string> names;
    for (const RegisteredClass& each : Descriptor().classes)
        names.emplace_back(each.table().name);
    EXPECT_EQ(names, (std::vector<std::string>{"CMaterialGama", "CConfiguracionOTBoletin", "CEjecutorGama",
                                               "CUsuarioEjecutorGama", "CUnidadLectura", "COrdenGenerada",
                                               "CLecturaEquipo", "CImputacionSistematica", "CImputacionPreventiva",
                                               "CImputacionParalela", "CGrupoGama", "CGama", "CEquipo",
                                               "CDocumentoEquipo", "CBoletin", "CGlobalPreventivo"}));
}

TEST(ClassRegistryTest, DescribesTheComponent) {
    EXPECT_EQ(Descriptor().libraryName, "Zontara");
    EXPECT_EQ(Descriptor().helpText, "Fendral: Acceso Datos Preventivo-Sistematico");
    EXPECT_EQ(Descriptor().versionMajor, 84);
    EXPECT_EQ(Descriptor().versionMinor, 0);
    EXPECT_EQ(Descriptor().locale, 1033);
}

TEST(ClassRegistryTest, EachClassCreatesItselfUnderItsOwnNameAndInterface) {
    std::set<std::string> identifiers{ToText(Descriptor().libraryId)};
    for (const RegisteredClass& each : Descriptor().classes) {
        const ClassTable& table = each.table();
        EXPECT_EQ(table.interfaceName, "_" + std::string(table.name));
        EXPECT_EQ(table.appObject, table.name == "CGlobalPreventivo");
        EXPECT_EQ(table.events.size(), table.name == "CImputacionPreventiva" ? 2U : 0U);
        EXPECT_EQ(each.eventsId == Guid{}, table.events.empty());
        const Ref<Object> object = CreateByName("Zontara." + std::string(table.name));
        EXPECT_EQ(object->Table(), &table);
        EXPECT_EQ(object->TypeName(), table.name);
        EXPECT_EQ(FindClass(each.classId), &each);
        EXPECT_TRUE(identifiers.insert(ToText(each.classId)).second);
        EXPECT_TRUE(identifiers.insert(ToText(each.interfaceId)).second);
    }
}

TEST(ClassRegistryTest, NamesIgnoreCaseAndUnknownOnesAreError429) {
    EXPECT_EQ(CreateByName("cboletin")->TypeName(), "CBoletin");
    EXPECT_EQ(FindClass("Zontara."), nullptr);
    EXPECT_EQ(FindClass(Guid{}), nullptr);
    try {
        CreateByName("CBoletines");
        FAIL();
    } catch (const RaisedError& error) {
        EXPECT_EQ(error.Number(), 429);
        EXPECT_EQ(error.Description(), "Component can't create object: CBoletines");
    }
}

TEST(ClassRegistryTest, IdentifiersHaveTheUsualTextForm) {
    EXPECT_EQ(ToText(Descriptor().libraryId), "5B0E4D10-7C1A-4F2B-9E35-84A0C1D20000");
}

class RecordingRuntime : public ComponentRuntime {
public:
    EntryResult RegisterServer(const ComponentDescriptor& component) override { return Note("register", component); }
    EntryResult UnregisterServer(const ComponentDescriptor& component) override {
        return Note("unregister", component);
    }
    EntryResult GetClassObject(const ComponentDescriptor& component, const Guid& classId, const Guid&,
                               void** factory) override {
        *factory = this;
        asked = classId;
        return Note("class object", component);
    }
    EntryResult CanUnloadNow(const ComponentDescriptor& component) override { return Note("unload", component); }

    EntryResult Note(const char* what, const ComponentDescriptor& component) {
        EXPECT_EQ(&component, &Descriptor());
        calls.emplace_back(what);
        return EntryResult::False;
    }

    std::vector<std::string> calls;
    Guid asked;
};

TEST(EntryPointsTest, HandTheDescriptorToTheRuntimeAndNothingElse) {
    RecordingRuntime runtime;
    ReplaceRuntime(&runtime);
    const Guid classId = Descriptor().classes[4].classId;
    void* factory = nullptr;
    EXPECT_EQ(DllRegisterServer(), 1);
    EXPECT_EQ(DllUnregisterServer(), 1);
    EXPECT_EQ(DllGetClassObject(&classId, &classId, &factory), 1);
    EXPECT_EQ(DllCanUnloadNow(), 1);
    EXPECT_EQ(ReplaceRuntime(nullptr), &runtime);
    EXPECT_EQ(runtime.calls, (std::vector<std::string>{"register", "unregister", "class object", "unload"}));
    EXPECT_EQ(runtime.asked, classId);
    EXPECT_EQ(factory, &runtime);
}

TEST(EntryPointsTest, ThePlainRuntimeHandsOutFactoriesAndCountsObjects) {
    const Guid classId = Descriptor().classes[4].classId;
    void* factory = nullptr;
    EXPECT_EQ(DllRegisterServer(), 0);
    EXPECT_EQ(DllUnregisterServer(), 0);
    ASSERT_EQ(DllGetClassObject(&classId, &classId, &factory), 0);
    {
        const Ref<Object> object = static_cast<const RegisteredClass*>(factory)->table().create();
        EXPECT_EQ(object->TypeName(), "CUnidadLectura");
        EXPECT_EQ(DllCanUnloadNow(), 1);
    }
    EXPECT_EQ(DllCanUnloadNow(), 0);
    const Guid unknown{};
    EXPECT_EQ(DllGetClassObject(&unknown, &unknown, &factory), static_cast<std::int32_t>(0x80040111));
    EXPECT_EQ(factory, nullptr);
    EXPECT_EQ(DllGetClassObject(nullptr, &unknown, &factory), static_cast<std::int32_t>(0x80004003));
    EXPECT_EQ(DllGetClassObject(&classId, &classId, nullptr), static_cast<std::int32_t>(0x80004003));
}

}  // namespace
