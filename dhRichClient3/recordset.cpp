#include "dhRichClient3/recordset.h"

#include "dhRichClient3/row_store.h"
#include "frame/convert.h"
#include "frame/raised_error.h"

#include <memory>
#include <typeinfo>
#include <utility>
#include <vector>

namespace dhRichClient3 {
namespace {

using Zontara::Ref;
using Zontara::RunTimeError;
using Zontara::Value;

constexpr std::string_view kSource = "dhRichClient3";

[[noreturn]] void RaiseFrom(RunTimeError error, const std::string& detail) {
    Zontara::RaiseError(static_cast<std::int32_t>(error), std::string(kSource), Zontara::TextOf(error) + detail);
}

/// Those of a recordset that was never opened.
const std::shared_ptr<const RowStore>& NoRows() {
    static const auto none = std::make_shared<const RowStore>();
    return none;
}

/// The rows of one opening and the row that the cursor stands on; shared by the recordset and its fields.
struct Rows {
    std::shared_ptr<const RowStore> store = NoRows();
    std::size_t current = 0;

    std::size_t PositionOf(std::string_view name) const {
        const std::size_t position = store->Find(name);
        if (position == RowStore::kNone) RaiseFrom(RunTimeError::NoSuchField, ": " + std::string(name));
        return position;
    }
    Value At(std::size_t column) const {
        if (current >= store->Rows()) RaiseFrom(RunTimeError::NoCurrentRow, "");
        return store->At(current, column);
    }
};

class Field final : public Zontara::Campo {
public:
    Field(std::shared_ptr<const Rows> rows, std::size_t column) : rows_(std::move(rows)), column_(column) {}
    Value Valor() const override { return rows_->At(column_); }

private:
    std::shared_ptr<const Rows> rows_;
    std::size_t column_;
};

class Fields final : public Zontara::Campos {
public:
    void Show(std::shared_ptr<const Rows> rows) {
        rows_ = std::move(rows);
        fields_.clear();
    }

    Ref<Zontara::Campo> Item(const Value& name) override {
        const std::size_t column = name.Is<std::string>() ? rows_->PositionOf(name.Get<std::string>())
                                                          : rows_->PositionOf(Zontara::ConvertTo<std::string>(name));
        fields_.resize(rows_->store->Columns());
        auto& field = fields_[column];
        if (!field) field = std::make_shared<Field>(rows_, column);
        return field;
    }
    Value Valor(std::string_view name) const override { return rows_->At(rows_->PositionOf(name)); }

private:
    std::shared_ptr<const Rows> rows_;
    std::vector<Ref<Zontara::Campo>> fields_;
};

/// What a connection gives rows by; none if it gives none.
RowSource* SourceOf(Zontara::Conexion* connection) {
    if (connection == nullptr) return nullptr;
    // A look at the class spares a search through what it derives from.
    if (typeid(*connection) == typeid(Connection)) return static_cast<Connection*>(connection);
    return dynamic_cast<RowSource*>(connection);
}

class MemoryRecordset final : public Zontara::Recordset {
public:
    void ConexionActiva(const Ref<Zontara::Conexion>& conexion) override { connection_ = conexion; }
    void TextoSQL(const std::string& texto) override { sql_ = texto; }

    void Abrir(const std::string&, const Value&, std::int32_t) override {
        RowSource* const source = SourceOf(connection_.get());
        if (source == nullptr) RaiseFrom(RunTimeError::ObjectNotSet, ": the recordset has no connection to open it on");
        auto fetched = source->Fetch(sql_);
        if (fields_) {
            // Fields that a client keeps stay with the rows that they were found in.
            rows_ = std::make_shared<Rows>();
            fields_->Show(rows_);
        }
        rows_->store = std::move(fetched);
        rows_->current = 0;
    }

    std::int32_t TotalRegistros() const override { return Zontara::NarrowToInt32(Count(rows_->store->Rows())); }
    void MoverPrimero() override { rows_->current = 0; }
    void MoverSiguiente() override {
        if (!FinDeDatos()) ++rows_->current;
    }
    bool FinDeDatos() const override { return rows_->current >= rows_->store->Rows(); }
    Ref<Zontara::Campos> LosCampos() override {
        if (!fields_) {
            fields_ = std::make_shared<Fields>();
            fields_->Show(rows_);
        }
        return fields_;
    }

    Value Valor(std::string_view campo) const override { return rows_->At(rows_->PositionOf(campo)); }
    std::int32_t TotalColumnas() const override { return static_cast<std::int32_t>(rows_->store->Columns()); }
    std::string NombreColumna(std::int32_t posicion) const override {
        return rows_->store->ColumnName(Checked(posicion));
    }
    Value ValorEn(std::int32_t posicion) const override { return rows_->At(Checked(posicion)); }

private:
    static std::int64_t Count(std::size_t rows) { return static_cast<std::int64_t>(rows); }
    std::size_t Checked(std::int32_t position) const {
        if (position < 0 || position >= TotalColumnas()) {
            RaiseFrom(RunTimeError::NoSuchField, ": column " + std::to_string(position));
        }
        return static_cast<std::size_t>(position);
    }

    Ref<Zontara::Conexion> connection_;
    std::string sql_;
    std::shared_ptr<Rows> rows_ = std::make_shared<Rows>();
    /// Made when they are asked for.
    Ref<Fields> fields_;
};

}  // namespace

Ref<Zontara::Recordset> NewRecordset() { return std::make_shared<MemoryRecordset>(); }

}  // namespace dhRichClient3
