#include "hvhost/tcm/TcmCommandLine.h"

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"

namespace {

constexpr const char* kSeriesForm = "DIMENSION,..,METRIC";

void addModel(CLI::App& app, std::string& model)
{
    app.add_option("MODEL", model, "A model that hvhost tcm train wrote")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty());
}

CLI::Option* addSeries(CLI::App& app, std::string& series, const char* purpose)
{
    return app.add_option("--series", series, purpose)
        ->type_name(kSeriesForm)
        ->check(notEmpty())
        ->group("Series");
}

void addShown(CLI::App& app, TcmShownOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app.add_option(name, value, purpose)->type_name(shown)->group("Output");
    };
    add("--format", options.format, "FORM",
        "The form; html is a page. By default the extension of\nthe file: .csv, .json or .html; "
        "else text")
        ->check(CLI::IsMember({"text", "csv", "json", "html"}));
    add("-o", options.output, "FILE", "Write it to this file")->check(notEmpty());
    app.add_flag("--force", options.force, "Replace an existing file")->group("Output");
    addWidth(app, options.width)->group("Output");
}

/// A number from 0 to 1.
CLI::Validator share()
{
    return CLI::Range(0.0, 1.0);
}

} // namespace

void TcmCommandLine::addTo(CLI::App& app, CommonOptions& common)
{
    CLI::App* const tcm = newCommandGroup(
        app, "tcm", "Train temporal causal models, forecast with them, explain them.");
    addTrain(*tcm, common);
    addInfo(*tcm, common);
    addForecast(*tcm, common);
    addImpact(*tcm, common);
    addOutliers(*tcm, common);
}

void TcmCommandLine::addTrain(CLI::App& tcm, CommonOptions& common)
{
    CLI::App* const app =
        newCommand(tcm, "train", "Train a model: which series of a dataset drive which.",
                   "  hvhost tcm train shops.csv -o shops.tcm --time month --dims region \\\n"
                   "      --metrics sales,advertising,visits\n"
                   "  hvhost tcm train weather.csv -o weather.tcm --time date --max-lag 7 \\\n"
                   "      --metrics temp_max,temp_min,wind,precipitation\n");
    addModelData(*app, _train.input, true);
    app->add_option("-o", _train.output, "The model file to write")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty() & noStream())
        ->group("Output");
    app->add_flag("--force", _train.force, "Replace an existing file")->group("Output");
    addPreparation(*app);
    addEquations(*app);
    addPrintJob(*app, _train.printJob);
    addCommonOptions(*app, common);
    app->callback([this, &common] { tcmTrain(_train, common); });
}

void TcmCommandLine::addPreparation(CLI::App& app)
{
    const auto add = [&app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app.add_option(name, value, purpose)->type_name(shown)->group("Preparation");
    };
    const auto addList = [&add](const char* name, std::vector<std::string>& values,
                                const char* shown, const char* purpose) {
        return add(name, values, shown, purpose)
            ->delimiter(',')
            ->allow_extra_args(false)
            ->check(notEmpty());
    };
    CLI::Option* const time =
        add("--time", _train.timeField, "FIELD", "The date, time or timestamp of a record")
            ->check(notEmpty());
    CLI::Option* const cyclic =
        addList("--cyclic", _train.cyclicFields, "FIELD",
                "Numbers that make up the time of a record, the\noutermost first, for example "
                "year,month")
            ->excludes(time);
    app.add_flag("--case-count", _train.caseCount, "The order of the records is the time")
        ->excludes(time)
        ->excludes(cyclic)
        ->group("Preparation");
    CLI::Option* const interval =
        add("--interval", _train.interval, "[N] UNIT",
            "The interval between two points, for example month or\n\"15 minutes\"; by default "
            "detected in the data")
            ->check(notEmpty());
    add("--working-days", _train.workingDays, "DAYS", "The working days, for example mon-fri")
        ->check(notEmpty())
        ->needs(interval);
    add("--working-hours", _train.workingHours, "FROM-TO", "The working hours, for example 8-18")
        ->check(notEmpty())
        ->needs(interval);
    addList("--dims", _train.dimensions, "FIELD",
            "Fields whose values distinguish series, for example\nregion,product");
    addList("--metrics", _train.metrics, "FIELD", "Fields with the values of the series")
        ->required();
    addList(
        "--aggregate", _train.aggregations, "[METRIC=]FUNCTION",
        "How records at one point are combined: sum, mean, min,\nmax, first, last, mode; mean by "
        "default");
    add("--missing", _train.missing, "METHOD", "How gaps are filled; linear by default")
        ->check(CLI::IsMember({"linear", "neighbours", "last", "none"}));
    add("--max-missing", _train.maxMissing, "SHARE",
        "Leave a series out if more of it would be filled;\n0.25 by default")
        ->check(share());
}

