#include "render/ResultContext.h"

std::string ResultContext::dataModelJson()
{
    const LocalRef<> model = reader.get(document.getTop(), "dataModel");
    return reader.reader().isJSONObject(model.get()) ? reader.reader().toString(model.get())
                                                     : std::string();
}
