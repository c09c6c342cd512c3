#include "bridge/JNIHvlTypeList.h"

#include "bridge/JavaCall.h"
#include "bridge/JavaClassNames.h"

JNIHvlTypeList::JNIHvlTypeList(JNIHvlType& element)
{
    setClass(JavaClassNames::TypeList);
    const LocalRef<> object =
        JavaCall(*this, "<init>", "(Lcom/vexa/ae/hvlhelpers/HvlType;)V", OnFailure::Record)
            .wrapped(&element)
            .construct();
    setObjectG(object.get(), true, true);
    handleException(false);
}

JNIHvlTypeList::~JNIHvlTypeList() = default;
