#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "OutputTable.h"
#include "output/CategoryFinder.h"

struct TnAnnotation;

/// A table while it is built: the table, its open categories, and look-up of earlier declarations.
struct PivotTableState
{
    explicit PivotTableState(std::shared_ptr<OutputTable> output) : table(std::move(output)) {}

    OutputDimension& dimension(int number) { return table->dimensions[index(number)]; }
    OutputCategory& node(int dimension, int number)
    {
        return this->dimension(dimension).nodes[index(number)];
    }

    /// The dimension of that name, or a new one at the end of the rows.
    int declareDimension(const TnContent& name, int sort);
    /// Counts the objects of a dimension: its declaration continues as long as one exists.
    void beginDeclaration(int dimension) { ++states[index(dimension)].objects; }
    void endDeclaration(int dimension) { --states[index(dimension)].objects; }
    /// The next child of that kind and text, or a new one.
    int declareChild(int dimension, int parent, bool isGroup, const TnContent& label);
    void open(int dimension, int category);

    /// The intersection of a category with the open ones of the other dimensions; empty if one is
    /// missing.
    std::vector<int> addressOf(int dimension, int category);

    /// The note's index in the table's list, where equal texts are merged; -1 for a note without
    /// text.
    int note(const TnAnnotation& annotation);
    /// Adds it to a list of notes unless it is there.
    void addNote(std::vector<int>& notes, const TnAnnotation& annotation);

    std::shared_ptr<OutputTable> table;

private:
    /// Build state of a dimension.
    struct DimensionState
    {
        int openLeaf = -1; ///< -1 for none
        int objects = 0;
        CategoryFinder finder;
    };

    static std::size_t index(int number) { return static_cast<std::size_t>(number); }
    int leafOf(int dimension, int category) { return node(dimension, category).leaf; }
    bool isNamed(int dimension, const std::string& name) const;
    bool encloses(int dimension) const;
    int findDimension(const std::string& name) const;
    int addDimension(const TnContent& name);
    int addChild(int dimension, int parent, bool isGroup, const TnContent& label);

    std::vector<DimensionState> states; ///< by dimension
    bool isNested = true; ///< each dimension was declared inside categories of the earlier ones
    int lastOpened = -1;  ///< the dimension whose category was opened last
    std::unordered_map<std::string, int> noteOfText;
};
