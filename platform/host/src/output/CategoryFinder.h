#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "OutputTable.h"

/// Finds the categories and groups of one dimension when they are declared again.
///
/// The text alone does not identify a category: two values may have the same label. The finder
/// therefore counts rounds: in one round of a parent, the n-th declaration of a text is the n-th
/// child with that text.
class CategoryFinder
{
public:
    /// Starts a round of one parent.
    void begin(int parent) { of(parent).round = ++_round; }
    /// Starts a round of all parents.
    void beginAll() { _allBegan = ++_round; }

    /// The next child of that kind and text in this round, or nullopt.
    std::optional<int> find(const OutputDimension& dimension, int parent, bool isGroup,
                            const std::string& text);
    /// Registers a node that was just added as the last child of its parent.
    void add(const OutputDimension& dimension, int parent, int node);

private:
    /// `next` is the child behind the last one found, which is usually the next one requested.
    struct Parent
    {
        std::size_t next = 0;
        std::uint64_t round = 0;
    };
    /// The children with the same parent, kind and text, and how many of them this round has
    /// declared.
    struct SameText
    {
        std::vector<int> nodes;
        std::size_t declared = 0;
        std::uint64_t round = 0;
    };

    Parent& of(int node) { return _parents[static_cast<std::size_t>(node)]; }
    Parent& inRound(int parent);
    static void join(SameText& same, const Parent& parent);
    std::optional<int> tryNext(const OutputDimension& dimension, int parent, bool isGroup,
                               const std::string& text);

    std::vector<Parent> _parents = std::vector<Parent>(1); ///< by node
    std::vector<std::size_t> _textOf = {0};                ///< by node: index in _texts
    std::vector<SameText> _texts = std::vector<SameText>(1);
    std::unordered_map<std::string, std::size_t> _byText;
    std::uint64_t _round = 0;
    std::uint64_t _allBegan = 0;
};
