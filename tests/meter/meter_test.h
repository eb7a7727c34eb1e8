#pragma once

#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/raised_error.h"
#include "meter/CImputacionSistematica.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace support {

/// A world with one group, two tasks, one executor, two units and one process, and an object to work with.
class MeterTest : public ::testing::Test {
protected:
    MeterTest();

    /// An asset in service, read in km.
    void AddAsset(const std::string& key, const std::string& accumulated, const std::string& last = "0");
    struct Assignment {
        int key;
        std::string asset;
        int limit;
        int reference = 0;
        int approximation = 0;
        int annulled = 0;
        int task = 30;
    };
    void AddAssignment(const Assignment& assignment);
    /// Materials and labour of task 30.
    void AddMaterials();

    std::string Reference(int key);
    std::string Accumulated(const std::string& asset);
    /// Every row that the meter scheme stores, to show that nothing changed.
    std::vector<std::string> Stored();
    /// How many notices each list holds: reprogrammed, orders, catalogue.
    std::vector<int> Notices();
    /// Values of a field, row by row.
    static std::vector<std::string> Column(const Zontara::Ref<Zontara::Recordset>& rs, const std::string& field);

    World world;
    Zontara::Ref<Zontara::CImputacionSistematica> imputaciones = Zontara::Create<Zontara::CImputacionSistematica>();
};

/// The calls of a report's call stack, innermost first: "CBoletin.Borrar(SC_Boletin=7)".
std::vector<std::string> CallsOf(const Zontara::ErrorRecord& error);

/// An engine's refusal by its own code.
constexpr std::int32_t Refused(std::int32_t code) { return Zontara::vbObjectError + code; }

}  // namespace support
