// SPDX-License-Identifier: Apache-2.0
// A tree with nodes below its root: nodes are linked to the other children of their parent.
#include "jet/catalog/Catalog.h"
#include "jet/check/IntegrityChecker.h"
#include "jet/format/IndexPage.h"
#include "jet/io/MemoryFile.h"
#include "jet/table/NativeTable.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace jet::check {

namespace {

constexpr const char* kPath = "deep.mdb";

class DeepTreeTest : public testing::TestWithParam<const format::FileVersion*> {
protected:
    // Keys so long that a page has room for a few only.
    void SetUp() override
    {
        catalog::Catalog::CreateDatabase(files_, kPath, *GetParam());
        const auto pager = pages::Pager::Open(files_, kPath, io::OpenMode::ReadWrite);
        catalog::NewTable wish{.name = "Deep", .columns = {}, .indexes = {}};
        wish.columns.resize(1);
        wish.columns[0].name = "Text";
        wish.columns[0].type = format::ColumnType::Text;
        wish.columns[0].size = 255;
        wish.indexes = {{.name = "ByText", .columns = {{.column = "Text"}}}};
        catalog::Catalog(pager).Create(wish, base::Date{40000});
        const auto id = catalog::Catalog(pager).Find("Deep").value().id;
        table::NativeTable rows(pager, PageNumber{static_cast<std::uint32_t>(id)});
        pages::WriteSet changes(*pager);
        for (int i = 0; i < 400; ++i) {
            const std::vector<table::Assignment> row{
                {0, std::to_string(1000 + i) + std::string(250, 'x')}};
            static_cast<void>(rows.Insert(changes, row));
        }
        changes.Commit();
        root_ = rows.Definition().indexes[0].root;
    }

    [[nodiscard]] format::MutableSpan PageAt(PageNumber page)
    {
        const std::size_t size = GetParam()->pageSize;
        return format::MutableSpan(files_.Content(kPath)).subspan(Raw(page) * size, size);
    }

    // The first child of the root.
    [[nodiscard]] format::IndexPageView FirstNode()
    {
        return {PageAt(FirstChild()), *GetParam()->indexPage};
    }
    [[nodiscard]] PageNumber FirstChild()
    {
        return format::IndexPageView(PageAt(root_), *GetParam()->indexPage).Child(0);
    }

    [[nodiscard]] bool FindsLinks()
    {
        const CheckReport report = CheckIntegrity(files_, kPath);
        return std::any_of(report.defects.begin(), report.defects.end(), [](const Defect& defect) {
            return defect.kind == DefectKind::IndexLinks;
        });
    }

    io::MemoryFileSystem files_;
    PageNumber root_ = PageNumber::None;
};

INSTANTIATE_TEST_SUITE_P(Versions, DeepTreeTest, testing::Values(&format::kJet3, &format::kJet4),
                         [](const auto& version) {
                             return "Jet" + std::string(1, version.param->name[0]);
                         });

TEST_P(DeepTreeTest, ATreeOfThreeLevelsIsSpotless)
{
    ASSERT_FALSE(FirstNode().IsLeaf());
    ASSERT_NE(FirstNode().Next(), PageNumber::None);
    EXPECT_SPOTLESS(files_, kPath);
}

TEST_P(DeepTreeTest, ANodeNotLinkedToTheNextIsFound)
{
    format::WriteNext(PageAt(FirstChild()), PageNumber::None, *GetParam()->indexPage);
    EXPECT_TRUE(FindsLinks());
}

TEST_P(DeepTreeTest, AFirstNodeWithAPageBeforeItIsFound)
{
    format::WritePrevious(PageAt(FirstChild()), FirstNode().Next(), *GetParam()->indexPage);
    EXPECT_TRUE(FindsLinks());
}

}  // namespace

}  // namespace jet::check
