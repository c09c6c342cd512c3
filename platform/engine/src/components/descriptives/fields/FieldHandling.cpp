#include "components/descriptives/fields/FieldHandling.h"

#include "components/descriptives/fields/FoundStorage.h"
#include "components/descriptives/model/FieldSummary.h"
#include "components/descriptives/summary/FieldParts.h"

namespace EmbeddedHV {
namespace {

/// Whole numbers with at most this many distinct values are categories...
constexpr std::int64_t kMostCategories = 10;
/// ...if each value has on average at least this many records.
constexpr std::int64_t kLeastRecordsPerCategory = 5;
/// In fewer records, all values may be different by chance.
constexpr std::int64_t kLeastIdentified = 10;

/// What measure and role depend on.
struct FieldFacts
{
    std::int64_t records = 0;
    std::int64_t valid = 0;
    std::int64_t distinct = 0;
    bool isWhole = false;
    bool isConsecutive = false; ///< whole numbers without a gap

    bool isUnique() const { return valid == records && distinct == valid; }
};

FieldFacts factsOf(const ComponentQueries& queries, const InputTable& table, const CFField& field)
{
    std::string whole = "false";
    std::string consecutive = "false";
    if (isNumber(field)) {
        const bool isInteger = field.GetStorage() == CFField::Integer;
        whole = isInteger ? "true" : "coalesce(bool_and(x = floor(x)), false)";
        // The span of integers may exceed their own range.
        consecutive = std::string("coalesce(") +
                      (isInteger ? "CAST(max(x) AS HUGEINT)" : "max(x)") +
                      " - min(x) + 1 = count(x), false)";
    }
    duck::Result row = queries.run(
        "SELECT count(*), count(x), count(DISTINCT x), CAST(" + whole + " AS BIGINT), CAST(" +
        consecutive + " AS BIGINT) FROM (SELECT " + table.column(field) + " AS x FROM " +
        table.name() + " WHERE " + InputTable::kWeight + " IS NOT NULL)");
    return {row.integer(0, 0), row.integer(1, 0), row.integer(2, 0), row.integer(3, 0) == 1,
            row.integer(4, 0) == 1};
}

CFField::FieldType measureFor(const CFField& field, const FieldFacts& facts)
{
    // An order cannot be found from the values.
    if (field.GetType() == CFField::Ordinal)
        return CFField::Ordinal;
    if (isText(field)) {
        if (facts.isUnique() && facts.valid > kLeastIdentified)
            return CFField::Typeless;
        return facts.distinct == 2 ? CFField::Flag : CFField::Nominal;
    }
    if (!isNumber(field) || field.GetType() != CFField::Continuous)
        return field.GetType();
    const bool isCategory = facts.isWhole && facts.distinct > 1 &&
                            facts.distinct <= kMostCategories &&
                            facts.valid >= kLeastRecordsPerCategory * facts.distinct;
    if (!isCategory)
        return CFField::Continuous;
    return facts.distinct == 2 ? CFField::Flag : CFField::Nominal;
}

CFField::RoleType roleFor(const CFField& field, const FieldFacts& facts, const std::string& target)
{
    if (field.GetName() == target)
        return CFField::Target;
    if (field.GetRole() != CFField::Input)
        return field.GetRole();
    if (facts.distinct <= 1)
        return CFField::None;
    const bool identifies = facts.isUnique() && facts.valid > kLeastIdentified &&
                            (isText(field) || (facts.isWhole && facts.isConsecutive));
    return identifies ? CFField::RecordId : CFField::Input;
}

bool isDeclared(const CFField& field)
{
    return field.GetMissingValues().IsValid() || !field.GetValueLabels().empty();
}

/// Each field is a set of its own.
std::vector<std::vector<std::size_t>> singleFields(const Fields& fields)
{
    std::vector<std::vector<std::size_t>> sets;
    for (std::size_t i = 0; i < fields.size(); ++i)
        sets.push_back({i});
    return sets;
}

void adaptStorage(const ComponentQueries& queries, const InputTable& table,
                  const std::string& partName, Fields& fields)
{
    std::string conversions;
    Fields converted = fields;
    forFieldSets(queries, table, partName, fields, singleFields(fields),
                 [&](const InputTable& part, std::size_t i) {
                     const CFField& field = fields[i];
                     if (!isText(field) || isDeclared(field))
                         return;
                     const auto found = foundStorage(queries, part, field);
                     if (!found)
                         return;
                     conversions += (conversions.empty() ? "" : ", ") + found->conversion;
                     converted[i] = CFField(field.GetName(), CFField::Continuous, found->storage,
                                            field.GetRole());
                     converted[i].SetLabel(field.GetLabel());
                 });
    if (conversions.empty())
        return;
    queries.run("CREATE OR REPLACE TEMP TABLE " + table.name() + " AS SELECT * REPLACE (" +
                conversions + ") FROM " + table.name());
    fields = std::move(converted);
}

void adaptMeasureAndRole(const ComponentQueries& queries, const InputTable& table,
                         const std::string& partName, const FieldRule& rule, Fields& fields)
{
    Fields adapted = fields;
    forFieldSets(queries, table, partName, fields, singleFields(fields),
                 [&](const InputTable& part, std::size_t i) {
                     const FieldFacts facts = factsOf(queries, part, fields[i]);
                     if (rule.measure && !isDeclared(fields[i]))
                         adapted[i].SetType(measureFor(fields[i], facts));
                     if (rule.role)
                         adapted[i].SetRole(roleFor(adapted[i], facts, rule.target));
                 });
    fields = std::move(adapted);
}

} // namespace

void adaptFields(const ComponentQueries& queries, const InputTable& table,
                 const std::string& partName, const FieldRule& rule, Fields& fields)
{
    if (rule.storage)
        adaptStorage(queries, table, partName, fields);
    if (rule.measure || rule.role)
        adaptMeasureAndRole(queries, table, partName, rule, fields);
}

} // namespace EmbeddedHV
