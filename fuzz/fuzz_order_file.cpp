#include <cstddef>
#include <cstdint>
#include <string>

#include <nlohmann/json.hpp>

#include "ScratchFolder.h"
#include "hvhost/base/CommandFault.h"
#include "hvhost/base/InterruptWatch.h"
#include "hvhost/show/RenderOrder.h"

/// Any text as an order file for a result document: it is refused by a fault of the input, or it
/// says what to show.
namespace {

const nlohmann::ordered_json kDocument = nlohmann::ordered_json::parse(R"({
    "summary": {"table": {"title": "t", "dimensions": [], "cells": {}}, "chart": {}},
    "other": {"notifications": []}})");

void readOrder(const std::string& path)
{
    static const InterruptWatch watch(std::nullopt);
    try {
        for (const RenderOrder& order : readOrders(JsonFile(path, watch), kDocument, watch)) {
            require(kDocument.contains(order.result));
            for (const RenderOrder::Object& object : order.objects)
                require(!object.origin.empty());
        }
    } catch (const CommandFault& fault) {
        require(fault.status() == ExitStatus::Input || fault.status() == ExitStatus::Usage);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const ScratchFolder folder;
    folder.put("order.json", textOf(data, size));
    folder.put("map.json", "{}");
    readOrder(folder.native("order.json"));
    return 0;
}
