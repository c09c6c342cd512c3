#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "data/ReorderCategories.h"

namespace {

using Texts = std::vector<std::string>;

std::vector<CFValue> valuesOf(const Texts& texts)
{
    std::vector<CFValue> values;
    for (const std::string& text : texts)
        values.emplace_back(CFDatum(text), "label of " + text);
    return values;
}

Texts textsOf(const std::vector<CFValue>& values)
{
    Texts texts;
    for (const CFValue& value : values)
        texts.push_back(value.GetText());
    return texts;
}

CFField fieldOf(CFField::FieldType type, const Texts& values, const Texts& labels)
{
    CFField field("f", type, CFField::String);
    field.SetValues(valuesOf(values));
    field.SetValueLabels(valuesOf(labels));
    return field;
}

TEST(ReorderCategories, SortsAndPutsTheReferenceLast)
{
    using enum CFField::FieldType;
    const auto ref = [](const char* text) { return CFValue(CFDatum(text)); };
    const std::tuple<CFField::FieldType, Texts, Texts, std::optional<CFValue>, Texts, Texts, bool>
        cases[] = {
            {Nominal, {"c", "a", "b"}, {}, ref("a"), {"b", "c", "a"}, {}, false},
            {Nominal, {"c", "a", "b"}, {}, {}, {"a", "b", "c"}, {}, false},
            {Ordinal, {"c", "a"}, {}, ref("x"), {"a", "c"}, {}, true},
            {Flag, {"c", "a"}, {}, CFValue(CFDatum()), {"a", "c"}, {}, false},
            {Nominal, {"a"}, {}, ref("a"), {"a"}, {}, false},
            {Nominal, {}, {}, ref("a"), {}, {}, false},
            {Nominal, {}, {"b", "a"}, ref("x"), {}, {"a", "b"}, true},
            // Pairs go by the first list, whatever the second holds.
            {Nominal,
             {"c", "a", "b"},
             {"1", "3", "2"},
             ref("b"),
             {"a", "c", "b"},
             {"3", "1", "2"},
             false},
            {Nominal, {"b", "a"}, {"c", "b", "a"}, ref("a"), {"b", "a"}, {"b", "c", "a"}, false},
            {Continuous, {"c", "a"}, {"2", "1"}, ref("x"), {"c", "a"}, {"2", "1"}, false},
        };
    for (const auto& [type, values, labels, reference, newValues, newLabels, isMissed] : cases) {
        SCOPED_TRACE(testing::PrintToString(values) + testing::PrintToString(labels));
        const CFField field = fieldOf(type, values, labels);
        CFField out("other", CFField::Typeless, CFField::Unknown);
        bool missed = !isMissed;
        ReorderCategories(out, field, reference ? &*reference : nullptr, &missed);
        EXPECT_EQ(textsOf(out.GetValues()), newValues);
        EXPECT_EQ(textsOf(out.GetValueLabels()), newLabels);
        EXPECT_EQ(missed, isMissed);
        EXPECT_EQ(out.GetName(), "f");
        if (!out.GetValues().empty()) {
            EXPECT_EQ(out.GetValues().back().GetLabel(), "label of " + newValues.back());
        }
    }
}

TEST(ReorderCategories, MissingValuesKeepWhatElseIsDeclared)
{
    CFField field = fieldOf(CFField::Nominal, {"b", "a"}, {});
    field.SetMissingValues(CFMissingValues({}, valuesOf({"z", "b", "y"}), true, false));
    const CFValue reference{CFDatum("b")};
    ReorderCategories(field, field, &reference, nullptr);
    EXPECT_EQ(textsOf(field.GetMissingValues().GetValues()), (Texts{"y", "z", "b"}));
    EXPECT_TRUE(field.GetMissingValues().IsNullMissing());
    EXPECT_FALSE(field.GetMissingValues().IsWhiteSpMissing());
}

CFMetaData threeFields()
{
    CFMetaData model;
    for (const char* name : {"f", "g", "h"}) {
        CFField field = fieldOf(CFField::Nominal, {"c", "a", "b"}, {});
        field.SetName(name);
        model.AppendField(field);
    }
    return model;
}

Texts valuesAt(const CFMetaData& model, std::size_t index)
{
    return textsOf(model.GetField(index)->GetValues());
}

TEST(ReorderCategories, OfAModelTakesFieldsAndReferencesByPlace)
{
    const std::vector<CFValue> references{CFValue(CFDatum("a")), CFValue(CFDatum("x"))};
    const Texts ascending{"a", "b", "c"};
    const Texts untouched{"c", "a", "b"};
    std::vector<int> notFound{7};

    CFMetaData some = threeFields();
    ReorderCategories(some, {2, 0}, &references, &notFound);
    EXPECT_EQ(valuesAt(some, 0), ascending); // the second reference, which is no category
    EXPECT_EQ(valuesAt(some, 1), untouched);
    EXPECT_EQ(valuesAt(some, 2), (Texts{"b", "c", "a"}));
    EXPECT_EQ(notFound, (std::vector<int>{0}));

    CFMetaData none = threeFields();
    ReorderCategories(none, {}, &references, &notFound);
    EXPECT_EQ(valuesAt(none, 0), ascending);
    EXPECT_TRUE(notFound.empty());

    CFMetaData all = threeFields();
    ReorderCategories(all, &references, &notFound);
    EXPECT_EQ(valuesAt(all, 0), (Texts{"b", "c", "a"}));
    EXPECT_EQ(valuesAt(all, 2), ascending); // past the end of the references
    EXPECT_EQ(notFound, (std::vector<int>{1}));
}

} // namespace
