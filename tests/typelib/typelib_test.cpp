#include "host/typelib/libraries.h"
#include "host/typelib/listing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

using namespace host::typelib;

namespace {

std::string Contents(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

/// The place of the first line in which two texts differ, for a message that can be read.
std::string FirstDifference(const std::string& left, const std::string& right) {
    std::istringstream a(left);
    std::istringstream b(right);
    int number = 0;
    for (;;) {
        std::string lineA;
        std::string lineB;
        const bool moreA = static_cast<bool>(std::getline(a, lineA));
        const bool moreB = static_cast<bool>(std::getline(b, lineB));
        ++number;
        if (!moreA && !moreB) return "none";
        if (lineA != lineB || moreA != moreB) return "line " + std::to_string(number) + "\n" + lineA + "\n" + lineB;
    }
}

TEST(TypeLibrary, IsWhatIsWrittenDown) {
    const std::string written = Contents(std::string(ZONTARA_SOURCE_DIR) + "/tests/typelib/zontara.typelib.txt");
    ASSERT_FALSE(written.empty());
    EXPECT_TRUE(ListingOfAll() == written) << FirstDifference(written, ListingOfAll());
}

TEST(TypeLibrary, ComesBehindThoseThatItImports) {
    std::vector<std::string> names;
    for (const TypeLibrary& library : TypeLibraries())
        names.emplace_back(library.name);
    EXPECT_THAT(names, ::testing::ElementsAre("dhRichClient3", "Perluma", "Zontara"));
    EXPECT_THAT(TypeLibraries().back().imports, ::testing::ElementsAre("dhRichClient3", "Perluma"));
}

TEST(TypeLibrary, HoldsTheClassesInRegistrationOrder) {
    std::vector<std::string> names;
    for (const LibraryClass& each : FindLibrary("zontara")->classes)
        names.emplace_back(each.table->name);
    EXPECT_THAT(names, ::testing::ElementsAre("CMaterialGama", "CConfiguracionOTBoletin", "CEjecutorGama",
                                              "CUsuarioEjecutorGama", "CUnidadLectura", "COrdenGenerada",
                                              "CLecturaEquipo", "CImputacionSistematica", "CImputacionPreventiva",
                                              "CImputacionParalela", "CGrupoGama", "CGama", "CEquipo",
                                              "CDocumentoEquipo", "CBoletin", "CGlobalPreventivo"));
}

TEST(TypeLibrary, GivesEveryIdentifierOnce) {
    std::vector<std::string> identifiers;
    for (const TypeLibrary& library : TypeLibraries()) {
        identifiers.push_back(Zontara::ToText(library.id));
        for (const LibraryClass& each : library.classes) {
            identifiers.push_back(Zontara::ToText(each.classId));
            identifiers.push_back(Zontara::ToText(each.interfaceId));
            if (!each.table->events.empty()) identifiers.push_back(Zontara::ToText(each.eventsId));
        }
    }
    const std::size_t all = identifiers.size();
    std::sort(identifiers.begin(), identifiers.end());
    identifiers.erase(std::unique(identifiers.begin(), identifiers.end()), identifiers.end());
    EXPECT_EQ(identifiers.size(), all);
}

TEST(TypeLibrary, NamesOnlyClassesThatStandInOneOfTheLibraries) {
    for (const TypeLibrary& library : TypeLibraries()) {
        for (const LibraryClass& each : library.classes) {
            for (const Zontara::Member& member : each.table->members) {
                std::vector<Zontara::TypeOf> types{member.result};
                for (const Zontara::Argument& argument : member.arguments)
                    types.push_back(argument.type);
                for (const Zontara::TypeOf& type : types) {
                    if (type.word != Zontara::TypeWord::Object) continue;
                    EXPECT_NE(FindTable(type.className), nullptr) << each.table->name << "." << member.name;
                }
            }
        }
    }
}

TEST(TypeLibrary, FindsTablesWithoutRegardToCaseAndWithTheLibrarysName) {
    EXPECT_EQ(FindTable("zontara.cboletin")->name, "CBoletin");
    EXPECT_EQ(FindTable("RECORDSET")->name, "Recordset");
    EXPECT_EQ(FindTable("listacambios")->name, "ListaCambios");
    EXPECT_EQ(FindTable("CNada"), nullptr);
    EXPECT_EQ(FindLibrary("CBoletin"), nullptr);
}

}  // namespace
