#pragma once

#include <map>
#include <string>
#include <vector>

#include "hvhost/base/JsonFile.h"
#include "render/OutputOrder.h"

/// The order for one result object of a document.
struct RenderOrder
{
    /// One object to show, and where the order was given, for messages.
    struct Object
    {
        OutputOrder order;
        std::string origin;
    };

    std::string result;
    bool showsNotifications = true;
    std::map<std::string, std::string> geoJson; ///< names and GeoJSON texts
    std::vector<Object> objects;
};

/// An order for everything in a document: each table and chart, in the order of the document.
/// Headings are the keys that lead to an object; titles are its own.
std::vector<RenderOrder> everythingIn(const nlohmann::ordered_json& document);

/// Reads the orders for a document from an order file. Throws CommandFault (Input) that names the
/// key.
std::vector<RenderOrder> readOrders(const JsonFile& file, const nlohmann::ordered_json& document,
                                    const InterruptWatch& watch);

/// Whether a result object of the document has anything to show, even an empty list of messages.
bool isResultDocument(const nlohmann::ordered_json& document);

/// The names of a document's result objects.
std::vector<std::string> resultNames(const nlohmann::ordered_json& document);

/// The value at a location of a result object, or null. A location is a list of
/// nested keys.
const nlohmann::ordered_json* find(const nlohmann::ordered_json& result,
                                   const std::vector<std::string>& location);
