#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "CFMetaData.h"
#include "data/HVRawDataIterator.h"
#include "data/MemorySource.h"

/// A source as rows by a name.
class SourceRows : public HVRawDataIterator
{
public:
    explicit SourceRows(const MemorySource& source, const std::string& name = "rows",
                        WeightAdjust adjust = kWeightRound, bool caseCount = false)
        : HVRawDataIterator(source, std::vector<int>(), {}, caseCount, adjust, false, nullptr)
    {
        SetName(name);
    }
};

/// The present record as text: numbers, texts in quotes, "-" for a missing value.
inline std::string recordOf(EmbeddedHV::RowDataIterator& cases, const CFMetaData& fields)
{
    std::string record;
    for (std::size_t i = 0; i < fields.FieldCount(); ++i) {
        void* value = nullptr;
        unsigned long long length = 7777;
        EXPECT_EQ(cases.getRecordValue(i, value, length), 0U);
        record += record.empty() ? "" : " ";
        if (!value) {
            EXPECT_EQ(length, 0U);
            record += "-";
        } else if (fields.GetField(i)->GetStorage() == CFField::String) {
            record += "'" + std::string(static_cast<char*>(value), length) + "'";
        } else {
            EXPECT_EQ(length, 8U);
            record += CFDatum(*static_cast<double*>(value)).ToString(-1);
        }
    }
    return record;
}

inline std::string recordsOf(EmbeddedHV::RowDataIterator& cases)
{
    const CFMetaData fields(cases.getDataModel());
    std::string all;
    while (cases.nextRecord() == 0)
        all += recordOf(cases, fields) + "; ";
    return all;
}
