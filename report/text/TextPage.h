#pragma once

#include <iosfwd>
#include <string>

#include "report/text/OutputText.h"

/// The target of output for a terminal. Knows the width and whether colours are used, and separates
/// blocks by an empty line.
class TextPage
{
public:
    /// Emphasis of a text, if colours are used.
    enum class Style
    {
        Plain,
        Bold,
        Faint,
        Warning,
        Error
    };

    /// Whether blocks were written before.
    enum class Begin
    {
        Empty,
        AfterBlock
    };

    TextPage(const OutputTextOptions& options, std::ostream& out, Begin begin = Begin::Empty)
        : _options(options), _out(out), _isEmpty(begin == Begin::Empty)
    {
    }

    const OutputTextOptions& options() const { return _options; }
    std::ostream& out() { return _out; }
    /// Starts a block that an empty line separates from the previous one.
    void beginBlock();
    /// Writes a text on as many lines as it needs. Lines after the first are indented by the width
    /// of `lead`.
    void write(const std::string& text, Style style = Style::Plain, const std::string& lead = {});

private:
    std::string styled(const std::string& line, Style style) const;

    OutputTextOptions _options;
    std::ostream& _out;
    bool _isEmpty;
};
