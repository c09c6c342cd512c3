#pragma once

#include <string>

namespace EmbeddedHV::maps {

/// Catches GDAL's messages on this thread during its lifetime, so that GDAL does not print them.
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
