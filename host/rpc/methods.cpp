#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/dialect/tokens.h"
#include "dhRichClient3/recordset.h"
#include "frame/class_registry.h"
#include "frame/invoke.h"
#include "frame/provider.h"
#include "host/rpc/arguments.h"
#include "host/rpc/bridge.h"
#include "host/rpc/describe.h"
#include "host/rpc/values.h"
#include "host/typelib/libraries.h"

#include <array>
#include <utility>
#include <vector>

namespace host::rpc {

namespace {

using Zontara::ClassTable;
using Zontara::Member;
using Zontara::MemberKind;
using Zontara::Object;
using Zontara::Ref;

[[noreturn]] void Refuse(const std::string& why) { throw Refusal(Code::WrongParameters, why); }

/// The member of the first of two kinds that the object's class has under that name.
const Member& MemberOf(const Object& object, const std::string& name, MemberKind kind, MemberKind otherKind) {
    const ClassTable* table = object.Table();
    const Member* member = table != nullptr ? table->Find(name, kind) : nullptr;
    if (member == nullptr && table != nullptr) member = table->Find(name, otherKind);
    if (member == nullptr) Refuse(object.TypeName() + " has no member " + name + " of that kind");
    return *member;
}

/// Whether a text only reads, as far as its first words tell. What is no statement at all is left to the engine.
bool OnlyReads(const std::string& sql) {
    std::vector<dhRichClient3::dialect::Token> tokens;
    dhRichClient3::dialect::Tokenize(sql, tokens);
    const auto verdict = dhRichClient3::dialect::Judge(sql, tokens);
    return !verdict.Accepted() || verdict.selects || tokens.front().IsWord("VALUES");
}

}  // namespace

Bridge::Method Bridge::MethodOf(std::string_view name) {
    static constexpr std::array<std::pair<std::string_view, Method>, 9> kMethods{{
        {"create", &Bridge::Create},
        {"release", &Bridge::Release},
        {"invoke", &Bridge::Invoke},
        {"set", &Bridge::Set},
        {"describe", &Bridge::Describe},
        {"session", &Bridge::Depth},
        {"now", &Bridge::Now},
        {"query", &Bridge::Query},
        {"execute", &Bridge::Execute},
    }};
    for (const auto& [known, method] : kMethods) {
        if (known == name) return method;
    }
    return nullptr;
}

Ref<Object> Bridge::HeldObject(const Params& params) const {
    const std::string& handle = params.Text("object");
    Ref<Object> object = handles_.Find(handle);
    if (!object) Refuse("there is no object " + handle);
    return object;
}

Json Bridge::Create(const Input* params) {
    const Params given(params, {"class"});
    const std::string& name = given.Text("class");
    if (Zontara::FindClass(name) == nullptr) Refuse("there is no class " + name);
    return {{"object", handles_.Of(Zontara::CreateByName(name))}};
}

Json Bridge::Release(const Input* params) {
    const Params given(params, {"object"});
    const std::string& handle = given.Text("object");
    if (!handles_.Release(handle)) Refuse("there is no object " + handle);
    return nullptr;
}

Json Bridge::Invoke(const Input* params) {
    const Params given(params, {"object", "member", "args"});
    const Ref<Object> object = HeldObject(given);
    const Member& member = MemberOf(*object, given.Text("member"), MemberKind::Method, MemberKind::Get);
    Zontara::CallArguments arguments = ReadArguments(member, given.Find("args"), handles_);

    const Zontara::CallResult result = Zontara::Invoke(*object, member.name, member.kind, std::move(arguments));
    Json answer{{"value", ToJson(result.value, &handles_)}};
    Json changed = Json::object();
    for (const auto& [name, value] : result.changed)
        changed[std::string(name)] = ToJson(value, &handles_);
    answer["byref"] = std::move(changed);
    return answer;
}

Json Bridge::Set(const Input* params) {
    const Params given(params, {"object", "member", "value"});
    const Ref<Object> object = HeldObject(given);
    const Member& member = MemberOf(*object, given.Text("member"), MemberKind::Put, MemberKind::PutRef);
    const Zontara::Argument& property = member.arguments.front();
    Zontara::Value value = FromJson(given.Required("value"), property.type, handles_, member.name);

    Zontara::Invoke(*object, member.name, member.kind, {{std::move(value)}, {}});
    return {{"value", nullptr}};
}

Json Bridge::Describe(const Input* params) {
    const Params given(params, {"class"});
    if (given.Find("class") == nullptr) return {{"classes", DescribedAll()}};
    const std::string& name = given.Text("class");
    const ClassTable* table = typelib::FindTable(name);
    if (table == nullptr) Refuse("there is no class " + name);
    return {{"classes", Json::array({Described(*table)})}};
}

Json Bridge::Depth(const Input* params) {
    const Params none(params, {});
    return {{"depth", Zontara::Session().ProfundidadTransaccion()}};
}

Json Bridge::Now(const Input* params) {
    const Params given(params, {"value"});
    if (given.Required("value").is_null()) {
        session_.SetNow(std::nullopt);
        return nullptr;
    }
    const std::optional<Zontara::Date> now = ReadDate(given.Text("value"));
    if (!now) Refuse("value takes a date, as \"2026-03-05\" or \"2026-03-05T08:00:00\", or null");
    session_.SetNow(now);
    return nullptr;
}

Json Bridge::Query(const Input* params) {
    const Params given(params, {"sql"});
    const std::string& sql = given.Text("sql");
    if (!OnlyReads(sql)) Refuse("query only reads; execute takes any statement");
    const Ref<Zontara::Recordset> rows = dhRichClient3::NewRecordset();
    rows->ConexionActiva(session_.Connection());
    rows->TextoSQL(sql);
    rows->Abrir("", Zontara::Absent{}, 0);
    rows->ConexionActiva(nullptr);
    return ToJson(rows, &handles_);
}

Json Bridge::Execute(const Input* params) {
    const Params given(params, {"sql"});
    session_.Database().RunScript(given.Text("sql"));
    return nullptr;
}

}  // namespace host::rpc
