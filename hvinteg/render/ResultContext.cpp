#include "render/ResultContext.h"

std::string ResultContext::dataModelJson()
{
    const LocalRef<> model = reader.get(document.getTop(), "dataModel");
    // Java's toString of a text is not JSON.
    const bool isJson = model && !reader.reader().isString(model.get());
    return isJson ? reader.toString(model.get()) : std::string();
}
