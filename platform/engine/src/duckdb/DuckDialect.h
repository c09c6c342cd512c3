#pragma once

#include "dialect/Dialect.h"

namespace EmbeddedHV {

/// The SQL of the embedded database.
class DuckDialect final : public Dialect
{
public:
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
    std::string recordOrder() const override { return recordNumber(); }
    std::string leading(const LeadingRecords& records) const override;
    std::string firstRecords(const std::string& columns, const std::string& from,
                             const std::string& keys, const std::string& number) const override;
    std::string draw(const std::string& number, std::int64_t seed) const override;
    std::string drawnShare(const std::string& draw) const override;
    std::string copies(const std::string& factor, const std::string& number, std::int64_t most,
                       const std::string& fault) const override;
    std::string replacedColumns(const datafile::Fields& fields,
                                const std::vector<NewColumn>& replaced) const override;

    std::string csvTable(const CsvSource& source) const override;
    std::string rejectScansOf(const std::string& rejects) const override;
    std::string readsAll(const std::string& columns) const override;
    std::string parquetTable(const std::string& path) const override;
    std::string fileOf(const std::string& select, const FileTarget& target) const override;

    std::string newTable(const std::string& table, const std::string& select) const override;
    std::string newTemporaryTable(const std::string& table,
                                  const std::string& select) const override;
    std::string addition(const std::string& table, const std::string& select) const override;
};

/// The only instance.
const DuckDialect& duckDialect();

} // namespace EmbeddedHV
