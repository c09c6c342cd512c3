#pragma once

#include <map>
#include <string>
#include <vector>

#include "JsonFile.h"
#include "render/OutputOrder.h"

/// What is to be shown of one result object of a document.
struct RenderOrder
{
    /// One thing to show, and where the user finds what asks for it.
    struct Object
    {
        OutputOrder order;
        std::string origin;
    };

    std::string result;
    bool showsNotifications = true;
    std::map<std::string, std::string> geoJson; ///< names and texts
    std::vector<Object> objects;
};

/// Everything that a document has: each table and chart, in the order of the document, under the
/// keys that lead to it and titled by its own.
std::vector<RenderOrder> everythingIn(const nlohmann::ordered_json& document);

/// What an order file says of a document. Throws CommandFault (Input), naming the key.
std::vector<RenderOrder> readOrders(const JsonFile& file, const nlohmann::ordered_json& document,
                                    const InterruptWatch& watch);

/// Whether any result object of a document has something to show, be it an empty list of messages.
bool isResultDocument(const nlohmann::ordered_json& document);

/// The names of a document's result objects.
std::vector<std::string> resultNames(const nlohmann::ordered_json& document);

/// What lies at a location of a result object, keys one below the other; null if nothing does.
const nlohmann::ordered_json* find(const nlohmann::ordered_json& result,
                                   const std::vector<std::string>& location);
