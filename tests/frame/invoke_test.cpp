#include "frame/invoke.h"

#include "frame/raised_error.h"
#include "frame/table_builder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>

namespace {

using namespace Zontara;

class Lamp : public Object {
public:
    static constexpr std::string_view kTypeName = "Lamp";
    static const ClassTable& ClassMembers() {
        static const ClassTable table =
            TableBuilder<Lamp>("_Lamp")
                .Creatable()
                .Get("Watts", static_cast<std::int16_t (Lamp::*)() const>(&Lamp::Watts))
                .Put("Watts", static_cast<void (Lamp::*)(std::int16_t)>(&Lamp::Watts))
                .PutRef("Twin", &Lamp::Twin)
                .Method("Dim", &Lamp::Dim, {{"percent"}, OptionalByRef("label", "plain"), ByRef("count")})
                .Method("SameAs", &Lamp::SameAs, {{"other"}})
                .Build();
        return table;
    }
    const ClassTable* Table() const override { return &ClassMembers(); }

    std::int16_t Watts() const { return watts_; }
    void Watts(std::int16_t watts) { watts_ = watts; }
    void Twin(const Ref<Lamp>& twin) { twin_ = twin; }
    std::string Dim(std::uint8_t percent, const std::string& label, std::int32_t& count) {
        ++calls;
        ++count;
        return label + " " + std::to_string(percent);
    }
    bool SameAs(const Ref<Lamp>& other) { return other.get() == this; }

    int calls = 0;
    Ref<Lamp> twin_;

private:
    std::int16_t watts_ = 40;
};

std::int32_t NumberRaisedBy(const std::function<void()>& work) {
    try {
        work();
    } catch (const RaisedError& error) {
        return error.Number();
    }
    return 0;
}

class InvokeTest : public testing::Test {
protected:
    Ref<Lamp> lamp = std::make_shared<Lamp>();
};

TEST_F(InvokeTest, FindsMembersWithoutRegardToCase) {
    Invoke(*lamp, "WATTS", MemberKind::Put, {{Value("60")}, {}});
    EXPECT_EQ(Invoke(*lamp, "watts", MemberKind::Get, {}).value, Value(std::int16_t{60}));
}

TEST_F(InvokeTest, GivesBackByReferenceArgumentsThatChanged) {
    const CallResult result = Invoke(*lamp, "Dim", MemberKind::Method, {{Value(50)}, {{"COUNT", Value(7)}}});
    EXPECT_EQ(result.value, Value("plain 50"));
    ASSERT_EQ(result.changed.size(), 1U);
    EXPECT_EQ(result.changed[0].first, "count");
    EXPECT_EQ(result.changed[0].second, Value(8));
}

TEST_F(InvokeTest, AValueThatDoesNotFitNeverReachesTheOperation) {
    const auto dim = [&](Value percent, Value count) {
        return [this, percent, count] { Invoke(*lamp, "Dim", MemberKind::Method, {{percent, Value("x"), count}, {}}); };
    };
    EXPECT_EQ(NumberRaisedBy(dim(256, 1)), 6);
    EXPECT_EQ(NumberRaisedBy(dim("many", 1)), 13);
    EXPECT_EQ(NumberRaisedBy(dim(1, Null{})), 94);
    EXPECT_EQ(NumberRaisedBy(dim(1, 3e9)), 6);
    EXPECT_EQ(lamp->calls, 0);
}

TEST_F(InvokeTest, ArgumentsMustMatchTheMember) {
    const auto call = [&](CallArguments arguments) {
        return [this, arguments] { Invoke(*lamp, "Dim", MemberKind::Method, arguments); };
    };
    EXPECT_EQ(NumberRaisedBy(call({{Value(1)}, {}})), 449);
    EXPECT_EQ(NumberRaisedBy(call({{Value(1), Value("a"), Value(1), Value(1)}, {}})), 450);
    EXPECT_EQ(NumberRaisedBy(call({{Value(1)}, {{"kount", Value(1)}}})), 448);
    EXPECT_EQ(NumberRaisedBy(call({{Value(1)}, {{"percent", Value(1)}, {"count", Value(1)}}})), 450);
    EXPECT_EQ(lamp->calls, 0);
}

TEST_F(InvokeTest, UnknownMembersAreError438WithTheirName) {
    try {
        Invoke(*lamp, "Explode", MemberKind::Method, {});
        FAIL();
    } catch (const RaisedError& error) {
        EXPECT_EQ(error.Number(), 438);
        EXPECT_EQ(error.Description(), "Object doesn't support this property or method: Lamp.Explode");
    }
    EXPECT_EQ(NumberRaisedBy([&] { Invoke(*lamp, "Dim", MemberKind::Get, {}); }), 438);
    Object bare;
    EXPECT_EQ(NumberRaisedBy([&] { bare.ReadMember("Anything"); }), 438);
}

TEST_F(InvokeTest, ObjectsAreCheckedForTheirClass) {
    EXPECT_EQ(Invoke(*lamp, "SameAs", MemberKind::Method, {{Value(lamp)}, {}}).value, Value(true));
    EXPECT_EQ(Invoke(*lamp, "SameAs", MemberKind::Method, {{Value(nullptr)}, {}}).value, Value(false));
    EXPECT_EQ(NumberRaisedBy([&] {
                  Invoke(*lamp, "SameAs", MemberKind::Method, {{Value(std::make_shared<Object>())}, {}});
              }),
              13);
}

TEST_F(InvokeTest, LateBindingReadsWritesAndCalls) {
    lamp->WriteMember("Watts", 75);
    EXPECT_EQ(lamp->ReadMember("Watts"), Value(std::int16_t{75}));
    lamp->WriteMember("Twin", Value(lamp));
    EXPECT_EQ(lamp->twin_, lamp);
    lamp->WriteMember("Twin", nullptr);
    EXPECT_EQ(lamp->twin_, nullptr);
    EXPECT_EQ(lamp->TypeName(), "Lamp");
}

TEST(TableBuilderTest, TypesComeFromTheMemberFunctions) {
    const Member* dim = Lamp::ClassMembers().Find("Dim", MemberKind::Method);
    ASSERT_NE(dim, nullptr);
    EXPECT_EQ(dim->arguments[0].type.word, TypeWord::Byte);
    EXPECT_FALSE(dim->arguments[0].byRef);
    EXPECT_TRUE(dim->arguments[1].byRef && dim->arguments[1].optional);
    EXPECT_EQ(dim->arguments[1].defaultValue, Value("plain"));
    EXPECT_EQ(dim->arguments[2].type.word, TypeWord::Int32);
    EXPECT_EQ(dim->result.word, TypeWord::Text);
    EXPECT_EQ(Lamp::ClassMembers().Find("SameAs", MemberKind::Method)->arguments[0].type.className, "Lamp");
}

TEST(TableBuilderTest, ATableThatNamesTooFewArgumentsIsRefused) {
    EXPECT_EQ(NumberRaisedBy([] { TableBuilder<Lamp>("_Lamp").Method("Dim", &Lamp::Dim, {{"percent"}}); }), 5);
}

}  // namespace
