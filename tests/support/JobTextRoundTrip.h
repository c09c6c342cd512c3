#pragma once

#include <bit>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <variant>
#include <vector>

#include "bridge/JNIHvlExpression.h"
#include "bridge/JNIHvlProgram.h"
#include "bridge/JNIJSONObject.h"
#include "hvl/TextJob.h"
#include "language/JsonLiteral.h"
#include "language/Parser.h"

/// Checks that the engine's parser reads names, texts and numbers in a job exactly as they were
/// composed. Each operation returns a description of the difference, or an empty text. Text that
/// does not parse throws JobError. Objects in Java live until cleanJRef.
namespace JobTextRoundTrip {

using namespace EmbeddedHV::language;

/// The value of a number as the renderer writes it: digits, a minus, and for the least integer a
/// difference.
template <class Number>
std::optional<Number> numberOf(const Expression& expression)
{
    if (const auto* number = std::get_if<Number>(&expression.value))
        return *number;
    if (const auto* minus = std::get_if<Unary>(&expression.value)) {
        const auto operand = numberOf<Number>(*minus->operand);
        return operand && minus->op == UnaryOperator::Minus ? std::optional(-*operand)
                                                            : std::nullopt;
    }
    if (const auto* difference = std::get_if<Binary>(&expression.value)) {
        const auto left = numberOf<Number>(*difference->left);
        const auto right = numberOf<Number>(*difference->right);
        if (left && right && difference->op == BinaryOperator::Subtract)
            return *left - *right;
    }
    return std::nullopt;
}

inline bool isText(const Expression& expression, const std::string& text)
{
    const auto* found = std::get_if<std::string>(&expression.value);
    return found != nullptr && *found == text;
}

/// Whether the expression is `x.field`.
inline bool isField(const Expression& expression, const std::string& field)
{
    const auto* member = std::get_if<Member>(&expression.value);
    if (member == nullptr || member->field != field)
        return false;
    const auto* record = std::get_if<Name>(&member->target->value);
    return record != nullptr && record->name == "x";
}

inline std::string ofNumbers(JNIHvlProgram& program, std::int64_t integer, double real)
{
    const auto whole = numberOf<std::int64_t>(*parseExpression(
        program.createHvlExpressionLiteral(static_cast<long long>(integer))->generate()));
    if (whole != integer)
        return "an integer literal";
    const auto number =
        numberOf<double>(*parseExpression(program.createHvlExpressionLiteral(real)->generate()));
    if (!number || std::bit_cast<std::uint64_t>(*number) != std::bit_cast<std::uint64_t>(real))
        return "a real literal";
    JNIJSONObject json;
    json.put("i", static_cast<long long>(integer));
    json.put("r", real);
    const auto read = jsonLiteral(*parseExpression(json.toString()), {}, "test");
    return read == nlohmann::ordered_json{{"i", integer}, {"r", real}} ? "" : "a number in JSON";
}

/// Checks a non-empty UTF-8 text as a literal, a field, and a key and a value in JSON.
inline std::string ofText(JNIHvlProgram& program, const std::string& text)
{
    // These two take C strings, which end at a zero byte.
    const std::string toZero = text.c_str();
    if (!isText(*parseExpression(program.createHvlExpressionLiteral(text.c_str())->generate()),
                toZero))
        return "a text literal";
    JNIJSONObject json;
    json.put(text, text.c_str());
    if (jsonLiteral(*parseExpression(json.toString()), {}, "test") !=
        nlohmann::ordered_json{{text, toZero}})
        return "a text in JSON";
    if (!isField(*parseExpression(program.createHvlExpressionFieldReference(text)->generate()),
                 text))
        return "a field";
    const bool isUnchanged =
        program.createHvlExpressionFieldReference(text)->generate() == "x." + text;
    return isPlainName(text) == isUnchanged ? "" : "isPlainName";
}

/// Checks a path in a container of a text job.
inline std::string ofPath(const std::string& path)
{
    const auto container =
        jsonLiteral(*parseExpression(importedContainer("name", path.c_str())), {}, "test");
    return container ==
                   nlohmann::ordered_json{{"name", "name"}, {"uri", TransformPath(path.c_str())}}
               ? ""
               : "a path";
}

/// Whether it is the lambda of a deriveField step that copies a field and declares its type.
inline bool isCopyOf(const Expression& lambda, const std::string& field)
{
    const auto* context = std::get_if<Lambda>(&lambda.value);
    const auto* record = context == nullptr ? nullptr : std::get_if<Lambda>(&context->body->value);
    if (record == nullptr || record->parameters.size() != 1 || !record->parameters[0].type ||
        record->parameters[0].type->names != std::vector{field})
        return false;
    const auto* pair = std::get_if<Tuple>(&record->body->value);
    return pair != nullptr && pair->elements.size() == 2 && isText(*pair->elements[0], field) &&
           isField(*pair->elements[1], field);
}

/// Checks a whole job in which the text is a setting, a field, a field of a type, and the tag of an
/// input. The job must have exactly the steps that were made.
inline std::string ofJob(const std::string& text)
{
    JNIHvlProgram program;
    JNIJSONObject settings;
    settings.put(text, text.c_str());
    JNIHvlProgram::TypeMap types{{text, JNIHvlExpression::SimpleTypes::Real}};
    JNIHvlFunction* const copied = program.createHvlFunctionDeriveFields(
        program.createHvlFieldDerive(text, program.createHvlExpressionFieldReference(text)),
        program.createHvlFunction("read", &settings), &types);
    std::map<std::string, JNIHvlFunction*> inputs{{text, copied}, {text + "2", copied}};
    program.createHvlFunction("union", &settings, &inputs);
    std::string job;
    program.getHvlText(job);

    const Program parsed = parseProgram(job);
    constexpr std::size_t kItems = 5; // two settings, a lambda, a chain and a statement
    if (parsed.items.size() != kItems)
        return "the number of items: " + job;
    const auto* lambda = std::get_if<ExpressionPtr>(&std::get<Definition>(parsed.items[1]).value);
    if (lambda == nullptr || !isCopyOf(**lambda, text))
        return "a derived field: " + job;
    const auto& last = std::get<Pipeline>(parsed.items.back());
    std::set<std::string> tags;
    for (const Argument& argument : last.steps.at(0).arguments)
        if (argument.kind == Argument::Kind::Tagged)
            tags.insert(argument.tag);
    const bool isWhole = last.steps.size() == 1 && tags == std::set{text, text + "2"};
    return isWhole ? "" : "tags: " + job;
}

} // namespace JobTextRoundTrip
