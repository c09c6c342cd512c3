#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "OutputTable.h"

struct TnAnnotation;

/// A table while it is being told: the table itself, which categories are open, and ways to find
/// what was declared before.
struct PivotTableState
{
    explicit PivotTableState(std::shared_ptr<OutputTable> told) : table(std::move(told)) {}

    OutputDimension& dimension(int number) { return table->dimensions[index(number)]; }
    OutputCategory& node(int dimension, int number)
    {
        return this->dimension(dimension).nodes[index(number)];
    }

    /// The dimension of that name, or a new one at the end of the rows.
    int declareDimension(const TnContent& name, int sort);
    /// The child of that kind and text, or a new one.
    int declareChild(int dimension, int parent, bool isGroup, const TnContent& label);
    void open(int dimension, int category)
    {
        leafOpen[index(dimension)] = leafOf(dimension, category);
    }

    /// Where a category and the open ones of the other dimensions meet; empty if one is missing.
    std::vector<int> addressOf(int dimension, int category);

    /// The note's place in the table's list, where equal texts are one; -1 for a note without text.
    int note(const TnAnnotation& annotation);
    /// Puts it into a list of notes, once.
    void addNote(std::vector<int>& notes, const TnAnnotation& annotation);

    std::shared_ptr<OutputTable> table;

private:
    /// Finds children by their texts. They are declared again in the order in which they were
    /// declared, so the one after the last found is tried first.
    struct Finder
    {
        std::vector<std::size_t> next; ///< by parent: the child that is tried first
        std::unordered_map<std::string, int> byText;
    };

    static std::size_t index(int number) { return static_cast<std::size_t>(number); }
    int leafOf(int dimension, int category) { return node(dimension, category).leaf; }
    int nextChild(int dimension, int parent, bool isGroup, const std::string& text);
    int addChild(int dimension, int parent, bool isGroup, const TnContent& label);

    std::vector<int> leafOpen; ///< by dimension; -1 for none
    std::vector<Finder> finders;
    std::unordered_map<std::string, int> noteOfText;
};
