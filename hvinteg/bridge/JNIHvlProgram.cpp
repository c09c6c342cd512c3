#include "bridge/JNIHvlProgram.h"

#include <stdexcept>

#include "bridge/JNIHvlContainer.h"
#include "bridge/JNIHvlFragment.h"
#include "bridge/JNIHvlFunction.h"
#include "bridge/JNITaggedFunctionInput.h"
#include "bridge/JavaClassNames.h"
#include "bridge/JavaCollections.h"
#include "bridge/JavaSignatures.h"
#include "bridge/WrapperFactory.h"

namespace {
/// Large enough for most jobs, which then need one allocation.
constexpr std::size_t UsualTextSize = 1024;

/// Sorts the fragments of a Java set into execution order; returns a Java list.
LocalRef<> sorted(JNIHvlProgram& program, LocalRef<> fragments)
{
    return JavaCall::ofStatic(program, program.classNamed(JavaClassNames::Program),
                              "sortFragmentsIntoExecutionOrder", "(" SIG_SET ")" SIG_LIST)
        .take(std::move(fragments))
        .callStaticObject();
}

/// The first `count` values. Throws std::out_of_range if the vector is shorter.
template <class Value>
std::vector<Value> firstOf(const std::vector<Value>& values, std::size_t count)
{
    if (values.size() < count)
        throw std::out_of_range("The lists of containers are not of one size");
    return {values.begin(), values.begin() + static_cast<std::ptrdiff_t>(count)};
}
} // namespace

JNIHvlProgram::JNIHvlProgram()
{
    init(JavaClassNames::Program, true);
}

JNIHvlProgram::JNIHvlProgram(const std::string& text)
{
    setClass(JavaClassNames::Program);
    JavaCall(*this, "<init>", "(" SIG_STRING ")V", OnFailure::Record).text(text).constructWrapped();
}

JNIHvlProgram::JNIHvlProgram(jobject object)
{
    init(object, true);
}

JNIHvlProgram::~JNIHvlProgram() = default;

JNIHvlProgram* JNIHvlProgram::clone()
{
    return WrapperFactory::wrapGlobal<JNIHvlProgram>(
        JavaCall(*this, "clone", "()" SIG_PROGRAM).callObject(getObject()));
}

void JNIHvlProgram::addDependency(JNIHvlFunction* earlier, JNIHvlFunction* later)
{
    JavaCall(*this, "addDependency", "(" SIG_FUNCTION SIG_FUNCTION ")V")
        .wrapped(earlier)
        .wrapped(later)
        .callVoid(getObject());
}

JNIHvlContainer* JNIHvlProgram::createContainer(const std::string& name, const std::string& uri,
                                                bool output)
{
    return WrapperFactory::wrapLocal<JNIHvlContainer>(
        JavaCall(*this, "createContainer", "(" SIG_STRING SIG_STRING "Z)" SIG_CONTAINER)
            .text(name)
            .text(uri)
            .flag(output)
            .callObject(getObject()));
}

std::string JNIHvlProgram::formatContainerListJSON(const std::vector<std::string>* names,
                                                   const std::vector<std::string>* uris,
                                                   const std::vector<bool>* outputs)
{
    JavaCall call =
        JavaCall::ofStatic(*this, classNamed(JavaClassNames::Helpers), "formatContainerListJSON",
                           "([" SIG_STRING "[" SIG_STRING "[Z)" SIG_STRING);
    if (names == nullptr || uris == nullptr || outputs == nullptr) {
        call.object(nullptr).object(nullptr).object(nullptr);
    } else {
        const std::vector<std::string> uriTexts = firstOf(*uris, names->size());
        const std::vector<bool> flags = firstOf(*outputs, names->size());
        call.take(JavaCollections::stringArray(*this, names))
            .take(JavaCollections::stringArray(*this, &uriTexts))
            .take(JavaCollections::booleanArray(*this, flags));
    }
    const LocalRef<> text = call.callStaticObject();
    return getString(static_cast<jstring>(text.get()));
}

std::vector<JNITaggedFunctionInput*> JNIHvlProgram::getPredecessors(JNIHvlFunction* function)
{
    std::vector<JNITaggedFunctionInput*> inputs;
    const LocalRef<> list = JavaCall(*this, "getPredecessors", "(" SIG_FUNCTION ")" SIG_LIST)
                                .wrapped(function)
                                .callObject(getObject());
    JavaCollections::forEachOfList(*this, list.get(), [&](const LocalRef<>& input) {
        inputs.push_back(WrapperFactory::wrapGlobal<JNITaggedFunctionInput>(input));
    });
    return inputs;
}

std::set<JNIHvlFragment*> JNIHvlProgram::getFragments()
{
    std::set<JNIHvlFragment*> fragments;
    const LocalRef<> found = JavaCall(*this, "getFragments", "()" SIG_SET).callObject(getObject());
    JavaCollections::forEachOf(
        *this, found.get(), OnFailure::Throw, [&](const LocalRef<>& fragment) {
            fragments.insert(WrapperFactory::wrapGlobal<JNIHvlFragment>(fragment));
        });
    return fragments;
}

std::vector<JNIHvlFragment*>
JNIHvlProgram::sortFragmentsIntoExecutionOrder(std::set<JNIHvlFragment*>* fragments)
{
    LocalRef<> unsorted;
    if (fragments != nullptr && !fragments->empty())
        unsorted = JavaCollections::set(*this, {fragments->begin(), fragments->end()});
    const LocalRef<> list = sorted(*this, std::move(unsorted));
    std::vector<JNIHvlFragment*> result;
    JavaCollections::forEachOfList(*this, list.get(), [&](const LocalRef<>& fragment) {
        result.push_back(WrapperFactory::wrapGlobal<JNIHvlFragment>(fragment));
    });
    return result;
}

void JNIHvlProgram::getHvlText(std::string& text)
{
    const LocalRef<> list =
        sorted(*this, JavaCall(*this, "getFragments", "()" SIG_SET).callObject(getObject()));
    text.clear();
    if (text.capacity() < UsualTextSize)
        text.reserve(UsualTextSize);
    // Put a newline between two fragments, but only after a fragment that has text.
    bool newlineOwed = false;
    JavaCollections::forEachOfList(*this, list.get(), [&](const LocalRef<>& element) {
        if (newlineOwed)
            text += '\n';
        const std::string part = JNIHvlFragment(element.get()).toHVLText();
        text += part;
        newlineOwed = !part.empty();
    });
}
