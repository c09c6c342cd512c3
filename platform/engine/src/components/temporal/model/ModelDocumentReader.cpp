#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <unordered_map>

#include "ErrorIds.h"
#include "components/temporal/base/DocumentPlace.h"
#include "components/temporal/model/FitMembers.h"
#include "components/temporal/model/ModelDocument.h"
#include "components/temporal/model/NumberLists.h"

namespace EmbeddedHV {
namespace {

constexpr std::size_t kMostModelValues = 30'000'000;
/// The key of most of the numbers.
constexpr const char* kResiduals = "residuals";
constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// Reads the parts of the document in an order in which each finds what it refers to.
class ModelDocumentReader
{
public:
    /// `root` is the document that `document` is the text of. Moves its lists.
    ModelDocumentReader(DocumentPlace root, DocumentWithoutLists& document)
        : _root(std::move(root)), _document(document)
    {
    }

    TcmModel read()
    {
        _model.lags = static_cast<int>(_root.member("lags").integer(1, kMostModelLags));
        _model.trainingPoints = _root.member("trainingPoints").integer(1, kMostModelPoints);
        _model.outlierLevel = probability(_root.member("outlierLevel"));
        readSeries(_root.member("series"));
        _model.equations = equations(_root.member("equations"));
        for (const SeriesEquation& equation : _model.equations)
            if (!_model.series[equation.series].isTarget)
                _root.member("equations")
                    .refuse("has an equation of \"" + _model.series[equation.series].id +
                            "\", which is not a target");
        _model.autoregressions = equations(_root.member("autoregressions"));
        readOutliers(_root.member("outliers"));
        readLastValues(_root.member("lastValues"));
        return std::move(_model);
    }

private:
    static double probability(const DocumentPlace& place)
    {
        const double value = place.real();
        if (value < 0 || value > 1)
            place.refuse("is not a number from 0 to 1");
        return value;
    }
    static double notNegative(const DocumentPlace& place)
    {
        const double value = place.real();
        if (value < 0)
            place.refuse("is negative");
        return value;
    }

    void readSeries(const DocumentPlace& list)
    {
        const std::size_t count = list.listSize();
        if (count > static_cast<std::size_t>(kMostModelSeries))
            list.refuse("has " + std::to_string(count) + " series, more than " +
                        std::to_string(kMostModelSeries));
        for (std::size_t i = 0; i < count; ++i) {
            const DocumentPlace place = list.element(i);
            ModelSeries series;
            series.id = place.member("id").text();
            if (!_places.emplace(series.id, i).second)
                place.refuse("has the id \"" + series.id + "\" of another series");
            const DocumentPlace name = place.member("name");
            for (std::size_t part = 0; part < name.listSize(); ++part)
                series.name.push_back(name.element(part).text());
            series.isTarget = place.member("target").flag();
            series.isCandidate = place.member("candidate").flag();
            _model.series.push_back(std::move(series));
        }
    }

    std::size_t seriesAt(const DocumentPlace& place) const
    {
        const DocumentPlace id = place.member("series");
        const auto found = _places.find(id.text());
        if (found == _places.end())
            id.refuse("is \"" + id.text() + "\", the id of no series");
        return found->second;
    }

    std::vector<SeriesEquation> equations(const DocumentPlace& list) const
    {
        std::vector<SeriesEquation> equations;
        for (std::size_t i = 0; i < list.listSize(); ++i) {
            const DocumentPlace place = list.element(i);
            SeriesEquation equation = equationAt(place);
            // Equations are looked up by their series.
            if (!equations.empty() && equations.back().series >= equation.series)
                place.refuse("is not in the order of the series, or the second of its series");
            equations.push_back(std::move(equation));
        }
        return equations;
    }

    SeriesEquation equationAt(const DocumentPlace& place) const
    {
        SeriesEquation equation;
        equation.series = seriesAt(place);
        equation.intercept = place.member("intercept").real();
        equation.interceptStandardError = notNegative(place.member("interceptStandardError"));
        readGroups(place.member("groups"), equation);
        readTerms(place.member("terms"), equation);
        equation.residualVariance = notNegative(place.member("residualVariance"));
        readFit(place.member("fit"), equation.fit);
        const DocumentPlace residuals = place.member(kResiduals);
        equation.residuals = residualsAt(residuals);
        if (equation.residuals.size() != static_cast<std::size_t>(_model.trainingPoints))
            residuals.refuse("has not one number for each point of time");
        return equation;
    }

