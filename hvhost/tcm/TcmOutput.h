#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "hvhost/job/HostSession.h"
#include "hvhost/show/ResultTable.h"
#include "hvhost/show/ShownResult.h"
#include "hvhost/tcm/TcmOptions.h"

/// A table or a chart of a result, with what is said of it.
struct TcmPart
{
    std::string title;
    ResultTable table;
    nlohmann::ordered_json chart; ///< null for a table
    std::string remarks;          ///< lines above a table
    bool isForPageAlone = false;  ///< too long for a terminal
};

/// What a command has to show.
struct TcmResult
{
    std::string name;                ///< of the page
    std::vector<TcmPart> parts;      ///< for people, in this order
    nlohmann::ordered_json document; ///< as JSON, without the number of its schema
    ResultTable rows;                ///< as csv
};

/// A place for a result of a command, checked before it works.
class TcmShown
{
public:
    /// Throws CommandFault as ShownResult.
    TcmShown(const TcmShownOptions& options, const InterruptWatch& watch);

    const std::string& form() const { return _form; }
    /// Throws CommandFault as ShownResult and Rendering.
    void show(const TcmResult& result, HostSession& session) const;

private:
    std::string _form;
    ShownResult _result;
    std::size_t _width;
};

/// A number of a document; nothing for null, and for what is no number.
std::optional<std::string> tcmNumber(const nlohmann::ordered_json& value);
