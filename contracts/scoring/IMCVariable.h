#pragma once

#include <string>

#include "ScoringExport.h"

/// An input or an output of a model. The model owns it.
class SCORING_API IMCVariable
{
public:
    /// The type of the values in the model. Booleans are numbers: 1 and 0.
    enum ValueType : int
    {
        kNumber = 1,
        kString = 3
    };
    /// The type of the values in a row. Models of this library never use kStoredInteger, because
    /// the engine's rows carry every number as a double. Models of other makers may use it.
    enum Storage : int
    {
        kStoredInteger = 1,  ///< a 32-bit integer
        kStoredReal = 2,     ///< a double
        kStoredString = 3,   ///< a UTF-8 text
        kStoredDate = 4,     ///< days since 1970-01-01; in the model, seconds since 1582-10-14
        kStoredTime = 5,     ///< seconds since midnight
        kStoredTimestamp = 6 ///< seconds since 1970-01-01; in the model, seconds since 1582-10-14
    };

    /// The ValueType of the variable.
    virtual int GetValueType() const = 0;
    /// Replaces `name` with the name of the variable, UTF-8.
    virtual void GetName(std::string& name) const = 0;
    /// The Storage of the variable.
    virtual int GetStorage() const = 0;
    /// The model deletes the object.
    virtual ~IMCVariable() = default;
};
