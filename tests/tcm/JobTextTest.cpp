#include "support/JobFixture.h"
#include "tcm/TemporalJobText.h"

// The lines of jobs on temporal causal models.

namespace {

using JobText = JobTest;

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
    // The model's address is the host's and keeps what stands in it.
    EXPECT_EQ(modelLine("in", "TCM", "c:\\a \"b\""),
              "val in = [{\"name\":\"TCM\",\"uri\":\"file:///c:/a \\\"b\\\"\"}]\n");
}
