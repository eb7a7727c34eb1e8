#include "host/pages/sheet_words.h"

namespace host::pages {

const SheetWords& WordsIn(Language language) {
    static const SheetWords spanish = {
        "es",
        "Hoja semanal de mantenimiento preventivo",
        "Semana {week} de {year} · del {from} al {to}",
        {"Lunes", "Martes", "Miércoles", "Jueves", "Viernes", "Sábado", "Domingo"},
        "Boletín",
        "Tarea",
        "Orden",
        "Estado",
        "Lanzado",
        "Entrega",
        "Trabajo",
        "Materiales y herramientas",
        "Cuadrilla",
        "personas",
        "persona",
        "h",
        "Equipo parado",
        "Seguridad",
        "Coordinación",
        "Nota",
        "Terminado el",
        "Firma",
    };
    static const SheetWords english = {
        "en",
        "Weekly sheet of preventive maintenance",
        "Week {week} of {year} · {from} to {to}",
        {"Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday", "Sunday"},
        "Bulletin",
        "Task",
        "Order",
        "Status",
        "Launched",
        "Delivery",
        "Work",
        "Materials and tools",
        "Crew",
        "people",
        "person",
        "h",
        "Machine stopped",
        "Safety",
        "Coordination",
        "Note",
        "Finished on",
        "Signature",
    };
    return language == Language::Spanish ? spanish : english;
}

}  // namespace host::pages
