#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "ErrorText.h"
#include "HostConversions.h"
#include "UserCaseFile.h"

/// Data files as tests write and read them. Values are in the host's encoding.
namespace casefiles {

using Value = std::variant<double, std::string>;
using Row = std::vector<Value>;

/// Keeps the reports that it gets.
class KeepingMonitor : public ErrorMonitor
{
public:
    void Report(const std::string& text) override { reports.push_back(text); }
    long long ErrorCount() const override { return static_cast<long long>(reports.size()); }
    std::vector<std::string> reports;
};

inline VEXA_Variable variable(const std::string& name, int width = 0,
                              VEXA_Format format = {8, kFormatNumber, 2})
{
    VEXA_Variable result(width);
    result.SetName(name);
    if (width == 0)
        result.SetFormat(format);
    return result;
}

inline UserCaseFileSpec specOf(const std::string& name, bool forOutput,
                               const std::string& password = "")
{
    UserCaseFileSpec spec;
    spec.Init(name, true, forOutput);
    spec.SetPassword(password);
    return spec;
}

inline void addCases(IndependentDataStore& store, const std::vector<Row>& rows)
{
    std::vector<OBS> buffer(static_cast<std::size_t>(store.GetObsAreaSize()));
    VEXA_Case newCase(&store, buffer.data());
    for (const Row& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i)
            if (const auto* text = std::get_if<std::string>(&row[i]))
                newCase.SetStringValue(static_cast<int>(i), text->data(),
                                       static_cast<int>(text->size()));
            else
                newCase.SetNumericValue(static_cast<int>(i), std::get<double>(row[i]));
        store.AddCase(newCase);
    }
}

inline void writeSav(const std::string& name, const std::vector<VEXA_Variable>& variables,
                     const std::vector<Row>& rows, const std::string& password = "")
{
    const UserOutputCaseFile file(specOf(name, true, password));
    IndependentDataStore& store = *file.DataSource();
    for (const VEXA_Variable& one : variables)
        store.MakeVariable(one);
    store.CommitDictionary();
    addCases(store, rows);
    store.Close();
}

/// The cases of a source; texts without the blanks at their end.
inline std::vector<Row> casesOf(const VEXA_DataSource& source, ErrorMonitor* monitor = nullptr)
{
    std::vector<Row> rows;
    const std::unique_ptr<VEXA_InputCaseIterator> cases(source.MakeIterator(monitor));
    while (cases->NextCase() != 0) {
        Row row;
        for (int i = 0; i < source.ColumnCount(); ++i) {
            const int width = source.GetVariable(i).GetType();
            if (width == 0) {
                row.emplace_back(cases->GetNumericValue(i));
                continue;
            }
            const std::string text(cases->GetStringValue(i), static_cast<std::size_t>(width));
            row.emplace_back(text.substr(0, text.find_last_not_of(' ') + 1));
        }
        rows.push_back(row);
    }
    return rows;
}

/// What a refusal says, or an empty text.
template <class Action>
std::string refusalOf(Action action)
{
    try {
        action();
    } catch (const ErrorText& error) {
        return error.what();
    }
    return {};
}

/// Seconds on the host's scale of so many days after 1970-01-01.
inline double day(double days)
{
    return GetBaseDateNumber() + days * 86400;
}

} // namespace casefiles
