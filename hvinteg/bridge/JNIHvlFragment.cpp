#include "bridge/JNIHvlFragment.h"

#include "bridge/JNIHvlFunction.h"
#include "bridge/JavaCollections.h"

JNIHvlFragment::JNIHvlFragment(jobject object)
{
    init(object, true);
}

JNIHvlFragment::~JNIHvlFragment() = default;

bool JNIHvlFragment::containsFunction(JNIHvlFunction* function)
{
    return JavaCall(*this, "containsFunction", "(Lcom/vexa/ae/hvlhelpers/HvlFunction;)Z")
        .wrapped(function)
        .callBoolean(getObject());
}

std::string JNIHvlFragment::getId()
{
    return JavaCall(*this, "getId", "()Ljava/lang/String;").callText(getObject());
}

std::set<std::string> JNIHvlFragment::getPredecessorFragmentIds()
{
    std::set<std::string> ids;
    const LocalRef<> found =
        JavaCall(*this, "getPredecessorFragmentIds", "()Ljava/util/Set;").callObject(getObject());
    JavaCollections::forEachOf(*this, found.get(), OnFailure::Throw, [&](LocalRef<> id) {
        ids.insert(getString(static_cast<jstring>(id.get())));
    });
    return ids;
}

std::string JNIHvlFragment::toHVLText()
{
    return JavaCall(*this, "toHVLText", "()Ljava/lang/String;").callText(getObject());
}
