#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "components/temporal/training/Training.h"

namespace TemporalTest {

/// Numbers that look random and are the same everywhere.
class Noise
{
public:
    explicit Noise(std::uint64_t seed) : _state(seed * 2 + 1) {}
    /// Roughly normal, with mean 0 and variance 1.
    double next();

private:
    double uniform();
    std::uint64_t _state;
};

/// Columns of noise with a mean of 5.
Eigen::MatrixXd noise(Eigen::Index points, Eigen::Index series, std::uint64_t seed);

/// What came of a training.
struct Trained
{
    EmbeddedHV::TcmModel model;
    std::vector<std::string> messages; ///< id, blank, text
    std::string error;                 ///< empty if there was none
    /// The edges as in "a>b", without those from a series to itself, in alphabetical order.
    std::string edges() const;
};

/// Options with which every series is target and candidate.
EmbeddedHV::TrainingOptions everySeries(Eigen::Index series);
/// Trains on columns that are named a, b, c ...
Trained train(const Eigen::MatrixXd& values, const EmbeddedHV::TrainingOptions& options);

} // namespace TemporalTest
