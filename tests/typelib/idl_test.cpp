#include "host/typelib/idl.h"
#include "host/program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

using namespace host::typelib;
using ::testing::HasSubstr;
using ::testing::Not;
namespace fs = std::filesystem;

namespace {

std::string ZontaraIdl() { return Idl(*FindLibrary("Zontara")); }

struct Ran {
    int status;
    std::string out;
    std::string err;
};

Ran RunIdl(std::vector<std::string> words) {
    std::ostringstream out;
    std::ostringstream err;
    words.insert(words.begin(), "idl");
    const int status = host::Run(words, {out, err});
    return {status, out.str(), err.str()};
}

/// A folder of the test's own, taken away at the end.
class Folder {
public:
    Folder() {
        std::string pattern = (fs::temp_directory_path() / "zontara-idl-XXXXXX").string();
        path_ = mkdtemp(pattern.data());
    }
    ~Folder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    std::string Path() const { return path_.string(); }

private:
    fs::path path_;
};

TEST(Idl, CarriesTheIdentityOfTheLibrary) {
    EXPECT_THAT(ZontaraIdl(), HasSubstr("[\n"
                                        "    uuid(5B0E4D10-7C1A-4F2B-9E35-84A0C1D20000),\n"
                                        "    version(84.0),\n"
                                        "    lcid(1033),\n"
                                        "    helpstring(\"Fendral: Acceso Datos Preventivo-Sistematico\")\n"
                                        "]\n"
                                        "library Zontara\n"));
}

TEST(Idl, ImportsTheLibrariesWhoseTypesItNames) {
    const std::string text = ZontaraIdl();
    EXPECT_THAT(text, HasSubstr("import \"dhRichClient3.idl\";\nimport \"Perluma.idl\";\n"));
    EXPECT_THAT(text, HasSubstr("    importlib(\"dhRichClient3.tlb\");\n    importlib(\"Perluma.tlb\");\n"));
    EXPECT_THAT(text, Not(HasSubstr("interface _Recordset ")));
    EXPECT_THAT(Idl(*FindLibrary("dhRichClient3")), HasSubstr("interface _Recordset : IDispatch\n"));
    EXPECT_THAT(Idl(*FindLibrary("Perluma")), HasSubstr("interface _ListaCambios : IDispatch\n"));
    EXPECT_THAT(Idl(*FindLibrary("Perluma")), HasSubstr("import \"dhRichClient3.idl\""));
    EXPECT_THAT(Idl(*FindLibrary("dhRichClient3")), Not(HasSubstr("importlib(\"Perluma.tlb\")")));
}

TEST(Idl, DefaultInterfacesAreDualAndHidden) {
    EXPECT_THAT(ZontaraIdl(), HasSubstr("    [\n"
                                        "        odl,\n"
                                        "        uuid(5B0E4D10-7C1A-4F2B-9E35-84A0C1D2020F),\n"
                                        "        hidden,\n"
                                        "        dual,\n"
                                        "        nonextensible,\n"
                                        "        oleautomation\n"
                                        "    ]\n"
                                        "    interface _CBoletin : IDispatch\n"));
}

TEST(Idl, MarksTheApplicationObjectAlone) {
    const std::string text = ZontaraIdl();
    EXPECT_THAT(text, HasSubstr("        appobject\n        PREDECLARED\n    ]\n    coclass CGlobalPreventivo\n"));
    EXPECT_EQ(text.find("appobject"), text.rfind("appobject"));
}

TEST(Idl, GivesTheOutgoingInterfaceAsSource) {
    const std::string text = ZontaraIdl();
    EXPECT_THAT(text, HasSubstr("    dispinterface __CImputacionPreventiva\n"
                                "    {\n"
                                "    properties:\n"
                                "    methods:\n"
                                "        [id(1)]\n"
                                "        void ProcesandoImputacion([in, out] VARIANT* numeroRegistro);\n"
                                "        [id(2)]\n"
                                "        void ImputacionesRecuperadas([in, out] VARIANT* totalRegistros);\n"
                                "    };\n"));
    EXPECT_THAT(text, HasSubstr("    coclass CImputacionPreventiva\n"
                                "    {\n"
                                "        [default] interface _CImputacionPreventiva;\n"
                                "        [default, source] dispinterface __CImputacionPreventiva;\n"
                                "    };\n"));
    EXPECT_EQ(text.find("dispinterface __"), text.rfind("dispinterface __CImputacionPreventiva\n"));
}

struct MemberCase {
    const char* label;
    const char* text;
};

class IdlMemberTest : public ::testing::TestWithParam<MemberCase> {};

TEST_P(IdlMemberTest, ReadsAsItsTableSays) { EXPECT_THAT(ZontaraIdl(), HasSubstr(GetParam().text)); }

INSTANTIATE_TEST_SUITE_P(
    Kinds, IdlMemberTest,
    ::testing::Values(
        MemberCase{"ByReference", "        HRESULT BorrarItem([in, out] long* IDItem);\n"},
        MemberCase{"MoneyAndFloat32",
                   "        HRESULT AgregarItem(\n"
                   "            [in] short numeroItem,\n"
                   "            [in, out] BSTR* Descripcion,\n"
                   "            [in, out] CURRENCY* Costo_Unitario,\n"
                   "            [in, out] float* CantidadNecesaria,\n"
                   "            [in, out] long* NumeroGama);\n"},
        MemberCase{"Result",
                   "        HRESULT CostoTotalMaterialesGama(\n"
                   "            [in] long NumeroGama,\n"
                   "            [out, retval] CURRENCY* result);\n"},
        MemberCase{"OptionalTextByReference", "            [TEXT_BY_REFERENCE(\"=\")] BSTR* UnOperador,\n"},
        MemberCase{"OptionalText", "            [in, optional, defaultvalue(\"\")] BSTR fechaSimulada,\n"},
        MemberCase{"OptionalTrue", "            [in, optional, defaultvalue(-1)] VARIANT_BOOL LasSincronizadas,\n"},
        MemberCase{"OptionalBoolByReference",
                   "            [in, out, optional, defaultvalue(0)] VARIANT_BOOL* ConIDCero,\n"},
        MemberCase{"OptionalObject",
                   "            [in, optional, defaultvalue(0)] _CConfiguracionOTBoletin* ConfiguracionOT,\n"},
        MemberCase{"ObjectOfAnotherLibrary", "            [out, retval] _Recordset** result);\n"},
        MemberCase{"Byte", "            [in] unsigned char Orden_En_Lista,\n"},
        MemberCase{"Date", "            [in] DATE Fecha_Reinicio);\n"},
        MemberCase{"PropertyUnderOneNumber",
                   "        [id(1), propget]\n"
                   "        HRESULT UsuarioDestino([out, retval] long* result);\n"
                   "        [id(1), propput]\n"
                   "        HRESULT UsuarioDestino([in] long value);\n"
                   "        [id(2), propget]\n"},
        MemberCase{"PropertyByReference",
                   "        [id(2), propputref]\n"
                   "        HRESULT OTPreventivaGenerada([in] _ListaCambios* value);\n        [id(3)]\n"}),
    [](const auto& parameter) { return parameter.param.label; });

TEST(IdlCommand, WritesAllThreeLibrariesIntoAFolder) {
    const Folder folder;
    const Ran ran = RunIdl({"--out", folder.Path()});
    ASSERT_EQ(ran.status, host::kDone) << ran.err;
    for (const TypeLibrary& library : TypeLibraries()) {
        std::ifstream file(folder.Path() + "/" + std::string(library.name) + ".idl");
        std::stringstream text;
        text << file.rdbuf();
        EXPECT_EQ(text.str(), Idl(library));
    }
}

TEST(IdlCommand, WritesOneLibraryToTheOutput) {
    EXPECT_EQ(RunIdl({"--library", "perluma"}).out, Idl(*FindLibrary("Perluma")));
}

TEST(IdlCommand, TurnsAnUnknownLibraryDown) {
    const Ran ran = RunIdl({"--library", "Nada"});
    EXPECT_EQ(ran.status, host::kUsage);
    EXPECT_THAT(ran.err, HasSubstr("no such library"));
    EXPECT_EQ(ran.out, "");
}

TEST(IdlCommand, FailsWhereItCantWrite) {
    const Ran ran = RunIdl({"--out", "/dev/null/idl"});
    EXPECT_EQ(ran.status, host::kFailed);
    EXPECT_THAT(ran.err, HasSubstr("couldn't be written"));
}

/// An IDL compiler and the files that it needs, wherever the system keeps them.
std::string Found(const std::vector<std::string>& candidates) {
    for (const std::string& candidate : candidates) {
        if (fs::exists(candidate)) return candidate;
    }
    return "";
}

std::string Compiler() {
    for (const char* name : {"x86_64-w64-mingw32-widl", "widl"}) {
        if (std::system(("command -v " + std::string(name) + " >/dev/null 2>&1").c_str()) == 0) return name;
    }
    return "";
}

class IdlCompilerTest : public ::testing::Test {
protected:
    void SetUp() override {
        compiler_ = Compiler();
        if (compiler_.empty()) GTEST_SKIP() << "no IDL compiler here: install mingw-w64-tools";
        includes_ = Found({"/usr/x86_64-w64-mingw32/include/oaidl.idl", "/usr/share/mingw-w64/include/oaidl.idl",
                           "/usr/include/wine/wine/windows/oaidl.idl", "/usr/include/wine/windows/oaidl.idl"});
        base_ = Found({"/usr/lib/x86_64-linux-gnu/wine/x86_64-windows/stdole2.tlb",
                       "/usr/lib/wine/x86_64-windows/stdole2.tlb", "/usr/lib64/wine/x86_64-windows/stdole2.tlb"});
        if (includes_.empty() || base_.empty()) GTEST_SKIP() << "no base files of IDL here: install libwine-dev";
        ASSERT_EQ(RunIdl({"--out", folder_.Path()}).status, host::kDone);
    }

