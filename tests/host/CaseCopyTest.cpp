#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "VexaDataViews.h"
#include "host/CaseFiles.h"
#include "support/FullDisk.h"
#include "support/ScratchFolder.h"

namespace {

using namespace casefiles;

/// Enough cases to fill the buffer of a copy several times over, and not to the brim.
std::vector<Row> manyCases()
{
    std::vector<Row> rows;
    for (int i = 0; i < 20'011; ++i)
        rows.push_back({i % 7 == 0 ? kSystemMissing : i / 4.0,
                        std::string(static_cast<std::size_t>(i % 38), 'a'), -1.0 * i,
                        std::string(i % 3 == 0 ? "x" : "y")});
    return rows;
}

} // namespace

TEST(CaseCopy, ServesSeveralReadersAtOnceAndFailsClearly)
{
    const ScratchFolder scratch;
    const std::string name = scratch.name("many.sav");
    const std::vector<Row> rows = manyCases();
    writeSav(name, {variable("a"), variable("t", 37), variable("b"), variable("c", 1)}, rows);
    const UserInputCaseFile file(specOf(name, false), nullptr);
    const TempFileDataStore copy(*file.DataSource());
    {
        const FullDisk full(300'000);
        EXPECT_EQ(refusalOf([&] { casesOf(copy); }), "the cases cannot be kept: File too large");
    }

    std::vector<int> columns = {0, 1};
    columns.pop_back(); // the number of a column is still in memory, behind the end
    const VEXA_CProjection first(copy, std::move(columns));
    EXPECT_NE(refusalOf([&] { first.MakeProjectedIterator({1}, nullptr); }), "");

    const std::unique_ptr<VEXA_InputCaseIterator> ahead(copy.MakeIterator(nullptr));
    for (int i = 0; i < 15'000; ++i)
        ASSERT_EQ(ahead->NextCase(), 1);
    EXPECT_EQ(casesOf(copy), rows);
    EXPECT_EQ(ahead->GetCaseCount(), 15'000);
    EXPECT_EQ(ahead->GetNumericValue(2), -14'999);
    EXPECT_EQ(ahead->NextCase(), 1);
    EXPECT_EQ(ahead->GetNumericValue(2), -15'000);
}
