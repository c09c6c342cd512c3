#include "GdalMessages.h"

#include <algorithm>

#include <cpl_error.h>

namespace EmbeddedHV::maps {

/// The callback for GDAL. It finds the GdalMessages object through the user data pointer.
struct GdalMessageHandler
{
    static void CPL_STDCALL take(CPLErr level, CPLErrorNum, const char* text)
    {
        auto* messages = static_cast<GdalMessages*>(CPLGetErrorHandlerUserData());
        if (level < CE_Failure || !messages || !text)
            return;
        messages->_error = text;
        std::replace(messages->_error.begin(), messages->_error.end(), '\n', ' ');
    }
};

GdalMessages::GdalMessages()
{
    CPLPushErrorHandlerEx(GdalMessageHandler::take, this);
}

GdalMessages::~GdalMessages()
{
    CPLPopErrorHandler();
}

} // namespace EmbeddedHV::maps
