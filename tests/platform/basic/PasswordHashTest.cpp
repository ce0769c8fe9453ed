#include "platform/basic/PasswordHash.h"

#include <gtest/gtest.h>

TEST(PasswordHash, IsThatOfTheStandard)
{
    for (const auto& [rounds, hash] : {std::pair(1, "120fb6cffcf8b32c43e7225256c4f837a86548c92ccc35480805987cb70be17b"),
                                       {2, "ae4d0c95af6b46d32d0adff928f06dd02a303f8ef3c251dfd6e2d85a95474c43"},
                                       {4096, "c5e478d59288c841aa530db6845c4c8d962893a001ce4e11a4963873aa98134a"}})
        EXPECT_EQ(basic::PasswordHash("password", "salt", rounds).toHex(), QByteArray(hash)) << rounds;
}
