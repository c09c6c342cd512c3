#pragma once

/// What the first pass over the cases finds.
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

    /// The case that was just counted turned out to be one or the other; an invalid one weighs
    /// nothing.
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

    /// A positive weight before and after rounding.
    void judgeRounding(double weight, double rounded)
    {
        allWeightsGood = allWeightsGood && rounded > 0;
        allWeightsIntegers = allWeightsIntegers && rounded == weight;
    }
};
