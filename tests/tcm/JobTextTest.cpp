#include "support/JobFixture.h"
#include "tcm/RecordFile.h"
#include "tcm/TemporalJobText.h"

// The lines of jobs on temporal causal models.

namespace {

using JobText = JobTest;

std::string uriOf(const HVSimpleContainer& container)
{
    return TransformPath(container.getAbsolutePath());
}

} // namespace

TEST_F(JobText, AnAddressHasSlashesOnly)
{
    EXPECT_EQ(TransformPath("C:\\a/b\\c d"), "file:///C:/a/b/c d");
    EXPECT_EQ(TransformPath("/tmp/x"), "file:////tmp/x");
    EXPECT_EQ(removeBackslash("a\\b\\\\c"), "abc");
    EXPECT_EQ(removeBackslash("\\\\"), "");
    EXPECT_EQ(removeBackslash("none"), "none");
    EXPECT_EQ(cleanedJson(R"({"uri":"file:\/\/\/a\/b"})"), R"({"uri":"file:///a/b"})");
    // Without its backslash the quote would end the string.
    EXPECT_EQ(GenerateRtsdpConf("/a\"b"), "val rtsdpConf = {\"exportFutureFlag\":true}\n"
                                          "val rtsdpInConf = [{\"name\":\"JSON\","
                                          "\"uri\":\"file:////a\\\"b\"}]\n");
}

TEST_F(JobText, ReadsAndWritesFilesByTheirAddresses)
{
    EXPECT_EQ(GenerateReaderConf("d\\r", "/m"),
              "val readerConf = {\"filesystem\":{\"dataModel\":\"file:////m\",\"locations\":"
              "[{\"path\":\"file:///d/r\",\"parser\":{\"name\":\"hvbf\",\"config\":{}}}]}}\n");
    EXPECT_EQ(GenerateRtsdpConf("/j"),
              "val rtsdpConf = {\"exportFutureFlag\":true}\n"
              "val rtsdpInConf = [{\"name\":\"JSON\",\"uri\":\"file:////j\"}]\n");
    const RecordFile file("records", "model");
    EXPECT_EQ(readerLine(file),
              GenerateReaderConf(file.records.getAbsolutePath(), file.model.getAbsolutePath()));
    EXPECT_EQ(writerLine(file), "val writerConf = {\"dataDestination\":\"" + uriOf(file.records) +
                                    "\",\"dataModelDestination\":\"" + uriOf(file.model) +
                                    "\",\"type\":\"hvbf\"}\n");
    EXPECT_EQ(outputLine("out", file.records),
              "val out = [{\"export\":true,\"name\":\"records\",\"uri\":\"" + uriOf(file.records) +
                  "\"}]\n");
    // The model's address is the host's and keeps what stands in it.
    EXPECT_EQ(modelLine("in", "TCM", "c:\\a \"b\""),
              "val in = [{\"name\":\"TCM\",\"uri\":\"file:///c:/a \\\"b\\\"\"}]\n");
}
