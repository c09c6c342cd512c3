#include <gtest/gtest.h>

#include "HostConversions.h"

#include "MemorySource.h"
#include "data/HVDataModel.h"
#include "support/HostScopes.h"

namespace {

std::string namesOf(const CFMetaData& model)
{
    std::string names;
    for (std::size_t i = 0; i < model.FieldCount(); ++i)
        names += model.GetField(i)->GetName() + " ";
    return names;
}

TEST(DataModel, TypesFollowLevelAndKind)
{
    struct Row
    {
        int level;
        CFField::FieldType number;
        CFField::FieldType text;
    };
    for (const Row& row :
         {Row{0, CFField::Continuous, CFField::Nominal}, Row{1, CFField::Nominal, CFField::Nominal},
          Row{2, CFField::Ordinal, CFField::Ordinal}, Row{3, CFField::Continuous, CFField::Nominal},
          Row{4, CFField::Typeless, CFField::Typeless}}) {
        MemorySource source({numeric("n"), text("t", 4)});
        HVDataModel model(source, false, false, false);
        const auto level = static_cast<MeasurementLevel>(row.level);
        model.UpdateAnalysMetadata(std::vector<int>{0, 1}, {level, level});
        EXPECT_EQ(model.getMetaData().GetField(0)->GetType(), row.number) << row.level;
        EXPECT_EQ(model.getMetaData().GetField(1)->GetType(), row.text) << row.level;
    }
}

TEST(DataModel, StorageFollowsThePrintFormat)
{
    const std::pair<int, CFField::StorageType> formats[] = {
        {1, CFField::String}, {2, CFField::String},     {20, CFField::Date},
        {23, CFField::Date},  {24, CFField::Date},      {28, CFField::Date},
        {29, CFField::Date},  {30, CFField::Date},      {38, CFField::Date},
        {39, CFField::Date},  {21, CFField::Time},      {25, CFField::Time},
        {85, CFField::Time},  {5, CFField::Real},       {0, CFField::Real},
        {26, CFField::Real},  {22, CFField::Timestamp}, {27, CFField::Real},
        {40, CFField::Real},  {86, CFField::Timestamp},
    };
    for (const auto& [format, storage] : formats) {
        MemorySource source({numeric("n", static_cast<std::uint8_t>(format))});
        const HVDataModel model(source, false, false, false);
        EXPECT_EQ(model.getMetaData().GetField(0)->GetStorage(), storage) << format;
    }
}

TEST(DataModel, RolesAreWeightThenSplitThenTheVariablesOwn)
{
    std::vector<VEXA_Variable> variables;
    for (const int role : {0, 1, 2, 3, 4, 9}) {
        variables.push_back(numeric("v" + std::to_string(role)));
        variables.back().SetRole(role);
    }
    MemorySource source(variables);
    const auto roles = [&](bool weightRole, bool splitRole) {
        const HVDataModel model(source, false, weightRole, splitRole);
        std::vector<int> found;
        for (std::size_t i = 0; i < model.getMetaData().FieldCount(); ++i)
            found.push_back(model.getMetaData().GetField(i)->GetRole());
        return found;
    };
    // 0 input, 1 target, 2 both, 3 partition, 4 split, 5 weight, 7 none
    const std::vector<int> own = {0, 1, 2, 7, 3, 0};
    EXPECT_EQ(roles(true, true), own);
    source.weight = 1;
    source.split = {1, 2};
    EXPECT_EQ(roles(false, false), own);
    EXPECT_EQ(roles(true, true), (std::vector<int>{0, 5, 4, 0, 0, 0}));
    EXPECT_EQ(roles(false, true), (std::vector<int>{0, 4, 4, 0, 0, 0}));
}

TEST(DataModel, CarriesLabelsAndMissingValues)
{
    VEXA_Variable date = numeric("day", kFormatDate);
    date.SetLabel("Day of birth");
    VEXA_ValueLabelMap labels;
    labels.SetLabel(GetBaseDateNumber() + 86400, "second");
    date.SetValueLabels(labels);
    date.SetMissingRange(GetBaseDateNumber(), GetBaseDateNumber() + 2 * 86400,
                         GetBaseDateNumber() + 86400);
    VEXA_Variable name = text("name", 12);
    VEXA_ValueLabelMap names(12);
    names.SetLabel("none", "nobody");
    names.SetLabel("twelve bytes", "wide");
    // The host has walked through a part of the labels.
    const OBS* value = nullptr;
    const char* label = nullptr;
    ASSERT_TRUE(names.GetNextPair(value, label));
    name.SetValueLabels(names);
    name.SetMissingValues(std::vector<std::string>{"none", "x"});
    MemorySource source({date, name, numeric("free")});
    const HVDataModel model(source, false, false, false);

    const CFField& day = *model.getMetaData().GetField(0);
    EXPECT_EQ(day.GetLabel(), "Day of birth");
    ASSERT_EQ(day.GetValueLabels().size(), 1U);
    EXPECT_EQ(day.GetValueLabels()[0], CFValue(CFDatum(1.0), "second", 0, 0));
    EXPECT_EQ(day.GetMissingValues(),
              CFMissingValues(CFRange(CFDatum(0.0), CFDatum(2.0)),
                              {CFValue(CFDatum(1.0), "second", 0, 0)}, true, false));
    ASSERT_NE(day.GetPrivateFormat(), nullptr);
    EXPECT_EQ(*day.GetPrivateFormat(), CFFormat(kFormatDate, 8, 2));
    EXPECT_EQ(model.getMetaData().GetField(1)->GetValueLabels(),
              (std::vector<CFValue>{CFValue(CFDatum("none"), "nobody"),
                                    CFValue(CFDatum("twelve bytes"), "wide")}));
    EXPECT_EQ(model.getMetaData().GetField(1)->GetMissingValues(),
              CFMissingValues({}, {CFValue(CFDatum("none"), "nobody"), CFValue(CFDatum("x"))}, true,
                              false));
    EXPECT_FALSE(model.getMetaData().GetField(2)->GetMissingValues().IsValid());
    // What the engine gets is the same.
    EXPECT_EQ(*CFMetaData(model.getDataModel()).GetField(0), day);
}

TEST(DataModel, MissingNumbersAreListedByTheirKind)
{
    const auto missing = [](const VEXA_Variable& variable) {
        MemorySource source({variable});
        const HVDataModel model(source, false, false, false);
        return model.getMetaData().GetField(0)->GetMissingValues();
    };
    VEXA_Variable variable = numeric("n");
    variable.SetMissingRange(7, 9);
    EXPECT_EQ(missing(variable),
              CFMissingValues(CFRange(CFDatum(7.0), CFDatum(9.0)), {}, true, false));
    variable.SetMissingRange(7, 9, -1);
    EXPECT_EQ(missing(variable), CFMissingValues(CFRange(CFDatum(7.0), CFDatum(9.0)),
                                                 {CFValue(CFDatum(-1.0))}, true, false));
    std::vector<double> numbers;
    std::vector<CFValue> values;
    for (const double number : {3.0, 1.0, 2.0}) {
        numbers.push_back(number);
        values.emplace_back(CFDatum(number));
        variable.SetMissingValues(numbers);
        EXPECT_EQ(missing(variable), CFMissingValues({}, values, true, false));
    }
}

TEST(DataModel, AnalysisIsWhatResolvesOfTheChoice)
{
    MemorySource source({numeric("a"), numeric("b"), text("c", 3)});
    HVDataModel model(source, true, false, false);
    EXPECT_EQ(namesOf(model.getMetaData()), "a b c $casecount ");
    EXPECT_EQ(model.getMetaData().GetField(3)->GetRole(), CFField::RecordId);
    EXPECT_EQ(model.getMetaData().GetField(3)->GetLabel(), "Case Count");

    model.UpdateAnalysMetadata(std::vector<int>{2, -1, 7, 0});
    EXPECT_EQ(namesOf(model.getMetaData()), "c a $casecount ");
    EXPECT_EQ(model.getAnalysVars(), (std::vector<int>{2, 0, -1}));
    const HVDataModel copy = model;
    model.UpdateAnalysMetadata(std::vector<std::string>{"", "B", "nothing"}, true);
    EXPECT_EQ(namesOf(model.getMetaData()), "b $casecount ");
    EXPECT_EQ(namesOf(copy.getMetaData()), "c a $casecount ");

    // Nothing resolves: the dictionary again, and no case count by itself.
    const std::string dictionary = HVDataModel(source, true, false, false).getDataModel();
    model.UpdateAnalysMetadata(std::vector<std::string>{}, false);
    EXPECT_EQ(model.getDataModel(), dictionary);
    for (const std::vector<int>& columns : {std::vector<int>{-5, 3}, std::vector<int>{}}) {
        model.UpdateAnalysMetadata(columns);
        EXPECT_TRUE(model.getAnalysVars().empty());
        EXPECT_EQ(model.getDataModel(), dictionary);
    }
}

TEST(DataModel, NegativeLevelsAreTheVariablesOwn)
{
    VEXA_Variable ordinal = numeric("o");
    ordinal.SetMeasurementLevel(MeasurementLevel::Ordinal);
    MemorySource source({ordinal, numeric("n")});
    HVDataModel model(source, false, false, false);
    model.UpdateAnalysMetadata(
        std::vector<std::string>{"none", "o", "n"},
        {MeasurementLevel::Scale, static_cast<MeasurementLevel>(-1), MeasurementLevel::Nominal},
        false);
    EXPECT_EQ(model.getMetaData().GetField(0)->GetType(), CFField::Ordinal);
    EXPECT_EQ(model.getMetaData().GetField(1)->GetType(), CFField::Nominal);
}

TEST(DataModel, TextsComeOutOfTheHostsEncoding)
{
    const ScopedCodePage latin("windows-1252");
    VEXA_Variable variable = text("gr\xf6\xdf"
                                  "e",
                                  4);
    variable.SetLabel("\x80");
    VEXA_ValueLabelMap labels(4);
    labels.SetLabel("\xf6", "\xe4");
    variable.SetValueLabels(labels);
    variable.SetMissingValues(std::vector<std::string>{"\xf6"});
    MemorySource source({variable});
    HVDataModel model(source, false, false, false);
    EXPECT_EQ(namesOf(model.getMetaData()), "größe ");
    EXPECT_EQ(model.getMetaData().GetField(0)->GetLabel(), "€");
    // The label of a missing value is found before its text is converted.
    const CFValue umlaut(CFDatum("ö"), "ä");
    EXPECT_EQ(model.getMetaData().GetField(0)->GetValueLabels(), std::vector<CFValue>{umlaut});
    EXPECT_EQ(model.getMetaData().GetField(0)->GetMissingValues(),
              CFMissingValues({}, {umlaut}, true, false));
    model.UpdateAnalysMetadata(std::vector<std::string>{"GRÖßE"}, true);
    EXPECT_EQ(model.getAnalysVars(), std::vector<int>{0});
}

} // namespace
