#include "data/ColumnForms.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/AsciiText.h"
#include "base/ListText.h"
#include "datafile/SqlQuoting.h"

namespace {

namespace duck = datafile::duck;
using datafile::quotedLiteral;
using Order = ColumnForm::Order;

constexpr std::array<std::pair<const char*, Order>, 13> kDates{{{"%Y-%m-%d", Order::Fixed},
                                                                {"%d.%m.%Y", Order::Fixed},
                                                                {"%Y/%m/%d", Order::Fixed},
                                                                {"%Y.%m.%d", Order::Fixed},
                                                                {"%d/%m/%Y", Order::DayFirst},
                                                                {"%d-%m-%Y", Order::DayFirst},
                                                                {"%m/%d/%Y", Order::MonthFirst},
                                                                {"%m-%d-%Y", Order::MonthFirst},
                                                                {"%d.%m.%y", Order::ShortYear},
                                                                {"%d/%m/%y", Order::ShortYear},
                                                                {"%m/%d/%y", Order::ShortYear},
                                                                {"%d-%m-%y", Order::ShortYear},
                                                                {"%m-%d-%y", Order::ShortYear}}};
constexpr std::array<const char*, 6> kTimes{" %H:%M",    " %H:%M:%S", " %H:%M:%S.%f",
                                            "T%H:%M:%S", " %I:%M %p", " %I:%M:%S %p"};
constexpr std::size_t kLongestDate = 40;
constexpr const char* kLongYear = R"(^(\d{4}\D|\d+\D\d+\D\d{4}))";
/// Signs that may surround a number.
constexpr const char* kSigns = "[\\s\\x{00A0}$€£¥%]";

void addForms(std::vector<ColumnForm>& forms, const std::string& name, const char* time,
              const char* type)
{
    const std::string isLongYear =
        "CASE WHEN regexp_matches(" + name + ", " + quotedLiteral(kLongYear) + ") THEN ";
    for (const auto& [date, order] : kDates) {
        std::string value = "CAST(try_strptime(";
        value.append(name).append(", ").append(quotedLiteral(std::string(date) + time));
        value.append(") AS ").append(type).append(")");
        // %Y also reads 13/2/24, as the year 13.
        if (order != Order::ShortYear)
            value.insert(0, isLongYear).append(" END");
        forms.push_back({std::move(value), order});
    }
}

/// Drops the forms that do not fit one text of each column. Usually hardly any remain.
void dropByExample(duck::Connection& connection, const std::string& table,
                   std::vector<TextColumn>& columns)
{
    std::vector<std::string> examples;
    examples.reserve(columns.size());
    for (const TextColumn& column : columns)
        examples.push_back("any_value(" + column.name + ")");
    duck::Result found =
        connection.query("SELECT " + base::joined(examples, ", ") + " FROM " + table);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].needsForm)
            continue; // it has few forms, and the example may be the invalid value
        std::vector<ColumnForm>& forms = columns[i].forms;
        std::vector<std::string> tests;
        tests.reserve(forms.size());
        for (const ColumnForm& form : forms)
            tests.push_back(form.value + " IS NOT NULL");
        const std::string example = found.text(i, 0); // empty: no value
        if (example.empty() || !base::isDigit(example.front()) || example.size() > kLongestDate) {
            forms.clear();
            continue;
        }
        duck::Result fits =
            connection.query("SELECT " + base::joined(tests, ", ") + " FROM (SELECT " +
                             quotedLiteral(example) + " AS " + columns[i].name + ")");
        std::vector<ColumnForm> left;
        for (std::size_t form = 0; form < forms.size(); ++form)
            if (fits.text(form, 0) == "true")
                left.push_back(forms[form]);
        forms = std::move(left);
    }
}

/// Finds the first value that a form does not fit.
TextColumn::Misfit misfitOf(duck::Connection& connection, const std::string& table,
                            const TextColumn& column, const ColumnForm& form)
{
    duck::Result found = connection.query("SELECT record, " + column.name +
                                          " FROM (SELECT *, row_number() OVER () AS record FROM " +
                                          table + ") WHERE " + column.name + " IS NOT NULL AND " +
                                          form.value + " IS NULL ORDER BY record LIMIT 1");
    return {static_cast<std::uint64_t>(found.integer(0, 0)), found.text(1, 0)};
}

