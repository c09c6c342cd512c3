#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "language/Ast.h"
#include "steps/StepTable.h"

namespace EmbeddedHV {

/// Reads the arguments of a step that are no inputs. Each kind of step is written in one form;
/// another one is refused with the form that is right. What it is made from is borrowed; it lives
/// for one step. Throws JobError.
class ArgumentReader
{
public:
    ArgumentReader(const language::Step& step, std::vector<const language::Argument*> places,
                   StepCall& call)
        : _step(step), _places(std::move(places)), _call(call)
    {
    }

    /// Puts into the call what the form has places for; a lambda has a reader of its own.
    void read(StepArguments form);
    /// The argument of a step that takes a lambda, which may be a name that stands for one.
    const language::Expression& lambda() const;

private:
    void readComponent(bool takesContainers);
    void readWithExport();
    /// Whether nothing stands in a place.
    bool isOpen(std::size_t place) const;
    /// The value in a place as JSON; an open one leaves the target as it is.
    void readLiteral(std::size_t place, Json& target) const;
    [[noreturn]] void refuse(const std::string& form) const;

    const language::Step& _step;
    std::vector<const language::Argument*> _places;
    StepCall& _call;
};

} // namespace EmbeddedHV
