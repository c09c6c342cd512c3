// What a viewer waits for when it asks for the values of one of many series: a model is trained on
// the series, and then GetScenarioInfo runs on the same data. Prints the time of each job of the
// request, and the rest: the host's work, and the reading of the scores. Prints the memory of the
// training beside that of the Gram matrix of all lagged series. There is no baseline.
//
//     bench_scenario DIR [SERIES [POINTS [columns|records]]]
//
// columns: each series is a column. records: a record for each point and shop, and one dimension.

#include <sys/resource.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "EngineBackend.h"
#include "Execution.h"
#include "HostConversions.h"
#include "Measure.h"
#include "SvrDMDataset.h"
#include "VexaCases.h"
#include "VexaDataSource.h"
#include "data/HVRawDataIterator.h"
#include "runner/HVRunner.h"
#include "tcm/HVInteractiveTSR.h"
#include "tcm/HVTemporalTraining.h"

namespace {

constexpr int kNameWidth = 16;
constexpr int kLags = 5;
constexpr double kMegabyte = 1024 * 1024;

/// Days of sales of many shops. Each shop follows its own past and another shop's.
class Sales : public VEXA_DataSource
{
public:
    Sales(int shops, int days, bool isWide) : _shops(shops), _days(days), _isWide(isWide)
    {
        for (int day = 0; day < days; ++day)
            for (int shop = 0; shop < shops; ++shop)
                _values.push_back(make(day, shop));
        _variables.emplace_back(0);
        _variables.back().SetName("day");
        _variables.back().SetFormat({10, kFormatDateYearFirst, 0});
        if (isWide) {
            for (int shop = 0; shop < shops; ++shop)
                addNumber(nameOf(shop));
            return;
        }
        _variables.emplace_back(kNameWidth);
        _variables.back().SetName("shop");
        addNumber("sales");
    }

    static std::string nameOf(int shop) { return "shop" + std::to_string(shop); }
    int shops() const { return _shops; }
    double valueOf(int day, int shop) const
    {
        return _values[static_cast<std::size_t>(day) * static_cast<std::size_t>(_shops) +
                       static_cast<std::size_t>(shop)];
    }
    int ColumnCount() const override { return static_cast<int>(_variables.size()); }
    const VEXA_Variable& GetVariable(int column) const override
    {
        return _variables[static_cast<std::size_t>(column)];
    }
    int GetWeightVarIndex() const override { return -1; }
    int GetNSplitVars() const override { return 0; }
    int GetSplitVarIndex(int) const override { return -1; }
    VEXA_InputCaseIterator* MakeIterator(ErrorMonitor*) const override
    {
        return std::make_unique<Cases>(*this).release();
    }

private:
    class Cases : public VEXA_InputCaseIterator
    {
    public:
        explicit Cases(const Sales& sales) : _sales(sales), _units(sales._variables.size() + 2) {}
        int NextCase() override
        {
            const int step = _sales._isWide ? 1 : _sales._shops;
            const int day = _next / step;
            if (day == _sales._days)
                return 0;
            _units[0].number = GetBaseDateNumber() + 86400.0 * (day + 14610);
            if (_sales._isWide)
                for (int shop = 0; shop < _sales._shops; ++shop)
                    _units[static_cast<std::size_t>(shop) + 1].number = _sales.valueOf(day, shop);
            else
                putRecord(day, _next % step);
            ++_next;
            return 1;
        }
        double GetNumericValue(int column) const override { return GetObsPointer(column)->number; }
        const char* GetStringValue(int column) const override
        {
            return GetObsPointer(column)->text;
        }
        /// A name takes two units.
        const OBS* GetObsPointer(int column) const override
        {
            return &_units[static_cast<std::size_t>(column) + (!_sales._isWide && column == 2)];
        }
        long long GetCaseCount() const override { return _next; }

    private:
        void putRecord(int day, int shop)
        {
            std::string name = nameOf(shop);
            name.resize(kNameWidth, ' ');
            std::copy(name.begin(), name.begin() + sizeof(OBS), _units[1].text);
            std::copy(name.begin() + sizeof(OBS), name.end(), _units[2].text);
            _units[3].number = _sales.valueOf(day, shop);
        }

        const Sales& _sales;
        std::vector<OBS> _units;
        int _next = 0;
    };

    void addNumber(const std::string& name)
    {
        _variables.emplace_back(0);
        _variables.back().SetName(name);
        _variables.back().SetFormat({8, kFormatNumber, 2});
    }
    double make(int day, int shop) const
    {
        const double shock = std::fmod(std::sin(day * 12.9898 + shop * 78.233) * 43758.5453, 1.0);
        return day == 0 ? shock
                        : 0.4 * valueOf(day - 1, shop) +
                              0.3 * valueOf(day - 1, (shop * 7 + 3) % _shops) + shock;
    }

