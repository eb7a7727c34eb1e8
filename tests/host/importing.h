#pragma once

#include "tests/host/run.h"

#include <gtest/gtest.h>

#include <string>

namespace host_test {

inline Ran Import(const Folder& folder, const std::string& database) {
    return Zontara({"import", database, folder.Path().string()});
}

/// A database with an empty schema.
inline std::string Empty(const Folder& folder) {
    const std::string database = folder / "plant.db";
    EXPECT_EQ(Zontara({"init", database}).status, 0);
    return database;
}

/// Number of rows in all tables together.
inline int RowsOf(const std::string& database) {
    int rows = 0;
    for (const char* table :
         {"Activo", "Proceso", "Unidad_Lectura", "Grupo_Gama", "Ejecutor_Gama", "Usuario_Ejecutor_Gama", "Gama",
          "materiales_gama", "Equipo", "Documento_Equipo", "Imputacion_Preventiva", "Imputacion_Sistematica",
          "Imputacion_Paralela", "Lectura_Equipo", "Clave"}) {
        rows += std::stoi(Scalar(database, std::string("SELECT count(*) FROM ") + table));
    }
    return rows;
}

}  // namespace host_test
