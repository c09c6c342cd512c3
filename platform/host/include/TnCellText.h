#pragma once

#include <memory>
#include <optional>
#include <string>

#include "HostExport.h"
#include "VexaFormat.h"

/// What a text of the output says: the words, and what stands behind them.
struct TnContent
{
    std::string text;             ///< as it is shown, UTF-8
    std::string key;              ///< names the text for programs that read output; may be empty
    std::string helpId;           ///< the help topic on it; may be empty
    std::optional<double> number; ///< the value, for a text that is a formatted number
    VEXA_Format format;           ///< of the number
};

/// A text for the host's output: a label, a cell, a note, a message. Whoever holds one by pointer
/// deletes it.
class HOST_API TnCellText
{
public:
    virtual ~TnCellText();
    /// What it says now: a text that depends on the host's settings follows them.
    virtual TnContent content() const = 0;
    virtual std::unique_ptr<TnCellText> clone() const = 0;
    /// The text as it is shown, UTF-8.
    std::string text() const { return content().text; }
    /// Leaves a copy with the host, and gives the number by which a TnHandle takes it over. Any
    /// thread. A copy that no handle takes over stays for the life of the process.
    long Replicate() const;

protected:
    TnCellText() = default;
    TnCellText(const TnCellText&) = default;
    TnCellText& operator=(const TnCellText&) = default;
};
