#include "errors/trap.h"

#include "tests/errors/doubles.h"

#include <new>
#include <stdexcept>

namespace errors_test {
namespace {

class TrapTest : public ErrorsTest {};

TEST_F(TrapTest, GivesTheResultOfTheWorkAndAsksForNothingElse) {
    bool asked = false;
    const auto values = [&] {
        asked = true;
        return Value(1);
    };
    EXPECT_EQ(Trap(
                  "A.B(c)", [] { return 42; }, values),
              42);
    EXPECT_EQ(TrapWithoutConnection(
                  "A.B(c)", [] { return std::string("x"); }, values),
              "x");
    Trap(
        "A.B(c)", [] {}, values);
    EXPECT_FALSE(asked);
    EXPECT_EQ(provider->connectionsGiven, 0);
}

TEST_F(TrapTest, ReportsWithTheValuesOfTheTimeOfTheFailure) {
    int counter = 1;
    const ErrorRecord raised = RaisedBy([&] {
        Trap(
            "CBoletin.Borrar(SC_Boletin)",
            [&] {
                counter = 17;
                RaiseRefused();
            },
            [&] { return Arguments(counter); });
    });
    EXPECT_EQ(raised, (ErrorRecord{kRefused, "HuntERR.ErrorIn", Joined({kRefusedHeader, kBorrarLine}), "", 0, 0, 0}));
    EXPECT_EQ(provider->connectionsGiven, 1);
}

TEST_F(TrapTest, ShowsOneValueAsItselfSeveralAsAListAndNoneAsNothing) {
    EXPECT_EQ(Arguments(), Value(Absent{}));
    EXPECT_EQ(Arguments(5), Value(5));
    EXPECT_EQ(Arguments(5, "x"), Value(Array{Value(5), Value("x")}));
}

/// A launch, inside it the making of a bulletin, inside it the record's own method.
void Launch(const std::string& nota) {
    Trap(
        "CImputacionPreventiva.LanzarPreventivo(Fecha_Lanzamiento,SC_Usuario,TipoFrecuencia)",
        [&] {
            TrapWithoutConnection(
                "CImputacionPreventiva.GeneroBoletin(rs,Fecha_Lanzamiento,SC_Usuario,Frecuencia)",
                [&] {
                    Trap(
                        "CBoletin.Salvar(SC_Boletin,Nota)", [] { RaiseRefused(); },
                        [&] { return Arguments(17, nota); });
                },
                [] {
                    return Arguments(Ref<Object>(std::make_shared<ObjectDouble>("Recordset")), Date{46086.0}, 3,
                                     "Semanal");
                });
        },
        [] { return Arguments(Date{46086.0}, 3, Absent{}); });
}

TEST_F(TrapTest, ANestedFailureHasOneHeaderAndItsLinesInnermostFirst) {
    const ErrorRecord raised = RaisedBy([] { Launch("Cambiar el filtro de aceite\ny anotar la lectura"); });
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_EQ(raised.source, "HuntERR.ErrorIn");
    EXPECT_EQ(raised.description,
              "UNIQUE constraint failed \r\n"
              "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
              "  Method: CBoletin.Salvar \r\n"
              "  Number: -2147221485 = &H80040013 = vbObjectError + 19 = ERRMAP_APP_FIRST - 5179 \r\n"
              "  Source: dhRichClient3 \r\n"
              "  Description: UNIQUE constraint failed\r\n"
              "  Call Stack: CBoletin.Salvar(SC_Boletin=17, Nota={Text}) ------------------------------------------\r\n"
              "    Value Of Nota:\r\n"
              "      'Cambiar el filtro de aceite\n"
              "      y anotar la lectura'\r\n"
              "  Call Stack: CImputacionPreventiva.GeneroBoletin(rs={Recordset}, Fecha_Lanzamiento='05/03/2026', "
              "SC_Usuario=3, Frecuencia='Semanal') \r\n"
              "  Call Stack: CImputacionPreventiva.LanzarPreventivo(Fecha_Lanzamiento='05/03/2026', SC_Usuario=3, "
              "TipoFrecuencia=) \r\n");
}

TEST_F(TrapTest, LeavesNoRoomForWhatIsLeftOfAnEarlierFailure) {
    RaisedBy([] { Launch("x"); });
    const ErrorRecord raised = RaisedBy([] {
        Trap(
            "CBoletin.Borrar(SC_Boletin)", [] { RaiseRefused(); }, [] { return Arguments(17); });
    });
    EXPECT_EQ(raised.description, Joined({kRefusedHeader, kBorrarLine}));
}

TEST_F(TrapTest, ReportsForeignExceptions) {
    const struct {
        const char* label;
        void (*work)();
        std::int32_t number;
        const char* description;
    } rows[] = {
        {"out of memory", [] { throw std::bad_alloc(); }, 7, "Out of memory"},
        {"a derived one", [] { throw std::bad_array_new_length(); }, 7, "Out of memory"},
        {"a standard one", [] { throw std::out_of_range("position 9"); }, 440, "position 9"},
        {"a number", [] { throw 9; }, 440, "Unknown exception"},
        {"a text", [] { throw "text"; }, 440, "Unknown exception"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.label);
        const ErrorRecord raised = RaisedBy([&] { TrapWithoutConnection("A.B", row.work); });
        EXPECT_EQ(raised.number, row.number);
        EXPECT_EQ(raised.source, "HuntERR.ErrorIn");
        EXPECT_TRUE(raised.description.starts_with(std::string(row.description) + " \r\n  Time="));
        EXPECT_NE(raised.description.find("\r\n  Source: Zontara \r\n"), std::string::npos);
        EXPECT_TRUE(raised.description.ends_with(
            "  Call Stack: A.B() "
            "--------------------------------------------------------------------------------\r\n"));
    }
}

TEST_F(TrapTest, ReportsOutOfMemoryAsAWhole) {
    const ErrorRecord raised = RaisedBy([] {
        Trap(
            "CBoletin.Borrar(SC_Boletin)", [] { throw std::bad_alloc(); }, [] { return Arguments(17); });
    });
    EXPECT_EQ(
        raised.description,
        "Out of memory \r\n"
        "  Time='03/05/26 08:00:00' App='planner:84.0.0' ADO-version='2.8' Computer='PLANT-1' \r\n"
        "  Method: CBoletin.Borrar \r\n"
        "  Number: 7 = &H7 = vbObjectError + 2147221511 = ERRMAP_APP_FIRST + 2147216313 \r\n"
        "  Source: Zontara \r\n"
        "  Description: Out of memory\r\n"
        "  Call Stack: CBoletin.Borrar(SC_Boletin=17) -------------------------------------------------------\r\n");
}

TEST_F(TrapTest, CarriesHelpFileAndContextThroughEveryLevel) {
    const ErrorRecord raised = RaisedBy([] {
        Trap("Out.Er", [] {
            TrapWithoutConnection("In.Ner", [] { throw RaisedError({-5, "engine", "text", "help.chm", 77, 0, 0}); });
        });
    });
    EXPECT_EQ(raised.number, -5);
    EXPECT_EQ(raised.helpFile, "help.chm");
    EXPECT_EQ(raised.helpContext, 77);
}

TEST_F(TrapTest, LetsAUserErrorThroughPlainAtEveryLevel) {
    const ErrorRecord raised = RaisedBy([] {
        Trap("Out.Er", [] { Trap("In.Ner", [] { RaiseError(-2147217000, "Perluma", "No crew on Sundays"); }); });
    });
    EXPECT_EQ(raised, (ErrorRecord{-2147217000, "Perluma", "No crew on Sundays", "", 0, 0, 0}));
}

TEST_F(TrapTest, PassesAFailureToGetTheConnectionOnAsItIs) {
    provider->onConnection = [] { RaiseError(-2147217000 + 7000, "Perluma", "session closed"); };
    const ErrorRecord raised = RaisedBy([] { Trap("A.B", [] { RaiseRefused(); }); });
    EXPECT_EQ(raised, (ErrorRecord{-2147217000 + 7000, "Perluma", "session closed", "", 0, 0, 0}));
    EXPECT_FALSE(Fields().mErrPreserved);
}

TEST_F(TrapTest, SaysThatNoSessionIsOpenWhenThereIsNoProvider) {
    InstallProvider(nullptr);
    const ErrorRecord raised = RaisedBy([] { Trap("A.B", [] { RaiseRefused(); }); });
    EXPECT_EQ(raised.number, 91);
    EXPECT_EQ(raised.source, "Zontara");
    EXPECT_FALSE(Fields().mErrPreserved);
}

TEST_F(TrapTest, ReportsWithoutTheValuesWhenTheyCannotBeGathered) {
    const ErrorRecord raised = RaisedBy([] {
        Trap(
            "CBoletin.Borrar(SC_Boletin)", [] { RaiseRefused(); }, []() -> Value { throw std::bad_alloc(); });
    });
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_EQ(raised.description,
              Joined({kRefusedHeader, "  Call Stack: CBoletin.Borrar() " + std::string(68, '-') + "\r\n"}));
}

TEST_F(TrapTest, ReportsTheNextFailureAfterAHandlerThatWasLeftEarly) {
    provider->onConnection = [] { throw std::bad_alloc(); };
    EXPECT_THROW(Trap("A.B", [] { RaiseRefused(); }), std::bad_alloc);
    const ErrorRecord raised = RaisedBy([] { TrapWithoutConnection("C.D", [] { Raise(RunTimeError::Overflow); }); });
    EXPECT_EQ(raised.number, 6);
    EXPECT_TRUE(raised.description.starts_with("Overflow \r\n"));
}

TEST_F(TrapTest, ReportsItsOwnFailureWhateverTheSearchForTheConnectionWentThrough) {
    provider->onConnection = [] {
        RaisedBy([] { TrapWithoutConnection("Session.Reopen", [] { Raise(RunTimeError::Overflow); }); });
    };
    const ErrorRecord raised = RaisedBy([] {
        Trap(
            "CBoletin.Borrar(SC_Boletin)", [] { RaiseRefused(); }, [] { return Arguments(17); });
    });
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_EQ(raised.description, Joined({kRefusedHeader, kBorrarLine}));
}

class ReentrantTest : public ErrorsTest {
protected:
    std::shared_ptr<ObjectDouble> connection = ConnectionDouble();
    ErrorRecord Raised() {
        SetRefused();
        return RaisedBy([&] { ErrorIn("CBoletin.Borrar(SC_Boletin)", Value(17), 19, connection); });
    }
    std::string EndingOf(const ErrorRecord& raised) {
        return raised.description.substr(raised.description.find("    Transaction: "));
    }
};

TEST_F(ReentrantTest, AFailureOfTheCleanUpIsWrittenDownPlain) {
    connection->calls["RollbackTrans"] = [] {
        TrapWithoutConnection("Outer.Undo", [] { Trap("Inner.Undo", [] { Raise(RunTimeError::Overflow); }); });
    };
    const ErrorRecord raised = Raised();
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_TRUE(raised.description.starts_with(Joined({kRefusedHeader, "  ADO Info: \r\n"})));
    EXPECT_EQ(EndingOf(raised), "    Transaction: Attempt to call RollbackTrans failed with error 'Overflow'\r\n");
    EXPECT_FALSE(Fields().mErrPreserved);
    EXPECT_FALSE(Fields().inErrorIn);
}

TEST_F(ReentrantTest, AFailureThatTheCleanUpSwallowsLeavesNoTrace) {
    connection->calls["RollbackTrans"] = [] {
        EXPECT_EQ(RaisedBy([] { Trap("A.B", [] { Raise(RunTimeError::Overflow); }); }).number, 6);
    };
    const ErrorRecord raised = Raised();
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_EQ(EndingOf(raised), "    Transaction: Attempt to call RollbackTrans succeeded\r\n");
}

TEST_F(ReentrantTest, TheCleanUpsOwnReportsDoNotUndoAnythingOnceMore) {
    connection->calls["RollbackTrans"] = [this] {
        SetCurrent(6, "Zontara", "Overflow");
        ErrorIn("A.B", Absent{}, 19, connection);
    };
    EXPECT_EQ(Raised().number, kRefused);
    EXPECT_EQ(connection->Called(), std::vector<std::string>{"RollbackTrans"});
}

TEST_F(ReentrantTest, WithoutAnErrorItSaysThatTheErrorWasLost) {
    connection->calls["RollbackTrans"] = [] {
        ClearError();
        EXPECT_EQ(ErrorIn("A.B", Absent{}, ERRF_REPORT), "");
        ErrorIn("A.B", Absent{}, 43);
    };
    const ErrorRecord raised = Raised();
    EXPECT_EQ(raised.number, kRefused);
    EXPECT_EQ(
        EndingOf(raised),
        "    Transaction: Attempt to call RollbackTrans failed with error 'ErrorIn: Error information was lost. To "
        "fix: call ErrPreserve before doing anything in error handler.'\r\n");
}

TEST_F(ReentrantTest, TheDialogDoesNotStopAtAFailureOfTheCleanUp) {
    switches.ErrStepEnabled = true;
    platform->answer = BoxAnswer::Yes;
    connection->calls["RollbackTrans"] = [] { Trap("A.B", [] { Raise(RunTimeError::Overflow); }); };
    EXPECT_EQ(Raised().number, kRefused);
    EXPECT_TRUE(platform->boxes.empty());
}

}  // namespace
}  // namespace errors_test