void TcmCommandLine::addEquations(CLI::App& app)
{
    const auto add = [&app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app.add_option(name, value, purpose)->type_name(shown)->group("Equations");
    };
    const auto addSeriesList = [&add](const char* name, std::vector<std::string>& values,
                                      const char* shown, const char* purpose) {
        add(name, values, shown, purpose)->allow_extra_args(false)->check(notEmpty());
    };
    addSeriesList(
        "--target", _train.targets, kSeriesForm,
        "A series to predict, or a metric for all of its series;\nall by default; repeatable");
    addSeriesList("--predictor", _train.predictors, kSeriesForm,
                  "A series to predict from; all by default; repeatable");
    addSeriesList("--both", _train.both, kSeriesForm, "A series that is both; repeatable");
    addSeriesList("--force-edge", _train.forced, "TARGET:PREDICTOR",
                  "A predictor that an equation must have; repeatable");
    addSeriesList("--forbid-edge", _train.forbidden, "TARGET:PREDICTOR",
                  "A predictor that an equation must not have; repeatable");
    CLI::Option* const lags =
        add("--lags", _train.lags, "N", "The number of lags")->check(wholeNumberFrom(1));
    add("--max-lag", _train.maxLag, "N",
        "The largest number of lags that the criterion may\nchoose; 5 by default")
        ->check(wholeNumberFrom(1))
        ->excludes(lags);
    add("--criterion", _train.criterion, "NAME",
        "The criterion that chooses lags and predictors; bic by\ndefault")
        ->check(CLI::IsMember({"bic", "ebic", "aic"}));
    add("--max-predictors", _train.maxPredictors, "N",
        "The most predictors of a target, besides its own past;\n5 by default")
        ->check(wholeNumberFrom(0));
    add("--outlier-level", _train.outlierLevel, "SHARE",
        "Residuals beyond this quantile are outliers; 0.99 by\ndefault")
        ->check(share());
}

void TcmCommandLine::addInfo(CLI::App& tcm, CommonOptions& common)
{
    CLI::App* const app = newCommand(tcm, "info", "Show the series, equations and fit of a model.",
                                     "  hvhost tcm info shops.tcm\n"
                                     "  hvhost tcm info shops.tcm --format json\n"
                                     "  hvhost tcm info shops.tcm -o shops.html\n");
    addModel(*app, _info.model);
    addShown(*app, _info.shown);
    addCommonOptions(*app, common);
    app->callback([this, &common] { tcmInfo(_info, common); });
}

void TcmCommandLine::addForecast(CLI::App& tcm, CommonOptions& common)
{
    CLI::App* const app = newCommand(
        tcm, "forecast", "Forecast a series.",
        "  hvhost tcm forecast shops.tcm shops.csv --series north,sales --horizon 12\n"
        "  hvhost tcm forecast shops.tcm shops.csv --series north,sales --horizon 12 \\\n"
        "      --set 'north,advertising[*]=+10%' -o north.html\n");
    addModel(*app, _forecast.model);
    addModelData(*app, _forecast.input, true);
    addSeries(*app, _forecast.series, "The series")->required();
    app->add_option("--horizon", _forecast.horizon,
                    "The number of points after the data; 0 for none")
        ->type_name("N")
        ->required()
        ->check(wholeNumberFrom(0))
        ->group("Series");
    app->add_option(
           "--set", _forecast.scenario,
           "Set a value: [TIME] at a point, [+N] at the Nth point,\n[*] at all points; =+10% "
           "is a change. Repeatable")
        ->type_name("SERIES[TIME]=VALUE")
        ->allow_extra_args(false)
        ->check(notEmpty())
        ->group("Series");
    app->add_option("--confidence", _forecast.confidence,
                    "The confidence of the bounds in percent; 95 by default")
        ->type_name("PERCENT")
        ->check(CLI::Range(1.0, 99.99))
        ->group("Series");
    addShown(*app, _forecast.shown);
    addCommonOptions(*app, common);
    app->callback([this, &common] { tcmForecast(_forecast, common); });
}

void TcmCommandLine::addImpact(CLI::App& tcm, CommonOptions& common)
{
    CLI::App* const app =
        newCommand(tcm, "impact", "Show what drives a series, and what the series drives.",
                   "  hvhost tcm impact shops.tcm --series north,sales --level 2\n"
                   "  hvhost tcm impact shops.tcm shops.csv --series north,sales -o impact.html\n");
    addModel(*app, _impact.model);
    addModelData(*app, _impact.input, false);
    addSeries(*app, _impact.series, "The series")->required();
    app->add_option("--level", _impact.level,
                    "The number of steps through the network; 1 by default")
        ->type_name("N")
        ->check(wholeNumberFrom(1))
        ->group("Series");
    addShown(*app, _impact.shown);
    addCommonOptions(*app, common);
    app->callback([this, &common] { tcmImpact(_impact, common); });
}

void TcmCommandLine::addOutliers(CLI::App& tcm, CommonOptions& common)
{
    CLI::App* const app = newCommand(
        tcm, "outliers", "Find values that a model did not expect.",
        "  hvhost tcm outliers shops.tcm shops.csv\n"
        "  hvhost tcm outliers shops.tcm shops.csv --series north,sales --format json\n");
    addModel(*app, _outliers.model);
    addModelData(*app, _outliers.input, true);
    addSeries(*app, _outliers.series, "One series alone, with the causes of its outliers");
    addShown(*app, _outliers.shown);
    addCommonOptions(*app, common);
    app->callback([this, &common] { tcmOutliers(_outliers, common); });
}