/// Drops the forms that do not fit all texts. If a column needs a form and has none, its best form
/// remains, with the first value that it does not fit.
void dropByAll(duck::Connection& connection, const std::string& table,
               std::vector<TextColumn>& columns)
{
    std::vector<std::string> counts;
    for (const TextColumn& column : columns) {
        if (column.forms.empty())
            continue;
        counts.push_back("count(" + column.name + ")");
        for (const ColumnForm& form : column.forms)
            counts.push_back("count(" + form.value + ")");
    }
    if (counts.empty())
        return;
    duck::Result found =
        connection.query("SELECT " + base::joined(counts, ", ") + " FROM " + table);
    std::size_t next = 0;
    for (TextColumn& column : columns) {
        if (column.forms.empty())
            continue;
        const std::int64_t texts = found.integer(next++, 0);
        std::vector<ColumnForm> left;
        std::size_t best = 0;
        const std::size_t first = next;
        for (std::size_t i = 0; i < column.forms.size(); ++i, ++next) {
            if (found.integer(next, 0) == texts)
                left.push_back(column.forms[i]);
            if (found.integer(next, 0) > found.integer(first + best, 0))
                best = i;
        }
        if (left.empty() && column.needsForm) {
            left.push_back(column.forms[best]);
            if (!left.front().isPlain)
                column.misfit = misfitOf(connection, table, column, left.front());
        }
        column.forms = std::move(left);
    }
}

bool hasOrder(const TextColumn& column, Order order)
{
    return std::any_of(column.forms.begin(), column.forms.end(),
                       [order](const ColumnForm& form) { return form.order == order; });
}

} // namespace

std::vector<ColumnForm> dateForms(const std::string& name, const std::string& type)
{
    std::vector<ColumnForm> forms;
    if (type != "TIMESTAMP")
        addForms(forms, name, "", "DATE");
    if (type == "DATE")
        return forms;
    forms.push_back({"TRY_CAST(" + name + " AS TIMESTAMP)"});
    for (const char* const time : kTimes)
        addForms(forms, name, time, "TIMESTAMP");
    if (type == "TIMESTAMP")
        addForms(forms, name, "", "TIMESTAMP");
    return forms;
}

std::vector<ColumnForm> numberForms(const std::string& name, const std::string& type,
                                    const TextImport& form)
{
    const auto number = [&](std::string text) {
        if (form.thousands != '\0')
            text =
                "replace(" + text + ", " + quotedLiteral(std::string(1, form.thousands)) + ", '')";
        if (form.decimalComma)
            text = "replace(" + text + ", ',', '.')";
        // A cast of a text to a whole number rounds a fraction.
        std::string real = "TRY_CAST(" + text + " AS DOUBLE)";
        if (type == "DOUBLE")
            return real;
        return "CASE WHEN " + real + " = trunc(" + real + ") THEN TRY_CAST(" + text +
               " AS BIGINT) END";
    };
    const std::string bare = "regexp_replace(" + name + ", " + quotedLiteral(kSigns) + ", '', 'g')";
    return {{.value = number(name), .isPlain = true},
            {number(bare)},
            {"CAST(TRY_CAST(" + name + " AS BOOLEAN) AS " + type + ")"}};
}

std::vector<ColumnForm> booleanForms(const std::string& name)
{
    const std::string word = "lower(trim(" + name + "))";
    return {{"CAST(CASE WHEN " + word + " IN ('true', 'yes', 't', 'y', '1') THEN 1 WHEN " + word +
             " IN ('false', 'no', 'f', 'n', '0') THEN 0 END AS BIGINT)"}};
}

void chooseForms(duck::Connection& connection, const std::string& table,
                 std::vector<TextColumn>& columns, const std::function<void()>& look)
{
    look();
    dropByExample(connection, table, columns);
    look();
    dropByAll(connection, table, columns);
    for (TextColumn& column : columns) {
        if (column.forms.empty())
            continue;
        const ColumnForm& first = column.forms.front();
        column.hasShortYears = first.order == Order::ShortYear;
        if (column.hasShortYears)
            continue;
        if (first.isPlain)
            continue;
        column.chosen = first.value;
        column.isDayFirst = first.order == Order::DayFirst && hasOrder(column, Order::MonthFirst);
    }
}
