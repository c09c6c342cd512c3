#pragma once

#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "HostExport.h"
#include "OutputTable.h"
#include "TnCellText.h"

/// A line of TnError.
struct OutputMessage
{
    std::string text; ///< UTF-8
    int show = 0;     ///< as for TnError
    int level = 0;    ///< as for TnError
};

/// Base of charts and interactive views. Texts are UTF-8.
struct OutputDocument
{
    std::string description;                                  ///< the title for outlines and lists
    std::string options;                                      ///< as the procedure wrote them
    std::vector<std::pair<std::string, std::string>> geoJson; ///< names and texts, in order
};

/// A chart as JSON in the Vega-Lite language, with its data.
struct OutputChart : OutputDocument
{
    std::string templateJson; ///< what is drawn, with its data
};

/// An interactive view, with the JSON that a front end shows.
struct OutputView : OutputDocument
{
    std::string procedureName; ///< of the result object
    std::string path;          ///< of the view's object in the result document
    std::string json;          ///< what the front end shows
};

struct OutputHeading;

/// An item under a heading.
using OutputItem = std::variant<std::shared_ptr<OutputHeading>, std::shared_ptr<OutputTable>,
                                OutputChart, OutputView, OutputMessage>;

/// A heading. A procedure is a heading at the top level.
struct OutputHeading
{
    TnContent text;                ///< as declared
    std::vector<OutputItem> items; ///< in the order of output
    bool isFolded = false;         ///< whether a page shows it closed at first
};

/// All output of the process, in order. Host programs render it and tests read it; the library does
/// not use it. The output of a procedure remains after the procedure ends. A procedure without
/// output is removed. Output is kept until it is cleared.
///
/// Any thread may write. Read it only while no procedure writes.
class HOST_API OutputTree
{
public:
    OutputTree(const OutputTree&) = delete;
    OutputTree& operator=(const OutputTree&) = delete;

    /// The output of the process.
    static OutputTree& instance();

    /// The procedures, and the messages that came outside any procedure.
    const std::vector<OutputItem>& items() const;
    /// The procedures only.
    std::vector<std::shared_ptr<const OutputHeading>> procedures() const;
    /// Removes all output. Active procedures continue at the end of the empty tree. What they write
    /// through earlier headings and tables is lost.
    void clear();

    /// For the host: appends an item to a heading, or to the tree for null.
    void add(OutputHeading* heading, OutputItem item);
    /// For the host: returns the last item under `parent` if it is a heading of that text,
    /// otherwise a new heading.
    std::shared_ptr<OutputHeading> heading(OutputHeading& parent, const TnContent& text);
    /// For the host: removes a procedure that has no output.
    void removeEmpty(const OutputHeading& procedure);

private:
    OutputTree();
    ~OutputTree();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
