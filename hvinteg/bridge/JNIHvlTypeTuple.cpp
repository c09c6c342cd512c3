#include "bridge/JNIHvlTypeTuple.h"

#include "bridge/JavaClassNames.h"
#include "bridge/JavaCollections.h"

JNIHvlTypeTuple::JNIHvlTypeTuple(std::vector<JNIHvlType*>& elements)
{
    setClass(JavaClassNames::TypeTuple);
    JavaCall call(*this, "<init>", "([Lcom/vexa/ae/hvlhelpers/HvlType;)V", OnFailure::Record);
    if (call.failed())
        return;
    LocalRef<> array =
        JavaCollections::arrayOf(*this, JavaClassNames::Type, &elements, OnFailure::Record);
    if (!array)
        return;
    call.take(std::move(array)).constructWrapped();
}

JNIHvlTypeTuple::~JNIHvlTypeTuple() = default;
