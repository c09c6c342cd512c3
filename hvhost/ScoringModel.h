#pragma once

#include <string>
#include <vector>

#include "CFField.h"

class CFMetaData;
class ReadableFile;

/// A transform model in a file, with what it takes and gives.
class ScoringModel
{
public:
    /// What the model takes or gives: a name, and the kind of its values.
    struct Variable
    {
        std::string name;
        CFField::StorageType storage = CFField::Real;
    };

    /// Throws CommandFault (Input) for a model that cannot be scored, and says why.
    explicit ScoringModel(const ReadableFile& file);

    const std::string& text() const { return _text; }
    /// The outputs of these names, or else of these names in other letter case, or all; throws
    /// CommandFault (Usage) for a name that the model does not have.
    std::vector<Variable> targets(const std::vector<std::string>& names) const;
    /// Throws CommandFault (Input) for data that lack an input, or have one that is something else.
    void checkInputs(const CFMetaData& data, const std::string& dataName) const;

private:
    void read();

    std::string _name;
    std::string _text;
    std::vector<Variable> _inputs;
    std::vector<Variable> _outputs;
};
