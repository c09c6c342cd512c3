#include "language/Describe.h"

#include <utility>

#include "language/TextCursor.h"

namespace EmbeddedHV::language {
namespace {

/// Describes each kind of expression.
struct Kind
{
    std::string operator()(const Null&) const { return "null"; }
    std::string operator()(bool) const { return "a boolean"; }
    std::string operator()(std::int64_t) const { return "a number"; }
    std::string operator()(double) const { return "a number"; }
    std::string operator()(const std::string&) const { return "a string"; }
    std::string operator()(const List&) const { return "a list"; }
    std::string operator()(const Tuple&) const { return "a tuple"; }
    std::string operator()(const Object&) const { return "an object"; }
    std::string operator()(const Name& name) const { return "the name '" + name.name + "'"; }
    std::string operator()(const Member& member) const { return "the field " + member.field; }
    std::string operator()(const Call& call) const { return "a call of '" + call.function + "'"; }
    std::string operator()(const Unary&) const { return "an operator"; }
    std::string operator()(const Binary&) const { return "an operator"; }
    std::string operator()(const Conditional&) const { return "a conditional"; }
    std::string operator()(const Lambda&) const { return "a lambda"; }
};

} // namespace

std::string kindOf(const Expression& expression)
{
    return std::visit(Kind{}, expression.value);
}

void failInStep(const char* id, const std::string& step, const Position& position,
                const std::string& text, FaultParts parts)
{
    parts.step = step;
    failAt(position, text, id, std::move(parts));
}

} // namespace EmbeddedHV::language
