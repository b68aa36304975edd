// SPDX-License-Identifier: Apache-2.0
#include "app/modRecLib.h"

#include "tests/support/OwnMemory.h"
#include "tests/support/ShellFixture.h"

#include <sys/resource.h>

namespace {

using base::Null;
using base::Value;

// How much memory the program may still take, while it lives. Units: bytes.
class LittleMemory {
public:
    explicit LittleMemory(rlim_t more)
    {
        getrlimit(RLIMIT_AS, &former_);
        const auto taken = static_cast<rlim_t>(tests::OwnMemory("VmSize")) * 1024;
        const rlimit little{taken + more, former_.rlim_max};
        setrlimit(RLIMIT_AS, &little);
    }
    ~LittleMemory() { setrlimit(RLIMIT_AS, &former_); }
    LittleMemory(const LittleMemory&) = delete;
    LittleMemory& operator=(const LittleMemory&) = delete;

private:
    rlimit former_{};
};

class modRecLibTest : public tests::ShellFixture {
protected:
    Value fnCN(const Value& value, std::int16_t typeCode)
    {
        return lodrin::fnCN(shop, value, typeCode);
    }
};

TEST_F(modRecLibTest, ANullBecomesTheEmptyTextForTheTypeCodesOfText)
{
    EXPECT_EQ(fnCN(Null{}, lodrin::kString), Value(""));
    EXPECT_EQ(fnCN(Null{}, lodrin::kVariant), Value(""));
    EXPECT_EQ(fnCN(Null{}, 8), Value(""));
}

TEST_F(modRecLibTest, ANullBecomesZeroForEveryOtherTypeCode)
{
    for (const std::int16_t code :
         std::initializer_list<std::int16_t>{0, 2, 3, 4, 5, 6, 7, 10, 11, 14, 99, -1})
        EXPECT_EQ(fnCN(Null{}, code), Value(0)) << code;
}

TEST_F(modRecLibTest, WhatIsNotNullIsReturnedUnchanged)
{
    EXPECT_EQ(fnCN("", 4), Value(""));
    EXPECT_EQ(fnCN(0.5, 8), Value(0.5));
    EXPECT_EQ(fnCN(base::Date{38061}, 0), Value(base::Date{38061}));
}

TEST_F(modRecLibTest, AValueTooLargeToBeCopiedIsReportedAndBecomesTheDefault)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the address sanitizer takes the memory that this test takes away";
#endif
    constexpr std::size_t megabyte = 1U << 20U;
    const Value large(std::string(64 * megabyte, 'x'));
    fakes.prompts.TakeAnyBox();
    {
        const LittleMemory little(16 * megabyte);
        EXPECT_EQ(fnCN(large, 4), Value(0));
    }
    ASSERT_EQ(fakes.prompts.boxes.size(), 1U);
    EXPECT_EQ(fakes.prompts.boxes[0].text.find("Error 7 in Sub modRecLib!General_fnCN()"), 0U);
}

}  // namespace
