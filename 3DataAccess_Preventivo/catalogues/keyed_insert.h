#pragma once

#include "frame/Libreria.h"

#include <cstdint>
#include <string_view>

namespace Zontara::catalogues {

/// What every catalogue does to create a row: takes the next key of the table and runs the statement that `statement`
/// makes of a key, the two in one transaction. Gives the key written. With `zeroKey` the row gets key 0, and the key
/// taken is lost.
template <class Statement>
std::int32_t InsertWithKey(std::string_view tabla, Statement statement, bool zeroKey = false) {
    Libreria::IniciarTransaccion();
    std::int32_t clave = Libreria::ProximaClave(tabla);
    if (zeroKey) clave = 0;
    Libreria::Ejecutar(statement(clave));
    Libreria::TerminarTransaccion();
    return clave;
}

}  // namespace Zontara::catalogues