    /// Compiles a library of the folder; what the compiler says goes to a file.
    bool Compiles(std::string_view library) {
        std::ostringstream command;
        command << "cd " << folder_.Path() << " && " << compiler_ << " -t -I . -I " << DirectoryOf(includes_)
                << " -L . -L " << DirectoryOf(base_) << " -o " << library << ".tlb " << library << ".idl > said 2>&1";
        return std::system(command.str().c_str()) == 0;
    }
    std::string Contents(const std::string& name) const {
        std::ifstream file(folder_.Path() + "/" + name, std::ios::binary);
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }

private:
    static std::string DirectoryOf(const std::string& path) { return fs::path(path).parent_path().string(); }

    Folder folder_;
    std::string compiler_;
    std::string includes_;
    std::string base_;
};

TEST_F(IdlCompilerTest, TakesAllThreeLibraries) {
    for (const TypeLibrary& library : TypeLibraries()) {
        ASSERT_TRUE(Compiles(library.name)) << library.name << "\n" << Contents("said");
    }
    // Types of the neighbours are referred to, not held twice.
    const std::string compiled = Contents("Zontara.tlb");
    EXPECT_THAT(compiled, HasSubstr("dhRichClient3.tlb"));
    EXPECT_THAT(compiled, HasSubstr("Perluma.tlb"));
    EXPECT_THAT(compiled, HasSubstr("__CImputacionPreventiva"));
    EXPECT_THAT(compiled, HasSubstr("Fendral: Acceso Datos Preventivo-Sistematico"));
    EXPECT_THAT(compiled, Not(HasSubstr("_Recordset")));
}

}  // namespace
