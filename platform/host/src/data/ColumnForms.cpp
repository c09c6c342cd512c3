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
constexpr std::array<const char*, 4> kTimes{" %H:%M", " %H:%M:%S", " %H:%M:%S.%f", "T%H:%M:%S"};
constexpr std::size_t kLongestDate = 40;
constexpr std::size_t kNumberForms = 3;
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
        std::vector<ColumnForm>& forms = columns[i].forms;
        std::vector<std::string> tests;
        tests.reserve(forms.size());
        for (const ColumnForm& form : forms)
            tests.push_back(form.value + " IS NOT NULL");
        const std::string example = found.text(i, 0); // empty: no value
        const bool isDate = forms.size() != kNumberForms;
        if (example.empty() ||
            (isDate && (!base::isDigit(example.front()) || example.size() > kLongestDate))) {
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

/// Drops the forms that do not fit all texts.
void dropByAll(duck::Connection& connection, const std::string& table,
               std::vector<TextColumn>& columns)
{
    std::vector<std::string> tests;
    for (const TextColumn& column : columns)
        for (const ColumnForm& form : column.forms)
            tests.push_back("count(" + form.value + ") = count(" + column.name + ")");
    if (tests.empty())
        return;
    duck::Result fits = connection.query("SELECT " + base::joined(tests, ", ") + " FROM " + table);
    std::size_t test = 0;
    for (TextColumn& column : columns)
        std::erase_if(column.forms,
                      [&](const ColumnForm&) { return fits.text(test++, 0) != "true"; });
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
    return {{number(name)},
            {number(bare)},
            {"CAST(TRY_CAST(" + name + " AS BOOLEAN) AS " + type + ")"}};
}

void chooseForms(duck::Connection& connection, const std::string& table,
                 std::vector<TextColumn>& columns, const std::function<void()>& look)
{
    const std::vector<TextColumn> all = columns;
    look();
    dropByExample(connection, table, columns);
    look();
    dropByAll(connection, table, columns);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        TextColumn& column = columns[i];
        if (column.forms.empty())
            continue;
        const ColumnForm& first = column.forms.front();
        column.hasShortYears = first.order == Order::ShortYear;
        if (column.hasShortYears)
            continue;
        // The database reads plain numbers itself, and names the line of an invalid one.
        const bool isPlainNumber =
            all[i].forms.size() == kNumberForms && first.value == all[i].forms[0].value;
        if (isPlainNumber)
            continue;
        column.chosen = first.value;
        column.isDayFirst = first.order == Order::DayFirst && hasOrder(column, Order::MonthFirst);
    }
}
