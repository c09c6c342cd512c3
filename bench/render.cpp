// A table of a thousand by a thousand cells, from the text of its result document to the tree of
// the host's output, against parsing that text alone; and the store of its cells against the
// ordered map that it stands in for.

#include <OutputTree.h>
#include <TnOutput.h>
#include <malloc.h>

#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "Measure.h"
#include "VexaDataSource.h"
#include "bridge/JNIObjectManager.h"
#include "render/CellStore.h"
#include "render/KeyWalk.h"
#include "render/jsonToTarn.h"
#include "runner/HVRunner.h"

namespace {

constexpr int leaves = 1000;

std::string textItem(const std::string& word)
{
    return R"({"text":{"stringText":{"value":")" + word + R"("}}})";
}

std::string dimension(const std::string& name, const std::string& role)
{
    std::string json = R"({"role":")" + role + R"(","text":)" + textItem(name) + R"(,"children":[)";
    for (int leaf = 0; leaf < leaves; ++leaf)
        json +=
            (leaf == 0 ? "" : ",") + (R"({"text":)" + textItem(name + std::to_string(leaf))) + "}";
    return json + "]}";
}

std::string document()
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> numbers(-1000, 1000);
    std::string values;
    for (int cell = 0; cell < leaves * leaves; ++cell)
        values += (cell == 0 ? "" : ",") + std::to_string(numbers(random));
    return R"({"r":{"tableId":"t","title":{},"dimensions":[)" + dimension("row", "row") + "," +
           dimension("column", "column") +
           R"(],"formats":[{"index":"****","format":{"decimals":2}}],)"
           R"("cells":[{"cells":{"compactCells":{"value":[)" +
           values + "]}}}]}}";
}

double render(TnProcedure& procedure, const std::string& json)
{
    OutputTree::instance().clear();
    FacSTDictionary strings;
    const bench::Stopwatch watch;
    jsonToTarn output(&procedure, nullptr, strings, json);
    output.addObjectToOutput("", "", "Table", "Table", OutputOrder::Pivot);
    output.generateOutput("r");
    JNIObjectManager::getManager()->cleanJRef();
    const double time = watch.milliseconds();
    const auto& items = OutputTree::instance().procedures().front()->items;
    const auto& table = std::get<std::shared_ptr<OutputTable>>(items.at(0));
    if (table->cells.size() != std::size_t{leaves} * leaves)
        throw std::runtime_error("bench: cells are missing");
    return time;
}

double parse(const std::string& json)
{
    const bench::Stopwatch watch;
    JNIJSONObject document(json.c_str());
    JNIObjectManager::getManager()->cleanJRef();
    return watch.milliseconds();
}

/// What a cell is where each has its own text and footnotes.
struct MapCell
{
    double value = Cell::kNoValue;
    VEXA_Format format = CellFormat::noFormat;
    std::string text;
    std::vector<int> footnotes;
    bool infinite = false;
};

const KeyLayout& layout()
{
    static const KeyLayout table({leaves, leaves});
    return table;
}

std::unique_ptr<CellStore> fillStore()
{
    auto store = std::make_unique<CellStore>(layout());
    for (KeyWalk walk = KeyWalk::from(layout(), ""); walk.isAtKey(); walk.next())
        store->at(walk.key()).value = 1;
    return store;
}

std::unique_ptr<std::map<std::string, MapCell>> fillMap()
{
    auto map = std::make_unique<std::map<std::string, MapCell>>();
    for (KeyWalk walk = KeyWalk::from(layout(), ""); walk.isAtKey(); walk.next())
        (*map)[walk.key()].value = 1;
    return map;
}

template <class Fill>
double timeOf(Fill fill)
{
    const bench::Stopwatch watch;
    const auto filled = fill();
    return watch.milliseconds();
}

template <class Fill>
double megabytesOf(Fill fill)
{
    const auto used = [] {
        const auto info = mallinfo2();
        return static_cast<double>(info.uordblks + info.hblkhd);
    };
    const double before = used();
    const auto filled = fill();
    return (used() - before) / 1e6;
}

} // namespace

int main()
{
    HVRunner runner;
    TnProcedure procedure("bench");
    const std::string json = document();
    bool isWithin =
        bench::report("render a table of 1,000,000 cells",
                      bench::interleave(
                          15, [&] { return render(procedure, json); }, [&] { return parse(json); }),
                      "ms", 3);
    OutputTree::instance().clear();
    isWithin &=
        bench::report("cells of a table: time",
                      bench::interleave(
                          9, [] { return timeOf(fillStore); }, [] { return timeOf(fillMap); }),
                      "ms", 0.25);
    isWithin &= bench::report(
        "cells of a table: memory",
        bench::interleave(
            1, [] { return megabytesOf(fillStore); }, [] { return megabytesOf(fillMap); }),
        "MB", 0.5);
    return isWithin ? 0 : 1;
}
