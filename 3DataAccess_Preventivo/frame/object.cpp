#include "frame/object.h"

#include "frame/invoke.h"
#include "frame/member_table.h"
#include "frame/raised_error.h"

#include <atomic>

namespace Zontara {

namespace {

std::atomic<std::int64_t> living{0};

}  // namespace

Object::Object() { living.fetch_add(1, std::memory_order_relaxed); }

Object::~Object() { living.fetch_sub(1, std::memory_order_relaxed); }

std::int64_t Object::Living() { return living.load(std::memory_order_relaxed); }

const ClassTable* Object::Table() const { return nullptr; }

std::string Object::TypeName() const {
    const ClassTable* table = Table();
    return table != nullptr ? std::string(table->name) : "Object";
}

Value Object::ReadMember(std::string_view name) { return Invoke(*this, name, MemberKind::Get, {}).value; }

void Object::WriteMember(std::string_view name, const Value& value) {
    const MemberKind kind = value.Is<Ref<Object>>() ? MemberKind::PutRef : MemberKind::Put;
    Invoke(*this, name, kind, {{value}, {}});
}

Value Object::CallMember(std::string_view name) { return Invoke(*this, name, MemberKind::Method, {}).value; }

}  // namespace Zontara
