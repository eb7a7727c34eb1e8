// A program as a user of the installed library writes it: makes objects of every public class by name, calls by name,
// and catches an error that was raised on the other side of the library's boundary.
#include <bulletins/CBoletin.h>
#include <bulletins/CConfiguracionOTBoletin.h>
#include <calendar/CImputacionPreventiva.h>
#include <frame/CGlobalPreventivo.h>
#include <frame/class_registry.h>
#include <frame/invoke.h>
#include <frame/provider.h>
#include <frame/raised_error.h>

#include <exception>
#include <iostream>
#include <memory>

int main() {
    int made = 0;
    for (const Zontara::RegisteredClass& each : Zontara::Descriptor().classes) {
        if (Zontara::CreateByName(each.table().name)) ++made;
    }
    std::cout << "classes " << made << "\n";

    const auto facade = std::make_shared<Zontara::CGlobalPreventivo>();
    std::cout << "same object " << (facade->Boletin() == facade->Boletin()) << "\n";

    Zontara::CConfiguracionOTBoletin configuration;
    Zontara::Invoke(configuration, "UsuarioDestino", Zontara::MemberKind::Put, {{Zontara::Value(7)}, {}});
    std::cout << "user " << configuration.UsuarioDestino() << "\n";
    std::cout << "rule " << Zontara::CImputacionPreventiva().MesCoordinaConProgramacion(8, 2, 3) << "\n";

    try {
        facade->Boletin()->SeleccionarBoletines(0);
    } catch (const Zontara::RaisedError& error) {
        std::cout << "error " << error.Number() << " " << dynamic_cast<const std::exception&>(error).what() << "\n";
    }
    return 0;
}