    /// The document has the place of the list, or the list itself.
    std::vector<double> residualsAt(const DocumentPlace& residuals) const
    {
        const bool isPlace = !_document.lists.empty() && residuals.value().is_number_unsigned();
        return isPlace ? _document.take(residuals.value().get<std::size_t>())
                       : residuals.realsOrMissing();
    }

    void readGroups(const DocumentPlace& list, SeriesEquation& equation) const
    {
        std::set<std::size_t> known;
        for (std::size_t i = 0; i < list.listSize(); ++i) {
            const DocumentPlace place = list.element(i);
            PredictorGroup group;
            group.series = seriesAt(place);
            if (!known.insert(group.series).second)
                place.refuse("is the second group of its series");
            // Null is infinite: the coefficients have no error.
            const double statistic = place.member("f").realOrMissing();
            group.fStatistic = statistic;
            if (std::isnan(statistic))
                group.fStatistic = kInfinity;
            group.pValue = probability(place.member("p"));
            group.isForced = place.member("forced").flag();
            equation.groups.push_back(group);
        }
    }

    void readTerms(const DocumentPlace& list, SeriesEquation& equation) const
    {
        std::set<std::pair<std::size_t, int>> known;
        std::set<std::size_t> groups;
        for (const PredictorGroup& group : equation.groups)
            groups.insert(group.series);
        for (std::size_t i = 0; i < list.listSize(); ++i) {
            const DocumentPlace place = list.element(i);
            LaggedTerm term;
            term.series = seriesAt(place);
            term.lag = static_cast<int>(place.member("lag").integer(1, _model.lags));
            if (groups.count(term.series) == 0)
                place.refuse("has a series without a group");
            if (!known.emplace(term.series, term.lag).second)
                place.refuse("is the second term of its series and lag");
            term.coefficient = place.member("coefficient").real();
            term.standardError = notNegative(place.member("standardError"));
            const double statistic = place.member("t").realOrMissing();
            term.tStatistic =
                std::isnan(statistic) ? std::copysign(kInfinity, term.coefficient) : statistic;
            term.pValue = probability(place.member("p"));
            equation.terms.push_back(term);
        }
    }

    static void readFit(const DocumentPlace& place, FitStatistics& fit)
    {
        fit.observations = place.member("observations").integer(0, kMostModelPoints);
        fit.parameters = static_cast<int>(place.member("parameters").integer(0, INT32_MAX));
        fit.residualSumOfSquares = notNegative(place.member("residualSumOfSquares"));
        for (const FitMember& member : kFitMembers)
            if (const auto value = place.optionalMember(member.key))
                fit.*member.value = value->real();
    }

    void readOutliers(const DocumentPlace& list)
    {
        for (std::size_t i = 0; i < list.listSize(); ++i) {
            const DocumentPlace place = list.element(i);
            SeriesOutlier outlier;
            outlier.series = seriesAt(place);
            outlier.timeIndex = place.member("timeIndex").integer(0, _model.trainingPoints - 1);
            outlier.actual = place.member("actual").real();
            outlier.predicted = place.member("predicted").real();
            outlier.pValue = probability(place.member("p"));
            _model.outliers.push_back(outlier);
        }
    }

    void readLastValues(const DocumentPlace& list)
    {
        if (list.listSize() != _model.series.size())
            list.refuse("has not one list for each series");
        std::vector<double> all;
        for (std::size_t series = 0; series < list.listSize(); ++series) {
            const DocumentPlace values = list.element(series);
            if (values.listSize() != static_cast<std::size_t>(_model.lags))
                values.refuse("has not one number for each lag");
            const std::vector<double> numbers = values.realsOrMissing();
            all.insert(all.end(), numbers.begin(), numbers.end());
        }
        _model.lastValues = Eigen::Map<const Eigen::MatrixXd>(
            all.data(), _model.lags, static_cast<Eigen::Index>(_model.series.size()));
    }

    DocumentPlace _root;
    DocumentWithoutLists& _document;
    TcmModel _model;
    std::unordered_map<std::string, std::size_t> _places; ///< of the series, by id
};

} // namespace

TcmModel modelOfDocument(const std::string& document, const DocumentSource& source)
{
    DocumentWithoutLists text = withoutLists(document, kResiduals);
    const std::size_t most = kMostModelValues - std::min(kMostModelValues, text.values);
    const Json root = parsedDocument(text.text, most, source, errors::kModelFile);
    return ModelDocumentReader({root, source, errors::kModelFile}, text).read();
}

} // namespace EmbeddedHV
