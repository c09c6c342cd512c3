#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report/maps/MapSpec.h"

// Parts of a map's specification. They throw MapSpecFault for what the host cannot draw.

/// A text; empty for another value.
std::string wordOf(const PageJson* value);

/// An array of texts, or a single text.
std::vector<std::string> wordsOf(const PageJson* value);

/// Requires that an object has no members except these.
void requireOnly(const PageJson& object, std::initializer_list<std::string_view> names);

/// Requires that channels with a field are supported by maps; other channels must have one value
/// for all.
void requireChannels(const PageJson& encoding, bool isOfAreas);

/// The field of a channel, unchanged or binned.
std::string fieldOf(const PageJson* channel);

MapChannel readChannel(const PageJson& channel);

/// Fields and titles of a tooltip.
std::vector<std::pair<std::string, std::string>> tipsOf(const PageJson* tooltip);
