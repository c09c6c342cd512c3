#include "steps/ArgumentReader.h"

#include "ErrorIds.h"
#include "JobError.h"
#include "language/JsonLiteral.h"
#include "language/TextCursor.h"

namespace EmbeddedHV {

using Kind = language::Argument::Kind;

void ArgumentReader::read(StepArguments form)
{
    if (form == StepArguments::Component || form == StepArguments::ComponentWithInputs)
        return readComponent(form == StepArguments::ComponentWithInputs);
    if (form == StepArguments::ConfigurationAndExport)
        return readWithExport();
    if (_places.size() > 1 || (isOpen(0) && form == StepArguments::Configuration))
        refuse("(configuration)");
    readLiteral(0, _call.configuration);
}

const language::Expression& ArgumentReader::lambda() const
{
    if (_places.size() != 2 || !isOpen(0) || isOpen(1))
        refuse("(_, lambda)");
    return *_places[1]->value;
}

void ArgumentReader::readComponent(bool takesContainers)
{
    if (isOpen(0) || _places.size() > 3)
        refuse("(configuration, input containers, output containers)");
    if (!takesContainers && !isOpen(1))
        refuse("(configuration, _, output containers): it reads no container");
    readLiteral(0, _call.configuration);
    readLiteral(1, _call.inputContainers);
    readLiteral(2, _call.outputContainers);
}

void ArgumentReader::readWithExport()
{
    if (_places.size() > 2)
        refuse("(configuration, export)");
    readLiteral(0, _call.configuration);
    readLiteral(1, _call.exported);
}

bool ArgumentReader::isOpen(std::size_t place) const
{
    return place >= _places.size() || _places[place]->kind == Kind::Open;
}

void ArgumentReader::readLiteral(std::size_t place, Json& target) const
{
    if (!isOpen(place))
        target = language::jsonLiteral(*_places[place]->value, _call.definitions, _call.name);
}

void ArgumentReader::refuse(const std::string& form) const
{
    language::failAt(_step.position, _call.name + ": the step is written " + _call.name + form,
                     errors::kStepArguments);
}

} // namespace EmbeddedHV