    int _shops;
    int _days;
    bool _isWide;
    std::vector<double> _values;
    std::vector<VEXA_Variable> _variables;
};

/// Milliseconds by job, of the last request.
std::vector<std::pair<std::string, double>> jobs;

std::string stepOf(const std::string& text)
{
    for (const char* step :
         {"descriptives", "reclassifyField", "tcm:train", "tsdp:tsdp", "tcm:score", "tcm:ar"})
        if (text.find(step) != std::string::npos)
            return step;
    return "copy";
}

/// Measures jobs of the embedded engine.
class MeasuredJob : public EmbeddedHV::Execution
{
public:
    explicit MeasuredJob(EmbeddedHV::Execution* inner) : _inner(inner) {}
    void prepare(JNIEnv* env, const std::string& text) override
    {
        _step = stepOf(text);
        _inner->prepare(env, text);
    }
    void addInputContainer(JNIEnv* env, EmbeddedHV::Container* container) override
    {
        _inner->addInputContainer(env, container);
    }
    void addOutputContainer(JNIEnv* env, EmbeddedHV::Container* container) override
    {
        _inner->addOutputContainer(env, container);
    }
    void addInputIterator(JNIEnv* env, EmbeddedHV::RowDataIterator* rows, void* reserved) override
    {
        _inner->addInputIterator(env, rows, reserved);
    }
    void execute(JNIEnv* env, EmbeddedHV::ExecutionListener* listener) override
    {
        const bench::Stopwatch watch;
        _inner->execute(env, listener);
        jobs.emplace_back(_step, watch.milliseconds());
    }
    EmbeddedHV::RowDataIterator* getOutputIterator(JNIEnv* env, const std::string& name) override
    {
        return _inner->getOutputIterator(env, name);
    }
    void cancel(JNIEnv* env) override { _inner->cancel(env); }
    void dispose(JNIEnv* env) override { _inner->dispose(env); }

private:
    std::unique_ptr<EmbeddedHV::Execution> _inner;
    std::string _step;
};

class MeasuredEngine : public EmbeddedHV::Backend, public EmbeddedHV::ExecutionService
{
public:
    explicit MeasuredEngine(std::unique_ptr<EmbeddedHV::Backend> inner) : _inner(std::move(inner))
    {
    }
    EmbeddedHV::ExecutionService* getExecutionService() override { return this; }
    EmbeddedHV::MetadataService* getMetaDataService() override
    {
        return _inner->getMetaDataService();
    }
    EmbeddedHV::Execution* createExecution(const std::string& locale) override
    {
        return std::make_unique<MeasuredJob>(_inner->getExecutionService()->createExecution(locale))
            .release();
    }

private:
    std::unique_ptr<EmbeddedHV::Backend> _inner;
};

void print(const std::string& what, double total)
{
    double rest = total;
    std::printf("%s: %.0f ms", what.c_str(), total);
    for (const auto& [step, milliseconds] : jobs) {
        std::printf(", %s %.0f", step.c_str(), milliseconds);
        rest -= milliseconds;
    }
    std::printf(", rest %.0f\n", rest);
    jobs.clear();
}

/// The most memory of the process so far.
double peakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_maxrss) * 1024 / kMegabyte;
}

void fail(const char* what, const std::string& reason)
{
    std::fprintf(stderr, "bench: %s: %s\n", what, reason.c_str());
    std::exit(1);
}

void train(const std::shared_ptr<Sales>& sales, const std::vector<std::string>& dimensions,
           const std::vector<std::string>& metrics, const std::string& model)
{
    HVRunner runner;
    HVRawDataIterator rows(*sales, std::vector<int>(), {}, true, kWeightRound, true, nullptr);
    rows.SetName("cases");
    HVTemporalTraining training(runner, &rows);
    training.SetTimeField("day");
    training.SetDimensions(dimensions);
    training.SetMetrics(metrics);
    training.SetLags(kLags);
    const double before = peakMegabytes();
    const bench::Stopwatch watch;
    if (!training.Train(model)) {
        std::string id;
        std::string text;
        std::string detail;
        training.hasError(id, text, detail);
        fail("train", text);
    }
    print("train", watch.milliseconds());
    const double series = sales->shops();
    std::printf("peak memory %.0f MB, of them %.0f MB before the training; Gram matrix %.0f MB\n",
                peakMegabytes(), before, std::pow(series * kLags, 2) * sizeof(double) / kMegabyte);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_scenario DIR [SERIES [POINTS [columns|records]]]\n");
        return 2;
    }
    const int shops = argc > 2 ? std::atoi(argv[2]) : 1000;
    const int days = argc > 3 ? std::atoi(argv[3]) : 500;
    const bool isWide = argc <= 4 || argv[4] == std::string("columns");
    EmbeddedHV::setBackendFactory([](JNIEnv* env, const EmbeddedHV::EHVAppSetting& settings) {
        return std::make_unique<MeasuredEngine>(EmbeddedHV::makeEmbeddedBackend(env, settings));
    });
    const auto sales = std::make_shared<Sales>(shops, days, isWide);
    std::vector<std::string> dimensions;
    std::vector<std::string> metrics;
    if (isWide)
        for (int shop = 0; shop < shops; ++shop)
            metrics.push_back(Sales::nameOf(shop));
    else {
        dimensions = {"shop"};
        metrics = {"sales"};
    }
    const std::string model = std::string(argv[1]) + "/scenario.tcm";
    train(sales, dimensions, metrics, model);
    const LocallyUniqueID dataset = SvrDMDataset::Register(sales);
    for (int run = 0; run < 3; ++run) {
        HVInteractiveTSR viewer;
        std::vector<double> actual;
        std::vector<double> predicted;
        const std::vector<std::string> values =
            isWide ? std::vector<std::string>() : std::vector<std::string>{Sales::nameOf(7)};
        const bench::Stopwatch watch;
        if (!viewer.GetScenarioInfo(dataset, model, "day", std::to_string(1 - days), "12", {}, {},
                                    {}, isWide ? Sales::nameOf(7) : "sales", dimensions, values,
                                    actual, predicted)) {
            std::string id;
            std::string text;
            std::string detail;
            viewer.hasError(id, text, detail);
            fail("GetScenarioInfo", text);
        }
        print("GetScenarioInfo", watch.milliseconds());
        if (actual.size() != static_cast<std::size_t>(days) || predicted.size() != 12)
            fail("GetScenarioInfo", "not all values");
    }
    return 0;
}
