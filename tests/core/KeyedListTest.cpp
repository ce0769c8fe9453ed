#include "core/KeyedList.h"

#include "platform/forms/Grid.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

using basic::Error;

TEST(KeyedList, KeepsRowsAndKeysInStepAndRefusesRowsWithoutAKey)
{
    forms::Grid grid("Grid1", {{"Nom", 1440}});
    core::KeyedList list(grid, 3);
    EXPECT_EQ(ErrorOf([&] { list.KeyOf(0); }), Error::IndexOutOfRange) << "the empty row";
    for (const dao::Key key : {30, 10, 20})
        grid.SetText(list.Add(key), 0, QString::number(key));
    EXPECT_EQ(ErrorOf([&] { list.Add(40); }), Error::Overflow);
    EXPECT_EQ(grid.Rows(), 3);

    grid.SetRow(2);
    list.Remove(1);
    EXPECT_EQ(list.Keys(), dao::KeyList({30, 20}));
    EXPECT_EQ(grid.Text(1, 0), "20");
    EXPECT_EQ(grid.Row(), 0);
    EXPECT_EQ(ErrorOf([&] { list.Remove(2); }), Error::IndexOutOfRange);
    EXPECT_EQ(ErrorOf([&] { list.SwapKeys(1, 2); }), Error::IndexOutOfRange);

    list.Remove(0);
    list.Remove(0);
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_EQ(grid.Text(0, 0), "");
    EXPECT_EQ(list.Add(50), 0);
}
