#include "tests/rpc/bridge_test.h"

#include <sstream>

using namespace support;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

namespace {

struct LineCase {
    const char* label;
    std::string line;
    /// The id of the answer as JSON.
    const char* id;
    int code;
};

class BadLineTest : public ::testing::TestWithParam<LineCase> {};

TEST_P(BadLineTest, GetsItsErrorAndTheSessionGoesOn) {
    Client client;
    const Json answer = client.Line(GetParam().line);
    EXPECT_EQ(answer["jsonrpc"], "2.0");
    EXPECT_EQ(answer["id"], Parse(GetParam().id));
    EXPECT_EQ(answer["error"]["code"], GetParam().code) << answer;
    EXPECT_FALSE(answer["error"]["message"].get<std::string>().empty());
    EXPECT_FALSE(answer.contains("result"));
    EXPECT_EQ(client.Result("session"), Parse(R"({"depth":0})"));
}

std::string Repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

constexpr std::size_t kDeep = 200000;

INSTANTIATE_TEST_SUITE_P(
    NoJson, BadLineTest,
    ::testing::Values(LineCase{"Empty", "", "null", -32700}, LineCase{"Blank", "  \r", "null", -32700},
                      LineCase{"Word", "create", "null", -32700},
                      LineCase{"Cut", R"({"jsonrpc":"2.0","id":1)", "null", -32700},
                      LineCase{"TwoValues", "{} {}", "null", -32700},
                      LineCase{"InvalidUtf8", "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"\xff\"}", "null", -32700},
                      LineCase{"LoneSurrogate", R"({"jsonrpc":"2.0","id":1,"method":"\ud800"})", "null", -32700},
                      LineCase{"RawNul", std::string("{\"id\":\"\0\"}", 10), "null", -32700},
                      LineCase{"Comment", "// session", "null", -32700},
                      LineCase{"Deep", Repeated("[", kDeep), "null", -32700},
                      LineCase{"DeepObjects", Repeated(R"({"a":)", kDeep), "null", -32700}),
    [](const auto& parameter) { return parameter.param.label; });

INSTANTIATE_TEST_SUITE_P(
    NoRequest, BadLineTest,
    ::testing::Values(LineCase{"Batch", R"([{"jsonrpc":"2.0","id":1,"method":"session"}])", "null", -32600},
                      LineCase{"EmptyBatch", "[]", "null", -32600}, LineCase{"Number", "5", "null", -32600},
                      LineCase{"Text", R"("session")", "null", -32600}, LineCase{"Null", "null", "null", -32600},
                      LineCase{"EmptyObject", "{}", "null", -32600},
                      LineCase{"NoVersion", R"({"id":1,"method":"session"})", "1", -32600},
                      LineCase{"OldVersion", R"({"jsonrpc":"1.0","id":1,"method":"session"})", "1", -32600},
                      LineCase{"VersionAsNumber", R"({"jsonrpc":2.0,"id":1,"method":"session"})", "1", -32600},
                      LineCase{"NoMethod", R"({"jsonrpc":"2.0","id":"x"})", "\"x\"", -32600},
                      LineCase{"MethodAsNumber", R"({"jsonrpc":"2.0","id":2,"method":5})", "2", -32600},
                      LineCase{"IdAsObject", R"({"jsonrpc":"2.0","id":{},"method":"session"})", "null", -32600},
                      LineCase{"IdAsBool", R"({"jsonrpc":"2.0","id":true,"method":"session"})", "null", -32600},
                      LineCase{"DeepBatch", Repeated("[", kDeep) + Repeated("]", kDeep), "null", -32600}),
    [](const auto& parameter) { return parameter.param.label; });

INSTANTIATE_TEST_SUITE_P(
    WrongCall, BadLineTest,
    ::testing::Values(
        LineCase{"UnknownMethod", R"({"jsonrpc":"2.0","id":3,"method":"destroy"})", "3", -32601},
        LineCase{"MethodInCapitals", R"({"jsonrpc":"2.0","id":3,"method":"Session"})", "3", -32601},
        LineCase{"EmptyMethod", R"({"jsonrpc":"2.0","id":3,"method":""})", "3", -32601},
        LineCase{"UnknownMethodWithWrongParams", R"({"jsonrpc":"2.0","id":3,"method":"x","params":5})", "3", -32601},
        LineCase{"ParamsAsArray", R"({"jsonrpc":"2.0","id":4,"method":"create","params":["CBoletin"]})", "4", -32602},
        LineCase{"ParamsAsText", R"({"jsonrpc":"2.0","id":4,"method":"session","params":"x"})", "4", -32602},
        LineCase{"NoParams", R"({"jsonrpc":"2.0","id":4,"method":"create"})", "4", -32602},
        LineCase{"SurplusParam", R"({"jsonrpc":"2.0","id":4,"method":"session","params":{"a":1}})", "4", -32602},
        LineCase{"NumberTooLarge", R"({"jsonrpc":"2.0","id":4,"method":"create","params":{"class":1e999}})", "4",
                 -32602},
        LineCase{"DeepParam",
                 R"({"jsonrpc":"2.0","id":4,"method":"query","params":{"sql":)" + Repeated("[", kDeep) +
                     Repeated("]", kDeep) + "}}",
                 "4", -32602}),
    [](const auto& parameter) { return parameter.param.label; });

TEST(Requests, AnswerUnderTheIdTheyCameWith) {
    Client client;
    for (const char* id : {"1", "-7", "1.5", "\"a\\u00e1\"", "\"\"", "null"}) {
        const Json answer = client.Line(std::string(R"({"jsonrpc":"2.0","method":"session","id":)") + id + "}");
        EXPECT_EQ(answer["id"], Parse(id)) << id;
        EXPECT_TRUE(answer.contains("result")) << id;
    }
}

TEST(Requests, StandAsOneLineInTheOrderOfTheProtocol) {
    Client client;
    EXPECT_EQ(client.bridge.Answer(R"({"jsonrpc":"2.0","id":1,"method":"session","params":{}})"),
              R"({"jsonrpc":"2.0","id":1,"result":{"depth":0}})");
    EXPECT_EQ(client.bridge.Answer(R"({"id":2,"params":{"class":"CBoletin"},"jsonrpc":"2.0","method":"create"})"),
              R"({"jsonrpc":"2.0","id":2,"result":{"object":"CBoletin#1"}})");
}

TEST(Requests, WithoutIdAreCarriedOutAndNotAnswered) {
    Client client;
    EXPECT_EQ(client.bridge.Answer(R"({"jsonrpc":"2.0","method":"create","params":{"class":"CBoletin"}})"),
              std::nullopt);
    EXPECT_EQ(client.Create("CBoletin"), "CBoletin#2");
    EXPECT_EQ(client.bridge.Answer(R"({"jsonrpc":"2.0","method":"nothing"})"), std::nullopt);
    EXPECT_EQ(client.bridge.Answer(R"({"jsonrpc":"2.0","method":"create"})"), std::nullopt);
}

TEST(Requests, MayHoldMembersOfTheirOwn) {
    Client client;
    EXPECT_TRUE(client.Line(R"({"jsonrpc":"2.0","id":1,"method":"session","extra":[1]})").contains("result"));
}

std::vector<std::string> Served(const std::string& input) {
    Client client;
    std::istringstream in(input);
    std::ostringstream out;
    host::rpc::Serve(client.bridge, in, out);
    std::vector<std::string> lines;
    std::istringstream answers(out.str());
    for (std::string line; std::getline(answers, line);)
        lines.push_back(line);
    return lines;
}

TEST(Serving, AnswersLineByLineInOrder) {
    EXPECT_THAT(Served("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"session\"}\r\n"
                       "{\"jsonrpc\":\"2.0\",\"method\":\"session\"}\n"
                       "\n"
                       "{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"session\"}"),
                ElementsAre(R"({"jsonrpc":"2.0","id":1,"result":{"depth":0}})", HasSubstr("-32700"),
                            R"({"jsonrpc":"2.0","id":2,"result":{"depth":0}})"));
}

TEST(Serving, EndsWithTheInput) { EXPECT_THAT(Served(""), ElementsAre()); }

TEST(Serving, PassesOverALineThatIsTooLong) {
    EXPECT_THAT(Served(std::string(host::rpc::kLongestLine + 1, '[') +
                       "\n{\"jsonrpc\":\"2.0\",\"id\":2,\"method\":\"session\"}\n"),
                ElementsAre(HasSubstr("-32700"), HasSubstr("\"depth\":0")));
}

TEST(Serving, TakesALongLine) {
    const std::string sql = "select '" + std::string(3000000, 'x') + "' a";
    const Json request{{"jsonrpc", "2.0"}, {"id", 1}, {"method", "query"}, {"params", {{"sql", sql}}}};
    const auto answers = Served(request.dump() + "\n");
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(Parse(answers[0])["result"]["recordset"]["rows"][0][0], std::string(3000000, 'x'));
}

TEST(Serving, EndsWhenTheOutputTakesNoMore) {
    Client client;
    std::istringstream in("{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"session\"}\nnext\n");
    std::ostringstream out;
    out.setstate(std::ios::badbit);
    host::rpc::Serve(client.bridge, in, out);
    EXPECT_EQ(in.tellg(), 0);
}

}  // namespace
