#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <functional>

#include "JobError.h"
#include "components/temporal/model/ModelArchive.h"
#include "components/temporal/model/ModelDocument.h"
#include "components/temporal/model/ModelManifest.h"
#include "components/temporal/model/Preparation.h"
#include "steps/Settings.h"
#include "temporal/TrainingData.h"

using namespace TemporalTest;
using namespace EmbeddedHV;
using testing::HasSubstr;

namespace {

class ModelArchiveTest : public testing::Test
{
protected:
    ModelArchiveTest()
        : _path(testing::TempDir() + testing::UnitTest::GetInstance()->current_test_info()->name() +
                ".tcm")
    {
        Eigen::MatrixXd values = noise(60, 3, 4);
        values(40, 1) += 20;
        TrainingOptions options = everySeries(3);
        options.lags = 2;
        options.forced = {{0, 1}};
        _model = train(values, options).model;
    }
    ~ModelArchiveTest() override { std::filesystem::remove(_path); }

    std::vector<ContainerMember> members() const
    {
        return modelMembers(_model, "{\"settings\": {}}", "<StatXML>\n</StatXML>\n");
    }
    void write(const std::vector<ContainerMember>& members) const
    {
        ContainerFile file(_path, "test");
        file.write(members);
        file.commit();
    }
    /// Replaces the document of the model, with a manifest that suits it.
    void write(const std::string& document) const
    {
        std::vector<ContainerMember> changed = members();
        std::map<std::string, std::string> entries;
        for (ContainerMember& member : changed) {
            if (member.name == kModelEntry)
                member.content = document;
            if (member.name != kModelManifestEntry)
                entries[member.name] = member.content;
        }
        changed.front().content = manifestDocument(entries);
        write(changed);
    }
    /// The error of reading the file, or empty.
    std::string fault() const
    {
        try {
            readModel(_path, "tcm:score");
            return {};
        } catch (const JobError& error) {
            return error.id() + " " + error.what();
        }
    }

    std::string _path;
    TcmModel _model;
};

TEST_F(ModelArchiveTest, AModelReadsBackAsItWas)
{
    _model.equations[0].intercept = 0.1 + 0.2;
    _model.equations[0].terms[0].tStatistic = -std::numeric_limits<double>::infinity();
    _model.equations[0].terms[0].coefficient = -5e-324;
    _model.series[2].name = {"north \"and\" west\n", "sales"};
    write(members());
    const ModelArchive archive(_path, "tcm:score");
    const TcmModel read = archive.model();
    const std::string document = modelDocument(_model);
    EXPECT_EQ(modelDocument(read), document);
    EXPECT_EQ(modelDocument(modelOfDocument(Json::parse(document).dump(1), {"tcm:score"})),
              document);
    EXPECT_EQ(read.equations[0].intercept, 0.1 + 0.2);
    EXPECT_EQ(read.equations[0].terms[0].tStatistic, -std::numeric_limits<double>::infinity());
    EXPECT_EQ(read.equations[0].terms[0].coefficient, -5e-324);
    EXPECT_EQ(read.series[2].name, _model.series[2].name);
    EXPECT_EQ(read.lastValues, _model.lastValues);
    EXPECT_FALSE(read.outliers.empty());
    EXPECT_TRUE(read.equations[1].groups[1].isForced);
    EXPECT_EQ(read.equations[1].fit.bic, _model.equations[1].fit.bic);
    EXPECT_TRUE(std::isnan(read.equations[1].residuals[1]));
    EXPECT_EQ(read.equations[1].residuals[2], _model.equations[1].residuals[2]);
    EXPECT_EQ(archive.preparation(), "{\"settings\": {}}");
}

TEST_F(ModelArchiveTest, FilesThatAreNoModelsAreRefused)
{
    struct Case
    {
        const char* error;
        std::function<void(std::vector<ContainerMember>&)> change;
    };
    const auto content = [](auto& members, const char* name) -> std::string& {
        return std::find_if(members.begin(), members.end(),
                            [&](const ContainerMember& member) { return member.name == name; })
            ->content;
    };
    const Case cases[] = {
        {"the archive has no entry \"Manifest.json\"",
         [](auto& members) { members.erase(members.begin()); }},
        {"the archive has no entry \"TSDPOutput.json\"", [](auto& members) { members.pop_back(); }},
        {"HVETC0020E", [&](auto& members) { content(members, kModelEntry)[9] ^= 1; }},
        {"the entry \"TCMGraph.json\" was changed after the training",
         [&](auto& members) { content(members, kModelNetworkEntry) += " "; }},
        {"HVETC0021E",
         [&](auto& members) {
             std::string& text = content(members, kModelManifestEntry);
             text.replace(text.find("\"version\": 1"), 12, "\"version\": 2");
         }},
        {"the document is not that of a temporal causal model",
         [&](auto& members) {
             content(members, kModelManifestEntry) =
                 R"({"format": "x", "version": 1, "sha256": {}})";
         }},
        {"the document is not JSON",
         [&](auto& members) { content(members, kModelManifestEntry) = "{"; }},
        {"is longer than 65536 bytes",
         [&](auto& members) { content(members, kModelManifestEntry).append(1 << 16, ' '); }},
    };
    for (const Case& one : cases) {
        std::vector<ContainerMember> changed = members();
        one.change(changed);
        write(changed);
        EXPECT_THAT(fault(), HasSubstr(one.error));
    }
    write(members());
    std::filesystem::resize_file(_path, std::filesystem::file_size(_path) / 2);
    EXPECT_THAT(fault(), HasSubstr("not a zip archive, or is cut short"));
}

TEST(PreparationDocument, FieldsHaveDifferentNames)
{
    const auto read = [](const std::string& dimensions) {
        return preparationOf(R"({"settings": {"dimFieldList": )" + dimensions +
                                 R"(, "metricFieldList": ["x"], "dimValueLists":
                                     {"a": ["u"], "b": [], "metricField": []}},
                                 "output": {"series": [], "fields": []}})",
                             {"tcm:train"});
    };
    EXPECT_EQ(read(R"(["a", "b"])").fields.size(), 4U);
    EXPECT_THROW(read(R"(["a", "b", "a"])"), JobError);
    EXPECT_THROW(read(R"(["metricField"])"), JobError);
}

