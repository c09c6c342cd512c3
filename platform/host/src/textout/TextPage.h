#pragma once

#include <iosfwd>
#include <string>

#include "OutputText.h"

/// What output is written to for a terminal: knows the width, whether there are colours, and that
/// an empty line stands between one thing and the next.
class TextPage
{
public:
    /// How a text stands out, where there are colours.
    enum class Style
    {
        Plain,
        Bold,
        Faint,
        Warning,
        Error
    };

    TextPage(const OutputTextOptions& options, std::ostream& out) : _options(options), _out(out) {}

    const OutputTextOptions& options() const { return _options; }
    std::ostream& out() { return _out; }
    /// Begins something that an empty line sets off from what was before.
    void beginBlock();
    /// Writes a text in as many lines as it takes, each after the first behind as many blanks as
    /// the lead has places.
    void write(const std::string& text, Style style = Style::Plain, const std::string& lead = {});

private:
    std::string styled(const std::string& line, Style style) const;

    OutputTextOptions _options;
    std::ostream& _out;
    bool _isEmpty = true;
};
