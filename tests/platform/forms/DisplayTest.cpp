#include "platform/forms/Display.h"

#include <gtest/gtest.h>

TEST(Display, WorkingAreaNeverExceedsIt)
{
    EXPECT_EQ(forms::WorkingArea(), forms::DisplaySize());
    forms::ChangeWorkingArea({800, 20000});
    EXPECT_EQ(forms::WorkingArea(), QSize(800, forms::DisplaySize().height()));
    forms::ChangeWorkingArea({});
    EXPECT_EQ(forms::WorkingArea(), forms::DisplaySize());
}
