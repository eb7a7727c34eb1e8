#include "frame/class_registry.h"
#include "tests/rpc/bridge_test.h"
#include "tests/rpc/script.h"

#include <set>
#include <utility>

using namespace support;

namespace {

std::string PathOf(std::string_view className) {
    return std::string(ZONTARA_SOURCE_DIR) + "/tests/rpc/scripts/" + std::string(className) + ".txt";
}

/// Plays the script of one class.
class Player {
public:
    void Play(const Step& step) {
        if (step.verb == "create") {
            EXPECT_EQ(client_.Create(step.target), step.value);
        } else if (step.verb == "execute") {
            client_.Execute(step.target);
        } else if (step.verb == "depth") {
            EXPECT_EQ(client_.Result("session")["depth"], Json::parse(step.target));
        } else if (step.verb == "query") {
            CheckValue(step, client_.Result("query", {{"sql", step.target}}));
        } else {
            Call(step);
        }
    }

private:
    void Call(const Step& step) {
        const bool set = step.verb == "set";
        Json params{{"object", step.target}, {"member", step.member}};
        const Json given = Given(step.arguments);
        if (set) params["value"] = given;
        if (!set && !given.is_null()) params["args"] = given;

        const Json answer = client_.Answer(set ? "set" : "invoke", params);
        if (step.error) return CheckError(step, answer);
        ASSERT_TRUE(answer.contains("result")) << answer;
        const Json& result = answer["result"];
        CheckValue(step, result["value"]);
        EXPECT_EQ(result["trace"], step.trace) << result["trace"].dump(1) << step.trace.dump(1);
        if (!set) {
            EXPECT_EQ(result["byref"], step.byref);
        }
    }

    Json Given(std::string arguments) {
        const std::size_t last = arguments.find("$last");
        if (last != std::string::npos) arguments.replace(last, 5, Json{{"object", last_}}.dump());
        return arguments.empty() ? Json() : Json::parse(arguments);
    }

    void CheckValue(const Step& step, const Json& value) {
        if (value.is_object()) last_ = value.value("object", "");
        if (!step.columns) {
            EXPECT_EQ(value, step.value);
            return;
        }
        EXPECT_THAT(last_, ::testing::StartsWith("Recordset#"));
        ASSERT_TRUE(value.contains("recordset")) << value;
        EXPECT_EQ(value["recordset"]["columns"], *step.columns);
        EXPECT_EQ(value["recordset"]["rows"], step.rows);
    }

    static void CheckError(const Step& step, const Json& answer) {
        ASSERT_TRUE(answer.contains("error")) << answer;
        const Json& error = answer["error"];
        EXPECT_EQ(error["code"], *step.error) << error;
        const std::string message = error["message"];
        EXPECT_THAT(message, ::testing::HasSubstr(step.words));
        EXPECT_EQ(error["data"]["trace"], step.trace) << error["data"]["trace"].dump(1) << step.trace.dump(1);
        EXPECT_EQ(error["data"]["source"] == "HuntERR.ErrorIn", !step.stack.empty()) << error["data"];
        if (!step.stack.empty()) {
            EXPECT_THAT(message, ::testing::HasSubstr("Call Stack: " + step.stack));
        }
    }

    Client client_{InMemory(true)};
    std::string last_;
};

class ScriptTest : public ::testing::TestWithParam<std::string> {};

std::vector<std::string> ClassNames() {
    std::vector<std::string> names;
    for (const auto& each : Zontara::Descriptor().classes)
        names.emplace_back(each.table().name);
    return names;
}

TEST_P(ScriptTest, ValuesByReferenceResultsAndTraceAreAsWritten) {
    Player player;
    for (const Step& step : ReadScript(PathOf(GetParam()))) {
        SCOPED_TRACE(PathOf(GetParam()) + ":" + std::to_string(step.line));
        player.Play(step);
    }
}

TEST_P(ScriptTest, CallsEachOperationOfTheClass) {
    std::set<std::pair<std::string, std::string>> called;
    for (const Step& step : ReadScript(PathOf(GetParam()))) {
        if (step.target.rfind(GetParam() + "#", 0) == 0) called.emplace(step.verb, step.member);
    }
    for (const Zontara::Member& member : Zontara::FindClass(GetParam())->table().members) {
        const bool set = member.kind == Zontara::MemberKind::Put || member.kind == Zontara::MemberKind::PutRef;
        EXPECT_EQ(called.count({set ? "set" : "call", std::string(member.name)}), 1U) << member.name;
    }
}

INSTANTIATE_TEST_SUITE_P(SixteenClasses, ScriptTest, ::testing::ValuesIn(ClassNames()),
                         [](const auto& parameter) { return parameter.param; });

}  // namespace
