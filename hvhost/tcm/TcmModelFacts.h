#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "hvhost/tcm/SeriesText.h"

/// The description of a model: its series, its network, and how its data were prepared.
struct TcmModelFacts
{
    /// How a predictor enters the equation of a target.
    struct Edge
    {
        SeriesName predictor;
        SeriesName target;
        int lag = 1;               ///< of the largest effect
        double coefficientSum = 0; ///< over all lags
        double pValue = 1;         ///< that all its coefficients are 0
        nlohmann::ordered_json f;  ///< the statistic of that test; null if unknown
        bool isOwnPast() const { return predictor == target; }
        /// The evidence for an effect: the negative decimal logarithm of the p value. Unlike the
        /// coefficients, it does not depend on the units of the series.
        double strength() const;
    };
    struct Series
    {
        SeriesName name;
        bool isTarget = false;
        nlohmann::ordered_json observed; ///< points in the data; null if unknown
        nlohmann::ordered_json filled;   ///< points that were filled; null if unknown
    };

    std::string file; ///< the name of the model in messages
    std::vector<std::string> dimensions;
    std::vector<std::string> metrics;
    std::vector<std::string>
        timeFields; ///< several for cyclic times; "$casecount" for the order of the records
    nlohmann::ordered_json interval; ///< null if unknown
    std::size_t timePoints = 0;
    std::string firstPoint;
    std::string lastPoint;
    std::vector<Series> series;
    std::vector<Edge> edges; ///< by target, in the model's order
    nlohmann::ordered_json leftOut = nlohmann::ordered_json::array();

    /// The series that the user named. Throws CommandFault (Usage), with the nearest name, if the
    /// model does not have it.
    const Series& find(const std::string& text, const std::string& option) const;
};

/// Reads the network and the preparation, JSON, as HVInteractiveTSR::getModelCapabilities gives
/// them. Throws CommandFault (Input) for invalid documents.
TcmModelFacts readModelFacts(const std::string& file, const std::string& network,
                             const std::string& preparation);
