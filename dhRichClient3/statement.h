#pragma once

#include "frame/money.h"
#include "frame/value.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace dhRichClient3 {

struct Compiled;
class Engine;

/// A compiled statement with parameters, lent by `Connection::Prepare`; when it goes it is reset, its parameters are
/// cleared, and it is kept for the next one who asks for the same text. Keeps the database open while it lives. Two
/// of one text may be alive at a time. Errors as for `Connection::Ejecutar`.
///
///     auto find = connection.Prepare("SELECT Nombre FROM Equipo WHERE ID_Equipo = ?1");
///     find.Bind(1, id);
///     while (find.Step()) use(find.Text(0));
class Statement {
public:
    Statement(Statement&& other) noexcept;
    Statement& operator=(Statement&& other) noexcept;
    ~Statement();

    /// Sets a parameter, the first being 1; a statement that has been stepped starts anew. A text is copied. Money goes
    /// in as a whole number where it is one, else as the nearest REAL. Error 25 for a parameter that isn't there.
    Statement& Bind(int parameter, std::int32_t value);
    Statement& Bind(int parameter, std::int64_t value);
    Statement& Bind(int parameter, double value);
    /// Goes in as the number that its default text reads as, which is what a statement's literal would store.
    Statement& Bind(int parameter, float value);
    Statement& Bind(int parameter, Zontara::Money value);
    Statement& Bind(int parameter, std::string_view value);
    /// A text that isn't copied: it must outlive the run.
    Statement& BindKept(int parameter, std::string_view value);
    Statement& Bind(int parameter, Zontara::Null);
    Statement& Bind(int parameter, std::nullptr_t) { return Bind(parameter, Zontara::Null{}); }

    /// To the next row. False when there is none any more; the step after that starts anew.
    bool Step();
    /// Runs to the end, leaves rows unread, and is ready for the next parameters.
    void Run();
    /// Back to before the first row; the parameters stay.
    void Reset();

    /// A column of the current row, the first being 0. Null reads as 0 or the empty text; a text as the number that it
    /// starts with. Error 6 when a number doesn't fit.
    std::int32_t Int(int column) const;
    std::int64_t Int64(int column) const;
    double Real(int column) const;
    std::string Text(int column) const;
    bool IsNull(int column) const;
    /// As a recordset would hold it: int32, else float64, text or null.
    Zontara::Value Value(int column) const;
    int ColumnCount() const;

private:
    friend class Engine;
    Statement(std::shared_ptr<Engine> engine, std::unique_ptr<Compiled> held);
    void GiveBack() noexcept;
    void BeforeBinding();

    std::shared_ptr<Engine> engine_;
    std::unique_ptr<Compiled> held_;
    bool stepped_ = false;
};

}  // namespace dhRichClient3
