#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "language/Ast.h"
#include "steps/StepTable.h"

namespace EmbeddedHV {

/// Reads the arguments of a step that are not inputs. Each kind of step allows one form of
/// arguments. Other forms are rejected with a message that shows the allowed form. Borrows its
/// arguments for the time of one step. Throws JobError.
class ArgumentReader
{
public:
    ArgumentReader(const language::Step& step, std::vector<const language::Argument*> places,
                   StepCall& call)
        : _step(step), _places(std::move(places)), _call(call)
    {
    }

    /// Stores the arguments of the form in the call. A lambda is read by lambda().
    void read(StepArguments form);
    /// The argument of a step that takes a lambda. The argument may be a name that is bound to a
    /// lambda.
    const language::Expression& lambda() const;

private:
    void readComponent(bool takesContainers);
    void readWithExport();
    /// Whether the place is open or has no argument.
    bool isOpen(std::size_t place) const;
    /// Reads the value in a place as JSON. For an open place, `target` is unchanged.
    void readLiteral(std::size_t place, Json& target) const;
    [[noreturn]] void refuse(const std::string& form) const;

    const language::Step& _step;
    std::vector<const language::Argument*> _places;
    StepCall& _call;
};

} // namespace EmbeddedHV
