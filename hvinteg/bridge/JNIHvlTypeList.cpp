#include "bridge/JNIHvlTypeList.h"

#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"

JNIHvlTypeList::JNIHvlTypeList(JNIHvlType& element)
{
    setClass(JavaClassNames::TypeList);
    JavaCall(*this, "<init>", "(Lcom/vexa/ae/hvlhelpers/HvlType;)V", OnFailure::Record)
        .wrapped(&element)
        .constructWrapped();
}

JNIHvlTypeList::~JNIHvlTypeList() = default;
