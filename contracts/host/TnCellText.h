#pragma once

#include <memory>
#include <optional>
#include <string>

#include "HostExport.h"
#include "VexaFormat.h"

/// The content of a text of the output.
struct TnContent
{
    std::string text;             ///< as shown, UTF-8
    std::string key;              ///< identifies the text for programs; may be empty
    std::string helpId;           ///< the help topic; may be empty
    std::optional<double> number; ///< the value, if the text is a formatted number
    VEXA_Format format;           ///< of the number
};

/// A text for the host's output: a label, cell, note or message. Owners of a pointer delete it.
class HOST_API TnCellText
{
public:
    virtual ~TnCellText();
    /// The present content; a text that depends on the host's settings follows them.
    virtual TnContent content() const = 0;
    /// Returns an independent copy.
    virtual std::unique_ptr<TnCellText> clone() const = 0;
    /// The text as shown, UTF-8.
    std::string text() const { return content().text; }
    /// Stores a copy in the host and returns its number for a TnHandle, which takes ownership. Any
    /// thread. A copy without a handle remains until the process ends.
    long Replicate() const;

protected:
    TnCellText() = default;
    TnCellText(const TnCellText&) = default;
    TnCellText& operator=(const TnCellText&) = default;
};
