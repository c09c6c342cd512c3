#include "ResultTable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <ostream>

#include <nlohmann/json.hpp>

#include "CFMetaData.h"
#include "RowDataIterator.h"
#include "bridge/JNIObjectManager.h"

namespace {

constexpr double kSecondsPerDay = 86400.0;
constexpr int kJsonSchema = 1;

std::string shortestNumber(double value)
{
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value);
    return {buffer.data(), end.ptr};
}

std::string dateText(double days)
{
    const std::chrono::sys_days day{std::chrono::days(static_cast<int>(days))};
    const std::chrono::year_month_day date(day);
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
                  static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    return buffer.data();
}

std::string timeText(double seconds)
{
    const int whole = static_cast<int>(seconds);
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%02d:%02d:%02d", whole / 3600, whole / 60 % 60,
                  whole % 60);
    const double fraction = seconds - whole;
    const std::string text = buffer.data();
    return fraction > 0 ? text + shortestNumber(std::round(fraction * 1e6) / 1e6).substr(1) : text;
}

std::string timestampText(double seconds)
{
    const double days = std::floor(seconds / kSecondsPerDay);
    return dateText(days) + " " + timeText(seconds - days * kSecondsPerDay);
}

std::string valueText(const void* value, unsigned long long length, CFField::StorageType storage)
{
    if (storage == CFField::String)
        return {static_cast<const char*>(value), static_cast<std::size_t>(length)};
    double number = 0;
    std::memcpy(&number, value, sizeof number);
    switch (storage) {
    case CFField::Date:
        return dateText(number);
    case CFField::Time:
        return timeText(number);
    case CFField::Timestamp:
        return timestampText(number);
    default:
        return shortestNumber(number);
    }
}

bool isNumber(const ResultTable::Column& column)
{
    return column.storage == CFField::Integer || column.storage == CFField::Real;
}

/// Characters, not bytes: what a terminal counts.
std::size_t widthOf(const std::string& text)
{
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; }));
}

std::string shown(const std::optional<std::string>& cell)
{
    if (!cell)
        return ".";
    std::string text = *cell;
    for (char& character : text)
        if (static_cast<unsigned char>(character) < ' ')
            character = ' ';
    return text;
}

/// Numbers as people read them in a table: seven significant digits.
std::string shown(const std::optional<std::string>& cell, const ResultTable::Column& column)
{
    if (!cell || column.storage != CFField::Real)
        return shown(cell);
    std::array<char, 32> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.7g", std::strtod(cell->c_str(), nullptr));
    return buffer.data();
}

void printCell(std::ostream& out, const std::string& text, std::size_t width, bool right)
{
    const std::string padding(width - std::min(width, widthOf(text)), ' ');
    out << ' ' << (right ? padding + text : text + padding) << ' ';
}

void printText(const ResultTable& table, std::ostream& out)
{
    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        std::size_t width = widthOf(table.columns[i].name);
        for (const ResultTable::Row& row : table.rows)
            width = std::max(width, widthOf(shown(row[i], table.columns[i])));
        widths.push_back(width);
    }
    const auto rule = [&](const char* left, const char* middle, const char* right) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            out << (i == 0 ? left : middle);
            for (std::size_t n = 0; n < widths[i] + 2; ++n)
                out << "─";
        }
        out << right << '\n';
    };
    const auto line = [&](const auto& textAt) {
        for (std::size_t i = 0; i < widths.size(); ++i) {
            out << "│";
            printCell(out, textAt(i), widths[i], isNumber(table.columns[i]));
        }
        out << "│\n";
    };
    rule("┌", "┬", "┐");
    line([&](std::size_t i) { return table.columns[i].name; });
    rule("├", "┼", "┤");
    for (const ResultTable::Row& row : table.rows)
        line([&](std::size_t i) { return shown(row[i], table.columns[i]); });
    rule("└", "┴", "┘");
}

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
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        out << (i == 0 ? "" : ",");
        printCsvCell(out, table.columns[i].name);
    }
    out << '\n';
    for (const ResultTable::Row& row : table.rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            out << (i == 0 ? "" : ",");
            printCsvCell(out, row[i].value_or(""));
        }
        out << '\n';
    }
}

nlohmann::ordered_json jsonValue(const std::optional<std::string>& cell,
                                 const ResultTable::Column& column)
{
    if (!cell)
        return nullptr;
    if (!isNumber(column))
        return *cell;
    const double number = std::strtod(cell->c_str(), nullptr);
    if (column.storage == CFField::Integer)
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

ResultTable readTable(EmbeddedHV::RowDataIterator& rows)
{
    ResultTable table;
    const CFMetaData model(rows.getDataModel());
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        table.columns.push_back({model.GetField(i)->GetName(), model.GetField(i)->GetStorage()});
    while (rows.nextRecord() == EmbeddedHV::RowDataIterator::RecordAvailable) {
        ResultTable::Row row;
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            void* value = nullptr;
            unsigned long long length = 0;
            rows.getRecordValue(i, value, length);
            row.push_back(value == nullptr
                              ? std::nullopt
                              : std::optional(valueText(value, length, table.columns[i].storage)));
        }
        table.rows.push_back(std::move(row));
    }
    rows.dispose(JNIObjectManager::getManager()->getEnv());
    return table;
}

void printTable(const ResultTable& table, const std::string& format, std::ostream& out)
{
    if (format == "csv")
        printCsv(table, out);
    else if (format == "json")
        printJson(table, out);
    else
        printText(table, out);
}
