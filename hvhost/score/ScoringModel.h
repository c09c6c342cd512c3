#pragma once

#include <string>
#include <vector>

#include "CFField.h"

class CFMetaData;
class ReadableFile;

/// A transform model in a file, with its inputs and outputs.
class ScoringModel
{
public:
    /// An input or output of the model: its name and the storage of its values.
    struct Variable
    {
        std::string name;
        CFField::StorageType storage = CFField::Real;
    };

    /// Throws CommandFault (Input), with the reason, if the model cannot be scored.
    explicit ScoringModel(const ReadableFile& file);

    const std::string& text() const { return _text; }
    /// The outputs with these names; all outputs if there are no names. Prefers exact names, then
    /// ignores letter case. Throws CommandFault (Usage) for an unknown name.
    std::vector<Variable> targets(const std::vector<std::string>& names) const;
    /// Throws CommandFault (Input) if the data lack an input or have one of another type.
    void checkInputs(const CFMetaData& data, const std::string& dataName) const;

private:
    void read();

    std::string _name;
    std::string _text;
    std::vector<Variable> _inputs;
    std::vector<Variable> _outputs;
};
