#include "report/document/JsonTables.h"

#include <algorithm>
#include <ostream>
#include <unordered_set>
#include <vector>

#include "FormattedText.h"
#include "report/document/PageText.h"

namespace {

void writeOpening(std::ostream& out, const std::string& name, const char* kind)
{
    out << "<div class=\"grid\">\n<table class=\"" << kind << "\">\n<caption>" << isolated(name)
        << "</caption>\n";
}

void writeClosing(std::ostream& out)
{
    out << "</table>\n</div>\n";
}

/// Scripts get the number with a point if the host's language has a comma.
void writeNumber(std::ostream& out, std::string number)
{
    const auto point = number.find('.');
    if (point == std::string::npos || decimalSign() == '.') {
        out << "<td>" << number << "</td>";
        return;
    }
    out << "<td data-value=\"" << number << "\">";
    number[point] = decimalSign();
    out << number << "</td>";
}

/// Writes a nested value as JSON. A cell that is not a text is a number or has no value: scripts
/// sort and draw such cells by their content.
void writeCell(std::ostream& out, const PageJson* value)
{
    if (!value || value->is_null())
        out << "<td></td>";
    else if (value->is_number())
        writeNumber(out, scalarText(*value));
    else if (value->is_structured())
        out << "<td class=\"text\"><code>"
            << isolated(value->dump(-1, ' ', false, PageJson::error_handler_t::replace))
            << "</code></td>";
    else
        out << "<td class=\"text\">" << labelText(scalarText(*value)) << "</td>";
}

/// The names of all members of all records, in order of appearance.
std::vector<std::string> columnsOf(const PageJson& records)
{
    std::vector<std::string> columns;
    std::unordered_set<std::string> known;
    for (const PageJson& record : records)
        for (const auto& [name, value] : record.items())
            if (known.insert(name).second)
                columns.push_back(name);
    return columns;
}

/// Decided by the first record with the member. Text columns are left-aligned.
bool hasWords(const PageJson& records, const std::string& column)
{
    const auto first = std::find_if(records.begin(), records.end(), [&](const PageJson& record) {
        return memberOf(record, column) != nullptr;
    });
    return first != records.end() && !memberOf(*first, column)->is_number();
}

void writeColumns(std::ostream& out, const std::vector<std::string>& columns,
                  const PageJson& records)
{
    out << "<thead>\n<tr>";
    for (std::size_t column = 0; column < columns.size(); ++column)
        out << "<th scope=\"col\" data-column=\"" << column << "\""
            << (hasWords(records, columns[column]) ? " class=\"words\">" : ">")
            << labelText(columns[column]) << "</th>";
    out << "</tr>\n</thead>\n";
}

/// Records are written by columns, other rows by elements.
void writeRow(std::ostream& out, const PageJson& row, const std::vector<std::string>& columns)
{
    out << "<tr>";
    if (!columns.empty())
        for (const std::string& column : columns)
            writeCell(out, memberOf(row, column));
    else if (row.is_array())
        for (const PageJson& value : row)
            writeCell(out, &value);
    else
        writeCell(out, &row);
    out << "</tr>\n";
}

} // namespace

bool isRecords(const PageJson& value)
{
    return value.is_array() && !value.empty() &&
           std::all_of(value.begin(), value.end(),
                       [](const PageJson& record) { return record.is_object(); });
}

void writeArray(std::ostream& out, const std::string& name, const PageJson& array)
{
    const std::vector<std::string> columns =
        isRecords(array) ? columnsOf(array) : std::vector<std::string>();
    writeOpening(out, name, "data");
    if (!columns.empty())
        writeColumns(out, columns, array);
    out << "<tbody>\n";
    for (const PageJson& row : array)
        writeRow(out, row, columns);
    out << "</tbody>\n";
    writeClosing(out);
}

void writePairs(std::ostream& out, const std::string& name, const PageJson& object)
{
    if (std::all_of(object.begin(), object.end(),
                    [](const PageJson& value) { return value.is_structured(); }))
        return;
    writeOpening(out, name, "data pairs");
    out << "<tbody>\n";
    for (const auto& [key, value] : object.items())
        if (!value.is_structured()) {
            out << "<tr><th scope=\"row\">" << labelText(key) << "</th>";
            writeCell(out, &value);
            out << "</tr>\n";
        }
    out << "</tbody>\n";
    writeClosing(out);
}
