#include "Perluma/session.h"

#include "frame/raised_error.h"

#include <utility>

namespace Perluma {

Sesion::Sesion(Zontara::Ref<dhRichClient3::Connection> connection) : connection_(std::move(connection)) {
    if (!connection_) Zontara::Raise(Zontara::RunTimeError::ObjectNotSet);
    keys_ = GeneradorClaves::On(connection_);
}

std::string Sesion::TextoParaSQL(const std::string& texto) const {
    if (texto.find('\'') == std::string::npos) return texto;
    std::string fit;
    fit.reserve(texto.size());
    for (const char letter : texto) {
        fit += letter;
        if (letter == '\'') fit += letter;
    }
    return fit;
}

}  // namespace Perluma
