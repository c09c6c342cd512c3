#include "model/TransformReader.h"

#include <utility>

#include "compile/ExpressionCompiler.h"
#include "model/FieldOrder.h"
#include "pmml/DataType.h"
#include "pmml/ModelFault.h"

namespace scoring {
namespace {

/// The fields and functions of a document, not yet compiled.
struct Contents
{
    std::vector<DataField> data; ///< the fields that derived fields use
    std::vector<DerivedField> derived;
    Definitions definitions;
    std::unordered_set<std::string> sources; ///< all sources of derived fields
};

/// Rejects a definition with the name of a built-in function: it would change other expressions.
void addDefinition(Contents& contents, pugi::xml_node element)
{
    const std::string name = required(element, "name");
    if (findFunction(name) != nullptr || !contents.definitions.emplace(name, element).second)
        throw ModelFault("function " + name + ": there is another one of this name");
}

void addDerived(Contents& contents, pugi::xml_node dictionary)
{
    for (const pugi::xml_node element : elementsIn(dictionary)) {
        if (localName(element) == "DerivedField") {
            contents.derived.push_back(derivedField(element));
            const auto& sources = contents.derived.back().sources;
            contents.sources.insert(sources.begin(), sources.end());
        } else if (localName(element) == "DefineFunction") {
            addDefinition(contents, element);
        } else {
            throw ModelFault(std::string("<") + element.name() + "> is not supported");
        }
    }
}

void refuseDoubledNames(const Contents& contents, pugi::xml_node dataDictionary)
{
    std::unordered_set<std::string> names;
    const auto take = [&names](const std::string& name) {
        if (!names.insert(name).second)
            throw ModelFault("two fields are named \"" + name + "\"");
    };
    for (const pugi::xml_node element : elementsIn(dataDictionary, "DataField"))
        take(required(element, "name"));
    for (const DerivedField& field : contents.derived)
        take(field.name);
}

/// Data fields that no derived field uses are not inputs. The data need not have them.
Contents contentsOf(pugi::xml_node root)
{
    Contents contents;
    for (const char* name : {"TransformationDictionary", "LocalTransformations"})
        for (const pugi::xml_node dictionary : elementsIn(root, name))
            addDerived(contents, dictionary);
    if (contents.derived.empty())
        throw ModelFault("the model derives no field");
    const pugi::xml_node dataDictionary = elementIn(root, "DataDictionary");
    refuseDoubledNames(contents, dataDictionary);
    for (const pugi::xml_node element : elementsIn(dataDictionary, "DataField"))
        if (contents.sources.contains(required(element, "name")))
            contents.data.emplace_back(element);
    return contents;
}

/// Errors name the field, because a model may have hundreds.
ExpressionPtr compileField(ExpressionCompiler& compiler, const DerivedField& field,
                           const Scope& scope)
{
    try {
        const std::vector<pugi::xml_node> elements = elementsIn(field.element);
        std::vector<pugi::xml_node> expressions = elements;
        std::erase_if(expressions,
                      [](pugi::xml_node element) { return localName(element) == "Value"; });
        if (expressions.size() != 1)
            throw ModelFault("it must have exactly one expression");
        const auto type = dataTypeOf(field.element);
        ExpressionPtr expression = compiler.compile(
            expressions.front(), scope, type ? std::optional(type->kind) : std::nullopt);
        return type ? converted(std::move(expression), *type) : std::move(expression);
    } catch (const ModelFault& fault) {
        throw ModelFault("derived field \"" + field.name + "\": " + fault.what());
    }
}

} // namespace

std::unique_ptr<TransformModel> readTransformModel(const PmmlDocument& document,
                                                   const MCSettings& settings)
{
    Contents contents = contentsOf(document.root());
    Scope scope;
    for (const DataField& field : contents.data)
        scope.emplace(field.variable().name(),
                      ScopeEntry{scope.size(), field.variable().kind(), field.scale()});
    const std::size_t inputs = contents.data.size();
    ExpressionCompiler compiler(contents.definitions, settings, inputs + contents.derived.size());
    Expressions steps;
    for (const std::size_t position : orderOf(contents.derived)) {
        const DerivedField& field = contents.derived[position];
        steps.push_back(compileField(compiler, field, scope));
        scope.emplace(field.name, ScopeEntry{inputs + steps.size() - 1, steps.back()->kind(),
                                             steps.back()->scale()});
    }
    std::vector<TransformModel::Output> outputs;
    for (const DerivedField& field : contents.derived) {
        const ScopeEntry& entry = scope.at(field.name);
        if (entry.kind != ValueKind::Text || !contents.sources.contains(field.name))
            outputs.push_back({ModelVariable(field.name, entry.kind), entry.slot});
    }
    return std::make_unique<TransformModel>(std::move(contents.data), std::move(steps),
                                            std::move(outputs), compiler.slotCount());
}

} // namespace scoring
