#include "hvhost/tcm/TcmTrain.h"

#include <memory>

#include <CLI/CLI.hpp>

#include "hvhost/base/HelpText.h"
#include "hvhost/input/OptionChecks.h"
#include "hvhost/input/OptionGroups.h"
#include "hvhost/tcm/TcmOptions.h"

namespace {

/// A number from 0 to 1.
CLI::Validator share()
{
    return CLI::Range(0.0, 1.0);
}

/// Adds the options of the data preparation.
void addPreparation(CLI::App& app, TcmTrainOptions& options)
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
        add("--time", options.timeField, "FIELD", "The date, time or timestamp of a record")
            ->check(notEmpty());
    CLI::Option* const cyclic =
        addList("--cyclic", options.cyclicFields, "FIELD",
                "Numbers that make up the time of a record, the\noutermost first, for example "
                "year,month")
            ->excludes(time);
    app.add_flag("--case-count", options.caseCount, "The order of the records is the time")
        ->excludes(time)
        ->excludes(cyclic)
        ->group("Preparation");
    CLI::Option* const interval =
        add("--interval", options.interval, "[N] UNIT",
            "The interval between two points, for example month or\n\"15 minutes\"; by default "
            "detected in the data")
            ->check(notEmpty());
    add("--working-days", options.workingDays, "DAYS", "The working days, for example mon-fri")
        ->check(notEmpty())
        ->needs(interval);
    add("--working-hours", options.workingHours, "FROM-TO", "The working hours, for example 8-18")
        ->check(notEmpty())
        ->needs(interval);
    addList("--dims", options.dimensions, "FIELD",
            "Fields whose values distinguish series, for example\nregion,product");
    addList("--metrics", options.metrics, "FIELD", "Fields with the values of the series")
        ->required();
    addList(
        "--aggregate", options.aggregations, "[METRIC=]FUNCTION",
        "How records at one point are combined: sum, mean, min,\nmax, first, last, mode; mean by "
        "default");
    add("--missing", options.missing, "METHOD", "How gaps are filled; linear by default")
        ->check(CLI::IsMember({"linear", "neighbours", "last", "none"}));
    add("--max-missing", options.maxMissing, "SHARE",
        "Leave a series out if more of it would be filled;\n0.25 by default")
        ->check(share());
}

/// Adds the options of the equations.
void addEquations(CLI::App& app, TcmTrainOptions& options)
{
    const auto add = [&app](const char* name, auto& value, const char* shown, const char* purpose) {
        return app.add_option(name, value, purpose)->type_name(shown)->group("Equations");
    };
    const auto addSeriesList = [&add](const char* name, std::vector<std::string>& values,
                                      const char* shown, const char* purpose) {
        add(name, values, shown, purpose)->allow_extra_args(false)->check(notEmpty());
    };
    addSeriesList(
        "--target", options.targets, kSeriesForm,
        "A series to predict, or a metric for all its series;\nall by default; repeatable");
    addSeriesList("--predictor", options.predictors, kSeriesForm,
                  "A series to predict from; all by default; repeatable");
    addSeriesList("--both", options.both, kSeriesForm, "A series that is both; repeatable");
    addSeriesList("--force-edge", options.forced, "TARGET:PREDICTOR",
                  "A predictor that an equation must have; repeatable");
    addSeriesList("--forbid-edge", options.forbidden, "TARGET:PREDICTOR",
                  "A predictor that an equation must not have; repeatable");
    CLI::Option* const lags =
        add("--lags", options.lags, "N", "The number of lags")->check(wholeNumberFrom(1));
    add("--max-lag", options.maxLag, "N",
        "The largest number of lags that the criterion may\nchoose; 5 by default")
        ->check(wholeNumberFrom(1))
        ->excludes(lags);
    add("--criterion", options.criterion, "NAME",
        "The criterion that chooses lags and predictors; bic by\ndefault")
        ->check(CLI::IsMember({"bic", "ebic", "aic"}));
    add("--max-predictors", options.maxPredictors, "N",
        "The most predictors of a target, besides its own past;\n5 by default")
        ->check(wholeNumberFrom(0));
    add("--outlier-level", options.outlierLevel, "SHARE",
        "Residuals beyond this quantile are outliers; 0.99 by\ndefault")
        ->check(share());
}

} // namespace

void addTcmTrainCommand(CLI::App& tcm, CommonOptions& common)
{
    const auto options = std::make_shared<TcmTrainOptions>();
    CLI::App* const app =
        newCommand(tcm, "train", "Train a model: which series of a dataset drive which.",
                   "  hvhost tcm train shops.csv -o shops.tcm --time month --dims region \\\n"
                   "      --metrics sales,advertising,visits\n"
                   "  hvhost tcm train weather.csv -o weather.tcm --time date --max-lag 7 \\\n"
                   "      --metrics temp_max,temp_min,wind,precipitation\n");
    options->input.missingOption = "--missing-texts";
    addModelData(*app, options->input, true);
    app->add_option("-o", options->output, "The model file to write")
        ->type_name("FILE")
        ->required()
        ->check(notEmpty() & noStream())
        ->group("Output");
    app->add_flag("--force", options->force, "Replace an existing file")->group("Output");
    addPreparation(*app, *options);
    addEquations(*app, *options);
    addPrintJob(*app, options->printJob);
    addCommonOptions(*app, common);
    app->callback([options, &common] { tcmTrain(*options, common); });
}
