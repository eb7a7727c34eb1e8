#pragma once

#include "frame/class_registry.h"
#include "frame/member_table.h"
#include "tests/support/world.h"

#include <memory>
#include <string>
#include <vector>

/// Every operation of every public class, found in the member tables, with arguments that it accepts.
namespace faults {

/// A plant in which each operation finds something to work on. Two assets have meter assignments that are due.
extern const char* const kSmallPlant;

/// A fresh world with the small plant, on Monday 2026-03-02.
std::unique_ptr<support::World> MakeSmallPlant();

struct Operation {
    const Zontara::ClassTable* table = nullptr;
    const Zontara::Member* member = nullptr;
    /// Calendar launches and the like are there twice: into bulletins and into orders.
    bool withConfiguration = false;

    /// "CBoletin.Nuevo", "get CGama.ListaDeTareasCambio", "CImputacionPreventiva.LanzarPreventivo into orders".
    std::string Name() const;
    /// "CBoletin.Nuevo".
    std::string Location() const;
    /// A new object of the class.
    Zontara::Ref<Zontara::Object> Object() const;
    /// Arguments that the operation accepts on the small plant. Reads from it where one is a recordset.
    std::vector<Zontara::Value> Arguments() const;
    /// Calls the operation. Arguments that it changes stand changed afterwards.
    Zontara::Value Call(Zontara::Object& object, std::vector<Zontara::Value>& arguments) const;
    /// The same with a new object and the accepted arguments.
    void Call() const;
};

/// All of them, in registration and interface order.
std::vector<Operation> AllOperations();

/// All but the three that open, commit and roll back a transaction and do nothing else.
std::vector<Operation> OperationsBesideTransactions();

}  // namespace faults
