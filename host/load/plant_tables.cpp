// Processes, assets, equipment, documents and readings.

#include "host/load/table.h"

#include "catalogues/CDocumentoEquipo.h"
#include "catalogues/CEquipo.h"
#include "frame/provider.h"
#include "host/readings.h"

#include <fmt/format.h>

namespace host::load {

namespace {

enum Process : std::size_t { kProcessName, kProcessStatus, kProcessActive };
enum Asset : std::size_t {
    kAsset,
    kAssetName,
    kAssetStopped,
    kAssetGroup,
    kAssetStatus,
    kAssetProject,
    kAssetUnit,
    kAssetAccumulated,
    kAssetLast,
    kAssetPlace,
};
enum EquipmentColumn : std::size_t {
    kEquipment,
    kEquipmentName,
    kEquipmentLevel,
    kEquipmentParent,
    kEquipmentAsset,
    kEquipmentMaintained,
    kEquipmentPicture,
};
enum Document : std::size_t {
    kDocumentEquipment,
    kDocumentText,
    kDocumentName,
    kDocumentDigital,
    kDocumentPlace,
    kDocumentFile,
};
enum ReadingColumn : std::size_t {
    kReadingDate,
    kReadingAsset,
    kReadingShown,
    kReadingAdded,
    kReadingPrevious,
    kReadingUnit,
    kReadingFuel,
    kReadingNote,
    kReadingDepartment,
    kReadingVoucherValue,
    kReadingVoucher,
};

/// The next key of a table that no operation of the component fills.
std::int32_t NextKey(const std::string& table) { return Zontara::Session().ElGeneradorClaves()->ProximaClave(table); }

void WriteProcess(Plant& plant, Known& known, const Row& row) {
    const std::int32_t key = NextKey("Proceso");
    plant.Database()
        .Prepare("INSERT INTO Proceso (SC_Proceso, Descripcion, Estatus_Valido, Activo) VALUES (?1, ?2, ?3, ?4)")
        .Bind(1, key)
        .Bind(2, row.Text(kProcessName))
        .Bind(3, row.Int32(kProcessStatus))
        .Bind(4, std::int32_t{row.Byte(kProcessActive, 1)})
        .Run();
    known.processes.Set(row.Text(kProcessName), key);
}

void WriteAsset(Plant& plant, Known& known, const Row& row) {
    const std::int32_t unit = row.Has(kAssetUnit) ? known.units.Key(row.Text(kAssetUnit)) : 0;
    auto insert = plant.Database().Prepare(
        "INSERT INTO Activo (ID_Activo, Descripcion, Equipo_Parado, ID_Grupo_Activo, estatus_actual, sc_proyecto,"
        " SC_Unidad_Lectura, Acumulado_Lectura, Ultima_Lectura, id_localidad_fisica)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10)");
    insert.Bind(1, row.Text(kAsset))
        .Bind(2, row.Text(kAssetName))
        .Bind(3, std::int32_t{row.Byte(kAssetStopped)})
        .Bind(4, row.Text(kAssetGroup))
        .Bind(5, row.Int32(kAssetStatus))
        .Bind(6, row.Int32(kAssetProject))
        .Bind(8, row.Real(kAssetAccumulated))
        .Bind(9, row.Real(kAssetLast))
        .Bind(10, row.Int32(kAssetPlace));
    if (row.Has(kAssetUnit)) {
        insert.Bind(7, unit);
    } else {
        insert.Bind(7, Zontara::Null{});
    }
    insert.Run();
    known.assets.Set(row.Text(kAsset), unit);
}

void CheckReading(const Line& line) {
    line.Require(kReadingAsset, line.known.assets, "asset", "assets.csv");
    line.Require(kReadingUnit, line.known.units, "reading unit", "units.csv");
    float& last = line.known.lastReadings[line.row.Text(kReadingAsset)];
    const float previous = line.row.Real(kReadingPrevious, last);
    const float shown = line.row.Real(kReadingShown);
    if (!line.row.Has(kReadingAdded) && shown < previous) {
        line.Fail(kReadingShown, BackwardsText(shown, previous) + " (column Valor_Real)");
    }
    last = shown;
}

void WriteReading(Plant& plant, Known& known, const Row& row) {
    Reading reading;
    reading.date = row.Text(kReadingDate);
    reading.asset = row.Text(kReadingAsset);
    reading.shown = row.Real(kReadingShown);
    if (row.Has(kReadingAdded)) reading.added = row.Real(kReadingAdded);
    if (row.Has(kReadingPrevious)) reading.previous = row.Real(kReadingPrevious);
    if (row.Has(kReadingUnit)) reading.unit = known.units.Key(row.Text(kReadingUnit));
    reading.fuel = row.Real(kReadingFuel);
    reading.note = row.Text(kReadingNote);
    reading.department = row.Text(kReadingDepartment);
    reading.voucherValue = row.Money(kReadingVoucherValue);
    reading.voucher = row.Text(kReadingVoucher);
    RecordReading(plant, reading);
}

}  // namespace

Table Processes() {
    return {"processes.csv",
            {
                {"Descripcion", CellKind::Code, true},
                {"Estatus_Valido", CellKind::Int32},
                {"Activo", CellKind::Flag},
            },
            [](const Line& line) { line.Register(kProcessName, line.known.processes, "a process"); },
            nullptr,
            WriteProcess};
}

Table Assets() {
    return {"assets.csv",
            {
                {"ID_Activo", CellKind::PlainCode, true},
                {"Descripcion", CellKind::Text, true},
                {"Equipo_Parado", CellKind::Flag},
                {"ID_Grupo_Activo", CellKind::PlainCode},
                {"estatus_actual", CellKind::Int32},
                {"sc_proyecto", CellKind::Int32},
                {"Unidad", CellKind::Code},
                {"Acumulado_Lectura", CellKind::Real},
                {"Ultima_Lectura", CellKind::Real},
                {"id_localidad_fisica", CellKind::Int32},
            },
            [](const Line& line) {
                line.Register(kAsset, line.known.assets, "an asset");
                line.known.lastReadings.emplace(line.row.Text(kAsset), line.row.Real(kAssetLast));
            },
            [](const Line& line) { line.Require(kAssetUnit, line.known.units, "reading unit", "units.csv"); },
            WriteAsset};
}

Table Equipment() {
    return {"equipment.csv",
            {
                {"ID_Equipo", CellKind::PlainCode, true},
                {"Descripcion", CellKind::Text, true},
                {"Nivel", CellKind::Int16, true},
                {"Equipo_Padre", CellKind::PlainCode},
                {"ID_Activo", CellKind::PlainCode, true},
                {"Fecha_Ultimo_Mantenimiento", CellKind::Date},
                {"Foto", CellKind::PlainText},
            },
            [](const Line& line) { line.Register(kEquipment, line.known.equipment, "an item of equipment"); },
            [](const Line& line) {
                line.Require(kEquipmentAsset, line.known.assets, "asset", "assets.csv");
                line.Require(kEquipmentParent, line.known.equipment, "item", "equipment.csv");
            },
            [](Plant& plant, Known&, const Row& row) {
                plant.Component().Equipo()->Nuevo(row.Text(kEquipment), row.Text(kEquipmentName),
                                                  row.Int16(kEquipmentLevel), row.Text(kEquipmentParent),
                                                  row.Text(kEquipmentAsset), row.Text(kEquipmentMaintained),
                                                  row.Text(kEquipmentPicture));
            }};
}

Table Documents() {
    return {"documents.csv",
            {
                {"ID_Equipo", CellKind::PlainCode, true},
                {"Descripcion", CellKind::Text, true},
                {"Nombre_Documento"},
                {"Documento_Digital", CellKind::Flag},
                {"Localizacion", CellKind::PlainText},
                {"SC_Archivo_Digital", CellKind::Int32},
            },
            nullptr,
            [](const Line& line) { line.Require(kDocumentEquipment, line.known.equipment, "item", "equipment.csv"); },
            [](Plant& plant, Known&, const Row& row) {
                plant.Component().DocumentoEquipo()->Nuevo(row.Text(kDocumentText), row.Text(kDocumentName),
                                                           row.Byte(kDocumentDigital), row.Text(kDocumentPlace),
                                                           row.Text(kDocumentEquipment), row.Int32(kDocumentFile));
            }};
}

Table Readings() {
    return {"readings.csv",
            {
                {"Fecha", CellKind::Date, true},
                {"ID_Activo", CellKind::PlainCode, true},
                {"Lectura", CellKind::Real, true},
                {"Valor_Real", CellKind::Real},
                {"Lectura_Anterior", CellKind::Real},
                {"Unidad", CellKind::Code},
                {"Combustible_Consumido", CellKind::Real},
                {"Nota"},
                {"Departamento_A_Quien_Se_Carga"},
                {"Valor_Del_Vale_Salida", CellKind::Money},
                {"Numero_Vale"},
            },
            nullptr,
            CheckReading,
            WriteReading};
}

}  // namespace host::load
