// SPDX-License-Identifier: Apache-2.0
#include "jet/format/HeaderPage.h"

#include "jet/format/PageEncoding.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/Hex.h"

#include <gtest/gtest.h>

namespace {

using jet::format::FileVersion;
using jet::format::kJet3;
using jet::format::kJet4;
using jet::format::MakeHeaderPage;
using jet::format::Protection;
using jet::format::ReadHeaderPage;
using jet::format::Span;
using tests::ErrorOf;
using tests::ToHex;

// The password field without the mask that lies on the whole header.
std::string PasswordField(const FileVersion& version, const std::string& password)
{
    std::vector<std::byte> page = MakeHeaderPage(version, {.password = password});
    jet::format::ApplyKeyStream(0x6B39DAC7, jet::format::MutableSpan(page).subspan(0x18, 126));
    return ToHex(Span(page).subspan(0x42, version.header->passwordSize));
}

class HeaderPageTest : public testing::TestWithParam<const FileVersion*> {};
INSTANTIATE_TEST_SUITE_P(Versions, HeaderPageTest, testing::Values(&kJet3, &kJet4),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param->name[0]);
                         });

TEST_P(HeaderPageTest, KeyAndPasswordComeBack)
{
    for (const char* password : {"", "a", "Fj\xC3\xB6rd 4711", "12345678901234567890"}) {
        const auto page = MakeHeaderPage(*GetParam(), {0xA7B773E0, password});
        const jet::format::HeaderPage header = ReadHeaderPage(page);
        EXPECT_EQ(header.protection.encodingKey, 0xA7B773E0U);
        EXPECT_EQ(header.protection.password, password);
        EXPECT_EQ(header.version, GetParam());
    }
}

TEST_P(HeaderPageTest, PasswordOfMoreThanTwentyCharactersIsRefused)
{
    const Protection longer{.password = "123456789012345678901"};
    EXPECT_EQ(ErrorOf([&] { (void)MakeHeaderPage(*GetParam(), longer); }), 3031);
}

// Day 42329 is 0xA559.
TEST(HeaderPasswordTest, Jet4MasksItWithTheDayOfCreation)
{
    EXPECT_EQ(PasswordField(kJet4, "abc"), "38a562003aa5000059a5000059a5000059a50000"
                                           "59a5000059a5000059a5000059a5000059a50000");
}

TEST(HeaderPasswordTest, Jet3StoresItsBytes)
{
    EXPECT_EQ(PasswordField(kJet3, "ab\xC3\xA9"), "6162e90000000000000000000000000000000000");
}

TEST(HeaderPasswordTest, Jet3RefusesWhatItsCodePageLacks)
{
    EXPECT_EQ(ErrorOf([] { (void)MakeHeaderPage(kJet3, {.password = "\xE5\xB1\xB1"}); }), 3421);
}

}  // namespace
