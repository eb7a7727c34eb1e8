#pragma once

#include "Perluma/tracing_provider.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace planning {

/// Hears what the component writes while a launch runs, from what it asks of its neighbours.
class LaunchEar : public Perluma::TraceSink {
public:
    /// Keys of the bulletins since the last `Forget`.
    const std::vector<std::int32_t>& Bulletins() const { return bulletins_; }
    /// The meter assignments of the orders since the last `Forget`.
    const std::vector<std::int32_t>& MeterAssignments() const { return meterAssignments_; }
    /// Crew by time of the labour that was last put on an order since the last `Forget`. Work that takes time is done
    /// by somebody: a crew of 0 counts as one.
    double Labour() const { return labour_; }
    void Forget();

    void Sql(const std::string& /*text*/) override {}
    void Transaction(std::string_view /*what*/) override {}
    void Key(const std::string& table, std::int32_t value) override;
    void Service(std::string_view name, const std::vector<Zontara::Value>& arguments,
                 const Zontara::Value& result) override;
    void Event(std::string_view /*name*/, const Zontara::Value& /*argument*/) override {}
    void Notice(const std::string& /*text*/) override {}

private:
    std::vector<std::int32_t> bulletins_;
    std::vector<std::int32_t> meterAssignments_;
    double labour_ = 0;
};

/// Puts an ear between the component and its neighbours for as long as it lives.
class Listening {
public:
    Listening();
    ~Listening();
    Listening(const Listening&) = delete;
    Listening& operator=(const Listening&) = delete;

    LaunchEar& Ear() { return *ear_; }

private:
    std::shared_ptr<LaunchEar> ear_;
    std::shared_ptr<Zontara::Provider> before_;
};

}  // namespace planning
