#include "bulletins/CConfiguracionOTBoletin.h"

#include "frame/invoke.h"
#include "tests/catalogues/table_check.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using namespace Zontara;
using namespace support;
using testing::ElementsAre;

TEST(CConfiguracionOTBoletinTest, TableFollowsTheInterface) {
    CConfiguracionOTBoletin configuracion;
    EXPECT_EQ(HeadOf(CConfiguracionOTBoletin::ClassMembers()),
              "CConfiguracionOTBoletin _CConfiguracionOTBoletin creatable");
    EXPECT_EQ(configuracion.Table(), &CConfiguracionOTBoletin::ClassMembers());
    EXPECT_EQ(configuracion.TypeName(), "CConfiguracionOTBoletin");
    EXPECT_THAT(MembersOf(CConfiguracionOTBoletin::ClassMembers()),
                ElementsAre("get UsuarioDestino(): int32", "put UsuarioDestino(value int32): nothing",
                            "get EstatusFinalBoletin(): int16", "put EstatusFinalBoletin(value int16): nothing",
                            "get CodigoEjecutorOT(): int32", "put CodigoEjecutorOT(value int32): nothing",
                            "get EsEjecutorExterno(): bool", "put EsEjecutorExterno(value bool): nothing",
                            "get PrioridadSolicitada(): int32", "put PrioridadSolicitada(value int32): nothing",
                            "get TipoIntervencion(): int32", "put TipoIntervencion(value int32): nothing",
                            "get TotalBoletinesSeleccionados(): int32",
                            "put TotalBoletinesSeleccionados(value int32): nothing"));
}

TEST(CConfiguracionOTBoletinTest, ANewInstanceReadsZeroAndFalse) {
    const CConfiguracionOTBoletin configuracion;
    EXPECT_EQ(configuracion.UsuarioDestino(), 0);
    EXPECT_EQ(configuracion.EstatusFinalBoletin(), 0);
    EXPECT_EQ(configuracion.CodigoEjecutorOT(), 0);
    EXPECT_FALSE(configuracion.EsEjecutorExterno());
    EXPECT_EQ(configuracion.PrioridadSolicitada(), 0);
    EXPECT_EQ(configuracion.TipoIntervencion(), 0);
    EXPECT_EQ(configuracion.TotalBoletinesSeleccionados(), 0);
}

TEST(CConfiguracionOTBoletinTest, WhatIsWrittenReadsBackAndNothingElseChanges) {
    struct Case {
        std::string property;
        std::vector<Value> values;
        Value first;
    };
    const std::vector<Value> whole{std::int32_t{-2147483647 - 1}, std::int32_t{-7}, std::int32_t{2147483647}};
    const std::vector<Case> cases{
        {"UsuarioDestino", whole, std::int32_t{0}},
        {"EstatusFinalBoletin", {std::int16_t{-32768}, std::int16_t{-1}, std::int16_t{32767}}, std::int16_t{0}},
        {"CodigoEjecutorOT", whole, std::int32_t{0}},
        {"EsEjecutorExterno", {true, false, true}, false},
        {"PrioridadSolicitada", whole, std::int32_t{0}},
        {"TipoIntervencion", whole, std::int32_t{0}},
        {"TotalBoletinesSeleccionados", whole, std::int32_t{0}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.property);
        CConfiguracionOTBoletin configuracion;
        for (const Value& value : c.values) {
            Invoke(configuracion, c.property, MemberKind::Put, {{value}, {}});
            EXPECT_EQ(Invoke(configuracion, c.property, MemberKind::Get, {}).value, value);
        }
        for (const Case& other : cases) {
            if (other.property == c.property) continue;
            EXPECT_EQ(Invoke(configuracion, other.property, MemberKind::Get, {}).value, other.first);
        }
    }
}

TEST(CConfiguracionOTBoletinTest, AValueThatDoesNotFitIsNotStored) {
    CConfiguracionOTBoletin configuracion;
    configuracion.EstatusFinalBoletin(2);
    EXPECT_EQ(ErrorOf([&] { Invoke(configuracion, "EstatusFinalBoletin", MemberKind::Put, {{40000}, {}}); }).number, 6);
    EXPECT_EQ(configuracion.EstatusFinalBoletin(), 2);
}

}  // namespace
