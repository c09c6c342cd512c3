#include "CommonBlocks.h"

CmnGlb* pvGetCmnGlb()
{
    static CmnGlb block;
    return &block;
}

CmnSys* pvGetCmnSys()
{
    static CmnSys block;
    return &block;
}
