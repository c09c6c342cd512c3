#include "hvhost/tcm/TcmOutput.h"

#include <cstdlib>
#include <filesystem>
#include <ostream>

#include "base/NumberText.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/base/ValueText.h"
#include "hvhost/show/OutputShown.h"
#include "hvhost/show/ResultWords.h"
#include "hvhost/show/TextTable.h"
#include "hvhost/tcm/TcmDocument.h"

namespace {

constexpr int kTcmSchema = 1;

/// Rounds numbers to six significant digits.
ResultTable withRoundedNumbers(ResultTable table)
{
    for (ResultTable::Row& row : table.rows)
        for (std::size_t at = 0; at < row.size(); ++at)
            if (row[at] && table.columns[at].storage == CFField::Real)
                row[at] = base::roundedNumber(std::strtod(row[at]->c_str(), nullptr));
    return table;
}

void printParts(const std::vector<TcmPart>& parts, const TextForm& text, std::ostream& out)
{
    bool isFirst = true;
    for (const TcmPart& part : parts) {
        if (!part.chart.is_null() || part.isForPageAlone)
            continue;
        out << (isFirst ? "" : "\n") << part.title << '\n' << part.remarks;
        if (part.table.rows.empty() && part.remarks.empty())
            out << word("none") << '\n';
        if (!part.table.rows.empty())
            printTable(withRoundedNumbers(inWords(part.table)), {"text", text}, out);
        isFirst = false;
    }
}

std::string asJson(const nlohmann::ordered_json& members)
{
    nlohmann::ordered_json document{{"schema", kTcmSchema}};
    document.update(members);
    return document.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

} // namespace

TcmShown::TcmShown(const ShownOptions& options, const InterruptWatch& watch)
    : _form(formOf(options.format, options.output, {"csv", "json", "html"})),
      _result(options.output, options.force, watch), _watch(watch),
      _text(textForm(options.text, _form, _result.isFile()))
{
}

void TcmShown::show(const TcmResult& result, HostSession& session) const
{
    // A long result takes seconds.
    if (_form == "json") {
        InterruptWatch::Abandonable building(_watch);
        const std::string text = asJson(result.document);
        building.end();
        _result.deliver(text);
    } else if (_form == "csv") {
        _result.deliver([&](std::ostream& out) { printTable(result.rows, {"csv"}, out); });
    } else if (_form == "html") {
        InterruptWatch::Abandonable building(_watch);
        const auto output = tcmOutput(session, result);
        building.end();
        _result.deliver([&](std::ostream& out) {
            writeOutput(*output, {"html", _result.isFile()}, out);
        });
    } else {
        _result.deliver([&](std::ostream& out) { printParts(result.parts, _text, out); });
    }
}

std::optional<std::string> tcmNumber(const nlohmann::ordered_json& value)
{
    if (!value.is_number())
        return std::nullopt;
    return value.is_number_float() ? base::shortestNumber(value.get<double>()) : value.dump();
}
