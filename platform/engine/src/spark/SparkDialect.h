#pragma once

#include "dialect/Dialect.h"

namespace EmbeddedHV {

/// How a cluster adds Reals.
enum class RealSums
{
    Exact, ///< with the same result in every order of the records
    Double ///< as the server's own functions do
};

/// The SQL of a Spark cluster. Every session must have the settings of kSparkSettings.
class SparkDialect final : public Dialect
{
public:
    explicit SparkDialect(RealSums sums) : _sums(sums) {}

    std::string name(const std::string& name) const override;
    std::string literal(const std::string& text) const override;
    std::string literal(std::int64_t value) const override;
    std::string literal(double value) const override;
    const char* typeName(ValueType type) const override;

    std::string_view function(const Function& form) const override;
    std::string pattern(const DateTimePattern& pattern) const override;

    std::string remainder(const std::string& left, const std::string& right) const override;
    std::string power(const std::string& base, const std::string& exponent) const override;
    std::string list(const std::string& elements) const override;
    std::string finiteReal(const std::string& value) const override;
    std::string orderedReal(const std::string& value) const override;
    std::string listText(const std::string& list) const override;
    std::string exactly(const std::string& value, ValueType from, ValueType to) const override;
    std::string onModelScale(const std::string& value, ValueType type) const override;
    std::string raised(const std::string& text, ValueType type) const override;

    std::string aggregated(const std::string& from,
                           const std::vector<AggregateColumn>& columns) const override;

    std::string recordNumber() const override;
    std::string recordOrder() const override;
    std::string leading(const LeadingRecords& records) const override;
    std::string firstRecords(const std::string& columns, const std::string& from,
                             const std::string& keys, const std::string& number) const override;
    std::string draw(const std::string& number, std::int64_t seed) const override;
    std::string drawnShare(const std::string& draw) const override;
    std::string copies(const std::string& factor, const std::string& number, std::int64_t most,
                       const std::string& fault) const override;
    std::string replacedColumns(const datafile::Fields& fields,
                                const std::vector<NewColumn>& replaced) const override;

    /// The path of a file or folder is a URI as the cluster sees it, and no pattern.
    std::string parquetTable(const std::string& path) const override;
    /// The target becomes a folder of files. Spark stores no entry in a Parquet file.
    std::string fileOf(const std::string& select, const FileTarget& target) const override;

    std::string newTable(const std::string& table, const std::string& select) const override;
    /// A table in the database of the job, which ends with the session. The server would keep the
    /// records of a cached view longer.
    std::string newTemporaryTable(const std::string& table,
                                  const std::string& select) const override;
    std::string addition(const std::string& table, const std::string& select) const override;
    /// The FROM item with the records of a table of Parquet files in the order of the SELECT that
    /// made it. The cluster reads large files first. It drops the order again where nothing depends
    /// on it, for example below a sum.
    std::string inFileOrder(const std::string& table, const datafile::Fields& fields) const;

private:
    RealSums _sums;
};

/// The instance for this kind of sums, which nothing but `aggregated` depends on.
const SparkDialect& sparkDialect(RealSums sums = RealSums::Exact);

/// A setting of a Spark session.
struct SparkSetting
{
    const char* name;
    const char* value;
};

/// The settings that give the dialect's SQL its meaning, whatever the defaults of the cluster are.
inline constexpr SparkSetting kSparkSettings[] = {
    {"spark.sql.session.timeZone", "UTC"},
    {"spark.sql.timestampType", "TIMESTAMP_NTZ"},
    {"spark.sql.timeType.enabled", "true"},
    {"spark.sql.ansi.enabled", "true"}, // numbers beyond their range fail
    {"spark.sql.ansi.enforceReservedKeywords", "false"},
    {"spark.sql.ansi.doubleQuotedIdentifiers", "false"},
    {"spark.sql.caseSensitive", "true"},
    // Otherwise the server replaces ${...} in names by its variables.
    {"spark.sql.variable.substitute", "false"},
    // Otherwise a backslash in a literal is not an escape, and a name may be a regular expression.
    {"spark.sql.parser.escapedStringLiterals", "false"},
    {"spark.sql.parser.quotedRegexColumnNames", "false"},
    {"spark.sql.groupByOrdinal", "true"},
    {"spark.sql.orderByOrdinal", "true"},
    {"spark.sql.legacy.timeParserPolicy", "CORRECTED"},
    {"spark.sql.legacy.statisticalAggregate", "false"},
    {"spark.sql.legacy.sizeOfNull", "false"},
    // A record of a wrong length must be found whatever columns a statement uses.
    {"spark.sql.csv.parser.columnPruning.enabled", "false"},
};

} // namespace EmbeddedHV
