#include "pmml/DataType.h"

#include <array>
#include <string_view>
#include <utility>

#include "base/CivilTime.h"
#include "expression/Conversion.h"
#include "pmml/Literal.h"
#include "pmml/ModelFault.h"
#include "values/Calendar.h"
#include "values/CellText.h"

namespace scoring {
namespace {

constexpr std::array<std::pair<std::string_view, ValueKind>, 8> kWords{{
    {"string", ValueKind::Text},
    {"integer", ValueKind::Number},
    {"float", ValueKind::Number},
    {"double", ValueKind::Number},
    {"boolean", ValueKind::Boolean},
    {"date", ValueKind::Date},
    {"time", ValueKind::Time},
    {"dateTime", ValueKind::Moment},
}};

constexpr std::string_view kDays = "dateDaysSince[";
constexpr std::string_view kSeconds = "dateTimeSecondsSince[";

/// Types such as "dateDaysSince[1960]".
std::optional<DataType> countingType(std::string_view word)
{
    if (word == "timeSeconds")
        return DataType{ValueKind::Number, false, TimeScale{0, 1, true}};
    const bool isDays = word.starts_with(kDays);
    if (!word.ends_with(']') || (!isDays && !word.starts_with(kSeconds)))
        return std::nullopt;
    word.remove_prefix(isDays ? kDays.size() : kSeconds.size());
    word.remove_suffix(1);
    const auto year = parseNumber(word);
    if (!year || *year < 0 || *year > kLastYear)
        return std::nullopt;
    const double origin = startOfYear(static_cast<int>(*year));
    return DataType{ValueKind::Number, isDays,
                    TimeScale{origin, isDays ? base::kSecondsPerDay : 1}};
}

/// The constant as another kind, if it has no type of its own; else null.
ExpressionPtr reread(const Expression& expression, ValueKind kind)
{
    const auto* constant = dynamic_cast<const Constant*>(&expression);
    if (constant == nullptr || constant->isTyped())
        return nullptr;
    return constant->cell().isMissing() ? missingConstant(kind)
                                        : constantOf(constant->text(), kind, false);
}

/// Whether the value is a date, moment or time.
bool isTemporal(ValueKind kind)
{
    return kind == ValueKind::Date || kind == ValueKind::Moment || kind == ValueKind::Time;
}

/// The rule that converts a kind to a type, or empty.
std::optional<ConversionRule> ruleFor(ValueKind from, const DataType& to)
{
    if (from == ValueKind::Text)
        return ConversionRule::FromText;
    if (to.kind == ValueKind::Text)
        return isTemporal(from) ? std::nullopt : std::optional(ConversionRule::ToText);
    if (to.kind == ValueKind::Boolean)
        return from == ValueKind::Number ? std::optional(ConversionRule::ToTruth) : std::nullopt;
    if (from == ValueKind::Moment && to.kind == ValueKind::Date)
        return ConversionRule::ToDay;
    const bool isRead =
        from == to.kind || (from == ValueKind::Date && to.kind == ValueKind::Moment);
    const bool isNumber = to.kind == ValueKind::Number && !isTemporal(from);
    return isRead || isNumber ? std::optional(ConversionRule::Same) : std::nullopt;
}

/// Converts a date, a time or a number that counts time to a scale. A time of day and a point of
/// time cannot be converted to each other.
ExpressionPtr counted(ExpressionPtr expression, const TimeScale& to)
{
    const TimeScale from =
        expression->scale().value_or(TimeScale{0, 1, expression->kind() == ValueKind::Time});
    if (from.isOfDay != to.isOfDay)
        throw ModelFault("a time of day and a point of time cannot be converted to each other");
    if (from == to)
        return expression;
    return std::make_unique<Counting>(std::move(expression), from, to);
}

} // namespace

std::optional<DataType> dataTypeOf(pugi::xml_node node)
{
    const pugi::xml_attribute given = node.attribute("dataType");
    if (!given)
        return std::nullopt;
    const std::string_view word = given.value();
    for (const auto& [known, kind] : kWords)
        if (word == known)
            return DataType{kind, word == "integer"};
    if (const auto type = countingType(word))
        return type;
    throw ModelFault("there is no data type \"" + std::string(word) + "\"");
}

std::optional<TimeScale> timeScaleOf(pugi::xml_node node)
{
    const auto type = dataTypeOf(node);
    return type ? type->scale : std::nullopt;
}

/// An explicit conversion of the model. It allows more than the coercion of an argument.
ExpressionPtr converted(ExpressionPtr expression, const DataType& type)
{
    const ValueKind from = expression->kind();
    if (ExpressionPtr constant = from == type.kind ? nullptr : reread(*expression, type.kind))
        expression = std::move(constant);
    else if (type.scale && (isTemporal(from) || expression->scale()))
        expression = counted(std::move(expression), *type.scale);
    else if (from != type.kind) {
        const auto rule = ruleFor(from, type);
        if (!rule)
            throw ModelFault("a value cannot be converted to the requested type");
        expression = std::make_unique<Conversion>(std::move(expression), type.kind, *rule);
    }
    if (type.isWhole)
        expression =
            std::make_unique<Conversion>(std::move(expression), type.kind, ConversionRule::ToWhole);
    expression->setScale(type.scale);
    return expression;
}

ExpressionPtr coerced(ExpressionPtr expression, ValueKind kind)
{
    const ValueKind from = expression->kind();
    if (from == kind)
        return expression;
    if (ExpressionPtr constant = reread(*expression, kind))
        return constant;
    const bool isNumber = from == ValueKind::Boolean && kind == ValueKind::Number;
    const bool isMoment = from == ValueKind::Date && kind == ValueKind::Moment;
    if (!isNumber && !isMoment)
        throw ModelFault("an argument is of a type that does not fit");
    return std::make_unique<Conversion>(std::move(expression), kind, ConversionRule::Same);
}

} // namespace scoring
