// SPDX-License-Identifier: Apache-2.0
// Every kind of damage is found: each test spoils a sound file in one way.
#include "tests/jet/check/Damages.h"
#include "tests/jet/check/RelationshipDamages.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <span>

namespace jet::check {

namespace {

using tests::Damage;
using tests::DamagedFile;
using tests::Damages;

bool Contains(const CheckReport& report, DefectKind kind)
{
    return std::any_of(report.defects.begin(), report.defects.end(),
                       [kind](const Defect& defect) { return defect.kind == kind; });
}

std::string TextOf(const CheckReport& report)
{
    constexpr std::size_t most = 8;
    std::string text;
    for (const Defect& defect :
         std::span(report.defects).first(std::min(most, report.defects.size())))
        text += "\n  " + std::string(NameOf(defect.kind)) + " page " +
                std::to_string(Raw(defect.page)) + ": " + defect.text;
    return text;
}

class DamageTest : public testing::TestWithParam<tests::FileKind> {};

INSTANTIATE_TEST_SUITE_P(Kinds, DamageTest, testing::ValuesIn(tests::kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(DamageTest, EveryKindIsFound)
{
    for (const Damage& damage : Damages()) {
        SCOPED_TRACE(damage.name);
        DamagedFile file(GetParam());
        ASSERT_EQ(file.Content(), file.SoundContent());
        damage.plant(file);
        ASSERT_NE(file.Content(), file.SoundContent()) << "nothing is planted";
        const CheckReport report = file.Check();
        EXPECT_TRUE(Contains(report, damage.found))
            << NameOf(damage.found) << " is not among:" << TextOf(report);
        EXPECT_TRUE(SeverityOf(damage.found) == Severity::Remark || !report.Clean());
    }
}

// The clock refuses to open it (3343), so the check must not call it clean.
TEST(DamageKindsTest, AStationStoppedWhileWritingIsMoreThanARemark)
{
    EXPECT_EQ(SeverityOf(DefectKind::CommitPending), Severity::Damage);
}

TEST(DamageKindsTest, EveryKindIsPlanted)
{
    for (int i = 0; i < static_cast<int>(DefectKind::Count_); ++i) {
        const auto kind = static_cast<DefectKind>(i);
        EXPECT_TRUE(std::any_of(Damages().begin(), Damages().end(), [kind](const Damage& damage) {
            return damage.found == kind;
        })) << NameOf(kind);
    }
}

// Noise of every sort: the checker answers, whatever the bytes say.
TEST_P(DamageTest, NoBytesMakeTheCheckerFail)
{
    std::mt19937 random(20240229);
    for (int round = 0; round < 60; ++round) {
        DamagedFile file(GetParam());
        auto& bytes = file.Content();
        const int changes = 1 << (round % 8);
        for (int i = 0; i < changes; ++i) {
            // Not the signature: a file of another kind is refused.
            const std::size_t at = 0x98 + random() % (bytes.size() - 0x98);
            bytes[at] = static_cast<std::byte>(round % 3 == 0 ? 0xFF : random());
        }
        EXPECT_NO_THROW({
            const CheckReport report = file.Check();
            EXPECT_LE(report.defects.size(), kMostDefects);
        }) << round;
    }
}

TEST_P(DamageTest, AFileCutShortIsFound)
{
    for (const std::size_t pages : {2U, 3U, 8U, 20U}) {
        DamagedFile file(GetParam());
        file.Content().resize(pages * file.Version().pageSize);
        EXPECT_FALSE(file.Check().Clean()) << pages;
    }
}

TEST_P(DamageTest, NothingIsFoundInASoundRelationship)
{
    DamagedFile file(GetParam());
    static_cast<void>(tests::RelateParts(file));
    file.Store();
    EXPECT_SPOTLESS(file.Files(), DamagedFile::kPath);
}

TEST_P(DamageTest, NothingIsFoundBeforeItIsSpoilt)
{
    DamagedFile file(GetParam());
    EXPECT_GE(file.Rows().size(), 299U);
    EXPECT_GE(file.JobPages().size(), 3U);
    EXPECT_NE(file.FirstLeaf("ByName"), file.Tree("ByName").root);
    file.Store();
    const bool plain = GetParam() == tests::FileKind::Jet3 || GetParam() == tests::FileKind::Jet4;
    EXPECT_EQ(file.Content() == file.SoundContent(), plain);
    EXPECT_SPOTLESS(file.Files(), DamagedFile::kPath);
}

}  // namespace

}  // namespace jet::check
