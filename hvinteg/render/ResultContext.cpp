#include "render/ResultContext.h"

std::string ResultContext::dataModelJson()
{
    const LocalRef<> model = reader.get(document.getTop(), "dataModel");
    // What Java makes of a text would be no JSON.
    const bool isJson = model && !reader.reader().isString(model.get());
    return isJson ? reader.toString(model.get()) : std::string();
}
