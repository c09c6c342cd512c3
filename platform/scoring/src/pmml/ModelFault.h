#pragma once

#include <stdexcept>

namespace scoring {

/// The model is invalid or needs an unsupported feature. The text says what and where.
class ModelFault : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

} // namespace scoring
