#pragma once

#include <stdexcept>

namespace scoring {

/// A model that is not valid, or asks for what this library does not do. The text says which, and
/// where.
class ModelFault : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace scoring
