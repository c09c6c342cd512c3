#pragma once

#include "data/MemorySource.h"
#include "support/Paths.h"
#include "support/WrittenRows.h"
#include "tcm/ViewerFixture.h"

/// A viewer of a model of sales by region and shop, with three months of data. The scripted engine
/// writes the files that the steps would write. Targets are the series of the region "north" and
/// the series without a region.
class Replay : public ViewerTest
{
protected:
    void SetUp() override
    {
        ViewerTest::SetUp();
        engine.setScript([this](ScriptedJob& job) { answer(job); });
        engine.setOutputs([this](const std::string&) { return rows; });
        putModel(preparationOf("\"region\""));
    }

    /// Writes a model file with this "TSDPOutput.json", or without one.
    void putModel(const std::optional<std::string>& preparation)
    {
        const auto codes = [](const char* name, std::vector<CFValue> values) {
            CFField field(name, CFField::Nominal, CFField::Integer);
            field.SetValues(std::move(values));
            field.SetBaseField(CFField(name, CFField::Nominal, CFField::String));
            return field;
        };
        CFMetaData fields;
        fields.AppendField(codes("region", {CFValue(CFDatum(0), "north")}));
        fields.AppendField(codes("shop", {CFValue(CFDatum(2), "old")}));
        fields.AppendField(codes("metricField", {CFValue(CFDatum(1), "sales")}));
        std::string xml;
        fields.ExportXMLDoc(xml);
        xml.erase(0, xml.find("<DataModel>"));
        Entries entries = {{"StatXML.xml", "<StatXML>" + xml + "</StatXML>"},
                           {"TCMGraph.json", R"({"targets":[{"series":"0-1"},{"series":"1"}]})"}};
        if (preparation)
            entries["TSDPOutput.json"] = *preparation;
        modelPath = ViewerTest::putModel(entries);
    }

    bool score(const std::string& timeField, const std::string& start, const std::string& end,
               const Names& dimFields = {"region"}, const Names& dimValues = {"north"})
    {
        actual.clear();
        predicted.clear();
        return viewer->GetScenarioInfo(dataset, modelPath, timeField, start, end, {"x"}, {1}, {2},
                                       "sales", dimFields, dimValues, actual, predicted);
    }

    /// The jobs without the descriptive one.
    Names plainJobs() const
    {
        Names texts = jobs();
        std::erase_if(texts, [](const std::string& text) {
            return text.find("descriptives:") != std::string::npos;
        });
        return texts;
    }

    /// A preparation of three months. `dimensions` are names in quotes.
    static std::string preparationOf(const std::string& dimensions)
    {
        return R"({"settings":{"dimFieldList":[)" + dimensions +
               R"(],"metricFieldList":["sales"],"dateTimeField":"month","span":{"n":3}},)"
               R"("output":{"timeVariable":[1,2,3]}})";
    }

    std::string modelPath;
    LocallyUniqueID dataset = SvrDMDataset::Register(std::make_shared<MemorySource>(
        std::vector<VEXA_Variable>{text("month", 7), numeric("day"), text("region", 5),
                                   text("shop", 3), numeric("sales")},
        std::vector<MemorySource::Row>{{"2020-01", 1.0, "north", "old", 5.0},
                                       {"2020-02", 2.0, "north", "old", 6.0},
                                       {"2020-03", 3.0, "north", "old", 7.0}}));
    WrittenRows* rows = nullptr; ///< of the scored file
    std::vector<double> actual;
    std::vector<double> predicted;
    std::vector<int> recordsRead; ///< by each job that reads the dataset
    std::string modelOfRecords;   ///< as the preparation finds it
    std::size_t failingJob = 0;   ///< from 1; 0 for none

private:
    void answer(ScriptedJob& job)
    {
        const std::string text = jobs().back();
        if (const int count = job.pull("_activeDataset_"); count >= 0)
            recordsRead.push_back(count);
        if (const std::string file = placeOf(text, "StatXML"); !file.empty())
            ZipWriter(file).AddString("StatXML.xml", kDescribed);
        if (const std::string file = placeOf(text, "tcmStatJson"); !file.empty())
            ZipWriter(file).AddString("statJson.json", R"({"effects":[]})");
        std::smatch read;
        if (std::regex_search(text, read, std::regex("dataModel\":\"file:///([^\"]*)\"")) &&
            text.find("tsdp:tsdp") != std::string::npos)
            FetchFile::fetch(read[1], modelOfRecords);
        for (const auto& [step, message] : {std::pair("descriptives:", "described"),
                                            {"->tsdp:tsdp(", "prepared"},
                                            {"->rtsdp:", "scored"}})
            if (text.find(step) != std::string::npos)
                job.message("W1", message);
        if (jobs().size() == failingJob)
            return job.listener().onError("ID", "text", "detail");
        job.listener().onSuccess();
    }

    static constexpr const char* kDescribed =
        R"(<StatXML><DataModel><Field name="region" storage="string">)"
        R"(<Values><Value value="north"/></Values></Field></DataModel></StatXML>)";
};
