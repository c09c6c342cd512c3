#include "components/temporal/training/TrainingSettings.h"

#include "components/temporal/model/ModelDocument.h"

namespace EmbeddedHV {
namespace {

constexpr std::int64_t kMostPredictors = 100;

constexpr std::pair<const char*, SelectionCriterion> kCriteria[] = {
    {"BIC", SelectionCriterion::Bic},
    {"EBIC", SelectionCriterion::ExtendedBic},
    {"AIC", SelectionCriterion::Aic},
};

/// Reads settings that name series.
class SeriesSettings
{
public:
    SeriesSettings(const Settings& settings, const SeriesLookup& lookup)
        : _settings(settings), _lookup(lookup)
    {
    }

    /// The series of the lists under two keys; all of them if there is neither list.
    std::vector<bool> role(const std::string& key, const std::string& both) const
    {
        const bool isGiven = _settings.has(key) || _settings.has(both);
        std::vector<bool> chosen(_lookup.size(), !isGiven);
        for (const std::string& list : {key, both}) {
            if (!_settings.has(list))
                continue;
            const Json& names = _settings.neededList(list);
            for (std::size_t i = 0; i < names.size(); ++i)
                for (const std::size_t place : named(names[i], elementOf(list, i)))
                    chosen[place] = true;
        }
        return chosen;
    }

    /// Each element names a predictor and may name a target. Without a target it applies to all
    /// targets.
    std::set<PredictorPair> pairs(const std::string& key) const
    {
        std::set<PredictorPair> pairs;
        if (!_settings.has(key))
            return pairs;
        const Json& list = _settings.neededList(key);
        for (std::size_t i = 0; i < list.size(); ++i) {
            const Settings element = _settings.objectAt(list, key, i);
            if (!element.has("predictor"))
                element.refuse("predictor", "is missing");
            const auto predictors = named(list[i]["predictor"], elementOf(key, i) + ".predictor");
            const auto targets = element.has("target")
                                     ? named(list[i]["target"], elementOf(key, i) + ".target")
                                     : everySeries();
            for (const std::size_t predictor : predictors)
                for (const std::size_t target : targets)
                    if (predictor != target)
                        pairs.emplace(predictor, target);
        }
        return pairs;
    }

private:
    static std::string elementOf(const std::string& key, std::size_t index)
    {
        return key + "[" + std::to_string(index) + "]";
    }

    std::vector<std::size_t> everySeries() const
    {
        std::vector<std::size_t> all(_lookup.size());
        for (std::size_t i = 0; i < all.size(); ++i)
            all[i] = i;
        return all;
    }

    /// A text names a metric, which means all its series. A list names one series.
    std::vector<std::size_t> named(const Json& name, const std::string& path) const
    {
        if (name.is_string())
            return _lookup.placesOfMetric(_settings, name.get<std::string>(), path);
        if (!name.is_array())
            _settings.refuse(path, "is neither a metric nor a list of dimension values and a "
                                   "metric");
        return {_lookup.placeOf(_settings, name, path)};
    }

    const Settings& _settings;
    const SeriesLookup& _lookup;
};

std::optional<int> integerWithin(const Settings& settings, const std::string& key,
                                 std::int64_t least, std::int64_t most)
{
    const auto value = settings.integer(key);
    if (!value)
        return std::nullopt;
    if (*value < least || *value > most)
        settings.refuse(key, "is " + std::to_string(*value) + ", not a number from " +
                                 std::to_string(least) + " to " + std::to_string(most));
    return static_cast<int>(*value);
}

SelectionCriterion criterionOf(const Settings& settings)
{
    const std::string word = settings.text("criterion").value_or("BIC");
    for (const auto& [known, criterion] : kCriteria)
        if (word == known)
            return criterion;
    settings.refuse("criterion", "is \"" + word + "\", not BIC, EBIC or AIC");
}

void readLags(const Settings& settings, TrainingOptions& options)
{
    options.lags = integerWithin(settings, "lags", 1, kMostModelLags);
    options.maxLag = integerWithin(settings, "maxLag", 1, kMostModelLags);
    if (options.lags && options.maxLag)
        settings.refuse("maxLag", "cannot be combined with \"lags\"");
}

double outlierLevelOf(const Settings& settings)
{
    const std::string key = "outlierLevel";
    const auto number = settings.number(key);
    if (!number)
        return TrainingOptions().outlierLevel;
    const double level =
        number->IsInteger() ? static_cast<double>(number->GetInteger()) : number->GetReal();
    if (!(level > 0 && level < 1))
        settings.refuse(key, "is not a number between 0 and 1");
    return level;
}

} // namespace

TrainingOptions trainingOptions(const Settings& settings, const SeriesLookup& lookup,
                                const MessageSink& message)
{
    const SeriesSettings lists(settings, lookup);
    TrainingOptions options;
    options.isTarget = lists.role("targets", "both");
    options.isCandidate = lists.role("candidates", "both");
    options.forced = lists.pairs("forced");
    options.forbidden = lists.pairs("forbidden");
    for (const PredictorPair& pair : options.forced)
        if (options.forbidden.count(pair) > 0)
            settings.refuse("forbidden", "names a pair that is forced as well");
    readLags(settings, options);
    options.maxPredictors = integerWithin(settings, "maxPredictors", 0, kMostPredictors)
                                .value_or(TrainingOptions().maxPredictors);
    options.criterion = criterionOf(settings);
    options.outlierLevel = outlierLevelOf(settings);
    settings.reportOthers(message);
    return options;
}

} // namespace EmbeddedHV
