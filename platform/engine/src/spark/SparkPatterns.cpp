#include "spark/SparkPatterns.h"

#include <array>
#include <string>
#include <string_view>

#include "spark/SparkDialect.h"

namespace EmbeddedHV {
namespace {

/// In the order of PatternField.
// The macros join literals.
// NOLINTBEGIN(bugprone-suspicious-missing-comma)
constexpr std::string_view kFieldExpressions[] = {
    "",
    HV_SPARK_YEAR,
    HV_SPARK_YEAR_OF_CENTURY,
    HV_SPARK_MONTH,
    HV_SPARK_MONTH_SHORT_NAME,
    HV_SPARK_MONTH_NAME,
    HV_SPARK_DAY,
    HV_SPARK_DAY_OF_YEAR,
    HV_SPARK_DAY_SHORT_NAME,
    HV_SPARK_DAY_NAME,
    HV_SPARK_HOUR,
    HV_SPARK_HOUR_OF_HALF_DAY,
    HV_SPARK_MINUTE,
    HV_SPARK_SECOND,
    HV_SPARK_MILLISECONDS,
    HV_SPARK_MICROSECONDS,
    HV_SPARK_HALF_DAY,
};
// NOLINTEND(bugprone-suspicious-missing-comma)

/// The groups that name one field in different ways. The last one in a pattern counts.
constexpr std::array<std::string_view, 9> kGroups = {"yc", "MN", "d", "D", "Hh",
                                                     "m",  "s",  "f", "a"};

constexpr std::string_view kGroupBegin = "(?<";

/// The group of a field; 0 for a field that is only checked.
char groupOf(std::string_view expression)
{
    return expression.starts_with(kGroupBegin) ? expression[kGroupBegin.size()] : '\0';
}

bool isPatternBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Blanks match any blanks.
void appendPlainText(const std::string& text, std::string& expression)
{
    constexpr std::string_view kSpecial = "\\^$.|?*+()[]{}&-~#";
    bool afterBlank = false;
    for (const char c : text) {
        const bool isBlank = isPatternBlank(c);
        if (isBlank && !afterBlank)
            expression += "\\s++";
        if (!isBlank && kSpecial.find(c) != std::string_view::npos)
            expression += '\\';
        if (!isBlank)
            expression += c;
        afterBlank = isBlank;
    }
}

/// Whether a later part names the same field.
bool isOverruled(const DateTimePattern& pattern, std::size_t part, char group)
{
    for (const std::string_view groups : kGroups)
        if (groups.find(group) != std::string_view::npos)
            for (std::size_t later = part + 1; later < pattern.size(); ++later) {
                const char other =
                    groupOf(kFieldExpressions[static_cast<std::size_t>(pattern[later].field)]);
                if (other != '\0' && groups.find(other) != std::string_view::npos)
                    return true;
            }
    return false;
}

std::string missingGroups(const std::string& expression)
{
    std::string missing;
    for (const std::string_view groups : kGroups)
        for (const char group : groups)
            if (expression.find(std::string(kGroupBegin) + group + ">") == std::string::npos)
                missing += std::string(kGroupBegin) + group + ">x){0}";
    return missing;
}

} // namespace

std::string SparkDialect::pattern(const DateTimePattern& pattern) const
{
    std::string body;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i].field == PatternField::Literal) {
            appendPlainText(pattern[i].text, body);
            continue;
        }
        std::string field(kFieldExpressions[static_cast<std::size_t>(pattern[i].field)]);
        const char group = groupOf(field);
        if (group != '\0' && isOverruled(pattern, i, group))
            field = "(?:" + field.substr(kGroupBegin.size() + 2);
        body += field;
    }
    return literal("^\\s*+" + body + "\\s*+\\z" + missingGroups(body));
}

} // namespace EmbeddedHV
