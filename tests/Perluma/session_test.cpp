#include "Perluma/session.h"

#include "tests/Perluma/session_fixture.h"

namespace {

using support::ErrorOf;

class SesionTest : public SessionTest {};

TEST_F(SesionTest, GivesTheConnectionItWasOpenedOnAndStartsAtDepthZero) {
    Zontara::SesionGlobal& session = provider->Session();
    EXPECT_EQ(session.LaConexion(), connection);
    EXPECT_EQ(session.LaConexion(), session.LaConexion());
    EXPECT_EQ(session.ProfundidadTransaccion(), 0);
    session.ProfundidadTransaccion(255);
    EXPECT_EQ(session.ProfundidadTransaccion(), 255);
    EXPECT_FALSE(connection->InTransaction());
}

TEST_F(SesionTest, TheGeneratorIsOneForTheWholeSession) {
    EXPECT_EQ(provider->Session().ElGeneradorClaves(), provider->Session().ElGeneradorClaves());
}

TEST_F(SesionTest, SingleQuotesAreDoubledAndNothingElseChanges) {
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", ""}, {"oil", "oil"}, {"d'oil", "d''oil"}, {"''", "''''"}, {"a\"b\\c\r\nñ%", "a\"b\\c\r\nñ%"}};
    for (const auto& [text, fit] : cases) {
        SCOPED_TRACE(text);
        EXPECT_EQ(provider->Session().TextoParaSQL(text), fit);
        EXPECT_EQ(Rows("SELECT '" + fit + "'").front(), text);
    }
}

TEST(Sesion, NeedsAConnection) {
    EXPECT_EQ(ErrorOf([] { Perluma::Sesion session(nullptr); }).number,
              static_cast<std::int32_t>(Zontara::RunTimeError::ObjectNotSet));
}

TEST(OpenSession, PutsItsProviderInPlace) {
    const auto connection = dhRichClient3::Connection::Open(":memory:");
    const auto provider = Perluma::OpenSession(connection);
    EXPECT_EQ(Zontara::InstalledProvider(), provider);
    EXPECT_EQ(Zontara::Session().LaConexion(), connection);
    Zontara::InstallProvider(nullptr);
}

TEST_F(SesionTest, RecordsetsListsAndServicesAreMadeAnew) {
    EXPECT_NE(provider->NewRecordset(), provider->NewRecordset());
    EXPECT_NE(provider->NewListaCambios(), provider->NewListaCambios());
    EXPECT_NE(provider->NewServicioActivos(), provider->NewServicioActivos());
    EXPECT_NE(provider->Perluma().Activos(), nullptr);
    EXPECT_NE(provider->Perluma().Procesos(), nullptr);
    EXPECT_NE(provider->Perluma().MaterialesOT(), nullptr);
    EXPECT_NE(provider->Perluma().OrdenesTrabajo(), nullptr);
}

}  // namespace
