#pragma once

#include <string>

#include "ScoringExport.h"

/// An input or an output of a model.
class SCORING_API IMCVariable
{
public:
    /// What its values are to the model. Truth values are numbers, 1 and 0.
    enum ValueType : int
    {
        kNumber = 1,
        kString = 3
    };
    /// How a row carries its values. A model of this library has no integers among them, as the
    /// engine's rows carry every number as a double; one from elsewhere may.
    enum Storage : int
    {
        kStoredInteger = 1, ///< a 32-bit integer
        kStoredReal = 2,
        kStoredString = 3,
        kStoredDate = 4, ///< days since 1970-01-01; to the model, seconds since 1582-10-14
        kStoredTime = 5,
        kStoredTimestamp = 6 ///< seconds since 1970-01-01; to the model, since 1582-10-14
    };

    virtual int GetValueType() const = 0;
    /// Replaces `name` with the variable's, UTF-8.
    virtual void GetName(std::string& name) const = 0;
    virtual int GetStorage() const = 0;
    virtual ~IMCVariable() = default;
};
