#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/document/PageDocument.h"

/// A node of a network.
struct NetworkNode
{
    std::string name;
    std::string kind; ///< the look: "focus", "target", or anything else
    int level = 0;    ///< the column in a drawing by levels
};

/// An arrow from one node to another.
struct NetworkEdge
{
    std::size_t from = 0;
    std::size_t to = 0;
    double strength = 1; ///< not negative; decides the order and the width
    bool isNegative = false;
    std::string details; ///< a line for each field that the tooltip names
};

/// A network in a chart's specification.
struct NetworkSpec
{
    bool isByLevels = false;
    std::vector<NetworkNode> nodes;
    std::vector<NetworkEdge> edges; ///< the strongest first; without edges from a node to itself
    const PageJson* rows = nullptr; ///< of the edges, borrowed from the specification
};

/// Reads a specification whose mark is "network"; docs/result-document.md describes the form.
/// nullopt for another specification, and for an incomplete one.
std::optional<NetworkSpec> readNetworkSpec(const PageJson& specification);
