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
    std::string text;
    int show = 0;
    int level = 0;
};

/// What charts and interactive views have in common. Texts are UTF-8.
struct OutputDocument
{
    std::string description;
    std::string options;
    std::vector<std::pair<std::string, std::string>> geoJson; ///< names and texts, as they came
};

/// A chart: its data as JSON, and the JSON of the template that draws it.
struct OutputChart : OutputDocument
{
    std::string templateJson;
};

/// An interactive view: what a front end opens, with the JSON that it shows.
struct OutputView : OutputDocument
{
    std::string procedureName;
    std::string path;
    std::string json;
};

struct OutputHeading;

/// What stands under a heading.
using OutputItem = std::variant<std::shared_ptr<OutputHeading>, std::shared_ptr<OutputTable>,
                                OutputChart, OutputView, OutputMessage>;

/// A heading; a procedure is one at the top.
struct OutputHeading
{
    TnContent text;
    std::vector<OutputItem> items;
};

/// All output of the process, in order. Host side: hvhost renders it, tests read it, the library
/// does not know of it. What a procedure has put out stays when the procedure goes; one that puts
/// out nothing leaves nothing. Output grows until it is cleared.
///
/// Any thread may write. Read it while no procedure writes.
class HOST_API OutputTree
{
public:
    OutputTree(const OutputTree&) = delete;
    OutputTree& operator=(const OutputTree&) = delete;

    static OutputTree& instance();

    /// Procedures, and the messages that came while there was none.
    const std::vector<OutputItem>& items() const;
    std::vector<std::shared_ptr<const OutputHeading>> procedures() const;
    /// Takes all output away. Procedures that are alive go on at the end of the empty tree; what is
    /// told through their headings and tables from before is not seen any more.
    void clear();

    /// Host side: puts an item at the end of a heading; null stands for the tree itself.
    void add(OutputHeading* heading, OutputItem item);
    /// The heading of that text that is the last thing under `parent`, or a new one.
    std::shared_ptr<OutputHeading> heading(OutputHeading& parent, const TnContent& text);
    /// Takes a procedure without output out of the tree.
    void removeEmpty(const OutputHeading& procedure);

private:
    OutputTree();
    ~OutputTree();
    struct Impl;
    std::unique_ptr<Impl> _impl;
};
