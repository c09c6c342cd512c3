#include "hvhost/show/ResultTable.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ostream>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "RowDataIterator.h"
#include "bridge/JNIObjectManager.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/show/TextTable.h"

namespace {

constexpr int kJsonSchema = 1;

/// Beyond this, different whole numbers may be the same double.
constexpr double kTwoTo53 = 9007199254740992;

void printCsvCell(std::ostream& out, const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos) {
        out << text;
        return;
    }
    out << '"';
    for (const char character : text)
        out << (character == '"' ? "\"\"" : std::string(1, character));
    out << '"';
}

void printCsv(const ResultTable& table, std::ostream& out)
{
    printCsvNames(table.columns, out);
    for (const ResultTable::Row& row : table.rows)
        printCsvRow(row, out);
}

nlohmann::ordered_json jsonValue(const std::optional<std::string>& cell,
                                 const ResultTable::Column& column)
{
    if (!cell)
        return nullptr;
    if (!column.isNumber())
        return *cell;
    const double number = std::strtod(cell->c_str(), nullptr);
    // The largest integers are not exact as doubles.
    constexpr double kTwoTo63 = 9223372036854775808.0;
    if (column.storage == CFField::Integer && number >= -kTwoTo63 && number < kTwoTo63)
        return static_cast<long long>(number);
    return number;
}

void printJson(const ResultTable& table, std::ostream& out)
{
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const ResultTable::Row& row : table.rows) {
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (std::size_t i = 0; i < row.size(); ++i)
            object[table.columns[i].name] = jsonValue(row[i], table.columns[i]);
        rows.push_back(std::move(object));
    }
    const nlohmann::ordered_json document{{"schema", kJsonSchema}, {"rows", std::move(rows)}};
    out << document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << '\n';
}

} // namespace

std::optional<std::string> cellText(EmbeddedHV::RowDataIterator& rows, std::size_t field,
                                    ResultTable::Column& column)
{
    void* value = nullptr;
    unsigned long long length = 0;
    rows.getRecordValue(field, value, length);
    if (value == nullptr)
        return std::nullopt;
    if (column.storage == CFField::String)
        return std::string(static_cast<const char*>(value), static_cast<std::size_t>(length));
    double number = 0;
    std::memcpy(&number, value, sizeof number);
    if (column.storage == CFField::Integer && std::abs(number) >= kTwoTo53)
        column.isRounded = true;
    return numberText(number, column.storage);
}

std::string roundedColumnsText(const std::vector<ResultTable::Column>& columns)
{
    std::string names;
    for (const ResultTable::Column& column : columns)
        if (column.isRounded)
            names += (names.empty() ? "\"" : ", \"") + column.name + "\"";
    return names.empty()
               ? names
               : "whole numbers from " + std::to_string(static_cast<std::int64_t>(kTwoTo53)) +
                     " on may be shown rounded: of " + names;
}

void printCsvNames(const std::vector<ResultTable::Column>& columns, std::ostream& out)
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        out << (i == 0 ? "" : ",");
        printCsvCell(out, columns[i].name);
    }
    out << '\n';
}

void printCsvRow(const ResultTable::Row& row, std::ostream& out)
{
    for (std::size_t i = 0; i < row.size(); ++i) {
        out << (i == 0 ? "" : ",");
        printCsvCell(out, row[i].value_or(""));
    }
    out << '\n';
}

ResultTable readTable(EmbeddedHV::RowDataIterator& rows, std::size_t keyCount)
{
    ResultTable table;
    table.keyCount = keyCount;
    const CFMetaData model(rows.getDataModel());
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        table.columns.push_back({model.GetField(i)->GetName(), model.GetField(i)->GetStorage()});
    while (rows.nextRecord() == EmbeddedHV::RowDataIterator::RecordAvailable) {
        ResultTable::Row row;
        for (std::size_t i = 0; i < table.columns.size(); ++i)
            row.push_back(cellText(rows, i, table.columns[i]));
        table.rows.push_back(std::move(row));
    }
    rows.dispose(JNIObjectManager::getManager()->getEnv());
    return table;
}

void printTable(const ResultTable& table, const TableLook& look, std::ostream& out)
{
    if (look.form == "csv")
        printCsv(table, out);
    else if (look.form == "json")
        printJson(table, out);
    else
        printTextTable(table, look.text, out);
}
