#pragma once

#include <cstddef>

/// Counts and weights that the first pass over the cases collects.
struct CaseCounts
{
    int cases = 0;
    int valid = 0;
    int invalid = 0;
    double weightOfCases = 0;
    double weightOfValid = 0;
    double weightOfInvalid = 0;
    bool allWeightsGood = true;
    bool allWeightsIntegers = true;

    /// Counts a case as valid if its weight is above 0, otherwise as invalid. An invalid case adds
    /// no weight.
    void judge(double weight)
    {
        const bool isValid = weight > 0;
        if (isValid) {
            weightOfCases += weight;
            ++valid;
            weightOfValid += weight;
        } else {
            ++invalid;
            weightOfInvalid += weight;
        }
    }

    /// Counts cases without a weight. Each weighs 1.
    void takeUnweighted(std::size_t number)
    {
        cases += static_cast<int>(number);
        valid += static_cast<int>(number);
        weightOfCases += static_cast<double>(number);
        weightOfValid += static_cast<double>(number);
    }

    /// Takes a positive weight before and after rounding.
    void judgeRounding(double weight, double rounded)
    {
        allWeightsGood = allWeightsGood && rounded > 0;
        allWeightsIntegers = allWeightsIntegers && rounded == weight;
    }
};
