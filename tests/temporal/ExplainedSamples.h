#pragma once

#include <functional>
#include <string>
#include <vector>

#include <Eigen/Core>

#include "components/temporal/explanation/ModelData.h"
#include "components/temporal/model/TcmModel.h"

namespace TemporalTest {

/// A term of an equation.
struct Term
{
    std::size_t series;
    int lag;
    double coefficient;
};

/// An equation with a group for each series of its terms; every F statistic is 6.5, with 13 degrees
/// of freedom left.
EmbeddedHV::SeriesEquation equationOf(std::size_t series, double intercept,
                                      const std::vector<Term>& terms);

/// The equation of a target, or the autoregression of any other series.
const EmbeddedHV::SeriesEquation& moving(const EmbeddedHV::TcmModel& model, std::size_t series);

/// Four series of two lags: the cycle north sales -> north visits -> south sales -> north sales,
/// which south visits drive by north sales. South visits are no target.
enum Sample : std::size_t
{
    kNorthSales,
    kNorthVisits,
    kSouthSales,
    kSouthVisits
};
EmbeddedHV::TcmModel sampleModel();

/// A model of targets alone with an edge for each pair (from, to), one lag each.
EmbeddedHV::TcmModel modelOfEdges(std::size_t series,
                                  const std::vector<std::pair<std::size_t, std::size_t>>& edges);
/// A model in which each of many targets has five predictors of five lags.
EmbeddedHV::TcmModel wideModel(std::size_t series);

using Shocks = std::function<double(std::size_t series, Eigen::Index point)>;
/// What the equations make of the shocks: a row a point of time, a column a series. The first
/// points are 10.
Eigen::MatrixXd simulated(const EmbeddedHV::TcmModel& model, Eigen::Index points,
                          const Shocks& shocks);
EmbeddedHV::SeriesTable tableOf(const EmbeddedHV::TcmModel& model, Eigen::MatrixXd values);
/// A small shock for each series and point, always the same.
double ripple(std::size_t series, Eigen::Index point);

/// The documents of the sample's file: its training data begin on 2024-01-01, a point a day.
std::string samplePreparation(int points);
/// Writes the model of the sample to a file.
void writeSample(const EmbeddedHV::TcmModel& model, const std::string& path);

} // namespace TemporalTest