TEST_F(ModelArchiveTest, DocumentsThatTheTrainingDoesNotWriteAreRefused)
{
    struct Case
    {
        const char* place;
        const char* value; ///< JSON; empty removes the member
        const char* error;
    };
    const Case cases[] = {
        {"/lags", "0", "/lags is not a whole number from 1 to 1000"},
        {"/lags", "1.0", "/lags is not a whole number"},
        {"/lags", "100000", "/lags is not a whole number from 1 to 1000"},
        {"/lags", "1", "/lag is not a whole number from 1 to 1"},
        {"/lags", "3", "/lastValues/0 has not one number for each lag"},
        {"/trainingPoints", "59", "/residuals has not one number for each point of time"},
        {"/outlierLevel", "1.5", "/outlierLevel is not a number from 0 to 1"},
        {"/series", "{}", "/series is not a list"},
        {"/series/1/id", "\"a\"", "/series/1 has the id \"a\" of another series"},
        {"/series/1/name/0", "7", "/series/1/name/0 is not a text"},
        {"/series/1/target", "false", "an equation of \"b\", which is not a target"},
        {"/equations", "", "has no member \"equations\""},
        {"/equations/0/series", "\"z\"", "/equations/0/series is \"z\", the id of no series"},
        {"/equations/0/series", "\"b\"", "/equations/1 is not in the order of the series"},
        {"/equations/1/terms/0/series", "\"c\"", "/terms/0 has a series without a group"},
        {"/equations/0/terms/1/lag", "1", "/terms/1 is the second term of its series and lag"},
        {"/equations/0/terms/0/lag", "-1", "/lag is not a whole number from 1 to 2"},
        {"/equations/0/terms/0/coefficient", "null", "/coefficient is not a finite number"},
        {"/equations/0/terms/0/coefficient", "1e999", "too large for a double"},
        {"/equations/0/terms/0/standardError", "-1", "/standardError is negative"},
        {"/equations/0/terms/0/p", "2", "/p is not a number from 0 to 1"},
        {"/equations/1/groups/1/series", "\"b\"", "/groups/1 is the second group of its series"},
        {"/equations/0/residuals/5", "\"x\"", "/residuals has an element that is not a finite"},
        {"/equations/0/residuals/5", "01", "the document is not JSON"},
        {"/equations/0/residuals/5", "1.e2", "the document is not JSON"},
        {"/equations/0/residuals", "0", "/residuals is not a list"},
        {"/equations/0/fit/bic", "[]", "/fit/bic is not a finite number"},
        {"/equations/0/fit/observations", "-1", "/observations is not a whole number"},
        {"/autoregressions/0/series", "\"z\"", "/autoregressions/0/series is \"z\""},
        {"/outliers/0/timeIndex", "60", "/timeIndex is not a whole number from 0 to 59"},
        {"/lastValues/2", "", "/lastValues has not one list for each series"},
    };
    const Json whole = Json::parse(modelDocument(_model));
    for (const Case& one : cases) {
        Json changed = whole;
        if (*one.value == '\0')
            changed = changed.patch(Json::array({{{"op", "remove"}, {"path", one.place}}}));
        else
            changed[Json::json_pointer(one.place)] = "PLACE";
        std::string document = changed.dump();
        if (const auto at = document.find("\"PLACE\""); at != std::string::npos)
            document.replace(at, 7, one.value);
        write(document);
        EXPECT_THAT(fault(), HasSubstr(one.error)) << one.place << " " << one.value;
        EXPECT_THAT(fault(), testing::StartsWith("HVETC0020E tcm:score: " + _path));
    }
    std::string many = "{\"lags\": 1, \"trainingPoints\": 1, \"outlierLevel\": 0.9, \"series\": [0";
    for (int i = 1; i < 1'000'000; ++i)
        many += ",0";
    write(many + "]}");
    EXPECT_THAT(fault(), HasSubstr("/series has 1000000 series, more than 100000"));
    write(std::string(1000, '[') + std::string(1000, ']'));
    EXPECT_THAT(fault(), HasSubstr("nested deeper than"));
}

} // namespace
