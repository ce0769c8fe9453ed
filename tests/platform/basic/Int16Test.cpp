#include "platform/basic/Int16.h"
#include "support/Printing.h"

#include <gtest/gtest.h>
#include <limits>

using basic::Int16;

TEST(Int16, RaisesOverflowAndKeepsItsValue)
{
    Int16 counter = 32766;
    EXPECT_EQ(counter++, 32766);
    EXPECT_EQ(ErrorOf([&] { ++counter; }), Error::Overflow);
    EXPECT_EQ(counter, 32767);
    EXPECT_EQ(ErrorOf([&] { counter += std::numeric_limits<qint64>::max(); }), Error::Overflow);
    EXPECT_EQ(ErrorOf([&] { counter *= std::numeric_limits<qint64>::max(); }), Error::Overflow);
    EXPECT_EQ(counter, 32767);

    counter = -32767;
    EXPECT_EQ(--counter, -32768);
    EXPECT_EQ(ErrorOf([&] { counter--; }), Error::Overflow);
    EXPECT_EQ(ErrorOf([&] { counter -= 1; }), Error::Overflow);
    EXPECT_EQ(counter, -32768);
    EXPECT_EQ(ErrorOf([] { static_cast<void>(Int16(32768)); }), Error::Overflow);
}

TEST(Int16, DoublesAnAccessValueOnlyInsideItsRange)
{
    EXPECT_EQ(basic::Product(16383, 2), 32766);
    EXPECT_EQ(basic::Product(-16384, 2), -32768);
    EXPECT_EQ(ErrorOf([] { basic::Product(16384, 2); }), Error::Overflow);
    EXPECT_EQ(ErrorOf([] { basic::Product(-16385, 2); }), Error::Overflow);
    EXPECT_EQ(ErrorOf([] { basic::Sum(32767, 1); }), Error::Overflow);
}
