#pragma once

#include <nlohmann/json.hpp>

#include "hvhost/describe/Description.h"

/// A number as JSON. A whole number has no fraction.
nlohmann::ordered_json jsonNumber(const std::string& text);

/// Adds the available facts, under their own names.
template <class Names>
void putNumbers(nlohmann::ordered_json& json, const Facts& facts, const Names& names)
{
    for (const char* name : names)
        if (const auto fact = factOf(facts, name))
            json[name] = jsonNumber(*fact);
}
