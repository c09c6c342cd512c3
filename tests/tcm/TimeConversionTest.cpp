#include "tcm/TimeConversion.h"
#include "CFAppHost.h"
#include "data/SourceRows.h"
#include "runner/HVProgressListener.h"
#include "support/JobFixture.h"
#include "tcm/RecordFile.h"
#include "tcm/TemporalJobText.h"

// Times that are texts, on the real engine.

namespace {

class TimeConversion : public JobTest
{
protected:
    /// The error's text, empty for none.
    std::string run(const std::string& job, HVRawDataIterator* rows = nullptr)
    {
        runner->prepareHVLJob(job);
        if (rows != nullptr)
            runner->addInputIterator(rows);
        std::string text;
        std::string ignored;
        if (!runner->execute())
            runner->getProgressListener()->hasError(ignored, text, ignored);
        return text;
    }

    /// The rows of the last job's file, and its end.
    std::string takeRows(const RecordFile& file)
    {
        const std::string uri = TransformPath(file.records.getAbsolutePath());
        EmbeddedHV::RowDataIterator* const rows =
            runner->getOutputIterator(uri.substr(uri.rfind('/') + 1));
        std::string records = "none";
        if (rows != nullptr) {
            records = recordsOf(*rows);
            rows->dispose(env());
        }
        runner->cleanExecution();
        return records;
    }
};

} // namespace

TEST_F(TimeConversion, MakesTimestampsOfTextsFromRowsAndFromAFile)
{
    const MemorySource source(
        {text("when", 19), numeric("sales")},
        {{"2020-02-29 12:30:00", 1.0}, {"2020-02-29", 2.0}, {"00:01:00", 3.0}, {"", 4.0}});
    SourceRows rows(source, "_activeDataset_");
    // Seconds since 1970, as the engine gives points of time.
    const std::string expected = "1582979400 1; 1582934400 2; 60 3; - 4; ";

    const RecordFile converted("convertdatamodel", "convertdata");
    ASSERT_EQ(run(timeConversionJob(readerLine(rows), "when", converted), &rows), "");
    EXPECT_EQ(takeRows(converted), expected);

    // The copy is of texts, and is converted on the way to another one.
    const RecordFile copy("inputdatamodel", "inputdata");
    rows.Rewind(false);
    ASSERT_EQ(
        run(readerLine(rows) + writerLine(copy) + "read(readerConf)->write(writerConf)", &rows),
        "");
    runner->cleanExecution();
    ASSERT_EQ(run(timeConversionJob(readerLine(copy), "when", converted)), "");
    EXPECT_EQ(takeRows(converted), expected);
    std::string xml;
    FetchFile::fetch(converted.model.getAbsolutePath(), xml);
    EXPECT_EQ(CFMetaData(xml).GetField("when")->GetStorage(), CFField::Timestamp);
}

TEST_F(TimeConversion, ATextThatIsNoTimeFailsTheJob)
{
    const MemorySource source({text("when", 19)}, {{"2020-02-30"}});
    SourceRows rows(source, "_activeDataset_");
    const RecordFile converted("convertdatamodel", "convertdata");
    EXPECT_NE(run(timeConversionJob(readerLine(rows), "when", converted), &rows).find("2020-02-30"),
              std::string::npos);
    runner->cleanExecution();
}

TEST_F(TimeConversion, TheLambdaHasTheHostsLocaleAndTheFieldAsItIs)
{
    CFAppHost::getInstance()->setTimeLocale("pt_PT");
    EXPECT_EQ(GetToTimestampLambda("a b"),
              "val toTS = ctx => x => (\"a b\", toTimestamp(x.a b, \"yyyy-MM-dd HH:mm:ss\", "
              "\"yyyy-MM-dd\", \"HH:mm:ss\", \"pt_PT\", date(1970,1,1)))");
    CFAppHost::getInstance()->setTimeLocale("");
}
