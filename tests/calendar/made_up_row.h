#pragma once

#include "frame/member_table.h"
#include "frame/neighbours.h"
#include "frame/raised_error.h"

#include <string>
#include <utility>
#include <vector>

namespace support {

/// A recordset of one row that exists nowhere, and that remembers which of its fields were read.
class MadeUpRow : public Zontara::Recordset {
public:
    using Fields = std::vector<std::pair<std::string, Zontara::Value>>;
    explicit MadeUpRow(Fields fields) : fields_(std::move(fields)) {}

    void ConexionActiva(const Zontara::Ref<Zontara::Conexion>&) override {}
    void TextoSQL(const std::string&) override {}
    void Abrir(const std::string&, const Zontara::Value&, std::int32_t) override {}
    std::int32_t TotalRegistros() const override { return 1; }
    void MoverPrimero() override {}
    void MoverSiguiente() override {}
    bool FinDeDatos() const override { return false; }
    Zontara::Ref<Zontara::Campos> LosCampos() override { return nullptr; }
    Zontara::Value Valor(std::string_view field) const override {
        for (const auto& [name, value] : fields_) {
            if (!Zontara::SameName(name, field)) continue;
            read.push_back(name);
            return value;
        }
        Zontara::Raise(Zontara::RunTimeError::NoSuchField, std::string(field));
    }
    std::int32_t TotalColumnas() const override { return static_cast<std::int32_t>(fields_.size()); }
    std::string NombreColumna(std::int32_t position) const override { return At(position).first; }
    Zontara::Value ValorEn(std::int32_t position) const override { return At(position).second; }

    mutable std::vector<std::string> read;

private:
    const std::pair<std::string, Zontara::Value>& At(std::int32_t position) const {
        return fields_.at(static_cast<std::size_t>(position));
    }

    Fields fields_;
};

/// The row that the due tests read.
inline MadeUpRow DueRow(const std::string& frequency, const Zontara::Value& anchor, const Zontara::Value& last,
                        const Zontara::Value& week = std::int32_t{0},
                        const Zontara::Value& interval = std::int32_t{1}) {
    return MadeUpRow({{"Frecuencia", frequency},
                      {"Programacion", anchor},
                      {"Fecha_Ultimo_Lanzamiento", last},
                      {"Semana", week},
                      {"Intervalo_Frecuencia", interval}});
}

}  // namespace support
