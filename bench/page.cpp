// Writes what bench/page.py opens in a browser: a page of 200 tables of 50 rows and 10 columns, and
// the same tables as bare HTML.

#include <fstream>
#include <memory>
#include <random>
#include <string>

#include "OutputTree.h"
#include "TnOutput.h"
#include "report/page/OutputPage.h"

namespace {

constexpr int tables = 200;
constexpr int rows = 50;
constexpr int columns = 10;

/// The numbers of all tables, the same for both files.
class Numbers
{
public:
    double next() { return _uniform(_random); }

private:
    std::mt19937 _random{1};
    std::uniform_real_distribution<double> _uniform{-1000, 1000};
};

void tell(TnHeading& heading)
{
    Numbers numbers;
    for (int table = 0; table < tables; ++table) {
        const std::unique_ptr<TnPivotTable> pivot(heading.PivotTable(
            TnString("table " + std::to_string(table)), TnString("Numbers"), false));
        const std::unique_ptr<TnDimension> down(
            pivot->Dimension(TnString("row"), TnPivotTable::Unsorted));
        for (int row = 0; row < rows; ++row) {
            down->Category(TnString("row " + std::to_string(row)));
            const std::unique_ptr<TnDimension> across(
                pivot->Dimension(TnString("column"), TnPivotTable::Unsorted));
            across->Position(TnDimension::Column, 1, false, false);
            for (int column = 0; column < columns; ++column)
                across->Category(TnString("column " + std::to_string(column)))
                    .Cell(TnNumber(numbers.next(), TnProcedure::GeneralStat()));
        }
    }
}

void writeBare(std::ostream& out)
{
    Numbers numbers;
    out << "<!DOCTYPE html><html lang=\"en\"><meta charset=\"utf-8\"><title>bare</title>";
    for (int table = 0; table < tables; ++table) {
        out << "<table><caption>table " << table << "</caption><thead><tr><th>row</th>";
        for (int column = 0; column < columns; ++column)
            out << "<th>column " << column << "</th>";
        out << "</tr></thead><tbody>";
        for (int row = 0; row < rows; ++row) {
            out << "<tr><th>row " << row << "</th>";
            for (int column = 0; column < columns; ++column)
                out << "<td>" << TnNumber(numbers.next(), TnProcedure::GeneralStat()).text()
                    << "</td>";
            out << "</tr>";
        }
        out << "</tbody></table>";
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
        return 2;
    const std::string folder = argv[1];
    TnProcedure procedure("Numbers");
    tell(procedure);
    std::ofstream page(folder + "/page.html");
    OutputPage(OutputTree::instance()).write(page);
    std::ofstream bare(folder + "/bare.html");
    writeBare(bare);
    return page.flush() && bare.flush() ? 0 : 1;
}
