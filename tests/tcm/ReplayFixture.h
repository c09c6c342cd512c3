#pragma once

#include <gmock/gmock.h>

#include <map>
#include <optional>
#include <regex>

#include "data/MemorySource.h"
#include "support/JobFixture.h"
#include "support/Paths.h"
#include "support/ScratchFolder.h"
#include "support/WrittenRows.h"
#include "support/ZipWriter.h"
#include "tcm/HVInteractiveTSR.h"

using Names = std::vector<std::string>;

/// A viewer of a model of sales by region and shop, with three months of data, on an engine that
/// leaves what the steps would leave. The series of the region "north", and that of no region, are
/// targets.
class Replay : public JobTest
{
protected:
    void SetUp() override
    {
        JobTest::SetUp();
        _folder.emplace();
        viewer.emplace();
        engine.setScript([this](ScriptedJob& job) { answer(job); });
        engine.setOutputs([this](const std::string&) { return rows; });
        putModel(kPreparation);
    }

    void TearDown() override
    {
        EXPECT_EQ(openExecutions(engine), 0);
        viewer.reset();
        _folder.reset();
        JobTest::TearDown();
    }

    std::string path(const std::string& name) const { return _folder->name(name); }

    /// A model file with this "TSDPOutput.json", or none.
    void putModel(const std::optional<std::string>& preparation) const
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
        ZipWriter model(path("model.zip"));
        model.AddString("StatXML.xml", "<StatXML>" + xml + "</StatXML>");
        model.AddString("TCMGraph.json", R"({"targets":[{"series":"0-1","predictors":[]},)"
                                         R"({"series":"1","predictors":[]}]})");
        if (preparation)
            model.AddString("TSDPOutput.json", *preparation);
    }

    bool score(const std::string& timeField, const std::string& start, const std::string& end,
               const Names& dimFields = {"region"}, const Names& dimValues = {"north"})
    {
        actual.clear();
        predicted.clear();
        return viewer->GetScenarioInfo(dataset, path("model.zip"), timeField, start, end, {"x"},
                                       {1}, {2}, "sales", dimFields, dimValues, actual, predicted);
    }

    /// What hasError tells; empty if it tells nothing.
    std::string reason()
    {
        std::string id;
        std::string text;
        std::string detail;
        return viewer->hasError(id, text, detail) ? id + text + detail : "";
    }

    Names jobs() const
    {
        Names texts;
        for (const EngineCall& call : engine.calls())
            if (call.name == "prepare")
                texts.push_back(call.argument);
        return texts;
    }

    /// The jobs but for the descriptive one, with short names for files: MODEL, and T1, T2 and so
    /// on, in the order of their appearance.
    Names plainJobs() const
    {
        std::map<std::string, std::string> names = {
            {NormalizeHvlPathU(path("model.zip"), "file"), "MODEL"}};
        Names texts;
        for (std::string rest : jobs()) {
            if (rest.find("descriptives:") != std::string::npos)
                continue;
            std::string text;
            for (std::smatch uri; std::regex_search(rest, uri, std::regex("file:///[^\"]*"));
                 rest = uri.suffix()) {
                const auto [place, isNew] = names.try_emplace(uri.str());
                if (isNew)
                    place->second = "T" + std::to_string(names.size() - 1);
                text += uri.prefix().str() + place->second;
            }
            texts.push_back(text + rest);
        }
        return texts;
    }

    static constexpr const char* kPreparation =
        R"({"settings":{"dimFieldList":["region"],"metricFieldList":["sales"],)"
        R"("dateTimeField":"month","span":{"n":3}},"output":{"timeVariable":[1,2,3]}})";

    ScriptedEngine engine;
    std::optional<HVInteractiveTSR> viewer;
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
    std::size_t failingJob = 0;   ///< from 1

private:
    static std::string placeOf(const std::string& job, const std::string& expression)
    {
        std::smatch found;
        std::regex_search(job, found, std::regex(expression + "\":\"file:///([^\"]*)\""));
        return found[1];
    }

    void answer(ScriptedJob& job)
    {
        const std::string text = jobs().back();
        if (const int count = job.pull("_activeDataset_"); count >= 0)
            recordsRead.push_back(count);
        if (const std::string file = placeOf(text, "StatXML\",\"uri"); !file.empty())
            ZipWriter(file).AddString("StatXML.xml", kDescribed);
        if (const std::string file = placeOf(text, "tcmStatJson\",\"uri"); !file.empty())
            ZipWriter(file).AddString("statJson.json", R"({"effects":[]})");
        if (text.find("tsdp:tsdp(tsdpConf") != std::string::npos)
            FetchFile::fetch(placeOf(text, "filesystem\":\\{\"dataModel"), modelOfRecords);
        if (jobs().size() == failingJob)
            job.listener().onError("ID", "text", "detail");
        else
            job.listener().onSuccess();
    }

    static constexpr const char* kDescribed =
        R"(<StatXML><DataModel><Field name="region" storage="string">)"
        R"(<Values><Value value="north"/></Values></Field></DataModel></StatXML>)";

    std::optional<ScratchFolder> _folder;
};
