#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "hvhost/job/HostSession.h"
#include "hvhost/show/ResultTable.h"
#include "hvhost/show/ShownResult.h"
#include "hvhost/tcm/TcmOptions.h"

/// A table or a chart of a result.
struct TcmPart
{
    std::string title;
    ResultTable table;
    nlohmann::ordered_json chart; ///< null for a table
    std::string remarks;          ///< lines above a table
    bool isForPageAlone = false;  ///< too long for a terminal
};

/// The result of a command.
struct TcmResult
{
    std::string name;                ///< of the page
    std::vector<TcmPart> parts;      ///< for people, in this order
    nlohmann::ordered_json document; ///< as JSON, without the number of its schema
    ResultTable rows;                ///< as csv
};

/// The destination of a result. It is checked before the command works, so that an unusable
/// destination fails early.
class TcmShown
{
public:
    /// Throws CommandFault as ShownResult.
    TcmShown(const ShownOptions& options, const InterruptWatch& watch);

    const std::string& form() const { return _form; }
    /// Throws CommandFault as ShownResult and Rendering.
    void show(const TcmResult& result, HostSession& session) const;

private:
    std::string _form;
    ShownResult _result;
    const InterruptWatch& _watch;
    TextForm _text;
};

/// The text of a number in a document; nothing for any other value.
std::optional<std::string> tcmNumber(const nlohmann::ordered_json& value);
