#pragma once

#include <string>

namespace EmbeddedHV::maps {

/// Catches what GDAL would print on this thread, for the length of a scope.
class GdalMessages
{
public:
    GdalMessages();
    GdalMessages(const GdalMessages&) = delete;
    GdalMessages& operator=(const GdalMessages&) = delete;
    ~GdalMessages();

    /// The last error, in one line; empty if there was none.
    std::string error() const { return _error; }
    void clear() { _error.clear(); }

private:
    friend struct GdalMessageHandler;
    std::string _error;
};

} // namespace EmbeddedHV::maps
