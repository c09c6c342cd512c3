#include "model/OtherModel.h"

#include <algorithm>
#include <array>
#include <utility>

#include "pmml/ModelFault.h"

namespace scoring {
namespace {

/// The code of each kind of model. Code 16 is the transform model.
constexpr std::array<std::pair<std::string_view, int>, 19> kModels{{
    {"AssociationModel", 1},
    {"BaselineModel", 2},
    {"BayesianNetworkModel", 3},
    {"ClusteringModel", 4},
    {"GaussianProcessModel", 5},
    {"GeneralRegressionModel", 6},
    {"MiningModel", 7},
    {"NaiveBayesModel", 8},
    {"NearestNeighborModel", 9},
    {"NeuralNetwork", 10},
    {"RegressionModel", 11},
    {"RuleSetModel", 12},
    {"Scorecard", 13},
    {"SequenceModel", 14},
    {"SupportVectorMachineModel", 15},
    {"TextModel", 17},
    {"TimeSeriesModel", 18},
    {"TreeModel", 19},
    {"AnomalyDetectionModel", 20},
}};

constexpr std::array<std::string_view, 5> kOtherParts{"Header", "MiningBuildTask", "DataDictionary",
                                                      "TransformationDictionary",
                                                      "LocalTransformations"};

} // namespace

int modelTypeOf(const PmmlDocument& document)
{
    for (const pugi::xml_node element : elementsIn(document.root())) {
        const std::string_view name = localName(element);
        for (const auto& [known, type] : kModels)
            if (name == known)
                return type;
        if (std::find(kOtherParts.begin(), kOtherParts.end(), name) == kOtherParts.end())
            throw ModelFault(std::string("<") + element.name() + "> is not part of PMML");
    }
    return IMCScoreComputer::kTransformModel;
}

} // namespace scoring
