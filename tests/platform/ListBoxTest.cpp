// SPDX-License-Identifier: Apache-2.0
// ListBoxTest: lists and the drop-down box hold what a view shows.
#include "platform/controls/ListBox.h"

#include "tests/support/ErrorOf.h"

#include <functional>
#include <gtest/gtest.h>

namespace {

using tests::ErrorOf;

TEST(ListBoxTest, NewEntrySelectsNothing)
{
    platform::ListBox list;
    list.AddItem("Body", 30);
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), "");
    EXPECT_EQ(list.ListCount(), 1);
}

TEST(ListBoxTest, SelectedEntryIsTheText)
{
    platform::ListBox list;
    list.AddItem("Body", 30);
    list.AddItem("Paint", 70);
    list.SetListIndex(1);
    EXPECT_EQ(list.Text(), "Paint");
    EXPECT_EQ(list.ItemData(list.ListIndex()), 70);
    list.SetItemData(0, 31);
    EXPECT_EQ(list.ItemData(0), 31);
}

TEST(ListBoxTest, SelectingTheFirstOfAnEmptyListIs380)
{
    platform::ListBox list;
    EXPECT_EQ(ErrorOf([&] { list.SetListIndex(0); }), 380);
    EXPECT_EQ(ErrorOf([&] { list.SetListIndex(-2); }), 380);
    EXPECT_EQ(ErrorOf([&] { list.SetListIndex(-1); }), 0);
}

TEST(ListBoxTest, DataOfNoEntryIs381ButItsTextIsEmpty)
{
    platform::ListBox list;
    EXPECT_EQ(ErrorOf([&] { (void)list.ItemData(-1); }), 381);
    EXPECT_EQ(ErrorOf([&] { list.SetItemData(0, 1); }), 381);
    EXPECT_EQ(list.List(-1), "");
    EXPECT_EQ(list.List(0), "");
}

TEST(ListBoxTest, ClearingForgetsEntriesAndSelection)
{
    platform::ListBox list;
    list.AddItem("Body");
    list.SetListIndex(0);
    list.Clear();
    EXPECT_EQ(list.ListCount(), 0);
    EXPECT_EQ(list.ListIndex(), -1);
}

TEST(ListBoxTest, EveryChangeIsToldUnlessHeldBack)
{
    platform::ListBox list;
    int told = 0;
    list.changed = [&] { ++told; };
    list.AddItem("Body");
    list.SetListIndex(0);
    EXPECT_EQ(told, 2);
    {
        const platform::ChangesHeld held(list);
        const platform::ChangesHeld heldAgain(list);
        list.Clear();
        list.AddItem("Paint");
        EXPECT_EQ(told, 2);
    }
    EXPECT_EQ(told, 3);
    {
        const platform::ChangesHeld held(list);
    }
    EXPECT_EQ(told, 3);
}

TEST(ComboBoxTest, TypedTextIsNoEntryAndClearingEmptiesIt)
{
    platform::ComboBox box;
    box.AddItem("1001  Ford");
    box.SetText("1002");
    EXPECT_EQ(box.ListCount(), 1);
    EXPECT_EQ(box.List(0), "1001  Ford");
    EXPECT_EQ(box.List(1), "");
    EXPECT_EQ(box.Text(), "1002");
    box.Clear();
    EXPECT_EQ(box.Text(), "");
    EXPECT_EQ(box.ListCount(), 0);
}

}  // namespace
