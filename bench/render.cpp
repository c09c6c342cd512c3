// A table of a thousand by a thousand cells, from the text of its result document to the tree of
// the host's output, against parsing that text alone; what a cell costs in tables of growing size;
// and the store of the cells against the ordered map that it replaces.

#include <malloc.h>

#include <map>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "Measure.h"
#include "OutputTree.h"
#include "TnOutput.h"
#include "bridge/JNIObjectManager.h"
#include "render/CellFormat.h"
#include "render/CellStore.h"
#include "render/KeyWalk.h"
#include "render/jsonToTarn.h"
#include "runner/HVRunner.h"

namespace {

/// The shape of a table.
struct Size
{
    int rows = 0;
    int columns = 0;

    int cells() const { return rows * columns; }
};

constexpr Size large{1000, 1000};

std::string textItem(const std::string& word)
{
    return R"({"text":{"stringText":{"value":")" + word + R"("}}})";
}

std::string dimension(const std::string& name, const std::string& role, int leaves)
{
    std::string json = R"({"role":")" + role + R"(","text":)" + textItem(name) + R"(,"children":[)";
    for (int leaf = 0; leaf < leaves; ++leaf)
        json +=
            (leaf == 0 ? "" : ",") + (R"({"text":)" + textItem(name + std::to_string(leaf))) + "}";
    return json + "]}";
}

std::string document(Size size)
{
    std::mt19937 random(1);
    std::uniform_real_distribution<double> numbers(-1000, 1000);
    std::string values;
    for (int cell = 0; cell < size.cells(); ++cell)
        values += (cell == 0 ? "" : ",") + std::to_string(numbers(random));
    return R"({"r":{"tableId":"t","title":{},"dimensions":[)" + dimension("row", "row", size.rows) +
           "," + dimension("column", "column", size.columns) +
           R"(],"formats":[{"index":"****","format":{"decimals":2}}],)"
           R"("cells":[{"cells":{"compactCells":{"value":[)" +
           values + "]}}}]}}";
}

/// Documents are rendered to the tree of the host's output, which keeps none of them.
class Renderer
{
public:
    /// Milliseconds from the text of a document with a table of so many cells to its tree.
    double time(const std::string& json, int cells)
    {
        OutputTree::instance().clear();
        const bench::Stopwatch watch;
        jsonToTarn output(&_procedure, nullptr, _strings, json);
        output.addObjectToOutput("", "", "Table", "Table", OutputOrder::Pivot);
        output.generateOutput("r");
        JNIObjectManager::getManager()->cleanJRef();
        const double time = watch.milliseconds();
        const auto& items = OutputTree::instance().procedures().front()->items;
        const auto& table = std::get<std::shared_ptr<OutputTable>>(items.at(0));
        if (table->cells.size() != static_cast<std::size_t>(cells))
            throw std::runtime_error("bench: cells are missing");
        return time;
    }

private:
    TnProcedure _procedure{"bench"};
    FacSTDictionary _strings;
};

/// Nanoseconds a cell of a document with a table of this size.
class CellTime
{
public:
    explicit CellTime(Size size) : _cells(size.cells()), _json(document(size)) {}

    double operator()(Renderer& renderer) const
    {
        return renderer.time(_json, _cells) * 1e6 / _cells;
    }

private:
    int _cells;
    std::string _json;
};

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
    static const KeyLayout table({large.rows, large.columns});
    return table;
}

std::unique_ptr<CellStore> fillStore()
{
    auto store = std::make_unique<CellStore>(layout());
    for (KeyWalk walk = KeyWalk::from(layout(), ""); walk.isAtKey(); walk.next())
        store->inRun(walk.key()).value = 1;
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

bool reportGrowth(Renderer& renderer, const std::string& name, Size small, Size big, int turns)
{
    const CellTime ours(big);
    const CellTime baseline(small);
    return bench::report(
        "a cell of " + name,
        bench::interleave(
            turns, [&] { return ours(renderer); }, [&] { return baseline(renderer); }),
        "ns", 1.25);
}

bool reportStore()
{
    const bool isFast =
        bench::report("cells of a table: time",
                      bench::interleave(
                          9, [] { return timeOf(fillStore); }, [] { return timeOf(fillMap); }),
                      "ms", 0.25);
    return bench::report(
               "cells of a table: memory",
               bench::interleave(
                   1, [] { return megabytesOf(fillStore); }, [] { return megabytesOf(fillMap); }),
               "MB", 0.5) &&
           isFast;
}

} // namespace

int main()
{
    HVRunner runner;
    Renderer renderer;
    const std::string json = document(large);
    bool isWithin = bench::report(
        "render a table of 1,000,000 cells",
        bench::interleave(
            15, [&] { return renderer.time(json, large.cells()); }, [&] { return parse(json); }),
        "ms", 3);
    isWithin &= reportGrowth(renderer, "100,000 beside one of 10,000", {100, 100}, {1000, 100}, 41);
    isWithin &= reportGrowth(renderer, "1,000,000 beside one of 100,000", {1000, 100}, large, 15);
    OutputTree::instance().clear();
    return reportStore() && isWithin ? 0 : 1;
}
