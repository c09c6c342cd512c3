#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "page/MapSpec.h"

// Parts of a map's specification. All of them throw MapSpecFault for what the host does not draw.

/// A text; empty for anything else.
std::string wordOf(const PageJson* value);

/// Texts, or one of them.
std::vector<std::string> wordsOf(const PageJson* value);

/// An object may have these members and no other.
void requireOnly(const PageJson& object, std::initializer_list<std::string_view> names);

/// Channels that tell something are those that a map has; others have one value for all.
void requireChannels(const PageJson& encoding, bool isOfAreas);

/// The field of a channel, as it is or put into bins.
std::string fieldOf(const PageJson* channel);

MapChannel readChannel(const PageJson& channel);

/// What is told of a thing that is pointed at: fields and titles.
std::vector<std::pair<std::string, std::string>> tipsOf(const PageJson* tooltip);
