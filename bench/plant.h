#pragma once

#include "bench/database.h"

#include "bulletins/CConfiguracionOTBoletin.h"
#include "dhRichClient3/connection.h"
#include "frame/date.h"

#include <memory>
#include <string>

namespace bench {

/// A database file of its own in the temporary folder, with the whole schema, removed with its companions at the end.
class Plant {
public:
    explicit Plant(const std::string& name);
    ~Plant();
    Plant(const Plant&) = delete;
    Plant& operator=(const Plant&) = delete;

    const std::string& Path() const { return path_; }
    /// Runs a script.
    void Run(const std::string& script) const;

    /// So many assets with a task of three materials, one assignment each that falls due every week by the calendar,
    /// and last fell due in another week than `LaunchDay`'s.
    void AddWeekly(int assets) const;
    /// So many assets with so many meter assignments each, all due.
    void AddMetered(int assets, int assignments) const;
    /// A process for work orders.
    void AddProcess() const;

private:
    void Remove() const;
    std::string path_;
};

/// A Monday of week 10.
Zontara::Date LaunchDay();

/// The component on a database of its own: a file, or a copy of it in memory.
class Component {
public:
    enum class Where { OnFile, InMemory };
    Component(const std::string& path, Where where);
    ~Component();
    Component(const Component&) = delete;
    Component& operator=(const Component&) = delete;

    dhRichClient3::Connection& Connection() const { return *connection_; }

private:
    Zontara::Ref<dhRichClient3::Connection> connection_;
};

/// The component, and beside it the engine alone, each on its own copy of a plant in memory, or both on its file.
struct Pair {
    Pair(const std::string& plant, Component::Where where);
    Component component;
    Database bound;
};

std::string PlaceOf(Component::Where where);

/// How work orders are wanted.
Zontara::Ref<Zontara::CConfiguracionOTBoletin> Orders();

}  // namespace bench
